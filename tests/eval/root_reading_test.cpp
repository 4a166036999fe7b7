// The reading of the root, by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "eval/bench.h"
#include "eval/knobs.h"
#include "eval/root_analysis.h"
#include "support/lab.h"

namespace {

using bench::nearness;

void play(const char* fen, const char* move, bool white_root) {
  bench::lay(fen);
  korvu::joga_com_b = white_root;
  const std::string_view m(move);
  const auto from = static_cast<int>(lab::square(m.substr(0, 2)));
  const auto to = static_cast<int>(lab::square(m.substr(2, 2)));
  korvu::jogada = {from / 8, from % 8, to / 8, to % 8};
  korvu::init_tabuleiro();
}

double near_all(std::initializer_list<const char*> squares, const char* king) {
  double sum = 0;
  for (const char* s : squares) sum += nearness(s, king);
  return sum;
}

}  // namespace

// Two bare kings after Kh1-h2. White's king reaches five squares, Black's on a8 three.
TEST(RootReading, OfTwoBareKings) {
  const auto white = {"g1", "g2", "g3", "h1", "h3"};
  const auto black = {"a7", "b7", "b8"};
  const double safety = 5 * std::log((near_all(white, "h2") + 3) / (near_all(black, "h2") + 3));
  const double danger = 5 * std::log((near_all(white, "a8") + 3) / (near_all(black, "a8") + 3));
  const double mobility = 5 * std::log(8 / 6.0);
  // Men without weight and equal totals; White's king has come one rank further.
  const double advance = -2.1 + 1.1;
  const double reading = safety + danger + mobility + advance;
  play("k7/8/8/8/8/8/8/7K w - - 0 1", "h1h2", true);
  EXPECT_NEAR(korvu::shashinn, reading, 1e-5);
  play("k7/8/8/8/8/8/8/7K w - - 0 1", "h1h2", false);
  EXPECT_NEAR(korvu::shashinn, -reading, 1e-5);
  EXPECT_NEAR(korvu::atack_ksf_b, near_all(white, "a8"), 1e-6);
  EXPECT_NEAR(korvu::defesa_ksf_p, near_all(black, "a8"), 1e-6);
}

// Material and advance count against their owner.
TEST(RootReading, TakesMaterialAndAdvanceWithTheOppositeSign) {
  play("k7/8/8/8/8/8/8/6NK w - - 0 1", "h1h2", true);
  // White's king has four steps and its knight's square, the knight e2, f3 and h3. Black's king has
  // three steps, a single knight being too little to keep it at home.
  const auto knight = {"e2", "f3", "h3"};
  const auto king = {"g2", "g3", "h1", "h3"};
  const auto black = {"a7", "b7", "b8"};
  const double defend = near_all(knight, "h2") + near_all(king, "h2") + nearness("g1", "h2");
  const double attack = near_all(knight, "a8") + near_all(king, "a8") + nearness("g1", "a8");
  const double safety = 5 * std::log((defend + 3) / (near_all(black, "h2") + 3));
  const double danger = 5 * std::log((attack + 3) / (near_all(black, "a8") + 3));
  const double weight = 2 * std::log(13.1 / 10.1);
  const double mobility = 5 * std::log((3 + 4 + 3) / (3 + 3.0));
  const double material = 0.1 * std::log(110.1 / 142.1);
  // White's ranks: king 2, knight 1, over two men. Black's: king 1, over one. The extents are one
  // square each, without a pawn.
  const double advance = -(3 + 0.1) / 2 + (1 + 0.1) / 1;
  EXPECT_NEAR(korvu::shashinn, material + safety + danger + weight + mobility + advance, 1e-5);
}

TEST(RootReading, CountsLegalMovesAlone) {
  // After Ka1-a2 the knight on a3 is pinned: White has the king's four steps (a1, b1, b2, b3). The
  // rook has five squares down the file and six along the rank, its king three steps.
  const char* fen = "r6k/8/8/8/8/N7/8/K7 w - - 0 1";
  play(fen, "a1a2", true);
  const float reading = korvu::shashinn;
  bench::lay(fen);
  korvu::MOB = 0;
  korvu::joga_com_b = 1;
  korvu::jogada = {0, 0, 0, 1};
  korvu::init_tabuleiro();
  EXPECT_NEAR(reading - korvu::shashinn, 5 * std::log((4 + 3.0) / (14 + 3.0)), 1e-5);
}

TEST(RootReading, IsMadeWithTheCountsOfThePositionReached) {
  // The capture leaves Black without a piece: from now on White's king fights.
  play("7k/8/8/8/8/8/3r4/K2R4 w - - 0 1", "d1d2", true);
  EXPECT_EQ(korvu::npecasp, 0);
  EXPECT_EQ(korvu::materialmaiorp, 0);
  EXPECT_EQ(korvu::materialmaiorb, 50);
  // Rook: 14 squares; king on a1: three.
  const auto sums = [](const char* king) {
    return near_all({"a2", "b2", "c2", "e2", "f2", "g2", "h2", "d1", "d3", "d4", "d5", "d6", "d7",
                     "d8", "a2", "b1", "b2"},
                    king);
  };
  EXPECT_NEAR(korvu::atack_ksf_b, sums("h8"), 1e-5);
  EXPECT_NEAR(korvu::defesa_ksf_b, sums("a1"), 1e-5);
}

TEST(RootReading, StartsTheCorrectionAtNothing) {
  bench::lay("k7/8/8/8/8/8/8/7K w - - 0 1");
  korvu::jogada = {7, 0, 7, 1};
  korvu::extraeval = 12;  // laying the board clears it too
  korvu::init_tabuleiro();
  EXPECT_EQ(korvu::extraeval, 0);
}

TEST(RootReading, ForgetsTheLetterEnteredUnlessTheEngineItselfMoves) {
  bench::lay("k7/8/8/8/8/8/8/7K w - - 0 1");
  korvu::jogada = {7, 0, 7, 1};
  korvu::PRe = 'q';
  korvu::deeppromo = 0;
  korvu::init_tabuleiro();
  EXPECT_EQ(korvu::PRe, '0');
  korvu::jogada = {7, 1, 7, 0};
  korvu::PRe = 'q';
  korvu::deeppromo = 1;
  korvu::init_tabuleiro();
  EXPECT_EQ(korvu::PRe, 'q');
  korvu::deeppromo = 0;
  korvu::PRe = '0';
}
