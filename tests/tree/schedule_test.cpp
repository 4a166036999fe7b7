// What each ply has and lacks, column by column. The behaviour behind most columns has tests of its
// own; here every ply from 2 to 24 stands against rules told apart from the table.
#include "tree/schedule.h"

#include <gtest/gtest.h>

namespace korvu {
namespace {

const auto& ply(int n) {
  return cronograma[static_cast<std::size_t>(n)];
}

template <class F>
void each_ply(F f) {
  for (int n = 2; n <= 24; ++n) {
    SCOPED_TRACE(n);
    f(n, ply(n));
  }
}

bool odd(int n) {
  return n % 2 != 0;
}

TEST(Schedule, UpperPlies) {
  each_ply([](int n, const auto& p) {
    EXPECT_EQ(p.tabela, n >= 3 && n <= 5);
    EXPECT_EQ(p.nulo, n <= 3 ? 6 : n <= 5 ? 8 : nunca);
    EXPECT_EQ(p.pre_busca, n <= 3 ? 6 : nunca);
    EXPECT_EQ(p.tarde, n <= 7 ? 8 : n <= 9 ? 10 : nunca);
    EXPECT_EQ(p.cedo, n <= 5 ? 8 : n <= 7 ? 10 : n <= 9 ? 12 : nunca);
    EXPECT_EQ(reduz(n), n <= 9);
  });
}

TEST(Schedule, OddPliesFrom7) {
  each_ply([](int n, const auto& p) {
    EXPECT_EQ(p.promocoes, odd(n) && n >= 7);
    EXPECT_EQ(p.relogio, odd(n) && n >= 7 && n <= 21);
    EXPECT_EQ(p.filtro, !odd(n) || n < 7 ? Filtro::nao
                        : n == 7         ? Filtro::sete
                        : n == 23        ? Filtro::ultimo
                                         : Filtro::geral);
  });
}

TEST(Schedule, NominalDepthsThatExtend) {
  each_ply([](int n, const auto& p) {
    const bool extends = odd(n) && n >= 9 && n <= 21;
    for (int nominal = -1; nominal <= 25; ++nominal) {
      const bool within = nominal <= n && nominal >= n - 2 && nominal >= 9;
      EXPECT_EQ(p.extensao.contem(nominal), extends && within) << nominal;
    }
  });
}

TEST(Schedule, NominalDepthsOfTheQuietStop) {
  each_ply([](int n, const auto& p) {
    for (int nominal = -1; nominal <= 25; ++nominal) {
      bool stops = false;
      if (n == 10 || n == 11) stops = nominal == 9;
      if (n >= 12 && n <= 23) stops = nominal <= (odd(n) ? n - 2 : n - 1);
      EXPECT_EQ(p.quieto.contem(nominal), stops) << nominal;
    }
  });
}

TEST(Schedule, Leaves) {
  each_ply([](int n, const auto& p) {
    EXPECT_EQ(p.termo, n == 2 || n == 3 || n == 5 ? Termo::quociente : Termo::logaritmo);
    EXPECT_EQ(p.extra, n == 4 || n >= 6);
    EXPECT_EQ(p.esquece, !odd(n) && n >= 6 && n <= 22);
  });
}

TEST(Schedule, MateScoresFallBy1100EveryTwoPlies) {
  EXPECT_EQ(valor_do_mate(1), 15400);
  EXPECT_EQ(valor_do_mate(2), 15400);
  EXPECT_EQ(valor_do_mate(3), 14300);
  EXPECT_EQ(valor_do_mate(4), 14300);
  for (int n = 3; n <= 24; ++n) EXPECT_EQ(valor_do_mate(n), valor_do_mate(n - 2) - 1100) << n;
  EXPECT_EQ(valor_do_mate(23), 3300);
  EXPECT_EQ(valor_do_mate(24), 3300);
}

}  // namespace
}  // namespace korvu
