// Late and early moves of plies 2 to 9: searched two plies short first, and again where that
// finding must be verified. A reduction that was found wrong leaves its mark at the ply, which is
// how most tests see that one took place: bounds are set so that every reduction is redone.
#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "memory/ply_tables.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

constexpr std::string_view free_pawn =
    "3k4/p1p1p1p1/P1P1P1P1/8/7P/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1";  // h4h5
constexpr std::string_view king_takes =
    "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/3Kn3 w - - 0 1";          // d1e1
constexpr std::string_view rook_check = "4k3/8/8/8/8/8/8/R3K3 w - - 0 1";  // a1a8, a1b1

constexpr int late_above(int n) {
  return n <= 7 ? 8 : 10;
}
constexpr int early_above(int n) {
  return n <= 5 ? 8 : n <= 7 ? 10 : 12;
}

// A node of ply N that is to be the `nth` move tried at its parent. The parent has a value; the
// mover has no bound that could be missed.
template <int N, Cor cor>
void prepare(std::string_view fen, int depth, int nth) {
  stand(N - 1, told_for<cor>(fen));
  LMR = 1;
  deep = DEEP = depth;
  currN[N] = nth - 1;
  value(N - 1) = N % 2 == 0 ? 5 : -5;
}

// Bounds such that any result contradicts a reduced search of this kind.
template <int N>
void contradict_late() {
  if constexpr (N % 2 == 0)
    alfa[0] = 16000;
  else
    beta[1] = -16000;
}
// The early one's are the open bounds: any value beats them.

template <int N, Cor cor, class F>
bool reduces_late(std::string_view fen, std::string_view move, int depth, int nth, F change) {
  prepare<N, cor>(fen, depth, nth);
  contradict_late<N>();
  change();
  enter<N, cor>(move);
  EXPECT_EQ(deep, depth);
  return LmrT[N] != 0;
}
template <int N, Cor cor, class F>
bool reduces_early(std::string_view fen, std::string_view move, int depth, int nth, F change) {
  prepare<N, cor>(fen, depth, nth);
  change();
  enter<N, cor>(move);
  EXPECT_EQ(deep, depth);
  return AmrT[N] != 0;
}

constexpr auto nothing = [] {};

// --- Who is reduced ---

TEST(LateReduction, FromTheFifthMoveOnAboveAThresholdOfThePly) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int depth = late_above(N) + 1;
    EXPECT_TRUE((reduces_late<N, cor>(locked, "d1e1", depth, 5, nothing)));
    EXPECT_TRUE((reduces_late<N, cor>(locked, "d1e1", depth, 6, nothing)));
    EXPECT_FALSE((reduces_late<N, cor>(locked, "d1e1", depth - 1, 5, nothing)));
    EXPECT_FALSE((reduces_late<N, cor>(locked, "d1e1", depth - 2, 5, nothing)));
    EXPECT_FALSE((reduces_late<N, cor>(locked, "d1e1", depth, 4, nothing)));
  });
}

TEST(LateReduction, NeedsEveryOneOfItsConditions) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int depth = late_above(N) + 1;
    EXPECT_FALSE((reduces_late<N, cor>(locked, "d1e1", depth, 5, [] { LMR = 0; })));
    EXPECT_FALSE((reduces_late<N, cor>(locked, "d1e1", depth, 5, [] {
      value(N - 1) = N % 2 == 0 ? start_beta : start_alfa;  // the parent has no value
    })));
    EXPECT_FALSE((reduces_late<N, cor>(king_takes, "d1e1", depth, 5, nothing))) << "a capture";
    EXPECT_TRUE((reduces_late<N, cor>(rook_check, "a1b1", depth, 5, nothing)));
    EXPECT_FALSE((reduces_late<N, cor>(rook_check, "a1a8", depth, 5, nothing))) << "a check";
  });
}

TEST(LateReduction, SparesPawnMovesButAtPlies8And9OnlyWhites) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const bool reduced = reduces_late<N, cor>(free_pawn, "h4h5", late_above(N) + 1, 5, nothing);
    EXPECT_EQ(reduced, N >= 8 && cor == Cor::p);
  });
}

