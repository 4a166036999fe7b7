// What a move loop makes of a child's value: improvement, cut, stored moves, the one reply that is
// enough at the end of a line, and mate or stalemate when there is none.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "eval/knobs.h"
#include "ply_members.h"
#include "root/first_ply_moves.h"
#include "sides.h"
#include "tree/knobs.h"
#include "tree/node_body.h"
#include "tree/node_search.h"

namespace {

using namespace korvu;
using kit::on_every_ply;
using kit::Seen;

std::size_t at(int n) {
  return static_cast<std::size_t>(n);
}

// Ply n with the position, an open window, and children that are worth `child`.
void open(int n, Seen seen, std::string_view fen, float child = 0) {
  kit::place(seen.fen(fen));
  kit::open_ply(n);
  kit::value(n + 1) = child;
}

std::uint32_t run(kit::Loop loop, Seen seen, std::string_view square) {
  nodes = 0;
  const std::size_t s = seen.square(square);
  loop(static_cast<int>(s / 8), static_cast<int>(s % 8));
  return nodes;
}

std::uint32_t run_phases(int n, Seen seen) {
  nodes = 0;
  kit::members(n, seen.white).phases();
  return nodes;
}

constexpr std::string_view knight_alone = "7k/8/8/8/8/5N2/8/K7 w - - 0 1";

// The knight's loop, whose eight moves are all legal.
std::uint32_t run_knight(int n, Seen seen) {
  return run(kit::livre(kit::members(n, seen.white), Peca::cavalo), seen, "f3");
}

// --- Improvement ---

TEST(LoopValue, IsTheBestForTheMoverOfThePly) {
  // The root side at even plies takes the greater, the opponent at odd ones the smaller.
  on_every_ply([](int n, Seen seen) {
    const float better = n % 2 == 0 ? 50.5F : 49.5F, worse = n % 2 == 0 ? 49.5F : 50.5F;
    for (const auto& [child, improved] :
         {std::pair{better, true}, {50.0F, false}, {worse, false}}) {
      open(n, seen, knight_alone, child);
      kit::value(n) = 50;
      EXPECT_EQ(run_knight(n, seen), 8U);
      EXPECT_EQ(kit::value(n), improved ? child : 50);
      EXPECT_EQ(X_D[at(n)], improved ? 0 : 1);
      EXPECT_EQ(kit::cut_flag(n), 0);
      EXPECT_EQ(guardado[at(n)], sem_lance);
    }
  });
}

TEST(LoopValue, AnIllegalMoveIsNoneAtAll) {
  on_every_ply([](int n, Seen seen) {
    open(n, seen, "k3r3/8/8/8/8/4N3/8/4K3 w - - 0 1", n % 2 == 0 ? 50.F : -50.F);
    EXPECT_EQ(run(kit::livre(kit::members(n, seen.white), Peca::cavalo), seen, "e3"), 0U);
    EXPECT_EQ(X_D[at(n)], 1);
    EXPECT_EQ(kit::value(n), n % 2 == 0 ? -16500 : 16500);
  });
}

// Without depth for ply 3 the loops of ply 2 call no child and read what its slot held.
TEST(LoopValue, OfPly2WithoutDepthIsTheStaleValueOfPly3) {
  kit::for_both_sides([](Seen seen) {
    open(2, seen, knight_alone, 37);
    deep = 2;
    nd = 2;
    EXPECT_EQ(run_knight(2, seen), 8U);
    EXPECT_EQ(alfa[2], 37);
    EXPECT_EQ(nd, 2);
  });
}

// --- Cuts ---

// The child's value meets a bound exactly; `by` moves the bound half a unit out of reach.
void expect_cut(int n, Seen seen, float& bound, float meets, float by) {
  open(n, seen, knight_alone, 50);
  bound = meets;
  EXPECT_EQ(run_knight(n, seen), 1U);
  EXPECT_NE(kit::cut_flag(n), 0);
  open(n, seen, knight_alone, 50);
  bound = meets + by;
  EXPECT_EQ(run_knight(n, seen), 8U);
  EXPECT_EQ(kit::cut_flag(n), 0);
}

TEST(LoopCut, ComesAtTheBoundOfAnyAncestorOfTheOtherSide) {
  on_every_ply([](int n, Seen seen) {
    int bounds = 0;
    for (int k = n - 1; k >= 0; k -= 2, ++bounds) {
      SCOPED_TRACE("bound of ply " + std::to_string(k));
      expect_cut(n, seen, kit::value(k), 50, n % 2 == 0 ? 0.5F : -0.5F);
    }
    EXPECT_EQ(bounds, (n + 1) / 2);
  });
}

TEST(LoopCut, ComesAtTheCapOfThePly) {
  on_every_ply([](int n, Seen seen) {
    expect_cut(n, seen, MAXcut[at(n)], n % 2 == 0 ? 50.F : -50.F, 0.5F);
  });
}

TEST(LoopCut, KnowsNoOtherBound) {
  on_every_ply([](int n, Seen seen) {
    open(n, seen, knight_alone, 50);
    // Bounds of the own parity above, and the caps of all other plies.
    for (int k = n - 2; k >= 0; k -= 2) kit::value(k) = 50;
    for (int k = 0; k <= kit::last_ply; ++k)
      if (k != n) MAXcut[at(k)] = -16500;
    EXPECT_EQ(run_knight(n, seen), 8U);
  });
}

TEST(LoopCut, LooksAtTheValueOfThePlyAfterEachMove) {
  // What stood there before the move is enough, though the move adds nothing.
  on_every_ply([](int n, Seen seen) {
    open(n, seen, knight_alone, 0);
    kit::value(n) = n % 2 == 0 ? 70.F : -70.F;
    kit::value(n - 1) = n % 2 == 0 ? 60.F : -60.F;
    EXPECT_EQ(run_knight(n, seen), 1U);
    EXPECT_EQ(X_D[at(n)], 1);
  });
}

TEST(LoopCut, EndsTheNode) {
  on_every_ply([](int n, Seen seen) {
    open(n, seen, "7k/8/8/3r4/4P3/2N5/8/K7 w - - 0 1", n % 2 == 0 ? 50.F : -50.F);
    kit::value(n - 1) = n % 2 == 0 ? 50.F : -50.F;
    EXPECT_EQ(run_phases(n, seen), 1U);
  });
}

TEST(LoopCut, TheFirstPlyTriesNothingWithoutAWindow) {
  kit::for_both_sides([](Seen seen) {
    for (const auto& [value, moves] : {std::pair{-20.F, 0U}, {-20.5F, 0U}, {-19.5F, 11U}}) {
      open(1, seen, knight_alone);
      alfa0 = -20;
      beta1 = value;
      EXPECT_EQ(run_phases(1, seen), moves);
    }
  });
}

// --- What is stored ---

// All bounds are met by the first move.
void open_to_cut(int n, Seen seen, std::string_view fen) {
  open(n, seen, fen, n % 2 == 0 ? 50.F : -50.F);
  kit::value(n - 1) = n % 2 == 0 ? 50.F : -50.F;
}

Lance quiet(Seen seen, std::string_view move) {
  const auto [x1, y1, x2, y2] = seen.squares(move);
  return {x1, y1, x2, y2};
}
// A capture as a ply stores it: the victim's square first, but not at ply 1.
Lance capture(int n, Seen seen, std::string_view move) {
  const auto [x1, y1, x2, y2] = seen.squares(move);
  return n == 1 ? Lance{x1, y1, x2, y2} : Lance{x2, y2, x1, y1};
}

TEST(StoredMove, IsTheQuietMoveThatCut) {
  on_every_ply([](int n, Seen seen) {
    open_to_cut(n, seen, knight_alone);
    run_knight(n, seen);
    EXPECT_EQ(guardado[at(n)], quiet(seen, seen.white ? "f3h4" : "f3h2"));
    EXPECT_EQ(guardado_g[at(n)], sem_lance);

    open_to_cut(n, seen, "7k/8/8/8/8/8/4P3/K7 w - - 0 1");
    run(kit::livre(kit::members(n, seen.white), Peca::peao), seen, "e2");
    EXPECT_EQ(guardado[at(n)], quiet(seen, "e2e4"));

    open_to_cut(n, seen, "7k/8/8/8/8/8/8/4K2R w K - 0 1");
    EXPECT_EQ(run(kit::livre(kit::members(n, seen.white), Peca::rei), seen, "e1"), 1U);
    EXPECT_EQ(guardado[at(n)], quiet(seen, "e1g1"));

    open_to_cut(n, seen, "7k/8/8/2pP4/8/8/8/K7 w - c6 0 1");
    run(kit::livre(kit::members(n, seen.white), Peca::peao), seen, "d5");
    EXPECT_EQ(guardado[at(n)], quiet(seen, "d5c6"));  // in passing counts as quiet
    EXPECT_EQ(guardado_g[at(n)], sem_lance);
  });
}

TEST(StoredMove, IsTheCaptureThatCutVictimFirst) {
  on_every_ply([](int n, Seen seen) {
    open_to_cut(n, seen, "7k/8/8/3r4/4P3/2N5/8/K7 w - - 0 1");
    run_phases(n, seen);
    EXPECT_EQ(guardado_g[at(n)], capture(n, seen, "e4d5"));
    EXPECT_EQ(guardado[at(n)], sem_lance);
  });
}

TEST(StoredMove, ATriedStoredMoveOrAPromotionStoresNothing) {
  on_every_ply([](int n, Seen seen) {
    const kit::PlyMembers& ply = kit::members(n, seen.white);
    const std::string_view fen = "7k/1P6/8/3r4/4P3/2N5/8/K7 w - - 0 1";
    const Lance stored = quiet(seen, "c3a4"), taken = capture(n, seen, "e4d5");

    open_to_cut(n, seen, fen);
    guardado[at(n)] = stored;
    guardado_g[at(n)] = taken;
    nodes = 0;
    ply.stored_capture();
    EXPECT_EQ(nodes, 1U);
    EXPECT_NE(kit::cut_flag(n), 0);

    open_to_cut(n, seen, fen);
    guardado[at(n)] = stored;
    guardado_g[at(n)] = taken;
    nodes = 0;
    ply.stored_quiet();
    EXPECT_EQ(nodes, 1U);
    EXPECT_NE(kit::cut_flag(n), 0);
    EXPECT_EQ(guardado[at(n)], stored);
    EXPECT_EQ(guardado_g[at(n)], taken);

    if (ply.positive_peao == nullptr) return;
    open_to_cut(n, seen, fen);
    EXPECT_EQ(run(ply.positive_peao, seen, "b7"), 1U);
    EXPECT_NE(kit::cut_flag(n), 0);
    EXPECT_EQ(guardado[at(n)], sem_lance);
    EXPECT_EQ(guardado_g[at(n)], sem_lance);
  });
}

TEST(StoredMove, IsReplacedByTheNextThatCuts) {
  on_every_ply([](int n, Seen seen) {
    open_to_cut(n, seen, "7k/8/8/8/8/5N2/8/K7 w - - 0 1");
    guardado[at(n)] = quiet(seen, "a1a2");
    run_knight(n, seen);
    EXPECT_EQ(guardado[at(n)], quiet(seen, seen.white ? "f3h4" : "f3h2"));
  });
}

TEST(StoredCapture, WithoutItsVictimIsNotTried) {
  on_every_ply([](int n, Seen seen) {
    const kit::PlyMembers& ply = kit::members(n, seen.white);
    const auto tried = [&](std::string_view fen) {
      open(n, seen, fen);
      guardado_g[at(n)] = capture(n, seen, "e4d5");
      nodes = 0;
      ply.stored_capture();
      return nodes;
    };
    EXPECT_EQ(tried("7k/8/8/3r4/4P3/8/8/K7 w - - 0 1"), 1U);
    EXPECT_EQ(tried("7k/8/8/3n4/4P3/8/8/K7 w - - 0 1"), 1U);  // another victim will do
    EXPECT_EQ(tried("7k/8/8/3r4/4B3/8/8/K7 w - - 0 1"), 1U);  // and another taker
    EXPECT_EQ(tried("7k/8/3r4/8/4P3/8/8/K7 w - - 0 1"), 0U);  // the victim has gone
    EXPECT_EQ(tried("7k/8/8/3N4/4P3/8/8/K7 w - - 0 1"), 0U);  // an own man stands there
    EXPECT_EQ(tried("8/8/8/3k4/4P3/8/8/K7 w - - 0 1"), 0U);   // the king is never taken
    EXPECT_EQ(tried("7k/8/8/3r4/8/8/8/K7 w - - 0 1"), 0U);    // the taker has gone
    EXPECT_EQ(tried("7k/8/8/3r4/4p3/8/8/K7 w - - 0 1"), 0U);  // an enemy man stands there
    EXPECT_EQ(tried("7k/8/8/3r4/4R3/8/8/K7 w - - 0 1"), 0U);  // a man that does not reach it
    // Nothing is lost: all legal moves are tried as ever.
    open(n, seen, "7k/8/8/8/3rP3/8/4K3/8 w - - 0 1");
    guardado_g[at(n)] = capture(n, seen, "e4d5");
    EXPECT_EQ(
        run_phases(n, seen),
        kit::searched_moves(referee::Position::from_fen("7k/8/8/8/3rP3/8/4K3/8 w - - 0 1")).size());
  });
}

TEST(StoredCapture, IsForgottenBeforeTheLastPlyOfTheLine) {
  on_every_ply([](int n, Seen seen) {
    // The slot's squares are empty, so that nothing is tried whatever stands there.
    const auto left = [&](int depth) {
      open(n, seen, "7k/8/8/8/8/5N2/8/K7 w - - 0 1");
      guardado_g[at(n)] = capture(n, seen, "e4d5");
      guardado[at(n)] = quiet(seen, "b4b5");
      deep = depth;
      kit::members(n, seen.white).stored_capture();
      EXPECT_EQ(guardado[at(n)], quiet(seen, "b4b5"));
      return guardado_g[at(n)].aa;
    };
    const int kept = capture(n, seen, "e4d5").aa;
    const bool forgets = n % 2 == 0 && n >= 6 && n <= 22;
    EXPECT_EQ(left(n + 1), forgets ? -1 : kept);
    EXPECT_EQ(left(n), kept);
    EXPECT_EQ(left(n + 2), kept);
    EXPECT_EQ(left(n + 3), kept);
  });
}

TEST(StoredQuietMove, IsTriedByTheManThatStandsThereNow) {
  on_every_ply([](int n, Seen seen) {
    const auto tried = [&](std::string_view fen, std::string_view move) {
      open(n, seen, fen);
      guardado[at(n)] = quiet(seen, move);
      nodes = 0;
      kit::members(n, seen.white).stored_quiet();
      return nodes;
    };
    EXPECT_EQ(tried("7k/8/8/8/8/8/4R3/K7 w - - 0 1", "e2e4"), 1U);
    EXPECT_EQ(tried("7k/8/8/8/8/8/4Q3/K7 w - - 0 1", "e2e4"), 1U);
    EXPECT_EQ(tried("7k/8/8/8/8/8/4P3/K7 w - - 0 1", "e2e4"), 1U);
    EXPECT_EQ(tried("7k/8/8/8/8/8/4B3/K7 w - - 0 1", "e2e4"), 0U);
    EXPECT_EQ(tried("7k/8/8/8/8/8/8/K7 w - - 0 1", "e2e4"), 0U);       // gone
    EXPECT_EQ(tried("7k/8/8/8/8/8/4r3/K7 w - - 0 1", "e2e4"), 0U);     // the enemy's
    EXPECT_EQ(tried("7k/8/8/8/4n3/8/4R3/K7 w - - 0 1", "e2e4"), 0U);   // a capture now
    EXPECT_EQ(tried("7k/8/8/8/8/4p3/4R3/K7 w - - 0 1", "e2e4"), 0U);   // something between
    EXPECT_EQ(tried("7k/4r3/8/8/8/8/4R3/4K3 w - - 0 1", "e2d2"), 0U);  // pinned
    EXPECT_EQ(tried("7k/8/8/8/8/8/8/4K2R w K - 0 1", "e1g1"), 1U);     // castlings too
    EXPECT_EQ(tried("7k/8/8/8/8/8/8/4K2R w - - 0 1", "e1g1"), 0U);     // while they may be
    EXPECT_EQ(tried("5r1k/8/8/8/8/8/8/4K2R w K - 0 1", "e1g1"), 0U);   // and no attack forbids
    EXPECT_EQ(tried("7k/8/8/2pP4/8/8/8/K7 w - c6 0 1", "d5c6"), 1U);   // in passing too
    EXPECT_EQ(tried("7k/8/8/2pP4/8/8/8/K7 w - - 0 1", "d5c6"), 0U);
  });
}

TEST(StoredQuietMove, IsLeftOutByThePlainLoopWhetherTriedOrNot) {
  on_every_ply([](int n, Seen seen) {
    open(n, seen, knight_alone);
    guardado[at(n)] = quiet(seen, "f3e5");
    EXPECT_EQ(run_knight(n, seen), 7U);
    guardado[at(n)] = quiet(seen, "f3e4");  // not a knight's move
    EXPECT_EQ(run_knight(n, seen), 8U);
    open(n, seen, "7k/8/8/8/8/8/8/R3K2R w KQ - 0 1");
    const kit::Loop king = kit::livre(kit::members(n, seen.white), Peca::rei);
    EXPECT_EQ(run(king, seen, "e1"), 7U);
    guardado[at(n)] = quiet(seen, "e1c1");
    EXPECT_EQ(run(king, seen, "e1"), 6U);
    guardado[at(n)] = quiet(seen, "e1g1");
    EXPECT_EQ(run(king, seen, "e1"), 6U);
  });
}

// --- One reply is enough ---

// Ply n as the last of its line: the children are leaves.
void open_last(int n, Seen seen, std::string_view fen) {
  open(n, seen, fen);
  deep = n;
  EXTRA_EVAL = 0;
  VERTICAL_filt = 0;
}

bool one_reply_is_enough(int n) {
  return n % 2 == 1 && n >= 7;
}

TEST(LastPly, OfOddPliesFromSevenEndsAtTheFirstReply) {
  on_every_ply([](int n, Seen seen) {
    const kit::PlyMembers& ply = kit::members(n, seen.white);
    struct Row {
      std::string_view fen;
      Peca man;
      std::string_view square;
      std::uint32_t moves;
    };
    for (const Row& r : {Row{"7k/8/8/8/8/8/4P3/K7 w - - 0 1", Peca::peao, "e2", 2},
                         Row{"7k/8/8/8/8/5N2/8/K7 w - - 0 1", Peca::cavalo, "f3", 8},
                         Row{"7k/8/8/8/8/5B2/8/K7 w - - 0 1", Peca::bispo, "f3", 11},
                         Row{"7k/8/8/8/8/5R2/8/K7 w - - 0 1", Peca::torre, "f3", 14},
                         Row{"7k/8/8/8/8/5Q2/8/K7 w - - 0 1", Peca::dama, "f3", 25},
                         Row{"7k/8/8/8/8/8/8/4K2R w K - 0 1", Peca::rei, "e1", 6}}) {
      open_last(n, seen, r.fen);
      EXPECT_EQ(run(kit::livre(ply, r.man), seen, r.square), one_reply_is_enough(n) ? 1U : r.moves);
      EXPECT_EQ(kit::cut_flag(n) != 0, one_reply_is_enough(n));
    }
    if (n < 2) return;
    open_last(n, seen, "7k/8/8/3r4/2P1P3/8/8/K7 w - - 0 1");
    EXPECT_EQ(run(ply.gerador, seen, "d5"), one_reply_is_enough(n) ? 1U : 2U);
    EXPECT_EQ(kit::cut_flag(n) != 0, one_reply_is_enough(n));
  });
}

TEST(LastPly, IsNotEndedByPromotionsNorByMostStoredMoves) {
  on_every_ply([](int n, Seen seen) {
    const kit::PlyMembers& ply = kit::members(n, seen.white);
    // A stored pawn move ends the node as a plain one does; other stored moves do not.
    open_last(n, seen, "7k/8/8/8/8/8/4P3/K7 w - - 0 1");
    guardado[at(n)] = quiet(seen, "e2e4");
    EXPECT_EQ(run(kit::livretest(ply, Peca::peao), seen, "e2"), 1U);
    EXPECT_EQ(kit::cut_flag(n) != 0, one_reply_is_enough(n));

    struct Row {
      char man;
      Peca kind;
      std::string_view move;
    };
    for (const Row& r : {Row{'N', Peca::cavalo, "f3e5"}, Row{'B', Peca::bispo, "f3e4"},
                         Row{'R', Peca::torre, "f3f5"}, Row{'Q', Peca::dama, "f3f5"}}) {
      open_last(n, seen, std::string("7k/8/8/8/8/5") + r.man + "2/8/K7 w - - 0 1");
      guardado[at(n)] = quiet(seen, r.move);
      EXPECT_EQ(run(kit::livretest(ply, r.kind), seen, "f3"), 1U) << r.man;
      EXPECT_EQ(kit::cut_flag(n), 0) << r.man;
    }
    open_last(n, seen, "7k/8/8/8/8/8/8/4K2R w K - 0 1");
    for (const std::string_view move : {"e1g1", "e1e2"}) {
      guardado[at(n)] = quiet(seen, move);
      EXPECT_EQ(run(kit::livretest(ply, Peca::rei), seen, "e1"), 1U);
      EXPECT_EQ(kit::cut_flag(n), 0);
    }
    open_last(n, seen, "7k/8/8/3r4/2P1P3/8/8/K7 w - - 0 1");
    guardado_g[at(n)] = capture(n, seen, "e4d5");
    nodes = 0;
    ply.stored_capture();
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(kit::cut_flag(n), 0);

    if (ply.positive_peao == nullptr) return;
    open_last(n, seen, "n1n4k/1P6/8/8/8/8/8/K7 w - - 0 1");
    EXPECT_EQ(run(ply.positive_peao, seen, "b7"), 3U);
    EXPECT_EQ(kit::cut_flag(n), 0);
  });
}

TEST(LastPly, KeepsTheValueOfTheFirstReply) {
  // The step of the a-pawn comes first, the capture in passing would win a pawn.
  on_every_ply([](int n, Seen seen) {
    if (n == 2) return;  // no child would run
    open_last(n, seen, "7k/8/8/2pP4/8/8/P7/K7 w - c6 0 1");
    extradef = 0;
    materialb[at(n)] = materialp[at(n)] = 200;
    run_phases(n, seen);
    EXPECT_EQ(kit::value(n), one_reply_is_enough(n) ? 0 : n % 2 == 0 ? 10 : -10);
  });
}

TEST(LastPly, AtPly23TheFirstLegalReplyEndsTheNode) {
  kit::for_both_sides([](Seen seen) {
    // The knight, tried first, is pinned.
    const std::string_view fen = "4r2k/8/8/8/8/4N3/8/2B1K3 w - - 0 1";
    open_last(23, seen, fen);
    EXPECT_EQ(run_phases(23, seen), 1U);
    EXPECT_EQ(guardado[23], quiet(seen, "c1d2"));
  });
}

// --- Mate, stalemate, castling out of check ---

struct End {
  std::string_view fen;
  bool mate;
};

constexpr End ends[] = {
    {"7k/8/8/8/8/8/5PPP/3r2K1 w - - 0 1", true}, {"6rk/8/8/8/8/8/5nPP/6RK w - - 0 1", true},
    {"7k/8/8/8/8/6q1/8/7K w - - 0 1", false},    {"8/8/8/8/8/5k2/5p2/5K2 w - - 0 1", false},
    {"8/8/8/8/8/p7/P1k5/K7 w - - 0 1", false},
};

TEST(NoReply, TheKingsLoopTellsMateFromStalemate) {
  for (const End& e : ends) {
    ASSERT_TRUE(referee::Position::from_fen(e.fen).legal_moves().empty()) << e.fen;
    on_every_ply([&](int n, Seen seen) {
      open(n, seen, e.fen);
      EXPECT_EQ(run_phases(n, seen), 0U) << e.fen;
      EXPECT_EQ(X_D[at(n)], 1);
      EXPECT_EQ(XEQUE_MATE[at(n)], e.mate ? 1 : 0) << e.fen;
    });
  }
}

// Mates of even plies are the root side's loss, those of odd plies its gain.
float mate_at(int n) {
  const int k = n % 2 == 0 ? n : n + 1;
  const float value = 16500.F - 550.F * static_cast<float>(k);
  return n % 2 == 0 ? -value : value;
}

template <int N>
void expect_ends() {
  emp = -23;
  for (const bool mate : {true, false}) {
    kit::open_ply(N);
    emp = -23;
    XEQUE_MATE[N] = mate;
    sem_resposta<N>();
    EXPECT_EQ(kit::value(N), mate ? mate_at(N) : -23) << "ply " << N;
  }
  // A reply that improved the node, or a child that began its moves: no end.
  kit::open_ply(N);
  kit::value(N) = 44;
  X_D[N] = 0;
  sem_resposta<N>();
  EXPECT_EQ(kit::value(N), 44);
  X_D[N] = 1;
  nd = N + 1;
  sem_resposta<N>();
  EXPECT_EQ(kit::value(N), 44);
}

template <int... N>
void expect_ends_of(std::integer_sequence<int, N...>) {
  (expect_ends<N + 2>(), ...);
}

TEST(NoReply, GivesTheMateOrTheDrawOfThePly) {
  kit::place("7k/8/8/8/8/8/8/K7 w - - 0 1");
  expect_ends_of(std::make_integer_sequence<int, 22>{});
}

// Whole nodes: the last move of the game, made at the ply above.
template <int N>
void expect_node_ends(std::string_view fen, std::string_view move, bool mate) {
  kit::for_both_sides([&](Seen seen) {
    kit::place(seen.fen(fen));
    kit::open_ply(N - 1);
    kit::value(N) = 1;
    VERTICAL_filt = TC = 0;
    NULL_MOVE = 0;
    LMR = PVS = 0;
    emp = -23;
    deep = N;
    const kit::Squares m = seen.squares(move);
    kit::members(N - 1, seen.white).trial(m.x1, m.y1, m.x2, m.y2);
    por_cor(seen.white, [&]<Cor cor>() { no<N, cor>(m.x1, m.y1, m.x2, m.y2); });
    EXPECT_EQ(kit::value(N), mate ? mate_at(N) : -23) << fen << " ply " << N;
  });
}

template <int... N>
void expect_nodes_end(std::integer_sequence<int, N...>) {
  // A mate on the last rank, and a queen that leaves the king no square.
  (expect_node_ends<N + 2>("6k1/5ppp/8/8/8/8/8/R6K w - - 0 1", "a1a8", true), ...);
  (expect_node_ends<N + 2>("7k/8/8/6Q1/8/8/8/K7 w - - 0 1", "g5g6", false), ...);
}

TEST(NoReply, EndsANodeOfAnyPly) {
  expect_nodes_end(std::make_integer_sequence<int, 22>{});
}

TEST(KingsLoop, NotesThatTheKingIsSafe) {
  on_every_ply([](int n, Seen seen) {
    const kit::PlyMembers& ply = kit::members(n, seen.white);
    open(n, seen, "7k/8/8/8/8/8/8/4K2R w K - 0 1");
    EXPECT_EQ(run(kit::livre(ply, Peca::torre), seen, "h1"), 8U);
    EXPECT_EQ(XEQUE_MATE[at(n)], 1);
    EXPECT_EQ(run(kit::livre(ply, Peca::rei), seen, "e1"), 6U);
    EXPECT_EQ(XEQUE_MATE[at(n)], 0);
  });
}

TEST(KingsLoop, DoesNotCastleOutOfCheck) {
  on_every_ply([](int n, Seen seen) {
    const kit::PlyMembers& ply = kit::members(n, seen.white);
    open(n, seen, "4r2k/8/8/8/8/8/8/R3K2R w KQ - 0 1");
    EXPECT_EQ(run(kit::livre(ply, Peca::rei), seen, "e1"), 4U);  // d1, d2, f1, f2
    EXPECT_EQ(XEQUE_MATE[at(n)], 1);
    open(n, seen, "7k/8/8/8/8/8/8/R3K2R w KQ - 0 1");
    EXPECT_EQ(run(kit::livre(ply, Peca::rei), seen, "e1"), 7U);
  });
}

TEST(KingsLoop, FindsTheOnlyMoveThereIs) {
  on_every_ply([](int n, Seen seen) {
    // Kb1, out of check; the pawn is blocked.
    open(n, seen, "7k/8/8/8/8/p1b5/P7/K7 w - - 0 1");
    EXPECT_EQ(run_phases(n, seen), 1U);
    EXPECT_EQ(XEQUE_MATE[at(n)], 1);
    EXPECT_EQ(X_D[at(n)], 0);
    // Kb1 again, without a check.
    open(n, seen, "7k/8/8/8/8/p1k5/P7/K7 w - - 0 1");
    EXPECT_EQ(run_phases(n, seen), 1U);
    EXPECT_EQ(XEQUE_MATE[at(n)], 0);
    EXPECT_EQ(X_D[at(n)], 0);
  });
}

TEST(CaptureLoops, NeverTakeAKing) {
  on_every_ply([](int n, Seen seen) {
    // A pawn's step, three steps of the king, seven of the rook up to the king that it attacks.
    open(n, seen, "8/8/8/R2k4/4P3/8/8/7K w - - 0 1");
    EXPECT_EQ(run_phases(n, seen), 1U + 3U + (2U + 3U + 4U));
  });
}

TEST(PawnsLoop, TakesInPassingOnlyAfterADoubleStep) {
  on_every_ply([](int n, Seen seen) {
    const kit::Loop pawn = kit::livre(kit::members(n, seen.white), Peca::peao);
    open(n, seen, "7k/8/8/2pPp3/8/8/8/K7 w - - 0 1");
    EXPECT_EQ(run(pawn, seen, "d5"), 1U);
    open(n, seen, "7k/8/8/2pPp3/8/8/8/K7 w - c6 0 1");
    EXPECT_EQ(run(pawn, seen, "d5"), 2U);
    open(n, seen, "7k/8/8/2pPp3/8/8/8/K7 w - e6 0 1");
    EXPECT_EQ(run(pawn, seen, "d5"), 2U);
    // Not onto a man.
    open(n, seen, "7k/8/4n3/3Pp3/8/8/8/K7 w - e6 0 1");
    EXPECT_EQ(run(pawn, seen, "d5"), 1U);
    // Not from another rank, and not across the edge of the board.
    open(n, seen, "7k/8/3P4/2p5/8/8/8/K7 w - c6 0 1");
    EXPECT_EQ(run(pawn, seen, "d6"), 1U);
    open(n, seen, "7k/8/8/p6P/8/8/8/K7 w - a6 0 1");
    EXPECT_EQ(run(pawn, seen, "h5"), 1U);
  });
}

TEST(PawnsLoop, IsNotCalledOnTheFirstRankButAtPly1) {
  on_every_ply([](int n, Seen seen) {
    open(n, seen, "7k/8/8/8/8/8/8/P6K w - - 0 1");
    EXPECT_EQ(run_phases(n, seen), n == 1 ? 4U : 3U);
  });
}

TEST(PawnsLoop, LeavesPromotionsToTheirOwnLoopWhereThereIsOne) {
  on_every_ply([](int n, Seen seen) {
    const kit::PlyMembers& ply = kit::members(n, seen.white);
    const bool apart = n % 2 == 1 && n >= 7;
    ASSERT_EQ(ply.positive_peao != nullptr, apart);
    const std::string_view fen = "n6k/1P6/8/8/8/8/8/K7 w - - 0 1";
    open(n, seen, fen);
    EXPECT_EQ(run(kit::livre(ply, Peca::peao), seen, "b7"), apart ? 0U : 1U);
    if (n >= 2) {
      EXPECT_EQ(run(ply.gerador, seen, "a8"), apart ? 0U : 1U);
    }
    EXPECT_EQ(run_phases(n, seen), 2U + 3U);
    if (!apart) return;
    EXPECT_EQ(run(ply.positive_peao, seen, "b7"), 2U);
    // Not from another rank, and never the king.
    open(n, seen, "n6k/8/1P6/8/8/8/8/K7 w - - 0 1");
    EXPECT_EQ(run(ply.positive_peao, seen, "b6"), 0U);
    open(n, seen, "k1k5/1P6/8/8/8/8/8/K7 w - - 0 1");
    EXPECT_EQ(run(ply.positive_peao, seen, "b7"), 1U);
    open(n, seen, "1r5k/1P6/8/8/8/8/8/K7 w - - 0 1");
    EXPECT_EQ(run(ply.positive_peao, seen, "b7"), 0U);
  });
}

}  // namespace
