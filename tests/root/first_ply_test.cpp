// The node of the first ply: what a root move is worth at little depth, which searches it gets, the
// counter, the report and the line.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

constexpr std::string_view king_takes =
    "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/3Kn3 w - - 0 1";          // d1e1
constexpr std::string_view mates = "7k/8/6KQ/8/8/8/8/8 w - - 0 1";         // h6g7
constexpr std::string_view stalemates = "7k/8/6K1/8/8/8/8/5Q2 w - - 0 1";  // f1f7
constexpr std::string_view promotion = "1n6/P7/7k/8/8/8/8/4K3 w - - 0 1";
constexpr std::string_view in_passing = "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1";

// --- Material ---

template <Cor root>
void expect_totals_after(std::string_view fen, std::string_view move, float own, float other) {
  at_depth(told_for<root>(fen), 1);
  first_ply<root>(move);
  EXPECT_EQ(material<root>(1), own);
  EXPECT_EQ(material<outra(root)>(1), other);
}

TEST(FirstPly, TotalsStartAHundredBelowTheRoots) {
  each_colour([]<Cor root>() {
    expect_totals_after<root>(locked, "d1e1", 90, 90);
    expect_totals_after<root>(king_takes, "d1e1", 90, 90);
    expect_totals_after<root>(promotion, "a7a8", 100, 42);
    expect_totals_after<root>(promotion, "a7b8", 100, 10);
    expect_totals_after<root>(in_passing, "e5d6", 30, 20);
  });
}

TEST(FirstPly, AtDepth1TheValueIsTheWorstReplys) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 1);
    first_ply<root>("d1e1");
    EXPECT_EQ(beta1, 1) << "90 against 90, and their quotient";
    // The rook goes where the king takes it, or where he does not.
    at_depth(told_for<root>("8/8/8/8/8/1k6/8/R3K3 w - - 0 1"), 1);
    first_ply<root>("a1a2");
    EXPECT_EQ(beta1, 1);
    at_depth(told_for<root>("8/8/8/8/8/1k6/8/R3K3 w - - 0 1"), 1);
    first_ply<root>("a1a8");
    EXPECT_EQ(beta1, 50 + 6) << "60 against 10";
    EXPECT_EQ(X_D[1], 0);
  });
}

TEST(FirstPly, LeavesTheRootsBoardAlone) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(king_takes), 3);
    const Tabuleiro before = tab;
    first_ply<root>("d1e1");
    EXPECT_EQ(tab, before);
  });
}

// --- No reply ---

TEST(FirstPly, AMoveThatMatesIsWorthTheMostAndOneThatStalematesADraw) {
  each_colour([]<Cor root>() {
    for (const int depth : {1, 3, 5}) {
      at_depth(told_for<root>(mates), depth);
      SCANT = 1;
      first_ply<root>("h6g7");
      EXPECT_EQ(beta1, 15400);
      EXPECT_EQ(curr, 1);
      EXPECT_EQ(reports().size(), 1U);
    }
    for (const int depth : {1, 5, 9}) {
      at_depth(told_for<root>(stalemates), depth);
      emp = -23;
      first_ply<root>("f1f7");
      EXPECT_EQ(beta1, -23);
    }
  });
}

// --- No depth ---

TEST(FirstPly, AtDepth0TheValueIsMaterialAndNoReplyIsLookedAt) {
  each_colour([]<Cor root>() {
    for (const std::uint8_t pvs : {0, 1}) {
      const auto value_of = [=](std::string_view fen, std::string_view move) {
        at_depth(told_for<root>(fen), 0);
        PVS = pvs;
        SCANT = 1;
        ALFA0 = -3;
        X_D[1] = 7;
        first_ply<root>(move);
        EXPECT_TRUE(reports().empty());
        EXPECT_EQ(curr, 0);
        EXPECT_EQ(nodes, 0U);
        EXPECT_EQ(X_D[1], 7);
        return beta1;
      };
      EXPECT_EQ(value_of(locked, "d1e1"), 0);
      EXPECT_EQ(value_of(king_takes, "d1e1"), 0) << "190 against 222 less 32";
      EXPECT_EQ(value_of(promotion, "a7a8"), 120 + 80 - 142);
      EXPECT_EQ(value_of(promotion, "a7b8"), 120 + 80 - 110);
      EXPECT_EQ(value_of(in_passing, "e5d6"), 10);
      EXPECT_EQ(value_of(mates, "h6g7"), 90) << "not even mate is seen";
    }
  });
}

