// Whole searches with leaves that only tell on which side of a bound they fall, against the same
// searches with exact leaves, and with wide registers against those without: every line told is the
// same, to the last node.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "board/state.h"
#include "board/wide.h"
#include "eval/leaf_cache.h"
#include "support/lab.h"
#include "tree/clock.h"
#include "tree/indifference.h"

namespace korvu {
namespace {

// From a settled state: the second run must not live on what the first has left.
std::vector<std::string> searched(const std::vector<std::string>& settings,
                                  const std::string& position, bool exact) {
  lab::clock_at(0);
  folhas_exatas = exact;
  std::vector<std::string> lines = {"setoption name Own book value false",
                                    "setoption name Memory value false",
                                    "setoption name Clear memory",
                                    "setoption name Clear deep memory",
                                    "setoption name Deep value 4",
                                    "setoption name Deep memory value true",
                                    "setoption name PVS value true",
                                    "setoption name Lmr value true",
                                    "setoption name Vertical filter value true",
                                    "setoption name Null move filter value normal",
                                    "setoption name Temperament value dynamic",
                                    "setoption name Aggressiveness value 1"};
  lines.insert(lines.end(), settings.begin(), settings.end());
  lines.insert(lines.end(), {"position " + position, "go wtime 9000000"});
  guardado.fill(sem_lance);
  guardado_g.fill(sem_lance);
  lab::dialogue({"setoption name Own book value true", "position startpos"});
  auto told = lab::dialogue(lines);
  told.push_back(std::to_string(nodes) + " nodes, " + std::to_string(alfa0));
  folhas_exatas = false;
  return told;
}

// 7 plies, unless a setting says otherwise.
struct Case {
  std::string position;
  std::vector<std::string> settings;
};
const std::string opening = "startpos moves e2e4 e7e5 g1f3 b8c6 f1b5 a7a6 b5a4 g8f6";
const std::string tactics = "fen r1b3k1/4b2p/2R1p3/p2p2BB/P6P/1q3r2/6K1/1N6 w - - 0 36 moves h5f3";
const std::string castling =
    "fen r3k2r/pp1n1ppp/2p1pn2/3p4/3P4/2N1PN2/PPP2PPP/R3K2R w KQkq - 0 1 moves a2a3";
const std::string pawns = "fen 8/5pk1/4p1p1/3pP2p/3P1P1P/2K3P1/8/8 w - - 0 1 moves c3b4";
const std::string ending = "fen 2R5/6k1/3Np3/1p2P3/3n1P2/8/4n2P/3K4 b - - 1 49 moves e2f4";

// A game that leaves the Black king alone, and then a FEN without moves, which keeps its totals:
// captures there end in draws whose material is worth more than any bound.
const std::string bare_king = "fen 7k/8/8/8/8/8/8/KQ6 w - - 0 1 moves b1b2";
const std::string stale_totals = "fen 7n/8/8/3p4/3K1N2/8/8/k7 w - - 0 1";

const std::vector<Case> cases = {
    {stale_totals, {"position " + bare_king, "go wtime 9000000"}},
    {opening, {}},
    {tactics, {}},
    {castling, {"setoption name Deep memory value false"}},
    {ending, {"setoption name Deep value 5"}},
    {pawns, {"setoption name Deep value 5", "setoption name Null move filter value plus"}},
    {tactics, {"setoption name Deep value 5", "setoption name Null move filter value plus"}},
    {opening, {"setoption name PVS value false", "setoption name Deep value 3"}},
    {tactics, {"setoption name Vertical filter value false"}},
    {tactics, {"setoption name Lmr value false", "setoption name Deep memory value false"}},
    {castling, {"setoption name Null move filter value off", "setoption name Deep value 3"}},
    {tactics,
     {"setoption name Positive float filter value full",
      "setoption name Negative float filter value full"}},
    {castling,
     {"setoption name Aggressiveness value 0", "setoption name Temperament value positional"}},
};

#ifdef KORVU_WIDE_REGISTERS
TEST(WideRegisters, ChangeNothingThatASearchTells) {
  if (!ve_ao_largo) GTEST_SKIP() << "this processor has no wide registers";
  for (const auto& [position, settings] : cases) {
    const auto wide = searched(settings, position, false);
    ve_ao_largo = false;
    const auto narrow = searched(settings, position, false);
    ve_ao_largo = true;
    EXPECT_EQ(wide, narrow) << position << (settings.empty() ? "" : "; " + settings.front());
  }
}
#endif

TEST(ExactLeaves, ChangeNothingThatASearchTells) {
  for (const auto& [position, settings] : cases) {
    const auto exact = searched(settings, position, true);
    EXPECT_EQ(searched(settings, position, false), exact)
        << position << (settings.empty() ? "" : "; " + settings.front());
  }
}

}  // namespace
}  // namespace korvu
