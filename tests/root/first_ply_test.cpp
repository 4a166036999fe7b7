// The node of the first ply: the early ways out, the searches of a root move and what decides
// between them, the counter and the report.
#include "root/first_ply.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/root_lab.h"
#include "support/positions.h"
#include "tree/expected_order.h"

namespace korvu {
namespace {

using namespace root_lab;
using tree_lab::clock_says;

constexpr std::string_view king_takes =
    "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/3Kn3 w - - 0 1";  // d1e1
constexpr std::string_view rook_free =
    "3k4/p1p1p1p1/P1P1P1P1/8/7R/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1";           // h4h8 checks, h4h7
constexpr std::string_view mates = "7k/8/6KQ/8/8/8/8/8 w - - 0 1";          // h6g7
constexpr std::string_view stalemates = "7k/8/6K1/8/8/8/8/5Q2 w - - 0 1";   // f1f7
constexpr std::string_view mates_in_two = "7k/8/5K2/8/8/8/8/Q7 w - - 0 1";  // f6g6, Kg8, Qa8
constexpr std::string_view gets_mated = "8/8/8/8/8/6k1/q7/6K1 w - - 0 1";   // g1h1
constexpr std::string_view promotion = "1n6/P7/7k/8/8/8/8/4K3 w - - 0 1";
constexpr std::string_view in_passing = "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1";

void at_depth(std::string_view fen, int depth) {
  at_root(fen);
  deep = DEEP = depth;
}

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

// --- The null move ---

// Everything that the null move needs; two moves of the root side in a row are worth 0.
void passing(std::string_view fen, int depth) {
  at_depth(fen, depth);
  SCANT = 1;
  NULL_MOVE = 1;
  alfa0 = 0;
}

// The node has ended with the null move: nothing after it has run.
bool ended_by_passing() {
  return curr == 0 && BETA1 == 16500;
}

TEST(FirstPlyNullMove, RefutesAMoveThatTwoInARowDoNotMakeBetter) {
  each_colour([]<Cor root>() {
    for (const int depth : {7, 9}) {
      passing(told_for<root>(locked), depth);
      HASHf = 1;
      first_ply<root>("d1e1");
      EXPECT_TRUE(ended_by_passing());
      EXPECT_EQ(beta1, 0);
      EXPECT_EQ(alfa[2], 0);
      EXPECT_TRUE(reports().empty());
      EXPECT_EQ(deep, depth);
      EXPECT_EQ(HASHf, 1);
      EXPECT_EQ((tabela_de<3, outra(root)>().indice()), 0);
      EXPECT_EQ(deeppromo, 0);
    }
  });
}

TEST(FirstPlyNullMove, NeedsEveryOneOfItsConditions) {
  each_colour([]<Cor root>() {
    const auto ends = [](auto change) {
      passing(told_for<root>(locked), 7);
      change();
      first_ply<root>("d1e1");
      return ended_by_passing();
    };
    EXPECT_TRUE(ends([] {}));
    EXPECT_FALSE(ends([] { SCANT = 0; }));
    EXPECT_FALSE(ends([] { NULL_MOVE = 0; }));
    EXPECT_TRUE(ends([] { npecas<root>() = 3; }));
    EXPECT_FALSE(ends([] { npecas<root>() = 2; }));
    EXPECT_TRUE(ends([] { npecas<outra(root)>() = 5; }));
    EXPECT_FALSE(ends([] { npecas<outra(root)>() = 4; }));
    EXPECT_FALSE(ends([] { alfa0 = -0.5; })) << "two moves do make it better";
    EXPECT_FALSE(ends([] { deep = 6; })) << "too shallow";
    EXPECT_EQ(curr, 1);
  });
}

TEST(FirstPlyNullMove, IsNotForAMoveThatGivesCheck) {
  each_colour([]<Cor root>() {
    for (const bool check : {false, true}) {
      passing(told_for<root>(rook_free), 7);
      alfa0 = 16000;
      MAXcut.fill(-20000);  // every descendant is content with its first reply
      MAXcutt = MAXcut;
      first_ply<root>(check ? "h4h8" : "h4h7");
      EXPECT_EQ(ended_by_passing(), !check);
    }
  });
}

TEST(FirstPlyNullMove, DoesNotTrustAMateAgainstTheRoot) {
  each_colour([]<Cor root>() {
    // Moving twice the king comes back to where he is mated.
    passing(told_for<root>(gets_mated), 7);
    npecasb = npecasp = 8;
    alfa0 = -200;
    first_ply<root>("g1h1");
    EXPECT_FALSE(ended_by_passing());
    EXPECT_LE(BETA1, -3300) << "the shallow search has run and sees a mate too";
  });
}

TEST(FirstPlyNullMove, PlaysTheMoveAtPly2AndNobodyAnswers) {
  each_colour([]<Cor root>() {
    passing(told_for<root>(king_takes), 7);
    alfa0 = 500;
    first_ply<root>("d1e1");
    ASSERT_TRUE(ended_by_passing());
    EXPECT_EQ(tabd[2][tree_lab::square_of<root>("e1")], Lado<root>::rei);
    EXPECT_EQ(tabd[2][tree_lab::square_of<root>("d8")], Lado<outra(root)>::rei);
    EXPECT_EQ(material<root>(2), 90) << "the discount stands here too";
    EXPECT_EQ(material<outra(root)>(2), 90);
  });
}

struct Reading {
  int deep, tables, capped, second;
  float beta1, shallow;
  std::array<float, 24> caps;
};

// What readers of the clock at ply 7 saw of a root move's searches.
template <Cor root>
std::vector<Reading> readings(std::string_view move) {
  std::vector<Reading> seen;
  TC = 1;
  clock_says([&] {
    const Reading now{deep, HASHf, PVSm, LMRtest, beta1, BETA1, MAXcut};
    const bool same = !seen.empty() && seen.back().deep == now.deep &&
                      seen.back().capped == now.capped && seen.back().second == now.second;
    if (!same) seen.push_back(now);
    return 0;
  });
  first_ply<root>(move);
  TC = 0;
  return seen;
}

TEST(FirstPlyNullMove, IsSearchedTwoPliesShortAgainstTheBestValue) {
  each_colour([]<Cor root>() {
    passing(told_for<root>(locked), 11);
    HASHf = 1;
    alfa0 = 3.25;
    const auto seen = readings<root>("d1e1");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].deep, 9);
    EXPECT_EQ(seen[0].tables, 0);
    EXPECT_EQ(seen[0].beta1, static_cast<float>(3.25 + 0.001));
  });
}

