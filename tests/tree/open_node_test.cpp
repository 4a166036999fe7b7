// What a node finds out before its loops run, against the plain tests that it stands for: the full
// test of the king after every move, and one comparison for each bound above.
#include "tree/open_node.h"

#include <gtest/gtest.h>

#include <random>

#include "board/move.h"
#include "support/plain_attack.h"
#include "support/positions.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;
using plain_attack::on_board;

// --- The king after a move ---

enum Kind { quiet, capture, in_passing, promotion, king_step, castling, kinds };

struct Tally {
  std::array<int, kinds> by_kind{};
  int moves = 0, opened = 0, opened_in_passing = 0, in_check = 0;
};

struct Slots {
  int y, white_x, white_y, black_x, black_y;
  friend bool operator==(const Slots&, const Slots&) = default;
};
Slots slots() {
  return {Y, p_x_Rb, p_y_Rb, p_x_Rp, p_y_Rp};
}
void mark_slots() {
  Y = 7;
  p_x_Rb = 71;
  p_y_Rb = 72;
  p_x_Rp = 73;
  p_y_Rp = 74;
}

// What the test should leave behind, from tab2 alone.
template <Cor cor>
Slots told_plainly() {
  constexpr int side = cor == Cor::b ? 1 : -1;
  Slots s = {0, 71, 72, 73, 74};
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y) {
      if (plain_attack::at(tab2, x, y) != side * 110) continue;
      (cor == Cor::b ? s.white_x : s.black_x) = x;
      (cor == Cor::b ? s.white_y : s.black_y) = y;
      if (plain_attack::attacked(tab2, x, y, -side)) s.y = 1;
    }
  return s;
}

// The moves of one side by the way the men move, whatever they leave their king open to.
template <class F>
class Moves {
 public:
  Moves(const Tabuleiro& t, const Duplos& doubles, int side, F f)
      : t_(t), doubles_(doubles), side_(side), f_(f) {
    for (int x = 0; x < 8; ++x)
      for (int y = 0; y < 8; ++y) man(x, y, side * plain_attack::at(t, x, y));
  }

 private:
  int own(int x, int y) const { return side_ * plain_attack::at(t_, x, y); }

  void man(int x, int y, int kind) {
    if (kind == 10) pawn(x, y);
    for (int dx = -2; dx <= 2; ++dx)
      for (int dy = -2; dy <= 2; ++dy) {
        const bool leap = std::abs(dx * dy) == 2;
        const bool step = !leap && std::abs(dx) < 2 && std::abs(dy) < 2 && (dx != 0 || dy != 0);
        const bool straight = dx * dy == 0;
        if (leap && kind == 32) walk(x, y, dx, dy, 1, quiet);
        if (step && kind == 110) walk(x, y, dx, dy, 1, king_step);
        if (step && (kind == 90 || kind == (straight ? 50 : 33))) walk(x, y, dx, dy, 7, quiet);
      }
    if (kind == 110) castle(x, y);
  }

  void walk(int x, int y, int dx, int dy, int steps, Kind kind) {
    for (int i = x + dx, j = y + dy; steps > 0 && on_board(i, j); i += dx, j += dy, --steps) {
      if (own(i, j) > 0) return;
      f_(x, y, i, j, kind == quiet && own(i, j) < 0 ? capture : kind);
      if (own(i, j) < 0) return;
    }
  }

  void pawn(int x, int y) {
    const int j = y + side_, first = side_ > 0 ? 1 : 6, last = side_ > 0 ? 7 : 0;
    if (!on_board(x, j)) return;
    if (own(x, j) == 0) {
      f_(x, y, x, j, j == last ? promotion : quiet);
      if (y == first && own(x, j + side_) == 0) f_(x, y, x, j + side_, quiet);
    }
    for (const int i : {x - 1, x + 1}) {
      if (!on_board(i, j)) continue;
      if (own(i, j) < 0) f_(x, y, i, j, j == last ? promotion : capture);
      const auto& doubles = side_ > 0 ? doubles_.pp : doubles_.pb;
      if (own(i, j) == 0 && own(i, y) == -10 && y == first + 3 * side_ &&
          doubles[static_cast<std::size_t>(i)])
        f_(x, y, i, j, in_passing);
    }
  }

  void castle(int x, int y) {
    if (x != 4 || y != (side_ > 0 ? 0 : 7)) return;
    if (own(5, y) == 0 && own(6, y) == 0 && own(7, y) == 50) f_(x, y, 6, y, castling);
    if (own(3, y) == 0 && own(2, y) == 0 && own(1, y) == 0 && own(0, y) == 50)
      f_(x, y, 2, y, castling);
  }

  const Tabuleiro& t_;
  const Duplos& doubles_;
  const int side_;
  F f_;
};

