// When a leaf gets the extra evaluation: only near the window, judged against every bound above of
// the leaf's own parity; and which of the four scans it gets.
#include <gtest/gtest.h>

#include <array>

#include "eval/leaf.h"
#include "tree/indifference.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// White to play a quiet knight's move. Both sides attack rooks with lesser men, so that the side to
// move matters to a scan.
constexpr std::string_view middle =
    "3qk2r/1pp2ppp/r1npbn2/4p3/2BRP3/3P4/PPP2PPP/1NBQK1NR w - - 0 1";
constexpr std::string_view knights_only = "4k3/8/5n2/8/8/8/8/1N2K3 w - - 0 1";

constexpr float no_scan = 31337;  // what extraeval holds when no scan has run

bool has_extra(int n) {
  return n == 4 || n >= 6;
}

// A leaf with equal totals, so that its static value is 0 where the extra evaluation exists.
template <int N, Cor cor>
void leaf() {
  totals<cor>(N - 1, 400, 400);
  deep = N - 1;
  DEEP = 25;
  extraeval = no_scan;
  enter<N, cor>("b1c3");
}

bool scanned() {
  return extraeval != no_scan;
}

template <int N, Cor cor>
void stand_before(std::string_view fen = middle) {
  stand(N - 1, told_for<cor>(fen));
  EXTRA_EVAL = 1;
  folhas_exatas = true;
}

TEST(ExtraGate, TheScanOfTheLeafIsAddedAtPlies4And6To24) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand_before<N, cor>();
    leaf<N, cor>();
    EXPECT_EQ(scanned(), has_extra(N));
    if (has_extra(N)) {
      EXPECT_EQ(value(N), extraeval);
      EXPECT_NE(extraeval, 0) << "the position does not tell a scan from none";
    }
  });
}

TEST(ExtraGate, EvenPliesTakeTheRootSidesScanWithItselfToMoveOddPliesWithTheOther) {
  each_node<4, 24>([]<int N, Cor cor>() {
    if (!has_extra(N)) return;
    SCOPED_TRACE(at<cor>(N));
    stand_before<N, cor>();
    leaf<N, cor>();
    const float taken = extraeval;
    constexpr Cor other = outra(cor);
    std::array<float, 4>
        scans{};  // root and mover of the leaf: same, crossed, then colours changed
    extra_eval<other, other>(), scans[0] = extraeval;
    extra_eval<cor, other>(), scans[1] = extraeval;
    extra_eval<other, cor>(), scans[2] = extraeval;
    extra_eval<cor, cor>(), scans[3] = extraeval;
    for (std::size_t i = 0; i < 4; ++i)
      for (std::size_t j = 0; j < i; ++j) ASSERT_NE(scans[i], scans[j]);
    EXPECT_EQ(taken, N % 2 == 0 ? scans[0] : scans[1]);
  });
}

TEST(ExtraGate, AnEvenLeafMustLieAboveEveryAlfaLessTheBudget) {
  each_node<4, 24, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 0; k <= N - 2; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against alfa" + std::to_string(k));
      stand_before<N, cor>();
      alfa[k] = 50;
      leaf<N, cor>();
      EXPECT_FALSE(scanned()) << "exactly at the margin";
      EXPECT_EQ(alfa[N], 0) << "the material value stands";
      stand_before<N, cor>();
      alfa[k] = 49.5;
      leaf<N, cor>();
      EXPECT_TRUE(scanned());
    }
  });
}

TEST(ExtraGate, AnOddLeafMustLieBelowEveryBetaPlusTheBudget) {
  each_node<7, 23, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 1; k <= N - 2; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against beta" + std::to_string(k));
      stand_before<N, cor>();
      beta[k] = -50;
      leaf<N, cor>();
      EXPECT_FALSE(scanned()) << "exactly at the margin";
      EXPECT_EQ(beta[N], 0) << "the material value stands";
      stand_before<N, cor>();
      beta[k] = -49.5;
      leaf<N, cor>();
      EXPECT_TRUE(scanned());
    }
  });
}

TEST(ExtraGate, BoundsOfTheOtherParityDoNotMatter) {
  each_node<4, 24>([]<int N, Cor cor>() {
    if (!has_extra(N)) return;
    SCOPED_TRACE(at<cor>(N));
    stand_before<N, cor>();
    for (std::size_t k = 0; k < N; ++k) (N % 2 == 0 ? beta : alfa)[k] = N % 2 == 0 ? -900 : 900;
    leaf<N, cor>();
    EXPECT_TRUE(scanned());
  });
}

TEST(ExtraGate, TheBudgetIsTheGatesWidth) {
  stand_before<6, Cor::b>();
  piecesac = 90;
  alfa[2] = 89;
  leaf<6, Cor::b>();
  EXPECT_TRUE(scanned());
  piecesac = 10;
  alfa[2] = 11;
  leaf<6, Cor::b>();
  EXPECT_FALSE(scanned());
}

TEST(ExtraGate, WithoutExtraEvaluationNoLeafIsScanned) {
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand_before<N, cor>();
    EXTRA_EVAL = 0;
    leaf<N, cor>();
    EXPECT_FALSE(scanned());
  });
}

TEST(ExtraGate, LackOfMaterialTurnsAScannedLeafIntoADraw) {
  each_node<4, 24>([]<int N, Cor cor>() {
    if (!has_extra(N)) return;
    SCOPED_TRACE(at<cor>(N));
    stand_before<N, cor>(knights_only);
    emp = -23;
    leaf<N, cor>();
    EXPECT_EQ(value(N), -23);
    stand_before<N, cor>(knights_only);
    emp = -23;
    if (N % 2 == 0)
      alfa[N - 2] = 100;
    else
      beta[N - 2] = -100;
    leaf<N, cor>();
    EXPECT_EQ(value(N), 0) << "a leaf that the gate turns away keeps its material value";
  });
}

}  // namespace
}  // namespace korvu
