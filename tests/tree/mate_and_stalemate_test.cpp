// A node without a legal reply: mate by the ply, or the draw's value.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

constexpr std::string_view mating = "7k/8/6KQ/8/8/8/8/8 w - - 0 1";         // h6g7
constexpr std::string_view stalemating = "7k/8/6K1/8/8/8/8/5Q2 w - - 0 1";  // f1f7
constexpr std::string_view pawn_left = "7k/p7/6K1/8/8/8/8/5Q2 w - - 0 1";   // f1f7
constexpr std::string_view walks_into_mate = "8/8/8/8/8/6k1/q7/6K1 w - - 0 1";
constexpr std::string_view smothered =  // g5f7 mates the king amid his men
    "6rk/6pp/8/6N1/8/8/8/K7 w - - 0 1";

// Mate at a ply, for the side that has won: two plies share a step.
constexpr std::array<float, 24> mate = {0,     0,     15400, 14300, 14300, 13200, 13200, 12100,
                                        12100, 11000, 11000, 9900,  9900,  8800,  8800,  7700,
                                        7700,  6600,  6600,  5500,  5500,  4400,  4400,  3300};

template <int N, Cor cor>
void enter_at_depth(std::string_view fen, std::string_view move, int depth) {
  stand(N - 1, told_for<cor>(fen));
  emp = -37;
  deep = depth;
  DEEP = 25;
  enter<N, cor>(move);
}

TEST(Mate, IsWorthLessTheDeeperItLies) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {N, N + 1, N + 2}) {
      enter_at_depth<N, cor>(mating, "h6g7", depth);
      EXPECT_EQ(value(N), N % 2 == 0 ? -mate[N] : mate[N]) << "deep " << depth;
      EXPECT_EQ(nodes, 0U);
      EXPECT_EQ(nd, N);
      EXPECT_EQ(X_D[N], 1);
      EXPECT_EQ(XEQUE_MATE[N], 1);
    }
  });
}

TEST(Mate, IsSeenAmidMenThatCannotHelp) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    enter_at_depth<N, cor>(smothered, "g5f7", N);
    EXPECT_EQ(value(N), N % 2 == 0 ? -mate[N] : mate[N]);
  });
}

TEST(Stalemate, IsWorthTheDrawsValueAtEveryPly) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {N, N + 1}) {
      enter_at_depth<N, cor>(stalemating, "f1f7", depth);
      EXPECT_EQ(value(N), -37);
      EXPECT_EQ(nodes, 0U);
      EXPECT_EQ(X_D[N], 1);
      EXPECT_EQ(XEQUE_MATE[N], 0) << "the king's loop has found the king safe";
    }
  });
}

TEST(Stalemate, IsNoneWithAPawnsMoveLeft) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    enter_at_depth<N, cor>(pawn_left, "f1f7", N | 1);
    EXPECT_NE(value(N), -37);
    EXPECT_LT(std::abs(value(N)), 3300);
    EXPECT_EQ(X_D[N], 0);
  });
}

// A reply without a node of its own, whose slot holds no more than the start value, is no reply.
TEST(Stalemate, IsWhatIsLeftOfRepliesThatOnlyEqualTheStartValue) {
  each_colour([]<Cor cor>() {
    for (const float stale : {start_alfa, start_alfa + 1}) {
      stand(1, told_for<cor>(locked));
      emp = -37;
      deep = 2;
      DEEP = 25;
      beta[3] = stale;
      enter<2, cor>("d1c1");
      EXPECT_EQ(nodes, 2U) << "the other king has two moves";
      EXPECT_EQ(alfa[2], stale == start_alfa ? -37 : stale);
      EXPECT_EQ(X_D[2], stale == start_alfa);
    }
  });
}

// Totals so far apart that no reply is worth more than the start value.
TEST(Mate, IsNoneWhereAChildHasMovedThoughNothingImprovedTheNode) {
  each_node<2, 22>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    totals<cor>(N - 1, 20000, 110);
    emp = -37;
    deep = N + 1;
    DEEP = 25;
    enter<N, cor>("d1c1");
    EXPECT_EQ(value(N), N % 2 == 0 ? start_alfa : start_beta);
    EXPECT_EQ(X_D[N], 1);
    EXPECT_EQ(nd, N + 1);
  });
}

TEST(Mate, AtTheEndOfTheLineIsNotLookedFor) {
  each_node<2, 24>([]<int N, Cor cor>() {
    if (N % 2 != 0 && N >= 11) return;  // these look at check
    SCOPED_TRACE(at<cor>(N));
    enter_at_depth<N, cor>(mating, "h6g7", N - 1);
    EXPECT_LT(std::abs(value(N)), 3300) << "a leaf is material alone";
  });
}

TEST(Mate, IsFoundAPlyBeforeWithItsOwnPlysWorth) {
  each_node<2, 22>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    enter_at_depth<N, cor>(walks_into_mate, "g1h1", N + 1);
    EXPECT_EQ(value(N), N % 2 == 0 ? mate[N + 1] : -mate[N + 1]);
    EXPECT_EQ(X_D[N], 0);
  });
}

}  // namespace
}  // namespace korvu
