// The vertical filter of odd plies from 7: lines that fall behind a bound of the root side end
// early, or go less far. At odd plies the mover of the incoming move is the root side.
#include <gtest/gtest.h>

#include <cmath>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

constexpr std::string_view check = "4k3/8/8/8/8/8/8/R3K3 w - - 0 1";  // a1a8
constexpr std::string_view rook_taken = "4k3/8/8/8/8/2r5/8/1N2K3 w - - 0 1";
constexpr std::string_view promotion = "8/P7/7k/8/8/8/8/4K3 w - - 0 1";
constexpr std::string_view in_passing = "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1";

// Equal totals and a king's move: w is 0, and a bound of 10 stands exactly at the margin.
template <int N>
void prepare(std::string_view fen, int depth) {
  stand(N - 1, fen);
  material<Cor::b>(N - 1) = material<Cor::p>(N - 1) = 190;
  VERTICAL_filt = 1;
  deep = depth;
  DEEP = 25;
}

template <int N, Cor cor>
void prepare_locked(int depth) {
  prepare<N>(told_for<cor>(locked), depth);
}

bool began_its_moves(int n) {
  return nd >= n;
}

// --- Plies 9 to 21, deep at the ply: the node takes w ---

TEST(VerticalFilter, AtTheLastPlyTheNodeTakesWBelowAnyBoundByTen) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 0; k < N; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against alfa" + std::to_string(k));
      prepare_locked<N, cor>(N);
      alfa[k] = 10;
      enter<N, cor>("d1e1");
      EXPECT_EQ(beta[N], 0);
      EXPECT_EQ(nodes, 0U);
      EXPECT_FALSE(began_its_moves(N));
      EXPECT_EQ(cut_flag(N - 1), 0) << "the parent is not stopped";

      prepare_locked<N, cor>(N);
      alfa[k] = 9.5;
      enter<N, cor>("d1e1");
      EXPECT_TRUE(began_its_moves(N));
    }
  });
}

TEST(VerticalFilter, WHasTheLogarithmAlsoWithoutExtraDefinition) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare_locked<N, cor>(N);
    totals<cor>(N - 1, 200, 300);
    extradef = 0;
    alfa[0] = 0;
    enter<N, cor>("d1e1");
    EXPECT_EQ(beta[N], static_cast<float>(-100 + 5 * std::log(200.0L / 300.0L)));
    EXPECT_EQ(nodes, 0U);
  });
}

TEST(VerticalFilter, WCountsTheIncomingCapture) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N>(told_for<cor>(rook_taken), N);
    totals<cor>(N - 1, 110, 160);
    alfa[0] = 10;
    enter<N, cor>("b1c3");
    EXPECT_EQ(beta[N], 0) << "50 behind before the capture, level after it";
    EXPECT_EQ(nodes, 0U);
  });
}

TEST(VerticalFilter, ASideInCheckAtTheLastPlyIsSearched) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N>(told_for<cor>(check), N);
    alfa[0] = 500;
    enter<N, cor>("a1a8");
    EXPECT_TRUE(began_its_moves(N));
    prepare<N>(told_for<cor>(check), N);
    alfa[0] = 500;
    enter<N, cor>("a1a7");
    EXPECT_FALSE(began_its_moves(N)) << "the same without the check";
  });
}

// --- Plies 9 to 21, two plies to go: the line is shortened ---

// Is the line that has two plies to go ended at this ply? Behind it the first reply is a leaf.
template <int N, Cor cor>
bool shortens(float root_alfa, float last_pass, float inner_alfa) {
  prepare_locked<N, cor>(N + 2);
  alfa[0] = root_alfa;
  ALFA0 = last_pass;
  alfa[2] = inner_alfa;
  enter<N, cor>("d1e1");
  EXPECT_EQ(deep, N + 2) << "put back";
  EXPECT_TRUE(began_its_moves(N)) << "the node goes on with its moves";
  return nd == N;
}

