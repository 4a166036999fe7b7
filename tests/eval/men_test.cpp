// What each man brings by itself: counts, extents and the terms of its own square.
#include <gtest/gtest.h>

#include "eval/bench.h"
#include "eval/knobs.h"

namespace {

using bench::centrality;
using bench::nearness;
using korvu::Cor;

// Positional sum of one side with nothing to gain by attacks.
float white_pos() {
  return bench::waiting<Cor::b>().pos;
}
float black_pos() {
  return bench::waiting<Cor::p>().pos;
}

// A White search on a board with kings at home and this many men at the root.
void lay(const char* fen, int n) {
  bench::lay(fen);
  bench::kings_at_home();
  bench::men(n / 2, n - n / 2);
}

}  // namespace

TEST(Men, AdvanceCountsRanksFromOneAsTheSideSeesThem) {
  bench::lay("6k1/p7/8/3r4/8/5N2/P7/4K3 w - - 0 1");
  EXPECT_EQ(bench::waiting<Cor::b>().advance, 1 + 2 + 3);  // king, a2, f3
  EXPECT_EQ(bench::waiting<Cor::p>().advance, 1 + 2 + 4);  // king, a7, d5
}

TEST(Men, WeightIsThreeFiveOrNine) {
  bench::lay("rr5k/8/8/8/8/8/8/NBRQ3K w - - 0 1");
  const korvu::Figuras w = bench::waiting<Cor::b>(), b = bench::waiting<Cor::p>();
  EXPECT_EQ(w.weight, 3 + 3 + 5 + 9);
  EXPECT_EQ(w.officers, 4);
  EXPECT_EQ(w.knights, 1);
  EXPECT_EQ(w.bishops, 1);
  EXPECT_EQ(w.rooks, 1);
  EXPECT_EQ(w.queens, 1);
  EXPECT_EQ(b.weight, 5 + 5);
  EXPECT_EQ(b.officers, 2);
  EXPECT_EQ(b.rooks, 2);
}

TEST(Men, ExtentIsThatOfThePawnsAndTheKing) {
  bench::lay("q7/6k1/8/6P1/2p1p3/1P6/8/4K2Q w - - 0 1");
  const korvu::Figuras w = bench::waiting<Cor::b>(), b = bench::waiting<Cor::p>();
  EXPECT_EQ(w.pawns, 2);
  EXPECT_EQ(w.xmin, 1);
  EXPECT_EQ(w.xmax, 6);
  EXPECT_EQ(w.ymin, 0);
  EXPECT_EQ(w.ymax, 4);
  EXPECT_EQ(b.xmin, 2);
  EXPECT_EQ(b.xmax, 6);
  EXPECT_EQ(b.ymin, 3);
  EXPECT_EQ(b.ymax, 6);
}

TEST(Knight, TermsOfItsSquareByTheNumberOfMen) {
  lay("7k/8/8/8/8/8/8/KN6 w - - 0 1", 15);
  EXPECT_FLOAT_EQ(white_pos(), static_cast<float>(25 / 20.5 + 5.0 / 87));
  lay("7k/8/8/8/8/8/8/KN6 w - - 0 1", 14);
  EXPECT_FLOAT_EQ(white_pos(), static_cast<float>(10 / 20.5 + 15.0 / 87));
}

TEST(Knight, FifteenOffItsOwnFirstRank) {
  lay("7k/8/8/8/8/2N5/8/K7 w - - 0 1", 15);
  EXPECT_FLOAT_EQ(white_pos(),
                  static_cast<float>(15 + 25 * centrality("c3") + 5 * nearness("c3", "h8")));
  lay("1n5k/8/8/8/8/8/8/K7 w - - 0 1", 15);
  EXPECT_FLOAT_EQ(black_pos(),
                  static_cast<float>(25 * centrality("b8") + 5 * nearness("b8", "a1")));
  lay("7k/8/8/8/8/8/8/Kn6 w - - 0 1", 15);
  EXPECT_FLOAT_EQ(black_pos(),
                  static_cast<float>(15 + 25 * centrality("b1") + 5 * nearness("b1", "a1")));
}

