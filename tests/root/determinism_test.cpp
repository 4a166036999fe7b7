// A search depends on nothing but its position, its settings and its clock: done again it gives the
// same lines and the same counts.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "memory/game_memory.h"
#include "root/caps.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "root/root_lab.h"
#include "support/lab.h"

namespace korvu {
namespace {

using Lines = std::vector<std::string>;

// Without castling: a root castling is rated with what the move before it left.
constexpr std::string_view middle =
    "r2q1rk1/pp2bppp/2n1bn2/3p4/3N4/2N1B3/PP2BPPP/R2Q1RK1 w - - 0 12";
constexpr std::string_view ending = "3r4/pp3pk1/2p3p1/8/3P4/1P4P1/P4PK1/3R4 b - - 0 40";

Lines dialogue_from_a_fresh_state(const Lines& settings) {
  // Twice: the tables around the kings go by the totals that stand when they are made.
  for (int i = 0; i < 2; ++i)
    lab::position("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w - - 0 1");
  root_lab::default_settings();
  Lines lines = settings;
  lines.insert(lines.end(), {
                                "position fen " + std::string(middle),
                                "go wtime 20000 btime 20000 winc 0 binc 0",
                                "position fen " + std::string(ending) + " moves g7f6",
                                "go wtime 20000 btime 20000 winc 0 binc 0",
                                "quit",
                            });
  return lab::dialogue(lines);
}

void expect_the_same_twice(const Lines& settings) {
  const Lines once = dialogue_from_a_fresh_state(settings);
  const Lines again = dialogue_from_a_fresh_state(settings);
  EXPECT_EQ(once, again);
  std::size_t replies = 0;
  for (const std::string& line : once) replies += line.starts_with("bestmove ");
  EXPECT_EQ(replies, 2U);
  EXPECT_GT(once.size(), 20U) << "moves were reported";
}

TEST(Determinism, TheSameDialogueTwiceAtDefaults) {
  expect_the_same_twice({});
}

TEST(Determinism, TheSameDialogueTwiceWithOtherSettings) {
  expect_the_same_twice(
      {"setoption name Temperament value positional", "setoption name Turbo search value false",
       "setoption name Null move filter value normal", "setoption name Lmr value false",
       "setoption name Deep memory value false", "setoption name Positional relevance value 8"});
}

TEST(Determinism, TheSettingsAreNotIdle) {
  EXPECT_NE(dialogue_from_a_fresh_state({"setoption name Temperament value dynamic"}),
            dialogue_from_a_fresh_state({"setoption name Temperament value positional"}));
}

constexpr std::string_view few_men = "8/5pk1/6p1/8/3P4/6P1/5K2/3R4 w - - 0 1";

struct Outcome {
  std::uint32_t nodes;
  float score;
  std::string move;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};

template <Cor root>
Outcome search_once(std::string_view fen) {
  root_lab::at_root(root_lab::told_for<root>(fen));
  root_lab::at_root(root_lab::told_for<root>(fen));  // tables that go by the totals settle
  root_lab::default_settings();
  deep = deepp = 9;
  procura<root>();
  return {nodes, E, root_lab::best_move()};
}

TEST(Determinism, TwoSearchesCountTheSameNodes) {
  root_lab::each_colour([]<Cor root>() {
    const Outcome once = search_once<root>(few_men);
    const Outcome again = search_once<root>(few_men);
    EXPECT_EQ(once, again);
    EXPECT_GT(once.nodes, 1000U);
  });
}

TEST(Determinism, ASearchBetweenThemChangesNothing) {
  const Outcome once = search_once<Cor::b>(few_men);
  search_once<Cor::p>("8/8/2k5/5p2/5P2/3K4/6N1/1r6 w - - 0 1");
  EXPECT_EQ(search_once<Cor::b>(few_men), once);
}

}  // namespace
}  // namespace korvu
