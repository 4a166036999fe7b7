// The tables of plies 3 to 5: what is a hit, which record wins, how the ring turns.
#include <gtest/gtest.h>

#include <cmath>

#include "memory/tables_bench.h"

namespace {

using bench::recall;
using bench::remember;
using korvu::alfa;
using korvu::beta;
using korvu::Cor;

class PlyTables : public testing::Test {
 protected:
  void SetUp() override { bench::rest_tables(); }
};

float above(float v) {
  return std::nextafter(v, 1e30F);
}
float below(float v) {
  return std::nextafter(v, -1e30F);
}

// A key of its own for every number.
void key(int k) {
  alfa[2] = static_cast<float>(k);
}

}  // namespace

TEST_F(PlyTables, AnEmptyTableKnowsNothing) {
  EXPECT_EQ((recall<3, Cor::b>()), std::nullopt);
  EXPECT_EQ((recall<4, Cor::p>()), std::nullopt);
  EXPECT_EQ((recall<5, Cor::b>()), std::nullopt);
}

TEST_F(PlyTables, TheSamePositionBoundsAndDepthAreAHit) {
  remember<3, Cor::b>(17.5F);
  remember<4, Cor::p>(-3);
  remember<5, Cor::b>(4400);
  EXPECT_EQ((recall<3, Cor::b>()), 17.5F);
  EXPECT_EQ((recall<4, Cor::p>()), -3);
  EXPECT_EQ((recall<5, Cor::b>()), 4400);
}

TEST_F(PlyTables, AHitWritesTheValueOfItsOwnPlyAlone) {
  remember<4, Cor::b>(7);
  const auto alfa_before = alfa;
  const auto beta_before = beta;
  korvu::HASHTABLE3 = korvu::HASHTABLE4 = korvu::HASHTABLE5 = 0;
  korvu::X_D[4] = 1;
  korvu::nd = 3;
  korvu::guardado[4] = {1, 2, 3, 4};
  korvu::guardado_g[4] = {4, 3, 2, 1};
  korvu::hash_table_scan<4, Cor::b>();
  EXPECT_EQ(korvu::HASHTABLE4, 1);
  EXPECT_EQ(korvu::HASHTABLE3, 0);
  EXPECT_EQ(korvu::HASHTABLE5, 0);
  EXPECT_EQ(alfa[4], 7);
  alfa[4] = alfa_before[4];
  EXPECT_EQ(alfa, alfa_before);
  EXPECT_EQ(beta, beta_before);
  EXPECT_EQ(korvu::X_D[4], 1);
  EXPECT_EQ(korvu::nd, 3);
  EXPECT_EQ(korvu::guardado[4], (korvu::Lance{1, 2, 3, 4}));
  EXPECT_EQ(korvu::guardado_g[4], (korvu::Lance{4, 3, 2, 1}));
}

TEST_F(PlyTables, AMissTouchesNeitherFlagNorValue) {
  remember<3, Cor::b>(7);
  korvu::deep = 11;
  korvu::HASHTABLE3 = 0;
  beta[3] = 123;
  korvu::hash_table_scan<3, Cor::b>();
  EXPECT_EQ(korvu::HASHTABLE3, 0);
  EXPECT_EQ(beta[3], 123);
}

TEST_F(PlyTables, AnotherDepthIsAMiss) {
  remember<3, Cor::b>(7);
  for (const int deep : {7, 8, 10, 11}) {
    korvu::deep = deep;
    EXPECT_EQ((recall<3, Cor::b>()), std::nullopt) << deep;
  }
  korvu::deep = 9;
  EXPECT_EQ((recall<3, Cor::b>()), 7);
}

TEST_F(PlyTables, EitherOfTheSearchFlagsMakesAMiss) {
  remember<3, Cor::b>(7);
  korvu::PVSm = 1;
  EXPECT_EQ((recall<3, Cor::b>()), std::nullopt);
  remember<3, Cor::b>(8);
  EXPECT_EQ((recall<3, Cor::b>()), 8);
  korvu::PVSm = 0;
  korvu::PVSm2 = 1;  // not to be taken for the other flag
  EXPECT_EQ((recall<3, Cor::b>()), std::nullopt);
  remember<3, Cor::b>(9);
  EXPECT_EQ((recall<3, Cor::b>()), 9);
  korvu::PVSm2 = 0;
  EXPECT_EQ((recall<3, Cor::b>()), 7);
}

