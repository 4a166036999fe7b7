// Repetition below the root: a reply to the root move that brings a position of the game about for
// the third time.
#include <gtest/gtest.h>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// The position after the reply has stood so many times among those of the game with that side to
// move. With White at the root these are the second, the fourth and so on.
template <Cor cor>
void played(int times) {
  constexpr Lance reply = move_of<cor>("d1e1");
  init_tabuleiro2_deep<1, cor>(reply.aa, reply.bb, reply.cc, reply.dd);
  constexpr bool white_root = cor == Cor::p;
  joga_com_b = white_root;
  deeppromo = 1;
  pempatee = 1;
  nb = 8;
  for (int i = 0; i < times; ++i)
    tabr1[(white_root ? 1U : 0U) + 2U * static_cast<std::size_t>(i)] = tab2;
}

// The node of ply 2 after the reply, with a line deep enough to have moves.
template <Cor cor>
void prepare(int times, int depth = 5) {
  stand(1, told_for<cor>(locked));
  deep = DEEP = depth;
  emp = -37;
  played<cor>(times);
}

TEST(DrawAtPly2, IsTheThirdOccurrence) {
  each_colour([]<Cor cor>() {
    SCOPED_TRACE(at<cor>(2));
    prepare<cor>(2);
    mark_board(2);
    enter<2, cor>("d1e1");
    EXPECT_EQ(alfa[2], -37);
    EXPECT_EQ(pempate, 1);
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(currN[2], 0) << "the reply is not counted";
    EXPECT_TRUE(board_is_marked(2));
    EXPECT_EQ(deep, 5);
  });
}

TEST(DrawAtPly2, OnceBeforeIsNotEnough) {
  each_colour([]<Cor cor>() {
    SCOPED_TRACE(at<cor>(2));
    for (const int times : {0, 1}) {
      prepare<cor>(times);
      pempate = 1;  // an old mark goes
      enter<2, cor>("d1e1");
      EXPECT_EQ(alfa[2], 0);
      EXPECT_EQ(pempate, 0);
      EXPECT_EQ(currN[2], 1);
    }
  });
}

TEST(DrawAtPly2, IsLookedForAtEveryDepthAboveNone) {
  each_colour([]<Cor cor>() {
    SCOPED_TRACE(at<cor>(2));
    prepare<cor>(2, 1);
    enter<2, cor>("d1e1");
    EXPECT_EQ(alfa[2], -37);
    prepare<cor>(2, 0);
    alfa[2] = 42;
    pempate = 0;
    enter<2, cor>("d1e1");
    EXPECT_EQ(alfa[2], 42) << "without depth nothing is written";
    EXPECT_EQ(pempate, 0);
  });
}

TEST(DrawAtPly2, IsNotLookedForWhenSwitchedOff) {
  each_colour([]<Cor cor>() {
    SCOPED_TRACE(at<cor>(2));
    prepare<cor>(2);
    pempatee = 0;
    enter<2, cor>("d1e1");
    EXPECT_EQ(alfa[2], 0);
    EXPECT_EQ(pempate, 0);
  });
}

TEST(DrawAtPly2, IsLookedForAtNoOtherPly) {
  each_node<3, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    deep = DEEP = N | 1;
    emp = -37;
    constexpr Lance m = move_of<cor>("d1e1");
    init_tabuleiro2_deep<N - 1, cor>(m.aa, m.bb, m.cc, m.dd);
    deeppromo = pempatee = 1;
    nb = 8;
    for (std::size_t k = 0; k < 8; ++k) tabr1[k] = tab2;
    enter<N, cor>("d1e1");
    EXPECT_NE(value(N), -37);
    EXPECT_EQ(pempate, 0);
  });
}

}  // namespace
}  // namespace korvu
