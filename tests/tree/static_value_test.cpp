// What the end of a line is worth by material alone: the difference of the totals and, by ply, one
// of two quotient terms.
#include <gtest/gtest.h>

#include <cmath>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// A knight's move, with nothing to take near it.
constexpr std::string_view knights = "1n2k3/pppp4/8/8/8/8/PPPP4/1N2K3 w - - 0 1";
constexpr std::string_view rook_to_take = "4k3/8/8/8/8/2r5/8/1N2K3 w - - 0 1";
constexpr std::string_view promotion = "1n6/P7/7k/8/8/8/8/4K3 w - - 0 1";
constexpr std::string_view in_passing = "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1";

bool plain_quotient_at(int n) {
  return n == 2 || n == 3 || n == 5;
}

float by_formula(int n, float root, float other, float weight = 5) {
  const long double r = root, o = other;
  return static_cast<float>(plain_quotient_at(n) ? r - o + r / o
                                                 : r - o + weight * std::log(r / o));
}

// At even plies the mover of the incoming move is the opponent, at odd plies the root side.
float root_of(int n, float mover, float other) {
  return n % 2 == 0 ? other : mover;
}
float opponent_of(int n, float mover, float other) {
  return n % 2 == 0 ? mover : other;
}

// The value of the leaf at ply N after a move, with the totals before it.
template <int N, Cor cor>
float leaf(std::string_view move, float mover, float other) {
  totals<cor>(N - 1, mover, other);
  deep = N - 1;
  value(N) = 12345;
  enter<N, cor>(move);
  return value(N);
}

TEST(StaticValue, AddsThePlainQuotientAtPlies2And3And5AndTheLogarithmElsewhere) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(knights));
    for (float mover = 110; mover < 600; mover += 37)
      for (float other = 110; other < 600; other += 41) {
        const float v = leaf<N, cor>("b1c3", mover, other);
        ASSERT_EQ(v, by_formula(N, root_of(N, mover, other), opponent_of(N, mover, other)))
            << mover << " against " << other;
      }
  });
}

TEST(StaticValue, IsTheBareDifferenceWithoutExtraDefinition) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(knights));
    extradef = 0;
    EXPECT_EQ((leaf<N, cor>("b1c3", 352, 310)), N % 2 == 0 ? -42 : 42);
  });
}

TEST(StaticValue, WeighsTheLogarithmAloneByTheMaterialQuotientOption) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(knights));
    MQ = 8;
    EXPECT_EQ((leaf<N, cor>("b1c3", 400, 300)),
              by_formula(N, root_of(N, 400, 300), opponent_of(N, 400, 300), 8));
  });
}

TEST(StaticValue, TakesTheVictimOffTheOtherTotal) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(rook_to_take));
    EXPECT_EQ((leaf<N, cor>("b1c3", 142, 160)),
              by_formula(N, root_of(N, 142, 110), opponent_of(N, 142, 110)));
  });
}

TEST(StaticValue, CountsAPromotionAsEightyMore) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(promotion));
    EXPECT_EQ((leaf<N, cor>("a7a8", 120, 142)),
              by_formula(N, root_of(N, 200, 142), opponent_of(N, 200, 142)));
    stand(N - 1, told_for<cor>(promotion));
    EXPECT_EQ((leaf<N, cor>("a7b8", 120, 142)),
              by_formula(N, root_of(N, 200, 110), opponent_of(N, 200, 110)));
  });
}

TEST(StaticValue, GivesACaptureInPassingToTheTakerAndLeavesTheVictimsTotal) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(in_passing));
    EXPECT_EQ((leaf<N, cor>("e5d6", 120, 120)),
              by_formula(N, root_of(N, 130, 120), opponent_of(N, 130, 120)));
  });
}

TEST(StaticValue, OfANodeWithRepliesIsNotItsValue) {
  // The same totals, but the line goes on: a reply takes the knight.
  stand(5, "4k3/8/8/8/1p6/8/8/1N2K3 w - - 0 1");
  deep = 6;
  enter<6, Cor::b>("b1c3");
  EXPECT_EQ(alfa[6], by_formula(7, 120, 110));
}

}  // namespace
}  // namespace korvu
