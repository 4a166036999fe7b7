// What the officers and the fighting kings reach: counts, gains, sums over the reached squares.
#include <gtest/gtest.h>

#include "eval/bench.h"

namespace {

using bench::centrality;
using bench::nearness;
using korvu::Cor;
using korvu::Figuras;

void lay(const char* fen) {
  bench::lay(fen);
  bench::kings_at_home();
  bench::men(15, 15);
}

}  // namespace

TEST(Reach, CountsEmptyEnemyAndOwnSquares) {
  // The bishop on c1 sees b2 (own pawn), d2, e3, f4 (enemy pawn).
  lay("7k/8/8/8/5p2/8/1P6/2B4K w - - 0 1");
  const Figuras w = bench::waiting<Cor::b>();
  // The pawn on b2 adds its own two steps.
  EXPECT_EQ(w.mob, 3 + 2);
  EXPECT_EQ(w.att, 1);
  EXPECT_EQ(w.def, 1);
}

TEST(Reach, MobilityOfEachOfficerOnAnEmptyBoard) {
  struct Case {
    const char* fen;
    int mob;
  };
  for (const Case& c : {
           Case{"7k/8/8/8/3N4/8/8/7K w - - 0 1", 8},
           Case{"N6k/8/8/8/8/8/8/7K w - - 0 1", 2},
           Case{"7k/8/8/8/4B3/8/8/6K1 w - - 0 1", 13},
           Case{"7k/8/8/8/3R4/8/8/7K w - - 0 1", 14},
           Case{"6k1/8/8/8/3Q4/8/8/7K w - - 0 1", 27},
       }) {
    lay(c.fen);
    EXPECT_EQ(bench::waiting<Cor::b>().mob, c.mob) << c.fen;
    EXPECT_EQ(bench::waiting<Cor::b>().att, 0) << c.fen;
  }
}

TEST(Reach, SumsOverEveryReachedSquare) {
  lay("4k3/8/8/8/8/8/8/N6K w - - 0 1");
  const Figuras w = bench::waiting<Cor::b>();
  EXPECT_FLOAT_EQ(w.cen, 50 / 10.5F + 50 / 10.5F);  // b3 and c2
  EXPECT_FLOAT_EQ(w.kattack, static_cast<float>(nearness("b3", "e8") + nearness("c2", "e8")));
  EXPECT_FLOAT_EQ(w.kdefend, static_cast<float>(nearness("b3", "h1") + nearness("c2", "h1")));
  const Figuras b = bench::waiting<Cor::p>();  // a king at home reaches nothing
  EXPECT_EQ(b.cen, 0);
  EXPECT_EQ(b.kattack, 0);
  EXPECT_EQ(b.kdefend, 0);
}

TEST(Reach, NotesTheSquareOfAnOwnOrEnemyManToo) {
  lay("4k3/8/8/8/8/1r6/2R5/N6K w - - 0 1");
  const Figuras with_rook = bench::waiting<Cor::b>();
  lay("4k3/8/8/8/8/1r6/2R5/7K w - - 0 1");
  const Figuras without_knight = bench::waiting<Cor::b>();
  // The knight reaches the enemy on b3 and its own rook on c2, and neither hides the other.
  EXPECT_NEAR(with_rook.cen - without_knight.cen, 100 / 10.5, 1e-4);
  EXPECT_NEAR(with_rook.kattack - without_knight.kattack,
              nearness("b3", "e8") + nearness("c2", "e8"), 1e-5);
  EXPECT_EQ(with_rook.att - without_knight.att, 1);
  EXPECT_EQ(with_rook.def - without_knight.def, 1);
}

TEST(Reach, ProximityIsMeasuredToTheSlotsOfTheKings) {
  lay("4k3/8/8/8/8/8/8/N6K w - - 0 1");
  bench::kings("a8", "c3");
  const Figuras w = bench::waiting<Cor::b>();
  EXPECT_FLOAT_EQ(w.kattack, static_cast<float>(nearness("b3", "c3") + nearness("c2", "c3")));
  EXPECT_FLOAT_EQ(w.kdefend, static_cast<float>(nearness("b3", "a8") + nearness("c2", "a8")));
}

TEST(Reach, WalksEndAtTheFirstMan) {
  lay("7k/8/8/p7/8/P7/8/R6K w - - 0 1");
  const Figuras w = bench::waiting<Cor::b>();
  // The rook: a2, own pawn on a3; b1 to g1, own king on h1. The pawn: one step.
  EXPECT_EQ(w.mob, 1 + 6 + 1);
  EXPECT_EQ(w.def, 2);
  EXPECT_EQ(w.att, 0);
}

