// Where a line ends: by `deep`, and beyond the nominal depth at quiet moves.
#include <gtest/gtest.h>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// White's knight, pawn and rook may move; both sides have the same men.
constexpr std::string_view even_men = "1n2k3/1p4r1/8/8/8/8/1P4R1/1N2K3 w - - 0 1";
constexpr std::string_view check = "4k3/8/8/8/8/8/8/R3K3 w - - 0 1";  // a1a8

constexpr float untouched = 777;

// A nominal depth out of the reach of the quiet stop unless told otherwise.
template <int N, Cor cor>
void enter_at(int depth, std::string_view fen, std::string_view move, int nominal = 25) {
  stand(N - 1, told_for<cor>(fen));
  totals<cor>(N - 1, 200, 200);
  deep = depth;
  DEEP = nominal;
  value(N) = untouched;
  enter<N, cor>(move);
}

// With equal totals: 1 where the plain quotient is added, 0 where the logarithm is.
float even_value(int n) {
  return n == 2 || n == 3 || n == 5 ? 1 : 0;
}

TEST(Leaf, IsTheNodeBehindTheLastPlyOfTheLine) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    enter_at<N, cor>(N - 1, even_men, "b1c3");
    EXPECT_EQ(value(N), even_value(N));
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(nd, -1) << "a leaf begins no moves";
  });
}

TEST(Leaf, IsNotTheLastPlyItself) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    enter_at<N, cor>(N, even_men, "b1c3");
    EXPECT_GT(nodes, 0U);
    EXPECT_EQ(nd, N);
  });
}

TEST(Leaf, ANodeWithLessDepthLeavesItsSlotAsItWas) {
  each_node<3, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {N - 2, N - 3, 1, 0}) {
      if (depth >= N - 1) continue;
      enter_at<N, cor>(depth, even_men, "b1c3");
      EXPECT_EQ(value(N), untouched) << "deep " << depth;
      EXPECT_EQ(nodes, 0U);
      EXPECT_EQ(nd, -1);
    }
  });
}

TEST(Leaf, Ply2ReturnsAtOnceWithoutDepth) {
  each_colour([]<Cor cor>() {
    for (const int depth : {0, -1, -5}) {
      enter_at<2, cor>(depth, even_men, "b1c3");
      EXPECT_EQ(alfa[2], untouched);
      EXPECT_EQ(linha[1].A, ' ') << "not even the line's text is written";
    }
  });
}

TEST(Leaf, InCheckIsOneAllTheSameAtEvenPliesAndAtOddOnesUpToNine) {
  each_node<2, 24>([]<int N, Cor cor>() {
    if (N % 2 != 0 && N > 9) return;
    SCOPED_TRACE(at<cor>(N));
    enter_at<N, cor>(N - 1, check, "a1a8");
    EXPECT_EQ(value(N), even_value(N));
    EXPECT_EQ(nodes, 0U);
  });
}

TEST(Leaf, AtOddPliesFromElevenASideInCheckLeavesTheSlotAsItWas) {
  each_node<11, 23, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int nominal : {5, 9, 21}) {
      enter_at<N, cor>(N - 1, check, "a1a8", nominal);
      EXPECT_EQ(value(N), untouched);
      EXPECT_EQ(nodes, 0U);
    }
  });
}

// --- The quiet stop ---

template <int N, Cor cor>
bool ends_the_line(int nominal, std::string_view fen, std::string_view move) {
  enter_at<N, cor>(N, fen, move, nominal);
  const bool ended = nodes == 0 && nd == -1;
  if (ended) {
    EXPECT_EQ(value(N), even_value(N)) << "the static value";
  }
  return ended;
}

TEST(QuietStop, AtPlies10And11EndsTheLinesOfANominalDepthOf9) {
  each_node<10, 11>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_TRUE((ends_the_line<N, cor>(9, even_men, "b1c3")));
    for (const int nominal : {5, 7, 8, 10, 11, 13, 23})
      EXPECT_FALSE((ends_the_line<N, cor>(nominal, even_men, "b1c3"))) << nominal;
  });
}

TEST(QuietStop, FromPly12EndsTheLinesOfANominalDepthBelowThePly) {
  each_node<12, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr int last = N % 2 == 0 ? N - 1 : N - 2;
    for (const int nominal : {1, 9, last - 2, last - 1, last})
      EXPECT_TRUE((ends_the_line<N, cor>(nominal, even_men, "b1c3"))) << nominal;
    for (const int nominal : {last + 1, last + 2, 25})
      EXPECT_FALSE((ends_the_line<N, cor>(nominal, even_men, "b1c3"))) << nominal;
  });
}

TEST(QuietStop, DoesNotStandUpToPly9) {
  each_node<2, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int nominal : {1, N - 2, N - 1, N, 9})
      EXPECT_FALSE((ends_the_line<N, cor>(nominal, even_men, "b1c3"))) << nominal;
  });
}

TEST(QuietStop, LetsPawnMovesCapturesAndChecksGoOn) {
  each_node<10, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_FALSE((ends_the_line<N, cor>(9, even_men, "b2b4"))) << "a pawn move";
    EXPECT_FALSE((ends_the_line<N, cor>(9, even_men, "g2g7"))) << "a capture";
    EXPECT_FALSE((ends_the_line<N, cor>(9, check, "a1a8"))) << "a check";
    EXPECT_TRUE((ends_the_line<N, cor>(9, check, "a1a7"))) << "a quiet rook move";
  });
}

TEST(QuietStop, AtDepth13OfANominal11EndsAtAKnightsMoveButNotAtAPawns) {
  each_colour([]<Cor cor>() {
    for (const bool pawn : {false, true}) {
      stand(11, told_for<cor>(even_men));
      deep = 13;
      DEEP = 11;
      enter<12, cor>(pawn ? "b2b4" : "b1c3");
      EXPECT_EQ(nodes > 0, pawn);
    }
  });
}

}  // namespace
}  // namespace korvu
