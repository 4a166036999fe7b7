// The passes of one search: their row and what ends them.
#include "root/driver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "memory/ply_tables.h"
#include "root/driver_lab.h"

namespace korvu {
namespace {

using namespace root_lab;
using tree_lab::clock_says;

// With the locked position's 16 men and a time usage of 3.
constexpr int soft = 3000, hard = 30000;

// White has one move, and after it Black has two.
constexpr std::string_view one_move = "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/K7 w - - 0 1";

template <Cor root>
std::string search(int depth, int limit = 9) {
  prepare(told_for<root>(locked), depth, limit);
  procura<root>();
  return passes();
}

// --- The row of passes ---

TEST(Driver, BelowDepth9OneRestPassAdmitsEveryMove) {
  each_colour([]<Cor root>() {
    for (const int depth : {1, 3, 5, 7}) {
      EXPECT_EQ(search<root>(depth), "T/" + std::to_string(depth) + ' ');
      ASSERT_EQ(reports().size(), 2U);
      EXPECT_EQ(reports()[0].curr, 1);
      EXPECT_EQ(reports()[1].curr, 2);
      EXPECT_EQ(deep, depth);
      EXPECT_NE(best_move(), "none");
    }
  });
}

TEST(Driver, AtDepth0TheMovesAreJudgedByMaterialWithoutAReport) {
  each_colour([]<Cor root>() {
    EXPECT_EQ(search<root>(0), "");
    EXPECT_EQ(nodes, 2U);
    EXPECT_NE(best_move(), "none");
    EXPECT_EQ(E, 0);
  });
}

TEST(Driver, Depth9IsThePrePassTheBestMoveAndTheRest) {
  each_colour([]<Cor root>() {
    EXPECT_EQ(search<root>(9), "1/9 T/9 ");
    ASSERT_EQ(reports().size(), 2U) << "the pre-pass reports nothing";
    EXPECT_EQ(reports()[0].curr, 1);
    EXPECT_EQ(reports()[1].curr, 2) << "the rest pass counts on";
    EXPECT_EQ(reports()[0].move, best_move());
    EXPECT_NE(reports()[1].move, best_move());
    EXPECT_EQ(deep, 9);
  });
}

TEST(Driver, TheDepthGrowsByTwoUpToTheLimit) {
  each_colour([]<Cor root>() {
    EXPECT_EQ((search<root>(9, 9)), "1/9 T/9 ");
    EXPECT_EQ((search<root>(9, 11)), "1/9 T/9 1/11 T/11 ");
    EXPECT_EQ((search<root>(9, 13)), "1/9 T/9 1/11 T/11 1/13 T/13 ");
    EXPECT_EQ((search<root>(9, 15)), "1/9 T/9 1/11 T/11 1/13 T/13 1/15 T/15 ");
    EXPECT_EQ(deep, 15);
  });
}

TEST(Driver, ALimitOf17IsNone) {
  EXPECT_EQ((search<Cor::b>(9, 17)),
            "1/9 T/9 1/11 T/11 1/13 T/13 1/15 T/15 1/17 T/17 1/19 T/19 1/21 T/21 1/23 T/23 ");
  EXPECT_EQ(deep, 23);
}

TEST(Driver, EveryPassCarriesItsNominalDepth) {
  search<Cor::b>(9, 13);
  for (const Report& r : reports()) EXPECT_EQ(r.DEEP, r.deep);
  EXPECT_EQ(DEEP, 13);
}

TEST(Driver, EverySinglePassCountsAfresh) {
  search<Cor::b>(9, 13);
  for (const Report& r : reports()) EXPECT_EQ(r.curr, r.single ? 1 : 2);
}

TEST(Driver, EveryPassBeginsWithTheSavedCaps) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(locked), 9, 11);
    TC = 1;
    // A reader of the clock at ply 7 spoils a cap whenever it finds the pass changed.
    std::vector<float> found;
    int last = -1;
    clock_says([&] {
      const int pass = 2 * deep + SCANT;
      if (pass != last) {
        found.push_back(MAXcut[20]);
        MAXcut[20] = 5;
        last = pass;
      }
      return 0;
    });
    procura<root>();
    ASSERT_EQ(found.size(), 4U);
    for (const float cap : found) EXPECT_EQ(cap, 6600);
  });
}