TEST(EarlyReduction, OfTheFirstFourMovesAboveAThresholdOfThePly) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int depth = early_above(N) + 1;
    EXPECT_TRUE((reduces_early<N, cor>(locked, "d1e1", depth, 1, nothing)));
    EXPECT_TRUE((reduces_early<N, cor>(locked, "d1e1", depth, 4, nothing)));
    EXPECT_FALSE((reduces_early<N, cor>(locked, "d1e1", depth, 5, nothing))) << "a late one";
    // A capture is never a late one, so that the fifth is searched in full.
    EXPECT_TRUE((reduces_early<N, cor>(king_takes, "d1e1", depth, 4, nothing)));
    EXPECT_FALSE((reduces_early<N, cor>(king_takes, "d1e1", depth, 5, nothing)));
    EXPECT_FALSE((reduces_early<N, cor>(locked, "d1e1", depth - 1, 1, nothing)));
    EXPECT_FALSE((reduces_early<N, cor>(locked, "d1e1", depth - 2, 1, nothing)));
  });
}

TEST(EarlyReduction, LooksAtNoKindOfMoveButSparesChecks) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int depth = early_above(N) + 1;
    EXPECT_TRUE((reduces_early<N, cor>(free_pawn, "h4h5", depth, 1, nothing))) << "a pawn move";
    EXPECT_TRUE((reduces_early<N, cor>(king_takes, "d1e1", depth, 1, nothing))) << "a capture";
    EXPECT_TRUE((reduces_early<N, cor>(locked, "d1e1", depth, 1, [] {
      value(N - 1) = N % 2 == 0 ? start_beta : start_alfa;
    }))) << "no value of the parent is needed";
    EXPECT_FALSE((reduces_early<N, cor>(locked, "d1e1", depth, 1, [] { LMR = 0; })));
  });
}

TEST(EarlyReduction, SparesASideInCheck) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    // The lone king's moves alone make the tree; at even plies every reply is then a cut.
    const auto shallow = [] {
      for (std::size_t k = N + 1; k < MAXcut.size(); ++k) MAXcut[k] = -20000;
    };
    constexpr int depth = early_above(N) + 1;
    EXPECT_TRUE((reduces_early<N, cor>(rook_check, "a1b1", depth, 1, shallow)));
    EXPECT_FALSE((reduces_early<N, cor>(rook_check, "a1a8", depth, 1, shallow)));
  });
}

TEST(Reductions, AtDepth9ReachPly7LateAndPly5Early) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_EQ((reduces_late<N, cor>(locked, "d1e1", 9, 5, nothing)), N <= 7);
    EXPECT_EQ((reduces_early<N, cor>(locked, "d1e1", 9, 1, nothing)), N <= 5);
  });
}

// --- What the reduced run is ---

struct Reading {
  int deep, tables;
};

// What the clock's readers saw of deep and HASHf, in order.
template <int N, Cor cor>
std::vector<Reading> readings(std::string_view move = "d1e1") {
  std::vector<Reading> seen;
  TC = 1;
  clock_says([&] {
    seen.push_back({deep, HASHf});
    return 0;
  });
  enter<N, cor>(move);
  TC = 0;
  return seen;
}

TEST(Reductions, AReducedSearchThatIsTrustedIsTheOnlyOne) {
  // Ply 7 (ply 9 for plies 8 and 9) reads the clock at full depth but not two plies short of it.
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int depth = late_above(N) + 1;
    prepare<N, cor>(locked, depth, 5);
    EXPECT_EQ((readings<N, cor>().size()), 0U);
    EXPECT_EQ(LmrT[N], 0);
    EXPECT_EQ(value(N), 0);
    prepare<N, cor>(locked, depth, 5);
    LmrT[N] = 1;
    EXPECT_GT((readings<N, cor>().size()), 0U) << "not reduced any more at this parent";
    prepare<N, cor>(locked, depth, 5);
    AmrT[N] = 1;
    EXPECT_EQ((readings<N, cor>().size()), 0U) << "the early mark is no matter for a late move";
  });
}

// Moves tried below an early move whose reduction would be found wrong.
template <int N, Cor cor>
std::uint32_t moves_below_an_early_one(bool late_mark, bool early_mark) {
  prepare<N, cor>(locked, early_above(N) + 1, 1);
  LmrT[N] = late_mark;
  AmrT[N] = early_mark;
  enter<N, cor>("d1e1");
  return nodes;
}

