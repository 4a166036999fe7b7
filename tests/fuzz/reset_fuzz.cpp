// Whatever a process has been through, a game that begins with its first position line comes out
// like the same game in a fresh process, to the last node count, once the options are put back and
// the memories emptied.
#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include "kit.h"

namespace {

using Lines = std::vector<std::string>;

Lines game(std::size_t k) {
  static const std::array<Lines, 3> games = {{
      {"position startpos", "position startpos moves a2a3 a7a6", "go",
       "position startpos moves a2a3 a7a6 e2e4 e7e5", "go wtime 999 btime 1"},
      {"position startpos moves e2e4", "position startpos moves e2e4 d7d5 g1f3", "go",
       "setoption name Own book value false", "position startpos", "position startpos moves c2c3"},
      {"position startpos", "position startpos moves a2a3 a7a6", "go wtime 999 btime 1",
       "position fen r3k2r/pp3ppp/2n5/8/3P4/8/PP3PPP/R3K2R w KQkq - 0 1", "go",
       "setoption name Deep value 3",
       "position fen 4k3/P6p/8/8/8/8/7P/4K3 b - - 0 1 moves h7h5 a7a8n e8e7 a8b6", "go"},
  }};
  Lines all = fuzz::defaults();
  all.push_back("setoption name Deep value 1");
  all.insert(all.end(), games[k % games.size()].begin(), games[k % games.size()].end());
  return all;
}

// What a child says that has done nothing else.
std::string said_afresh(std::size_t k) {
  int ends[2];
  fuzz::demand(pipe(ends) == 0, "pipe");
  const pid_t child = fork();
  if (child == 0) {
    const std::string said = fuzz::answers(game(k));
    _exit(write(ends[1], said.data(), said.size()) == static_cast<ssize_t>(said.size()) ? 0 : 1);
  }
  close(ends[1]);
  std::string said;
  char part[4096];
  for (ssize_t n; (n = read(ends[0], part, sizeof part)) > 0;)
    said.append(part, static_cast<std::size_t>(n));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  fuzz::demand(status == 0 && said.find("bestmove") != std::string::npos, "the fresh process");
  return said;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::array<std::string, 3> afresh = {said_afresh(0), said_afresh(1), said_afresh(2)};
  if (size == 0) return 0;
  const std::size_t k = data[0] % afresh.size();
  fuzz::answers(fuzz::short_searches(fuzz::lines(fuzz::text(data + 1, size - 1))));
  const std::string said = fuzz::answers(game(k));
  fuzz::demand(said == afresh[k], "afresh:\n" + afresh[k] + "now:\n" + said);
  return 0;
}
