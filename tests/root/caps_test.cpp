// The score caps of one search: the mate ladder, and four schemes for what either side may gain.
// Expected numbers are worked out by hand; with the material quotient off they are whole.
#include "root/caps.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <iterator>
#include <random>
#include <vector>

#include "eval/knobs.h"
#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

constexpr std::array<float, 24> ladder = {15400, 15400, 14300, 14300, 13200, 13200, 12100, 12100,
                                          11000, 11000, 9900,  9900,  8800,  8800,  7700,  7700,
                                          6600,  6600,  5500,  5500,  4400,  4400,  3300,  3300};

// The ladder as a search has it: the last three of each side take the value before them.
std::array<float, 24> ladder_of_a_search() {
  std::array<float, 24> caps = ladder;
  caps[18] = caps[20] = caps[22] = caps[19] = caps[21] = caps[23] = 6600;
  return caps;
}

struct Balance {
  float own, other;
  int own_men, other_men;
  float mf;          // the balance the schemes look at
  int peca = 0;      // last capture of the game, as seen from the root: positive when it gained
  float weight = 0;  // of the material quotient
};

constexpr Balance even = {510, 510, 15, 15, 0};

template <Cor root>
std::array<float, 24> caps(int positive, int negative, const Balance& b) {
  at_root(told_for<root>(locked));
  Positive_filter = positive;
  Negative_filter = negative;
  positfilter = negatfilter = 100;
  material_da_raiz<root>() = b.own;
  material_da_raiz<outra(root)>() = b.other;
  npecas<root>() = b.own_men;
  npecas<outra(root)>() = b.other_men;
  materialflot0 = b.mf;
  peca = root == Cor::b ? b.peca : -b.peca;
  MQ = b.weight;
  MAXcut.fill(77);
  MAXcutt.fill(88);
  define_caps<root>();
  EXPECT_EQ(MAXcutt, MAXcut) << "saved";
  return MAXcut;
}

// Even and odd caps apart: the root side's and the other's.
void expect(const std::array<float, 24>& c, std::size_t first, std::initializer_list<float> top,
            float rest, const char* what) {
  std::size_t n = first;
  for (const float cap : top) {
    EXPECT_EQ(c[n], cap) << what << ", cap " << n;
    n += 2;
  }
  for (; n < 24; n += 2) EXPECT_EQ(c[n], rest) << what << ", cap " << n;
}
void expect_even(const std::array<float, 24>& c, float root, float w, const char* what = "") {
  expect(c, 0, {root, 14300, 13200}, w, what);
}
void expect_odd(const std::array<float, 24>& c, float v, const char* what = "") {
  expect(c, 1, {15400, 14300}, v, what);
}
void expect_even_ladder(const std::array<float, 24>& c, const char* what = "") {
  for (std::size_t n = 0; n < 24; n += 2) EXPECT_EQ(c[n], ladder_of_a_search()[n]) << what << n;
}
void expect_odd_ladder(const std::array<float, 24>& c, const char* what = "") {
  for (std::size_t n = 1; n < 24; n += 2) EXPECT_EQ(c[n], ladder_of_a_search()[n]) << what << n;
}

// --- The ladder ---

TEST(Caps, TheMateLadder) {
  for (int n = 0; n < 24; ++n) EXPECT_EQ(degrau_do_mate(n), ladder[static_cast<std::size_t>(n)]);
  MAXcut.fill(0);
  MAXcutt.fill(1);
  caps_de_mate();
  EXPECT_EQ(MAXcut, ladder);
  EXPECT_EQ(MAXcutt[5], 1) << "the saved caps stay";
  repoe_caps();
  EXPECT_EQ(MAXcut, MAXcutt);
}

TEST(Caps, WithoutFiltersAreTheLadderButForTheDeepestPlies) {
  each_colour([]<Cor root>() { EXPECT_EQ(caps<root>(0, 0, even), ladder_of_a_search()); });
}

TEST(Caps, OneFilterLeavesTheOtherSideAtTheLadder) {
  each_colour([]<Cor root>() {
    for (const int scheme : {1, 2, 3}) {
      expect_odd_ladder(caps<root>(scheme, 0, even));
      expect_even_ladder(caps<root>(0, scheme, even));
    }
  });
}

// --- The schemes by material balance ---

