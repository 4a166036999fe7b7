// May a man counted for mobility really move?
#include <gtest/gtest.h>

#include "eval/bench.h"
#include "eval/freedom.h"
#include "support/lab.h"

namespace {

using korvu::Cor;

template <Cor cor>
int test_on_tab(const char* fen, int x1, int y1, int x2, int y2) {
  bench::lay(fen);
  korvu::tab2.fill(0);  // not the board asked
  korvu::YY = 2;
  korvu::verifica_liberdade<cor>(x1, y1, x2, y2);
  return korvu::YY;
}

template <Cor cor>
int test_on_tab2(const char* fen, int x1, int y1, int x2, int y2) {
  bench::lay(fen);
  korvu::tab.fill(0);
  korvu::YY = 2;
  korvu::verifica_liberdadee<cor>(x1, y1, x2, y2);
  return korvu::YY;
}

}  // namespace

TEST(Freedom, APinnedMansMoveIsNotFree) {
  const char* fen = "4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1";
  EXPECT_EQ(test_on_tab<Cor::b>(fen, 4, 1, 2, 2), 1);
  EXPECT_EQ(test_on_tab2<Cor::b>(fen, 4, 1, 2, 2), 1);
  EXPECT_EQ(test_on_tab<Cor::b>(fen, 4, 0, 3, 0), 0);
  EXPECT_EQ(test_on_tab2<Cor::b>(fen, 4, 0, 3, 0), 0);
}

TEST(Freedom, LooksAtTheMoversKing) {
  const char* fen = "4k3/4n3/8/8/8/8/8/4R2K w - - 0 1";
  EXPECT_EQ(test_on_tab<Cor::p>(fen, 4, 6, 2, 5), 1);
  EXPECT_EQ(test_on_tab2<Cor::p>(fen, 4, 6, 2, 5), 1);
  EXPECT_EQ(test_on_tab<Cor::b>(fen, 7, 0, 7, 1), 0);  // Black's knight still pinned: no matter
}

TEST(Freedom, FindsTheKingOnTheBoardAndNotInTheSlots) {
  bench::lay("4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1");
  bench::kings("a1", "h8");
  korvu::verifica_liberdade<Cor::b>(4, 1, 2, 2);
  EXPECT_EQ(korvu::YY, 1);
  EXPECT_EQ(korvu::p_x_Rb, 0);  // and leaves the slots alone
}

TEST(Freedom, PlaysOnAPrivateBoard) {
  bench::lay("4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1");
  const korvu::Tabuleiro before = korvu::tab;
  korvu::verifica_liberdade<Cor::b>(4, 1, 2, 2);
  EXPECT_EQ(korvu::tab, before);
  EXPECT_EQ(korvu::tab2, before);
  EXPECT_EQ(korvu::tab2t[lab::square("c3")], 32);
  EXPECT_EQ(korvu::tab2t[lab::square("e2")], 0);
}

TEST(Freedom, APawnOnItsLastRankIsAQueen) {
  bench::lay("8/P6k/8/8/8/8/p6K/8 w - - 0 1");
  korvu::verifica_liberdade<Cor::b>(0, 6, 0, 7);
  EXPECT_EQ(korvu::tab2t[lab::square("a8")], 90);
  korvu::verifica_liberdade<Cor::p>(0, 1, 0, 0);
  EXPECT_EQ(korvu::tab2t[lab::square("a1")], 166);
  korvu::verifica_liberdadee<Cor::b>(0, 6, 0, 7);
  EXPECT_EQ(korvu::tab2t[lab::square("a8")], 90);
}

TEST(Freedom, NoSpecialMoves) {
  // A king's step of two files leaves the rook; a pawn's step aside leaves the pawn beside it.
  bench::lay("4k3/8/8/3pP3/8/8/8/4K2R w K d6 0 1");
  korvu::verifica_liberdade<Cor::b>(4, 0, 6, 0);
  EXPECT_EQ(korvu::tab2t[lab::square("h1")], 50);
  EXPECT_EQ(korvu::tab2t[lab::square("f1")], 0);
  korvu::verifica_liberdade<Cor::b>(4, 4, 3, 5);
  EXPECT_EQ(korvu::tab2t[lab::square("d5")], 246);
  EXPECT_EQ(korvu::tab2t[lab::square("d6")], 10);
}

TEST(Freedom, WithoutAKingEveryMoveIsFree) {
  EXPECT_EQ(test_on_tab<Cor::b>("4r2k/8/8/8/8/8/4N3/8 w - - 0 1", 4, 1, 2, 2), 0);
}

TEST(Freedom, ScansNeverCountCastling) {
  bench::lay("4k3/8/8/8/8/8/8/4K2R w K - 0 1");
  bench::kings_fight();
  // King: d1, d2, e2, f2, f1. Rook: g1, f1, h2 to h8.
  const auto rated = bench::figures<korvu::Varredura::estrategia, Cor::b, Cor::p, Cor::b>();
  EXPECT_EQ(rated.mob, 5 + 9);
}
