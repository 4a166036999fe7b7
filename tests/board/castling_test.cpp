// The tests of castling: its conditions, and the attacks on the squares that the king crosses.
#include <gtest/gtest.h>

#include "board/attack.h"
#include "ply_members.h"
#include "sides.h"

namespace {

using namespace korvu;
using kit::on_every_ply;
using kit::Seen;

enum class Wing { a_side, h_side };

void put_on(int n, Seen seen, std::string_view fen) {
  kit::place(seen.fen(fen));
  if (n > 0) kit::copy_root_to(n);
}

int forbidden(int n, Seen seen, Wing w) {
  R = 7;
  const kit::PlyMembers& m = kit::members(n, seen.white);
  (w == Wing::a_side ? m.castle_a : m.castle_h)();
  return R;
}

bool possible(int n, Seen seen, Wing w) {
  const kit::PlyMembers& m = kit::members(n, seen.white);
  return (w == Wing::a_side ? m.free_a : m.free_h)();
}

// Runs f(ply, seen) on the root as well.
template <class F>
void at_root_and_on_every_ply(F f) {
  kit::for_both_sides([&](Seen seen) { f(0, seen); });
  on_every_ply(f);
}

struct Row {
  std::string_view fen;
  bool a_side, h_side;  // forbidden
};

constexpr Row rows[] = {
    {"4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", false, false},
    // A rook that looks at a square between: f and d are crossed, g and c reached, b is neither.
    {"1r2k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", false, false},
    {"2r1k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", true, false},
    {"3rk3/8/8/8/8/8/8/R3K2R w KQ - 0 1", true, false},
    {"4kr2/8/8/8/8/8/8/R3K2R w KQ - 0 1", false, true},
    {"4k1r1/8/8/8/8/8/8/R3K2R w KQ - 0 1", false, true},
    // One that looks at a castling rook.
    {"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", false, false},
    // The king's own safety is not asked here, nor does a rook shine through where it stood.
    {"k3r3/8/8/8/8/8/8/R3K2R w KQ - 0 1", false, false},
    {"4k3/8/8/8/8/8/8/R3K2r w Q - 0 1", false, true},
    {"4k3/8/8/8/8/8/8/r3K2R w K - 0 1", true, false},
    {"4k3/8/8/8/8/8/8/1r2K2R w K - 0 1", true, false},
    // Men of every other kind.
    {"4k3/8/8/8/8/8/6p1/R3K2R w KQ - 0 1", false, true},
    {"4k3/8/8/8/8/8/7p/R3K2R w KQ - 0 1", false, true},
    {"4k3/8/8/8/8/8/4p3/R3K2R w KQ - 0 1", true, true},
    {"4k3/8/8/8/8/8/1p6/R3K2R w KQ - 0 1", true, false},
    {"4k3/8/8/8/8/8/p7/R3K2R w KQ - 0 1", false, false},
    {"8/8/8/8/8/8/7k/R3K2R w KQ - 0 1", false, true},
    {"8/8/8/8/8/8/1k6/R3K2R w KQ - 0 1", true, false},
    {"4k3/8/8/8/8/7n/8/R3K2R w KQ - 0 1", false, true},
    {"4k3/8/8/8/8/1n6/8/R3K2R w KQ - 0 1", true, false},
    {"4k3/8/8/b7/8/8/8/R3K2R w KQ - 0 1", false, false},
    {"4k3/8/8/2b5/8/8/8/R3K2R w KQ - 0 1", false, true},
    {"4k3/8/8/5b2/8/8/8/R3K2R w KQ - 0 1", false, false},
    {"4k3/8/8/6b1/8/8/8/R3K2R w KQ - 0 1", true, false},
    {"4k3/8/8/6q1/8/8/8/R3K2R w KQ - 0 1", true, true},
    {"4k3/8/8/6q1/8/8/6P1/R3K2R w KQ - 0 1", true, false},
};

TEST(CastlingTest, AsksTheCrossedAndTheReachedSquare) {
  for (const Row& r : rows) {
    SCOPED_TRACE(std::string(r.fen));
    at_root_and_on_every_ply([&](int n, Seen seen) {
      put_on(n, seen, r.fen);
      EXPECT_EQ(forbidden(n, seen, Wing::a_side), r.a_side) << "a-side";
      EXPECT_EQ(forbidden(n, seen, Wing::h_side), r.h_side) << "h-side";
    });
  }
}

TEST(CastlingTest, LeavesTheCastledPositionBehind) {
  // Attacked or not: the loops and the rating of the root read it there.
  at_root_and_on_every_ply([](int n, Seen seen) {
    for (const char rook_file : {'e', 'd', 'f'}) {
      const std::string top = rook_file == 'e' ? "4k3" : rook_file == 'd' ? "3rk3" : "4kr2";
      const std::string fen = top + "/8/8/8/8/8/8/R3K2R w KQ - 0 1";
      put_on(n, seen, fen);
      forbidden(n, seen, Wing::a_side);
      EXPECT_EQ(kit::difference(tab2, seen.board(top + "/8/8/8/8/8/8/2KR3R b - - 0 1")), "");
      forbidden(n, seen, Wing::h_side);
      EXPECT_EQ(kit::difference(tab2, seen.board(top + "/8/8/8/8/8/8/R4RK1 b - - 0 1")), "");
      EXPECT_EQ(kit::difference(tabd[static_cast<std::size_t>(n)], seen.board(fen)), "");
    }
  });
}

// Each kind of enemy man on each free square, against a plain arbiter: the crossed square before
// the castling, the reached one after it.
TEST(CastlingTest, AgreesWithTheRulesForEveryManAndSquare) {
  int asked = 0, found = 0;
  kit::for_both_sides([&](Seen seen) {
    const referee::Position bare =
        referee::Position::from_fen(seen.fen("8/8/8/8/8/8/8/R3K2R w KQ - 0 1"));
    for (const Wing w : {Wing::a_side, Wing::h_side}) {
      const referee::Move castling = kit::move_of(seen.move(w == Wing::a_side ? "e1c1" : "e1g1"));
      const std::size_t crossed = seen.square(w == Wing::a_side ? "d1" : "f1");
      for (int s = 0; s < 64; ++s) {
        if (bare.at(s) != ' ') continue;
        for (const char man : std::string_view("pnbrqk")) {
          // Between the castling men there is no castling to be asked about.
          if (referee::rank_of(s) == seen.rank(0)) continue;
          std::string men(64, ' ');
          for (int i = 0; i < 64; ++i) men[static_cast<std::size_t>(i)] = bare.at(i);
          const char coloured = seen.white ? man : static_cast<char>(man - 'a' + 'A');
          men[static_cast<std::size_t>(s)] = coloured;
          std::string fen;
          for (int rank = 7; rank >= 0; --rank) {
            for (int f = 0; f < 8; ++f) {
              const char c = men[static_cast<std::size_t>(8 * f + rank)];
              fen += c == ' ' ? '1' : c;
            }
            fen += rank > 0 ? "/" : seen.white ? " w KQ - 0 1" : " b kq - 0 1";
          }
          const referee::Position p = referee::Position::from_fen(fen);
          const referee::Position castled = p.after(castling);
          const bool should = p.attacked(static_cast<int>(crossed), !seen.white) ||
                              castled.attacked(castling.to, !seen.white);
          kit::place(fen);
          const int n = asked % (kit::last_ply + 1);
          if (n > 0) kit::copy_root_to(n);
          EXPECT_EQ(forbidden(n, seen, w), should) << fen << ' ' << castling.text();
          ++asked;
          found += should;
        }
      }
    }
  });
  EXPECT_EQ(asked, 2 * 2 * 56 * 6);
  EXPECT_GE(found, 200);
}

// --- Conditions ---

TEST(CastlingConditions, HoldWithRookAndKingUnmovedAndNothingBetween) {
  at_root_and_on_every_ply([](int n, Seen seen) {
    put_on(n, seen, "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    EXPECT_TRUE(possible(n, seen, Wing::a_side));
    EXPECT_TRUE(possible(n, seen, Wing::h_side));
  });
}

TEST(CastlingConditions, ReadTheRightsOfThePly) {
  at_root_and_on_every_ply([](int n, Seen seen) {
    put_on(n, seen, "r3k2r/8/8/8/8/8/8/R3K2R w Qkq - 0 1");
    EXPECT_TRUE(possible(n, seen, Wing::a_side));
    EXPECT_FALSE(possible(n, seen, Wing::h_side));
    put_on(n, seen, "r3k2r/8/8/8/8/8/8/R3K2R w Kkq - 0 1");
    EXPECT_FALSE(possible(n, seen, Wing::a_side));
    EXPECT_TRUE(possible(n, seen, Wing::h_side));
    // The king's own byte forbids both, whatever the rooks' bytes say.
    put_on(n, seen, "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    Movidos& m = jm_D[static_cast<std::size_t>(n)];
    (seen.white ? m.R_b_jm : m.R_p_jm) = 1;
    EXPECT_FALSE(possible(n, seen, Wing::a_side));
    EXPECT_FALSE(possible(n, seen, Wing::h_side));
    // The other side's rights do not matter.
    put_on(n, seen, "r3k2r/8/8/8/8/8/8/R3K2R w KQ - 0 1");
    EXPECT_TRUE(possible(n, seen, Wing::a_side));
    EXPECT_TRUE(possible(n, seen, Wing::h_side));
  });
}

TEST(CastlingConditions, AskForTheRookOnItsCorner) {
  // A rook taken on its corner leaves its byte alone; the corner is looked at instead.
  at_root_and_on_every_ply([](int n, Seen seen) {
    for (const char man : std::string_view(" rNQ")) {
      put_on(n, seen, "4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1");
      Tabuleiro& t = tabd[static_cast<std::size_t>(n)];
      t[seen.square("a1")] = man == ' ' ? vazia : seen.code(man);
      EXPECT_FALSE(possible(n, seen, Wing::a_side)) << man;
      EXPECT_TRUE(possible(n, seen, Wing::h_side)) << man;
      t[seen.square("a1")] = seen.code('R');
      t[seen.square("h1")] = man == ' ' ? vazia : seen.code(man);
      EXPECT_TRUE(possible(n, seen, Wing::a_side)) << man;
      EXPECT_FALSE(possible(n, seen, Wing::h_side)) << man;
    }
  });
}

TEST(CastlingConditions, AskForEmptySquaresBetween) {
  at_root_and_on_every_ply([](int n, Seen seen) {
    for (const std::string_view square : {"b1", "c1", "d1", "f1", "g1"})
      for (const char man : std::string_view("Nb")) {
        put_on(n, seen, "4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1");
        tabd[static_cast<std::size_t>(n)][seen.square(square)] = seen.code(man);
        const bool on_a_side = square[0] < 'e';
        EXPECT_EQ(possible(n, seen, Wing::a_side), !on_a_side) << square << man;
        EXPECT_EQ(possible(n, seen, Wing::h_side), on_a_side) << square << man;
      }
  });
}

}  // namespace