TEST(Caps, AManualFilterStandsAtItsMarginAboveTheBalance) {
  each_colour([]<Cor root>() {
    for (const float mf : {-90.0F, -33.0F, 0.0F, 50.0F, 90.0F}) {
      const auto c = caps<root>(1, 1, {510, 510, 15, 15, mf});
      expect_even(c, 15400, 100 + mf);
      expect_odd(c, 100 - mf);
    }
    const auto margins = [] {
      at_root(locked);
      Positive_filter = Negative_filter = 1;
      positfilter = 32;
      negatfilter = 50;
      MQ = 0;
      define_caps<root>();
      return MAXcut;
    }();
    expect_even(margins, 15400, 32);
    expect_odd(margins, 50);
  });
}

struct Row {
  float mf, positive_2, positive_3, negative_2, negative_3;
};
// Bands: up to -33, up to below 50, from 50; the third scheme's last from 90.
constexpr Row rows[] = {
    {-200, 1100, -150, 1100, 290}, {-34, 1100, 16, 1100, 124},
    {-33, 1100, 17, 1100, 123},    {-32.5, 67.5, -0.5, 132.5, 82.5},
    {0, 100, 32, 100, 50},         {49.5, 149.5, 81.5, 50.5, 0.5},
    {50, 140, 83, 40, -18},        {89.5, 179.5, 122.5, 0.5, -57.5},
    {90, 180, 100, 0, -57},        {300, 390, 310, -210, -267},
};

TEST(Caps, ByBalance) {
  each_colour([]<Cor root>() {
    for (const Row& r : rows) {
      SCOPED_TRACE(r.mf);
      const Balance b = {510, 510, 10, 10, r.mf};
      const auto second = caps<root>(2, 2, b);
      expect_even(second, 15400, r.positive_2, "second scheme");
      expect_odd(second, r.negative_2, "second scheme");
      const auto third = caps<root>(3, 3, b);
      expect_even(third, 15400, r.positive_3, "third scheme");
      expect_odd(third, r.negative_3, "third scheme");
    }
  });
}

TEST(Caps, TheThirdSchemeAloneCapsTheRootWithMoreThan20Men) {
  each_colour([]<Cor root>() {
    for (const float mf : {-90.0F, 0.0F, 120.0F}) {
      EXPECT_EQ(caps<root>(3, 0, {510, 510, 11, 10, mf})[0], 33 + mf);
      EXPECT_EQ(caps<root>(3, 0, {510, 510, 10, 10, mf})[0], 15400);
      for (const int scheme : {0, 1, 2})
        EXPECT_EQ(caps<root>(scheme, 3, {510, 510, 15, 15, mf})[0], 15400);
    }
  });
}

TEST(Caps, AManJustTakenRaisesTheRootSidesCapsAlone) {
  each_colour([]<Cor root>() {
    const Balance b = {510, 510, 15, 15, 10, 32};
    for (const auto& [scheme, w] :
         {std::pair{1, 142.0F}, std::pair{2, 142.0F}, std::pair{3, 74.0F}}) {
      const auto c = caps<root>(scheme, 0, b);
      EXPECT_EQ(c[6], w) << scheme;
    }
    EXPECT_EQ(caps<root>(3, 0, b)[0], 75);
    EXPECT_EQ(caps<root>(0, 1, b)[5], 90);
    EXPECT_EQ(caps<root>(0, 2, b)[5], 90);
    EXPECT_EQ(caps<root>(0, 3, b)[5], 40);
    // Taken from the root side it lowers them.
    EXPECT_EQ(caps<root>(2, 0, {510, 510, 15, 15, 10, -50})[6], 60);
  });
}

TEST(Caps, TheQuotientOfTheTotalsCounts) {
  each_colour([]<Cor root>() {
    const Balance b = {400, 500, 10, 10, -20, 0, 7};
    const long double L = 7 * std::log(400.0L / 500.0L);
    const auto rounded = [](long double x) { return static_cast<float>(x); };
    EXPECT_EQ(caps<root>(1, 0, b)[6], rounded(100 - 20 + L));
    EXPECT_EQ(caps<root>(2, 0, b)[6], rounded(100 - 20 + L));
    EXPECT_EQ(caps<root>(3, 0, b)[6], rounded(32 - 20 + L));
    EXPECT_EQ(caps<root>(0, 1, b)[5], rounded(100 + 20 - L));
    EXPECT_EQ(caps<root>(0, 2, b)[5], rounded(100 + 20 - L));
    EXPECT_EQ(caps<root>(0, 3, b)[5], rounded(50 + 20 - L));
    EXPECT_EQ(quociente_da_raiz<root>(), L);
  });
}

