// Preparing a root move for its rating: admission to the pass, the position after it, who attacks
// what, and the value of the square that the man goes to.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "board/root_move.h"
#include "board/tables.h"
#include "sides.h"

namespace {

using namespace korvu;
using kit::Seen;

void prepare(bool white, const kit::Squares& s) {
  por_cor(white, [&]<Cor cor>() { init_tabuleiro2<cor>(s.x1, s.y1, s.x2, s.y2); });
}

// --- Admission ---

TEST(RootMoveAdmission, FollowsTheKindOfThePass) {
  kit::for_both_sides([](Seen seen) {
    kit::place(seen.fen("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1"));
    const auto s = seen.squares("e2e4");
    const Lance same = {s.x1, s.y1, s.x2, s.y2};
    std::vector<Lance> others = {sem_lance};
    for (int i = 0; i < 4; ++i) {
      Lance l = same;
      (i == 0 ? l.aa : i == 1 ? l.bb : i == 2 ? l.cc : l.dd) += 1;
      others.push_back(l);
    }
    const auto admitted = [&](std::uint8_t scan1, std::uint8_t scant, const Lance& best) {
      SCAN1 = scan1;
      SCANT = scant;
      melhor = best;
      TEST1IID = 7;
      prepare(seen.white, s);
      return static_cast<int>(TEST1IID);
    };
    EXPECT_EQ(admitted(0, 0, same), 1);
    EXPECT_EQ(admitted(1, 0, same), 1);
    EXPECT_EQ(admitted(0, 1, same), 0);
    for (const Lance& other : others) {
      EXPECT_EQ(admitted(0, 0, other), 1);
      EXPECT_EQ(admitted(1, 0, other), 0);
      EXPECT_EQ(admitted(0, 1, other), 1);
    }
  });
}

// --- The position after the move ---

TEST(RootMoveBoard, IsThePositionAfterTheMove) {
  int moves = 0;
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    const Duplos before = duplos;
    for (const referee::Move& m : c.moves) {
      prepare(c.position.white_to_move(), kit::squares_of(m));
      EXPECT_EQ(kit::difference(tab2, kit::board_of(c.position.after(m))), "")
          << c.fen << ' ' << m.text();
      ++moves;
    }
    EXPECT_EQ(kit::difference(tab, kit::board_of(c.position)), "") << c.fen;
    EXPECT_EQ(duplos.pb, before.pb);
    EXPECT_EQ(duplos.pp, before.pp);
  }
  EXPECT_GE(kit::cases().size(), 300U);
  EXPECT_GE(moves, 5000);
}

// --- Who attacks what ---

// Does the man on `from` attack `to`? Told by the geometry of the two squares and what lies
// between.
bool attacks(const referee::Position& p, int from, int to) {
  const int dx = referee::file_of(to) - referee::file_of(from);
  const int dy = referee::rank_of(to) - referee::rank_of(from);
  if (dx == 0 && dy == 0) return false;
  const int ax = std::abs(dx), ay = std::abs(dy);
  const bool straight = dx == 0 || dy == 0, diagonal = ax == ay;
  const auto clear = [&] {
    const int far = std::max(ax, ay);
    for (int i = 1; i < far; ++i)
      if (p.at(referee::square(referee::file_of(from) + i * dx / far,
                               referee::rank_of(from) + i * dy / far)) != ' ')
        return false;
    return true;
  };
  switch (p.at(from)) {
    case 'P':
      return ax == 1 && dy == 1;
    case 'p':
      return ax == 1 && dy == -1;
    case 'N':
    case 'n':
      return ax * ay == 2;
    case 'B':
    case 'b':
      return diagonal && clear();
    case 'R':
    case 'r':
      return straight && clear();
    case 'Q':
    case 'q':
      return (straight || diagonal) && clear();
    case 'K':
    case 'k':
      return std::max(ax, ay) == 1;
    default:
      return false;
  }
}

void expect_attacks(const referee::Position& p) {
  for (const bool white : {true, false}) {
    const std::string_view men = white ? "PNBRQK" : "pnbrqk";
    const Ataques& at = white ? ataca_b : ataca_p;
    std::array<std::array<int, 64>, 6> should{};
    std::array<int, 64> all{};
    for (int from = 0; from < 64; ++from) {
      const std::size_t kind = men.find(p.at(from));
      if (kind == men.npos) continue;
      for (int to = 0; to < 64; ++to)
        if (attacks(p, from, to)) {
          ++should[kind][static_cast<std::size_t>(to)];
          ++all[static_cast<std::size_t>(to)];
        }
    }
    for (std::size_t kind = 0; kind < 6; ++kind)
      EXPECT_EQ(at.por_peca[kind], should[kind]) << men[kind] << " in " << p.fen();
    EXPECT_EQ(at.N_A, all) << p.fen();
  }
}

