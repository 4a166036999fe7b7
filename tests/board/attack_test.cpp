// The tests of attack: each family against a plain arbiter, and what each leaves in its result
// byte.
#include "board/attack.h"

#include <gtest/gtest.h>

#include "ply_members.h"
#include "sides.h"

namespace {

using namespace korvu;
using kit::for_both_sides;
using kit::Seen;

struct Kings {
  int white_x, white_y, black_x, black_y;
  friend bool operator==(const Kings&, const Kings&) = default;
};
constexpr Kings nowhere = {71, 72, 73, 74};

void put_kings(const Kings& k) {
  p_x_Rb = k.white_x;
  p_y_Rb = k.white_y;
  p_x_Rp = k.black_x;
  p_y_Rp = k.black_y;
}
Kings kings() {
  return {p_x_Rb, p_y_Rb, p_x_Rp, p_y_Rp};
}

// All result bytes at a value that no test gives.
void mark_results() {
  Y = XEQUE = XM = R = YY = pempate = TEST1IID = 7;
}
std::array<int, 7> results() {
  return {Y, XEQUE, XM, R, YY, pempate, TEST1IID};
}

// verifica_rei_b or _p; the king that is asked for is of the colour `white`.
void test_king(bool white) {
  por_cor(white, []<Cor cor>() { verifica_rei<cor>(); });
}
// verifica_xeque_b or _p after a move of the colour `white`.
void test_check(bool white) {
  por_cor(white, []<Cor cor>() { verifica_xeque<cor>(); });
}

// --- Against the arbiter ---

TEST(AttackTest, KnowsEverySquareOfManyPositions) {
  int squares = 0, attacked = 0;
  for (const kit::Case& c : kit::cases()) {
    const Tabuleiro t = kit::board_of(c.position);
    for (int s = 0; s < 64; ++s)
      for (const bool white : {true, false}) {
        const bool should = c.position.attacked(s, !white);
        const bool is = por_cor(white, [&]<Cor cor>() { return atacada<cor>(t, s / 8, s % 8); });
        EXPECT_EQ(is, should) << c.fen << ' ' << referee::square_name(s) << " of "
                              << (white ? "White" : "Black");
        ++squares;
        attacked += should;
      }
  }
  EXPECT_GE(kit::cases().size(), 300U);
  EXPECT_GE(squares, 300 * 128);
  EXPECT_GE(attacked, 5000);
  EXPECT_LE(attacked, squares - 5000);
}

TEST(AttackTest, OfAKingGivenOnAnySquareReadsTheBoardOfItsPly) {
  int squares = 0;
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    const int n = squares / 128 % (kit::last_ply + 1);
    if (n > 0) {
      kit::copy_root_to(n);
      tab.fill(0);
    }
    tab2.fill(0);
    for (int s = 0; s < 64; ++s)
      for (const bool white : {true, false}) {
        XM = 7;
        kit::members(n, white).check_at(s / 8, s % 8);
        EXPECT_EQ(XM, c.position.attacked(s, !white) ? 1 : 0)
            << c.fen << ' ' << referee::square_name(s) << " ply " << n;
        ++squares;
      }
  }
  EXPECT_GE(squares, 300 * 128);
}

// The king of each colour on every square that holds no other king.
TEST(AttackTest, FindsTheKingWhereverItStands) {
  int kings_placed = 0, in_check = 0;
  for (const kit::Case& c : kit::cases())
    for (const bool white : {true, false}) {
      const referee::Position bare = c.position.with_emptied(c.position.king_square(white));
      const int other_king = c.position.king_square(!white);
      for (int s = kings_placed % 3; s < 64; s += 3) {
        if (s == other_king) continue;
        tab2 = kit::board_of(bare);
        tab2[static_cast<std::size_t>(s)] = kit::code_of(white ? 'K' : 'k');
        const bool should = bare.attacked(s, !white);
        put_kings(nowhere);
        test_king(white);
        EXPECT_EQ(Y, should) << c.fen << ' ' << referee::square_name(s);
        const Kings k = white ? Kings{s / 8, s % 8, 73, 74} : Kings{71, 72, s / 8, s % 8};
        EXPECT_EQ(kings(), k) << c.fen << ' ' << referee::square_name(s);
        test_check(!white);
        EXPECT_EQ(XEQUE, should) << c.fen << ' ' << referee::square_name(s);
        ++kings_placed;
        in_check += should;
      }
    }
  EXPECT_GE(kings_placed, 10000);
  EXPECT_GE(in_check, 1000);
}

