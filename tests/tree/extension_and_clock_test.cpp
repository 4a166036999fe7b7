// The clock in the tree: a second search of a root move goes deeper while there is time, and a line
// that goes deeper ends when there is none.
#include <gtest/gtest.h>

#include <vector>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// The locked position with one pawn free to move: not a quiet move.
constexpr std::string_view free_pawn = "3k4/p1p1p1p1/P1P1P1P1/8/7P/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1";

// 30 men, a third of them the divisor: soft limit 300000 / 150, hard limit 300000 / 15.
constexpr int soft = 2000, hard = 20000;

template <int N, Cor cor>
void prepare(int depth) {
  stand(N - 1, told_for<cor>(free_pawn));
  totals<cor>(N - 1, 200, 200);
  npecasb = npecasp = 15;
  deep = depth;
  DEEP = N;
}

// --- Limits ---

TEST(Limits, AreSharesOfTheClockByMenAndTimeUsage) {
  stand(0, locked);
  npecasb = 16;
  npecasp = 14;
  tempo = 300000;
  Tu = 3;
  EXPECT_EQ(limite_brando(), 2000);
  EXPECT_EQ(limite_duro(), 20000);
  Tu = 10;
  EXPECT_EQ(limite_brando(), 3750);
  EXPECT_EQ(limite_duro(), 37500);
  Tu = 8;  // 30 / 8 is 3 in integers
  EXPECT_EQ(limite_brando(), 3750);
  npecasb = 2;
  npecasp = 1;
  EXPECT_EQ(limite_brando(), 6000) << "more time usage than men";
  EXPECT_EQ(limite_duro(), 60000);
}

TEST(Limits, TimeRunsFromTheIntakeOfThePosition) {
  stand(0, locked);
  inicio = 400;
  clock_says([] { return 1000; });
  EXPECT_EQ(decorrido(), 600);
  EXPECT_EQ(fim, 1000);
}

// --- Extension ---

enum class Extension { not_asked, refused, granted };

// The node at its last ply, everything that an extension needs in force but for what `less` takes
// away. The clock is asked first for the extension; when that is granted, for the hard limit.
template <int N, Cor cor, class F>
Extension extension_at(int reading, F less) {
  prepare<N, cor>(N);
  SEARCH_E = LMRtest = SCANT = TC = 1;
  less();
  std::vector<int> depths;
  clock_says([&] {
    depths.push_back(deep);
    if (depths.size() == 2) SEARCH_E = TC = 0;
    return reading;
  });
  enter<N, cor>("h4h5");
  EXPECT_EQ(nd >= N, true) << "the node has run";
  if (depths.empty()) return Extension::not_asked;
  return depths.size() > 1 && depths[1] == N + 2 ? Extension::granted : Extension::refused;
}

constexpr auto nothing = [] {};

TEST(Extension, GoesTwoPliesDeeperWithinTheSoftLimit) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_EQ((extension_at<N, cor>(0, nothing)), Extension::granted);
    EXPECT_EQ(deep, N) << "put back";
    EXPECT_EQ((extension_at<N, cor>(soft, nothing)), Extension::granted);
    EXPECT_EQ((extension_at<N, cor>(soft + 1, nothing)), Extension::refused);
    EXPECT_EQ(deep, N);
  });
}

TEST(Extension, NeedsEveryOneOfItsConditions) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    using enum Extension;
    EXPECT_EQ((extension_at<N, cor>(0, [] { SEARCH_E = 0; })), not_asked);
    EXPECT_EQ((extension_at<N, cor>(0, [] { LMRtest = 0; })), not_asked);
    EXPECT_EQ((extension_at<N, cor>(0, [] { SCANT = 0; })), not_asked);
    EXPECT_EQ((extension_at<N, cor>(0, [] { CPU = 0; })), refused);
  });
}

TEST(Extension, NeedsANominalDepthWithinReach) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int least = N == 9 ? 9 : N - 2;
    for (int nominal = N - 4; nominal <= N + 4; ++nominal) {
      const bool within = nominal >= least && nominal <= N;
      EXPECT_EQ((extension_at<N, cor>(0, [=] { DEEP = nominal; })),
                within ? Extension::granted : Extension::not_asked)
          << nominal;
    }
  });
}

TEST(Extension, ANominalDepthOf9ReachesPly13AtMost) {
  EXPECT_EQ((extension_at<9, Cor::b>(0, nothing)), Extension::granted);
  EXPECT_EQ((extension_at<11, Cor::b>(0, [] { DEEP = 9; })), Extension::granted);
  EXPECT_EQ((extension_at<13, Cor::b>(0, [] { DEEP = 9; })), Extension::not_asked);
}

TEST(Extension, OnlyTheLastPlyOfTheLineIsExtended) {
  each_node<9, 19, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {N + 1, N + 2, N + 4}) {
      prepare<N, cor>(depth);
      SEARCH_E = LMRtest = SCANT = 1;
      int asked_by_the_node = 0;
      clock_says([&] {
        if (nd < N) ++asked_by_the_node;
        return 0;
      });
      enter<N, cor>("h4h5");
      EXPECT_GE(nd, N);
      EXPECT_EQ(asked_by_the_node, 0) << depth;
    }
  });
}