TEST(Driver, APassBeginsWithoutCastlingMarks) {
  each_colour([]<Cor root>() {
    for (const int depth : {5, 9}) {
      prepare(told_for<root>(locked), depth);
      roque_b = roque_p = 7;
      procura<root>();
      EXPECT_EQ(reports()[0].roque_b, 0);
      EXPECT_EQ(reports()[0].roque_p, 0);
    }
  });
}

TEST(Driver, AnEndLeftByAnEarlierSearchEndsNothing) {
  each_colour([]<Cor root>() {
    for (const int depth : {5, 9}) {
      prepare(told_for<root>(locked), depth);
      corte_MAXcut = 1;  // a mate was played, or the time was up
      procura<root>();
      EXPECT_EQ(passes(), depth == 5 ? "T/5 " : "1/9 T/9 ");
    }
  });
}

// --- One move, or none ---

TEST(Driver, WithOneMoveThePrePassIsEnough) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(one_move), 9, 17);
    pempatee = 1;
    procura<root>();
    EXPECT_TRUE(reports().empty());
    EXPECT_EQ(best_move(), written<root>("a1b1"));
    EXPECT_EQ(curr, 1);
    EXPECT_EQ(deep, 9) << "put back";
    EXPECT_EQ(DEEP, 7) << "the depth of the pre-pass";
    EXPECT_EQ(pempatee, 0) << "it looks for no repetition";
    EXPECT_EQ(emp, -15);
  });
}

TEST(Driver, BelowDepth9OneMoveIsSearchedLikeSeveral) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(one_move), 5);
    procura<root>();
    EXPECT_EQ(passes(), "T/5 ");
  });
}

TEST(Driver, WithoutAMoveTheOldOneStays) {
  each_colour([]<Cor root>() {
    // Stalemate, and with men enough on the other side.
    for (const int depth : {5, 9}) {
      prepare(told_for<root>("8/8/8/8/8/1q6/6k1/K7 w - - 0 1"), depth);
      jogada = {1, 2, 3, 4};
      procura<root>();
      EXPECT_TRUE(reports().empty());
      EXPECT_EQ(jogada.a, 1);
      EXPECT_EQ(jogada.d, 4);
      EXPECT_EQ(best_move(), "none");
      EXPECT_EQ(E, depth == 5 ? no_best : no_best - 10);
    }
  });
}

TEST(Driver, TheStoredMovesOutliveThePasses) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(locked), 9, 11);
    constexpr Lance nowhere = {7, 3, 7, 4};  // nobody stands there, and nothing is ever taken
    guardado_g[1] = guardado_g[5] = nowhere;
    procura<root>();
    EXPECT_EQ(guardado_g[1], nowhere);
    EXPECT_EQ(guardado_g[5], nowhere);
  });
}

// --- The tables ---

TEST(Driver, TheTablesAreClearedAfterThePrePass) {
  each_colour([]<Cor root>() {
    for (const int depth : {5, 9}) {
      prepare(told_for<root>(locked), depth);
      HASHf = 1;
      tab2.fill(1);
      const ChaveDeBusca key{9, 9, 1, 2, 3};
      tabela_de<3, root>().abre(key);
      tabela_de<3, root>().fecha(4);
      tabela_de<4, outra(root)>().abre(key);
      tabela_de<4, outra(root)>().fecha(4);
      tabela_de<5, root>().abre(key);
      tabela_de<5, root>().fecha(4);
      procura<root>();
      tab2.fill(1);
      const bool kept = depth == 5;
      EXPECT_EQ((tabela_de<3, root>().procura(key)) != nullptr, kept);
      EXPECT_EQ((tabela_de<4, outra(root)>().procura(key)) != nullptr, kept);
      EXPECT_EQ((tabela_de<5, root>().procura(key)) != nullptr, kept);
    }
  });
}

// --- What ends the deepening ---

