// Which leaves get a value that only tells on which side of a bound they fall. Told for even
// leaves, whose root side has its bounds in alfa; odd leaves and beta are the same with signs
// changed.
#include "tree/indifference.h"

#include <gtest/gtest.h>

#include <limits>

#include "eval/leaf.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// Bounds open, caps out of reach.
void open_line() {
  stand(0, locked);
}

// For a leaf of ply N, the bound of a ply as seen from the side whose gain it limits: a leaf at or
// below it is no gain. Even plies limit from below, odd ones from above.
bool cannot_matter(int bound_ply, int leaf_parity, float value) {
  const auto ask = [&]<int N>() {
    return bound_ply % 2 == 0 ? nao_chega<N>(value) : passa<N>(-value);
  };
  return leaf_parity == 0 ? ask.operator()<12>() : ask.operator()<13>();
}
void set_bound(int ply, float v) {
  value(ply) = ply % 2 == 0 ? v : -v;
}

TEST(Indifference, ALeafAtABoundOrBeyondItCannotMatter) {
  for (const int parity : {0, 1})
    for (int ply = 3; ply <= 11; ++ply) {
      SCOPED_TRACE("bound of ply " + std::to_string(ply) + ", leaf " + std::to_string(parity));
      open_line();
      EXPECT_FALSE(cannot_matter(ply, parity, 5));
      set_bound(ply, 5);
      EXPECT_TRUE(cannot_matter(ply, parity, 5));
      EXPECT_TRUE(cannot_matter(ply, parity, 4.5));
      EXPECT_FALSE(cannot_matter(ply, parity, 5.25));
    }
}

// The first plies' values are read by the root, and those of ply 3 are always written down.
TEST(Indifference, BoundsOfTheFirstPliesDoNotCount) {
  for (const int parity : {0, 1})
    for (int ply = 0; ply <= 2; ++ply) {
      open_line();
      set_bound(ply, 5);
      EXPECT_FALSE(cannot_matter(ply, parity, 4)) << ply;
    }
}

TEST(Indifference, BoundsAboveANodeToBeWrittenDownDoNotCount) {
  for (const int parity : {0, 1})
    for (int ply = 3; ply <= 11; ++ply) {
      open_line();
      registros_a_fazer = 1;
      set_bound(ply, 5);
      EXPECT_EQ(cannot_matter(ply, parity, 4), ply >= 5) << ply;
    }
}

// A node on the way that the value ends by its cap, or not: its exact value tells which.
TEST(Indifference, ACapOnTheWayThatTheValueMayReachMakesItMatter) {
  for (const int parity : {0, 1})
    for (int ply = 3; ply <= 8; ++ply)
      for (int between = ply + 2; between <= 11; between += 2) {
        SCOPED_TRACE("bound of ply " + std::to_string(ply) + ", cap of " + std::to_string(between));
        open_line();
        set_bound(ply, 5);
        MAXcut[static_cast<std::size_t>(between)] = 4;
        EXPECT_TRUE(cannot_matter(ply, parity, 3.5));
        EXPECT_FALSE(cannot_matter(ply, parity, 4));
        MAXcut[static_cast<std::size_t>(between)] = 1000;
        MAXcut[static_cast<std::size_t>(ply)] = 1;
        EXPECT_TRUE(cannot_matter(ply, parity, 4)) << "the bound's own cap is no matter";
      }
}

TEST(Indifference, ANearerBoundDecidesWhateverStandsAbove) {
  open_line();
  set_bound(10, 5);
  MAXcut[8] = -100;
  registros_a_fazer = 1;
  EXPECT_TRUE(nao_chega<12>(5));
}

// The vertical filter of ply 7 takes no mate for its bound, and then reads what stands below it.
TEST(Indifference, AMateIsABoundForTheNextNodeOnly) {
  open_line();
  alfa[6] = limiar_de_mate;
  EXPECT_TRUE(nao_chega<8>(5));
  EXPECT_FALSE(nao_chega<10>(5));
  alfa[6] = limiar_de_mate - 1;
  EXPECT_TRUE(nao_chega<10>(5));
}

// --- In the tree ---

constexpr std::string_view middle =
    "3qk2r/1pp2ppp/r1npbn2/4p3/2BRP3/3P4/PPP2PPP/1NBQK1NR w - - 0 1";
