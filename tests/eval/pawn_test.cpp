// What a pawn brings: shield and nearness, attacks and gains, mobility, neighbours, levers,
// passers.
//
// Most boards here keep a pawn on its file ahead, which ends both its lever walks and its passer
// walk, so that the term under test stands alone.
#include <gtest/gtest.h>

#include "eval/bench.h"
#include "eval/knobs.h"

namespace {

using bench::centrality;
using bench::nearness;
using korvu::Cor;
using korvu::Figuras;

void lay(const std::string& fen) {
  bench::lay(fen);
  bench::kings_at_home();
}

Figuras white(const std::string& fen) {
  lay(fen);
  return bench::waiting<Cor::b>();
}
Figuras black(const std::string& fen) {
  lay(fen);
  return bench::waiting<Cor::p>();
}

// Positional sum of White's pawns, and of Black's on the mirror image, which must be the same.
float pos(const std::string& fen) {
  const float w = white(fen).pos;
  EXPECT_EQ(black(bench::mirrored(fen)).pos, w) << "mirror image of " << fen;
  return w;
}

}  // namespace

TEST(Pawn, HeldOnItsFileItBringsNothing) {
  const Figuras w = white("4k3/8/4p3/8/4P3/8/8/4K3 w - - 0 1");
  EXPECT_EQ(w.pos, 0);
  EXPECT_EQ(w.pawns, 1);
  EXPECT_EQ(w.mob, 1);
  EXPECT_EQ(w.att, 0);
  EXPECT_EQ(w.def, 0);
}

// --- Shield and notes while the enemy has pieces ---

TEST(PawnShield, IsWithinOneFileAndZeroToTwoRanksAhead) {
  EXPECT_EQ(white("4k3/8/8/8/8/7P/5PP1/6K1 w - - 0 1").shield, 3);  // f2, g2, h3
  EXPECT_EQ(white("4k3/8/8/8/6P1/8/4P3/6K1 w - - 0 1").shield, 0);  // three ahead; two files off
  EXPECT_EQ(white("4k3/8/8/8/8/8/5PKP/8 w - - 0 1").shield, 2);     // beside the king
  EXPECT_EQ(white("4k3/8/8/8/8/6K1/5PPP/8 w - - 0 1").shield, 0);   // behind the king
  EXPECT_EQ(white("4k3/8/8/8/8/P7/1P6/K7 w - - 0 1").shield, 2);    // on the rim
  EXPECT_EQ(black("6k1/5pp1/7p/8/8/8/8/4K3 w - - 0 1").shield, 3);
  EXPECT_EQ(black("8/5pkp/8/6p1/8/8/8/4K3 w - - 0 1").shield, 3);   // beside, beside, two ahead
  EXPECT_EQ(black("8/6pp/6k1/8/8/6p1/8/4K3 w - - 0 1").shield, 0);  // behind; three ahead
}

TEST(PawnShield, IsTakenFromTheKingOfTheLastLegalityTest) {
  lay("4k3/8/8/8/8/8/5PPP/6K1 w - - 0 1");
  bench::kings("a1", "e8");
  EXPECT_EQ(bench::waiting<Cor::b>().shield, 0);
}

TEST(PawnShield, CountsOnlyWhileTheEnemyHasMoreThanNinety) {
  lay("4k3/8/8/8/8/8/5PPP/6K1 w - - 0 1");
  bench::officers_total(320, 91);
  EXPECT_EQ(bench::waiting<Cor::b>().shield, 3);
  bench::officers_total(320, 90);
  EXPECT_EQ(bench::waiting<Cor::b>().shield, 0);
}

TEST(PawnNotes, ItsCaptureSquaresWhateverStandsThere) {
  const Figuras w = white("4k3/8/4p3/3n1N2/4P3/8/8/4K3 w - - 0 1");
  const Figuras knight = white("4k3/8/8/5N2/8/8/8/4K3 w - - 0 1");
  EXPECT_NEAR(w.cen - knight.cen, 50 * (centrality("d5") + centrality("f5")), 1e-4);
  EXPECT_NEAR(w.kattack - knight.kattack, nearness("d5", "e8") + nearness("f5", "e8"), 1e-5);
  EXPECT_NEAR(w.kdefend - knight.kdefend, nearness("d5", "e1") + nearness("f5", "e1"), 1e-5);
}