TEST(VerticalFilter, WithTwoPliesToGoALineBehindEndsHereIfTheRootStandsWell) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_TRUE((shortens<N, cor>(15, 9000, 0)));
    EXPECT_FALSE((shortens<N, cor>(14.5, 9000, 10))) << "neither 15 nor near the last pass";
    EXPECT_TRUE((shortens<N, cor>(14.5, 19.5, 10))) << "within 5 of the last pass";
    EXPECT_FALSE((shortens<N, cor>(14.5, 19.75, 10)));
    EXPECT_TRUE((shortens<N, cor>(-15, -10, 10)));
    EXPECT_FALSE((shortens<N, cor>(-15.5, -16, 10))) << "the root stands below -15";
  });
}

TEST(VerticalFilter, WithTwoPliesToGoAnyBoundTenAboveWShortensTheLine) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_TRUE((shortens<N, cor>(0, 0, 10)));
    EXPECT_FALSE((shortens<N, cor>(0, 0, 9.5)));
    for (std::size_t k = 2; k < N; k += 2) {
      prepare_locked<N, cor>(N + 2);
      alfa[0] = ALFA0 = 0;
      alfa[k] = 10;
      enter<N, cor>("d1e1");
      EXPECT_EQ(nd, N) << "alfa" << k;
    }
  });
}

TEST(VerticalFilter, WithTwoPliesToGoACheckDoesNotSaveALineBehind) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N>(told_for<cor>(check), N + 2);
    alfa[0] = 500;
    enter<N, cor>("a1a8");
    EXPECT_EQ(nd, N) << "shortened, and the replies are leaves";
    EXPECT_GT(nodes, 0U);
  });
}

TEST(VerticalFilter, WithMorePliesToGoDoesNothing) {
  each_node<7, 19, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare_locked<N, cor>(N + 4);
    alfa[0] = 15;
    enter<N, cor>("d1e1");
    EXPECT_TRUE(began_its_moves(N));
    EXPECT_GT(nd, N);
    EXPECT_EQ(cut_flag(N - 1), 0);
  });
}

// --- Ply 7 ---

TEST(VerticalFilter, Ply7AtDepth7StopsItsParentAndGoesOn) {
  each_colour([]<Cor cor>() {
    for (std::size_t k = 0; k < 7; k += 2) {
      SCOPED_TRACE("alfa" + std::to_string(k));
      prepare_locked<7, cor>(7);
      alfa[k] = 10;
      enter<7, cor>("d1e1");
      EXPECT_EQ(corte_beta[5], 1);
      EXPECT_EQ(nd, 7);
      EXPECT_EQ(nodes, 1U) << "its own moves are tried";

      prepare_locked<7, cor>(7);
      alfa[k] = 9.5;
      enter<7, cor>("d1e1");
      EXPECT_EQ(corte_beta[5], 0);
    }
  });
}

TEST(VerticalFilter, Ply7AtDepth7WantsTheSameBoundToBeNoMate) {
  each_colour([]<Cor cor>() {
    prepare_locked<7, cor>(7);
    alfa[2] = 3300;
    alfa[4] = 5;  // no mate, but w is not 10 below it
    enter<7, cor>("d1e1");
    EXPECT_EQ(corte_beta[5], 0);
    prepare_locked<7, cor>(7);
    alfa[2] = 3299;
    enter<7, cor>("d1e1");
    EXPECT_EQ(corte_beta[5], 1);
  });
}

template <Cor cor>
bool ply7_takes_w(std::string_view fen, std::string_view move) {
  prepare<7>(told_for<cor>(fen), 9);
  totals<cor>(6, 190, 190);
  alfa[4] = 500;
  beta[7] = 777;
  enter<7, cor>(move);
  EXPECT_EQ(corte_beta[5], 0);
  EXPECT_EQ(deep, 9);
  return nodes == 0 && !began_its_moves(7);
}

TEST(VerticalFilter, Ply7AtDepth9TakesWAfterAQuietMove) {
  each_colour([]<Cor cor>() {
    EXPECT_TRUE(ply7_takes_w<cor>(check, "a1a7"));
    EXPECT_EQ(beta[7], 0);
    EXPECT_FALSE(ply7_takes_w<cor>(check, "a1a8")) << "in check";
    EXPECT_FALSE(ply7_takes_w<cor>(rook_taken, "b1c3")) << "a capture";
    EXPECT_FALSE(ply7_takes_w<cor>(promotion, "a7a8")) << "a promotion";
    EXPECT_TRUE(ply7_takes_w<cor>(in_passing, "e5d6")) << "in passing the target is empty";
    EXPECT_EQ(beta[7], static_cast<float>(10 + 5 * std::log(200.0L / 190.0L)));
  });
}