// --- Lone sides ---

struct Lone {
  float total;
  int men;
};
constexpr Lone lone_sides[] = {{110, 0}, {142, 1}, {143, 1}, {174, 2}};
constexpr Lone others[] = {{120, 1}, {142, 2}, {143, 2}, {174, 1}, {174, 3}, {160, 1}, {175, 2}};

TEST(Caps, AgainstALoneSideTheSecondSchemeGoesForMate) {
  each_colour([]<Cor root>() {
    for (const Lone& l : lone_sides) {
      SCOPED_TRACE(l.total);
      const auto c = caps<root>(2, 2, {400, l.total, 5, l.men, 400 - l.total});
      if (l.total == 110)
        expect_even(c, 15400, 1100, "a bare king, and 160 against it");
      else
        expect_even_ladder(c);
      // The lone side may gain next to nothing.
      for (std::size_t n = 1; n < 24; n += 2) EXPECT_EQ(c[n], 33 - (400 - l.total)) << n;
    }
  });
}

TEST(Caps, ABareKingFacingLessThan160HasTheLadder) {
  each_colour([]<Cor root>() {
    expect_even_ladder(caps<root>(2, 0, {159, 110, 3, 0, 49}));
    expect_even(caps<root>(2, 0, {160, 110, 1, 0, 50}), 15400, 1100);
  });
}

TEST(Caps, ALoneRootSideIsCappedFromPly2) {
  each_colour([]<Cor root>() {
    for (const Lone& l : lone_sides) {
      SCOPED_TRACE(l.total);
      const float mf = l.total - 400;
      const Balance b = {l.total, 400, l.men, 5, mf};
      const auto second = caps<root>(2, 2, b);
      EXPECT_EQ(second[0], 15400) << "the root itself is not";
      for (std::size_t n = 2; n < 24; n += 2) EXPECT_EQ(second[n], 90 + mf) << n;
      expect_odd_ladder(second, "the other side may mate");
      const auto third = caps<root>(3, 3, b);
      for (std::size_t n = 0; n < 24; n += 2) EXPECT_EQ(third[n], 50 + mf) << n;
      expect_odd_ladder(third);
    }
  });
}

TEST(Caps, TheThirdSchemeKnowsALoneOtherSideInTheNegativeCapsOnly) {
  each_colour([]<Cor root>() {
    const auto c = caps<root>(3, 3, {400, 142, 5, 1, 258});
    expect_even(c, 15400, 268);
    for (std::size_t n = 1; n < 24; n += 2) EXPECT_EQ(c[n], 33 - 258) << n;
  });
}

TEST(Caps, BothSidesLoneTheRootSidesRuleComesLast) {
  each_colour([]<Cor root>() {
    const auto c = caps<root>(2, 2, {142, 143, 1, 1, -1});
    EXPECT_EQ(c[0], 15400);
    for (std::size_t n = 2; n < 24; n += 2) EXPECT_EQ(c[n], 89) << n;
    expect_odd_ladder(c);
  });
}

TEST(Caps, OtherTotalsAreNotLone) {
  each_colour([]<Cor root>() {
    for (const Lone& l : others) {
      SCOPED_TRACE(l.total);
      const float mf = l.total - 400;
      expect_even(caps<root>(2, 0, {400, l.total, 5, l.men, -mf}), 15400, 90 - mf);
      expect_odd(caps<root>(0, 2, {400, l.total, 5, l.men, -mf}), 90 + mf);
      expect_even(caps<root>(2, 0, {l.total, 400, l.men, 5, mf}), 15400, 1100);
      expect_odd(caps<root>(0, 2, {l.total, 400, l.men, 5, mf}), 1100);
    }
  });
}

TEST(Caps, TheManualSchemeKnowsNoLoneSide) {
  each_colour([]<Cor root>() {
    const auto c = caps<root>(1, 1, {400, 110, 5, 0, 290});
    expect_even(c, 15400, 390);
    expect_odd(c, -190);
  });
}

// --- Schemes side by side ---

TEST(Caps, EverySchemeGoesWithEveryOther) {
  each_colour([]<Cor root>() {
    const Balance b = {510, 500, 8, 8, 10};
    for (int positive = 0; positive < 4; ++positive)
      for (int negative = 0; negative < 4; ++negative) {
        SCOPED_TRACE(std::to_string(positive) + " with " + std::to_string(negative));
        const auto c = caps<root>(positive, negative, b);
        if (positive == 0)
          expect_even_ladder(c);
        else
          expect_even(c, 15400, positive == 3 ? 42 : 110);
        if (negative == 0)
          expect_odd_ladder(c);
        else
          expect_odd(c, negative == 3 ? 40 : 90);
      }
  });
}