TEST_F(PlyTables, EveryByteOfTheBoardCounts) {
  remember<3, Cor::b>(7);
  for (std::size_t s = 0; s < 64; ++s) {
    const std::uint8_t man = korvu::tab2[s];
    korvu::tab2[s] = man == 32 ? 33 : 32;
    EXPECT_EQ((recall<3, Cor::b>()), std::nullopt) << "square " << s;
    korvu::tab2[s] = man;
  }
  EXPECT_EQ((recall<3, Cor::b>()), 7);
}

TEST_F(PlyTables, CastlingAndPassingRightsDoNotCount) {
  remember<3, Cor::b>(7);
  for (auto& jm : korvu::jm_D) jm = {1, 1, 1, 1, 1, 1};
  for (auto& duplos : korvu::duplos_D) duplos.pb.fill(1);
  EXPECT_EQ((recall<3, Cor::b>()), 7);
  korvu::jm_D = {};
  korvu::duplos_D = {};
  EXPECT_EQ((recall<3, Cor::b>()), 7);
}

// --- Bounds ---

namespace {

// Which slots are bounds of the ply: the greater or lesser of those named.
template <int N, Cor cor>
void expect_bounds(std::initializer_list<std::size_t> lower,
                   std::initializer_list<std::size_t> upper) {
  for (const std::size_t in_force : lower) {
    bench::rest_tables();
    for (const std::size_t k : lower) alfa[k] = -20;
    alfa[in_force] = 10;
    remember<N, cor>(7);
    EXPECT_EQ((recall<N, cor>()), 7);
    alfa[in_force] = above(10);
    EXPECT_EQ((recall<N, cor>()), std::nullopt) << "alfa" << in_force;
    alfa[in_force] = below(10);
    EXPECT_EQ((recall<N, cor>()), std::nullopt) << "alfa" << in_force;
    for (const std::size_t k : lower) alfa[k] = 10;  // whichever brings it, it is the same bound
    EXPECT_EQ((recall<N, cor>()), 7);
    for (const std::size_t k : lower) alfa[k] = k == in_force ? -20.0F : 10;
    EXPECT_EQ((recall<N, cor>()), 7);
  }
  for (const std::size_t in_force : upper) {
    bench::rest_tables();
    for (const std::size_t k : upper) beta[k] = 90;
    beta[in_force] = 30;
    remember<N, cor>(7);
    EXPECT_EQ((recall<N, cor>()), 7);
    beta[in_force] = above(30);
    EXPECT_EQ((recall<N, cor>()), std::nullopt) << "beta" << in_force;
    beta[in_force] = below(30);
    EXPECT_EQ((recall<N, cor>()), std::nullopt) << "beta" << in_force;
    for (const std::size_t k : upper) beta[k] = 30;
    EXPECT_EQ((recall<N, cor>()), 7);
  }
  // All the others are none of its business.
  bench::rest_tables();
  remember<N, cor>(7);
  const auto among = [](std::initializer_list<std::size_t> list, std::size_t k) {
    return std::find(list.begin(), list.end(), k) != list.end();
  };
  for (std::size_t k = 0; k < alfa.size(); ++k) {
    if (!among(lower, k) && k != N) alfa[k] = 5000;
    if (!among(upper, k) && k != N) beta[k] = -5000;
  }
  EXPECT_EQ((recall<N, cor>()), 7);
}

}  // namespace

TEST_F(PlyTables, BoundsOfPlyThree) {
  expect_bounds<3, Cor::b>({0, 2}, {1});
  expect_bounds<3, Cor::p>({0, 2}, {1});
}
TEST_F(PlyTables, BoundsOfPlyFour) {
  expect_bounds<4, Cor::b>({0, 2}, {1, 3});
  expect_bounds<4, Cor::p>({0, 2}, {1, 3});
}
TEST_F(PlyTables, BoundsOfPlyFive) {
  expect_bounds<5, Cor::b>({0, 2, 4}, {1, 3});
  expect_bounds<5, Cor::p>({0, 2, 4}, {1, 3});
}

// --- Which record ---

// A value may be a negative zero.
TEST_F(PlyTables, BothZerosAreOneBound) {
  alfa[2] = alfa[4] = -0.0F;
  beta[1] = beta[3] = 0;
  remember<3, Cor::b>(1);
  remember<5, Cor::b>(2);
  alfa[2] = alfa[4] = 0;
  beta[1] = beta[3] = -0.0F;
  EXPECT_EQ((recall<3, Cor::b>()), 1);
  EXPECT_EQ((recall<5, Cor::b>()), 2);
}