TEST(FirstPly, BelowDepth0NothingIsDone) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), -1);
    beta1 = 4242;
    deeppromo = 1;
    SCANT = 1;
    first_ply<root>("d1e1");
    EXPECT_EQ(beta1, 4242);
    EXPECT_EQ(deeppromo, 0);
    EXPECT_EQ(curr, 0);
    EXPECT_TRUE(reports().empty());
    EXPECT_EQ(BETA1, 16500);
  });
}

// --- Which searches run ---

TEST(FirstPly, ThePrePassSearchesInFullAndReportsNothing) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 9);
    PVS = 1;
    NULL_MOVE = 2;
    alfa0 = 0;
    ALFA0 = 0;
    const auto seen = readings<root>("d1e1");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].capped, 0);
    EXPECT_EQ(seen[0].second, 0);
    EXPECT_EQ(curr, 1);
    EXPECT_TRUE(reports().empty());
    EXPECT_EQ(BETA1, 0) << "no null move has cut it short";
  });
}

TEST(FirstPly, TheOtherPassesReportEveryMoveOnce) {
  each_colour([]<Cor root>() {
    for (const bool single : {true, false}) {
      for (const std::uint8_t pvs : {0, 1}) {
        at_depth(told_for<root>(locked), 5);
        PVS = pvs;
        SCAN1 = single;
        SCANT = !single;
        ALFA0 = -3;
        first_ply<root>("d1e1");
        ASSERT_EQ(reports().size(), 1U);
        EXPECT_EQ(reports()[0].move, written<root>("d1e1"));
        EXPECT_EQ(reports()[0].score, beta1);
        EXPECT_EQ(reports()[0].curr, 1);
      }
    }
  });
}

TEST(FirstPly, TheCappedSearchNeedsPvsAndTheSinglePassOrAnEarlierScore) {
  each_colour([]<Cor root>() {
    const auto first_is_capped = [](auto change) {
      at_depth(told_for<root>(locked), 9);
      PVS = 1;
      change();
      const auto seen = readings<root>("d1e1");
      EXPECT_FALSE(seen.empty());
      return !seen.empty() && seen[0].capped == 1;
    };
    EXPECT_TRUE(first_is_capped([] { SCAN1 = 1; }));
    EXPECT_TRUE(first_is_capped([] { SCANT = 1, ALFA0 = -3; }));
    EXPECT_FALSE(first_is_capped([] { SCANT = 1; })) << "no earlier score";
    EXPECT_FALSE(first_is_capped([] { SCAN1 = 1, PVS = 0; }));
    EXPECT_FALSE(first_is_capped([] { SCANT = 1, ALFA0 = -3, PVS = 0; }));
    EXPECT_EQ(curr, 1) << "counted all the same";
    EXPECT_EQ(PVSm, 0);
  });
}

// --- The line and the marks ---

TEST(FirstPly, TheLineIsBlankedAndBeginsWithTheRootMove) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 3);
    linha.fill({'x', 'x', 'x', 'x'});
    first_ply<root>("d1e1");
    const auto text = [](const Texto& t) { return std::string{t.A, t.B, t.C, t.D}; };
    EXPECT_EQ(text(linha[0]), written<root>("d1e1"));
    EXPECT_EQ(text(linha[1]), written<root>("d8e8"));
    EXPECT_EQ(text(linha[2]), written<root>("e1f1"));
    EXPECT_EQ(text(linha[3]), written<root>("e8f8"));
    for (std::size_t k = 4; k < 8; ++k) EXPECT_EQ(text(linha[k]), "    ");
  });
}

TEST(FirstPly, LeavesNoMarks) {
  each_colour([]<Cor root>() {
    for (const int depth : {0, 1, 7}) {
      at_depth(told_for<root>(locked), depth);
      roque_b = roque_p = 10;
      deeppromo = 1;
      first_ply<root>("d1e1");
      EXPECT_EQ(roque_b, 0);
      EXPECT_EQ(roque_p, 0);
      EXPECT_EQ(deeppromo, 0);
    }
  });
}

