#include "companion/game.h"

#include <gtest/gtest.h>

#include "companion/words.h"

namespace {

companion::ReadGame read(std::string_view line) {
  return companion::read_game(companion::words_of(line));
}

std::string fen_after(std::string_view line) {
  const auto game = read(line).game;
  return game ? game->now.fen() : "none";
}

}  // namespace

TEST(Game, MovesAreReplayed) {
  const auto [game, complaint, readable] = read("startpos moves e2e4 e7e5 g1f3");
  ASSERT_TRUE(game);
  EXPECT_EQ(complaint, "");
  EXPECT_TRUE(readable);
  EXPECT_EQ(game->moves.size(), 3U);
  EXPECT_TRUE(game->from_the_start);
  EXPECT_EQ(game->now.fen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R b KQkq - 1 2");
}

TEST(Game, AFenMayLackItsCounters) {
  EXPECT_EQ(fen_after("fen 4k3/8/8/8/8/8/4P3/4K3 w - - moves e2e4"),
            "4k3/8/8/8/4P3/8/8/4K3 b - e3 0 1");
  EXPECT_FALSE(read("fen 4k3/8/8/8/8/8/4P3/4K3 w - -").game->from_the_start);
}

TEST(Game, MovesEndAtTheFirstThatIsNotLegal) {
  const auto [game, complaint, readable] = read("startpos moves e2e4 e2e4 e7e5");
  ASSERT_TRUE(game);
  EXPECT_EQ(game->moves.size(), 1U);
  EXPECT_EQ(complaint, "no legal move: e2e4");
  EXPECT_TRUE(readable);
}

TEST(Game, PromotionsAreReadInEitherCaseAndWithoutALetterAsQueens) {
  const std::string fen = "fen 8/P6k/8/8/8/8/8/K7 w - - 0 1 moves ";
  EXPECT_EQ(fen_after(fen + "a7a8N"), "N7/7k/8/8/8/8/8/K7 b - - 0 1");
  EXPECT_EQ(fen_after(fen + "a7a8"), "Q7/7k/8/8/8/8/8/K7 b - - 0 1");
}

TEST(Game, WhatCannotBePlayedIsNoPosition) {
  for (const char* line : {
           "fen 8/8/8/8/8/8/8/8 w - - 0 1",        // no kings
           "fen 4k3/8/8/8/8/8/8/8 w - - 0 1",      // one king
           "fen 4k3/8/8/8/8/8/4R3/4K3 w - - 0 1",  // Black's king can be taken
           "fen P3k3/8/8/8/8/8/8/4K3 w - - 0 1",   // pawn on the last rank
           "fen 4k3/pppppppp/nnnnnnnn/bbbbbbbb/QQQQQQQQ/8/8/4K3 w - - 0 1",  // too many men
       }) {
    const auto [game, complaint, readable] = read(line);
    EXPECT_FALSE(game) << line;
    EXPECT_TRUE(readable) << line;
    EXPECT_TRUE(complaint.starts_with("no position to play: ")) << complaint;
  }
}

TEST(Game, WhatCannotBeReadNamesNoPosition) {
  for (const char* line :
       {"", "somewhere", "fen", "fen somewhere", "moves e2e4", "fen 4k3/8/8/8/8/8/8/4K3 x - - 0 1",
        "fen 4k3/8/8/8/8/8/4K3 w - - 0 1"}) {
    const auto [game, complaint, readable] = read(line);
    EXPECT_FALSE(game) << line;
    EXPECT_FALSE(readable) << line;
    EXPECT_NE(complaint, "") << line;
  }
}

TEST(Game, RightsThatTheBoardBeliesAreDropped) {
  EXPECT_EQ(fen_after("fen r3k3/8/8/8/8/8/8/4K2R w KQkq - 0 1"),
            "r3k3/8/8/8/8/8/8/4K2R w Kq - 0 1");
  EXPECT_EQ(fen_after("fen 4k3/8/8/8/8/8/8/3K3R w K - 0 1"), "4k3/8/8/8/8/8/8/3K3R w - - 0 1");
}

TEST(Game, PassedSquaresThatNothingHasPassedAreDropped) {
  EXPECT_EQ(fen_after("fen 4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1"),
            "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1");
  for (const char* line : {"fen 4k3/8/8/4P3/8/8/8/4K3 w - d6 0 1",     // no pawn
                           "fen 4k3/3n4/8/3pP3/8/8/8/4K3 w - d6 0 1",  // not come from d7
                           "fen 4k3/8/8/3pP3/8/8/8/4K3 b - d6 0 1"})   // the wrong side
    EXPECT_FALSE(read(line).game->start.en_passant()) << line;
}