TEST(Extension, Plies7And23AndTheEvenOnesHaveNone) {
  each_node<2, 23>([]<int N, Cor cor>() {
    if (N % 2 != 0 && N >= 9 && N <= 21) return;
    SCOPED_TRACE(at<cor>(N));
    EXPECT_EQ((extension_at<N, cor>(0, nothing)), Extension::not_asked);
  });
}

TEST(Extension, LetsTwoMorePliesMakeMoves) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(N);
    SEARCH_E = LMRtest = SCANT = 1;
    clock_says([] {
      SEARCH_E = 0;
      DEEP = 25;  // out of the quiet stop's way from here on
      return 0;
    });
    enter<N, cor>("h4h5");
    EXPECT_EQ(nd, N + 2);
  });
}

// --- The hard limit ---

TEST(HardLimit, EndsTheNodeAndItsParentWithTheParentsValue) {
  each_node<7, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(N + 2);
    TC = 1;
    alfa[N - 1] = -42;
    clock_says([] { return hard; });
    enter<N, cor>("h4h5");
    EXPECT_EQ(corte_MAXcut, 1);
    EXPECT_EQ(corte_beta[N - 2], 1);
    EXPECT_EQ(beta[N], -42);
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(nd, -1);
    EXPECT_EQ(deep, N + 2) << "put back";
    EXPECT_EQ(clock_reads(), 1);
    EXPECT_EQ(fim, hard);
  });
}

TEST(HardLimit, DoesNothingBeforeItStrikes) {
  each_node<7, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(N + 2);
    DEEP = 25;
    TC = 1;
    alfa[N - 1] = -42;
    clock_says([] { return hard - 1; });
    enter<N, cor>("h4h5");
    EXPECT_EQ(corte_MAXcut, 0);
    EXPECT_EQ(corte_beta[N - 2], 0);
    EXPECT_EQ(nd, N + 2);
  });
}

TEST(HardLimit, CompletesALineThatSeesItselfMatedAtThisDepth) {
  each_node<7, 21, 2>([]<int N, Cor cor>() {
    for (const float seen : {-3300.0F, -9900.0F, -16500.0F}) {
      SCOPED_TRACE(at<cor>(N) + " with " + std::to_string(seen));
      prepare<N, cor>(N + 2);
      DEEP = 25;
      TC = 1;
      alfa[N - 1] = seen;
      clock_says([] { return hard; });
      enter<N, cor>("h4h5");
      EXPECT_EQ(corte_MAXcut, 1);
      EXPECT_EQ(corte_beta[N - 2], 0);
      EXPECT_EQ(nd, N) << "its replies are the ends of lines";
      EXPECT_EQ(nodes, 1U);
      EXPECT_EQ(beta[N], 0);
      EXPECT_EQ(deep, N + 2);
    }
    prepare<N, cor>(N + 2);
    TC = 1;
    alfa[N - 1] = -3299;
    clock_says([] { return hard; });
    enter<N, cor>("h4h5");
    EXPECT_EQ(beta[N], -3299);
    EXPECT_EQ(nodes, 0U);
  });
}

TEST(HardLimit, IsAskedOnlyMoreThanOnePlyBeforeTheEnd) {
  each_node<7, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {N, N + 1}) {
      prepare<N, cor>(depth);
      TC = 1;
      clock_says([] { return hard; });
      enter<N, cor>("h4h5");
      EXPECT_EQ(clock_reads(), 0) << depth;
      EXPECT_EQ(corte_MAXcut, 0);
    }
  });
}

TEST(HardLimit, DoesNotStandWithoutTimeControl) {
  each_node<7, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(N + 2);
    TC = 0;
    clock_says([] { return 100 * hard; });
    enter<N, cor>("h4h5");
    EXPECT_EQ(clock_reads(), 0);
    EXPECT_EQ(corte_MAXcut, 0);
  });
}

TEST(HardLimit, IsNotAskedAtEvenPliesBelow7NorAt23) {
  each_node<2, 23>([]<int N, Cor cor>() {
    if (N % 2 != 0 && N >= 7 && N <= 21) return;
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(N < 6 ? 6 : N + 2);  // no clock stands in the subtree below 7 at deep 6
    DEEP = 25;
    TC = 1;
    int asked_by_the_node = 0;
    clock_says([&] {
      if (nd < N) ++asked_by_the_node;
      return 0;
    });
    enter<N, cor>("h4h5");
    EXPECT_EQ(asked_by_the_node, 0);
    EXPECT_GE(nd, N);
  });
}

TEST(HardLimit, ComesAfterTheVerticalFilter) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(N + 2);
    VERTICAL_filt = TC = 1;
    alfa[0] = 15;  // the filter brings deep down to the ply, which needs no clock
    clock_says([] { return hard; });
    enter<N, cor>("h4h5");
    EXPECT_EQ(clock_reads(), 0);
    EXPECT_EQ(nd, N);
  });
}

TEST(Extension, ComesAfterTheVerticalFilter) {
  each_node<9, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(N);
    VERTICAL_filt = SEARCH_E = LMRtest = SCANT = 1;
    alfa[0] = 15;
    clock_says([] { return 0; });
    enter<N, cor>("h4h5");
    EXPECT_EQ(beta[N], 0) << "the node takes the filter's value";
    EXPECT_EQ(clock_reads(), 0);
    EXPECT_EQ(nodes, 0U);
  });
}

}  // namespace
}  // namespace korvu