// Everything that an earlier move may have left at ply 1.
template <Cor root>
void leave_old_marks() {
  corte_alfa[0] = 1;
  XEQUE_MATE[1] = X_D[1] = 0;
  nd = 9;
  beta1 = -16000;
  BETA1 = -16000;
  duplo<root>(duplos_D[1])[0] = 1;
  jm_D[1] = {1, 1, 1, 1, 1, 1};
  tabd[1].fill(vazia);
}

TEST(FirstPly, NothingOfAnEarlierMoveStands) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(mates), 1);
    leave_old_marks<root>();
    first_ply<root>("h6g7");
    EXPECT_EQ(beta1, 15400);
    // The rights and the double step of the position are those of the reply.
    at_depth(told_for<root>("r3k2r/8/8/8/3p4/8/4P3/4K3 w kq - 0 1"), 1);
    leave_old_marks<root>();
    first_ply<root>("e2e4");
    constexpr std::uint32_t kings = 5 + 2, rooks = 2 * 7 + 3 + 2, pawns = 2;
    EXPECT_EQ(nodes, kings + rooks + pawns) << "castlings and the capture in passing among them";
  });
}

TEST(FirstPly, EverySearchOfAMoveCountsItsRepliesAfresh) {
  each_colour([]<Cor root>() {
    // A null move that fails, the shallow search, the capped one and the second one.
    at_depth(told_for<root>(locked), 9);
    PVS = SCANT = NULL_MOVE = 1;
    npecas<root>() = 3;  // too few for a null move at ply 2
    alfa0 = -1;
    ALFA0 = -3;
    first_ply<root>("d1e1");
    EXPECT_EQ(LMRtest, 1) << "all four have run";
    EXPECT_EQ(currN[2], 2) << "the king on d8 has two moves";
  });
}

TEST(FirstPly, EverySearchOfAMoveIsMarkedAsOneAndMeasuresItsOwnDepth) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 13);  // so that all four read the clock
    PVS = SCANT = NULL_MOVE = 1;
    npecas<root>() = 3;
    alfa0 = -1;
    ALFA0 = -3;
    TC = 1;
    std::set<int> before;  // depths of the null move and of the shallow search
    int capped = 0, second = 0;
    tree_lab::clock_says([&] {
      EXPECT_EQ(deeppromo, 1);
      if (PVSm) {
        ++capped;
        ddep = 99;
      } else if (LMRtest) {
        ++second;
      } else {
        before.insert(deep);
      }
      return 0;
    });
    first_ply<root>("d1e1");
    EXPECT_EQ(before, (std::set<int>{9, 11}));
    EXPECT_GE(capped, 1);
    EXPECT_GE(second, 1);
    EXPECT_EQ(ddep, 0) << "no leaf is scanned";
    EXPECT_EQ(deeppromo, 0);
  });
}

TEST(FirstPly, CountersOfTheRepliesStartAfresh) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 1);
    currN[2] = 17;
    LmrT[2] = AmrT[2] = 1;
    ddep = 30;
    first_ply<root>("d1e1");
    EXPECT_EQ(currN[2], 2) << "the king on d8 has two moves";
    EXPECT_EQ(LmrT[2], 0);
    EXPECT_EQ(AmrT[2], 0);
    EXPECT_EQ(ddep, 0);
  });
}

TEST(FirstPly, RepliesEndWhenOneRefutesTheMove) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 1);
    alfa0 = 1;  // what every reply is worth
    first_ply<root>("d1e1");
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(guardado[1], move_of<root>("d8e8"));
    at_depth(told_for<root>(locked), 1);
    alfa0 = 0.5;
    first_ply<root>("d1e1");
    EXPECT_EQ(nodes, 2U);
    at_depth(told_for<root>(locked), 1);
    MAXcut[1] = -1;
    first_ply<root>("d1e1");
    EXPECT_EQ(nodes, 1U) << "the cap of ply 1";
    at_depth(told_for<root>(locked), 1);
    alfa0 = 16500;  // not even the start value lies above
    first_ply<root>("d1e1");
    EXPECT_EQ(nodes, 0U);
  });
}

}  // namespace
}  // namespace korvu
