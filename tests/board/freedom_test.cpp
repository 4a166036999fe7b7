// The freedom tests: is the mover's king attacked after the move? Played on a board of their own,
// without special moves.
#include "eval/freedom.h"

#include <gtest/gtest.h>

#include "sides.h"

namespace {

using namespace korvu;
using kit::for_both_sides;
using kit::Seen;

int from_root(bool white, const kit::Squares& s) {
  YY = 7;
  por_cor(white, [&]<Cor cor>() { verifica_liberdade<cor>(s.x1, s.y1, s.x2, s.y2); });
  return YY;
}

int from_scratch(bool white, const kit::Squares& s) {
  YY = 7;
  por_cor(white, [&]<Cor cor>() { verifica_liberdadee<cor>(s.x1, s.y1, s.x2, s.y2); });
  return YY;
}

// The position on the root's board, another on the scratch board and the other way round.
void on_root(Seen seen, std::string_view fen) {
  kit::place(seen.fen(fen));
  tab2 = kit::board_of("8/8/8/8/8/8/8/8 w - - 0 1");
}
void on_scratch(Seen seen, std::string_view fen) {
  kit::place("8/8/8/8/8/8/8/8 w - - 0 1");
  tab2 = seen.board(fen);
}

void expect_attacked(std::string_view fen, std::string_view move, int attacked) {
  SCOPED_TRACE(std::string(fen) + ' ' + std::string(move));
  for_both_sides([&](Seen seen) {
    on_root(seen, fen);
    EXPECT_EQ(from_root(seen.white, seen.squares(move)), attacked);
    on_scratch(seen, fen);
    EXPECT_EQ(from_scratch(seen.white, seen.squares(move)), attacked);
  });
}

TEST(FreedomTest, APinnedManIsNotFree) {
  expect_attacked("k3r3/8/8/8/8/4N3/8/4K3 w - - 0 1", "e3d5", 1);
  expect_attacked("k3r3/8/8/8/8/4N3/8/4K3 w - - 0 1", "e1d1", 0);
  expect_attacked("k7/8/8/8/8/4N3/8/4K3 w - - 0 1", "e3d5", 0);
  // Along the pin a man may go, and may take the pinning one.
  expect_attacked("k3r3/8/8/8/8/4R3/8/4K3 w - - 0 1", "e3e5", 0);
  expect_attacked("k3r3/8/8/8/8/4R3/8/4K3 w - - 0 1", "e3e8", 0);
  expect_attacked("k3r3/8/8/8/8/4R3/8/4K3 w - - 0 1", "e3d3", 1);
}

TEST(FreedomTest, ACheckMustBeAnswered) {
  expect_attacked("k3r3/8/8/8/8/8/8/R3K3 w - - 0 1", "a1b1", 1);
  expect_attacked("k3r3/8/8/8/R7/8/8/4K3 w - - 0 1", "a4e4", 0);
  expect_attacked("k3r3/8/8/8/8/8/8/R3K3 w - - 0 1", "e1e2", 1);
  expect_attacked("k3r3/8/8/8/8/8/8/R3K3 w - - 0 1", "e1f2", 0);
}

// The private board after the move.
void expect_played(std::string_view fen, std::string_view move, std::string_view after) {
  SCOPED_TRACE(std::string(fen) + ' ' + std::string(move));
  for_both_sides([&](Seen seen) {
    on_root(seen, fen);
    from_root(seen.white, seen.squares(move));
    EXPECT_EQ(kit::difference(tab2t, seen.board(after)), "");
    EXPECT_EQ(kit::difference(tab, seen.board(fen)), "");
    on_scratch(seen, fen);
    tab2t.fill(1);
    from_scratch(seen.white, seen.squares(move));
    EXPECT_EQ(kit::difference(tab2t, seen.board(after)), "");
    EXPECT_EQ(kit::difference(tab2, seen.board(fen)), "");
  });
}

TEST(FreedomTest, APawnOnItsLastRankIsAQueen) {
  expect_played("8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8", "4Q3/8/8/8/8/8/k7/4K3 w - - 0 1");
  expect_played("3r4/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7d8", "3Q4/8/8/8/8/8/k7/4K3 w - - 0 1");
  expect_played("8/4N3/8/8/8/8/k7/4K3 w - - 0 1", "e7g8", "6N1/8/8/8/8/8/k7/4K3 w - - 0 1");
}

TEST(FreedomTest, KnowsNoSpecialMoves) {
  expect_played("k7/8/8/8/8/8/8/4K2R w K - 0 1", "e1g1", "k7/8/8/8/8/8/8/6KR w - - 0 1");
  expect_played("k7/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d6", "k7/8/3P4/3p4/8/8/8/4K3 w - - 0 1");
}

TEST(FreedomTest, WritesItsOwnByteAlone) {
  for_both_sides([](Seen seen) {
    kit::place(seen.fen("k3r3/8/8/8/8/4N3/8/4K3 w - - 0 1"));
    tab2 = tab;
    Y = XEQUE = XM = R = 7;
    p_x_Rb = p_y_Rb = p_x_Rp = p_y_Rp = 70;
    EXPECT_EQ(from_root(seen.white, seen.squares("e3d5")), 1);
    EXPECT_EQ(from_scratch(seen.white, seen.squares("e3d5")), 1);
    for (const int byte : {Y, XEQUE, XM, R}) EXPECT_EQ(byte, 7);
    for (const int slot : {p_x_Rb, p_y_Rb, p_x_Rp, p_y_Rp}) EXPECT_EQ(slot, 70);
  });
}

TEST(FreedomTest, WithoutAKingEveryManIsFree) {
  expect_attacked("k3r3/8/8/8/8/4N3/8/8 w - - 0 1", "e3d5", 0);
}

// Plain moves of both colours, whoever is to move: free when the arbiter finds the king safe.
TEST(FreedomTest, AgreesWithTheRulesOverManyPositions) {
  int asked = 0, held = 0;
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    const Tabuleiro root = tab;
    for (const bool white : {true, false}) {
      const referee::Position p =
          white == c.position.white_to_move() ? c.position : kit::other_to_move(c.position);
      const std::string_view men = white ? "PNBRQK" : "pnbrqk";
      for (int from = asked % 2; from < 64; from += 2) {
        const std::size_t kind = men.find(p.at(from));
        if (kind == men.npos) continue;
        for (int to = 0; to < 64; to += 3) {
          if (men.find(p.at(to)) != men.npos) continue;
          // The arbiter plays a castling or a capture in passing as such: not asked for here.
          const bool two_files = std::abs(referee::file_of(from) - referee::file_of(to)) > 1;
          if (kind == 5 && two_files) continue;
          if (kind == 0 && referee::file_of(from) != referee::file_of(to) && p.at(to) == ' ')
            continue;
          const referee::Position next = p.after({from, to, 0});
          const int king = next.king_square(white);
          const bool should = next.attacked(king, !white);
          const kit::Squares s = kit::squares_of(referee::Move{from, to, 0});
          EXPECT_EQ(from_root(white, s), should)
              << p.fen() << ' ' << referee::Move{from, to, 0}.text();
          tab2 = root;
          tab.fill(0);
          EXPECT_EQ(from_scratch(white, s), should);
          tab = root;
          ++asked;
          held += should;
        }
      }
    }
  }
  EXPECT_GE(asked, 20000);
  EXPECT_GE(held, 500);
}

}  // namespace