TEST(Driver, DeepeningNeedsItsLeaveAndTheExtraEvaluation) {
  each_colour([]<Cor root>() {
    for (const bool leave : {false, true}) {
      prepare(told_for<root>(locked), 9, 17);
      IIDS = leave;
      EXTRA_EVAL = !leave;
      procura<root>();
      EXPECT_EQ(passes(), "1/9 T/9 ");
    }
  });
}

TEST(Driver, TheSoftLimitIsAskedBetweenDepths) {
  each_colour([]<Cor root>() {
    const auto row = [](int reading, std::uint8_t control) {
      prepare(told_for<root>(locked), 9, 11);
      TC = control;
      clock_says([=] { return reading; });
      procura<root>();
      return passes();
    };
    EXPECT_EQ(row(soft, 1), "1/9 T/9 1/11 T/11 ");
    EXPECT_EQ(row(soft + 1, 1), "1/9 T/9 ");
    EXPECT_EQ(row(soft + 1, 0), "1/9 T/9 1/11 T/11 ") << "no time control";
  });
}

TEST(Driver, TheTimeIsReadAnewAfterEveryDepth) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(locked), 9, 17);
    TC = 1;
    clock_says([] { return deep >= 13 ? soft + 1 : 0; });
    procura<root>();
    EXPECT_EQ(passes(), "1/9 T/9 1/11 T/11 1/13 T/13 ");
    EXPECT_EQ(fim, soft + 1);
  });
}

TEST(Driver, TheHardLimitInASinglePassLeavesOutTheRest) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(locked), 9, 17);
    TC = 1;
    clock_says([] { return deep >= 11 ? hard : 0; });
    procura<root>();
    EXPECT_EQ(passes(), "1/9 T/9 1/11 ");
    EXPECT_EQ(corte_MAXcut, 1);
    // In the first single pass likewise.
    prepare(told_for<root>(locked), 9, 17);
    TC = 1;
    clock_says([] { return hard; });
    procura<root>();
    EXPECT_EQ(passes(), "1/9 ");
    // In a rest pass nothing follows.
    prepare(told_for<root>(locked), 9, 17);
    TC = 1;
    clock_says([] { return SCANT ? hard : 0; });
    procura<root>();
    EXPECT_EQ(passes(), "1/9 T/9 ");
  });
}

TEST(Driver, AMateEndsTheSearchBeforeTheRestPassButNotAtTheFirstDepth) {
  each_colour([]<Cor root>() {
    // While the single pass runs the root's score rises to a mate.
    const auto row = [](int depth, float score) {
      prepare(told_for<root>(locked), 9, 13);
      TC = 1;
      clock_says([=] {
        if (SCAN1 && deep == depth) alfa0 = score;
        return 0;
      });
      procura<root>();
      return passes();
    };
    EXPECT_EQ(row(11, 3300), "1/9 T/9 1/11 ");
    EXPECT_EQ(row(9, 3300), "1/9 T/9 ") << "the first rest pass runs regardless";
    EXPECT_EQ(row(11, 3299), "1/9 T/9 1/11 T/11 1/13 T/13 ");
  });
}

TEST(Driver, AMoveThatMatesAtOnceEndsEverything) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>("7k/8/6K1/8/8/8/8/R7 w - - 0 1"), 9, 17);
    procura<root>();
    EXPECT_EQ(best_move(), written<root>("a1a8"));
    EXPECT_EQ(E, 15400);
    EXPECT_EQ(corte_MAXcut, 1);
    EXPECT_EQ(deep, 9);
    for (const Report& r : reports()) EXPECT_TRUE(r.single);
  });
}

// --- The move slots ---

TEST(Driver, ForgettingTheMovesEmptiesEverySlot) {
  melhor = {1, 2, 3, 4};
  guardado.fill({1, 2, 3, 4});
  guardado_g.fill({1, 2, 3, 4});
  esquece_lances();
  EXPECT_EQ(melhor, sem_lance);
  for (const Lance& l : guardado) EXPECT_EQ(l, sem_lance);
  for (const Lance& l : guardado_g) EXPECT_EQ(l, sem_lance);
}

}  // namespace
}  // namespace korvu