TEST(Proximity, IsScaledForTheRootSideAlone) {
  lay("1n5k/8/8/8/8/8/8/KN6 w - - 0 1", 14);
  korvu::agresprxrei = 4;
  const auto white = static_cast<float>(10 * centrality("b1") + 4 * 15 * nearness("b1", "h8"));
  const auto black = static_cast<float>(10 * centrality("b8") + 15 * nearness("b8", "a1"));
  EXPECT_FLOAT_EQ(white_pos(), white);
  EXPECT_FLOAT_EQ(black_pos(), black);
  // The same leaf of a Black search.
  const auto of_black_root = bench::figures<korvu::Varredura::folha, Cor::p, Cor::p, Cor::p>().pos;
  EXPECT_FLOAT_EQ(of_black_root,
                  static_cast<float>(10 * centrality("b8") + 4 * 15 * nearness("b8", "a1")));
}

TEST(Proximity, IsMeasuredToTheKingOfTheLastLegalityTest) {
  lay("7k/8/8/8/8/8/8/KN6 w - - 0 1", 14);
  bench::kings("a1", "c2");  // a trial left it there, whatever the board says
  EXPECT_FLOAT_EQ(white_pos(),
                  static_cast<float>(10 * centrality("b1") + 15 * nearness("b1", "c2")));
}

TEST(Bishop, FifteenOffItsFirstRankAndMoreOnALongDiagonal) {
  lay("7k/8/8/8/8/8/8/1KB5 w - - 0 1", 15);
  EXPECT_EQ(white_pos(), 0);
  lay("7k/8/8/8/8/8/2B5/1K6 w - - 0 1", 15);
  EXPECT_EQ(white_pos(), 15);
  lay("7k/8/8/8/8/2B5/8/1K6 w - - 0 1", 15);  // file equal to rank
  EXPECT_EQ(white_pos(), 15 + 11);
  lay("7k/8/8/8/8/2B5/8/1K6 w - - 0 1", 14);
  EXPECT_EQ(white_pos(), 15 + 5);
  lay("7k/8/8/8/8/8/8/1K5B w - - 0 1", 15);  // file plus rank equal to 7
  EXPECT_EQ(white_pos(), 11);
  lay("b6k/8/8/8/8/8/8/1K6 w - - 0 1", 14);
  EXPECT_EQ(black_pos(), 5);
}

TEST(Rook, FifteenOffTheRimFilesForEitherColour) {
  for (const char* fen : {"7k/8/8/8/R7/8/8/1K6 w - - 0 1", "7k/8/8/8/7R/8/8/1K6 w - - 0 1"}) {
    lay(fen, 15);
    EXPECT_EQ(white_pos(), 0);
  }
  lay("7k/8/8/8/1R6/8/8/1K6 w - - 0 1", 15);
  EXPECT_EQ(white_pos(), 15);
  lay("7k/8/8/8/6r1/8/8/1K6 w - - 0 1", 15);
  EXPECT_EQ(black_pos(), 15);
  lay("7k/8/8/8/7r/8/8/1K6 w - - 0 1", 15);
  EXPECT_EQ(black_pos(), 0);
}

TEST(Rook, ProximityOnlyWithFewMen) {
  lay("7k/8/8/8/R7/8/8/1K6 w - - 0 1", 14);
  korvu::agresprxrei = 3;
  EXPECT_FLOAT_EQ(white_pos(), static_cast<float>(30 * nearness("a4", "h8")));
}