// --- The shallow search ---

TEST(ShallowSearch, RunsAboveDepth6AndLeavesItsValue) {
  each_colour([]<Cor root>() {
    for (const int depth : {1, 3, 5, 6}) {
      at_depth(told_for<root>(locked), depth);
      first_ply<root>("d1e1");
      EXPECT_EQ(BETA1, 16500) << depth;
    }
    for (const int depth : {7, 9}) {
      at_depth(told_for<root>(locked), depth);
      first_ply<root>("d1e1");
      EXPECT_EQ(BETA1, 0) << depth;
    }
  });
}

TEST(ShallowSearch, IsFourPliesShortAndUsesNoTables) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 13);
    HASHf = 1;
    const auto seen = readings<root>("d1e1");
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front().shallow, 16500) << "its value is not known yet";
    EXPECT_EQ(seen.front().deep, 9);
    EXPECT_EQ(seen.front().tables, 0);
    EXPECT_EQ(seen.back().shallow, 0);
    EXPECT_EQ(seen.back().deep, 13);
    EXPECT_EQ(seen.back().tables, 1);
    EXPECT_EQ(deep, 13);
  });
}

TEST(ShallowSearch, AMateIsTakenAsItStandsAndTheMoveIsNotCounted) {
  each_colour([]<Cor root>() {
    for (const auto& [fen, move, value] :
         {std::tuple{mates, "h6g7", 15400.0F}, std::tuple{mates_in_two, "f6g6", 14300.0F}}) {
      at_depth(told_for<root>(fen), 7);
      SCANT = 1;
      first_ply<root>(move);
      EXPECT_EQ(beta1, value);
      EXPECT_EQ(BETA1, value);
      EXPECT_EQ(curr, 0);
      EXPECT_TRUE(reports().empty());
    }
    at_depth(told_for<root>(mates_in_two), 5);
    first_ply<root>("f6g6");
    EXPECT_EQ(beta1, 14300);
    EXPECT_EQ(curr, 1) << "without a shallow search it is counted";
  });
}

TEST(ShallowSearch, AMateAgainstTheRootIsNoReasonToStop) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(gets_mated), 7);
    first_ply<root>("g1h1");
    EXPECT_EQ(BETA1, -15400) << "mated at ply 2";
    EXPECT_EQ(beta1, -15400);
    EXPECT_EQ(curr, 1);
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

// --- The decision after the capped search; the value at depth 1 is 1 ---

