// The rating of a root move: what its leaves inherit, the square value and its scaling, the range.
#include <gtest/gtest.h>

#include <cmath>

#include "board/root_move.h"
#include "eval/bench.h"
#include "eval/knobs.h"
#include "eval/strategy.h"

namespace {

using bench::centrality;
using bench::nearness;
using korvu::Cor;
using korvu::Figuras;
using korvu::Varredura;

template <Cor of>
Figuras rated() {
  return bench::figures<Varredura::estrategia, Cor::b, Cor::p, of>();
}

// A board without attacks, so that the rating is the square value alone. The pawn makes the totals
// unequal; they are set by each test.
void lay_quiet(float white, float black, int matriz) {
  bench::lay("7k/p7/8/8/8/8/8/K7 w - - 0 1");
  korvu::ataca_b = {};
  korvu::ataca_p = {};
  korvu::materialba = white;
  korvu::materialpa = black;
  korvu::MATRIZ = matriz;
  korvu::incentiva_promo = 1;
}

// The same with a White pawn attacked by nobody knows whom: n is -10.
void lay_loss(float white, float black, int matriz) {
  lay_quiet(white, black, matriz);
  korvu::tab2[8 * 4 + 3] = 10;
  korvu::ataca_p.N_A[8 * 4 + 3] = 1;
}

int matriz_after_rating() {
  korvu::verifica_estrategia<Cor::b>();
  return korvu::MATRIZ;
}

}  // namespace

TEST(Inherited, IsAHundredthOfTheLeafFormula) {
  bench::lay("7k/8/8/8/8/8/8/1N5K w - - 0 1");
  bench::kings_at_home();
  bench::men(10, 5);
  const double advance = (1 + 1 + 0.1) / 2 - (1 + 0.1) / 1;
  const double weight = 2 * std::log(13.1 / 10.1);
  const double kdefend = nearness("a3", "h1") + nearness("c3", "h1") + nearness("d2", "h1");
  const double kattack = nearness("a3", "h8") + nearness("c3", "h8") + nearness("d2", "h8");
  const double kings = 5 * std::log((kdefend + 3) / 3) + 5 * std::log((kattack + 3) / 3);
  const double mobility = 5 * std::log(6 / 3.0);
  const double pos = 25 * centrality("b1") + 5 * nearness("b1", "h8") +
                     50 * (centrality("a3") + centrality("c3") + centrality("d2"));
  const double position = 5 * std::log((pos + 10.1) / 10.1);
  const double e = advance + weight + kings + mobility + position;

  korvu::extraevalll = 40;  // the last move's is gone
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_NEAR(korvu::extraevalll, 0.01 * e, 1e-6);
  korvu::verifica_estrategia<Cor::p>();
  EXPECT_NEAR(korvu::extraevalll, -0.01 * e, 1e-6);

  korvu::roque_v = 7;
  korvu::roque_b = 10;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_NEAR(korvu::extraevalll, 0.01 * (e + 7 * std::log(13 / 3.0)), 1e-6);
}

TEST(Inherited, AttackByDefenceIsNotScaledDown) {
  bench::lay("7k/8/8/4p3/3P4/2N2N2/8/7K w - - 0 1");
  bench::kings_at_home();
  korvu::verifica_estrategia<Cor::b>();
  const float level = korvu::extraevalll;
  korvu::shashinn = 200;
  korvu::verifica_estrategia<Cor::b>();
  // White attacks e5 twice and defends d4 once, Black attacks d4 and defends nothing.
  EXPECT_NEAR(korvu::extraevalll - level,
              200 * 0.01 * std::log(5 / 4.0) + 200 * 0.001 * std::log(4 / 3.0), 1e-5);
}

TEST(Inherited, HasNoBudget) {
  bench::lay("7k/8/8/4p3/3P4/2N2N2/8/7K w - - 0 1");
  korvu::shashinn = 100000;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_GT(korvu::extraevalll, 100);
}

