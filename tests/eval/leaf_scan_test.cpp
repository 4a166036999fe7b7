// The leaf's scan where it takes short cuts: what the pawns' structure adds at once instead of term
// by term, more pawns than its table holds, and more officers than a game has.
#include "eval/leaf_scan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "eval/bench.h"

namespace korvu {
namespace {

template <Cor raiz, Cor ataca>
void expect_figures() {
  const plain::Both<plain::Figures> twin =
      plain::scan(plain::board_from_bytes(tab2), plain::setting_from_slots(),
                  raiz == Cor::b ? plain::white : plain::black,
                  ataca == Cor::b ? plain::white : plain::black, plain::Mobility::every_move);
  constexpr auto leaf = Varredura::folha;
  EXPECT_EQ(bench::differences(bench::figures<leaf, raiz, ataca, Cor::b>(), twin[plain::white]), "")
      << bench::bench_state();
  EXPECT_EQ(bench::differences(bench::figures<leaf, raiz, ataca, Cor::p>(), twin[plain::black]), "")
      << bench::bench_state();
}
void expect_figures_of_all_members() {
  expect_figures<Cor::b, Cor::b>();
  expect_figures<Cor::b, Cor::p>();
  expect_figures<Cor::p, Cor::b>();
  expect_figures<Cor::p, Cor::p>();
}

int below(std::mt19937& dice, int n) {
  return static_cast<int>(dice() % static_cast<unsigned>(n));
}

void clear_board() {
  bench::lay("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  bench::kings_at_home();
  bench::men(16, 16);
  tab2.fill(vazia);
}

// --- The structure in one sum ---

// A pawn of `cor` on (x, y) attacks a man on its right that is worth v, and other pawns of its
// colour stand about it. No man is met before it that adds to its side's sum.
template <Cor cor>
void set_pawns(std::mt19937& dice, int x, int y, int v) {
  using L = Lado<cor>;
  tab2.fill(vazia);
  const auto put = [&](int i, int j, int code) {
    if (dentro(i, j) && tab2[casa(i, j)] == vazia)
      tab2[casa(i, j)] = static_cast<std::uint8_t>(code);
  };
  tab2[casa(x, y)] = L::peao;
  put(x + 1, y + L::frente, -L::sinal * v);
  for (int i = x + 1; i < 8; ++i)
    for (int j = 1; j < 7; ++j)
      if (below(dice, 3) == 0) put(i, j, L::sinal * 10);
  // And behind the one on the neighbouring file, met before: they attack nobody.
  if (x > 0 && below(dice, 2) == 0) put(x - 1, y, L::sinal * 10);
}

// The positional sum that the first pawn met brings before its structure, made what we want it to
// be, as near as the weight's own steps allow.
void aim(float sum, int v) {
  agres = static_cast<float>((static_cast<double>(sum) + 10) / v);
}

template <Cor cor>
int structure_of(int x, int y) {
  int total = 0;
  estrutura_do_peao<cor>(tab2, x, y, [&](int n) { total += n; });
  return total;
}

int growth(float from, float to) {
  return std::ilogb(to) - std::ilogb(from);
}

template <Cor cor>
void expect_sums_next_to_powers_of_two() {
  std::mt19937 dice(1);
  constexpr std::array<int, 5> values = {10, 32, 33, 50, 90};
  std::array<int, 4> by_growth{};
  int negative = 0;
  for (int k = 0; k < 40000; ++k) {
    const int v = values[dice() % values.size()], x = below(dice, 7), rank = 1 + below(dice, 6);
    set_pawns<cor>(dice, x, Lado<cor>::fila(rank), v);
    float sum = std::ldexp(1.0F, below(dice, 14) - 5) * (below(dice, 9) == 0 ? -1.0F : 1.0F);
    sum *= 1 + static_cast<float>(below(dice, 4001) - 2000) * (k % 2 == 0 ? 1e-7F : 1e-4F);
    aim(sum, v);
    const auto before = static_cast<float>(v * static_cast<double>(agres) - 10);
    const int n = structure_of<cor>(x, Lado<cor>::fila(rank));
    if (before < 0) ++negative;
    if (before > 0 && n > 0)
      ++by_growth[static_cast<std::size_t>(
          std::min(3, growth(before, before + static_cast<float>(n))))];
    expect_figures<cor, cor>();
    if (testing::Test::HasFailure()) FAIL() << "at case " << k << " agres " << agres;
  }
  for (const int n : by_growth) EXPECT_GT(n, 1000) << "sums that grow by 0, 1, 2, 3 powers of two";
  EXPECT_GT(negative, 1000);
}

TEST(LeafScan, AddsWhiteStructuresAsIfTermByTerm) {
  clear_board();
  expect_sums_next_to_powers_of_two<Cor::b>();
}

TEST(LeafScan, AddsBlackStructuresAsIfTermByTerm) {
  clear_board();
  expect_sums_next_to_powers_of_two<Cor::p>();
}

// --- The table of structures ---

// Pawns of both colours on any rank but those of promotion, n of them.
void strew_pawns(std::mt19937& dice, int n, bool last_ranks) {
  tab2.fill(vazia);
  while (n > 0) {
    const int x = below(dice, 8), y = last_ranks ? below(dice, 8) : 1 + below(dice, 6);
    if (tab2[casa(x, y)] != vazia) continue;
    tab2[casa(x, y)] = below(dice, 2) == 0 ? Lado<Cor::b>::peao : Lado<Cor::p>::peao;
    --n;
  }
}

// More skeletons than the table has records, each met again after the others.
TEST(LeafScan, KnowsTheStructureOfEverySkeleton) {
  std::mt19937 dice(2);
  clear_board();
  std::vector<Tabuleiro> skeletons;
  for (int k = 0; k < 20000; ++k) {
    strew_pawns(dice, k % 17, k % 3 == 0);
    skeletons.push_back(tab2);
  }
  for (int round = 0; round < 2; ++round)
    for (std::size_t k = 0; k < skeletons.size(); ++k) {
      tab2 = skeletons[round == 1 ? skeletons.size() - 1 - k : k];
      expect_figures<Cor::b, Cor::b>();
      if (HasFailure()) FAIL() << "at skeleton " << k;
    }
}

// Everything else on the board changes around the same pawns, and the pawns change colours.
TEST(LeafScan, TakesFromTheTableWhatThePawnsAloneDecide) {
  std::mt19937 dice(3);
  clear_board();
  for (int k = 0; k < 300; ++k) {
    strew_pawns(dice, k % 17, false);
    for (int change = 0; change < 8; ++change) {
      const std::size_t s = dice() % 64;
      constexpr std::array<std::uint8_t, 9> officers = {32, 224, 33, 223, 50, 206, 90, 166, 0};
      if (tab2[s] != Lado<Cor::b>::peao && tab2[s] != Lado<Cor::p>::peao)
        tab2[s] = officers[dice() % officers.size()];
      else if (change % 3 == 2)
        tab2[s] = static_cast<std::uint8_t>(-tab2[s]);
      expect_figures_of_all_members();
    }
    if (HasFailure()) FAIL() << "at board " << k;
  }
}

// --- More men than a game has ---

TEST(LeafScan, HoldsWithMorePawnsThanTheTableTakes) {
  std::mt19937 dice(4);
  clear_board();
  for (int k = 0; k < 1500; ++k) {
    const bool last_ranks = k % 2 == 0;
    strew_pawns(dice, 15 + k % (last_ranks ? 45 : 33), last_ranks);
    if (k % 3 == 0) tab2[dice() % 64] = Lado<Cor::b>::rei;
    if (k % 3 == 0) tab2[dice() % 64] = Lado<Cor::p>::dama;
    if (k % 4 == 3) bench::scatter(dice);
    expect_figures_of_all_members();
    if (HasFailure()) FAIL() << "at board " << k;
  }
}

TEST(LeafScan, HoldsWithManyQueens) {
  std::mt19937 dice(5);
  clear_board();
  for (int k = 0; k < 1500; ++k) {
    tab2.fill(vazia);
    const int queens = 1 + k % 64;
    for (int n = 0; n < queens; ++n)
      tab2[dice() % 64] = below(dice, 2) == 0 ? Lado<Cor::b>::dama : Lado<Cor::p>::dama;
    for (int n = 0; n < k % 9; ++n) tab2[dice() % 64] = Lado<Cor::b>::peao;
    if (k % 5 != 0) tab2[dice() % 64] = Lado<Cor::b>::rei;
    if (k % 7 != 0) tab2[dice() % 64] = Lado<Cor::p>::rei;
    if (k % 4 == 3) bench::scatter(dice);
    expect_figures_of_all_members();
    if (HasFailure()) FAIL() << "at board " << k;
  }
}

// As many reached squares as a board can give: queens so far apart that they see the edges, all of
// one side or of both, and a board full of one kind.
TEST(LeafScan, HoldsOnFullBoardsOfOneKind) {
  clear_board();
  for (const std::uint8_t code : {10, 246, 32, 224, 33, 223, 50, 206, 90, 166, 110, 146})
    for (const bool fighting : {false, true}) {
      tab2.fill(code);
      if (fighting) bench::kings_fight();
      if (!fighting) bench::kings_at_home();
      expect_figures_of_all_members();
    }
  tab2.fill(vazia);
  for (const std::size_t s : {0U, 12U, 23U, 25U, 34U, 46U, 51U, 61U}) tab2[s] = Lado<Cor::b>::dama;
  expect_figures_of_all_members();
}

}  // namespace
}  // namespace korvu
