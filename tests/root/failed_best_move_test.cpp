// The best move of a single-move pass fails: the root's window is opened.
#include <gtest/gtest.h>

#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

struct Fallen {
  float alfa0, E;
};

// The single pass at depth 9: the value 0 has failed at or below alfa0.
template <Cor root, class F>
Fallen after_failure(float best, float sum, F change) {
  at_depth(told_for<root>(locked), 9);
  PVS = 1;
  SCAN1 = 1;
  alfa0 = best;
  E = sum;
  ALFA0 = 20;
  change();
  first_ply<root>("d1e1");
  return {alfa0, E};
}

TEST(FailedBestMove, OpensTheWindowBy75) {
  each_colour([]<Cor root>() {
    const Fallen f = after_failure<root>(80, 90, [] {});
    EXPECT_EQ(f.alfa0, 5);
    EXPECT_EQ(f.E, 15);
    EXPECT_EQ(beta1, 0);
  });
}

TEST(FailedBestMove, ThatFallsBelowMinus15OpensItWide) {
  each_colour([]<Cor root>() {
    const Fallen below = after_failure<root>(59.5, 90, [] {});
    EXPECT_EQ(below.alfa0, -16500);
    EXPECT_EQ(below.E, no_best);
    const Fallen at = after_failure<root>(60, 90, [] {});
    EXPECT_EQ(at.alfa0, -15);
    EXPECT_EQ(at.E, 15);
  });
}

TEST(FailedBestMove, OfASearchThatIsBehindTheMaterialOpensItWide) {
  each_colour([]<Cor root>() {
    // With equal totals the least that E must be is the balance less 15.
    const Fallen enough = after_failure<root>(80, 90, [] { materialflot0 = 30; });
    EXPECT_EQ(enough.alfa0, 5) << "15 is left, and 15 is asked";
    const Fallen less = after_failure<root>(80, 90, [] { materialflot0 = 30.5; });
    EXPECT_EQ(less.alfa0, -16500) << "15 is left, and 15.5 is asked";
    EXPECT_EQ(less.E, no_best);
    const Fallen behind = after_failure<root>(80, 14, [] { materialflot0 = 30; });
    EXPECT_EQ(behind.alfa0, -16500) << "not lowered first";
    const Fallen taken = after_failure<root>(80, 90, [] { peca = root == Cor::b ? 31 : -31; });
    EXPECT_EQ(taken.alfa0, -16500) << "a man just taken counts as balance";
  });
}

TEST(FailedBestMove, CountsTheQuotientOfTheTotalsAsBalance) {
  each_colour([]<Cor root>() {
    const auto with_balance = [](float balance) {
      return after_failure<root>(80, 90,
                                 [=] {
                                   material_da_raiz<root>() = 200;
                                   material_da_raiz<outra(root)>() = 400;
                                   materialflot0 = balance;
                                 })
          .alfa0;
    };
    // 5 ln (1 / 2) is -3.466; 15 is left.
    EXPECT_EQ(with_balance(33.4F), 5);
    EXPECT_EQ(with_balance(33.5F), -16500);
  });
}

TEST(FailedBestMove, StandsForDepth9TheSinglePassAndFewMenOnly) {
  each_colour([]<Cor root>() {
    EXPECT_EQ(after_failure<root>(80, 90, [] { DEEP9 = 1; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(80, 90, [] { deep = DEEP = 11; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(80, 90, [] { deep = DEEP = 7; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(80, 90, [] { SCAN1 = 0, SCANT = 1; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(-0.5, 90, [] {}).alfa0, -0.5) << "the move did not fail";
  });
}

TEST(FailedBestMove, OfADirectSearchIsJudgedByTheShallowValue) {
  each_colour([]<Cor root>() { EXPECT_EQ(after_failure<root>(80, 90, [] { PVS = 0; }).alfa0, 5); });
}

}  // namespace
}  // namespace korvu
