// The pre-search of plies 2 and 3: the node's own moves four plies short, before anything else but
// the null move. A mate found there ends the node before it is counted as a move of its parent.
#include <gtest/gtest.h>

#include "memory/ply_tables.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

constexpr std::string_view mating = "7k/8/6KQ/8/8/8/8/8 w - - 0 1";  // h6g7
// Black has one move, and White then mates: two plies below the node.
constexpr std::string_view mate_in_two = "7k/8/5K2/8/8/8/8/Q7 w - - 0 1";  // f6g6: Kg8, Qa8#

template <int N, Cor cor>
bool ended_by_pre_search(std::string_view fen, std::string_view move, int depth) {
  stand(N - 1, told_for<cor>(fen));
  deep = DEEP = depth;
  currN[N] = 0;
  enter<N, cor>(move);
  EXPECT_EQ(deep, depth);
  return currN[N] == 0;
}

TEST(PreSearch, AMateEndsTheNodeAtOnceAboveDepth6) {
  each_node<2, 3>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_TRUE((ended_by_pre_search<N, cor>(mating, "h6g7", 7)));
    EXPECT_EQ(value(N), N == 2 ? -15400 : 14300);
    EXPECT_FALSE((ended_by_pre_search<N, cor>(mating, "h6g7", 6))) << "no pre-search";
    EXPECT_FALSE((ended_by_pre_search<N, cor>(mating, "h6g7", 5)));
  });
}

TEST(PreSearch, LooksFourPliesLessFar) {
  // The mate is seen by a search that reaches the ply where White has mated, two below the node.
  each_node<2, 3>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_TRUE((ended_by_pre_search<N, cor>(mate_in_two, "f6g6", N + 2 + 4)));
    EXPECT_EQ(value(N), N == 2 ? -14300 : 13200);
    if (N + 1 + 4 > 6) {
      EXPECT_FALSE((ended_by_pre_search<N, cor>(mate_in_two, "f6g6", N + 1 + 4)));
    }
  });
}

TEST(PreSearch, AMateOfTheOtherSideDoesNotEndTheNode) {
  // The side to move mates: good for it, and no reason to stop.
  each_node<2, 3>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_FALSE((ended_by_pre_search<N, cor>("8/8/8/8/8/6k1/q7/6K1 w - - 0 1", "g1h1", 7)));
    EXPECT_EQ(value(N), N == 2 ? 14300 : -14300);
  });
}

TEST(PreSearch, PliesFrom4HaveNone) {
  each_node<4, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    EXPECT_FALSE((ended_by_pre_search<N, cor>(mating, "h6g7", 13)));
  });
}

TEST(PreSearch, UsesNoTables) {
  each_colour([]<Cor cor>() {
    stand(1, told_for<cor>(mate_in_two));
    limpa_tabelas<outra(cor)>();
    HASHf = 1;
    deep = DEEP = 9;
    enter<2, cor>("f6g6");
    EXPECT_EQ(currN[2], 0) << "the pre-search has ended the node";
    EXPECT_GT(nodes, 0U);
    EXPECT_EQ((tabela_de<3, outra(cor)>().indice()), 0);
    EXPECT_EQ(HASHf, 1);
  });
}

TEST(PreSearch, ReadiesTheMovesOfThePly) {
  // What cuts four plies short is stored before the real search begins: a reader of the clock in
  // the real search sees it.
  each_colour([]<Cor cor>() {
    stand(1, told_for<cor>(locked));
    deep = DEEP = 9;
    TC = 1;
    beta[1] = -5;  // every reply is a cut
    Lance seen = sem_lance;
    clock_says([&] {
      if (seen == sem_lance) seen = guardado[2];
      return 0;
    });
    enter<2, cor>("d1e1");
    EXPECT_EQ(seen, move_of<cor>("d8e8"));
  });
}

}  // namespace
}  // namespace korvu
