// Making a move on the board of a ply, and trying one on the scratch board.
#include <gtest/gtest.h>

#include "ply_members.h"
#include "sides.h"

namespace {

using namespace korvu;
using kit::on_every_ply;
using kit::Seen;

using Lost = std::array<int, 3>;
using Files = std::array<std::uint8_t, 8>;

Files file(char letter) {
  Files f{};
  f[static_cast<std::size_t>(letter - 'a')] = 1;
  return f;
}

// Puts a position on ply n.
void set_up(int n, Seen seen, std::string_view fen) {
  kit::place(seen.fen(fen));
  kit::copy_root_to(n);
}

void make(int n, Seen seen, std::string_view move) {
  const auto [x1, y1, x2, y2] = seen.squares(move);
  kit::members(n, seen.white).make(x1, y1, x2, y2);
}

void try_out(int n, Seen seen, std::string_view move) {
  const auto [x1, y1, x2, y2] = seen.squares(move);
  kit::members(n, seen.white).trial(x1, y1, x2, y2);
}

// Tries the move, then makes it: both give the position of `after` (its men alone are looked at).
void expect_made(std::string_view fen, std::string_view move, std::string_view after) {
  SCOPED_TRACE(std::string(fen) + ' ' + std::string(move));
  on_every_ply([&](int n, Seen seen) {
    set_up(n, seen, fen);
    try_out(n, seen, move);
    EXPECT_EQ(kit::difference(tab2, seen.board(after)), "") << "tried";
    make(n, seen, move);
    EXPECT_EQ(kit::difference(tabd[static_cast<std::size_t>(n)], seen.board(after)), "") << "made";
  });
}

TEST(MakeMove, AManLeavesItsSquareAndTakesWhatStandsOnTheOther) {
  expect_made("4k3/8/8/8/8/5N2/8/4K3 w - - 0 1", "f3e5", "4k3/8/8/4N3/8/8/8/4K3 b - - 0 1");
  expect_made("4k3/8/8/4q3/8/5N2/8/4K3 w - - 0 1", "f3e5", "4k3/8/8/4N3/8/8/8/4K3 b - - 0 1");
  expect_made("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", "e2e4", "4k3/8/8/8/4P3/8/8/4K3 b - - 0 1");
}

TEST(MakeMove, ACastlingKingTakesTheRookAlong) {
  expect_made("4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", "e1g1", "4k3/8/8/8/8/8/8/R4RK1 b - - 0 1");
  expect_made("4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", "e1c1", "4k3/8/8/8/8/8/8/2KR3R b - - 0 1");
}

TEST(MakeMove, AnyOtherMoveToACastlingFileLeavesTheRook) {
  expect_made("4k3/8/8/8/8/8/8/R2K3R w - - 0 1", "d1c1", "4k3/8/8/8/8/8/8/R1K4R b - - 0 1");
  expect_made("4k3/8/8/8/8/8/8/R4K1R w - - 0 1", "f1g1", "4k3/8/8/8/8/8/8/R5KR b - - 0 1");
  expect_made("k7/8/8/8/8/K7/8/R3R2R w - - 0 1", "e1g1", "k7/8/8/8/8/K7/8/R5RR b - - 0 1");
  expect_made("k7/8/8/8/8/K7/8/R3Q2R w - - 0 1", "e1c1", "k7/8/8/8/8/K7/8/R1Q4R b - - 0 1");
  expect_made("4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", "e1d1", "4k3/8/8/8/8/8/8/R2K3R b - - 0 1");
}

TEST(MakeMove, APawnTakesInPassing) {
  expect_made("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d6", "4k3/8/3P4/8/8/8/8/4K3 b - - 0 1");
  expect_made("4k3/8/8/Pp6/8/8/8/4K3 w - b6 0 1", "a5b6", "4k3/8/1P6/8/8/8/8/4K3 b - - 0 1");
  expect_made("4k3/8/8/6pP/8/8/8/4K3 w - g6 0 1", "h5g6", "4k3/8/6P1/8/8/8/8/4K3 b - - 0 1");
}

TEST(MakeMove, OnlyTheFlagOfTheTargetFileRemovesAPawn) {
  // The step to d6 with the double step remembered on another file is a plain move.
  on_every_ply([](int n, Seen seen) {
    set_up(n, seen, "4k3/8/8/3pPp2/8/8/8/4K3 w - f6 0 1");
    try_out(n, seen, "e5d6");
    EXPECT_EQ(tab2[seen.square("d5")], seen.code('p'));
    EXPECT_EQ(tab2[seen.square("f5")], seen.code('p'));
    make(n, seen, "e5d6");
    EXPECT_EQ(tabd[static_cast<std::size_t>(n)][seen.square("d5")], seen.code('p'));
    EXPECT_EQ(tabd[static_cast<std::size_t>(n)][seen.square("f5")], seen.code('p'));
  });
}

TEST(MakeMove, AnotherManOnThePassedSquareTakesNoPawn) {
  expect_made("4k3/8/8/1B1p4/8/8/8/4K3 w - d6 0 1", "b5c6", "4k3/8/2B5/3p4/8/8/8/4K3 b - - 0 1");
  expect_made("4k3/8/8/3p4/1B6/8/8/4K3 w - d6 0 1", "b4d6", "4k3/8/3B4/3p4/8/8/8/4K3 b - - 0 1");
}

TEST(MakeMove, APawnOnItsLastRankIsAQueen) {
  expect_made("8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8q", "4Q3/8/8/8/8/8/k7/4K3 b - - 0 1");
  expect_made("3b4/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7d8q", "3Q4/8/8/8/8/8/k7/4K3 b - - 0 1");
  expect_made("r7/1P6/8/8/8/8/k7/4K3 w - - 0 1", "b7a8q", "Q7/8/8/8/8/8/k7/4K3 b - - 0 1");
  expect_made("8/4N3/8/8/8/8/k7/4K3 w - - 0 1", "e7g8", "6N1/8/8/8/8/8/k7/4K3 b - - 0 1");
}

// --- Castling bytes ---

void expect_lost(std::string_view fen, std::string_view move, const Lost& own) {
  SCOPED_TRACE(std::string(fen) + ' ' + std::string(move));
  on_every_ply([&](int n, Seen seen) {
    set_up(n, seen, fen);
    make(n, seen, move);
    EXPECT_EQ(seen.own_rights_lost(n), own);
    EXPECT_EQ(seen.other_rights_lost(n), (Lost{0, 0, 0}));
  });
}

TEST(CastlingBytes, AKingsMoveIsKept) {
  expect_lost("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "e1e2", {1, 0, 0});
  expect_lost("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "e1g1", {1, 0, 0});
  expect_lost("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "e1c1", {1, 0, 0});
}

TEST(CastlingBytes, ARookLeavesItsFile) {
  expect_lost("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "a1b1", {0, 1, 0});
  expect_lost("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "h1h4", {0, 0, 1});
}

TEST(CastlingBytes, AnyRookOfTheFileCostsTheRight) {
  expect_lost("r3k2r/8/8/8/R7/8/8/R3K2R w KQkq - 0 1", "a4b4", {0, 1, 0});
  expect_lost("r3k2r/8/8/7R/8/8/8/R3K2R w KQkq - 0 1", "h5g5", {0, 0, 1});
}

TEST(CastlingBytes, OtherMenAndFilesCostNothing) {
  expect_lost("r3k2r/8/8/3R4/8/8/8/R3K2R w KQkq - 0 1", "d5a5", {0, 0, 0});
  expect_lost("r3k2r/8/8/8/Q7/8/8/R3K2R w KQkq - 0 1", "a4b4", {0, 0, 0});
  expect_lost("r3k2r/8/8/8/N7/8/8/R3K2R w KQkq - 0 1", "a4b6", {0, 0, 0});
}

TEST(CastlingBytes, ACapturedRookCostsNothing) {
  expect_lost("r3k2r/8/8/8/8/8/6b1/R3K2R w KQkq - 0 1", "a1a8", {0, 1, 0});
}

TEST(CastlingBytes, WhatIsLostStaysLost) {
  on_every_ply([](int n, Seen seen) {
    set_up(n, seen, "r3k2r/8/8/8/8/8/8/R3K2R w - - 0 1");
    make(n, seen, "a1b1");
    EXPECT_EQ(seen.own_rights_lost(n), (Lost{1, 1, 1}));
    EXPECT_EQ(seen.other_rights_lost(n), (Lost{1, 1, 1}));
  });
}

// --- Double steps ---

TEST(DoubleSteps, SetTheFlagOfTheirFileAlone) {
  for (const char letter : std::string_view("abcdefgh"))
    on_every_ply([&](int n, Seen seen) {
      set_up(n, seen, "4k3/8/8/8/8/8/PPPPPPPP/4K3 w - - 0 1");
      make(n, seen, std::string{letter, '2', letter, '4'});
      EXPECT_EQ(seen.own_double_steps(n), file(letter));
      EXPECT_EQ(seen.other_double_steps(n), Files{});
    });
}

TEST(DoubleSteps, AreForgottenAtTheNextMove) {
  on_every_ply([](int n, Seen seen) {
    set_up(n, seen, "4k3/8/8/3p4/8/8/4P3/4K3 w - d6 0 1");
    ASSERT_EQ(seen.other_double_steps(n), file('d'));
    make(n, seen, "e2e3");
    EXPECT_EQ(seen.own_double_steps(n), Files{});
    EXPECT_EQ(seen.other_double_steps(n), Files{});

    set_up(n, seen, "4k3/8/8/3p4/8/8/4P3/4K3 w - d6 0 1");
    make(n, seen, "e2e4");
    EXPECT_EQ(seen.own_double_steps(n), file('e'));
    EXPECT_EQ(seen.other_double_steps(n), Files{});
  });
}

TEST(DoubleSteps, BelongToPawns) {
  on_every_ply([](int n, Seen seen) {
    set_up(n, seen, "4k3/8/8/8/8/8/3R4/4K3 w - - 0 1");
    make(n, seen, "d2d4");
    EXPECT_EQ(seen.own_double_steps(n), Files{});
  });
}

// --- Slots ---

TEST(MakeMove, ExpectsAReplyAnew) {
  on_every_ply([](int n, Seen seen) {
    set_up(n, seen, "4k3/8/8/8/8/5N2/8/4K3 w - - 0 1");
    X_D[static_cast<std::size_t>(n)] = 0;
    make(n, seen, "f3e5");
    EXPECT_EQ(X_D[static_cast<std::size_t>(n)], 1);
  });
}

TEST(MakeMove, TouchesItsOwnPlyAlone) {
  on_every_ply([](int n, Seen seen) {
    for (int k = 0; k <= kit::last_ply; ++k) kit::copy_root_to(k);
    set_up(n, seen, "r3k2r/8/8/8/8/8/4P3/R3K2R w KQkq - 0 1");
    for (int k = 1; k <= kit::last_ply; ++k) kit::copy_root_to(k);
    for (const std::string_view move : {"e2e4", "a1a8", "e1e2"}) make(n, seen, move);
    for (int k = 0; k <= kit::last_ply; ++k) {
      if (k == n) continue;
      EXPECT_EQ(kit::difference(tabd[static_cast<std::size_t>(k)],
                                seen.board("r3k2r/8/8/8/8/8/4P3/R3K2R w KQkq - 0 1")),
                "")
          << "ply " << k;
      EXPECT_EQ(seen.own_rights_lost(k), (Lost{0, 0, 0}));
      EXPECT_EQ(seen.own_double_steps(k), Files{});
    }
  });
}

TEST(TrialMove, ChangesNoFlagAndNoBoardOfThePly) {
  const std::string_view fen = "r3k2r/8/8/3p4/8/8/4P3/R3K2R w KQkq d6 0 1";
  on_every_ply([&](int n, Seen seen) {
    set_up(n, seen, fen);
    X_D[static_cast<std::size_t>(n)] = 0;
    for (const std::string_view move : {"e2e4", "a1a8", "e1g1", "e1c1", "h1h4"}) {
      try_out(n, seen, move);
      EXPECT_EQ(kit::difference(tabd[static_cast<std::size_t>(n)], seen.board(fen)), "") << move;
      EXPECT_EQ(seen.own_rights_lost(n), (Lost{0, 0, 0})) << move;
      EXPECT_EQ(seen.own_double_steps(n), Files{}) << move;
      EXPECT_EQ(seen.other_double_steps(n), file('d')) << move;
      EXPECT_EQ(X_D[static_cast<std::size_t>(n)], 0) << move;
    }
  });
}

TEST(TrialMove, StaysOnTheScratchBoardUntilTheNext) {
  on_every_ply([](int n, Seen seen) {
    set_up(n, seen, "4k3/8/8/4q3/8/5N2/8/4K3 w - - 0 1");
    try_out(n, seen, "f3e5");
    make(n, seen, "f3g5");
    EXPECT_EQ(kit::difference(tab2, seen.board("4k3/8/8/4N3/8/8/8/4K3 b - - 0 1")), "");
    // The next trial starts from the ply's board, not from the last trial.
    try_out(n, seen, "e1d2");
    EXPECT_EQ(kit::difference(tab2, seen.board("4k3/8/8/4q1N1/8/8/3K4/8 b - - 0 1")), "");
  });
}

// --- Many positions ---

TEST(MakeMove, AgreesWithTheRulesOverManyPositions) {
  int moves = 0;
  for (const kit::Case& c : kit::cases()) {
    kit::place(c.fen);
    for (const referee::Move& m : c.moves) {
      const Tabuleiro should = kit::board_of(c.position.after(m));
      const int n = kit::first_ply + moves++ % kit::last_ply;
      kit::copy_root_to(n);
      const kit::PlyMembers& ply = kit::members(n, c.position.white_to_move());
      const auto [x1, y1, x2, y2] = kit::squares_of(m);
      ply.trial(x1, y1, x2, y2);
      EXPECT_EQ(kit::difference(tab2, should), "") << c.fen << ' ' << m.text();
      ply.make(x1, y1, x2, y2);
      EXPECT_EQ(kit::difference(tabd[static_cast<std::size_t>(n)], should), "")
          << c.fen << ' ' << m.text();
    }
  }
  EXPECT_GE(kit::cases().size(), 300U);
  EXPECT_GE(moves, 5000);
}

}  // namespace
