// How nodes of plies 3 to 5 use their tables: a hit stands for the node, a record is opened at the
// entry and closed on every way out.
#include <gtest/gtest.h>

#include <vector>

#include "memory/ply_tables.h"
#include "tree/indifference.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

#define LOOP(N, name) (cor == Cor::b ? name##_b<N> : name##_p<N>)

// The table of ply N is used from this depth on.
constexpr int table_from(int n) {
  return n == 3 ? 3 : 8;
}

// The king's loop at ply N, whose children have a table.
template <int N, Cor cor>
void prepare(int depth) {
  stand(N, told_for<cor>(locked));
  limpa_tabelas<Cor::b>();
  limpa_tabelas<Cor::p>();
  HASHf = 1;
  deep = DEEP = depth;
  for (std::size_t k = N + 1; k < MAXcut.size(); ++k) MAXcut[k] = -20000;
}

template <int N, Cor cor>
void kings_loop() {
  constexpr Lance d1 = move_of<cor>("d1e1");
  LOOP(N, analiselivre_rei)(d1.aa, d1.bb);
}

// A record of the position after the king's step, worth 123.
template <int N, Cor cor>
void remember(std::string_view move) {
  const Lance m = move_of<cor>(move);
  init_tabuleiro2_deep<N, cor>(m.aa, m.bb, m.cc, m.dd);
  tabela_de<N + 1, cor>().abre(chave_atual<N + 1>());
  tabela_de<N + 1, cor>().fecha(N % 2 == 0 ? 123 : -123);
}

TEST(TableHit, StandsForTheNode) {
  each_node<2, 4>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N + 1));
    prepare<N, cor>(9);
    remember<N, cor>("d1e1");
    constexpr Lance d1 = move_of<cor>("d1e1");
    guardado[N] = d1;
    nd = 77;
    X_D[N + 1] = 5;
    currN[N + 1] = 3;
    LmrT[N + 2] = AmrT[N + 2] = 1;
    guardado[N + 1] = {1, 2, 3, 4};
    LOOP(N, analiselivretest_rei)(d1.aa, d1.bb);
    EXPECT_EQ(value(N), N % 2 == 0 ? 123 : -123);
    EXPECT_EQ(X_D[N], 0) << "a reply like any other";
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(nd, 77) << "the child has begun nothing";
    EXPECT_EQ(X_D[N + 1], 5);
    EXPECT_EQ(currN[N + 1], 3) << "nor was it counted";
    EXPECT_EQ(LmrT[N + 2], N == 2) << "plies 4 and 5 clear the marks below before the scan";
    EXPECT_EQ(AmrT[N + 2], N == 2);
    EXPECT_EQ(guardado[N + 1], (Lance{1, 2, 3, 4}));
    EXPECT_EQ((tabela_de<N + 1, cor>().indice()), 1) << "and no new record";
    EXPECT_EQ(HASHTABLE<N + 1>(), 1);
  });
}

TEST(TableHit, IsLookedForFromTheDepthOfTheTable) {
  each_node<2, 4>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N + 1));
    for (const int depth : {3, 5, 7, 8, 9}) {
      if (depth < N + 1) continue;
      prepare<N, cor>(depth);
      remember<N, cor>("d1e1");
      kings_loop<N, cor>();
      const bool used = depth >= table_from(N + 1);
      EXPECT_EQ(currN[N + 1], used ? 1 : 2) << "children run at deep " << depth;
    }
  });
}

TEST(TableHit, IsNotLookedForWithoutTables) {
  each_node<2, 4>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N + 1));
    prepare<N, cor>(9);
    remember<N, cor>("d1e1");
    HASHf = 0;
    kings_loop<N, cor>();
    EXPECT_EQ(currN[N + 1], 2);
    EXPECT_EQ((tabela_de<N + 1, cor>().indice()), 1);
  });
}

TEST(TableHit, WantsTheSameBoundsAndDepth) {
  each_node<2, 4>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N + 1));
    const auto children_after = [](auto change) {
      prepare<N, cor>(9);
      remember<N, cor>("d1e1");
      change();
      kings_loop<N, cor>();
      return currN[N + 1];
    };
    EXPECT_EQ(children_after([] {}), 1);
    EXPECT_EQ(children_after([] { alfa[0] = -16499; }), 2);
    EXPECT_EQ(children_after([] { beta[1] = 16499; }), 2);
    EXPECT_EQ(children_after([] { deep = 11; }), 2);
    EXPECT_EQ(children_after([] { PVSm = 1; }), 2);
    EXPECT_EQ(children_after([] { PVSm2 = 1; }), 2);
  });
}

TEST(TableHit, AMissClearsTheMarkOfTheLastHit) {
  each_node<2, 4>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N + 1));
    prepare<N, cor>(9);
    HASHTABLE<N + 1>() = 1;
    kings_loop<N, cor>();
    EXPECT_EQ(HASHTABLE<N + 1>(), 0);
    EXPECT_EQ(currN[N + 1], 2);
  });
}

TEST(Ply2, WithoutDepthForPly3ReadsWhatItsSlotHolds) {
  each_colour([]<Cor cor>() {
    prepare<2, cor>(2);
    beta[3] = 42;
    kings_loop<2, cor>();
    EXPECT_EQ(alfa[2], 42);
    EXPECT_EQ(nodes, 2U) << "the moves are counted";
    EXPECT_EQ(currN[3], 0) << "but no child runs";
  });
}