TEST(AttackTables, CountTheAttackersOfEachSquare) {
  int moves = 0, at = 0;
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    for (const referee::Move& m : c.moves) {
      if (++at % 3 != 0) continue;  // a third of the moves
      prepare(c.position.white_to_move(), kit::squares_of(m));
      expect_attacks(c.position.after(m));
      ++moves;
    }
  }
  EXPECT_GE(moves, 2000);
}

TEST(AttackTables, CountTwoMenOfAKindTwiceAndStopAtTheFirstMan) {
  kit::place("4k3/8/8/8/8/1p6/R6R/4K3 w - - 0 1");
  prepare(true, kit::squares_of("e1f1"));
  const auto of = [](const Ataques& a, Peca p, std::string_view s) {
    return a.por_peca[static_cast<std::size_t>(p)][lab::square(s)];
  };
  EXPECT_EQ(of(ataca_b, Peca::torre, "d2"), 2);
  EXPECT_EQ(of(ataca_b, Peca::torre, "h2"), 1);  // the man at the end of the line is attacked
  EXPECT_EQ(of(ataca_b, Peca::torre, "a8"), 1);
  EXPECT_EQ(of(ataca_p, Peca::peao, "a2"), 1);
  EXPECT_EQ(of(ataca_p, Peca::peao, "c2"), 1);
  EXPECT_EQ(of(ataca_p, Peca::peao, "b2"), 0);  // the square ahead is not attacked
  EXPECT_EQ(of(ataca_b, Peca::rei, "f2"), 1);
  EXPECT_EQ(of(ataca_b, Peca::rei, "f1"), 0);
  EXPECT_EQ(ataca_b.N_A[lab::square("f2")], 3);  // two rooks and the king
}

// --- The value of the square ---

int near(int height, int s, int t) {
  const int dx = referee::file_of(s) - referee::file_of(t);
  const int dy = referee::rank_of(s) - referee::rank_of(t);
  return height / (dx * dx + dy * dy + 2);
}

// Distance from a square given by file and rank as numbers.
int near(int height, int x, int y, int t) {
  return near(height, referee::square(x, y), t);
}

int of_officer(char man, int t) {
  switch (man) {
    case 'N':
      return near(10, 4, 4, t);
    case 'n':
      return near(10, 4, 3, t);
    case 'B':
      return near(10, 3, 4, t);
    case 'b':
      return near(10, 3, 3, t);
    case 'Q':
      return near(10, 4, 5, t);
    case 'q':
      return near(10, 4, 2, t);
    default:
      return 0;  // rooks
  }
}

TEST(TargetValue, OfAnOfficerIsNearnessToTheEnemyKingAndToItsGoodSquare) {
  int moves = 0;
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    const bool white = c.position.white_to_move();
    const bool bare = (white ? npecasp : npecasb) == 0;
    for (const referee::Move& m : c.moves) {
      const char man = c.position.at(m.from);
      if (std::string_view("NBRQnbrq").find(man) == std::string_view::npos) continue;
      nb = moves % 2 == 0 ? 20 : 90;  // the time of the game does not matter
      incentiva_promo = 1;
      prepare(white, kit::squares_of(m));
      EXPECT_EQ(MATRIZ,
                near(bare ? 375 : 15, c.position.king_square(!white), m.to) + of_officer(man, m.to))
          << c.fen << ' ' << m.text();
      EXPECT_EQ(incentiva_promo, 0);
      ++moves;
    }
  }
  EXPECT_GE(moves, 3000);
}

int of_pawn(bool white, int game_ply, int t) {
  const int x = referee::file_of(t), y = referee::rank_of(t);
  if (game_ply < 30) return white ? near(10, 4, 3, t) : near(10, 4, 4, t);
  const int to_go = white ? 7 - y : y;
  if (game_ply < 70) return 50 / (2 * to_go * to_go + 2);
  const bool edge = x == 0 || x == 7;
  const int by_ranks_to_go[] = {100, 30, 25, 20, 20, 20, 0, 0};
  const int row = by_ranks_to_go[to_go];
  return row == 0 || row == 100 || edge ? row : row + 5;
}

TEST(TargetValue, OfAPawnGoesByTheTimeOfTheGame) {
  int moves = 0;
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    const bool white = c.position.white_to_move();
    for (const referee::Move& m : c.moves) {
      if (c.position.at(m.from) != (white ? 'P' : 'p')) continue;
      for (const int game_ply : {1, 29, 30, 50, 69, 70, 200}) {
        nb = game_ply;
        incentiva_promo = 7;
        prepare(white, kit::squares_of(m));
        EXPECT_EQ(MATRIZ, of_pawn(white, game_ply, m.to)) << c.fen << ' ' << m.text() << ' ' << nb;
        EXPECT_EQ(incentiva_promo, game_ply >= 70) << nb;
      }
      ++moves;
    }
  }
  EXPECT_GE(moves, 1000);
}

// --- The king in the ending ---