TEST(Reductions, AnEarlyReductionFoundWrongIsTheLastAtItsParent) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const std::uint32_t twice = moves_below_an_early_one<N, cor>(false, false);
    EXPECT_LT((moves_below_an_early_one<N, cor>(false, true)), twice) << "searched once";
    EXPECT_EQ((moves_below_an_early_one<N, cor>(true, false)), twice)
        << "the late mark is no matter for an early move";
  });
}

TEST(Reductions, ClearTheTablesSwitchUpToPly5) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int depth = late_above(N) + 3;
    prepare<N, cor>(locked, depth, 5);
    contradict_late<N>();
    HASHf = 1;
    const auto seen = readings<N, cor>();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front().deep, depth - 2) << "two plies short";
    EXPECT_EQ(seen.front().tables, N <= 5 ? 0 : 1);
    EXPECT_EQ(LmrT[N], 1) << "redone";
    EXPECT_EQ(HASHf, 1);
    EXPECT_EQ(deep, depth);
  });
}

TEST(Reductions, ARedoneSearchHasItsFullDepthAndItsTables) {
  // At plies 8 and 9 nothing below is reduced, so that every reading is this node's own run.
  each_node<8, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(locked, 13, 5);
    contradict_late<N>();
    HASHf = 1;
    const auto seen = readings<N, cor>();
    ASSERT_GE(seen.size(), 2U);
    EXPECT_EQ(seen.front().deep, 11);
    EXPECT_EQ(seen.back().deep, 13);
    EXPECT_EQ(seen.back().tables, 1);
  });
}

// --- The judgement; every value is 0 here ---

TEST(LateReduction, AtEvenPliesIsRedoneAtOrBelowAnyAlfaAbove) {
  each_node<2, 8, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 0; k + 2 <= N; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against alfa" + std::to_string(k));
      prepare<N, cor>(locked, late_above(N) + 1, 5);
      alfa[k] = 0;
      enter<N, cor>("d1e1");
      EXPECT_EQ(LmrT[N], 1);
      prepare<N, cor>(locked, late_above(N) + 1, 5);
      alfa[k] = -0.5;
      enter<N, cor>("d1e1");
      EXPECT_EQ(LmrT[N], 0);
    }
  });
}

TEST(LateReduction, AtOddPliesIsRedoneAtOrAboveAnyBetaAbove) {
  each_node<3, 9, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 1; k + 2 <= N; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against beta" + std::to_string(k));
      prepare<N, cor>(locked, late_above(N) + 1, 5);
      beta[k] = 0;
      enter<N, cor>("d1e1");
      EXPECT_EQ(LmrT[N], 1);
      prepare<N, cor>(locked, late_above(N) + 1, 5);
      beta[k] = 0.5;
      enter<N, cor>("d1e1");
      EXPECT_EQ(LmrT[N], 0);
    }
  });
}

TEST(EarlyReduction, AtEvenPliesIsRedoneOnlyAboveEveryAlfaAbove) {
  each_node<2, 8, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 0; k + 2 <= N; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against alfa" + std::to_string(k));
      prepare<N, cor>(locked, early_above(N) + 1, 1);
      alfa[k] = 0;
      enter<N, cor>("d1e1");
      EXPECT_EQ(AmrT[N], 0);
      prepare<N, cor>(locked, early_above(N) + 1, 1);
      alfa[k] = -0.5;
      enter<N, cor>("d1e1");
      EXPECT_EQ(AmrT[N], 1);
    }
  });
}

TEST(EarlyReduction, AtOddPliesIsRedoneOnlyBelowEveryBetaAbove) {
  each_node<3, 9, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 1; k + 2 <= N; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against beta" + std::to_string(k));
      prepare<N, cor>(locked, early_above(N) + 1, 1);
      beta[k] = 0;
      enter<N, cor>("d1e1");
      EXPECT_EQ(AmrT[N], 0);
      prepare<N, cor>(locked, early_above(N) + 1, 1);
      beta[k] = 0.5;
      enter<N, cor>("d1e1");
      EXPECT_EQ(AmrT[N], 1);
    }
  });
}

