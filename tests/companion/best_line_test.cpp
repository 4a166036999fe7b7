#include "companion/best_line.h"

#include <gtest/gtest.h>

namespace {

using companion::BestLine;
using rules::Position;

class Best : public testing::Test {
 protected:
  bool hear(int depth, const std::string& move, const std::string& score) {
    const auto info =
        companion::read_info("info score " + score + " depth " + std::to_string(depth) +
                                 " currmove " + move + " pv " + move,
                             Position::start());
    return best_.hear(info.value());
  }
  std::string move() const { return best_.move() ? best_.move()->text() : "none"; }

  BestLine best_;
};

rules::Move first_move(std::string_view text) {
  for (const rules::Move& m : Position::start().legal_moves())
    if (m.text() == text) return m;
  throw std::logic_error("no such move");
}

std::string chosen(const std::string& fen) {
  const auto move = companion::plain_choice(Position::from_fen(fen));
  return move ? move->text() : "none";
}

}  // namespace

TEST_F(Best, IsNothingBeforeTheFirstLine) {
  EXPECT_EQ(move(), "none");
  EXPECT_FALSE(best_.line());
}

TEST_F(Best, IsTheHighestScoreNotTheLastLine) {
  hear(8, "e2e4", "cp 10");
  hear(8, "d2d4", "cp 30");
  hear(8, "g1f3", "cp -50");
  EXPECT_EQ(move(), "d2d4");
  hear(8, "c2c4", "mate 4");
  EXPECT_EQ(move(), "c2c4");
}

TEST_F(Best, OfEqualScoresIsTheFirst) {
  hear(8, "e2e4", "cp 10");
  hear(8, "d2d4", "cp 10");
  EXPECT_EQ(move(), "e2e4");
}

TEST_F(Best, StaysIntoTheNextDepthUntilItsOwnLineThere) {
  hear(8, "e2e4", "cp 50");
  hear(8, "c2c4", "cp 45");  // forgotten with its depth
  hear(10, "d2d4", "cp 20");
  EXPECT_EQ(move(), "e2e4");
  hear(10, "e2e4", "cp -40");
  EXPECT_EQ(move(), "d2d4");
}

TEST_F(Best, GivesWayToABetterScoreOfTheNextDepth) {
  hear(8, "e2e4", "cp 50");
  hear(10, "d2d4", "cp 60");
  EXPECT_EQ(move(), "d2d4");
}

TEST_F(Best, ASecondLineOfAMoveTakesThePlaceOfTheFirst) {
  hear(8, "e2e4", "cp 50");
  hear(8, "d2d4", "cp 20");
  hear(8, "e2e4", "cp 0");
  EXPECT_EQ(move(), "d2d4");
}

TEST_F(Best, ShallowerLinesAreNotHeard) {
  hear(8, "e2e4", "cp 50");
  hear(6, "d2d4", "cp 90");
  EXPECT_EQ(move(), "e2e4");
}

TEST_F(Best, TellsWhenItIsAnother) {
  EXPECT_TRUE(hear(8, "e2e4", "cp 10"));
  EXPECT_FALSE(hear(8, "g1f3", "cp -50"));
  EXPECT_FALSE(hear(8, "b1c3", "cp 10"));
  EXPECT_TRUE(hear(8, "d2d4", "cp 30"));
  EXPECT_FALSE(hear(10, "c2c4", "cp 20"));
  EXPECT_TRUE(hear(10, "d2d4", "cp 0"));  // behind c2c4 now
  EXPECT_EQ(move(), "c2c4");
}

// The closing line's depth counts extensions, and would hide the next search's lines.
TEST_F(Best, ClosingLinesAreNotHeard) {
  hear(8, "e2e4", "cp 50");
  best_.hear(*companion::read_info("info score cp 90 depth 14 nodes 5 pv d2d4", Position::start()));
  EXPECT_EQ(move(), "e2e4");
  hear(10, "g1f3", "cp 70");
  EXPECT_EQ(move(), "g1f3");
}

TEST_F(Best, TheWordOfTheEngineCounts) {
  hear(4, "e2e4", "cp 50");
  hear(4, "d2d4", "cp 20");
  best_.conclude(first_move("d2d4"));
  EXPECT_EQ(move(), "d2d4");
  ASSERT_TRUE(best_.line());
  EXPECT_EQ(best_.line()->pv.front().text(), "d2d4");
  hear(6, "e2e4", "cp 15");
  EXPECT_EQ(move(), "d2d4");
  hear(6, "e2e4", "cp 25");
  EXPECT_EQ(move(), "e2e4");
}

TEST_F(Best, AChoiceFromBeforeTheFirstLineStandsUntilItHasOne) {
  best_.conclude(first_move("g1f3"));
  EXPECT_FALSE(hear(2, "a2a3", "cp -150"));
  EXPECT_EQ(move(), "g1f3");
  EXPECT_TRUE(hear(2, "g1f3", "cp 5"));
  EXPECT_EQ(move(), "g1f3");
  EXPECT_TRUE(hear(2, "d2d4", "cp 15"));
  EXPECT_EQ(move(), "d2d4");
}

TEST_F(Best, AWordWithoutALineCountsToo) {
  best_.conclude(first_move("g1f3"));
  EXPECT_EQ(move(), "g1f3");
  EXPECT_FALSE(best_.line());
}

TEST(PlainChoice, MatesAtOnce) {
  EXPECT_EQ(chosen("6k1/5ppp/8/8/8/7n/8/R3K3 w Q - 0 1"), "a1a8");
}

// The queen could take the pawn, but it is guarded; the knight stands free.
TEST(PlainChoice, TakesWhatIsFree) {
  EXPECT_EQ(chosen("4k3/8/2p5/3p4/8/1n6/1Q6/4K3 w - - 0 1"), "b2b3");
  EXPECT_NE(chosen("4k3/8/2p5/3p4/3Q4/8/8/4K3 w - - 0 1"), "d4d5");
}

TEST(PlainChoice, OfQuietMovesLikesTheCentre) {
  EXPECT_EQ(chosen("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1"), "e2e4");
}

TEST(PlainChoice, IsNothingWithoutLegalMoves) {
  EXPECT_EQ(chosen("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1"), "none");
}