constexpr float v = 1;

// Is the move searched a second time?
template <Cor root, class F>
bool again(F set, int depth = 1) {
  at_depth(told_for<root>(locked), depth);
  PVS = 1;
  set();
  first_ply<root>("d1e1");
  EXPECT_EQ(curr, 1) << "one count, whatever is searched";
  EXPECT_EQ(reports().size(), 1U);
  return LMRtest != 0;
}

TEST(CappedSearch, InTheSinglePassStandsBelowTheLastScorePlus5) {
  each_colour([]<Cor root>() {
    EXPECT_FALSE(again<root>([] { SCAN1 = 1, alfa0 = 0, ALFA0 = -3.5, materialflot0 = 100; }));
    EXPECT_TRUE(again<root>([] { SCAN1 = 1, alfa0 = 0, ALFA0 = -4, materialflot0 = 100; }));
  });
}

TEST(CappedSearch, InTheSinglePassStandsFarAboveTheMaterial) {
  each_colour([]<Cor root>() {
    EXPECT_FALSE(again<root>([] { SCAN1 = 1, alfa0 = 0, ALFA0 = -9, materialflot0 = v - 15; }));
    EXPECT_TRUE(again<root>([] { SCAN1 = 1, alfa0 = 0, ALFA0 = -9, materialflot0 = v - 14.5F; }));
    // A capture just made against the root counts, with its sign by the root's colour.
    constexpr int taken_from_root = root == Cor::b ? 10 : -10;
    EXPECT_FALSE(again<root>(
        [] { SCAN1 = 1, alfa0 = 0, ALFA0 = -9, materialflot0 = v - 25, peca = taken_from_root; }));
    EXPECT_TRUE(again<root>(
        [] { SCAN1 = 1, alfa0 = 0, ALFA0 = -9, materialflot0 = v - 24, peca = taken_from_root; }));
  });
}

TEST(CappedSearch, InTheSinglePassAMoveThatFailsIsAlwaysSearchedAgain) {
  each_colour([]<Cor root>() {
    const auto failing = [] { SCAN1 = 1, alfa0 = v, ALFA0 = 20; };  // below the last score
    EXPECT_TRUE(again<root>(failing));
    EXPECT_FALSE(again<root>([=] { failing(), alfa0 = 0.5; }));
    EXPECT_FALSE(again<root>([=] { failing(), DEEP9 = 1; }));
    // Above depth 9 the value is 0.
    EXPECT_FALSE(again<root>([=] { failing(), alfa0 = 5; }, 11));
    EXPECT_TRUE(again<root>([=] { failing(), alfa0 = 5; }, 9));
  });
}

TEST(CappedSearch, InTheRestPassStandsUnlessItBeatsTheBestByAThousandth) {
  each_colour([]<Cor root>() {
    EXPECT_FALSE(again<root>([] { SCANT = 1, ALFA0 = -3, alfa0 = v; }));
    EXPECT_TRUE(again<root>([] { SCANT = 1, ALFA0 = -3, alfa0 = 0.5; }));
    // 0.999 as a float lies a hair above: the sum is above 1 in double, though not as a float.
    EXPECT_FALSE(again<root>([] { SCANT = 1, ALFA0 = -3, alfa0 = 0.999F; }));
    EXPECT_TRUE(again<root>([] { SCANT = 1, ALFA0 = -3, alfa0 = 0.9989F; }));
  });
}

TEST(CappedSearch, InTheRestPassStandsAtTheCapThatPly2HadBefore) {
  each_colour([]<Cor root>() {
    EXPECT_FALSE(again<root>([] { SCANT = 1, ALFA0 = -3, alfa0 = 0, MAXcut[2] = v; }));
    EXPECT_TRUE(again<root>([] { SCANT = 1, ALFA0 = -3, alfa0 = 0, MAXcut[2] = v + 0.5F; }));
  });
}

// --- Caps of the capped search ---

template <Cor root, class F>
std::array<float, 24> caps_after(F set) {
  at_depth(told_for<root>(locked), 1);
  PVS = 1;
  for (std::size_t n = 0; n < 24; ++n) {
    MAXcutt[n] = 1000 + static_cast<float>(n);
    MAXcut[n] = 500;
  }
  set();
  first_ply<root>("d1e1");
  EXPECT_EQ(LMRtest, 0) << "the value stands, and with it the caps";
  return MAXcut;
}

