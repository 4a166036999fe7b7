// Any text behind "setoption ": nothing is said to it, every search with the setting ends, and the
// same text as a go line finds a depth and a clock that a search can have.
#include "board/state.h"
#include "frontend/go.h"
#include "frontend/line.h"
#include "kit.h"
#include "tree/clock.h"

namespace {

void read_as_go(std::string_view text) {
  korvu::in = "go" + std::string(text);
  korvu::deep = 9;
  korvu::le_relogio();
  fuzz::demand(korvu::deep >= 0 && korvu::deep <= 9, "depth of a go line");
  fuzz::demand(korvu::tempo > 0 && korvu::tempo <= 10000000, "clock of a go line");
  fuzz::demand(korvu::limite_brando() <= korvu::limite_duro(), "time limits");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto asked = fuzz::lines("setoption " + std::string(fuzz::text(data, size)));
  asked.resize(1);
  fuzz::demand(fuzz::answers(fuzz::defaults()).empty(), "an answer to options");
  fuzz::demand(fuzz::answers(asked).empty(), "an answer to an option");
  asked = {"setoption name Deep value 5", "setoption name Time control value true",
           "position fen 8/5k2/8/8/8/8/P4K2/8 w - - 0 1 moves f2e3 f7e6", "go"};
  fuzz::demand(fuzz::answers(asked).find("bestmove ") != std::string::npos, "no bestmove");
  read_as_go(fuzz::text(data, size));
  return 0;
}