// A side's total and number of men in the small endings in which the enemy king goes after its lead
// pawn. -1: whatever the number.
struct Figure {
  int total, men;
};

constexpr Figure hunted[] = {
    // pawns only
    {120, -1},
    {130, -1},
    {140, -1},
    {150, -1},
    // a bishop and pawns
    {153, -1},
    {163, -1},
    {173, 4},
    {183, 5},
    // two bishops and pawns
    {186, -1},
    {196, 4},
    {206, 5},
    {216, 6},
    // a knight and pawns
    {152, -1},
    {162, -1},
    {172, 4},
    {182, 5},
    // two knights and pawns
    {184, -1},
    {194, 4},
    {204, 5},
    {214, 6},
    // bishop, knight and pawns
    {185, -1},
    {195, 4},
    {205, 5},
    {215, 6},
    // a rook and pawns
    {170, 2},
    {180, 3}};

// The enemy has no pawn left; his king does not matter any more.
constexpr Figure without_pawns[] = {{142, 1}, {143, 1}, {174, 2}, {175, 2}, {176, 2}, {160, 1}};

template <std::size_t n>
bool among(const Figure (&list)[n], int total, int men) {
  for (const Figure& f : list)
    if (f.total == total && (f.men == -1 || f.men == men)) return true;
  return false;
}

// What the king's move to t is worth, by the enemy's and the own total and the enemy's men.
int of_king(Seen seen, int t, int enemy_total, int enemy_men, int own_total) {
  const int own_lead = static_cast<int>(seen.square("f4"));
  const int enemy_lead = static_cast<int>(seen.square("c5"));
  const int enemy_king = static_cast<int>(seen.square("b6"));
  const int own_pawn = near(75, own_lead, t), enemy_pawn = near(75, enemy_lead, t);
  const int central = seen.white ? near(500, 4, 3, t) : near(500, 4, 4, t);
  if (own_total != 110 && among(without_pawns, enemy_total, enemy_men)) return own_pawn / 5;
  if (among(hunted, enemy_total, enemy_men)) return enemy_pawn;
  if (own_total == 110) return enemy_pawn + central;
  // The table around the enemy king is as steep as the board before the totals were changed.
  if (enemy_total == 110) return own_pawn + near(15, enemy_king, t);
  return 0;
}

TEST(TargetValue, OfAKingGoesByTheEndingOnTheBoard) {
  int asked = 0, not_zero = 0;
  kit::for_both_sides([&](Seen seen) {
    kit::place(seen.fen("8/8/1k6/2p5/5P2/3K4/8/8 w - - 0 1"));
    for (const std::string_view move : {"d3e3", "d3c4", "d3e2", "d3c3"}) {
      const kit::Squares s = seen.squares(move);
      const int t = referee::square(s.x2, s.y2);
      for (const int own : {110, 120, 143, 400})
        for (int total = 110; total <= 230; ++total)
          for (int men = 0; men <= 8; ++men) {
            (seen.white ? materialpa : materialba) = static_cast<float>(total);
            (seen.white ? materialba : materialpa) = static_cast<float>(own);
            (seen.white ? npecasp : npecasb) = men;
            prepare(seen.white, s);
            const int should = of_king(seen, t, total, men, own);
            EXPECT_EQ(MATRIZ, should)
                << move << " against " << total << " of " << men << " with " << own;
            EXPECT_EQ(incentiva_promo, 0);
            ++asked;
            not_zero += should != 0;
          }
    }
  });
  EXPECT_EQ(asked, 2 * 4 * 4 * 121 * 9);
  EXPECT_GE(not_zero, 1000);
}

TEST(TargetValue, OfAKingIsNothingBeforeTheEnding) {
  kit::for_both_sides([](Seen seen) {
    kit::place(seen.fen("rnbqkbnr/pppppppp/8/8/8/4P3/PPPP1PPP/RNBQKBNR w KQkq - 0 1"));
    MATRIZ = 99;
    prepare(seen.white, seen.squares("e1e2"));
    EXPECT_EQ(MATRIZ, 0);
  });
}

TEST(TargetValue, OfARookIsNearnessToTheEnemyKingAlone) {
  kit::for_both_sides([](Seen seen) {
    kit::place(seen.fen("4k3/4p3/8/8/8/8/4P3/R3K3 w - - 0 1"));
    prepare(seen.white, seen.squares("a1a8"));  // four files from e8
    EXPECT_EQ(MATRIZ, 0);
    prepare(seen.white, seen.squares("a1d1"));
    EXPECT_EQ(MATRIZ, 0);
    kit::place(seen.fen("4k3/4p3/8/8/8/8/4P3/3RK3 w - - 0 1"));
    prepare(seen.white, seen.squares("d1d8"));  // next to it: 15 / 3
    EXPECT_EQ(MATRIZ, 5);
    prepare(seen.white, seen.squares("d1d7"));  // 15 / 4
    EXPECT_EQ(MATRIZ, 3);
  });
}

}  // namespace
