// The passes of one search: their row, the window in motion, what ends them.
#include "root/driver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "eval/knobs.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;
using tree_lab::clock_says;

// In the locked position every root move is worth 0 at every depth from 3, so that passes cost next
// to nothing. 16 men: with a time usage of 3 the soft limit is 3000, the hard one 30000.
constexpr int soft = 3000, hard = 30000;

// White has one move, and after it Black has two.
constexpr std::string_view one_move = "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/K7 w - - 0 1";

void prepare(std::string_view fen, int depth, int limit = 9) {
  at_root(fen);
  deep = depth;
  deepp = limit;
  EXTRA_EVAL = 1;  // deepening needs it; with no budget it changes no value
  piecesac = 0;
  Positive_filter = Negative_filter = 0;
}

// The passes as they were reported: "1" for a single-move pass, "T" for a rest pass, and the depth.
std::string passes() {
  std::string row, last;
  for (const Report& r : reports()) {
    const std::string pass = (r.single ? "1/" : "T/") + std::to_string(r.deep) + ' ';
    EXPECT_NE(r.single, r.rest);
    if (pass != last) row += pass;
    last = pass;
  }
  return row;
}

template <Cor root>
std::string search(int depth, int limit = 9) {
  prepare(told_for<root>(locked), depth, limit);
  procura<root>();
  return passes();
}