// --- One man at a time ---

struct Alone {
  std::string_view fen;  // the king of White, and one man of Black that may attack it
  bool attacked;
};

constexpr Alone alone[] = {
    {"7k/8/8/8/4p3/3K4/8/8 w - - 0 1", true},   // pawns, from ahead alone
    {"7k/8/8/8/2p5/3K4/8/8 w - - 0 1", true},   //
    {"7k/8/8/8/3p4/3K4/8/8 w - - 0 1", false},  //
    {"7k/8/8/8/8/3K4/4p3/8 w - - 0 1", false},  //
    {"7k/8/8/8/8/3K4/2p5/8 w - - 0 1", false},  //
    {"7k/8/8/8/p7/7K/8/8 w - - 0 1", false},    // and not around the edge
    {"7k/8/8/7p/8/K7/8/8 w - - 0 1", false},    //
    {"8/8/8/8/4k3/3K4/8/8 w - - 0 1", true},    // kings next to each other
    {"8/8/8/8/8/2kK4/8/8 w - - 0 1", true},     //
    {"8/8/8/8/8/1k1K4/8/8 w - - 0 1", false},   //
    {"7k/8/8/4n3/8/3K4/8/8 w - - 0 1", true},   // knights
    {"7k/8/8/8/5n2/3K4/8/8 w - - 0 1", true},   //
    {"7k/8/8/3n4/8/3K4/8/8 w - - 0 1", false},  //
    {"7k/8/8/8/8/8/8/1n1K4 w - - 0 1", false},  //
    {"7k/8/b7/8/8/3K4/8/8 w - - 0 1", true},    // bishops, until something stands between
    {"7k/8/b7/1P6/8/3K4/8/8 w - - 0 1", false},  {"7k/8/b7/1n6/8/3K4/8/8 w - - 0 1", false},
    {"3b3k/8/8/8/8/3K4/8/8 w - - 0 1", false},   {"3r3k/8/8/8/8/3K4/8/8 w - - 0 1", true},  // rooks
    {"3r3k/3p4/8/8/8/3K4/8/8 w - - 0 1", false}, {"7k/8/8/8/8/3K4/8/5r2 w - - 0 1", false},
    {"3q3k/8/8/8/8/3K4/8/8 w - - 0 1", true},  // queens, both ways
    {"7k/8/8/7q/8/8/8/3K4 w - - 0 1", true},     {"7k/8/8/8/8/3K4/8/4q3 w - - 0 1", false},
};

TEST(AttackTest, KnowsEachKindOfMan) {
  for (const Alone& a : alone) {
    SCOPED_TRACE(std::string(a.fen));
    for_both_sides([&](Seen seen) {
      tab2 = seen.board(a.fen);
      test_king(seen.white);
      EXPECT_EQ(Y, a.attacked);
      test_check(!seen.white);
      EXPECT_EQ(XEQUE, a.attacked);
    });
  }
}

TEST(AttackTest, SeesAnAttackerInACorner) {
  for (const std::string_view fen :
       {"q7/8/8/8/8/8/8/k6K w - - 0 1", "7b/8/8/8/8/8/8/K6k w - - 0 1",
        "K6k/8/8/8/8/8/8/7q w - - 0 1", "k6K/8/8/8/8/8/8/b7 w - - 0 1",
        "7k/8/8/8/8/2K5/8/q7 w - - 0 1", "7q/8/8/8/3K4/8/8/k7 w - - 0 1",
        "r6K/8/8/8/8/8/8/k7 w - - 0 1", "7K/8/8/8/8/8/8/k6r w - - 0 1"})
    for_both_sides([&](Seen seen) {
      tab2 = seen.board(fen);
      test_king(seen.white);
      EXPECT_EQ(Y, 1) << fen;
      test_check(!seen.white);
      EXPECT_EQ(XEQUE, 1) << fen;
    });
}

TEST(AttackTest, KingsNextToEachOtherAreBothAttacked) {
  tab2 = kit::board_of("8/8/8/4k3/3K4/8/8/8 w - - 0 1");
  test_king(true);
  EXPECT_EQ(Y, 1);
  Y = 0;
  test_king(false);
  EXPECT_EQ(Y, 1);
}

