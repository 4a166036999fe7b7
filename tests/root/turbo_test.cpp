// How the first ply narrows the caps of the even plies, row by row. In the locked position every
// search is worth 0, the shallow one too.
#include <gtest/gtest.h>

#include <array>

#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

// Even caps before the move, and the saved ones that a row copies back before it narrows.
constexpr float before = 555, saved = 900;

struct State {
  int depth;
  float G, A, F, m;  // best so far, alfa, last pass, material balance
};

template <Cor root, class F>
float cap_after(const State& s, F change) {
  at_root(told_for<root>(locked));
  deep = DEEP = s.depth;
  TURBO = 1;
  E = s.G;
  alfa0 = s.A;
  ALFA0 = s.F;
  materialflot0 = s.m;
  for (std::size_t n = 0; n < 24; ++n) {
    MAXcut[n] = before;
    MAXcutt[n] = saved;
  }
  change();
  first_ply<root>("d1e1");
  EXPECT_EQ(MAXcut[0], before);
  for (std::size_t n = 4; n < 24; n += 2) EXPECT_EQ(MAXcut[n], MAXcut[2]) << n;
  EXPECT_EQ(MAXcut[1], before);
  return MAXcut[2];
}

template <Cor root>
float cap_after(const State& s) {
  return cap_after<root>(s, [] {});
}

// Out of the reach of every condition on alfa.
constexpr float badly = -100;

TEST(Turbo, Row1CapsAt33AboveABestNotFarBehindTheMaterial) {
  each_colour([]<Cor root>() {
    for (const int depth : {5, 7, 9, 11}) {
      EXPECT_EQ((cap_after<root>({depth, 7, badly, badly, 40})), 40) << depth;
      EXPECT_EQ((cap_after<root>({depth, 6.5, badly, badly, 40})), before) << depth;
    }
    EXPECT_EQ((cap_after<root>({5, 880, badly, badly, 900})), saved) << "a lower saved cap stays";
  });
}

TEST(Turbo, ACaptureJustMadeCountsAsMaterialByTheRootsColour) {
  each_colour([]<Cor root>() {
    const auto with = [](int p) {
      return cap_after<root>({5, 7, badly, badly, 30}, [=] { peca = root == Cor::b ? p : -p; });
    };
    EXPECT_EQ(with(10), 40);
    EXPECT_EQ(with(32), before);
    EXPECT_EQ(with(-32), 40);
  });
}

TEST(Turbo, Row3AtDepth9CapsAt9) {
  each_colour([]<Cor root>() {
    // The best lies 15 behind the material; alfa is no worse than the last pass.
    EXPECT_EQ((cap_after<root>({9, -20, -15, -15, -5})), -11);
    EXPECT_EQ((cap_after<root>({9, -20, -15, -15, -4.5})), 13) << "row 1 alone: more than 15";
    EXPECT_EQ((cap_after<root>({9, -20, -15.5, -16, -5})), 13) << "alfa below -15";
    EXPECT_EQ((cap_after<root>({9, -20, -15, -14.5, -5})), 13) << "alfa below the last pass";
    EXPECT_EQ((cap_after<root>({9, -20, 5, 900, -5})), -11) << "alfa at 5 is well in any case";
    EXPECT_EQ((cap_after<root>({9, -20, 4.5, 900, -5})), 13);
    EXPECT_EQ((cap_after<root>({11, -20, -15, -15, -5})), 13) << "another depth";
    EXPECT_EQ((cap_after<root>({7, -20, -15, -15, -5})), 13);
  });
}

// With the best below the shallow value the last row allows 7, so that rows 4 and 5 show.
TEST(Turbo, Row4AtDepth9CapsAt5) {
  each_colour([]<Cor root>() {
    EXPECT_EQ((cap_after<root>({9, -20, -5, -5, -15})), -15);
    EXPECT_EQ((cap_after<root>({9, -20, -5, -5, -14.5})), -13) << "more than 5 behind";
    EXPECT_EQ((cap_after<root>({9, -20, -5.5, -5.5, -15})), -13) << "alfa below -5";
    EXPECT_EQ((cap_after<root>({9, -20, -5, -4.5, -15})), -13) << "alfa below the last pass";
    EXPECT_EQ((cap_after<root>({11, -20, -5, -5, -15})), -13) << "another depth";
  });
}

