// Pairs of sets and what is counted and weighed over them, against a square at a time.
#include "eval/set_pair.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <random>

#include "eval/weighing.h"

namespace korvu {
namespace {

class SetPair : public testing::Test {
 protected:
  // Sets of every density.
  Bits set() {
    Bits b = dice_();
    for (auto thinner = dice_() % 4; thinner > 0; --thinner) b &= dice_();
    return b;
  }
  Par pair() { return {set(), set()}; }

 private:
  std::mt19937_64 dice_{7};
};

template <class F>
void for_each_colour(F f) {
  f.template operator()<Cor::b>();
  f.template operator()<Cor::p>();
}

TEST_F(SetPair, WorksOnBothSetsAlike) {
  for (int i = 0; i < 200; ++i) {
    const Par a = pair(), c = pair();
    for_each_colour([&]<Cor cor>() {
      const Bits x = a.de<cor>(), y = c.de<cor>();
      EXPECT_EQ((a & c).de<cor>(), x & y);
      EXPECT_EQ((a | c).de<cor>(), x | y);
      EXPECT_EQ((a ^ c).de<cor>(), x ^ y);
      EXPECT_EQ((a + c).de<cor>(), x + y);
      EXPECT_EQ(a.sem(c).de<cor>(), x & ~y);
      EXPECT_EQ(a.adiante<9>().de<cor>(), x << 9);
      EXPECT_EQ(a.adiante<-7>().de<cor>(), x >> 7);
      EXPECT_EQ(quantas_em(a).de<cor>(), static_cast<Bits>(std::popcount(x)));
      EXPECT_EQ(quantas_em(a, c, a).de<cor>(),
                static_cast<Bits>(2 * std::popcount(x) + std::popcount(y)));
      EXPECT_EQ(quantas_em(a).vezes(100).de<cor>(), static_cast<Bits>(100 * std::popcount(x)));
    });
  }
}

TEST_F(SetPair, IsEmptyWhenBothSetsAre) {
  EXPECT_TRUE(Par().vazio());
  EXPECT_FALSE(Par(1, 0).vazio());
  EXPECT_FALSE(Par(0, Bits{1} << 63).vazio());
}

TEST_F(SetPair, FullSetsAreCountedWhole) {
  const Par all = nos_dois(~Bits{0});
  EXPECT_EQ(quantas_em(all, all, all, all, all, all, all, all).de<Cor::b>(), 512U);
}

// The count of each square, digit by digit.
template <Cor cor>
int counted(const Planos& planes, int s) {
  int n = 0;
  for (std::size_t i = 0; i < Planos::n; ++i)
    if ((planes.digito(i).de<cor>() & bit(s)) != 0) n += 1 << i;
  return n;
}

TEST_F(SetPair, PlanesCountTheSetsThatHoldASquare) {
  for (int i = 0; i < 100; ++i) {
    std::array<Par, 16> sets;
    for (Par& a : sets) a = i == 0 ? nos_dois(~Bits{0}) : pair();
    const Par more = pair();
    Planos planes(sets);
    planes.junta(more);
    for_each_colour([&]<Cor cor>() {
      for (int s = 0; s < 64; ++s) {
        int n = (more.de<cor>() & bit(s)) != 0;
        for (const Par& a : sets) n += (a.de<cor>() & bit(s)) != 0;
        ASSERT_EQ(counted<cor>(planes, s), n);
      }
    });
  }
}

// The weights as they are meant, from the board's geometry.
double nearness(int from, int to) {
  const int dx = from / 8 - to / 8, dy = from % 8 - to % 8;
  return 1.0 / (dx * dx + dy * dy + 2);
}
double centrality(int s) {
  const double dx = s / 8 - 3.5, dy = s % 8 - 3.5;
  return 50 / (dx * dx + dy * dy + 2);
}

template <Cor cor>
void expect_weighed(const Pesagem& w, const Planos& planes, Par own, Par enemy, int king_b,
                    int king_p) {
  int total = 0, of_own = 0, of_enemy = 0, ranks = 0, from_black = 0;
  double centre = 0, to_b = 0, to_p = 0;
  for (int s = 0; s < 64; ++s) {
    const int n = counted<cor>(planes, s);
    const bool mine = (own.de<cor>() & bit(s)) != 0;
    total += n;
    of_own += mine ? n : 0;
    of_enemy += (enemy.de<cor>() & bit(s)) != 0 ? n : 0;
    ranks += mine ? s % 8 + 1 : 0;
    from_black += mine ? 8 - s % 8 : 0;
    centre += n * centrality(s);
    to_b += n * nearness(s, king_b);
    to_p += n * nearness(s, king_p);
  }
  EXPECT_EQ(w.total, total);
  EXPECT_EQ(w.proprios, of_own);
  EXPECT_EQ(w.inimigos, of_enemy);
  EXPECT_EQ(w.filas_b, ranks);
  EXPECT_EQ(w.filas_p, from_black);
  EXPECT_NEAR(static_cast<double>(w.no_centro) / escala_do_centro, centre, total / 2048.0);
  EXPECT_NEAR(static_cast<double>(w.rei_b) / escala_dos_reis, to_b, total / 65536.0);
  EXPECT_NEAR(static_cast<double>(w.rei_p) / escala_dos_reis, to_p, total / 65536.0);
}

TEST_F(SetPair, WeighsWhatIsReached) {
  std::mt19937 dice(3);
  for (int i = 0; i < 300; ++i) {
    std::array<Par, 16> sets{};
    // Few sets leave counts of three digits, many fill all five.
    for (std::size_t k = 0; k < static_cast<std::size_t>(1 + i % 16); ++k) sets[k] = pair();
    const Planos planes(sets);
    const Bits white = set(), black = set() & ~white;
    const auto king_b = static_cast<int>(dice() % 64), king_p = static_cast<int>(dice() % 64);
    const Par own(white, black), enemy(black, white);
    const auto weighed = pesa(planes, own, enemy, pesos_do_rei[static_cast<std::size_t>(king_b)],
                              pesos_do_rei[static_cast<std::size_t>(king_p)]);
    expect_weighed<Cor::b>(weighed[0], planes, own, enemy, king_b, king_p);
    expect_weighed<Cor::p>(weighed[1], planes, own, enemy, king_b, king_p);
    if (testing::Test::HasFailure()) FAIL() << i;
  }
}

}  // namespace
}  // namespace korvu
