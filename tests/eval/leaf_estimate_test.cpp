// The estimate of a leaf against the plain twin: its counts to the man, its sums to what fixed
// point leaves of them, and the correction always within the bounds it gives.
#include "eval/leaf_estimate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "eval/bench.h"
#include "eval/leaf.h"
#include "eval/wide_reach.h"
#include "support/positions.h"

namespace korvu {
namespace {

template <Cor cor>
constexpr plain::Side side = cor == Cor::b ? plain::white : plain::black;

template <Cor raiz, Cor ataca>
plain::Both<plain::Figures> scanned() {
  return plain::scan(plain::board_from_bytes(tab2), plain::setting_from_slots(), side<raiz>,
                     side<ataca>, plain::Mobility::every_move);
}

// What the estimate may be off by: a share of the sum, and of the many terms of a place.
bool near(float estimate, float exact, double share, double least) {
  return std::abs(static_cast<double>(estimate) - exact) <= share * std::abs(exact) + least;
}

void expect_near(const Figuras& f, Figuras exact) {
  EXPECT_TRUE(near(f.cen, exact.cen, 0.0005, 0.01)) << f.cen << " for " << exact.cen;
  EXPECT_TRUE(near(f.kattack, exact.kattack, 0.002, 1e-6)) << f.kattack << " for " << exact.kattack;
  EXPECT_TRUE(near(f.kdefend, exact.kdefend, 0.002, 1e-6)) << f.kdefend << " for " << exact.kdefend;
  EXPECT_TRUE(near(f.pos, exact.pos, 0.0001, 0.02)) << f.pos << " for " << exact.pos;
}

// The figures of one member of the family: counts are the twin's own, sums are near.
template <Cor raiz, Cor ataca, class Modo>
void expect_figures() {
  const Estimativa<raiz, ataca, Modo> e(tab2);
  ASSERT_TRUE(e.certa());
  const auto twin = scanned<raiz, ataca>();
  const auto expect_side = [&]<Cor cor>() {
    const Figuras exact = bench::figures<Varredura::folha, raiz, ataca, cor>();
    Figuras f = e.template de<cor>();
    expect_near(f, exact);
    f.cen = exact.cen;
    f.kattack = exact.kattack;
    f.kdefend = exact.kdefend;
    f.pos = exact.pos;
    EXPECT_EQ(bench::differences(f, twin[side<cor>]), "") << bench::bench_state();
  };
  expect_side.template operator()<Cor::b>();
  expect_side.template operator()<Cor::p>();
}

// The correction lies within the bounds, which are no wider than the margin; true when the estimate
// gave them.
template <Cor raiz, Cor ataca>
bool expect_bounds() {
  const Faixa f = faixa_do_extra<raiz, ataca>();
  extra_eval<raiz, ataca>();
  EXPECT_LE(f.de, extraeval) << bench::bench_state();
  EXPECT_GE(f.ate, extraeval) << bench::bench_state();
  const bool narrow = static_cast<double>(f.ate) - f.de <= 2 * margem_da_estimativa() + 0.001;
  const plain::Leaf twin = plain::leaf(plain::board_from_bytes(tab2), plain::setting_from_slots(),
                                       side<raiz>, side<ataca>);
  EXPECT_EQ(EMPAT != 0, twin.drawn);
  EXPECT_TRUE(narrow || twin.drawn || f.de == -infinito) << f.de << " to " << f.ate;
  return narrow;
}

template <class F>
void for_all_members(F f) {
  f.template operator()<Cor::b, Cor::b>();
  f.template operator()<Cor::b, Cor::p>();
  f.template operator()<Cor::p, Cor::b>();
  f.template operator()<Cor::p, Cor::p>();
}

// Also of the way with wide registers, where the processor has them.
void expect_all_figures() {
  for_all_members([]<Cor raiz, Cor ataca>() { expect_figures<raiz, ataca, Estreito>(); });
#ifdef KORVU_WIDE_REGISTERS
  if (tem_registros_largos())
    for_all_members([]<Cor raiz, Cor ataca>() { expect_figures<raiz, ataca, Largo>(); });
#endif
}

TEST(LeafEstimate, CountsAndSumsAreThoseOfTheScanOnRandomBoards) {
  std::mt19937 dice(20261121);
  for (int i = 0; i < 2000 && !testing::Test::HasFailure(); ++i) {
    bench::scatter(dice);
    bench::strew(dice, 2 + i % 40);
    expect_all_figures();
  }
}

TEST(LeafEstimate, CountsAndSumsAreThoseOfTheScanInGames) {
  for (const auto& fen : referee::varied_fens()) {
    bench::lay(fen);
    if (!Estimativa<Cor::b, Cor::b>(tab2).certa()) continue;
    bench::kings_at_home();
    expect_all_figures();
    bench::kings_fight();
    expect_all_figures();
    if (testing::Test::HasFailure()) FAIL() << fen;
  }
}

#ifdef KORVU_WIDE_REGISTERS
template <Cor cor, class E>
std::string sums_of(const E& e) {
  const Figuras& f = e.template de<cor>();
  std::ostringstream s;
  s << std::hexfloat << f.pos << ' ' << f.cen << ' ' << f.kattack << ' ' << f.kdefend;
  return s.str();
}

// Both ways add in whole numbers, so that not even the order can tell them apart.
TEST(LeafEstimate, IsTheSameToTheLastBitWithWideRegisters) {
  if (!tem_registros_largos()) GTEST_SKIP() << "this processor has no wide registers";
  std::mt19937 dice(8);
  for (int i = 0; i < 2000; ++i) {
    bench::scatter(dice);
    bench::strew(dice, 2 + i % 40);
    for_all_members([]<Cor raiz, Cor ataca>() {
      const Estimativa<raiz, ataca, Estreito> narrow(tab2);
      const Estimativa<raiz, ataca, Largo> wide(tab2);
      ASSERT_EQ(sums_of<Cor::b>(narrow), sums_of<Cor::b>(wide)) << bench::bench_state();
      ASSERT_EQ(sums_of<Cor::p>(narrow), sums_of<Cor::p>(wide)) << bench::bench_state();
    });
    if (HasFatalFailure()) return;
  }
}
#endif

TEST(LeafEstimate, TheCorrectionLiesWithinItsBounds) {
  std::mt19937 dice(5);
  int members = 0, narrow = 0;
  for (int i = 0; i < 4000 && !testing::Test::HasFailure(); ++i) {
    bench::scatter(dice);
    bench::strew(dice, 2 + i % 40);
    for_all_members([&]<Cor raiz, Cor ataca>() {
      ++members;
      narrow += expect_bounds<raiz, ataca>();
    });
  }
  EXPECT_GT(narrow, members / 2);
}

TEST(LeafEstimate, TheCorrectionLiesWithinItsBoundsInGames) {
  for (const auto& fen : referee::varied_fens()) {
    bench::lay(fen);
    for_all_members([]<Cor raiz, Cor ataca>() { expect_bounds<raiz, ataca>(); });
    if (testing::Test::HasFailure()) FAIL() << fen;
  }
}

// More men than a game has: counts of a square beyond seven.
TEST(LeafEstimate, KnowsSquaresThatManyMenReach) {
  bench::lay("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  bench::kings_at_home();
  bench::men(30, 30);
  for (const std::size_t s : {casa(3, 7), casa(5, 7), casa(2, 4), casa(6, 4), casa(2, 5),
                              casa(6, 5), casa(3, 2), casa(5, 2)})
    tab2[s] = Lado<Cor::b>::cavalo;
  for (const std::size_t s : {casa(4, 2), casa(1, 4), casa(7, 4), casa(2, 2), casa(6, 2)})
    tab2[s] = Lado<Cor::b>::dama;
  expect_all_figures();
}

TEST(LeafEstimate, DoesNotKnowBoardsWithoutTwoKingsOrWithPawnsAtTheEdge) {
  const auto known = [] { return Estimativa<Cor::b, Cor::p>(tab2).certa(); };
  bench::lay("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
  EXPECT_TRUE(known());
  for (const auto& [square, code] :
       {std::pair{casa(4, 0), vazia}, std::pair{casa(4, 7), vazia},
        std::pair{casa(0, 0), Lado<Cor::b>::peao}, std::pair{casa(0, 7), Lado<Cor::b>::peao},
        std::pair{casa(0, 0), Lado<Cor::p>::peao}, std::pair{casa(0, 7), Lado<Cor::p>::peao},
        std::pair{casa(3, 3), Lado<Cor::b>::rei}, std::pair{casa(3, 3), Lado<Cor::p>::rei}}) {
    const Tabuleiro before = tab2;
    tab2[square] = code;
    EXPECT_FALSE(known()) << square << ' ' << static_cast<int>(code);
    for_all_members([]<Cor raiz, Cor ataca>() { expect_bounds<raiz, ataca>(); });
    tab2 = before;
  }
}

// A sum that is next to nothing because place takes what the centre gives has no logarithm to
// trust: the bounds come from the scan.
TEST(LeafEstimate, AsksTheScanWherePlaceAndCentreCancel) {
  Figuras f;
  EXPECT_TRUE(tem_peso_certo(f));
  f.cen = 60;
  EXPECT_TRUE(tem_peso_certo(f));
  f.pos = -10;
  EXPECT_TRUE(tem_peso_certo(f));
  f.pos = -11;
  EXPECT_FALSE(tem_peso_certo(f));
  f.cen = 1000;
  f.pos = -499;
  EXPECT_TRUE(tem_peso_certo(f));
  f.pos = -500;
  EXPECT_FALSE(tem_peso_certo(f));
}

// Bare kings, a pawn or two: sums from nothing on.
TEST(LeafEstimate, TheCorrectionLiesWithinItsBoundsWithHardlyAMan) {
  std::mt19937 dice(12);
  int members = 0, narrow = 0, small = 0;
  for (int i = 0; i < 6000 && !testing::Test::HasFailure(); ++i) {
    bench::scatter(dice);
    bench::strew(dice, i % 4);
    if (i % 2 == 0) bench::kings_fight();
    for_all_members([&]<Cor raiz, Cor ataca>() {
      ++members;
      narrow += expect_bounds<raiz, ataca>();
      const Estimativa<raiz, ataca> e(tab2);
      small += e.certa() && e.template de<raiz>().pos + e.template de<raiz>().cen < 50;
    });
  }
  EXPECT_GT(narrow, members / 4);  // many are draws by lack of material
  EXPECT_GT(small, members / 4);
}

TEST(LeafEstimate, RaisesTheDepthReachedAsTheCorrectionDoes) {
  bench::lay("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
  deep = 9;
  ddep = 7;
  faixa_do_extra<Cor::b, Cor::p>();
  EXPECT_EQ(ddep, 7);
  faixa_do_extra<Cor::b, Cor::b>();
  EXPECT_EQ(ddep, 9);
  ddep = 7;
  faixa_inteira<Cor::p, Cor::b>();
  EXPECT_EQ(ddep, 7);
  faixa_inteira<Cor::p, Cor::p>();
  EXPECT_EQ(ddep, 9);
}

TEST(LeafEstimate, TheWidestBoundsAreTheBudget) {
  piecesac = 35;
  const Faixa f = faixa_inteira<Cor::b, Cor::b>();
  EXPECT_EQ(f.de, -35);
  EXPECT_EQ(f.ate, 35);
  piecesac = 50;
}

}  // namespace
}  // namespace korvu