TEST_F(PlyTables, TheLowestIndexWins) {
  remember<3, Cor::b>(1);
  remember<3, Cor::b>(2);
  EXPECT_EQ((recall<3, Cor::b>()), 1);
}

TEST_F(PlyTables, EveryPlyAndColourHasItsOwn) {
  remember<3, Cor::b>(1);
  EXPECT_EQ((recall<3, Cor::p>()), std::nullopt);
  EXPECT_EQ((recall<4, Cor::b>()), std::nullopt);
  EXPECT_EQ((recall<4, Cor::p>()), std::nullopt);
  EXPECT_EQ((recall<5, Cor::b>()), std::nullopt);
  EXPECT_EQ((recall<5, Cor::p>()), std::nullopt);
  remember<3, Cor::p>(2);
  remember<4, Cor::b>(3);
  remember<4, Cor::p>(4);
  remember<5, Cor::b>(5);
  remember<5, Cor::p>(6);
  EXPECT_EQ((recall<3, Cor::b>()), 1);
  EXPECT_EQ((recall<3, Cor::p>()), 2);
  EXPECT_EQ((recall<4, Cor::b>()), 3);
  EXPECT_EQ((recall<4, Cor::p>()), 4);
  EXPECT_EQ((recall<5, Cor::b>()), 5);
  EXPECT_EQ((recall<5, Cor::p>()), 6);
}

TEST_F(PlyTables, ARecordTakesItsValueWhenItIsClosed) {
  key(1);
  korvu::hash_table_build<3, Cor::b>();
  key(2);
  korvu::deep = 3;
  beta[3] = 55;
  korvu::hash_table_valor<3, Cor::b>();
  EXPECT_EQ((recall<3, Cor::b>()), std::nullopt);  // the key is that of the opening
  key(1);
  korvu::deep = 9;
  EXPECT_EQ((recall<3, Cor::b>()), 55);
}

TEST_F(PlyTables, OpeningDoesNotStepOn) {
  korvu::hash_table_build<3, Cor::b>();
  EXPECT_EQ((korvu::tabela_de<3, Cor::b>().indice()), 0);
  remember<3, Cor::b>(5);
  EXPECT_EQ((korvu::tabela_de<3, Cor::b>().indice()), 1);
}

TEST_F(PlyTables, AnOpenRecordIsOverwrittenByTheNext) {
  key(1);
  korvu::hash_table_build<3, Cor::b>();
  key(2);
  remember<3, Cor::b>(5);
  key(1);
  EXPECT_EQ((recall<3, Cor::b>()), std::nullopt);
  key(2);
  EXPECT_EQ((recall<3, Cor::b>()), 5);
}

// --- The ring ---

TEST_F(PlyTables, TurnsAfter9999Records) {
  const auto& table = korvu::tabela_de<3, Cor::b>();
  for (int k = 0; k < 9998; ++k) {
    key(k);
    remember<3, Cor::b>(static_cast<float>(2 * k));
  }
  EXPECT_EQ(table.indice(), 9998);
  EXPECT_EQ(korvu::FULL3, 0);
  key(9998);
  remember<3, Cor::b>(2 * 9998);  // the last but one record; the last is never written
  EXPECT_EQ(table.indice(), 0);
  EXPECT_EQ(korvu::FULL3, 1);
  EXPECT_EQ(korvu::FULL4, 0);
  EXPECT_EQ(korvu::FULL5, 0);
  for (const int k : {0, 1, 5000, 9998}) {
    key(k);
    EXPECT_EQ((recall<3, Cor::b>()), static_cast<float>(2 * k)) << k;
  }
  key(10000);
  remember<3, Cor::b>(1);  // over the oldest
  EXPECT_EQ(table.indice(), 1);
  EXPECT_EQ((recall<3, Cor::b>()), 1);
  key(0);
  EXPECT_EQ((recall<3, Cor::b>()), std::nullopt);
  key(1);
  EXPECT_EQ((recall<3, Cor::b>()), 2);
  key(9998);
  EXPECT_EQ((recall<3, Cor::b>()), 2 * 9998);
  EXPECT_EQ(korvu::FULL3, 1);
}

