// The correction of a leaf: the sum of the quotients, and its budget.
#include <gtest/gtest.h>

#include <cmath>

#include "eval/bench.h"
#include "eval/knobs.h"
#include "eval/leaf.h"

namespace {

using bench::centrality;
using bench::nearness;
using korvu::Cor;

float correction() {
  korvu::extra_eval<Cor::b, Cor::b>();
  return korvu::extraeval;
}

// A White knight on b1 and the bare kings on h1 and h8, which stay at home. The knight reaches a3,
// c3 and d2.
void lay_knight() {
  bench::lay("7k/8/8/8/8/8/8/1N5K w - - 0 1");
  bench::kings_at_home();
  bench::men(10, 5);
}

// The same board's correction, term by term.
struct Terms {
  double advance = (1 + 1 + 0.1) / 2 - (1 + 0.1) / 1;
  double density = 1.0 / 1 - 1.0 / 1;
  double weight = 2 * std::log((3 + 10.1) / (0 + 10.1));
  double safety =
      5 * std::log((nearness("a3", "h1") + nearness("c3", "h1") + nearness("d2", "h1") + 3) / 3);
  double danger =
      5 * std::log((nearness("a3", "h8") + nearness("c3", "h8") + nearness("d2", "h8") + 3) / 3);
  double mobility = 5 * std::log((3 + 3) / (0 + 3.0));
  double pos = 25 * centrality("b1") + 5 * nearness("b1", "h8");
  double cen = 50 * (centrality("a3") + centrality("c3") + centrality("d2"));
  double position = 5 * std::log((pos + cen + 10.1) / 10.1);

  double sum() const { return advance + density + weight + safety + danger + mobility + position; }
};

}  // namespace

TEST(LeafSum, OfAKnightAgainstABareKing) {
  lay_knight();
  EXPECT_NEAR(correction(), Terms().sum(), 1e-5);
}

TEST(LeafSum, IsTakenFromTheRootSide) {
  lay_knight();
  korvu::extra_eval<Cor::p, Cor::p>();
  EXPECT_NEAR(korvu::extraeval, -Terms().sum(), 1e-5);
}

TEST(LeafSum, WeightsOfMobilityAndPosition) {
  lay_knight();
  const Terms t;
  korvu::MOB = 0;
  EXPECT_NEAR(correction(), t.sum() - t.mobility, 1e-5);
  korvu::MOB = 10;
  EXPECT_NEAR(correction(), t.sum() + t.mobility, 1e-5);
  korvu::PM = 0;
  EXPECT_NEAR(correction(), t.sum() + t.mobility - t.position, 1e-5);
}

TEST(LeafSum, AddsTheRootMovesOwnAssessment) {
  lay_knight();
  korvu::extraevalll = 1.5F;
  EXPECT_NEAR(correction(), Terms().sum() + 1.5, 1e-5);
  korvu::extra_eval<Cor::p, Cor::p>();
  EXPECT_NEAR(korvu::extraeval, -Terms().sum() + 1.5, 1e-5);
}

TEST(LeafSum, DensityIsPawnsByTheExtentOfPawnsAndKing) {
  // White: pawns a2, c2 and king b1: 3 / (3 x 2). Black: pawns a7, h7 and king b8: 3 / (8 x 2).
  // The rest of the sum is the same but for what the pawns see; so only the density is told here.
  bench::lay("1k6/p6p/8/8/8/8/P1P5/1K6 w - - 0 1");
  bench::kings_at_home();
  const plain::Setting set = plain::setting_from_slots();
  const korvu::Figuras w = bench::waiting<Cor::b>(), b = bench::waiting<Cor::p>();
  const double others = 5 * std::log((w.kdefend + w.shield + 3.0) / (b.kattack + 3.0)) +
                        5 * std::log((w.kattack + 3.0) / (b.kdefend + b.shield + 3.0)) +
                        set.mob_weight * std::log((w.mob + 3.0) / (b.mob + 3.0)) +
                        set.pos_weight * std::log((w.pos + w.cen + 10.1) / (b.pos + b.cen + 10.1));
  korvu::extra_eval<Cor::b, Cor::p>();
  EXPECT_EQ(w.shield, 2);
  EXPECT_EQ(b.shield, 1);
  EXPECT_NEAR(korvu::extraeval - others, 3.0 / 6 - 3.0 / 16, 1e-5);
}

TEST(LeafSum, CastlingCountsOnceASideHasCastledOnTheLine) {
  lay_knight();
  const double base = Terms().sum();
  korvu::roque_v = 7;
  EXPECT_NEAR(correction(), base, 1e-5);
  korvu::roque_b = 10;
  EXPECT_NEAR(correction(), base + 7 * std::log(13 / 3.0), 1e-5);
  korvu::roque_p = 9;
  EXPECT_NEAR(correction(), base + 7 * std::log(13 / 12.0), 1e-5);
  korvu::roque_b = 0;
  EXPECT_NEAR(correction(), base + 7 * std::log(3 / 12.0), 1e-5);
  korvu::extra_eval<Cor::p, Cor::p>();
  EXPECT_NEAR(korvu::extraeval, -base + 7 * std::log(12 / 3.0), 1e-5);
}

TEST(LeafSum, WithoutACastlingTheWeightOfCastlingDoesNotMatter) {
  lay_knight();
  korvu::roque_v = 0;
  const float without = correction();
  korvu::roque_v = 10;
  EXPECT_EQ(correction(), without);
}