TEST(PawnNotes, OneSquareOnTheRim) {
  EXPECT_FLOAT_EQ(white("4k3/8/8/8/P7/8/8/4K3 w - - 0 1").cen,
                  static_cast<float>(50 * centrality("b5")));
  EXPECT_FLOAT_EQ(black("4k3/8/8/7p/8/8/8/4K3 w - - 0 1").cen,
                  static_cast<float>(50 * centrality("g4")));
}

// --- Nearness once the enemy has ninety or less ---

TEST(PawnNearness, ReplacesShieldAndNotes) {
  lay("4k3/8/4p3/8/4P3/8/8/6K1 w - - 0 1");
  bench::officers_total(320, 90);
  const Figuras w = bench::waiting<Cor::b>(), b = bench::waiting<Cor::p>();
  // The king fights too: centre 50 and its five squares.
  const double king = 50 * centrality("g1");
  // Promotion: rank index 3 is four short, 1 / (2 x 16 + 2). Own king on g1: 4 + 9 + 2.
  EXPECT_NEAR(w.pos, king + 100 / 34.0 + 25 / 15.0, 1e-4);
  EXPECT_NEAR(b.pos, 25 / 18.0, 1e-5);  // to the king on e8: 0 + 16 + 2
  const double steps = 50 * (centrality("h1") + centrality("f1") + centrality("g2") +
                             centrality("f2") + centrality("h2"));
  EXPECT_NEAR(w.cen, steps, 1e-4);  // no capture square
}

TEST(PawnNearness, OfABlackPawn) {
  lay("4k3/8/4p3/8/4P3/8/8/6K1 w - - 0 1");
  bench::officers_total(90, 320);
  const Figuras w = bench::waiting<Cor::b>(), b = bench::waiting<Cor::p>();
  const double king = 50 * centrality("e8");
  // e6 is five short of promotion: 1 / (2 x 25 + 2).
  EXPECT_NEAR(b.pos, king + 100 / 52.0 + 25 * nearness("e6", "e8"), 1e-4);
  EXPECT_NEAR(w.pos, 25 * nearness("e6", "g1"), 1e-5);
}

TEST(PawnNearness, IsNotScaledByProximity) {
  lay("4k3/8/4p3/8/4P3/8/8/6K1 w - - 0 1");
  bench::officers_total(320, 90);
  const float before = bench::waiting<Cor::b>().pos;
  korvu::agresprxrei = 9;
  EXPECT_EQ(bench::waiting<Cor::b>().pos, before);
}

// --- Attacks ---

TEST(PawnAttack, OfTheSideToMoveGainsTheValueTimesAgresLessTen) {
  lay("4k3/8/4p3/3n1r2/4P3/8/8/4K3 w - - 0 1");
  EXPECT_EQ(bench::to_move<Cor::b>().pos, (32 - 10) + (50 - 10));
  korvu::agres = 3;
  EXPECT_EQ(bench::to_move<Cor::b>().pos, (96 - 10) + (150 - 10));
  korvu::agres = 0;
  EXPECT_EQ(bench::to_move<Cor::b>().pos, -10 - 10);
}

TEST(PawnAttack, OnAPawnOrAKingCountsForTheSideToMoveToo) {
  lay("4k3/8/4p3/3p4/4P3/8/8/4K3 w - - 0 1");
  korvu::agres = 2;
  EXPECT_EQ(bench::to_move<Cor::b>().pos, 20 - 10);
  lay("8/8/4p3/3k4/4P3/8/8/4K3 w - - 0 1");
  EXPECT_EQ(bench::to_move<Cor::b>().pos, 110 - 10);
}

TEST(PawnAttack, OfBlackToMove) {
  lay("4k3/8/8/4p3/3R4/4P3/8/4K3 w - - 0 1");
  korvu::agres = 2;
  EXPECT_EQ(bench::to_move<Cor::p>().pos, 100 - 10);
}