// All moves of one colour on the board of ply N.
template <int N, Cor cor>
void expect_same_test(Tally& tally) {
  constexpr int side = cor == Cor::b ? 1 : -1;
  const NoAberto<N, cor> node;
  tab2 = tabd[N];
  mark_slots();
  verifica_rei<cor>();
  const bool in_check = Y;
  Moves(tabd[N], duplos_D[N], side, [&](int x1, int y1, int x2, int y2, Kind kind) {
    init_tabuleiro2_deep<N, cor>(x1, y1, x2, y2);
    mark_slots();
    node.verifica_rei_apos(x1, y1, x2, y2);
    const Slots is = slots();
    mark_slots();
    verifica_rei<cor>();
    const Texto m = texto_do_lance(x1, y1, x2, y2);
    const std::string move = {m.A, m.B, m.C, m.D};
    EXPECT_EQ(is, slots()) << move << ", ply " << N;
    EXPECT_EQ(is, told_plainly<cor>()) << move << ", ply " << N;
    ++tally.by_kind[kind];
    ++tally.moves;
    tally.in_check += in_check;
    const bool opened = !in_check && is.y && kind != king_step && kind != castling;
    tally.opened += opened;
    tally.opened_in_passing += opened && kind == in_passing;
  });
}

template <Cor cor>
std::size_t king_of(const Tabuleiro& t) {
  const Bits b = onde(t, Lado<cor>::rei);
  return b == 0 ? 64 : static_cast<std::size_t>(primeira_de(b));
}

// The position on a board of its own for this ply, both colours, with the kings it has, without
// the mover's, and with a second one.
template <int N, Cor cor>
void expect_same_tests(const Tabuleiro& t, std::mt19937& dice, Tally& tally) {
  tabd[N] = t;
  expect_same_test<N, cor>(tally);
  if (king_of<cor>(t) < 64) tabd[N][king_of<cor>(t)] = vazia;
  expect_same_test<N, cor>(tally);
  tabd[N] = t;
  std::size_t s = dice() % 64;
  while (t[s] != vazia) s = dice() % 64;
  tabd[N][s] = Lado<cor>::rei;
  expect_same_test<N, cor>(tally);
}

TEST(OpenNode, TestsTheKingAfterEveryMoveAsTheFullTestDoes) {
  std::mt19937 dice(1);
  Tally tally;
  int positions = 0;
  for (const std::string& fen : referee::many_fens()) {
    stand(0, fen);
    const int turn = positions++ % 4;
    each_colour([&]<Cor cor>() {
      duplos_D[1] = duplos_D[12] = duplos_D[23] = duplos_D[2] = duplos;
      if (turn == 0) expect_same_tests<1, cor>(tab, dice, tally);
      if (turn == 1) expect_same_tests<2, cor>(tab, dice, tally);
      if (turn == 2) expect_same_tests<12, cor>(tab, dice, tally);
      if (turn == 3) expect_same_tests<23, cor>(tab, dice, tally);
    });
    if (testing::Test::HasFailure()) FAIL() << fen;
  }
  EXPECT_GT(positions, 2000);
  for (const int n : tally.by_kind) EXPECT_GT(n, 100);
  EXPECT_GT(tally.opened, 1000) << "moves that open the line to their king";
  EXPECT_GT(tally.in_check, 1000);
  EXPECT_LT(tally.in_check, tally.moves / 2);
}

// Two pawns leave the rank at once, and neither alone would open it; or the pawn taken stood
// between the king and a bishop or queen, on a line that the taker does not stand on.
TEST(OpenNode, SeesTheLineOpenedByACaptureInPassing) {
  for (const std::string_view fen :
       {"4k3/8/8/K2pP2r/8/8/8/8 w - d6 0 1", "4k3/8/8/r2pP2K/8/8/8/8 w - d6 0 1",
        "4k3/1b6/8/3pP3/8/5K2/8/8 w - d6 0 1", "4k1b1/8/8/3pP3/8/1K6/8/8 w - d6 0 1",
        "q3k3/8/8/3pP3/8/8/6K1/8 w - d6 0 1"}) {
    SCOPED_TRACE(fen);
    each_colour([&]<Cor cor>() {
      stand(2, told_for<cor>(fen));
      Tally tally;
      expect_same_test<2, cor>(tally);
      EXPECT_EQ(tally.by_kind[in_passing], 1);
      EXPECT_EQ(tally.opened_in_passing, 1);
    });
  }
}