constexpr float no_scan = 31337;

template <int N>
void leaf() {
  stand(N - 1, middle);
  EXTRA_EVAL = 1;
  totals<Cor::b>(N - 1, 400, 400);
  deep = N - 1;
  DEEP = 25;
}

// The correction of that leaf, whose material value is 0.
template <int N>
float exact() {
  leaf<N>();
  enter<N, Cor::b>("b1c3");
  return value(N);
}

TEST(Indifference, ALeafBelowTheBoundTellsJustThat) {
  const float right = exact<8>();
  leaf<8>();
  alfa[6] = right + 3;
  extraeval = no_scan;
  enter<8, Cor::b>("b1c3");
  EXPECT_EQ(extraeval, no_scan) << "no scan was needed";
  EXPECT_LE(alfa[8], alfa[6]);
  EXPECT_NEAR(alfa[8], right, 0.3);
}

TEST(Indifference, ALeafAboveTheBoundTellsJustThat) {
  const float right = exact<8>();
  leaf<8>();
  beta[5] = right - 3;
  extraeval = no_scan;
  enter<8, Cor::b>("b1c3");
  EXPECT_EQ(extraeval, no_scan);
  EXPECT_GE(alfa[8], beta[5]);
  EXPECT_NEAR(alfa[8], right, 0.3);
}

TEST(Indifference, ALeafNextToTheBoundIsScanned) {
  const float right = exact<8>();
  for (const float aside : {-0.01F, 0.0F, 0.01F}) {
    leaf<8>();
    alfa[6] = right + aside;
    extraeval = no_scan;
    enter<8, Cor::b>("b1c3");
    EXPECT_EQ(alfa[8], right);
    EXPECT_EQ(extraeval, right);
  }
}

// Its material alone tells that the correction cannot matter. Each ply takes a man at most, and
// with five men left nobody lacks material.
TEST(Indifference, ALeafFurtherFromABoundThanTheBudgetIsNotLookedAt) {
  struct Case {
    int men;
    bool looked_at;
  };
  const float right = exact<8>();
  for (const Case& c : {Case{12, true}, Case{13, false}, Case{30, false}}) {
    leaf<8>();
    npecasb = c.men - 6;
    npecasp = 6;
    beta[5] = -50;
    EMPAT = 1;
    enter<8, Cor::b>("b1c3");
    EXPECT_EQ(EMPAT == 0, c.looked_at) << c.men;
    EXPECT_GE(alfa[8], beta[5]);
    EXPECT_NEAR(alfa[8], c.looked_at ? right : -50, 0.3) << c.men;
  }
  leaf<8>();
  npecasb = npecasp = 15;
  beta[5] = -49.9F;
  enter<8, Cor::b>("b1c3");
  EXPECT_NEAR(alfa[8], right, 0.3) << "the budget reaches beyond the bound";
}

// Totals that an earlier game has left may make the material's quotient infinite, above every
// bound.
TEST(Indifference, ADrawStaysADrawWhateverItsMaterialIsWorth) {
  for (const float other : {0.0F, 110.0F, 1e-30F}) {
    stand(7, "4k3/8/5n2/8/8/8/8/1N2K3 w - - 0 1");
    EXTRA_EVAL = 1;
    totals<Cor::b>(7, other, 100);
    deep = 7;
    DEEP = 25;
    emp = -23;
    npecasb = npecasp = 1;
    beta[5] = -100;
    enter<8, Cor::b>("b1c3");
    EXPECT_EQ(alfa[8], -23) << other;
  }
}

// Nodes above tell mates from other values.
TEST(Indifference, AValueNextToAMateIsNotFarFromIt) {
  EXPECT_FALSE(longe_do_mate(limiar_de_mate - 51));
  EXPECT_FALSE(longe_do_mate(51 - limiar_de_mate));
  EXPECT_TRUE(longe_do_mate(limiar_de_mate - 52));
  EXPECT_FALSE(longe_do_mate(std::numeric_limits<float>::infinity()));
}

TEST(Indifference, ExactLeavesCanBeAskedFor) {
  const float right = exact<8>();
  leaf<8>();
  folhas_exatas = true;
  alfa[6] = right + 3;
  enter<8, Cor::b>("b1c3");
  EXPECT_EQ(alfa[8], right);
}

}  // namespace
}  // namespace korvu