void expect_even_caps(const std::array<float, 24>& caps, float even) {
  EXPECT_EQ(caps[0], 500) << "the root's";
  EXPECT_EQ(caps[1], 500);
  for (std::size_t n = 2; n < 24; n += 2) EXPECT_EQ(caps[n], even) << n;
}

TEST(CappedSearch, InTheSinglePassCapsTheEvenPliesAtTheLastScorePlus5) {
  each_colour([]<Cor root>() {
    expect_even_caps(caps_after<root>([] { SCAN1 = 1, alfa0 = 0, ALFA0 = 40; }), 45);
    expect_even_caps(caps_after<root>([] { SCAN1 = 1, alfa0 = 0, ALFA0 = 600; }), 605);
    const auto tight = caps_after<root>([] { SCAN1 = 1, alfa0 = 0, ALFA0 = 40, MAXcutt[6] = 7; });
    EXPECT_EQ(tight[6], 7) << "a saved cap that is lower stays";
    EXPECT_EQ(tight[8], 45);
  });
}

TEST(CappedSearch, InTheRestPassCapsThemJustAboveTheBestWhileThatHolds) {
  each_colour([]<Cor root>() {
    const auto after = [](float best, float last) {
      return caps_after<root>([=] { SCANT = 1, alfa0 = best, ALFA0 = last, MAXcut[2] = -500; });
    };
    expect_even_caps(after(5, 900), static_cast<float>(5 + 0.001));
    expect_even_caps(after(3.25, 8.25), static_cast<float>(3.25 + 0.001));
    EXPECT_EQ(after(3.25, 8.5)[4], 500) << "more than 5 below the last score";
    expect_even_caps(after(-15, -10), static_cast<float>(-15 + 0.001));
    EXPECT_EQ(after(-15.5, -12)[4], 500) << "below -15";
  });
}

// --- The second search ---

TEST(SecondSearch, RunsAtFullDepthUncappedByItself) {
  each_colour([]<Cor root>() {
    at_depth(told_for<root>(locked), 9);
    PVS = 1;
    SCANT = 1;
    alfa0 = -1;  // the value 0 beats it
    ALFA0 = -3;
    const auto seen = readings<root>("d1e1");
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].capped, 1);
    EXPECT_EQ(seen[0].second, 0);
    EXPECT_EQ(seen[1].capped, 0);
    EXPECT_EQ(seen[1].second, 1);
    const float null_window = static_cast<float>(-1 + 0.001);
    EXPECT_EQ(seen[0].caps[2], null_window);
    EXPECT_EQ(seen[1].caps[2], null_window) << "nothing lifts the null window";
    EXPECT_EQ(curr, 1);
  });
}

TEST(SecondSearch, IsUnmarkedAtTheNextMove) {
  at_depth(locked, 1);
  LMRtest = 1;
  first_ply<Cor::b>("d1e1");
  EXPECT_EQ(LMRtest, 0);
}

// --- The best move fails ---

struct Fallen {
  float alfa0, E;
};

// The single pass at depth 9: the value 0 has failed at or below alfa0.
template <Cor root, class F>
Fallen after_failure(float best, float sum, F change) {
  at_depth(told_for<root>(locked), 9);
  PVS = 1;
  SCAN1 = 1;
  alfa0 = best;
  E = sum;
  ALFA0 = 20;
  change();
  first_ply<root>("d1e1");
  return {alfa0, E};
}

TEST(FailedBestMove, OpensTheWindowBy75) {
  each_colour([]<Cor root>() {
    const Fallen f = after_failure<root>(80, 90, [] {});
    EXPECT_EQ(f.alfa0, 5);
    EXPECT_EQ(f.E, 15);
    EXPECT_EQ(beta1, 0);
  });
}

TEST(FailedBestMove, ThatFallsBelowMinus15OpensItWide) {
  each_colour([]<Cor root>() {
    const Fallen below = after_failure<root>(59.5, 90, [] {});
    EXPECT_EQ(below.alfa0, -16500);
    EXPECT_EQ(below.E, no_best);
    const Fallen at = after_failure<root>(60, 90, [] {});
    EXPECT_EQ(at.alfa0, -15);
    EXPECT_EQ(at.E, 15);
  });
}

