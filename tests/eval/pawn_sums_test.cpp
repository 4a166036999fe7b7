// What an estimate is told of the pawns, against the terms of each pawn.
#include "eval/pawn_sums.h"

#include <gtest/gtest.h>

#include <random>

#include "eval/pawns.h"

namespace korvu {
namespace {

template <Cor cor>
SomasDosPeoes one_by_one(const Tabuleiro& t) {
  SomasDosPeoes s;
  percorre_tabuleiro([&](int x, int y, std::size_t k) {
    if (t[k] != Lado<cor>::peao) return false;
    ++s.quantos;
    estrutura_do_peao<cor>(t, x, y, [&s](int term) { s.estrutura += term; });
    return false;
  });
  return s;
}

void expect_sums(Bits white, Bits black) {
  Tabuleiro t{};
  cada_casa(white,
            [&t](int s) { return t[static_cast<std::size_t>(s)] = Lado<Cor::b>::peao, false; });
  cada_casa(black,
            [&t](int s) { return t[static_cast<std::size_t>(s)] = Lado<Cor::p>::peao, false; });
  const auto sums = somas_dos_peoes(white, black);
  const SomasDosPeoes should[] = {one_by_one<Cor::b>(t), one_by_one<Cor::p>(t)};
  for (const std::size_t k : {0U, 1U}) {
    ASSERT_EQ(sums[k].quantos, should[k].quantos) << white << ' ' << black;
    ASSERT_EQ(sums[k].estrutura, should[k].estrutura) << white << ' ' << black;
  }
}

// Sparse and dense boards, each asked for again when others have come between.
TEST(PawnSums, AreThoseOfThePawnsOneByOne) {
  constexpr Bits ranks = 0x7e7e7e7e7e7e7e7e;
  std::mt19937_64 dice(6);
  std::vector<std::pair<Bits, Bits>> met = {{0, 0}};
  for (int i = 0; i < 20000 && !testing::Test::HasFatalFailure(); ++i) {
    Bits white = dice() & ranks, black = dice() & ranks & ~white;
    for (int k = i % 4; k > 0; --k) {
      white &= dice();
      black &= dice();
    }
    met.emplace_back(white, black);
    expect_sums(white, black);
    const auto& again = met[dice() % met.size()];
    expect_sums(again.first, again.second);
  }
}

}  // namespace
}  // namespace korvu
