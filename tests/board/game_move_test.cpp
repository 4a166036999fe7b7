// The move of the game: pieces, flags and promotion on the root's board, and the counters after it.
#include <gtest/gtest.h>

#include "board/root_tables.h"
#include "eval/knobs.h"
#include "eval/root_analysis.h"
#include "frontend/line.h"
#include "frontend/position.h"
#include "sides.h"

namespace {

using namespace korvu;
using kit::for_both_sides;
using kit::Seen;

using Lost = std::array<int, 3>;

void play(const kit::Squares& s) {
  jogada = {s.x1, s.y1, s.x2, s.y2};
  init_tabuleiro();
}

// Places a position as a game received from outside has it, the root colour being the mover's.
void receive(Seen seen, std::string_view fen) {
  kit::place(seen.fen(fen));
  joga_com_b = seen.white;
  deeppromo = 0;
  PR = PRs = PRe = '0';
}

void expect_played(std::string_view fen, std::string_view move, std::string_view after) {
  SCOPED_TRACE(std::string(fen) + ' ' + std::string(move));
  for_both_sides([&](Seen seen) {
    receive(seen, fen);
    play(seen.squares(move));
    EXPECT_EQ(kit::difference(tab, seen.board(after)), "");
  });
}

// --- Pieces ---

TEST(GameMove, AgreesWithTheRulesOverManyPositions) {
  int moves = 0;
  for (const kit::Case& c : kit::cases()) {
    for (const referee::Move& m : c.position.legal_moves()) {
      kit::place(c.fen);
      joga_com_b = moves % 2;  // the man that moves decides whose move it is
      PR = PRs = '0';
      PRe = m.promo == 0 ? '0' : m.promo;
      play(kit::squares_of(m));
      EXPECT_EQ(kit::difference(tab, kit::board_of(c.position.after(m))), "")
          << c.fen << ' ' << m.text();
      ++moves;
    }
  }
  EXPECT_GE(kit::cases().size(), 300U);
  EXPECT_GE(moves, 5000);
}

TEST(GameMove, OnlyTheKingsTwoFileMoveFromItsSquareTakesTheRook) {
  expect_played("4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", "e1g1", "4k3/8/8/8/8/8/8/R4RK1 w - - 0 1");
  expect_played("4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", "e1c1", "4k3/8/8/8/8/8/8/2KR3R w - - 0 1");
  expect_played("4k3/8/8/8/8/8/8/R4K1R w - - 0 1", "f1g1", "4k3/8/8/8/8/8/8/R5KR w - - 0 1");
  expect_played("4k3/8/8/8/8/8/8/R2K3R w - - 0 1", "d1c1", "4k3/8/8/8/8/8/8/R1K4R w - - 0 1");
}

TEST(GameMove, TakesInPassingByTheFlagOfTheFile) {
  expect_played("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d6", "4k3/8/3P4/8/8/8/8/4K3 w - - 0 1");
  expect_played("4k3/8/8/3pPp2/8/8/8/4K3 w - f6 0 1", "e5f6", "4k3/8/5P2/3p4/8/8/8/4K3 w - - 0 1");
}

// --- Chess960 castling ---

void expect_castled_960(std::string_view fen, std::string_view move, std::string_view after) {
  SCOPED_TRACE(std::string(fen) + ' ' + std::string(move));
  for_both_sides([&](Seen seen) {
    receive(seen, fen);
    CHESS_960 = 1;
    play(seen.squares(move));
    CHESS_960 = 0;
    EXPECT_EQ(kit::difference(tab, seen.board(after)), "");
    EXPECT_EQ(seen.own_rights_lost(0)[0], 1);
  });
}

TEST(GameMove960, TheKingOntoItsRookOnTheLeftCastlesToC) {
  expect_castled_960("7k/8/8/8/8/8/8/R3K2R w - - 0 1", "e1a1", "7k/8/8/8/8/8/8/2KR3R w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/1R4K1 w - - 0 1", "g1b1", "7k/8/8/8/8/8/8/2KR4 w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/RK6 w - - 0 1", "b1a1", "7k/8/8/8/8/8/8/2KR4 w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/2RK4 w - - 0 1", "d1c1", "7k/8/8/8/8/8/8/2KR4 w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/1RK5 w - - 0 1", "c1b1", "7k/8/8/8/8/8/8/2KR4 w - - 0 1");
}

TEST(GameMove960, TheKingOntoItsRookOnTheRightCastlesToG) {
  expect_castled_960("7k/8/8/8/8/8/8/R3K2R w - - 0 1", "e1h1", "7k/8/8/8/8/8/8/R4RK1 w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/1K4R1 w - - 0 1", "b1g1", "7k/8/8/8/8/8/8/5RK1 w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/5KR1 w - - 0 1", "f1g1", "7k/8/8/8/8/8/8/5RK1 w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/6KR w - - 0 1", "g1h1", "7k/8/8/8/8/8/8/5RK1 w - - 0 1");
}

TEST(GameMove960, AnotherMoveOfTheKingIsAPlainMove) {
  expect_castled_960("7k/8/8/8/8/8/8/R3K2R w - - 0 1", "e1g1", "7k/8/8/8/8/8/8/R5KR w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/3Kr3 w - - 0 1", "d1e1", "7k/8/8/8/8/8/8/4K3 w - - 0 1");
  expect_castled_960("7k/8/8/8/8/8/8/2R1K3 w - - 0 1", "e1d1", "7k/8/8/8/8/8/8/2RK4 w - - 0 1");
}

TEST(GameMove960, ARookOntoTheKingIsNoCastling) {
  for_both_sides([](Seen seen) {
    receive(seen, "7k/8/8/8/8/8/8/R3K2R w - - 0 1");
    CHESS_960 = 1;
    play(seen.squares("a1b1"));
    CHESS_960 = 0;
    EXPECT_EQ(kit::difference(tab, seen.board("7k/8/8/8/8/8/8/1R2K2R w - - 0 1")), "");
    EXPECT_EQ(seen.own_rights_lost(0), (Lost{1, 1, 1}));
  });
}

// --- Flags ---

TEST(GameMove, KeepsTheCastlingBytes) {
  struct Row {
    std::string_view move;
    Lost own;
  };
  for (const Row& r : {Row{"e1e2", {1, 0, 0}}, Row{"e1g1", {1, 0, 0}}, Row{"e1c1", {1, 0, 0}},
                       Row{"a1b1", {0, 1, 0}}, Row{"h1h8", {0, 0, 1}}, Row{"a4c4", {0, 1, 0}},
                       Row{"d5d6", {0, 0, 0}}, Row{"g2g4", {0, 0, 0}}})
    for_both_sides([&](Seen seen) {
      receive(seen, "r3k2r/8/8/3R4/R7/8/6P1/R3K2R w KQkq - 0 1");
      play(seen.squares(r.move));
      EXPECT_EQ(seen.own_rights_lost(0), r.own) << r.move;
      EXPECT_EQ(seen.other_rights_lost(0), (Lost{0, 0, 0})) << r.move;
    });
}

TEST(GameMove, RemembersADoubleStepForOneMove) {
  for_both_sides([](Seen seen) {
    receive(seen, "4k3/8/8/3p4/8/8/4P3/4K3 w - d6 0 1");
    play(seen.squares("e2e4"));
    EXPECT_EQ(seen.own_double_steps(0), (std::array<std::uint8_t, 8>{0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(seen.other_double_steps(0), (std::array<std::uint8_t, 8>{}));
    play(seen.squares("e8e7"));
    EXPECT_EQ(seen.own_double_steps(0), (std::array<std::uint8_t, 8>{}));
  });
}

// --- Promotion ---

struct Promotion {
  char wanted, entered;  // PRs, PRe
  char man;
  char printed;  // PR
};

TEST(GameMove, PromotesByTheLetters) {
  for (const Promotion& p :
       {Promotion{'q', '0', 'Q', 'q'}, Promotion{'0', 'q', 'Q', '0'}, Promotion{'0', 'r', 'R', '0'},
        Promotion{'0', 'n', 'N', '0'}, Promotion{'0', 'b', 'B', '0'}, Promotion{'0', '0', 'P', '0'},
        Promotion{'q', 'q', 'P', '0'}, Promotion{'q', 'r', 'P', '0'}})
    for (const std::string_view move : {"e7e8", "e7d8"})
      for_both_sides([&](Seen seen) {
        receive(seen, "3b4/4P3/8/8/8/8/k7/4K3 w - - 0 1");
        PRs = p.wanted;
        PRe = p.entered;
        const auto s = seen.squares(move);
        play(s);
        EXPECT_EQ(tab[casa(s.x2, s.y2)], seen.code(p.man)) << p.wanted << p.entered << move;
        EXPECT_EQ(PR, p.printed) << p.wanted << p.entered;
        EXPECT_EQ(PRe, '0');
      });
}

TEST(GameMove, PromotesNothingButAPawnOnItsLastRank) {
  for_both_sides([](Seen seen) {
    receive(seen, "8/4R3/4P3/8/8/8/k7/4K3 w - - 0 1");
    PRs = 'q';
    play(seen.squares("e7e8"));
    EXPECT_EQ(tab[seen.square("e8")], seen.code('R'));
    EXPECT_EQ(PR, '0');
    play(seen.squares("e6e7"));
    EXPECT_EQ(tab[seen.square("e7")], seen.code('P'));
    EXPECT_EQ(PR, '0');
  });
}

TEST(GameMove, OfTheSearchPromotesToAQueenWhateverTheLetters) {
  for (const char wanted : std::string_view("0q"))
    for (const char entered : std::string_view("0rn"))
      for_both_sides([&](Seen seen) {
        receive(seen, "3b4/4P3/8/8/8/8/k7/4K3 w - - 0 1");
        PRs = wanted;
        PRe = entered;
        deeppromo = 1;
        play(seen.squares("e7e8"));
        EXPECT_EQ(tab[seen.square("e8")], seen.code('Q'));
        EXPECT_EQ(PR, '0');
        EXPECT_EQ(PRe, entered);
      });
}

TEST(GameMove, OfTheSearchLooksForSpecialMovesOfTheRootColourAlone) {
  for_both_sides([](Seen seen) {
    receive(seen, "4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1");
    deeppromo = 1;
    play(seen.squares("e1g1"));
    EXPECT_EQ(kit::difference(tab, seen.board("4k3/8/8/8/8/8/8/R4RK1 w - - 0 1")), "");

    receive(seen, "4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1");
    deeppromo = 1;
    joga_com_b = !seen.white;
    play(seen.squares("e1g1"));
    EXPECT_EQ(kit::difference(tab, seen.board("4k3/8/8/8/8/8/8/R5KR w - - 0 1")), "");

    receive(seen, "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1");
    deeppromo = 1;
    joga_com_b = !seen.white;
    play(seen.squares("e5d6"));
    EXPECT_EQ(kit::difference(tab, seen.board("4k3/8/3P4/3p4/8/8/8/4K3 w - - 0 1")), "");
  });
}

// --- What is counted after the move ---

TEST(GameMove, CountsTheMenAndFindsTheKings) {
  for_both_sides([](Seen seen) {
    receive(seen, "4k3/pp6/8/8/8/5r2/4PP2/R2QK1N1 w Q - 0 1");
    play(seen.squares("e1f1"));
    play(seen.squares("f3f2"));
    const auto own = [&](auto white, auto black) { return seen.white ? white : black; };
    // King, queen, rook, knight, pawn against king, rook and two pawns.
    EXPECT_EQ(own(materialba, materialpa), 110 + 90 + 50 + 32 + 10);
    EXPECT_EQ(own(materialpa, materialba), 110 + 50 + 20);
    EXPECT_EQ(own(npecasb, npecasp), 4);
    EXPECT_EQ(own(npecasp, npecasb), 3);
    EXPECT_EQ(own(npecasbdp, npecaspdp), 3);
    EXPECT_EQ(own(npecaspdp, npecasbdp), 1);
    EXPECT_EQ(own(materialmaiorb, materialmaiorp), 90 + 50 + 32);
    EXPECT_EQ(own(materialmaiorp, materialmaiorb), 50);
    EXPECT_EQ(own(p_x_Rb, p_x_Rp), 5);
    EXPECT_EQ(own(p_y_Rb, p_y_Rp), seen.rank(0));
    EXPECT_EQ(own(p_x_Rp, p_x_Rb), 4);
    EXPECT_EQ(own(p_y_Rp, p_y_Rb), seen.rank(7));
  });
}

TEST(GameMove, TheBalanceIsTheRootSides) {
  for_both_sides([](Seen seen) {
    for (const bool mover_is_root : {true, false}) {
      receive(seen, "4k3/8/8/3r4/4P3/8/8/4K3 w - - 0 1");
      joga_com_b = seen.white == mover_is_root;
      play(seen.squares("e4d5"));
      EXPECT_EQ(materialflot0, mover_is_root ? 10 : -10);
      EXPECT_EQ(joga_com_b, seen.white == mover_is_root);  // the root colour stays
    }
  });
}

// The table around a king is made before the men are counted: it steepens a move later.
TEST(GameMove, ABareKingIsNoticedAtTheNextMove) {
  for_both_sides([](Seen seen) {
    receive(seen, "7k/8/8/3r4/4P3/8/8/4K3 w - - 0 1");
    const TabelaInt& around = seen.white ? Xr_p : Xr_b;
    play(seen.squares("e4d5"));
    EXPECT_EQ(around[seen.square("h8")], 15 / 2);
    play(seen.squares("h8g8"));
    EXPECT_EQ(around[seen.square("g8")], 375 / 2);
  });
}

TEST(GameMove, ALineOfMovesNotesWhatTheLastOneTook) {
  struct Row {
    std::string_view moves;
    int taken;
  };
  for (const Row& r :
       {Row{"e2e4 d7d5", 0}, Row{"e2e4 d7d5 e4d5", -10}, Row{"e2e4 d7d5 e4d5 d8d5", 10},
        Row{"e2e4 d7d5 e4d5 d8d5 b1c3 d5e5 f1e2 e5e2", 33}, Row{"e2e4 a7a6 e4e5 d7d5 e5d6", 0},
        Row{"e2e4 d7d5 e4d5 d8d5 b1c3 h7h6 c3d5", -90}}) {
    kit::place("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
    in = "position startpos moves " + std::string(r.moves);
    zera_jogo(Caminho::lista_ou_fen);
    recebe_lista();
    EXPECT_EQ(peca, r.taken) << r.moves;
  }
}

TEST(GameMove, ALineOfMovesIsKeptForTheRepetitionTest) {
  kit::place("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  in = "position startpos moves g1f3 g8f6 f3g1 f6g8";
  zera_jogo(Caminho::lista_ou_fen);
  recebe_lista();
  EXPECT_EQ(nb, 4);
  EXPECT_EQ(
      kit::difference(tabr1[0],
                      kit::board_of("rnbqkbnr/pppppppp/8/8/8/5N2/PPPPPPPP/RNBQKB1R b KQkq - 0 1")),
      "");
  EXPECT_EQ(kit::difference(tabr1[3], kit::board_of(referee::Position::start())), "");
  EXPECT_EQ(tabr1[4][0], 1);
}

}  // namespace