TEST(RatedScan, CountsLegalMovesAloneButReachesAsBefore) {
  bench::lay("4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1");
  bench::kings_at_home();
  const Figuras leaf = bench::waiting<Cor::b>(), rate = rated<Cor::b>();
  EXPECT_EQ(leaf.mob, 6);
  EXPECT_EQ(rate.mob, 0);  // the knight is pinned
  EXPECT_EQ(rate.cen, leaf.cen);
  EXPECT_EQ(rate.kattack, leaf.kattack);
  EXPECT_EQ(rated<Cor::p>().mob, 6 + 6);  // along the rank, and the file with the knight on it
  EXPECT_EQ(rated<Cor::p>().att, 1);
}

TEST(RatedScan, CountsAnIllegalCaptureAsAttackOnly) {
  bench::lay("4r2k/8/8/8/3p4/8/4N3/4K3 w - - 0 1");
  bench::kings_at_home();
  EXPECT_EQ(rated<Cor::b>().att, 1);
  EXPECT_EQ(rated<Cor::b>().mob, 0);
}

TEST(RatedScan, AsksForLegalityOfPawnMovesToo) {
  bench::lay("7k/8/8/8/8/6b1/5P2/4K3 w - - 0 1");  // f2 may take g3 but not step off the pin
  bench::kings_at_home();
  EXPECT_EQ(bench::waiting<Cor::b>().mob, 3);
  EXPECT_EQ(rated<Cor::b>().mob, 1);
}

TEST(RatedScan, CountsLegalStepsOfAFightingKing) {
  bench::lay("1r5k/8/8/8/8/8/8/K7 w - - 0 1");
  EXPECT_EQ(bench::waiting<Cor::b>().mob, 3);
  EXPECT_EQ(rated<Cor::b>().mob, 1);  // a2; b1 and b2 are the rook's
}

namespace {

// What the positional quotient weighs in the inherited value, told by its own weight.
double position_in_rating() {
  korvu::PM = 0;
  korvu::verifica_estrategia<Cor::b>();
  const float without = korvu::extraevalll;
  korvu::PM = 10;
  korvu::verifica_estrategia<Cor::b>();
  return korvu::extraevalll - without;
}

double position_quotient(const Figuras& w, const Figuras& b) {
  return 0.01 * 10 * std::log((w.pos + w.cen + 10.1) / (b.pos + b.cen + 10.1));
}

}  // namespace

TEST(RatedScan, GivesTheGainsToTheSideThatReplies) {
  // Both knights attack a rook.
  bench::lay("7k/8/8/3r1n2/8/2N1R3/8/K7 w - - 0 1");
  bench::kings_at_home();
  const Figuras white = bench::waiting<Cor::b>(), black = bench::waiting<Cor::p>();
  const Figuras white_to_move = bench::to_move<Cor::b>(), black_to_move = bench::to_move<Cor::p>();
  ASSERT_NEAR(white_to_move.pos - white.pos, 18, 1e-4);
  ASSERT_NEAR(black_to_move.pos - black.pos, 18, 1e-4);
  EXPECT_NEAR(position_in_rating(), position_quotient(white, black_to_move), 1e-6);
}

TEST(Inherited, WeighsLegalMobility) {
  bench::lay("4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1");
  bench::kings_at_home();
  korvu::MOB = 0;
  korvu::verifica_estrategia<Cor::b>();
  const float without = korvu::extraevalll;
  korvu::MOB = 10;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_NEAR(korvu::extraevalll - without, 0.01 * 10 * std::log((0 + 3.0) / (12 + 3.0)), 1e-6);
}

TEST(RatedScan, LeavesItsSumsAsARecord) {
  bench::lay("7k/8/8/8/8/8/8/1N5K w - - 0 1");
  bench::kings_at_home();
  korvu::atack_ksf_p = 9;
  korvu::verifica_estrategia<Cor::b>();
  const Figuras w = bench::waiting<Cor::b>();
  EXPECT_EQ(korvu::atack_ksf_b, w.kattack);
  EXPECT_EQ(korvu::defesa_ksf_b, w.kdefend);
  EXPECT_EQ(korvu::centro_b, w.cen);
  EXPECT_EQ(korvu::atack_ksf_p, 0);
}

// --- The square value ---