TEST(VerticalFilter, Ply7AtDepth9AsksForTenBelowAnyBoundMatesToo) {
  each_colour([]<Cor cor>() {
    for (std::size_t k = 0; k < 7; k += 2) {
      prepare_locked<7, cor>(9);
      alfa[k] = 10;
      enter<7, cor>("d1e1");
      EXPECT_FALSE(began_its_moves(7)) << k;
      prepare_locked<7, cor>(9);
      alfa[k] = 9.5;
      enter<7, cor>("d1e1");
      EXPECT_TRUE(began_its_moves(7)) << k;
      prepare_locked<7, cor>(9);
      alfa[k] = 5000;
      enter<7, cor>("d1e1");
      EXPECT_FALSE(began_its_moves(7)) << k;
    }
  });
}

// --- Ply 23 ---

TEST(VerticalFilter, Ply23StopsItsParentAndGoesOn) {
  each_colour([]<Cor cor>() {
    for (std::size_t k = 0; k < 23; k += 2) {
      SCOPED_TRACE("alfa" + std::to_string(k));
      prepare_locked<23, cor>(23);
      alfa[k] = 10;
      enter<23, cor>("d1e1");
      EXPECT_EQ(corte_beta[21], 1);
      EXPECT_EQ(nodes, 1U);
      EXPECT_EQ(nd, 23);
      prepare_locked<23, cor>(23);
      alfa[k] = 9.5;
      enter<23, cor>("d1e1");
      EXPECT_EQ(corte_beta[21], 0);
    }
    prepare_locked<23, cor>(23);
    alfa[4] = 5000;
    enter<23, cor>("d1e1");
    EXPECT_EQ(corte_beta[21], 1) << "a mate is a bound like any other here";
  });
}

TEST(VerticalFilter, Ply23LooksAtNoDepth) {
  each_colour([]<Cor cor>() {
    prepare_locked<23, cor>(25);
    alfa[0] = 10;
    enter<23, cor>("d1e1");
    EXPECT_EQ(corte_beta[21], 1);
  });
}

// --- Everywhere ---

TEST(VerticalFilter, SwitchedOffDoesNothing) {
  each_node<7, 23, 2>([]<int N, Cor cor>() {
    for (const int depth : {N, N + 2}) {
      SCOPED_TRACE(at<cor>(N) + " at " + std::to_string(depth));
      prepare_locked<N, cor>(depth);
      VERTICAL_filt = 0;
      alfa[0] = 15;
      enter<N, cor>("d1e1");
      EXPECT_TRUE(began_its_moves(N));
      EXPECT_EQ(cut_flag(N - 1), 0);
      if (depth > N && N < 22) {
        EXPECT_GT(nd, N) << "not shortened";
      }
    }
  });
}

TEST(VerticalFilter, DoesNotStandAtEvenPliesNorBelow7) {
  each_node<2, 22>([]<int N, Cor cor>() {
    if (N % 2 != 0 && N >= 7) return;
    SCOPED_TRACE(at<cor>(N));
    prepare_locked<N, cor>(N);
    alfa[0] = 15;
    enter<N, cor>("d1e1");
    EXPECT_EQ(nd, N);
    EXPECT_GT(nodes, 0U);
    if (N > 2) {
      EXPECT_EQ(cut_flag(N - 1), 0);
    }
  });
}

// The parent's loop that is at work finishes its square; only then is the flag looked at.
TEST(VerticalFilter, AParentStoppedFromBelowFinishesTheLoopCallAtWork) {
  // Black's a-pawn has two moves, both tried by one loop call; b-pawn, knight and king are not
  // reached any more.
  stand(5, "1n2k3/pp6/8/8/8/8/1P6/1N2K3 w - - 0 1");
  totals<Cor::b>(5, 200, 200);
  VERTICAL_filt = 1;
  deep = 7;
  DEEP = 25;
  alfa[0] = 10;
  enter<6, Cor::b>("b1c3");
  EXPECT_EQ(nodes, 4U) << "two pawn moves, and the first reply to each";
  EXPECT_EQ(corte_beta[5], 1);
}

}  // namespace
}  // namespace korvu