TEST(AttackTest, ADiscoveredCheckIsACheck) {
  for_both_sides([](Seen seen) {
    kit::place(seen.fen("4k3/8/8/8/4N3/8/8/4R2K w - - 0 1"));
    kit::copy_root_to(4);
    const auto [x1, y1, x2, y2] = seen.squares("e4c3");
    tab2 = tabd[4];
    test_check(seen.white);
    EXPECT_EQ(XEQUE, 0);
    kit::members(4, seen.white).trial(x1, y1, x2, y2);
    test_check(seen.white);
    EXPECT_EQ(XEQUE, 1);
  });
}

// --- What the tests write ---

TEST(AttackTest, LeavesItsAnswerInOneByte) {
  for_both_sides([](Seen seen) {
    kit::place(seen.fen("4k3/8/8/8/8/8/8/4K2R w K - 0 1"));
    kit::copy_root_to(9);

    tab2 = tab;
    mark_results();
    test_king(seen.white);
    EXPECT_EQ(results(), (std::array<int, 7>{0, 7, 7, 7, 7, 7, 7}));

    mark_results();
    test_check(seen.white);
    EXPECT_EQ(results(), (std::array<int, 7>{7, 0, 7, 7, 7, 7, 7}));

    mark_results();
    kit::members(0, seen.white).check_at(4, seen.rank(0));
    EXPECT_EQ(results(), (std::array<int, 7>{7, 7, 0, 7, 7, 7, 7}));

    mark_results();
    kit::members(9, seen.white).check_at(4, seen.rank(0));
    EXPECT_EQ(results(), (std::array<int, 7>{7, 7, 0, 7, 7, 7, 7}));

    mark_results();
    kit::members(9, seen.white).castle_h();
    EXPECT_EQ(results(), (std::array<int, 7>{7, 7, 7, 0, 7, 7, 7}));
  });
}

TEST(AttackTest, OnlyTheLegalityTestNotesWhereItsKingStands) {
  for_both_sides([](Seen seen) {
    kit::place(seen.fen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1"));
    tab2 = tab;
    put_kings(nowhere);
    test_check(true);
    test_check(false);
    kit::members(0, true).check_at(4, 0);
    kit::members(0, false).check_at(4, 7);
    kit::members(0, seen.white).castle_a();
    kit::members(0, seen.white).castle_h();
    EXPECT_EQ(kings(), nowhere);

    tab2 = tab;
    test_king(true);
    EXPECT_EQ(kings(), (Kings{4, 0, 73, 74}));
    put_kings(nowhere);
    test_king(false);
    EXPECT_EQ(kings(), (Kings{71, 72, 4, 7}));
  });
}

TEST(AttackTest, ReadsTheBoardThatItIsMeantFor) {
  // The legality and check tests read the scratch board, whatever stands on the root's.
  kit::place("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
  tab2 = kit::board_of("4k3/8/8/8/8/8/4q3/4K3 w - - 0 1");
  test_king(true);
  EXPECT_EQ(Y, 1);
  test_check(false);
  EXPECT_EQ(XEQUE, 1);
  // The others read the board of their ply, whatever stands on the scratch board.
  kit::members(0, true).check_at(4, 0);
  EXPECT_EQ(XM, 0);
  kit::copy_root_to(3);
  tab = tab2;
  kit::members(3, true).check_at(4, 0);
  EXPECT_EQ(XM, 0);
  kit::members(0, true).check_at(4, 0);
  EXPECT_EQ(XM, 1);
}

TEST(AttackTest, WithoutAKingFindsNothing) {
  for_both_sides([](Seen seen) {
    tab2 = seen.board("4k3/8/8/8/q6q/8/8/8 w - - 0 1");
    put_kings(nowhere);
    mark_results();
    test_king(seen.white);
    EXPECT_EQ(Y, 0);
    test_check(!seen.white);
    EXPECT_EQ(XEQUE, 0);
    EXPECT_EQ(kings(), nowhere);
  });
}

TEST(AttackTest, WalksOnBehindTheFirstKing) {
  // One of two kings is attacked: enough, whichever it is. The last one met is the one noted.
  for (const std::string_view fen :
       {"k7/8/8/8/8/8/r7/K6K w - - 0 1", "k7/8/8/8/8/8/7r/K6K w - - 0 1"}) {
    tab2 = kit::board_of(fen);
    put_kings(nowhere);
    test_king(true);
    EXPECT_EQ(Y, 1) << fen;
    EXPECT_EQ(kings(), (Kings{7, 0, 73, 74})) << fen;
    test_check(false);
    EXPECT_EQ(XEQUE, 1) << fen;
  }
}

}  // namespace
