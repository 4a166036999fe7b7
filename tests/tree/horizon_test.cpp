// Ply 24, the end of the chain: a value and nothing else.
#include <gtest/gtest.h>

#include <cmath>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

constexpr std::string_view rook = "4k3/8/8/8/8/8/8/R3K3 w - - 0 1";
constexpr std::string_view pawn = "8/P6k/8/8/8/8/8/4K3 w - - 0 1";

float with_logarithm(long double root, long double other) {
  return static_cast<float>(root - other + 5 * std::log(root / other));
}

TEST(Horizon, TheLeafOfALineAtDepth23) {
  each_colour([]<Cor cor>() {
    stand(23, told_for<cor>(rook));
    deep = 23;
    enter<24, cor>("a1b1");
    EXPECT_EQ(alfa[24], with_logarithm(110, 160)) << "the root side is the one to move";
  });
}

TEST(Horizon, AnyOtherDepthLeavesTheSlotAsItWas) {
  each_colour([]<Cor cor>() {
    for (const int depth : {24, 22, 21, 1, 0}) {
      stand(23, told_for<cor>(rook));
      deep = depth;
      alfa[24] = 777;
      enter<24, cor>("a1b1");
      EXPECT_EQ(alfa[24], 777) << depth;
    }
  });
}

TEST(Horizon, ASideInCheckIsWeighedLikeAnyOther) {
  each_colour([]<Cor cor>() {
    stand(23, told_for<cor>(rook));
    deep = 23;
    DEEP = 9;
    enter<24, cor>("a1a8");
    EXPECT_EQ(alfa[24], with_logarithm(110, 160));
  });
}

TEST(Horizon, APromotionAtPly23CountsThoughNoBoardShowsTheQueen) {
  each_colour([]<Cor cor>() {
    stand(23, told_for<cor>(pawn));
    deep = 23;
    enter<24, cor>("a7a8");
    EXPECT_EQ(alfa[24], with_logarithm(110, 200));
    EXPECT_EQ(tabd[23][square_of<cor>("a7")], Lado<cor>::peao);
  });
}

TEST(Horizon, TheLineNeverGoesDeeper) {
  each_colour([]<Cor cor>() {
    stand(22, told_for<cor>(locked));
    deep = DEEP = 23;
    enter<23, cor>("d1e1");
    EXPECT_EQ(nd, 23) << "ply 24 begins no moves";
    EXPECT_EQ(nodes, 1U) << "the first reply ends the node";
    EXPECT_EQ(beta[23], 0);
  });
}

}  // namespace
}  // namespace korvu