TEST_F(PlyTables, ATurnedRingFindsTheLowestIndexNotTheOldest) {
  key(1);
  for (int k = 0; k < 9999; ++k) remember<3, Cor::b>(1);
  remember<3, Cor::b>(2);  // newest, at index 0
  EXPECT_EQ((recall<3, Cor::b>()), 2);
}

TEST_F(PlyTables, TheFullFlagIsThePlysForBothColours) {
  for (int k = 0; k < 9999; ++k) remember<4, Cor::p>(1);
  EXPECT_EQ(korvu::FULL4, 1);
  EXPECT_EQ(korvu::FULL3, 0);
  EXPECT_EQ((korvu::tabela_de<4, Cor::b>().indice()), 0);
  for (int k = 0; k < 9999; ++k) remember<5, Cor::p>(1);
  EXPECT_EQ(korvu::FULL5, 1);
}

// On a second turn an open record has the value of the record that stood in its place.
TEST_F(PlyTables, AnOpenRecordHasTheValueOfItsPlace) {
  for (int k = 0; k < 9999; ++k) {
    key(k);
    remember<3, Cor::b>(static_cast<float>(k) + 0.5F);
  }
  key(20000);
  korvu::hash_table_build<3, Cor::b>();
  EXPECT_EQ((recall<3, Cor::b>()), 0.5F);
}

// A reset puts 1 into every value, which an open record then has until it is closed.
TEST_F(PlyTables, AnOpenRecordOfAFreshTableHasTheValueOne) {
  key(1);
  remember<3, Cor::b>(44);
  korvu::limpa_tabelas<Cor::b>();
  key(2);
  korvu::hash_table_build<3, Cor::b>();
  EXPECT_EQ((recall<3, Cor::b>()), 1);
}

// --- Resets ---

TEST_F(PlyTables, ForgottenRecordsNeverMatchAgain) {
  for (int k = 0; k < 50; ++k) {
    key(k);
    remember<3, Cor::b>(static_cast<float>(k));
  }
  korvu::limpa_tabelas<Cor::b>();
  EXPECT_EQ((korvu::tabela_de<3, Cor::b>().indice()), 0);
  for (int k = 100; k < 120; ++k) {  // new records, short of the old ones
    key(k);
    remember<3, Cor::b>(static_cast<float>(k));
    for (const int old : {0, 10, 30, 49}) {
      key(old);
      EXPECT_EQ((recall<3, Cor::b>()), std::nullopt) << old << " after " << k;
    }
  }
  key(119);
  EXPECT_EQ((recall<3, Cor::b>()), 119);
}

TEST_F(PlyTables, RecordsOfATurnedRingAreForgottenToo) {
  for (int k = 0; k < 10010; ++k) {
    key(k);
    remember<3, Cor::b>(1);
  }
  korvu::limpa_tabelas<Cor::b>();
  key(20000);
  remember<3, Cor::b>(1);
  for (const int old : {0, 11, 5000, 9998, 9999, 10009}) {
    key(old);
    EXPECT_EQ((recall<3, Cor::b>()), std::nullopt) << old;
  }
}

TEST_F(PlyTables, AResetClearsTheChainOfOneRootColour) {
  const auto remember_all = [] {
    bench::rest_tables();
    remember<3, Cor::b>(1);
    remember<3, Cor::p>(2);
    remember<4, Cor::b>(3);
    remember<4, Cor::p>(4);
    remember<5, Cor::b>(5);
    remember<5, Cor::p>(6);
  };
  remember_all();
  korvu::limpa_tabelas<Cor::b>();
  EXPECT_EQ((recall<3, Cor::b>()), std::nullopt);
  EXPECT_EQ((recall<4, Cor::p>()), std::nullopt);
  EXPECT_EQ((recall<5, Cor::b>()), std::nullopt);
  EXPECT_EQ((recall<3, Cor::p>()), 2);
  EXPECT_EQ((recall<4, Cor::b>()), 3);
  EXPECT_EQ((recall<5, Cor::p>()), 6);
  remember_all();
  korvu::limpa_tabelas<Cor::p>();
  EXPECT_EQ((recall<3, Cor::p>()), std::nullopt);
  EXPECT_EQ((recall<4, Cor::b>()), std::nullopt);
  EXPECT_EQ((recall<5, Cor::p>()), std::nullopt);
  EXPECT_EQ((recall<3, Cor::b>()), 1);
  EXPECT_EQ((recall<4, Cor::p>()), 4);
  EXPECT_EQ((recall<5, Cor::b>()), 5);
}
