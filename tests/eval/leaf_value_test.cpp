// The value of a leaf: material, the gate that keeps hopeless leaves from the scan, and the draw.
#include <gtest/gtest.h>

#include <cmath>

#include "eval/bench.h"
#include "eval/knobs.h"
#include "eval/leaf.h"
#include "tree/indifference.h"
#include "tree/leaf_tests.h"

namespace {

using korvu::alfa;
using korvu::beta;
using korvu::Cor;

constexpr float stale = 33;

// A leaf of a White search with these totals after a move onto an empty square. The bounds of all
// plies stand wide open.
void lay(const char* fen, float white, float black) {
  bench::lay(fen);
  bench::kings_at_home();
  for (korvu::Tabuleiro& t : korvu::tabd) t = korvu::tab;
  korvu::materialb.fill(white);
  korvu::materialp.fill(black);
  korvu::promocao = korvu::ppassado = 0;
  alfa.fill(-16500);
  beta.fill(16500);
  korvu::extraeval = stale;
}

constexpr const char* rook_up = "7k/8/8/8/8/8/8/1R5K w - - 0 1";
constexpr const char* knight_up = "7k/8/8/8/8/8/8/1N5K w - - 0 1";

// Even plies of a White search are entered after a Black move, odd ones after a White move. a5 is
// empty there. Always the exact value.
template <int N>
float leaf_value() {
  korvu::folhas_exatas = true;
  korvu::avalia_folha<N, N % 2 == 0 ? Cor::p : Cor::b>(0, 4);
  korvu::folhas_exatas = false;
  return (N % 2 == 0 ? alfa : beta)[N];
}

}  // namespace

TEST(Material, DifferenceAndWeightedLogarithm) {
  bench::rest_knobs();
  EXPECT_EQ(korvu::diferenca(300, 250), 50);
  EXPECT_FLOAT_EQ(korvu::com_logaritmo(300, 250), static_cast<float>(50 + 5 * std::log(1.2)));
  korvu::MQ = 2;
  EXPECT_FLOAT_EQ(korvu::com_logaritmo(250, 300), static_cast<float>(-50 - 2 * std::log(1.2)));
  EXPECT_FLOAT_EQ(korvu::com_quociente(300, 250), 51.2F);
}

TEST(Material, OfTwoEqualDifferencesTheOneWithLessOnTheBoardIsWorthMore) {
  bench::rest_knobs();
  EXPECT_GT(korvu::com_logaritmo(160, 110), korvu::com_logaritmo(510, 460));
}

TEST(LeafValue, MaterialAndCorrection) {
  lay(rook_up, 160, 110);
  const float value = leaf_value<4>();
  EXPECT_FLOAT_EQ(value, static_cast<float>(50 + 5 * std::log(160.0 / 110)) + korvu::extraeval);
  EXPECT_NE(korvu::extraeval, stale);
  EXPECT_GT(korvu::extraeval, 1);
}

TEST(LeafValue, WithoutTheQuotientTerm) {
  lay(rook_up, 160, 110);
  korvu::extradef = 0;
  const float value = leaf_value<4>();
  EXPECT_EQ(value, 50 + korvu::extraeval);
}

TEST(LeafValue, WithoutTheCorrection) {
  lay(rook_up, 160, 110);
  korvu::EXTRA_EVAL = 0;
  EXPECT_FLOAT_EQ(leaf_value<4>(), static_cast<float>(50 + 5 * std::log(160.0 / 110)));
  EXPECT_EQ(korvu::extraeval, stale);
}

TEST(LeafValue, EarlyPliesHaveMaterialAlone) {
  lay(rook_up, 160, 110);
  const auto with_quotient = static_cast<float>(50 + 160.0 / 110);
  EXPECT_FLOAT_EQ(leaf_value<3>(), with_quotient);
  EXPECT_FLOAT_EQ(leaf_value<5>(), with_quotient);
  EXPECT_EQ(korvu::extraeval, stale);
}

TEST(LazyGate, AnEvenPlyMustBeAboveEveryAlfaLessTheBudget) {
  for (const std::size_t ply : {0U, 2U, 4U}) {
    lay(rook_up, 160, 110);
    korvu::extradef = 0;  // the material value is 50
    alfa[ply] = 100;      // 50 is not greater than 50
    EXPECT_EQ(leaf_value<6>(), 50) << ply;
    EXPECT_EQ(korvu::extraeval, stale) << ply;
    alfa[ply] = 99.5F;
    const float value = leaf_value<6>();
    EXPECT_EQ(value, 50 + korvu::extraeval) << ply;
    EXPECT_NE(korvu::extraeval, stale) << ply;
  }
}

TEST(LazyGate, AnOddPlyMustBeBelowEveryBetaPlusTheBudget) {
  for (const std::size_t ply : {1U, 3U, 5U}) {
    lay(rook_up, 160, 110);
    korvu::extradef = 0;
    beta[ply] = 0;
    EXPECT_EQ(leaf_value<7>(), 50) << ply;
    EXPECT_EQ(korvu::extraeval, stale) << ply;
    beta[ply] = 0.5F;
    const float value = leaf_value<7>();
    EXPECT_EQ(value, 50 + korvu::extraeval) << ply;
    EXPECT_NE(korvu::extraeval, stale) << ply;
  }
}

TEST(LazyGate, LooksAtNoBoundOfTheOtherParity) {
  lay(rook_up, 160, 110);
  beta.fill(-16500);
  leaf_value<6>();
  EXPECT_NE(korvu::extraeval, stale);
  lay(rook_up, 160, 110);
  alfa.fill(16500);
  leaf_value<7>();
  EXPECT_NE(korvu::extraeval, stale);
}

TEST(LazyGate, IsAsWideAsTheBudget) {
  lay(rook_up, 160, 110);
  korvu::extradef = 0;
  korvu::piecesac = 10;
  alfa[2] = 60;
  EXPECT_EQ(leaf_value<6>(), 50);
  alfa[2] = 59.5F;
  EXPECT_EQ(leaf_value<6>(), 50 + 10);  // the correction is cut to the budget too
}

TEST(LazyGate, ALeafThatFailsKeepsMaterialWithItsQuotient) {
  lay(rook_up, 160, 110);
  alfa[0] = 16500;
  EXPECT_FLOAT_EQ(leaf_value<6>(), static_cast<float>(50 + 5 * std::log(160.0 / 110)));
  EXPECT_EQ(korvu::extraeval, stale);
}

TEST(LeafDraw, ReplacesMaterialAndCorrection) {
  lay(knight_up, 142, 110);  // a knight up cannot win
  korvu::emp = -15;
  EXPECT_EQ(leaf_value<6>(), -15);
  EXPECT_EQ(leaf_value<7>(), -15);
}

TEST(LeafDraw, IsSeenOnlyThroughTheGate) {
  lay(knight_up, 142, 110);
  korvu::emp = -15;
  korvu::extradef = 0;
  alfa[2] = 16500;
  EXPECT_EQ(leaf_value<6>(), 32);
}