TEST(LeafSum, AttackByDefenceLeansWithTheRootAndAddsBothSides) {
  // White attacks e5 twice and defends its pawn twice more; see the figures below.
  bench::lay("7k/8/8/4p3/3P4/2N2N2/8/7K w - - 0 1");
  bench::kings_at_home();
  const korvu::Figuras w = bench::waiting<Cor::b>(), b = bench::waiting<Cor::p>();
  ASSERT_EQ(w.att, 2);  // pawn and knight on e5
  ASSERT_EQ(w.def, 1);  // knight on d4
  ASSERT_EQ(b.att, 1);  // pawn on d4
  ASSERT_EQ(b.def, 0);
  korvu::shashinn = 0;
  const float level = correction();
  korvu::shashinn = 200;
  EXPECT_NEAR(correction() - level,
              200 * 0.01 * std::log(5 / 4.0) + 200 * 0.001 * std::log(4 / 3.0), 1e-5);
  korvu::shashinn = -200;
  EXPECT_NEAR(correction() - level,
              -200 * 0.01 * std::log(5 / 4.0) - 200 * 0.001 * std::log(4 / 3.0), 1e-5);
  // For Black the roles change, and the other side's figure is added all the same.
  korvu::shashinn = 0;
  korvu::extra_eval<Cor::p, Cor::b>();
  const float black_level = korvu::extraeval;
  korvu::shashinn = 200;
  korvu::extra_eval<Cor::p, Cor::b>();
  EXPECT_NEAR(korvu::extraeval - black_level,
              200 * 0.01 * std::log(4 / 3.0) + 200 * 0.001 * std::log(5 / 4.0), 1e-5);
}

TEST(LeafSum, KeepsToItsBudget) {
  lay_knight();
  korvu::extraevalll = 200;
  EXPECT_EQ(correction(), 50);
  korvu::extraevalll = -200;
  EXPECT_EQ(correction(), -50);
  korvu::piecesac = 7;
  EXPECT_EQ(correction(), -7);
  korvu::extraevalll = 200;
  EXPECT_EQ(correction(), 7);
  korvu::piecesac = 1000;
  EXPECT_NEAR(correction(), 200 + Terms().sum(), 1e-3);
}

TEST(LeafSum, BudgetHoldsForTheMostUnequalBoards) {
  bench::lay("k7/8/8/8/8/8/8/QQQQKQQQ w - - 0 1");
  korvu::agresprxrei = 9;
  korvu::MOB = korvu::PM = 10;
  for (const int budget : {50, 20, 1, 0}) {
    korvu::piecesac = budget;
    korvu::extra_eval<Cor::b, Cor::b>();
    EXPECT_EQ(korvu::extraeval, budget);
    korvu::extra_eval<Cor::p, Cor::b>();
    EXPECT_EQ(korvu::extraeval, -budget);
  }
}

// With agres at 0 every attack of a pawn costs 10. White's pawns attack four; what they note (26.6)
// and the base do not make up for it, so that White's positional quotient is negative and has no
// logarithm.
TEST(LeafSum, ThatIsNoNumberCountsAsNothing) {
  bench::lay("q6k/r7/8/8/8/p1p1p1p1/1P3P2/7K w - - 0 1");
  bench::kings_at_home();
  korvu::agres = 0;
  const korvu::Figuras w = bench::to_move<Cor::b>();
  ASSERT_EQ(w.pos, -40);
  ASSERT_LT(w.pos + w.cen + 10.1, 0);
  for (const int budget : {50, 5}) {
    korvu::piecesac = budget;
    korvu::extra_eval<Cor::b, Cor::b>();
    EXPECT_EQ(korvu::extraeval, 0);
    korvu::extra_eval<Cor::p, Cor::b>();
    EXPECT_EQ(korvu::extraeval, 0);
  }
}

TEST(LeafSum, LeavesItsSumsAsARecord) {
  lay_knight();
  korvu::atack_ksf_p = korvu::defesa_ksf_p = korvu::centro_p = 5;
  korvu::extra_eval<Cor::b, Cor::b>();
  EXPECT_NEAR(korvu::atack_ksf_b,
              nearness("a3", "h8") + nearness("c3", "h8") + nearness("d2", "h8"), 1e-6);
  EXPECT_NEAR(korvu::defesa_ksf_b,
              nearness("a3", "h1") + nearness("c3", "h1") + nearness("d2", "h1"), 1e-6);
  EXPECT_NEAR(korvu::centro_b, Terms().cen, 1e-4);
  EXPECT_EQ(korvu::atack_ksf_p, 0);
  EXPECT_EQ(korvu::defesa_ksf_p, 0);
  EXPECT_EQ(korvu::centro_p, 0);
}

TEST(LeafSum, OnlyARootSideToMoveRaisesTheDeepestPly) {
  lay_knight();
  korvu::deep = 11;
  korvu::ddep = 9;
  korvu::extra_eval<Cor::b, Cor::p>();
  korvu::extra_eval<Cor::p, Cor::b>();
  EXPECT_EQ(korvu::ddep, 9);
  korvu::extra_eval<Cor::b, Cor::b>();
  EXPECT_EQ(korvu::ddep, 11);
  korvu::ddep = 9;
  korvu::extra_eval<Cor::p, Cor::p>();
  EXPECT_EQ(korvu::ddep, 11);
  korvu::deep = 5;
  korvu::extra_eval<Cor::p, Cor::p>();
  EXPECT_EQ(korvu::ddep, 11);
}
