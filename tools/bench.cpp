// korvu-bench: searches a fixed set of positions and prints the total of their nodes, the engine's
// signature, and its speed. The clock stands still while a search runs, so that every limit is one
// of depth and the nodes are the same on any machine.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>

#include "about.h"
#include "bench_positions.h"
#include "board/state.h"
#include "frontend/dialogue.h"
#include "tree/clock.h"

namespace korvu::bench {
namespace {

struct Medida {
  std::uint64_t nos = 0;
  double segundos = 0;
};

std::string dialogo_da_posicao(const Posicao& p) {
  std::string texto = "setoption name Own book value false\nsetoption name Deep value 5\n";
  for (const std::string_view ajuste : p.ajustes)
    if (!ajuste.empty()) texto += "setoption name " + std::string(ajuste) + "\n";
  return texto + "position " + std::string(p.posicao) + "\ngo infinite\nquit\n";
}

Medida mede(const Posicao& p) {
  using namespace std::chrono;
  relogio = [] { return 0; };
  std::istringstream entrada(dialogo_da_posicao(p));
  std::ostringstream respostas;
  const auto antes = steady_clock::now();
  dialogo(entrada, respostas);
  return {nodes, duration<double>(steady_clock::now() - antes).count()};
}

// The engine's state is the process's and every slot may matter: a fresh state is a fresh process,
// forked before this one has searched anything.
Medida mede_em_outro_processo(const Posicao& p) {
  int cano[2];
  if (pipe(cano) != 0) std::exit(EXIT_FAILURE);
  const pid_t filho = fork();
  if (filho < 0) std::exit(EXIT_FAILURE);
  if (filho == 0) {
    const Medida m = mede(p);
    _exit(write(cano[1], &m, sizeof m) == sizeof m ? EXIT_SUCCESS : EXIT_FAILURE);
  }
  close(cano[1]);
  Medida m;
  const bool lida = read(cano[0], &m, sizeof m) == sizeof m;
  close(cano[0]);
  int fim_do_filho = 0;
  waitpid(filho, &fim_do_filho, 0);
  if (lida && fim_do_filho == 0) return m;
  std::cerr << "no result for: position " << p.posicao << '\n';
  std::exit(EXIT_FAILURE);
}

void mede_todas(std::size_t passo) {
  Medida total;
  for (std::size_t i = 0; i < std::size(posicoes); i += passo) {
    const Medida m = mede_em_outro_processo(posicoes[i]);
    std::cout << m.nos << '\t' << posicoes[i].posicao << std::endl;
    total.nos += m.nos;
    total.segundos += m.segundos;
  }
  const auto nps = static_cast<std::uint64_t>(static_cast<double>(total.nos) / total.segundos);
  std::cout << total.nos << " nodes " << nps << " nps" << std::endl;
}

}  // namespace
}  // namespace korvu::bench

constexpr std::string_view usage =
    "usage: korvu-bench [N [TIMES]]\n"
    "Searches a fixed set of positions, or every N-th of them for slow builds, so many times in\n"
    "one process. The last line begins with the nodes of all searches, which are the same on any\n"
    "machine, and gives the speed.\n";

int main(int argc, char** argv) {
  if (tools::tells_about_itself(argc, argv, "korvu-bench", usage)) return EXIT_SUCCESS;
  const int passo = argc > 1 ? std::atoi(argv[1]) : 1;
  const int vezes = argc > 2 ? std::atoi(argv[2]) : 1;
  if (passo < 1 || vezes < 1) {
    std::cerr << usage;
    return EXIT_FAILURE;
  }
  for (int k = 0; k < vezes; ++k) korvu::bench::mede_todas(static_cast<std::size_t>(passo));
}