// The first report of a pass.
Report first_of(bool single, int depth) {
  for (const Report& r : reports())
    if (r.single == single && r.deep == depth) return r;
  ADD_FAILURE() << "no such pass";
  return {};
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

// --- The window ---

TEST(Driver, TheSinglePassesRunInAWindowLoweredBy10OrWithManyMenBy1) {
  each_colour([]<Cor root>() {
    for (const bool many : {false, true}) {
      const float margin = many ? 1 : 10;
      prepare(told_for<root>(locked), 9, 11);
      DEEP9 = many;
      EP = 99;
      procura<root>();
      const Report first = first_of(true, 9);
      EXPECT_EQ(first.ALFA0, 0);
      EXPECT_EQ(first.alfa0, -margin);
      EXPECT_EQ(first.E, -margin);
      EXPECT_EQ(first.EP, 0);
      const Report rest = first_of(false, 9);
      EXPECT_EQ(rest.alfa0, 0) << "the best move has kept its value";
      EXPECT_EQ(rest.ALFA0, 0);
      const Report deeper = first_of(true, 11);
      EXPECT_EQ(deeper.alfa0, -margin);
      EXPECT_EQ(deeper.E, -margin);
      EXPECT_EQ(deeper.ALFA0, 0);
      EXPECT_EQ(deeper.EP, 0);
    }
  });
}

// A first score that no move of the locked position reaches: no best move is found by the pre-pass,
// and every move takes part in the rest pass.
template <Cor root>
void with_first_score(float score, int limit = 9) {
  prepare(told_for<root>(locked), 9, limit);
  alfa0 = E = score;
}

TEST(Driver, AMateOfThePrePassIsSearchedAgainWithAnOpenWindow) {
  each_colour([]<Cor root>() {
    with_first_score<root>(3310);
    procura<root>();
    const Report open = first_of(false, 9);
    EXPECT_EQ(open.alfa0, -16500);
    EXPECT_EQ(open.E, no_best);
    EXPECT_EQ(open.ALFA0, 3300) << "the lowered score";

    with_first_score<root>(3309);
    procura<root>();
    const Report shut = first_of(false, 9);
    EXPECT_EQ(shut.alfa0, 3299);
    EXPECT_EQ(shut.E, 3299);
    EXPECT_EQ(shut.ALFA0, 3309);
  });
}

TEST(Driver, ABestMoveThatFallsALittleStaysBest) {
  each_colour([]<Cor root>() {
    // Worth 0 where 8 was hoped for: the window went down to -2, and nothing else beats 0.
    prepare(told_for<root>(locked), 9, 9);
    melhor = move_of<root>("d1e1");
    jogada = {melhor.aa, melhor.bb, melhor.cc, melhor.dd};
    alfa0 = E = 8;
    procura<root>();
    EXPECT_EQ(best_move(), written<root>("d1e1"));
    EXPECT_EQ(E, 0);
    // Worth 0 where 50 was hoped for: E is the lowered score, no true one.
    prepare(told_for<root>(locked), 9, 9);
    melhor = move_of<root>("d1e1");
    DEEP9 = 1;  // one failed best move opens the window otherwise
    alfa0 = E = 50;
    procura<root>();
    EXPECT_EQ(best_move(), written<root>("d1e1"));
    EXPECT_EQ(E, 49);
  });
}

// --- The draw's value ---

TEST(Driver, TheDrawsValueIsTheTruncatedQuotientAndTheBias) {
  each_colour([]<Cor root>() {
    const auto value = [](float own, float other, int bias) {
      at_root(told_for<root>(locked));
      material_da_raiz<root>() = own;
      material_da_raiz<outra(root)>() = other;
      empp = bias;
      emp = emppp = 77;
      define_empate<root>();
      empp = -5;
      EXPECT_EQ(emp, emppp);
      return emp;
    };
    EXPECT_EQ(value(510, 510, -5), -15);
    EXPECT_EQ(value(510, 500, -5), -14) << "-14.9 cut toward zero";
    EXPECT_EQ(value(500, 510, -5), -15) << "-15.1";
    EXPECT_EQ(value(400, 200, -5), -11) << "5 ln 2 is 3.47";
    EXPECT_EQ(value(510, 510, 10), 0);
    EXPECT_EQ(value(400, 200, 10), 3);
  });
}

TEST(Driver, TheDrawBecomesDearerOnceWhileTheRootStandsWellAndQuiet) {
  each_colour([]<Cor root>() {
    const auto draw_after = [](float score, float balance, int taken, int limit = 9) {
      with_first_score<root>(score, limit);
      materialflot0 = balance;
      peca = taken;
      emp = -15;
      procura<root>();
      return emp;
    };
    EXPECT_EQ(draw_after(100, 105, 0), -5);
    EXPECT_EQ(draw_after(100, 105.5, 0), -15) << "below the balance less 5";
    EXPECT_EQ(draw_after(100, 0, 10), -15) << "a man was just taken";
    EXPECT_EQ(draw_after(100, 0, -10), -15);
    EXPECT_EQ(draw_after(100, 0, 0, 13), -5) << "once in a search";
  });
}

TEST(Driver, TheDrawsTestCountsTheQuotient) {
  each_colour([]<Cor root>() {
    for (const bool reached : {true, false}) {
      with_first_score<root>(1000);
      material_da_raiz<root>() = 400;
      material_da_raiz<outra(root)>() = 200;
      materialflot0 = reached ? 1001.5F : 1001.6F;  // 5 ln 2 is 3.466
      procura<root>();
      EXPECT_EQ(emp, reached ? -5 : -15);
    }
  });
}

TEST(Driver, BelowDepth9TheDrawKeepsItsValue) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(locked), 7);
    alfa0 = E = 100;
    procura<root>();
    EXPECT_EQ(emp, -15);
  });
}

TEST(Driver, RepetitionIsLookedForInAllPassesButTheFirst) {
  each_colour([]<Cor root>() {
    prepare(told_for<root>(locked), 9, 11);
    pempatee = 0;
    procura<root>();
    for (const Report& r : reports()) EXPECT_EQ(r.repetitions, 1);
    // In the pre-pass the repeated move is searched and becomes the best, in the single pass it is
    // the draw that it is.
    prepare(told_for<root>(locked), 9);
    pempatee = 1;
    nb = 4;
    for (const std::string_view move : {"d1e1", "d1c1"}) {
      const Lance m = move_of<root>(move);
      init_tabuleiro2<root>(m.aa, m.bb, m.cc, m.dd);
      tabr1[(root == Cor::b ? 0U : 1U) + (move == "d1e1" ? 0U : 2U)] = tab2;
    }
    emp = 40;
    procura<root>();
    EXPECT_TRUE(reports().empty()) << "no pass but the first searches either";
    EXPECT_EQ(E, 50) << "the draw, made 10 dearer";
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