TEST(Rook, ElevenOnTheLastTwoRanksWithFewMen) {
  const auto white_on = [](const char* fen, const char* square, int n) {
    lay(fen, n);
    return white_pos() - static_cast<float>(10 * nearness(square, "h8"));
  };
  EXPECT_NEAR(white_on("7k/R7/8/8/8/8/8/1K6 w - - 0 1", "a7", 10), 11, 1e-5);
  EXPECT_NEAR(white_on("R6k/8/8/8/8/8/8/1K6 w - - 0 1", "a8", 10), 11, 1e-5);
  EXPECT_NEAR(white_on("7k/8/R7/8/8/8/8/1K6 w - - 0 1", "a6", 10), 0, 1e-5);
  EXPECT_NEAR(white_on("7k/R7/8/8/8/8/8/1K6 w - - 0 1", "a7", 11), 0, 1e-5);
  lay("7k/8/8/8/8/8/r7/1K6 w - - 0 1", 10);
  EXPECT_NEAR(black_pos(), 11 + 10 * nearness("a2", "b1"), 1e-5);
  lay("7k/r7/8/8/8/8/8/1K6 w - - 0 1", 10);
  EXPECT_NEAR(black_pos(), 10 * nearness("a7", "b1"), 1e-5);
}

TEST(Queen, TermsOfItsSquareByTheNumberOfMen) {
  lay("7k/8/8/8/8/8/8/KQ6 w - - 0 1", 15);
  EXPECT_FLOAT_EQ(white_pos(),
                  static_cast<float>(10 * centrality("b1") + 5 * nearness("b1", "h8")));
  lay("7k/8/8/8/8/8/8/KQ6 w - - 0 1", 14);
  EXPECT_FLOAT_EQ(white_pos(),
                  static_cast<float>(15 * centrality("b1") + 25 * nearness("b1", "h8")));
  lay("7k/8/8/8/8/8/1Q6/K7 w - - 0 1", 15);
  korvu::agresprxrei = 2;
  EXPECT_FLOAT_EQ(white_pos(),
                  static_cast<float>(15 + 10 * centrality("b2") + 10 * nearness("b2", "h8")));
}

TEST(King, FightsOnceTheEnemyHasNinetyOrLess) {
  bench::lay("7k/8/8/8/3K4/8/8/8 w - - 0 1");
  bench::men(3, 3);
  bench::officers_total(320, 91);
  EXPECT_EQ(white_pos(), 0);
  EXPECT_EQ(bench::waiting<Cor::b>().mob, 0);
  EXPECT_EQ(bench::waiting<Cor::b>().cen, 0);
  bench::officers_total(320, 90);
  EXPECT_FLOAT_EQ(white_pos(), 50 / 2.5F);
  EXPECT_EQ(bench::waiting<Cor::b>().mob, 8);
  EXPECT_EQ(black_pos(), 0);  // White still has 320
  EXPECT_EQ(bench::waiting<Cor::p>().mob, 0);
  bench::officers_total(90, 91);
  EXPECT_EQ(white_pos(), 0);
  EXPECT_FLOAT_EQ(black_pos(), static_cast<float>(50 * centrality("h8")));
  EXPECT_EQ(bench::waiting<Cor::p>().mob, 3);
}

TEST(King, HuntsABareKing) {
  bench::lay("7k/8/8/8/3K4/8/8/8 w - - 0 1");
  bench::officers_total(320, 0);
  korvu::agresprxrei = 2;
  bench::men(3, 1);
  EXPECT_FLOAT_EQ(white_pos(), 20);
  bench::men(3, 0);
  EXPECT_FLOAT_EQ(white_pos(), static_cast<float>(20 + 2 * 75.0 / 34));  // d4 to h8: 16 + 16 + 2
  // Black's king does not hunt while White has men, nor is it scaled in a White search.
  bench::officers_total(0, 0);
  EXPECT_FLOAT_EQ(black_pos(), static_cast<float>(50 * centrality("h8")));
  bench::men(0, 0);
  EXPECT_FLOAT_EQ(black_pos(), static_cast<float>(50 * centrality("h8") + 75.0 / 34));
}

TEST(King, HuntsFromTheSquareItStandsOnToTheSlotOfTheOther) {
  bench::lay("7k/8/8/8/3K4/8/8/8 w - - 0 1");
  bench::officers_total(320, 0);
  bench::men(3, 0);
  bench::kings("a1", "d6");
  EXPECT_FLOAT_EQ(white_pos(), static_cast<float>(20 + 75.0 / 6));
}
