#include "companion/search_plan.h"

#include <gtest/gtest.h>

#include "companion/words.h"

namespace {

using companion::Milliseconds;
using companion::SearchPlan;
using companion::Stage;

constexpr bool white = true, black = false;

SearchPlan plan(std::string_view go, bool white_moves = white, int deep = 9) {
  return companion::plan_search(companion::read_go(companion::words_of(go)), white_moves, deep,
                                Milliseconds(50));
}

// The clock in the line for the engine, which must stand where the engine reads it.
long clock_in(const SearchPlan& p) {
  const std::string& go = p.stages.back().go;
  const auto words = companion::words_of(go);
  EXPECT_TRUE(go.starts_with("go wtime "));
  EXPECT_EQ(words.at(3), "btime");
  return std::stol(words.at(2));
}

// The settings of "Deep" of the searches; -1 for the client's own.
std::vector<int> deeps(const SearchPlan& p) {
  std::vector<int> all;
  for (const Stage& stage : p.stages) {
    all.push_back(stage.deep.value_or(-1));
    EXPECT_EQ(stage.untimed, stage.deep.has_value());
  }
  return all;
}
using Deeps = std::vector<int>;

}  // namespace

// The engine divides the clock by itself from 100 s on.
TEST(SearchPlan, TheClockIsThatOfTheSideToMove) {
  EXPECT_EQ(clock_in(plan("wtime 300000 btime 145000", white)), 300000);
  EXPECT_EQ(clock_in(plan("wtime 300000 btime 145000", black)), 145000);
  EXPECT_EQ(clock_in(plan("btime 145000 wtime 300000", black)), 145000);
}

TEST(SearchPlan, AClockAloneCountsForBoth) {
  EXPECT_EQ(clock_in(plan("btime 145000", white)), 145000);
  EXPECT_EQ(clock_in(plan("wtime 145000", black)), 145000);
}

TEST(SearchPlan, ByALongClockTheLastSearchHasTheClientsSettings) {
  for (const char* go : {"wtime 300000 btime 300000", "wtime 100000", "", "ponder wtime 100000"})
    EXPECT_EQ(deeps(plan(go)).back(), -1) << go;
}

// By a long clock it would be silent for seconds.
TEST(SearchPlan, ALongClockBeginsWithShallowSearches) {
  for (const char* go : {"wtime 300000 btime 300000", "", "ponder wtime 3600000 btime 3600000"})
    EXPECT_EQ(deeps(plan(go)), (Deeps{1, 2, 3, -1})) << go;
}

TEST(SearchPlan, ByAShorterClockEachSettingIsTriedInTurn) {
  for (const char* go : {"wtime 60000 btime 60000", "wtime 1000", "ponder wtime 99999"})
    EXPECT_EQ(deeps(plan(go)), (Deeps{1, 2, 3, 4, 5, 6, 7, 8, 9})) << go;
  EXPECT_EQ(deeps(plan("wtime 60000", white, 3)), (Deeps{1, 2, 3}));
  EXPECT_EQ(deeps(plan("wtime 60000", white, 0)), Deeps{0});
}

// A share of 10 s + 0.1 s is 400 + 75 ms.
TEST(SearchPlan, AShorterClockIsDividedIntoTwentyFiveShares) {
  const SearchPlan p = plan("wtime 10000 winc 100");
  EXPECT_EQ(p.enough, Milliseconds(475 * 2 / 5));
  EXPECT_EQ(p.patience, Milliseconds(475 * 5 / 2));
  EXPECT_EQ(plan("wtime 10000 winc 100 movestogo 10").enough, Milliseconds((1000 + 75) * 2 / 5));
}

TEST(SearchPlan, WithHardlyAnyTimeThereIsOneSearchByTheEnginesClock) {
  const SearchPlan p = plan("wtime 999 btime 999");
  EXPECT_EQ(deeps(p), Deeps{-1});
  EXPECT_EQ(clock_in(p), 999);
}