TEST(FailedBestMove, OfASearchThatIsBehindTheMaterialOpensItWide) {
  each_colour([]<Cor root>() {
    // With equal totals the least that E must be is the balance less 15.
    const Fallen enough = after_failure<root>(80, 90, [] { materialflot0 = 30; });
    EXPECT_EQ(enough.alfa0, 5) << "15 is left, and 15 is asked";
    const Fallen less = after_failure<root>(80, 90, [] { materialflot0 = 30.5; });
    EXPECT_EQ(less.alfa0, -16500) << "15 is left, and 15.5 is asked";
    EXPECT_EQ(less.E, no_best);
    const Fallen behind = after_failure<root>(80, 14, [] { materialflot0 = 30; });
    EXPECT_EQ(behind.alfa0, -16500) << "not lowered first";
    const Fallen taken = after_failure<root>(80, 90, [] { peca = root == Cor::b ? 31 : -31; });
    EXPECT_EQ(taken.alfa0, -16500) << "a man just taken counts as balance";
  });
}

TEST(FailedBestMove, StandsForDepth9TheSinglePassAndFewMenOnly) {
  each_colour([]<Cor root>() {
    EXPECT_EQ(after_failure<root>(80, 90, [] { DEEP9 = 1; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(80, 90, [] { deep = DEEP = 11; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(80, 90, [] { deep = DEEP = 7; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(80, 90, [] { SCAN1 = 0, SCANT = 1; }).alfa0, 80);
    EXPECT_EQ(after_failure<root>(-0.5, 90, [] {}).alfa0, -0.5) << "the move did not fail";
  });
}

TEST(FailedBestMove, OfADirectSearchIsJudgedByTheShallowValue) {
  each_colour([]<Cor root>() { EXPECT_EQ(after_failure<root>(80, 90, [] { PVS = 0; }).alfa0, 5); });
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
  });
}

// --- The order of the replies ---

// The first reply refutes the move, so that it is the one stored.
template <Cor root>
void expect_first_reply(const std::string& fen, const referee::Move& m) {
  const referee::Position p = referee::Position::from_fen(fen);
  const auto replies = expected::order_at_the_first_ply(p.after(m));
  if (replies.empty()) return;
  at_depth(fen, 1);
  MAXcut[1] = -20000;
  const Lance l = {referee::file_of(m.from), referee::rank_of(m.from), referee::file_of(m.to),
                   referee::rank_of(m.to)};
  deep1<root>(l.aa, l.bb, l.cc, l.dd);
  const referee::Move& r = replies.front();
  const Lance reply = {referee::file_of(r.from), referee::rank_of(r.from), referee::file_of(r.to),
                       referee::rank_of(r.to)};
  ASSERT_EQ(nodes, 1U);
  const bool capture = p.after(m).at(r.to) != ' ';
  EXPECT_EQ((capture ? guardado_g : guardado)[1], reply) << "both kinds from first at this ply";
  EXPECT_EQ((capture ? guardado : guardado_g)[1], sem_lance);
}

TEST(FirstPly, TheFirstReplyTriedIsTheExpectedOne) {
  int tried = 0;
  for (const std::string& fen : referee::varied_fens()) {
    const referee::Position p = referee::Position::from_fen(fen);
    for (const referee::Move& m : p.legal_moves()) {
      if (m.promo != 0 && m.promo != 'q') continue;
      SCOPED_TRACE(m.text() + " in " + fen);
      if (p.white_to_move())
        expect_first_reply<Cor::b>(fen, m);
      else
        expect_first_reply<Cor::p>(fen, m);
      ++tried;
    }
  }
  EXPECT_GT(tried, 3000);
}

TEST(FirstPly, AStoredCaptureComesFirstByTheManThatStandsThere) {
  // Black to answer: b5 takes a4 or c4, c3 takes a4, d1 takes a1. By victims the rook comes first.
  constexpr std::string_view fen = "4k3/8/8/1p6/N1B5/2n5/5K2/R2r4 w - - 0 1";
  const auto first = [&](Lance capture) {
    at_depth(fen, 1);
    guardado_g[1] = capture;
    alfa0 = 16000;  // the first reply refutes
    first_ply<Cor::b>("f2g2");
    EXPECT_EQ(nodes, 1U);
    return linha[1];
  };
  const auto text = [](const Texto& t) { return std::string{t.A, t.B, t.C, t.D}; };
  EXPECT_EQ(text(first(sem_lance)), "d1a1");
  EXPECT_EQ(text(first({1, 4, 2, 3})), "b5c4");
  EXPECT_EQ(text(first({2, 2, 0, 3})), "c3a4");
  EXPECT_EQ(text(first({2, 2, 1, 3})), "d1a1") << "no capture any more";
  EXPECT_EQ(text(first({4, 4, 1, 3})), "d1a1") << "nobody stands there";
}

}  // namespace
}  // namespace korvu