TEST(PawnAttack, OfTheOtherSideGainsHalfAnOfficerWhenProtected) {
  // d3 and f3 protect e4. The knight's and bishop's own terms are Black's.
  const char* with_d3 = "4k3/8/3pp3/3b4/4P3/3P4/8/4K3 w - - 0 1";
  const char* with_f3 = "4k3/8/4pp2/3b4/4P3/5P2/8/4K3 w - - 0 1";
  const char* alone = "4k3/8/4p3/3b4/4P3/8/8/4K3 w - - 0 1";
  // 33 / 2 in whole numbers. The protecting pawn brings 11 for e4 on its capture square and 10 for
  // e4 beside its passer walk, which the pawn on its own file ends later.
  EXPECT_EQ(pos(with_d3), 16 + 21);
  EXPECT_EQ(pos(with_f3), 16 + 21);
  EXPECT_EQ(pos(alone), 0);
}

TEST(PawnAttack, ProtectedTwiceOrOnTwoOfficersIsTakenOncePerOfficer) {
  EXPECT_EQ(pos("4k3/8/3ppp2/3b4/4P3/3P1P2/8/4K3 w - - 0 1"), 16 + 21 + 21);
  EXPECT_EQ(pos("4k3/8/3pp3/3b1n2/4P3/3P4/8/4K3 w - - 0 1"), 16 + 16 + 21);
  EXPECT_EQ(pos("4k3/8/3pp3/3q1r2/4P3/3P4/8/4K3 w - - 0 1"), 45 + 25 + 21);
}

TEST(PawnAttack, OfTheOtherSideTakesTheKingAtItsValueAndPawnsNot) {
  EXPECT_EQ(pos("8/8/3pp3/3k4/4P3/3P4/8/4K3 w - - 0 1"), 55 + 21);
  EXPECT_EQ(pos("4k3/8/4p3/3p4/4P3/3P4/8/4K3 w - - 0 1"), 21);
}

TEST(PawnAttack, ProtectionComesFromPawnsAndFromBehindAlone) {
  EXPECT_EQ(pos("4k3/8/4p3/3b4/4P3/3K4/8/8 w - - 0 1"), 0);
  // A neighbour on the same rank protects nothing; the two gain 13 each.
  EXPECT_EQ(pos("4k3/8/4pp2/3b4/4PP2/8/8/4K3 w - - 0 1"), 13 + 13);
}

TEST(PawnAttack, CountsAsMoveAndAttackForBothSides) {
  lay("4k3/8/4p3/3n1p2/4P3/8/8/4K3 w - - 0 1");
  for (const Figuras& w : {bench::to_move<Cor::b>(), bench::waiting<Cor::b>()}) {
    EXPECT_EQ(w.att, 2);
    EXPECT_EQ(w.mob, 2 + 1);
  }
}

// --- Steps ---

TEST(PawnSteps, OneAheadAndTwoFromTheStartRank) {
  EXPECT_EQ(white("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1").mob, 2);
  EXPECT_EQ(white("4k3/8/8/8/8/4P3/8/4K3 w - - 0 1").mob, 1);
  EXPECT_EQ(white("4k3/8/8/8/8/4n3/4P3/4K3 w - - 0 1").mob, 0);
  EXPECT_EQ(white("4k3/8/8/8/4p3/8/4P3/4K3 w - - 0 1").mob, 1);
  EXPECT_EQ(black("4k3/4p3/8/8/8/8/8/4K3 w - - 0 1").mob, 2);
  EXPECT_EQ(black("4k3/8/4p3/8/8/8/8/4K3 w - - 0 1").mob, 1);
  EXPECT_EQ(black("4k3/4p3/4P3/8/8/8/8/4K3 w - - 0 1").mob, 0);
  EXPECT_EQ(black("4k3/4p3/8/4P3/8/8/8/4K3 w - - 0 1").mob, 1);
}

TEST(PawnDefence, CountsOwnMenOnItsCaptureSquares) {
  EXPECT_EQ(white("4k3/8/4p3/3P1K2/4P3/8/8/8 w - - 0 1").def, 2);
  EXPECT_EQ(white("4k3/8/4p3/3p4/4P3/8/8/4K3 w - - 0 1").def, 0);
  EXPECT_EQ(black("4k3/8/8/4p3/3p4/4P3/8/4K3 w - - 0 1").def, 1);
}

// --- Structure ---