TEST(Reach, AGreaterManIsAGainForTheSideToMoveAlone) {
  struct Case {
    const char* fen;
    int gain;
    const char* what;
  };
  // On b1 or c1 and its target the attacker's own terms are the same to move or not.
  for (const Case& c : {
           Case{"7k/8/8/8/8/2r5/8/KN6 w - - 0 1", 50 - 32, "knight on rook"},
           Case{"7k/8/8/8/8/2b5/8/KN6 w - - 0 1", 33 - 32, "knight on bishop"},
           Case{"7k/8/8/8/8/2n5/8/KN6 w - - 0 1", 0, "knight on knight"},
           Case{"7k/8/8/8/8/2q5/8/KN6 w - - 0 1", 90 - 32, "knight on queen"},
           Case{"8/8/8/8/8/2k5/8/KN6 w - - 0 1", 110 - 32, "knight on king"},
           Case{"7k/8/8/8/8/8/3n4/K1B5 w - - 0 1", 0, "bishop on knight"},
           Case{"7k/8/8/8/8/8/3r4/K1B5 w - - 0 1", 50 - 33, "bishop on rook"},
           Case{"8/8/8/8/8/8/3k4/K1B5 w - - 0 1", 110 - 33, "bishop on king"},
           Case{"7k/8/8/8/2q5/8/8/K1R5 w - - 0 1", 90 - 50, "rook on queen"},
           Case{"7k/8/8/8/2r5/8/8/K1R5 w - - 0 1", 0, "rook on rook"},
           Case{"8/8/8/8/2k5/8/8/K1R5 w - - 0 1", 110 - 50, "rook on king"},
           Case{"8/8/8/8/2k5/8/8/K1Q5 w - - 0 1", 0, "queen on king"},
           Case{"7k/8/8/8/8/2p5/8/KN6 w - - 0 1", 0, "knight on pawn"},
       }) {
    lay(c.fen);
    EXPECT_NEAR(bench::to_move<Cor::b>().pos - bench::waiting<Cor::b>().pos, c.gain, 1e-4)
        << c.what;
    EXPECT_EQ(bench::to_move<Cor::b>().att, bench::waiting<Cor::b>().att) << c.what;
    EXPECT_GE(bench::waiting<Cor::b>().att, 1) << c.what;
    // The mirror image, with the gain for Black.
    lay(bench::mirrored(c.fen).c_str());
    EXPECT_NEAR(bench::to_move<Cor::p>().pos - bench::waiting<Cor::p>().pos, c.gain, 1e-4)
        << c.what;
  }
}

TEST(Reach, EveryAttackerGains) {
  lay("7k/8/3N4/8/1N2q3/8/8/K3R3 w - - 0 1");  // d6 and e1 attack e4, b4 does not
  EXPECT_NEAR(bench::to_move<Cor::b>().pos - bench::waiting<Cor::b>().pos, (90 - 32) + (90 - 50),
              1e-4);
}

TEST(Reach, RooksSeeTheirHeavyComradesAlongRankAndFile) {
  const auto pos = [](const char* fen) {
    lay(fen);
    return bench::waiting<Cor::b>().pos;
  };
  // Rooks on the a- and h-file have no terms of their own with many men on the board.
  EXPECT_EQ(pos("7k/8/8/8/8/8/6K1/R6R w - - 0 1"), 3 + 3);
  EXPECT_EQ(pos("7k/R7/8/8/8/8/R7/6K1 w - - 0 1"), 5 + 5);
  EXPECT_EQ(pos("7k/8/8/8/8/8/6K1/R2N3R w - - 0 1"),
            pos("7k/8/8/8/8/8/6K1/3N4 w - - 0 1"));  // a knight between
}

TEST(Reach, QueensSeeTheirHeavyComradesInAllDirections) {
  const auto pos = [](const char* fen) {
    lay(fen);
    return bench::waiting<Cor::b>().pos;
  };
  const auto queens = [&](const char* fen) { return pos(fen); };
  const float a1 = pos("7k/8/8/8/8/8/6K1/Q7 w - - 0 1");
  EXPECT_FLOAT_EQ(queens("7k/R7/8/8/8/8/6K1/Q7 w - - 0 1"), a1 + 1 + 5);  // along the file
  EXPECT_FLOAT_EQ(queens("7k/8/8/8/8/8/6K1/Q6R w - - 0 1"), a1 + 1 + 3);  // along the rank
  // Two queens on a diagonal: one each. The rook on a diagonal sees no queen.
  const float e5 = pos("7k/8/8/4Q3/8/8/6K1/8 w - - 0 1");
  EXPECT_FLOAT_EQ(queens("7k/8/8/4Q3/8/8/6K1/Q7 w - - 0 1"), a1 + e5 + 1 + 1);
  const float h4 = pos("7k/8/8/8/7R/8/6K1/8 w - - 0 1");
  const float d8 = pos("3Q3k/8/8/8/8/8/6K1/8 w - - 0 1");
  EXPECT_FLOAT_EQ(queens("3Q3k/8/8/8/7R/8/6K1/8 w - - 0 1"), d8 + h4 + 1);
}

TEST(Reach, EnemyHeavyMenAndOwnBishopsGiveNoBonus) {
  const auto pos = [](const char* fen) {
    lay(fen);
    return bench::waiting<Cor::b>().pos;
  };
  EXPECT_EQ(pos("7k/r7/8/8/8/8/6K1/R7 w - - 0 1"), 0);
  const float bishop = pos("7k/8/8/8/8/8/B5K1/8 w - - 0 1");
  EXPECT_EQ(pos("7k/8/8/8/8/8/B5K1/R7 w - - 0 1"), bishop);
}

TEST(Reach, AKingsStepsCountAsAnyOther) {
  bench::lay("7k/8/8/8/8/8/1r6/KN6 w - - 0 1");
  bench::officers_total(320, 90);
  const Figuras w = bench::waiting<Cor::b>();
  // King: a2, rook on b2, own knight on b1. Knight: a3, c3, d2. In a leaf nobody asks for legality.
  EXPECT_EQ(w.mob, 2 + 3);
  EXPECT_EQ(w.att, 1);
  EXPECT_EQ(w.def, 1);
  const double cen = 50 * (centrality("a2") + centrality("b2") + centrality("b1") +
                           centrality("a3") + centrality("c3") + centrality("d2"));
  EXPECT_NEAR(w.cen, cen, 1e-4);
}