// --- Against the rules told ply by ply ---

bool lone(float total, int men) {
  for (const Lone& l : lone_sides)
    if (total == l.total && (total == 110 || men == l.men)) return true;
  return false;
}

struct Told {
  int positive, negative;
  const Balance& b;
  double gain, loss;  // what the root side stands to gain and the other side to lose

  Told(int p, int n, const Balance& balance) : positive(p), negative(n), b(balance) {
    const double quotient =
        static_cast<double>(b.weight) * std::log(static_cast<double>(b.own) / b.other);
    gain = b.peca + b.mf + quotient;
    loss = -b.mf - quotient;
  }
  // The one of the values that the balance's band selects.
  double band(double behind, double level, double ahead, double far_ahead) const {
    return b.mf <= -33 ? behind : b.mf < 50 ? level : b.mf < 90 ? ahead : far_ahead;
  }
  bool root_lone() const { return lone(b.own, b.own_men); }
  bool other_lone() const { return lone(b.other, b.other_men); }
  static double rung(int n) { return ladder[static_cast<std::size_t>(n)]; }

  double even_cap(int n) const {
    if (n > 16) return even_cap(16);
    const bool deep_enough = n >= 6;
    if (positive == 1) return deep_enough ? 100 + gain : rung(n);
    if (positive == 2) {
      if (root_lone() && n > 0) return 90 + gain;
      if (!deep_enough) return rung(n);
      if (other_lone()) return b.other == 110 && b.own >= 160 ? 1100 : rung(n);
      return b.mf <= -33 ? 1100 : band(0, 100, 90, 90) + gain;
    }
    if (positive == 3) {
      if (root_lone()) return 50 + gain;
      if (deep_enough) return band(50, 32, 33, 10) + gain;
      return n == 0 && b.own_men + b.other_men > 20 ? 33 + gain : rung(n);
    }
    return rung(n);
  }
  double odd_cap(int n) const {
    if (n > 17) return odd_cap(17);
    const bool deep_enough = n >= 5;
    if (negative == 1) return deep_enough ? 100 + loss : rung(n);
    if (negative == 0 || root_lone()) return rung(n);
    if (other_lone()) return 33 + loss;
    if (!deep_enough) return rung(n);
    if (negative == 2) return b.mf <= -33 ? 1100 : band(0, 100, 90, 90) + loss;
    return band(90, 50, 32, 33) + loss;
  }
};

TEST(Caps, AgreeWithTheRulesOverManyBalances) {
  std::mt19937 dice(17);
  const auto one_of = [&](const auto& list) { return list[dice() % std::size(list)]; };
  const float totals[] = {110, 120, 142, 143, 159, 160, 174, 175, 330, 510};
  const int men[] = {0, 1, 2, 3, 10, 11, 15};
  const float balances[] = {-300, -34, -33, -32, 0, 49, 50, 89, 90, 400};
  const int taken[] = {0, 10, -33, 90};
  int lone_roots = 0, lone_others = 0;
  each_colour([&]<Cor root>() {
    for (int k = 0; k < 400; ++k) {
      const Balance b = {one_of(totals),
                         one_of(totals),
                         one_of(men),
                         one_of(men),
                         one_of(balances),
                         one_of(taken),
                         static_cast<float>(dice() % 11)};
      for (int positive = 0; positive < 4; ++positive) {
        const int negative = static_cast<int>(dice() % 4);
        const Told told(positive, negative, b);
        const auto c = caps<root>(positive, negative, b);
        for (int n = 0; n < 24; ++n)
          ASSERT_NEAR(c[static_cast<std::size_t>(n)],
                      n % 2 == 0 ? told.even_cap(n) : told.odd_cap(n), 1e-3)
              << "cap " << n << ", schemes " << positive << ' ' << negative << ", " << b.own << " ("
              << b.own_men << ") to " << b.other << " (" << b.other_men << "), balance " << b.mf
              << ", taken " << b.peca << ", weight " << b.weight;
        lone_roots += told.root_lone();
        lone_others += told.other_lone();
      }
    }
  });
  EXPECT_GT(lone_roots, 300);
  EXPECT_GT(lone_others, 300);
}

}  // namespace
}  // namespace korvu