// --- Records ---

template <int N, Cor cor>
void prepare_node(int depth, std::string_view fen = locked) {
  stand(N - 1, told_for<cor>(fen));
  limpa_tabelas<Cor::b>();
  limpa_tabelas<Cor::p>();
  HASHf = 1;
  deep = DEEP = depth;
}

template <int N, Cor cor>
int records() {
  return tabela_de<N, cor>().indice();
}

// The value of the record with the node's key, or nullptr.
template <int N, Cor cor>
const float* recorded(const ChaveDeBusca& key, std::string_view move) {
  const Lance m = move_of<cor>(move);
  init_tabuleiro2_deep<N - 1, cor>(m.aa, m.bb, m.cc, m.dd);
  return tabela_de<N, cor>().procura(key);
}

TEST(Record, HoldsTheNodesValueUnderTheKeyOfItsEntry) {
  each_node<3, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare_node<N, cor>(9);
    PVSm = 1;
    alfa[0] = -7;
    beta[1] = 8;
    const ChaveDeBusca key = chave_atual<N>();
    enter<N, cor>("d1e1");
    ASSERT_EQ((records<N, cor>()), 1);
    const float* v = recorded<N, cor>(key, "d1e1");
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(*v, value(N));
    EXPECT_EQ(key.deep, 9);
    EXPECT_EQ(key.PVSm, 1);
  });
}

TEST(Record, IsOpenedFromTheDepthOfTheTable) {
  each_node<3, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {N - 2, N - 1, N, 7, 8, 9}) {
      prepare_node<N, cor>(depth);
      enter<N, cor>("d1e1");
      const bool opened = N == 3 || depth >= 8;
      EXPECT_EQ((records<N, cor>()), opened ? 1 : 0) << depth;
    }
    prepare_node<N, cor>(9);
    HASHf = 0;
    enter<N, cor>("d1e1");
    EXPECT_EQ((records<N, cor>()), 0);
  });
}

TEST(Record, IsClosedOnEveryWayOut) {
  each_node<3, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    // A null move that refutes the line.
    prepare_node<N, cor>(9);
    NULL_MOVE = 2;
    SCANT = 1;
    npecasb = npecasp = 8;
    value(N - 1) = N % 2 == 0 ? -900 : 900;
    const ChaveDeBusca passed = chave_atual<N>();
    mark_board(N);
    enter<N, cor>("d1e1");
    ASSERT_TRUE(board_is_marked(N));
    EXPECT_EQ((records<N, cor>()), 1);
    ASSERT_NE((recorded<N, cor>(passed, "d1e1")), nullptr);
    EXPECT_EQ((*recorded<N, cor>(passed, "d1e1")), value(N));

    // Mate.
    prepare_node<N, cor>(9, "7k/8/6KQ/8/8/8/8/8 w - - 0 1");
    const ChaveDeBusca mated = chave_atual<N>();
    enter<N, cor>("h6g7");
    EXPECT_EQ((records<N, cor>()), 1);
    ASSERT_NE((recorded<N, cor>(mated, "h6g7")), nullptr);
    EXPECT_EQ((*recorded<N, cor>(mated, "h6g7")), value(N));

    // A reduced search, redone.
    prepare_node<N, cor>(9);
    LMR = 1;
    enter<N, cor>("d1e1");
    EXPECT_EQ(AmrT[N], 1);
    EXPECT_EQ((records<N, cor>()), 1);
    EXPECT_EQ(HASHf, 1);

    // Out of time.
    prepare_node<N, cor>(9);
    TC = 1;
    clock_says([] { return 1000000; });
    enter<N, cor>("d1e1");
    EXPECT_EQ(corte_MAXcut, 1);
    EXPECT_EQ((records<N, cor>()), 1);
  });
}

// Leaves need their exact values below nodes of plies 4 and 5 whose records are still open. The
// clock is read at ply 7.
TEST(Record, IsKnownToTheLeavesWhileItIsOpen) {
  each_node<3, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int tables : {1, 0}) {
      prepare_node<N, cor>(9);
      HASHf = static_cast<std::uint8_t>(tables);
      TC = 1;
      std::vector<int> open;
      clock_says([&] {
        open.push_back(registros_a_fazer);
        return 0;
      });
      enter<N, cor>("d1e1");
      ASSERT_FALSE(open.empty());
      EXPECT_EQ(open.front(), tables == 0 ? 0 : N == 5 ? 1 : 2);
      EXPECT_EQ(registros_a_fazer, 0) << "closed";
    }
  });
}

TEST(Record, APositionReachedAgainIsNotSearchedAgain) {
  // Ply 3 by two orders of moves is one position; here simply the same node entered twice by its
  // parent's loop.
  each_colour([]<Cor cor>() {
    prepare<2, cor>(5);
    alfa[0] = 16000;  // hides what the parent's value adds to the bounds
    kings_loop<2, cor>();
    const std::uint32_t first = nodes;
    EXPECT_EQ((records<3, cor>()), 2);
    corte_beta[1] = 0;
    kings_loop<2, cor>();
    EXPECT_EQ(nodes, first + 2) << "the two moves are tried, nothing below";
    EXPECT_EQ((records<3, cor>()), 2);
  });
}

}  // namespace
}  // namespace korvu
