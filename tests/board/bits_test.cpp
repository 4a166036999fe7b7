// Sets of squares against walks over the board: the tables of rays and leaps, the sets read off a
// board, and the test of attack that is made of them.
#include "board/bits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <utility>
#include <vector>

#include "board/attack.h"
#include "board/wide.h"
#include "support/plain_attack.h"

namespace korvu {
namespace {

int below(std::mt19937& dice, int n) {
  return static_cast<int>(dice() % static_cast<unsigned>(n));
}

// Men of all kinds on one square in `every`, wherever they fall: pawns on the last ranks, kings by
// the dozen or none.
Tabuleiro strewn(std::mt19937& dice, int every) {
  constexpr std::array<int, 6> values = {10, 32, 33, 50, 90, 110};
  Tabuleiro t{};
  for (std::uint8_t& square : t) {
    if (below(dice, every) != 0) continue;
    const int v = values[dice() % values.size()];
    square = static_cast<std::uint8_t>(below(dice, 2) == 0 ? v : -v);
  }
  return t;
}

Bits random_bits(std::mt19937& dice) {
  const Bits dense = Bits{dice()} << 32 | dice();
  return below(dice, 2) == 0 ? dense : dense & (Bits{dice()} << 32 | dice());
}

std::vector<int> squares_of(Bits b) {
  std::vector<int> squares;
  for (int s = 0; s < 64; ++s)
    if ((b >> s & 1) != 0) squares.push_back(s);
  return squares;
}

// The squares for which test(square) holds.
template <class F>
Bits all_with(F test) {
  Bits b = 0;
  for (int s = 0; s < 64; ++s)
    if (test(s)) b |= Bits{1} << s;
  return b;
}

// f.template operator()<d>() for each of the eight directions.
template <class F>
void each_direction(F f) {
  [&]<int... d>(std::integer_sequence<int, d...>) {
    (f.template operator()<d>(), ...);
  }
  (std::make_integer_sequence<int, 8>{});
}

// --- Plain sets ---

TEST(Bits, CountsFindsAndVisitsTheSquaresOfASet) {
  std::mt19937 dice(1);
  EXPECT_EQ(quantas(0), 0);
  EXPECT_EQ(quantas(~Bits{0}), 64);
  EXPECT_FALSE(cada_casa(0, [](int) { return true; }));
  for (int k = 0; k < 20000; ++k) {
    const Bits b = k < 64 ? Bits{1} << k : random_bits(dice);
    const std::vector<int> squares = squares_of(b);
    if (squares.empty()) continue;
    ASSERT_EQ(quantas(b), static_cast<int>(squares.size())) << b;
    ASSERT_EQ(primeira_de(b), squares.front()) << b;
    ASSERT_EQ(ultima_de(b), squares.back()) << b;
    std::vector<int> visited;
    ASSERT_FALSE(cada_casa(b, [&](int s) { return visited.push_back(s), false; }));
    ASSERT_EQ(visited, squares);
    visited.clear();
    const int last = squares[dice() % squares.size()];
    ASSERT_TRUE(cada_casa(b, [&](int s) { return visited.push_back(s), s == last; }));
    ASSERT_EQ(visited.back(), last) << "ends where it is told to";
  }
}

TEST(Bits, NumberSquaresAsBoardsDo) {
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y) {
      const auto s = static_cast<int>(casa(x, y));
      EXPECT_EQ(bit(s), Bits{1} << (8 * x + y));
      EXPECT_EQ(coluna_de(s), x);
      EXPECT_EQ(fila_de(s), y);
    }
}

// --- Sets read off a board ---

// Bytes of every value, not those of men alone.
TEST(Bits, OfABoardAreReadSquareBySquare) {
  std::mt19937 dice(2);
  for (int k = 0; k < 300; ++k) {
    Tabuleiro t;
    for (std::uint8_t& square : t)
      square = static_cast<std::uint8_t>(below(dice, 3) == 0 ? 0 : below(dice, 256));
    const auto at = [&](int s) { return t[static_cast<std::size_t>(s)]; };
    for (int code = 0; code < 256; ++code)
      ASSERT_EQ(onde(t, static_cast<std::uint8_t>(code)),
                all_with([&](int s) { return at(s) == code; }));
    ASSERT_EQ(ocupadas(t), all_with([&](int s) { return at(s) != 0; }));
    ASSERT_EQ(negativas(t), all_with([&](int s) { return at(s) >= 128; }));
  }
}

template <Cor cor>
void expect_men(const Homens& h, const Tabuleiro& t) {
  constexpr std::array<int, 6> values = {10, 32, 33, 50, 90, 110};
  for (const Peca p : todas_as_pecas) {
    const int v = values[static_cast<std::size_t>(p)];
    const Bits should = all_with(
        [&](int s) { return plain_attack::at(t, s / 8, s % 8) == (cor == Cor::b ? v : -v); });
    ASSERT_EQ(h.de<cor>(p), should);
    const std::vector<int> squares = squares_of(should);
    ASSERT_EQ(h.unico<cor>(p), squares.size() == 1 ? squares[0] : -1);
  }
  ASSERT_EQ(h.ocupadas, all_with([&](int s) { return plain_attack::at(t, s / 8, s % 8) != 0; }));
}

TEST(Bits, OfMenAreThoseOfTheirColourAndKind) {
  std::mt19937 dice(3);
  int alone = 0;
  for (int k = 0; k < 3000; ++k) {
    const Tabuleiro t = strewn(dice, 1 + k % 12);
    const Homens both(t);
    expect_men<Cor::b>(both, t);
    expect_men<Cor::p>(both, t);
    alone += both.unico<Cor::b>(Peca::rei) >= 0;
    if (HasFatalFailure()) FAIL() << "at board " << k;
  }
  EXPECT_GT(alone, 100);
}

// --- Rays ---

TEST(Rays, AreWhatAWalkOverAnEmptyBoardMeets) {
  const Tabuleiro empty{};
  for (int d = 0; d < 8; ++d) {
    const Passo step = direcoes[static_cast<std::size_t>(d)];
    const bool straight = d >= primeira_reta && d < primeira_reta + 4;
    EXPECT_EQ(step.dx == 0 || step.dy == 0, straight) << d;
    EXPECT_EQ(step.dx != 0 && step.dy != 0, d >= primeira_diagonal) << d;
    EXPECT_EQ(crescente(d), casa(3 + step.dx, 3 + step.dy) > casa(3, 3)) << d;
    for (int s = 0; s < 64; ++s) {
      std::vector<int> walk;
      anda(empty, s / 8, s % 8, step,
           [&](int x, int y) { return walk.push_back(8 * x + y), false; });
      const Raio& r = raio(d, s);
      ASSERT_EQ(std::vector<int>(r.lista.begin(), r.lista.begin() + r.n), walk) << d << ' ' << s;
      Bits squares = 0;
      for (const int q : walk) squares |= Bits{1} << q;
      ASSERT_EQ(r.casas, squares) << d << ' ' << s;
      ASSERT_EQ(r.fim, Bits{1} << (walk.empty() ? s : walk.back())) << d << ' ' << s;
    }
  }
}

// The order in which men meet their squares is that of the walks of types.h.
TEST(Rays, KeepTheOrderOfGeneration) {
  for (std::size_t d = 0; d < 4; ++d) {
    EXPECT_EQ(direcoes[d].dx, raios_da_torre[d].dx);
    EXPECT_EQ(direcoes[d].dy, raios_da_torre[d].dy);
    EXPECT_EQ(direcoes[d + 4].dx, raios_do_bispo[d].dx);
    EXPECT_EQ(direcoes[d + 4].dy, raios_do_bispo[d].dy);
  }
}

TEST(Rays, EndWhereAWalkOverTheBoardEnds) {
  std::mt19937 dice(4);
  int blocked = 0, free = 0, none = 0;
  for (int k = 0; k < 2000; ++k) {
    const Tabuleiro t = strewn(dice, 1 + k % 12);
    const Bits men = ocupadas(t);
    for (int s = 0; s < 64; ++s)
      each_direction([&]<int d>() {
        int end = s, steps = 0;
        anda(t, s / 8, s % 8, direcoes[d],
             [&](int x, int y) { return end = 8 * x + y, ++steps, false; });
        const int f = fim_do_raio<d>(men, s);
        ASSERT_EQ(f, end) << "board " << k << " direction " << d << " square " << s;
        ASSERT_EQ(passos_ate<d>(s, f), steps);
        none += steps == 0;
        blocked += steps > 0 && t[static_cast<std::size_t>(end)] != 0;
        free += steps > 0 && t[static_cast<std::size_t>(end)] == 0;
      });
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(blocked, 10000);
  EXPECT_GT(free, 10000);
  EXPECT_GT(none, 10000);
}

TEST(Rays, StepsAreCountedToEverySquareOfTheRay) {
  for (int s = 0; s < 64; ++s)
    each_direction([&]<int d>() {
      const Raio& r = raio(d, s);
      EXPECT_EQ(passos_ate<d>(s, s), 0);
      for (int k = 0; k < r.n; ++k)
        EXPECT_EQ(passos_ate<d>(s, r.lista[static_cast<std::size_t>(k)]), k + 1);
    });
}

TEST(Rays, AreAskedInTheirOrderUntilOneSaysYes) {
  std::vector<int> asked;
  EXPECT_FALSE((cada_direcao<2, 5>([&]<int d>() { return asked.push_back(d), false; })));
  EXPECT_EQ(asked, (std::vector<int>{2, 3, 4, 5}));
  asked.clear();
  EXPECT_TRUE((cada_direcao<0, 7>([&]<int d>() { return asked.push_back(d), d == 3; })));
  EXPECT_EQ(asked, (std::vector<int>{0, 1, 2, 3}));
  EXPECT_FALSE((cada_direcao<0, -1>([]<int d>() { return d >= 0; })));
}

// --- Two squares ---

struct Apart {
  int dx, dy;
};
Apart apart(int from, int to) {
  return {to / 8 - from / 8, to % 8 - from % 8};
}
int sign(int n) {
  return (n > 0) - (n < 0);
}
bool in_rank_or_file(Apart a) {
  return (a.dx == 0) != (a.dy == 0);
}
bool in_diagonal(Apart a) {
  return a.dx != 0 && std::abs(a.dx) == std::abs(a.dy);
}

// The squares to which a man on s gets, by how far apart the two are.
template <class F>
Bits apart_from(int s, F test) {
  return all_with([&](int to) { return test(apart(s, to)); });
}

TEST(Leaps, AreThoseOfTheirDistance) {
  for (std::size_t i = 0; i < 64; ++i) {
    const auto s = static_cast<int>(i);
    EXPECT_EQ(saltos_de[i], apart_from(s, [](Apart a) { return std::abs(a.dx * a.dy) == 2; }));
    EXPECT_EQ(vizinhas_de[i], apart_from(s, [](Apart a) {
                return a.dx * a.dx + a.dy * a.dy == 1 || a.dx * a.dx + a.dy * a.dy == 2;
              }));
    EXPECT_EQ(peao_ataca<Cor::b>[i],
              apart_from(s, [](Apart a) { return a.dy == 1 && a.dx * a.dx == 1; }));
    EXPECT_EQ(peao_ataca<Cor::p>[i],
              apart_from(s, [](Apart a) { return a.dy == -1 && a.dx * a.dx == 1; }));
    EXPECT_EQ(retas_de[i], apart_from(s, in_rank_or_file));
    EXPECT_EQ(diagonais_de[i], apart_from(s, in_diagonal));
  }
}

TEST(Leaps, KnowTheDirectionBetweenTwoSquares) {
  int in_line = 0;
  for (int from = 0; from < 64; ++from)
    for (int to = 0; to < 64; ++to) {
      const Apart a = apart(from, to);
      const int d = direcao_entre[static_cast<std::size_t>(from)][static_cast<std::size_t>(to)];
      if (!in_rank_or_file(a) && !in_diagonal(a)) {
        EXPECT_EQ(d, -1) << from << ' ' << to;
        continue;
      }
      ASSERT_GE(d, 0) << from << ' ' << to;
      EXPECT_EQ(direcoes[static_cast<std::size_t>(d)].dx, sign(a.dx));
      EXPECT_EQ(direcoes[static_cast<std::size_t>(d)].dy, sign(a.dy));
      ++in_line;
    }
  EXPECT_EQ(in_line, 64 * 14 + 560) << "a rook reaches 14 squares anywhere, bishops 560 in all";
}

TEST(Rays, HoldTheSquaresBetweenTwoInLine) {
  for (int from = 0; from < 64; ++from)
    for (int to = 0; to < 64; ++to) {
      const int dx = to / 8 - from / 8, dy = to % 8 - from % 8;
      Bits should = 0;
      if (dx == 0 || dy == 0 || std::abs(dx) == std::abs(dy))
        for (int k = 1; k < std::max(std::abs(dx), std::abs(dy)); ++k)
          should |= bit(static_cast<int>(casa(from / 8 + k * sign(dx), from % 8 + k * sign(dy))));
      ASSERT_EQ(entre(from, to), should) << from << ' ' << to;
    }
}

// --- Attack ---

TEST(AttackBySets, IsThatOfWalksOnEverySquareOfOddBoards) {
  std::mt19937 dice(5);
  int attacked = 0, squares = 0;
  for (int k = 0; k < 6000; ++k) {
    const Tabuleiro t = strewn(dice, 1 + k % 24);
    const Homens men(t);
    const Bits all_by_white = atacadas_por<Cor::b>(men), all_by_black = atacadas_por<Cor::p>(men);
    for (int s = 0; s < 64; ++s) {
      const bool by_white = plain_attack::attacked(t, s / 8, s % 8, +1);
      const bool by_black = plain_attack::attacked(t, s / 8, s % 8, -1);
      ASSERT_EQ(atacada<Cor::b>(t, s / 8, s % 8), by_black) << "board " << k << " square " << s;
      ASSERT_EQ(atacada<Cor::p>(t, s / 8, s % 8), by_white) << "board " << k << " square " << s;
      ASSERT_EQ(atacada<Cor::b>(men, s), by_black) << "board " << k << " square " << s;
      ASSERT_EQ(atacada<Cor::p>(men, s), by_white) << "board " << k << " square " << s;
      ASSERT_EQ((all_by_black & bit(s)) != 0, by_black) << "board " << k << " square " << s;
      ASSERT_EQ((all_by_white & bit(s)) != 0, by_white) << "board " << k << " square " << s;
      attacked += by_white + by_black;
      squares += 2;
    }
  }
  EXPECT_GT(attacked, squares / 10);
  EXPECT_LT(attacked, squares * 9 / 10);
}

#ifdef KORVU_WIDE_REGISTERS
TEST(AttackBySets, IsTheSameWithWideRegisters) {
  if (!tem_registros_largos()) GTEST_SKIP() << "this processor has no wide registers";
  std::mt19937 dice(9);
  for (int k = 0; k < 6000; ++k) {
    const Tabuleiro t = strewn(dice, 1 + k % 40);
    const Dominio wide = dominio_ao_largo(t);
    const Homens men(t);
    ASSERT_EQ(wide.homens.conjuntos, men.conjuntos) << "board " << k;
    ASSERT_EQ(wide.homens.ocupadas, men.ocupadas) << "board " << k;
    ASSERT_EQ(wide.por<Cor::b>(), atacadas_por<Cor::b>(men)) << "board " << k;
    ASSERT_EQ(wide.por<Cor::p>(), atacadas_por<Cor::p>(men)) << "board " << k;
  }
}
#endif

// The king's test, with no king, one, or many: attacked when any of them is, and the square left is
// that of the last in the order of the scan.
template <Cor cor>
void expect_king_test(const Tabuleiro& t) {
  constexpr int side = cor == Cor::b ? 1 : -1;
  int x_left = 71, y_left = 72;
  bool should = false;
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y) {
      if (plain_attack::at(t, x, y) != side * 110) continue;
      x_left = x;
      y_left = y;
      should = should || plain_attack::attacked(t, x, y, -side);
    }
  rei_x<cor>() = 71;
  rei_y<cor>() = 72;
  rei_x<outra(cor)>() = 73;
  rei_y<outra(cor)>() = 74;
  tab2 = t;
  Y = XEQUE = 7;
  verifica_rei<cor>();
  ASSERT_EQ(Y, should);
  ASSERT_EQ(rei_x<cor>(), x_left);
  ASSERT_EQ(rei_y<cor>(), y_left);
  verifica_xeque<outra(cor)>();
  ASSERT_EQ(XEQUE, should);
  ASSERT_EQ(rei_x<outra(cor)>(), 73) << "the other king's square is not written";
  ASSERT_EQ(rei_y<outra(cor)>(), 74);
}

TEST(AttackBySets, FindsNoKingOneOrMany) {
  std::mt19937 dice(6);
  std::array<int, 3> kings{};
  for (int k = 0; k < 20000; ++k) {
    const Tabuleiro t = strewn(dice, 1 + k % 24);
    expect_king_test<Cor::b>(t);
    expect_king_test<Cor::p>(t);
    if (HasFatalFailure()) FAIL() << "at board " << k;
    ++kings[std::min<std::size_t>(2, squares_of(onde(t, 110)).size())];
  }
  for (const int n : kings) EXPECT_GT(n, 1000);
}

}  // namespace
}  // namespace korvu