TEST(PawnStructure, AHundredOneStepFromPromotion) {
  // The walk of a passer has no square left there, and so arrives: 33 more.
  EXPECT_EQ(pos("8/P7/8/8/8/8/8/K6k w - - 0 1"), 100 + 33);
  EXPECT_EQ(pos("n7/P7/8/8/8/8/8/K6k w - - 0 1"), 100 + 33);
}

TEST(PawnStructure, ThirteenForEachNeighbourOnTheRank) {
  EXPECT_EQ(pos("4k3/8/3pp3/8/3PP3/8/8/4K3 w - - 0 1"), 13 + 13);
  EXPECT_EQ(pos("4k3/8/3ppp2/8/3PPP2/8/8/4K3 w - - 0 1"), 13 + 2 * 13 + 13);
  EXPECT_EQ(pos("4k3/8/2p1p3/8/2P1P3/8/8/4K3 w - - 0 1"), 0);
}

TEST(PawnStructure, ElevenForEachPawnItProtects) {
  // And 10 for each beside its passer walk, until e6 ends that.
  EXPECT_EQ(pos("4k3/8/3ppp2/8/3P1P2/4P3/8/4K3 w - - 0 1"), 11 + 11 + 10 + 10);
}

// --- Levers ---

// The enemy's pawn right ahead ends the passer walk but lies short of the lever walks, which begin
// two ranks ahead.
TEST(PawnLever, TwentyFiveForEachFreeSide) {
  EXPECT_EQ(pos("7k/8/8/4p3/4P3/8/8/K7 w - - 0 1"), 25 + 25);
  EXPECT_EQ(pos("7k/8/8/p7/P7/8/8/K7 w - - 0 1"), 25);
  EXPECT_EQ(pos("7k/8/8/7p/7P/8/8/K7 w - - 0 1"), 25);
}

TEST(PawnLever, EndsAtAnEnemyPawnOnTheFile) {
  EXPECT_EQ(pos("7k/4p3/8/4p3/4P3/8/8/K7 w - - 0 1"), 0);
  EXPECT_EQ(pos("7k/8/4p3/8/4P3/8/8/K7 w - - 0 1"), 0);
}

TEST(PawnLever, EndsAtAnEnemyPawnBeyondTheCaptureSquare) {
  EXPECT_EQ(pos("7k/6p1/8/4p3/4P3/8/8/K7 w - - 0 1"), 25);  // g7 closes the side of f
  EXPECT_EQ(pos("7k/6p1/2p5/4p3/4P3/8/8/K7 w - - 0 1"), 0);
  EXPECT_EQ(pos("7k/8/8/4p1p1/4P3/8/8/K7 w - - 0 1"), 50);  // g5 stands short of the walk
  EXPECT_EQ(pos("7k/5p2/8/4p3/4P3/8/8/K7 w - - 0 1"), 50);  // the file between is not looked at
}

TEST(PawnLever, FromTheNextToTheRimLooksAtItsOwnFileAlone) {
  EXPECT_EQ(pos("7k/8/8/1p6/1P6/8/8/K7 w - - 0 1"), 25 + 25);
  EXPECT_EQ(pos("7k/3p4/8/1p6/1P6/8/8/K7 w - - 0 1"), 25);
  EXPECT_EQ(pos("7k/1p6/8/1p6/1P6/8/8/K7 w - - 0 1"), 0);
}

TEST(PawnLever, NeedsACaptureSquareFreeOfPawns) {
  // An enemy pawn on d5 or an own one there closes that side; an officer does not. The own pawn
  // is held by d7 and brings 11 as protected.
  EXPECT_EQ(pos("7k/8/8/3pp3/4P3/8/8/K7 w - - 0 1"), 25);
  EXPECT_EQ(pos("7k/3p4/8/3Pp3/4P3/8/8/K7 w - - 0 1"), 25 + 11);
  EXPECT_EQ(pos("7k/8/8/3np3/4P3/8/8/K7 w - - 0 1"), 50);
}

TEST(PawnLever, OwnPawnsOnTheWayDoNotMatter) {
  // e7 is one step from promotion (100 and 33), e4 is held only as a passer.
  EXPECT_EQ(pos("7k/4P3/8/4p3/4P3/8/8/K7 w - - 0 1"), 100 + 33 + 50);
}