TEST(Turbo, Row5AtDepth9CapsAt3) {
  each_colour([]<Cor root>() {
    EXPECT_EQ((cap_after<root>({9, -20, 0, 0, -20})), -17);
    EXPECT_EQ((cap_after<root>({9, -20, 0, 0, -19.5})), -15) << "behind the material: row 4";
    EXPECT_EQ((cap_after<root>({9, -20, -0.5, -0.5, -20})), -15) << "alfa below 0: row 4";
    EXPECT_EQ((cap_after<root>({9, -20, 5, 900, -20})), -17);
    EXPECT_EQ((cap_after<root>({11, -20, 0, 0, -20})), -13) << "another depth";
  });
}

TEST(Turbo, Row6WithManyMenAtDepth9CapsAt1) {
  each_colour([]<Cor root>() {
    const auto with = [](const State& s) { return cap_after<root>(s, [] { DEEP9 = 1; }); };
    EXPECT_EQ(with({9, -50, -15, 900, 900}), -49) << "whatever the material";
    EXPECT_EQ(with({9, -50, -15.5, 900, 900}), before);
    EXPECT_EQ(with({11, -50, -15, 900, 900}), before);
    EXPECT_EQ(with({7, -50, -15, 900, 900}), before);
  });
}

TEST(Turbo, Rows7To9NarrowByTheShallowValue) {
  each_colour([]<Cor root>() {
    for (const int depth : {7, 11}) {
      // The best 10 behind the material, alfa 5 behind the last pass.
      EXPECT_EQ((cap_after<root>({depth, 4, -15, -10, 14})), 5) << "the move promises less";
      EXPECT_EQ((cap_after<root>({depth, 0, -15, -10, 10})), 3) << "as much";
      EXPECT_EQ((cap_after<root>({depth, -4, -15, -10, 6})), 3) << "more: 7 above -4";
      EXPECT_EQ((cap_after<root>({depth, 4, -15, -10, 14.5})), 37) << "row 1: too far behind";
      EXPECT_EQ((cap_after<root>({depth, 4, -15.5, -15, 14})), 37) << "alfa below -15";
      EXPECT_EQ((cap_after<root>({depth, 4, -15, -9.5, 14})), 37) << "more than 5 down";
      EXPECT_EQ((cap_after<root>({depth, 4, 5, 900, 14})), 5) << "alfa at 5";
    }
  });
}

TEST(Turbo, Rows7To9NeedTheShallowSearch) {
  each_colour([]<Cor root>() { EXPECT_EQ((cap_after<root>({5, 4, 5, 5, 4})), 37); });
}

TEST(Turbo, Rows7To9OnlyLower) {
  each_colour([]<Cor root>() {
    // The saved caps lie below what the rows allow.
    EXPECT_EQ((cap_after<root>({11, 4, 5, 5, 4}, [] { MAXcutt.fill(2); })), 2);
    // Row 6 has set 1 above the best, and row 9 would allow 7.
    EXPECT_EQ((cap_after<root>({9, -20, -15, -10, -20}, [] { DEEP9 = 1; })), -19);
  });
}

TEST(Turbo, TheShallowSearchHasRow1Alone) {
  // A mate seen by the shallow search ends the node with the caps as that search had them: row 6
  // would have set them otherwise.
  each_colour([]<Cor root>() {
    const auto after = [](float balance) {
      at_root(told_for<root>("7k/8/6KQ/8/8/8/8/8 w - - 0 1"));
      deep = DEEP = 9;
      TURBO = DEEP9 = 1;
      E = 7;
      alfa0 = 0;
      ALFA0 = 0;
      materialflot0 = balance;
      MAXcut.fill(before);
      MAXcutt.fill(saved);
      first_ply<root>("h6g7");
      return MAXcut[2];
    };
    EXPECT_EQ(after(40), 40);
    EXPECT_EQ(after(40.5), before);
  });
}

TEST(Turbo, SwitchedOffNarrowsNothing) {
  each_colour([]<Cor root>() {
    for (const int depth : {5, 9, 11})
      EXPECT_EQ((cap_after<root>({depth, 4, 5, 5, 4}, [] { TURBO = 0; })), before);
  });
}

}  // namespace
}  // namespace korvu
