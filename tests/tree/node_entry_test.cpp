// What a node does before its first move: it opens its value, brings board and flags of the ply
// above along, makes the incoming move, and takes nothing from the node that stood there before.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// Every right is there and Black has just pushed his c-pawn.
constexpr std::string_view rights = "r3k2r/8/8/2pP4/8/8/4P3/R3K2R w KQkq c6 0 1";

// The node of ply N, content with its first reply.
template <int N, Cor cor>
void enter_for_one_reply(std::string_view fen, std::string_view move) {
  stand(N - 1, told_for<cor>(fen));
  deep = N == 2 ? 3 : N;
  DEEP = 25;
  for (std::size_t k = N; k < MAXcut.size(); ++k) MAXcut[k] = -20000;
  jm_D[N] = {1, 1, 1, 1, 1, 1};  // of the node that stood here before
  duplos_D[N].pb.fill(1);
  duplos_D[N].pp.fill(1);
  tabd[N].fill(vazia);
  enter<N, cor>(move);
  EXPECT_EQ(nd >= N, true) << "the node has begun its moves";
}

struct Rights {
  int king, a, h;
  friend bool operator==(const Rights&, const Rights&) = default;
};
template <Cor cor>
Rights lost(int n) {
  Movidos& m = jm_D[static_cast<std::size_t>(n)];
  return {rei_moveu<cor>(m), torre_a_moveu<cor>(m), torre_h_moveu<cor>(m)};
}

// Files with a double step.
template <Cor cor>
std::string doubles(int n) {
  std::string files;
  for (int x = 0; x < 8; ++x)
    if (duplo<cor>(duplos_D[static_cast<std::size_t>(n)])[static_cast<std::size_t>(x)])
      files += static_cast<char>('a' + x);
  return files;
}

TEST(NodeEntry, BringsTheRightsAlongAndNotesItsOwnMove) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr Cor other = outra(cor);
    const Rights none = {0, 0, 0};

    enter_for_one_reply<N, cor>(rights, "e2e4");
    EXPECT_EQ(lost<cor>(N), none);
    EXPECT_EQ(lost<other>(N), none);
    EXPECT_EQ(doubles<cor>(N), "e");
    EXPECT_EQ(doubles<other>(N), "") << "the step before is forgotten";

    enter_for_one_reply<N, cor>(rights, "h1h2");
    EXPECT_EQ(lost<cor>(N), (Rights{0, 0, 1}));
    EXPECT_EQ(lost<other>(N), none);
    EXPECT_EQ(doubles<cor>(N), "");

    enter_for_one_reply<N, cor>(rights, "e1d1");
    EXPECT_EQ(lost<cor>(N), (Rights{1, 0, 0}));

    enter_for_one_reply<N, cor>("r3k2r/8/8/8/8/8/4P3/4K3 w kq - 0 1", "e2e3");
    EXPECT_EQ(lost<cor>(N), (Rights{1, 1, 1}));
    EXPECT_EQ(lost<other>(N), none);
  });
}

TEST(NodeEntry, MakesTheMoveOnItsOwnBoard) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto on = [](std::string_view square) { return tabd[N][square_of<cor>(square)]; };
    enter_for_one_reply<N, cor>(rights, "e1g1");
    EXPECT_EQ(on("g1"), Lado<cor>::rei);
    EXPECT_EQ(on("f1"), Lado<cor>::torre);
    EXPECT_EQ(on("h1"), vazia);
    EXPECT_EQ(on("a8"), Lado<outra(cor)>::torre) << "the others stand where they stood";
    enter_for_one_reply<N, cor>(rights, "d5c6");
    EXPECT_EQ(on("c6"), Lado<cor>::peao);
    EXPECT_EQ(on("c5"), vazia) << "taken in passing, by the flag of the ply above";
    enter_for_one_reply<N, cor>("8/P7/7k/8/8/8/8/4K3 w - - 0 1", "a7a8");
    EXPECT_EQ(on("a8"), Lado<cor>::dama);
  });
}

TEST(NodeEntry, OpensItsValue) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    extradef = 0;
    deep = N == 2 ? 3 : N;
    DEEP = 25;
    value(N) = N % 2 == 0 ? 900 : -900;  // better than any reply
    enter<N, cor>("d1e1");
    EXPECT_EQ(value(N), 0);
    EXPECT_EQ(X_D[N], 0);
  });
}

TEST(NodeEntry, ExpectsAMateUntilTheKingIsFoundSafe) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>("7k/8/6KQ/8/8/8/8/8 w - - 0 1"));
    deep = N;
    DEEP = 25;
    XEQUE_MATE[N] = X_D[N] = 0;
    enter<N, cor>("h6g7");
    EXPECT_GE(std::abs(value(N)), 3300);
  });
}

TEST(NodeEntry, WeighsItsOwnPawnMoveAlone) {
  // Promotion and capture in passing of another line are still in their slots.
  each_node<2, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const std::string_view move : {"d1e1", "h4h5"}) {
      stand(N - 1, told_for<cor>("3k4/p1p1p1p1/P1P1P1P1/8/7P/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1"));
      totals<cor>(N - 1, 200, 200);
      extradef = 0;
      promocao = 80;
      ppassado = 10;
      deep = N - 1;
      DEEP = 25;
      enter<N, cor>(move);
      EXPECT_EQ(value(N), 0) << move;
    }
  });
}

TEST(NodeEntry, AQuietMoveBeyondTheNominalDepthIsALeafHoweverShortTheLine) {
  each_node<12, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>("4k3/8/8/8/8/8/8/1N2K3 w - - 0 1"));
    totals<cor>(N - 1, 200, 200);
    deep = N - 3;
    DEEP = 9;
    value(N) = 777;
    enter<N, cor>("b1c3");
    EXPECT_EQ(value(N), 0);
    EXPECT_EQ(nodes, 0U);
  });
}

}  // namespace
}  // namespace korvu
