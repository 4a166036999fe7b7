// Draws: repetition of a position of the game, the value of a draw.
#include "board/draw.h"

#include <gtest/gtest.h>

#include "root/driver.h"
#include "sides.h"
#include "tree/node.h"

namespace {

using namespace korvu;
using kit::Seen;

constexpr std::string_view repeated = "4k3/8/8/8/8/5N2/8/4K3 b - - 0 1";

// A game of `played` plies without any position equal to the one under test, which stands on tab2.
void set_up(int played, bool white_root, bool below_the_root) {
  kit::place("4k3/8/8/8/8/8/8/4K1N1 w - - 0 1");
  tab2 = kit::board_of(repeated);
  for (Tabuleiro& t : tabr1) t.fill(1);
  nb = played;
  joga_com_b = white_root;
  deeppromo = below_the_root;
  pempatee = 1;
  pempate = 7;
}

void put_at(std::size_t index) {
  tabr1[index] = kit::board_of(repeated);
}

int tested() {
  verifica_empate();
  return pempate;
}

// The entries after White's moves have even indices: what a White root has just played, and what
// White replied to a Black root.
bool looks_at_even(bool white_root, bool below_the_root) {
  return white_root != below_the_root;
}

TEST(RepetitionTest, AtTheRootOneEqualPositionIsEnough) {
  for (const bool white : {true, false}) {
    const std::size_t index = looks_at_even(white, false) ? 4 : 5;
    set_up(9, white, false);
    EXPECT_EQ(tested(), 0);
    put_at(index);
    EXPECT_EQ(tested(), 1);
    put_at(index + 2);
    EXPECT_EQ(tested(), 1);
  }
}

TEST(RepetitionTest, BelowTheRootTwoEqualPositionsAreNeeded) {
  for (const bool white : {true, false}) {
    const std::size_t index = looks_at_even(white, true) ? 2 : 3;
    set_up(9, white, true);
    EXPECT_EQ(tested(), 0);
    put_at(index);
    EXPECT_EQ(tested(), 0);
    put_at(index + 4);
    EXPECT_EQ(tested(), 1);
    put_at(index + 2);
    EXPECT_EQ(tested(), 1);
  }
}

TEST(RepetitionTest, LooksAtEverySecondPositionOnly) {
  for (const bool white : {true, false})
    for (const bool below : {false, true}) {
      const bool even = looks_at_even(white, below);
      // Every entry of the wrong parity is equal: not seen.
      set_up(20, white, below);
      for (std::size_t k = even ? 1 : 0; k < 20; k += 2) put_at(k);
      EXPECT_EQ(tested(), 0) << white << below;
      // Each entry of the right parity is looked at.
      for (std::size_t k = even ? 0 : 1; k < 20; k += 2) {
        set_up(20, white, below);
        put_at(k);
        if (below) put_at(k >= 4 ? k - 4 : k + 4);
        EXPECT_EQ(tested(), 1) << white << below << ' ' << k;
      }
    }
}

TEST(RepetitionTest, LooksNoFurtherThanTheGameHasCome) {
  set_up(6, true, false);
  put_at(6);
  EXPECT_EQ(tested(), 0);
  nb = 7;
  EXPECT_EQ(tested(), 1);

  set_up(7, false, false);
  put_at(7);
  EXPECT_EQ(tested(), 0);
  nb = 8;
  EXPECT_EQ(tested(), 1);
}

TEST(RepetitionTest, NeedsAPlyOfItsParity) {
  set_up(1, true, false);
  put_at(0);
  EXPECT_EQ(tested(), 1);
  nb = 0;
  EXPECT_EQ(tested(), 0);

  set_up(1, false, false);
  put_at(1);
  EXPECT_EQ(tested(), 0);
  nb = 2;
  EXPECT_EQ(tested(), 1);
}

TEST(RepetitionTest, ComparesAllSquares) {
  for (std::size_t s = 0; s < 64; ++s) {
    set_up(1, true, false);
    put_at(0);
    ASSERT_EQ(tested(), 1);
    tabr1[0][s] = 10;
    EXPECT_EQ(tested(), 0) << s;
  }
}

TEST(RepetitionTest, AnUnwrittenEntryIsLikeNoPosition) {
  set_up(999, true, false);
  EXPECT_EQ(tested(), 0);
  tab2.fill(0);
  EXPECT_EQ(tested(), 0);
  // Even an impossible board of that byte alone is only met where it was put.
  tab2.fill(1);
  EXPECT_EQ(tested(), 1);
}

TEST(RepetitionTest, IsOffWithoutItsSwitch) {
  for (const bool below : {false, true}) {
    set_up(9, true, below);
    for (std::size_t k = 0; k < 9; ++k) put_at(k);
    ASSERT_EQ(tested(), 1);
    pempatee = 0;
    EXPECT_EQ(tested(), 0);
  }
}

TEST(RepetitionTest, IsOffBeyondTheTable) {
  set_up(1000, true, false);
  put_at(998);
  EXPECT_EQ(tested(), 1);
  nb = 1001;
  EXPECT_EQ(tested(), 0);

  set_up(1000, false, false);
  put_at(999);
  EXPECT_EQ(tested(), 1);
  nb = 1001;
  EXPECT_EQ(tested(), 0);
}

TEST(GamePositions, AreWrittenAtTheirPly) {
  kit::place("4k3/8/8/8/8/8/8/4K1N1 w - - 0 1");
  for (Tabuleiro& t : tabr1) t.fill(1);
  for (const int ply : {1, 2, 517, 1000}) {
    nb = ply;
    guarda_posicao_do_jogo();
    EXPECT_EQ(kit::difference(tabr1[static_cast<std::size_t>(ply - 1)], tab), "") << ply;
  }
  int written = 0;
  for (const Tabuleiro& t : tabr1) written += t[0] != 1;
  EXPECT_EQ(written, 4);
}

TEST(GamePositions, BeyondTheTableAreDropped) {
  kit::place("4k3/8/8/8/8/8/8/4K1N1 w - - 0 1");
  for (Tabuleiro& t : tabr1) t.fill(1);
  for (const int ply : {1001, 1002, 4000}) {
    nb = ply;
    guarda_posicao_do_jogo();
  }
  for (const Tabuleiro& t : tabr1) EXPECT_EQ(t[0], 1);
}

// --- Ply 2 ---

// The node of ply 2 after Nf3 by the root side, with the game's position once or twice in the
// table.
float ply_2_value(Seen seen, int times, int depth) {
  kit::place(seen.fen("4k3/8/8/8/8/8/8/4K1N1 w - - 0 1"));
  joga_com_b = !seen.white;  // the root side moves at ply 2
  kit::open_ply(1);
  tab2 = seen.board(repeated);
  nb = 12;
  for (Tabuleiro& t : tabr1) t.fill(1);
  const std::size_t first = looks_at_even(joga_com_b, true) ? 0 : 1;
  for (std::size_t k = 0; k < static_cast<std::size_t>(times); ++k) tabr1[first + 4 * k] = tab2;
  deeppromo = 1;
  pempatee = 1;
  emp = -77;
  deep = depth;
  alfa[2] = 1234;
  const kit::Squares m = seen.squares("g1f3");
  por_cor(seen.white, [&]<Cor cor>() { no<2, cor>(m.x1, m.y1, m.x2, m.y2); });
  return alfa[2];
}

TEST(RepetitionAtPly2, IsADrawAtTheThirdOccurrence) {
  kit::for_both_sides([](Seen seen) {
    EXPECT_EQ(ply_2_value(seen, 2, 1), -77);
    EXPECT_EQ(pempate, 1);
    EXPECT_EQ(ply_2_value(seen, 2, 3), -77);
    EXPECT_NE(ply_2_value(seen, 1, 1), -77);
    EXPECT_EQ(pempate, 0);
  });
}

TEST(RepetitionAtPly2, IsNotAskedWithoutDepth) {
  kit::for_both_sides([](Seen seen) { EXPECT_EQ(ply_2_value(seen, 2, 0), 1234); });
}

// --- The value of a draw ---

int draw_value(bool white_root, float white, float black, int bias) {
  materialba = white;
  materialpa = black;
  empp = bias;
  emp = emppp = 999;
  por_cor(white_root, []<Cor cor>() { define_empate<cor>(); });
  EXPECT_EQ(emp, emppp);
  return emp;
}

TEST(DrawValue, IsTheBiasLessTenAtEqualMaterial) {
  kit::place("4k3/8/8/8/8/8/8/4K1N1 w - - 0 1");
  for (const int bias : {-10, -7, -5, -3, 0, 3, 5, 7, 10})
    for (const bool white : {true, false}) EXPECT_EQ(draw_value(white, 510, 510, bias), bias - 10);
}

TEST(DrawValue, MovesWithTheMaterialQuotientAndIsCutTowardsZero) {
  kit::place("4k3/8/8/8/8/8/8/4K1N1 w - - 0 1");
  // 5 ln 2 = 3.4657...
  EXPECT_EQ(draw_value(true, 400, 200, -5), -11);   // -11.53
  EXPECT_EQ(draw_value(false, 400, 200, -5), -18);  // -18.47
  EXPECT_EQ(draw_value(false, 200, 400, -5), -11);
  EXPECT_EQ(draw_value(true, 200, 400, -5), -18);
  EXPECT_EQ(draw_value(true, 400, 200, 10), 3);    // 3.47
  EXPECT_EQ(draw_value(false, 400, 200, 10), -3);  // -3.47
}

// A whole search of depth 9, which begins with a pass that tells how the root stands.
int rise_of_the_draw(std::string_view fen, int taken) {
  kit::place(fen);
  peca = taken;
  emp = emppp = -15;
  alfa0 = ALFA0 = -16500;
  E = -10000000;
  deep = deepp = 9;
  por_cor(joga_com_b, []<Cor cor>() { procura<cor>(); });
  deepp = 17;
  return emp - emppp;
}

TEST(DrawValue, RisesByTenInAQuietGameThatStandsWell) {
  const std::string_view level = "4k3/4p3/8/8/8/8/4P3/4K3 w - - 0 1";
  for (const std::string& fen : {std::string(level), kit::mirrored(level)}) {
    EXPECT_EQ(rise_of_the_draw(fen, 0), 10) << fen;
    EXPECT_EQ(rise_of_the_draw(fen, 10), 0) << fen;
    EXPECT_EQ(rise_of_the_draw(fen, -33), 0) << fen;
  }
  // The pawn is lost, and with it more than the present balance allows for.
  const std::string_view worse = "8/8/8/3k4/4P3/8/8/7K w - - 0 1";
  for (const std::string& fen : {std::string(worse), kit::mirrored(worse)})
    EXPECT_EQ(rise_of_the_draw(fen, 0), 0) << fen;
}

}  // namespace