TEST(SquareValue, IsWeightedByItsSettingAndAddedToTheExchange) {
  lay_loss(110, 120, 23);
  korvu::incentiva_promo = 0;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ATAQUE, -10 + 23);
  EXPECT_EQ(korvu::MATRIZ, 23);
  korvu::matrix = 0;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ATAQUE, -10);
  korvu::matrix = 3;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::ATAQUE, -10 + 69);
}

TEST(SquareValue, GrowsWithoutALossTheMoreTheBetterTheRootStands) {
  lay_quiet(200, 120, 23);
  EXPECT_EQ(matriz_after_rating(), 115);
  EXPECT_EQ(korvu::ATAQUE, 115);
  lay_quiet(120, 120, 23);
  EXPECT_EQ(matriz_after_rating(), 92);
  lay_quiet(110, 120, 23);
  EXPECT_EQ(matriz_after_rating(), 69);
}

TEST(SquareValue, ShrinksWithALossInWholeNumbers) {
  lay_loss(200, 120, 23);
  EXPECT_EQ(matriz_after_rating(), 7);
  EXPECT_EQ(korvu::ATAQUE, -10 + 7);
  lay_loss(120, 120, 23);
  EXPECT_EQ(matriz_after_rating(), 5);
  lay_loss(110, 120, 23);
  EXPECT_EQ(matriz_after_rating(), 4);
  lay_loss(110, 120, -23);
  EXPECT_EQ(matriz_after_rating(), -4);  // towards nothing
}

TEST(SquareValue, IsScaledByTheTotalsAsBlackSeesThem) {
  lay_quiet(110, 120, 23);
  korvu::verifica_estrategia<Cor::p>();
  EXPECT_EQ(korvu::MATRIZ, 115);
  lay_quiet(200, 120, 23);
  korvu::verifica_estrategia<Cor::p>();
  EXPECT_EQ(korvu::MATRIZ, 69);
}

TEST(SquareValue, IsScaledOnlyForAPawnLateInTheGame) {
  lay_quiet(200, 120, 23);
  korvu::incentiva_promo = 0;
  EXPECT_EQ(matriz_after_rating(), 23);
}

TEST(SquareValue, StaysScaledForARatingWithoutAPreparation) {
  lay_quiet(200, 120, 2);
  EXPECT_EQ(matriz_after_rating(), 10);
  EXPECT_EQ(matriz_after_rating(), 50);
  EXPECT_EQ(matriz_after_rating(), 250);
  EXPECT_EQ(korvu::ESTRATEGIA, 100);
}

TEST(SquareValue, WrapsAtThirtyTwoBits) {
  constexpr int quarter = 1 << 30;
  lay_quiet(200, 120, quarter);
  EXPECT_EQ(matriz_after_rating(), quarter);  // 5 / 4 of a turn
  EXPECT_EQ(korvu::ESTRATEGIA, 100);
  lay_quiet(110, 120, quarter);
  EXPECT_EQ(matriz_after_rating(), -quarter);  // 3 / 4
  EXPECT_EQ(korvu::ESTRATEGIA, -100);
  lay_quiet(120, 120, quarter);
  EXPECT_EQ(matriz_after_rating(), 0);  // a whole turn
  lay_quiet(120, 120, quarter / 4);
  korvu::matrix = 4;
  korvu::verifica_estrategia<Cor::b>();
  EXPECT_EQ(korvu::MATRIZ, quarter);
  EXPECT_EQ(korvu::ATAQUE, 0);
}

TEST(RatingRange, IsAHundredToEitherSide) {
  struct Case {
    int ataque, estrategia;
  };
  for (const Case& c : {Case{99, 99}, Case{100, 100}, Case{101, 100}, Case{5000, 100},
                        Case{-99, -99}, Case{-100, -100}, Case{-101, -100}, Case{-5000, -100}}) {
    lay_quiet(120, 120, c.ataque);
    korvu::incentiva_promo = 0;
    korvu::verifica_estrategia<Cor::b>();
    EXPECT_EQ(korvu::ATAQUE, c.ataque);
    EXPECT_EQ(korvu::ESTRATEGIA, c.estrategia);
  }
}