// Only who plays by the clock has had enough before the last search.
TEST(SearchPlan, NothingElseIsEverEnough) {
  for (const char* go : {"infinite", "movetime 1000", "depth 8", "nodes 1000", "mate 3", "",
                         "depth 8 wtime 1000", "infinite wtime 1000"})
    EXPECT_EQ(plan(go).enough, std::nullopt) << go;
  EXPECT_TRUE(plan("wtime 300000").enough);
}

TEST(SearchPlan, AnIncrementLengthensTheClock) {
  EXPECT_GT(clock_in(plan("wtime 100000 btime 100000 winc 100 binc 100")), 100000);
  EXPECT_EQ(clock_in(plan("wtime 100000 btime 100000 binc 100")), 100000);
}

// The engine divides a clock as if it were for a whole game.
TEST(SearchPlan, FewMovesToGoLengthenTheClock) {
  EXPECT_EQ(clock_in(plan("wtime 5000 btime 5000 movestogo 1")), 200000);
  EXPECT_EQ(clock_in(plan("wtime 160000 btime 160000 movestogo 20")), 320000);
  EXPECT_EQ(clock_in(plan("wtime 160000 btime 160000 movestogo 40")), 160000);
  EXPECT_EQ(clock_in(plan("wtime 160000 btime 160000 movestogo 0")), 160000);
}

// With less than a second left, the engine's way with 101 seconds may be cut short.
TEST(SearchPlan, ASearchThatMayBeCutShortHasShallowOnesBefore) {
  EXPECT_EQ(deeps(plan("wtime 1000 winc 5000")), (Deeps{1, 2, 3, -1}));
  EXPECT_EQ(deeps(plan("wtime 20000 winc 5000")), (Deeps{1, 2, -1}));
  EXPECT_EQ(plan("wtime 1000 winc 5000").stages.front().go,
            "go wtime 300000 btime 300000 winc 0 binc 0");
}

// Eight digits are the most that the engine tells apart; with less than three it looks one ply
// ahead.
TEST(SearchPlan, TheClockIsAlwaysANumberThatTheEngineReads) {
  for (const char* go : {"wtime -5 btime 1", "wtime 0 btime 0", "wtime 99999999999 btime 1",
                         "wtime 9999999999 btime 1 winc 9999999999 movestogo 1"}) {
    const long clock = clock_in(plan(go));
    EXPECT_GE(clock, 100) << go;
    EXPECT_LE(clock, 99999999) << go;
  }
}

// Whatever the clock, the move is answered with something left: 50 ms and a fiftieth.
TEST(SearchPlan, NoMoveTakesAllTheTime) {
  int cases = 0;
  for (const long left : {100L, 300L, 1000L, 10000L, 60000L, 3600000L})
    for (const long increment : {0L, 100L, 5000L})
      for (const int moves : {0, 1, 2, 5, 40}) {
        const std::string go = "wtime " + std::to_string(left) + " winc " +
                               std::to_string(increment) +
                               (moves > 0 ? " movestogo " + std::to_string(moves) : "");
        const auto patience = plan(go).patience;
        ASSERT_TRUE(patience);
        EXPECT_GE(patience->count(), 1);
        EXPECT_LE(patience->count(), left - 50 - left / 50) << go;
        ++cases;
      }
  EXPECT_EQ(cases, 90);
}

TEST(SearchPlan, WithoutIncrementManyMovesFitIntoTheClock) {
  // Every move takes all that it may.
  long left = 10000;
  int moves = 0;
  for (; moves < 1000 && left > 50; ++moves)
    left -= plan("wtime " + std::to_string(left)).patience->count();
  EXPECT_GT(left, 0);
  EXPECT_GT(moves, 25);
}

TEST(SearchPlan, TheLastMoveBeforeTheControlMayTakeNearlyAll) {
  EXPECT_EQ(plan("wtime 1000 btime 1000 movestogo 1").patience, Milliseconds(1000 - 50 - 20));
}