TEST(PawnLever, NeedsASquareToWalk) {
  // From the sixth rank two ranks ahead is the last rank, where no walk goes; from the fifth one
  // square is left.
  EXPECT_EQ(pos("7k/4p3/4P3/8/8/8/8/K7 w - - 0 1"), 0);
  EXPECT_EQ(pos("7k/8/4p3/4P3/8/8/8/K7 w - - 0 1"), 50);
}

// --- Passers ---

// Passers whose levers are closed: an enemy pawn on the last rank but one two files away closes
// the lever of that side, and one on the own file would end both walks.
TEST(PawnPasser, ThirtyThreeWhenTheWalkArrives) {
  EXPECT_EQ(pos("7k/2p3p1/8/8/4P3/8/8/K7 w - - 0 1"), 33);
  EXPECT_EQ(pos("7k/2p5/8/8/P7/8/8/K7 w - - 0 1"), 33);
}

TEST(PawnPasser, EndsAtAnEnemyPawnOnTheFileOrBesideIt) {
  EXPECT_EQ(pos("7k/2pp2p1/8/8/4P3/8/8/K7 w - - 0 1"), 0);
  EXPECT_EQ(pos("7k/2p2pp1/8/8/4P3/8/8/K7 w - - 0 1"), 0);
  EXPECT_EQ(pos("7k/2p1p1p1/8/8/4P3/8/8/K7 w - - 0 1"), 0);
  EXPECT_EQ(pos("7k/1pp5/8/8/P7/8/8/K7 w - - 0 1"), 0);
}

TEST(PawnPasser, PawnsBesideOrBehindItAreNotOnTheWalk) {
  EXPECT_EQ(pos("7k/2p3p1/8/8/3pPp2/8/8/K7 w - - 0 1"), 33);
}

TEST(PawnPasser, EndsAtAnOwnPawnOnTheFile) {
  // e6 arrives at once, e4 stands behind it.
  EXPECT_EQ(pos("7k/2p3p1/4P3/8/4P3/8/8/K7 w - - 0 1"), 33);
}

TEST(PawnPasser, OfficersDoNotStopIt) {
  EXPECT_EQ(pos("7k/2p3p1/4r3/8/4P3/8/8/K7 w - - 0 1"), 33);
}

TEST(PawnPasser, TenForEachOwnPawnBesideTheWalk) {
  // d5 protected by e4 (11). For e4 the walk meets d5 (10) and arrives (33). d5 arrives too (33).
  // Levers: e4 towards d holds a pawn, towards f g7 closes it; d5 towards c: b7, towards e: f7
  // would end passers, so the last side stays open (25).
  EXPECT_EQ(pos("7k/1p4p1/8/3P4/4P3/8/8/K7 w - - 0 1"), 11 + (10 + 33) + 33 + 25);
}

TEST(PawnPasser, KeepsTheTensWhenTheWalkEndsLater) {
  // e4 meets d5 (10), then e7 ends the walk. d5 has e7 beside it: nothing. Levers of e4: d5 holds
  // a pawn, e7 closes the other. Levers of d5: b7 closes c, f7 closes e.
  EXPECT_EQ(pos("7k/1p2pp2/8/3P4/4P3/8/8/K7 w - - 0 1"), 11 + 10);
}

TEST(PawnPasser, AddsNothingOnTheRankThatEndsIt) {
  // e4: on the fifth rank d5 and the enemy's f5 stand together: the walk ends before the ten. The
  // pawns of d5: e6 and c6 end its passer walk and b7 and f7 its levers, e4's are closed by d5 and
  // f5; 11 for d5 protected.
  EXPECT_EQ(pos("7k/1p3p2/2p1p3/3P1p2/4P3/8/8/K7 w - - 0 1"), 11);
}

TEST(PawnPasser, BothNeighboursCount) {
  // e4 with d5 and f5: 11 twice for protecting them, 10 twice, 33. d5 and f5 arrive: 33 each; their
  // levers towards the outside are closed by b7 and h7, towards e open.
  EXPECT_EQ(pos("k7/1p5p/8/3P1P2/4P3/8/8/K7 w - - 0 1"), 22 + 20 + 33 + 33 + 33 + 25 + 25);
}
