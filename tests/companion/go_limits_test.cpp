#include "companion/go_limits.h"

#include <gtest/gtest.h>

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

TEST(GoLimits, WhatIsNoLimitIsPassedOver) {
  const auto go = read("quickly wtime soon depth searchmoves e2e4 d2d4 btime 50");
  EXPECT_EQ(go.white.left, std::nullopt);
  EXPECT_EQ(go.depth, std::nullopt);
  EXPECT_EQ(go.black.left, Milliseconds(50));
}