// A sixth of the clock, as without a control.
TEST(SearchPlan, NoMovesToGoAreNoControl) {
  for (const char* moves : {"0", "-1", "-2147483648"}) {
    const SearchPlan p = plan("wtime 120000 btime 120000 movestogo " + std::string(moves));
    EXPECT_EQ(p.patience, Milliseconds(20000)) << moves;
    EXPECT_EQ(clock_in(p), 120000) << moves;
  }
}

TEST(SearchPlan, LostTimeIsAnsweredAtOnce) {
  EXPECT_EQ(plan("wtime -20 btime 1000").patience, Milliseconds(1));
  EXPECT_EQ(plan("movetime 0").patience, Milliseconds(1));
}

// The overhead would leave nothing: a quarter of what is left, ten milliseconds at most.
TEST(SearchPlan, WithHardlyAnyTimeTheEngineStillGetsAMoment) {
  EXPECT_EQ(plan("wtime 20 btime 20").patience, Milliseconds(5));
  EXPECT_EQ(plan("movetime 50").patience, Milliseconds(10));
}

TEST(SearchPlan, AMoveTimeIsKeptWithShallowSearchesFirst) {
  const SearchPlan p = plan("movetime 1000");
  EXPECT_EQ(p.patience, Milliseconds(1000 - 50 - 20));
  EXPECT_EQ(deeps(p), (Deeps{1, 2, 3, 4, 9}));
}

TEST(SearchPlan, TheClientsDepthIsTheLast) {
  EXPECT_EQ(deeps(plan("movetime 1000", white, 3)), (Deeps{1, 2, 3}));
  EXPECT_EQ(deeps(plan("infinite", white, 0)), Deeps{0});
}

TEST(SearchPlan, InfiniteKnowsNoTime) {
  EXPECT_EQ(plan("infinite").patience, std::nullopt);
  EXPECT_EQ(plan("infinite wtime 1000 btime 1000").patience, std::nullopt);
  EXPECT_EQ(plan("infinite").stages.size(), 5U);
}

// Setting k reaches depth 2k, and 0 depth 1.
TEST(SearchPlan, DepthsBecomeSettingsOfTheEngine) {
  const auto last = [](int depth) {
    return plan("depth " + std::to_string(depth)).stages.back().deep;
  };
  EXPECT_EQ(last(1), 0);
  EXPECT_EQ(last(2), 1);
  EXPECT_EQ(last(3), 1);
  EXPECT_EQ(last(8), 4);
  EXPECT_EQ(last(10), 5);
  EXPECT_EQ(last(17), 8);
  EXPECT_EQ(last(2147483647), 9);
  EXPECT_EQ(deeps(plan("depth 2")), Deeps{1});
  EXPECT_EQ(deeps(plan("depth 8")), (Deeps{1, 4}));
  EXPECT_EQ(deeps(plan("depth 10")), (Deeps{1, 2, 3, 4, 5}));
  EXPECT_EQ(plan("depth 19").depth, 19);  // the last setting has no limit of its own
  EXPECT_EQ(plan("depth 4").patience, std::nullopt);
  EXPECT_EQ(plan("depth 4 wtime 900 btime 900").patience, plan("wtime 900").patience);
}

TEST(SearchPlan, WithoutALimitThatCountsItIsABareGo) {
  for (const char* go : {"depth 0", "nodes -1", "movetime x", "mate 0 depth"}) {
    EXPECT_EQ(plan(go).stages, plan("").stages) << go;
    EXPECT_EQ(plan(go).patience, std::nullopt) << go;
  }
}

TEST(SearchPlan, AMateInNIsSoughtOnePlyPastIt) {
  EXPECT_EQ(plan("mate 1").stages.back().deep, 2);
  EXPECT_EQ(plan("mate 3").stages.back().deep, 4);
  EXPECT_EQ(plan("mate 40").stages.back().deep, 9);
  EXPECT_EQ(plan("mate 3").mate, 3);
}

TEST(SearchPlan, NodesAreWatched) {
  EXPECT_EQ(plan("nodes 1000").nodes, 1000U);
  EXPECT_TRUE(plan("nodes 1000").stages.back().untimed);
}
