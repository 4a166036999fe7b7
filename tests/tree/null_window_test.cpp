// The null window of ply 2: caps of the odd plies that end every node of the opponent which cannot
// lift the root move above what ply 1 has already; and the full search when that fails.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "memory/ply_tables.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// What a clock reader at ply 7 sees in one run of the node; every value is 0.
struct Window {
  std::array<float, 24> caps;
  int flag;  // PVSm2
};

template <Cor cor>
std::vector<Window> runs() {
  std::vector<Window> seen;
  TC = 1;
  clock_says([&] {
    if (seen.empty() || seen.back().flag != PVSm2) seen.push_back({MAXcut, PVSm2});
    return 0;
  });
  enter<2, cor>("d1e1");
  return seen;
}

template <Cor cor>
void prepare(float beta1_) {
  stand(1, told_for<cor>(locked));
  PVS = 1;
  deep = DEEP = 9;
  beta[1] = beta1_;
  for (std::size_t n = 0; n < MAXcut.size(); ++n)
    MAXcut[n] = MAXcutt[n] = 1000 + static_cast<float>(n);
}

TEST(NullWindow, CapsTheOddPliesFrom3AtOneBelowTheValueOfPly1) {
  each_colour([]<Cor cor>() {
    for (const float best : {0.5F, 40.0F}) {
      prepare<cor>(best);
      const std::vector<Window> seen = runs<cor>();
      ASSERT_FALSE(seen.empty());
      EXPECT_EQ(seen[0].flag, 1);
      for (std::size_t n = 0; n < 24; ++n) {
        const bool capped = n >= 3 && n % 2 != 0;
        EXPECT_EQ(seen[0].caps[n], capped ? 1 - best : 1000 + static_cast<float>(n)) << n;
      }
    }
  });
}

TEST(NullWindow, ACapThatIsTighterAlreadyStays) {
  each_colour([]<Cor cor>() {
    prepare<cor>(0.5);
    MAXcut[5] = 0.5;   // just what the window would set
    MAXcut[9] = 0.25;  // tighter
    MAXcut[11] = 0.75;
    const std::vector<Window> seen = runs<cor>();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen[0].caps[5], 0.5);
    EXPECT_EQ(seen[0].caps[9], 0.25);
    EXPECT_EQ(seen[0].caps[11], 0.5);
  });
}

TEST(NullWindow, TheOddCapsFrom3GoBackToTheirSavedValues) {
  each_colour([]<Cor cor>() {
    prepare<cor>(0.5);
    for (std::size_t n = 0; n < 24; ++n) MAXcutt[n] = 2000 + static_cast<float>(n);
    enter<2, cor>("d1e1");
    for (std::size_t n = 0; n < 24; ++n) {
      const bool put_back = n >= 3 && n % 2 != 0;
      EXPECT_EQ(MAXcut[n], (put_back ? 2000 : 1000) + static_cast<float>(n)) << n;
    }
    EXPECT_EQ(PVSm2, 0);
  });
}

TEST(NullWindow, DoesNotStandWithoutPvsOrWithoutAValueOfPly1) {
  each_colour([]<Cor cor>() {
    for (const bool pvs : {false, true}) {
      prepare<cor>(pvs ? start_beta : 0.5F);
      PVS = pvs;
      const std::vector<Window> seen = runs<cor>();
      EXPECT_FALSE(seen.empty());
      for (const Window& r : seen) {
        EXPECT_EQ(r.flag, 0);
        EXPECT_EQ(r.caps[3], 1003);
      }
      EXPECT_EQ(currN[2], 1);
    }
  });
}

TEST(NullWindow, AValueAboveTheWindowEndsTheNode) {
  each_colour([]<Cor cor>() {
    prepare<cor>(0.5);  // 0 lies above -0.5
    const std::vector<Window> seen = runs<cor>();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].flag, 1);
    EXPECT_EQ(currN[2], 1);
    EXPECT_EQ(alfa[2], 0);
  });
}

TEST(NullWindow, AValueThatFailsItIsSearchedAgainWithTheFullWindow) {
  each_colour([]<Cor cor>() {
    for (const float best : {1.0F, 40.0F}) {  // 0 is not above 0, nor above 39
      prepare<cor>(best);
      const std::vector<Window> seen = runs<cor>();
      ASSERT_EQ(seen.size(), 2U);
      EXPECT_EQ(seen[0].flag, 1);
      EXPECT_EQ(seen[1].flag, 0);
      EXPECT_EQ(seen[1].caps[3], 1003);
      EXPECT_EQ(currN[2], 2) << "counted a second time";
    }
  });
}

TEST(NullWindow, AValueAtTheCapOfPly1EndsTheNodeTooByTheSavedCap) {
  each_colour([]<Cor cor>() {
    prepare<cor>(40);
    MAXcutt[1] = 0;
    const std::vector<Window> at_the_cap = runs<cor>();
    EXPECT_EQ(at_the_cap.size(), 1U);
    EXPECT_EQ(currN[2], 1);
    prepare<cor>(40);
    MAXcut[1] = 0;
    MAXcutt[1] = 0.5;
    EXPECT_EQ((runs<cor>().size()), 2U) << "the cap in force is not asked";
  });
}

TEST(NullWindow, WritesItsMarkIntoTheTables) {
  each_colour([]<Cor cor>() {
    prepare<cor>(0.5);
    limpa_tabelas<outra(cor)>();
    HASHf = 1;
    deep = 3;
    enter<2, cor>("d1e1");
    // The child's record: the king's step to the right, with the bounds of ply 3 as they were.
    constexpr Lance reply = move_of<cor>("d8e8");
    init_tabuleiro2_deep<2, outra(cor)>(reply.aa, reply.bb, reply.cc, reply.dd);
    ChaveDeBusca key{0, 1, start_alfa, 0.5, 3};
    EXPECT_NE((tabela_de<3, outra(cor)>().procura(key)), nullptr);
    key.PVSm2 = 0;
    EXPECT_EQ((tabela_de<3, outra(cor)>().procura(key)), nullptr);
  });
}

TEST(NullWindow, AReductionFoundWrongIsRedoneInTheNullWindow) {
  each_colour([]<Cor cor>() {
    prepare<cor>(0.5);
    LMR = 1;
    deep = DEEP = 11;  // ply 7 reads the clock two plies short and again
    std::vector<std::pair<int, int>> seen;
    TC = 1;
    clock_says([&] {
      if (seen.empty() || seen.back() != std::pair<int, int>{deep, PVSm2})
        seen.emplace_back(deep, PVSm2);
      return 0;
    });
    enter<2, cor>("d1e1");
    EXPECT_EQ(AmrT[2], 1) << "found wrong";
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front().first, 9);
    for (const auto& reading : seen) EXPECT_EQ(reading.second, 1);
    EXPECT_EQ(currN[2], 1) << "no new count for the redone search";
    EXPECT_EQ(MAXcut[3], 1003);
  });
}

}  // namespace
}  // namespace korvu