// Men strewn anyhow: walls of pinned men, kings in check, no king, three kings.
TEST(OpenNode, TestsTheKingOnOddBoardsToo) {
  std::mt19937 dice(2);
  Tally tally;
  constexpr std::array<int, 7> values = {10, 10, 32, 33, 50, 90, 110};
  stand(0, "4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  for (int k = 0; k < 12000; ++k) {
    Tabuleiro t{};
    for (std::uint8_t& square : t)
      if (dice() % (2 + static_cast<unsigned>(k) % 8) == 0) {
        const int v = values[dice() % (k % 2 == 0 ? 7 : 6)];
        square = static_cast<std::uint8_t>(dice() % 2 == 0 ? v : -v);
      }
    if (k % 2 != 0) {
      t[dice() % 32] = Lado<Cor::b>::rei;
      t[32 + dice() % 32] = Lado<Cor::p>::rei;
    }
    for (std::size_t x = 0; x < 8; ++x) {
      duplos_D[3].pb[x] = t[8 * x + 3] == Lado<Cor::b>::peao && t[8 * x + 2] == vazia;
      duplos_D[3].pp[x] = t[8 * x + 4] == Lado<Cor::p>::peao && t[8 * x + 5] == vazia;
    }
    tabd[3] = t;
    each_colour([&]<Cor cor>() { expect_same_test<3, cor>(tally); });
    if (testing::Test::HasFailure()) FAIL() << "at board " << k;
  }
  EXPECT_GT(tally.by_kind[in_passing], 100);
  EXPECT_GT(tally.opened, 1000);
}

// --- The value that ends a node ---

// Compared with each bound above it, one by one, and with the cap of the ply.
template <int N>
bool refuted_plainly() {
  if (N % 2 == 0) {
    if (alfa[N] >= MAXcut[N]) return true;
    for (std::size_t k = 1; k < N; k += 2)
      if (alfa[N] >= beta[k]) return true;
  } else {
    if (beta[N] <= -MAXcut[N]) return true;
    for (std::size_t k = 0; k < N; k += 2)
      if (beta[N] <= alfa[k]) return true;
  }
  return false;
}

TEST(OpenNode, OneComparisonStandsForThoseWithAllBounds) {
  std::mt19937 dice(3);
  // Few values, so that equal ones meet; neighbours of a float, zeros of both signs, the ends.
  const std::array<float, 14> values = {-16500,  16500, -15,    -15.000001F, 0,     -0.0F,  0.001F,
                                        -0.001F, 33,    33.25F, -33.25F,     15900, -15900, 1e9F};
  std::array<std::array<int, 2>, 24> outcomes{};
  for (int k = 0; k < 4000; ++k) {
    const unsigned some = 2 + dice() % (values.size() - 1);
    const auto any = [&] { return values[dice() % some]; };
    for (std::size_t n = 0; n < alfa.size(); ++n) {
      // Mostly bounds wide open, as in a search: or every deep node would be refuted.
      alfa[n] = dice() % 6 == 0 ? any() : -16500;
      beta[n] = dice() % 6 == 0 ? any() : 16500;
    }
    for (float& cap : MAXcut) cap = dice() % 4 == 0 ? any() : 20000;
    each_node<1, 23>([&]<int N, Cor cor>() {
      valor<N>() = any();
      const bool should = refuted_plainly<N>();
      EXPECT_EQ(refuta<N>(limite_que_refuta<N>()), should) << "ply " << N;
      if (k % 50 == 0) {
        EXPECT_EQ(refuta<N>((NoAberto<N, cor>().limite)), should) << "ply " << N;
      }
      ++outcomes[N][should];
    });
    if (testing::Test::HasFailure()) FAIL() << "at case " << k;
  }
  for (std::size_t n = 1; n < 24; ++n) {
    EXPECT_GT(outcomes[n][0], 50) << n;
    EXPECT_GT(outcomes[n][1], 50) << n;
  }
}

// Each bound of the other parity alone decides, and none of its own parity does.
TEST(OpenNode, EveryBoundOfTheOtherParityCounts) {
  each_node<1, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (std::size_t k = 0; k <= N; ++k) {
      if (k == N) continue;
      alfa.fill(-16500);
      beta.fill(16500);
      MAXcut.fill(20000);
      valor<N>() = 5;
      value(static_cast<int>(k)) = 5;
      EXPECT_EQ(refuta<N>(limite_que_refuta<N>()), k % 2 != N % 2) << "bound of ply " << k;
    }
    alfa.fill(-16500);
    beta.fill(16500);
    valor<N>() = 5;
    MAXcut[N] = N % 2 == 0 ? 5.0F : -5.0F;
    EXPECT_TRUE(refuta<N>(limite_que_refuta<N>())) << "the cap";
    MAXcut[N] = N % 2 == 0 ? 5.25F : -4.75F;
    EXPECT_FALSE(refuta<N>(limite_que_refuta<N>())) << "the cap, not reached";
  });
}

}  // namespace
}  // namespace korvu
