// A root move that repeats a position of the game: a draw without a search.
#include <gtest/gtest.h>

#include "board/root_move.h"
#include "root/expander_lab.h"

namespace korvu {
namespace {

using namespace root_lab;

// The position after the move stands among those of the game, once, at a place that is looked at.
template <Cor root>
void played_before(std::string_view move) {
  const Lance m = move_of<root>(move);
  init_tabuleiro2<root>(m.aa, m.bb, m.cc, m.dd);
  nb = 4;
  tabr1[root == Cor::b ? 2 : 3] = tab2;
  pempatee = 1;
}

TEST(Repetition, IsADrawWithoutASearch) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(locked));
    played_before<root>("d1e1");
    emp = 50;
    expand<root>(livre, Peca::rei, "d1");
    expect_moves<root>({"d1c1"});
    EXPECT_EQ(best_move(), written<root>("d1e1"));
    EXPECT_EQ(E, 50);
    EXPECT_EQ(alfa0, 50);
    EXPECT_EQ(EP, 50);
  });
}

TEST(Repetition, IsNoNodeAndMeetsNoCap) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>(locked));
    deep = 0;
    SCAN1 = 1;
    melhor = move_of<root>("d1e1");
    played_before<root>("d1e1");
    emp = 50;
    MAXcut[0] = 10;
    expand<root>(livre, Peca::rei, "d1");
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(E, 50);
    EXPECT_EQ(corte_MAXcut, 0);
  });
}

TEST(Repetition, ThatIsNoBetterThanTheBestIsOnlyNoted) {
  each_colour([]<Cor root>() {
    for (const int draw : {-15, 1}) {  // worse than the first move, and equal to it
      at_depth_1(told_for<root>(locked));
      played_before<root>("d1c1");
      emp = draw;
      expand<root>(livre, Peca::rei, "d1");
      expect_moves<root>({"d1e1"});
      EXPECT_EQ(best_move(), written<root>("d1e1"));
      EXPECT_EQ(E, 1);
      EXPECT_EQ(alfa0, 1);
      EXPECT_EQ(EP, draw);
    }
  });
}

TEST(Repetition, OfAMoveThatIsNotAdmittedIsNone) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(locked));
    played_before<root>("d1e1");
    SCAN1 = 1;
    SCANT = 0;
    melhor = move_of<root>("d1c1");
    emp = 50;
    expand<root>(livre, Peca::rei, "d1");
    EXPECT_EQ(EP, 0);
    EXPECT_EQ(E, 1);
  });
}

TEST(Repetition, IsNotLookedForWhenSwitchedOff) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(locked));
    played_before<root>("d1e1");
    pempatee = 0;
    emp = 50;
    expand<root>(livre, Peca::rei, "d1");
    expect_moves<root>({"d1e1", "d1c1"});
    EXPECT_EQ(EP, 0);
  });
}

TEST(Repetition, IsNotLookedForAfterAPawnMoveNorACastling) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1"));
    played_before<root>("a2a3");
    emp = 50;
    expand<root>(livre, Peca::peao, "a2");
    expect_moves<root>({"a2a3", "a2a4"});
    EXPECT_EQ(EP, 0);

    at_depth_1(told_for<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1"));
    played_before<root>("e1g1");
    emp = 50;
    expand<root>(positive1, Peca::rei, "e1");
    expect_moves<root>({"e1g1"});
    EXPECT_EQ(EP, 0);
  });
}

// A lone king answers; his last step tried, to the right and down the board, is legal in both
// tellings.
constexpr std::string_view lone_king = "8/8/8/3k4/8/8/8/K6R w - - 0 1";

TEST(Repetition, FoundBelowBringsTheMoveThroughTheDrawAfterItsSearch) {
  each_colour([]<Cor root>() {
    // The last reply repeats for the third time: a draw below, and the mark is still up when the
    // root looks again.
    const auto search = [](int times) {
      at_root(told_for<root>(lone_king));
      deep = DEEP = 3;
      SCAN1 = 1;
      melhor = move_of<root>("a1a2");
      emp = 100;
      first_ply<root>("a1a2");  // for the board of ply 1
      const Lance reply = move_of<root>(root == Cor::b ? "d5e4" : "d5e6");
      init_tabuleiro2_deep<1, outra(root)>(reply.aa, reply.bb, reply.cc, reply.dd);
      nb = 6;
      pempatee = 1;
      constexpr std::size_t first = root == Cor::b ? 1 : 0;
      for (int i = 0; i < times; ++i) tabr1[first + 2 * static_cast<std::size_t>(i)] = tab2;
      expand<root>(livre, without, Peca::rei, "a1");
    };
    search(2);
    EXPECT_EQ(EP, 100);
    EXPECT_EQ(E, 100);
    EXPECT_EQ(alfa0, 100);
    EXPECT_EQ(curr, 2) << "searched all the same";
    search(1);
    EXPECT_EQ(EP, 0) << "once before is not enough";
    EXPECT_LT(E, 60);
  });
}

TEST(Repetition, FoundBelowIsForgottenWhenTheLastReplyTriedWasIllegal) {
  each_colour([]<Cor root>() {
    // In the locked position steps off the king's rank are tried last, and are all guarded.
    at_root(told_for<root>(locked));
    deep = DEEP = 3;
    SCAN1 = 1;
    melhor = move_of<root>("d1e1");
    emp = 100;
    first_ply<root>("d1e1");
    const Lance reply = move_of<root>("d8c8");
    init_tabuleiro2_deep<1, outra(root)>(reply.aa, reply.bb, reply.cc, reply.dd);
    nb = 6;
    pempatee = 1;
    constexpr std::size_t first = root == Cor::b ? 1 : 0;
    tabr1[first] = tabr1[first + 2] = tab2;
    expand<root>(livre, without, Peca::rei, "d1");
    EXPECT_EQ(EP, 0);
    EXPECT_EQ(E, 0);
  });
}

}  // namespace
}  // namespace korvu
