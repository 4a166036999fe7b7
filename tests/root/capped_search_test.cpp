// The capped search of a root move: whether its value stands, the caps it sets, and the second
// search.
#include <gtest/gtest.h>

#include <array>

#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

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

TEST(CappedSearch, InTheRestPassStandsAtACapThatTheBestScoreNarrowed) {
  each_colour([]<Cor root>() {
    const auto narrowed_to = [](float cap) {
      SCANT = TURBO = 1;
      ALFA0 = -3;
      alfa0 = 0;
      E = cap - 33;  // no worse than 33 behind the material
      materialflot0 = 0;
    };
    EXPECT_FALSE(again<root>([=] { narrowed_to(v); }));
    EXPECT_TRUE(again<root>([=] { narrowed_to(v + 0.5F); }));
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

TEST(CappedSearch, ItsCapsTakeThePlaceOfThoseThatTheBestScoreNarrowed) {
  each_colour([]<Cor root>() {
    const auto narrowed = [] { TURBO = 1, E = 0, materialflot0 = 0; };  // to 33
    expect_even_caps(caps_after<root>([=] { narrowed(), SCAN1 = 1, alfa0 = 0, ALFA0 = 40; }), 45);
    expect_even_caps(caps_after<root>([=] { narrowed(), SCANT = 1, alfa0 = 50, ALFA0 = 50; }),
                     static_cast<float>(50 + 0.001));
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

TEST(SecondSearch, HasTheCapsOfTheBestScoreWhereThatNarrowsThem) {
  each_colour([]<Cor root>() {
    for (const bool narrows : {true, false}) {
      at_depth(told_for<root>(locked), 11);
      PVS = SCANT = TURBO = 1;
      alfa0 = -1;  // the value 0 beats it
      ALFA0 = -3;
      MAXcutt.fill(900);
      materialflot0 = 0;
      E = narrows ? -20 : -34;
      const auto seen = readings<root>("d1e1");
      ASSERT_EQ(seen.size(), 2U);
      EXPECT_EQ(seen[0].capped, 1);
      EXPECT_EQ(seen[1].second, 1);
      const float null_window = static_cast<float>(-1 + 0.001);
      EXPECT_EQ(seen[0].caps[2], null_window);
      EXPECT_EQ(seen[1].caps[2], narrows ? 13 : null_window);
    }
  });
}

TEST(SecondSearch, IsUnmarkedAtTheNextMove) {
  at_depth(locked, 9);
  LMRtest = PVSm = 1;
  const auto seen = readings<Cor::b>("d1e1");
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen[0].second, 0);
  EXPECT_EQ(seen[0].capped, 0);
}

}  // namespace
}  // namespace korvu