TEST(Reductions, AValueTakenByTheVerticalFilterIsJudgedLikeAnyOther) {
  each_colour([]<Cor cor>() {
    // Two plies short ply 9 is the last one, and the filter has its value there.
    for (const bool contradicted : {false, true}) {
      prepare<9, cor>(locked, 11, 5);
      VERTICAL_filt = 1;
      ALFA0 = 9000;  // the root stands badly: at full depth the filter does not shorten the line
      alfa[8] = 10;
      if (contradicted) beta[3] = 0;
      enter<9, cor>("d1e1");
      EXPECT_EQ(LmrT[9], contradicted);
      EXPECT_EQ(deep, 11);
      EXPECT_EQ(nd >= 9, contradicted) << "only the second search begins its moves";
    }
  });
}

TEST(Reductions, AValueTakenAtTheHardLimitIsJudgedLikeAnyOther) {
  each_colour([]<Cor cor>() {
    prepare<7, cor>(locked, 11, 5);
    TC = 1;
    alfa[6] = -42;
    beta[1] = -42;
    clock_says([] { return 1000000; });
    enter<7, cor>("d1e1");
    EXPECT_EQ(LmrT[7], 1);
    EXPECT_EQ(clock_reads(), 2) << "two plies short, and again";
    EXPECT_EQ(beta[7], -42);
    EXPECT_EQ(deep, 11);
    EXPECT_EQ(corte_MAXcut, 1);
  });
}

// --- Counters ---

TEST(Reductions, ANodeCountsItselfOnceAtItsParent) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int nth : {1, 5, 9}) {  // early, late, late
      prepare<N, cor>(locked, 13, nth);
      contradict_late<N>();
      if (nth == 1) alfa[0] = start_alfa, beta[1] = start_beta;
      if (N == 2) beta[1] = 5;
      if (N == 3) alfa[2] = -5;
      enter<N, cor>("d1e1");
      EXPECT_EQ(currN[N], nth) << "also when it was searched twice";
      EXPECT_EQ((nth == 1 ? AmrT : LmrT)[N], 1);
    }
  });
}

TEST(Reductions, ANodeCountsItselfAlsoAtTheEndOfTheLine) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(locked, N - 1, 3);
    enter<N, cor>("d1e1");
    EXPECT_EQ(currN[N], 3);
  });
}

TEST(Reductions, EveryRunCountsItsOwnMovesAfresh) {
  each_node<2, 8>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(locked, early_above(N) + 1, 1);
    currN[N + 1] = 17;
    enter<N, cor>("d1e1");
    EXPECT_EQ(AmrT[N], 1) << "searched twice";
    EXPECT_EQ(currN[N + 1], 2) << "the king in the middle has two moves";
  });
}

TEST(Reductions, EveryRunForgetsWhatTheRunBeforeLearned) {
  // The next ply reads the clock. The node runs two plies short and again, and each time its first
  // child runs two plies shorter still, though that was found wrong the first time.
  each_node<6, 8, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int depth = N + 7;
    prepare<N, cor>(locked, depth, 1);
    std::vector<int> first_childs;
    TC = 1;
    clock_says([&] {
      if (nd == N) first_childs.push_back(deep);
      return 0;
    });
    enter<N, cor>("d1e1");
    EXPECT_EQ(first_childs, (std::vector<int>{depth - 4, depth - 2}));
    EXPECT_EQ(AmrT[N], 1);
    EXPECT_EQ(AmrT[N + 1], 1);
  });
}

TEST(Reductions, ANewParentForgetsWhatTheLastOneLearned) {
  each_node<2, 8>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    // At the end of the line nothing is reduced below, so that marks could only be old ones.
    prepare<N, cor>(locked, N - 1, 1);
    LmrT[N + 1] = AmrT[N + 1] = 1;
    enter<N, cor>("d1e1");
    EXPECT_EQ(LmrT[N + 1], 0);
    EXPECT_EQ(AmrT[N + 1], 0);
  });
}

TEST(Reductions, PliesFrom10HaveNone) {
  each_node<10, 19>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    deep = N + 3;
    DEEP = 25;
    value(N - 1) = N % 2 == 0 ? 5 : -5;
    enter<N, cor>("d1e1");
    const std::uint32_t without = nodes;
    stand(N - 1, told_for<cor>(locked));
    LMR = 1;
    deep = N + 3;
    DEEP = 25;
    value(N - 1) = N % 2 == 0 ? 5 : -5;
    enter<N, cor>("d1e1");
    EXPECT_EQ(nodes, without);
  });
}

}  // namespace
}  // namespace korvu
