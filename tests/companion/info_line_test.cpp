#include "companion/info_line.h"

#include <gtest/gtest.h>

namespace {

using companion::read_info;
using companion::Score;
using rules::Position;

std::string passed_on(std::string_view line, const Position& root = Position::start()) {
  const auto info = read_info(line, root);
  return info ? info->text() : "nothing";
}

}  // namespace

using namespace std::string_literals;

TEST(InfoLine, ALineWithLegalMovesIsPassedOnAsItIs) {
  const std::string line =
      "info score cp -31 depth 4 seldepth 4 currmove d2d4 currmovenumber 2 nodes 1230 time 5 "
      "hashfull 8 pv d2d4 d7d5 c2c4 e7e6";
  EXPECT_EQ(passed_on(line), line);
  EXPECT_EQ(passed_on("info nps 246000"), "info nps 246000");
}

TEST(InfoLine, MovesEndAtTheFirstThatIsNotLegal) {
  EXPECT_EQ(passed_on("info score cp 1 depth 2 pv e2e4 e7e5 e4e5 g1f3"),
            "info score cp 1 depth 2 pv e2e4 e7e5");
  EXPECT_EQ(passed_on("info score cp 1 depth 2 pv e2e5 e7e5"), "info score cp 1 depth 2");
  EXPECT_EQ(passed_on("info score cp 1 depth 2 pv e2e4 \0\0\0\0 e7e5"s),
            "info score cp 1 depth 2 pv e2e4");
}

TEST(InfoLine, AMoveInWorkThatIsNotLegalIsLeftOut) {
  EXPECT_EQ(passed_on("info depth 2 currmove e2e5 currmovenumber 1 nodes 7"),
            "info depth 2 nodes 7");
}

TEST(InfoLine, PromotionsGetTheirLetter) {
  const Position p = Position::from_fen("8/P6k/8/8/8/8/8/K7 w - - 0 1");
  EXPECT_EQ(passed_on("info score cp 900 depth 2 currmove a7a8 pv a7a8 h7g7", p),
            "info score cp 900 depth 2 currmove a7a8q pv a7a8q h7g7");
}

TEST(InfoLine, OfAMateHasTwoBlanksAndASign) {
  const auto info = read_info("info score mate -3  depth 8 nodes 5 pv e2e4", Position::start());
  ASSERT_TRUE(info);
  EXPECT_EQ(info->score, (Score{true, -3}));
  EXPECT_EQ(info->depth, 8);
  EXPECT_EQ(info->nodes, 5U);
  EXPECT_EQ(info->text(), "info score mate -3 depth 8 nodes 5 pv e2e4");
}

TEST(InfoLine, IsToldFromOtherLines) {
  EXPECT_EQ(passed_on("bestmove e2e4"), "nothing");
  EXPECT_EQ(passed_on(""), "nothing");
}

TEST(InfoLine, ScoresAreOrdered) {
  const Score falling[] = {{true, 1},     {true, 4},  {false, 900}, {false, 0},
                           {false, -900}, {true, -7}, {true, -1}};
  for (std::size_t i = 0; i < std::size(falling); ++i)
    for (std::size_t j = 0; j < std::size(falling); ++j)
      EXPECT_EQ(falling[i]<falling[j], i> j) << i << ' ' << j;
}

TEST(InfoLine, FieldsAreReplacedWhereTheyStandOrAdded) {
  auto info = read_info("info nodes 5 time 9 pv e2e4", Position::start());
  info->put("nodes", "12");
  info->put("nps", "1");
  EXPECT_EQ(info->text(), "info nodes 12 time 9 nps 1 pv e2e4");
}

TEST(InfoLine, ProgressIsTheLineWithoutScoreAndMoves) {
  const auto info =
      read_info("info score cp 5 depth 4 currmove e2e4 nodes 7 pv e2e4 e7e5", Position::start());
  EXPECT_EQ(info->progress().text(), "info depth 4 currmove e2e4 nodes 7");
}
