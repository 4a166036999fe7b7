// The window of the root as the passes move it, and the value of a draw.
#include <gtest/gtest.h>

#include "memory/ply_tables.h"
#include "root/driver.h"
#include "root/driver_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

// The first report of a pass.
Report first_of(bool single, int depth) {
  for (const Report& r : reports())
    if (r.single == single && r.deep == depth) return r;
  ADD_FAILURE() << "no such pass";
  return {};
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

}  // namespace
}  // namespace korvu
