#include "companion/go_limits.h"

#include <gtest/gtest.h>

#include <tuple>

#include "companion/words.h"

namespace {

companion::GoLimits read(std::string_view line) {
  return companion::read_go(companion::words_of(line));
}

using companion::Milliseconds;

}  // namespace

TEST(GoLimits, AreReadInAnyOrder) {
  for (const char* line : {"wtime 1000 btime 2000 winc 10 binc 20 movestogo 5",
                           "movestogo 5 binc 20 btime 2000 winc 10 wtime 1000"}) {
    const auto go = read(line);
    EXPECT_EQ(go.white.left, Milliseconds(1000));
    EXPECT_EQ(go.black.left, Milliseconds(2000));
    EXPECT_EQ(go.white.increment, Milliseconds(10));
    EXPECT_EQ(go.black.increment, Milliseconds(20));
    EXPECT_EQ(go.moves_to_go, 5);
  }
}

TEST(GoLimits, OfEveryKindAreRead) {
  EXPECT_TRUE(read("infinite").infinite);
  EXPECT_TRUE(read("ponder wtime 1 btime 1").ponder);
  EXPECT_EQ(read("movetime 250").move_time, Milliseconds(250));
  EXPECT_EQ(read("depth 7").depth, 7);
  EXPECT_EQ(read("nodes 5000000000").nodes, 5000000000U);
  EXPECT_EQ(read("mate 3").mate, 3);
  EXPECT_EQ(read("btime -40").black.left, Milliseconds(-40));
}

TEST(GoLimits, UnknownWordsArePassedOverInSilence) {
  const auto go = read("quickly e2e4 btime 50 d2d4 7");
  EXPECT_EQ(go.black.left, Milliseconds(50));
  EXPECT_TRUE(go.complaints.empty());
}

TEST(GoLimits, ANumberThatIsNoneIsComplainedOfAndDoesNotCount) {
  const auto limits = [](const companion::GoLimits& go) {
    return std::tuple(go.white.left, go.black.left, go.white.increment, go.moves_to_go, go.depth,
                      go.nodes, go.mate, go.move_time);
  };
  for (const char* line :
       {"wtime soon", "btime", "winc -1", "winc 1.5", "movestogo -1", "depth 0", "depth -4",
        "depth", "depth infinite", "nodes -1", "nodes 0", "nodes 10k", "mate 0", "movetime x",
        "movetime -1", "nodes 99999999999999999999"}) {
    const auto go = read(line);
    EXPECT_EQ(limits(go), limits({})) << line;
    ASSERT_EQ(go.complaints.size(), 1U) << line;
    EXPECT_TRUE(go.complaints.front().starts_with("go " + std::string(line) + ":"))
        << go.complaints.front();
  }
}

TEST(GoLimits, TheOtherLimitsOfTheLineCount) {
  const auto go = read("depth x movetime 100 nodes -1 infinite");
  EXPECT_EQ(go.move_time, Milliseconds(100));
  EXPECT_TRUE(go.infinite);
  EXPECT_EQ(go.complaints.size(), 2U);
}

// A clock that has run out, no control and no time are what clients mean.
TEST(GoLimits, NumbersAtTheEdgeCount) {
  const auto go = read("wtime -5 movestogo 0 movetime 0 depth 99999999999 winc 0");
  EXPECT_EQ(go.white.left, Milliseconds(-5));
  EXPECT_EQ(go.moves_to_go, 0);
  EXPECT_EQ(go.move_time, Milliseconds(0));
  EXPECT_EQ(go.depth, 2147483647);
  EXPECT_TRUE(go.complaints.empty());
}

TEST(GoLimits, MovesToSearchAreComplainedOfOnce) {
  const auto go = read("searchmoves e2e4 d2d4 depth 3");
  ASSERT_EQ(go.complaints.size(), 1U);
  EXPECT_TRUE(go.complaints.front().starts_with("go searchmoves: "));
  EXPECT_EQ(go.depth, 3);
}
