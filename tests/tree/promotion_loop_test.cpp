// Promotions: a loop of their own at odd plies from 7, moves among the others elsewhere.
#include <gtest/gtest.h>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

#define LOOP(N, name) (cor == Cor::b ? name##_b<N> : name##_p<N>)

constexpr bool own_loop(int n) {
  return n % 2 != 0 && n >= 7;
}

template <int N, Cor cor>
void prepare(std::string_view fen) {
  stand(N, told_for<cor>(fen));
  totals<cor>(N, 300, 300);
  extradef = 0;
  deep = N == 2 ? 3 : N;
  DEEP = 25;
}

template <Cor cor, class F>
void run(F loop, std::string_view square) {
  const auto s = static_cast<int>(square_of<cor>(square));
  loop(s / 8, s % 8);
}

// The mover's gain by the first move that the loop tries.
template <int N, Cor cor>
float first_gain(std::string_view fen) {
  prepare<N, cor>(fen);
  MAXcut[N] = -20000;
  run<cor>(LOOP(N, analisepositive_peao), "b7");
  EXPECT_EQ(nodes, 1U);
  return N % 2 == 0 ? value(N) : -value(N);
}

TEST(PromotionLoop, TakesTowardsTheHFileFirstThenTheAFileThenPushes) {
  each_node<7, 23, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_EQ((first_gain<N, cor>("r1n5/1P6/7k/8/8/8/8/4K3 w - - 0 1")), 80 + 32);
    EXPECT_EQ((first_gain<N, cor>("r7/1P6/7k/8/8/8/8/4K3 w - - 0 1")), 80 + 50);
    EXPECT_EQ((first_gain<N, cor>("8/1P6/7k/8/8/8/8/4K3 w - - 0 1")), 80);
    prepare<N, cor>("r1n5/1P6/7k/8/8/8/8/4K3 w - - 0 1");
    run<cor>(LOOP(N, analisepositive_peao), "b7");
    EXPECT_EQ(nodes, 3U);
  });
}

TEST(PromotionLoop, TriesNothingElse) {
  each_node<7, 23, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto tried = [](std::string_view fen, std::string_view square) {
      prepare<N, cor>(fen);
      run<cor>(LOOP(N, analisepositive_peao), square);
      return nodes;
    };
    EXPECT_EQ(tried("2n5/8/1P5k/2r5/8/8/8/4K3 w - - 0 1", "b6"), 0U) << "two steps away";
    EXPECT_EQ(tried("1n6/1P6/7k/8/8/8/8/4K3 w - - 0 1", "b7"), 0U) << "blocked";
    EXPECT_EQ(tried("N1N5/1P6/7k/8/8/8/8/4K3 w - - 0 1", "b7"), 1U) << "own men beside";
    EXPECT_EQ(tried("2k5/1P6/8/8/8/8/8/4K3 w - - 0 1", "b7"), 1U) << "a king is no victim";
    EXPECT_EQ(tried("2n4r/7P/8/8/1k6/8/8/4K3 w - - 0 1", "h7"), 0U) << "the board's edge";
  });
}

TEST(PromotionLoop, LeavesTheOtherLoopsNoPromotion) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>("1n6/P7/7k/8/8/8/8/4K3 w - - 0 1");
    MAXcut[N] = -20000;
    run<cor>(LOOP(N, gerador), "b8");
    EXPECT_EQ(nodes > 0, !own_loop(N));
    prepare<N, cor>("1n6/P7/7k/8/8/8/8/4K3 w - - 0 1");
    MAXcut[N] = -20000;
    run<cor>(LOOP(N, analiselivre_peao), "a7");
    EXPECT_EQ(nodes > 0, !own_loop(N));
    // Other men take there at every ply.
    prepare<N, cor>("1n6/3N4/7k/8/8/8/8/4K3 w - - 0 1");
    MAXcut[N] = -20000;
    run<cor>(LOOP(N, gerador), "b8");
    EXPECT_GT(nodes, 0U);
  });
}

}  // namespace
}  // namespace korvu
