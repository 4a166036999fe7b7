// The stored capture and the stored quiet move of a ply: who writes them, who tries them, who skips
// them and when a capture is forgotten.
#include <gtest/gtest.h>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

#define LOOP(N, name) (cor == Cor::b ? name##_b<N> : name##_p<N>)

constexpr std::string_view two_takers = "4k3/8/8/8/3p4/1N3N2/8/4K3 w - - 0 1";
constexpr std::string_view knight = "4k3/8/8/8/8/8/8/1N2K3 w - - 0 1";  // to d2, a3, c3
constexpr std::string_view promoting = "1n6/P7/7k/8/8/8/8/4K3 w - - 0 1";

// The loops of ply N with every legal move a cut, or none.
template <int N, Cor cor>
void prepare(std::string_view fen, bool cuts) {
  stand(N, told_for<cor>(fen));
  totals<cor>(N, 200, 200);
  deep = N == 2 ? 3 : N % 2 == 0 ? N : N + 1;
  DEEP = 25;
  MAXcut[N] = cuts ? -5000 : 20000;
}

template <Cor cor, class F>
void run(F loop, std::string_view square) {
  const auto s = static_cast<int>(square_of<cor>(square));
  loop(s / 8, s % 8);
}

TEST(StoredMoves, ACaptureIsStoredTargetFirst) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(two_takers, true);
    run<cor>(LOOP(N, gerador), "d4");
    EXPECT_EQ(cut_flag(N), 1);
    EXPECT_EQ(guardado_g[N], move_of<cor>("d4f3")) << "the squares to the right come first";
    EXPECT_EQ(guardado[N], sem_lance);
  });
}

TEST(StoredMoves, AQuietMoveIsStoredFromFirst) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(knight, true);
    run<cor>(LOOP(N, analiselivre_cavalo), "b1");
    EXPECT_EQ(guardado[N], move_of<cor>("b1d2"));
    EXPECT_EQ(guardado_g[N], sem_lance);
  });
}

TEST(StoredMoves, ACaptureInPassingIsAQuietMoveHere) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", true);
    run<cor>(LOOP(N, analiselivre_peao), "e5");
    EXPECT_EQ(guardado[N], move_of<cor>("e5d6"));
    EXPECT_EQ(guardado_g[N], sem_lance);
  });
}

TEST(StoredMoves, NothingIsStoredWithoutACut) {
  each_node<2, 22>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(two_takers, false);
    run<cor>(LOOP(N, gerador), "d4");
    run<cor>(LOOP(N, analiselivre_cavalo), "b3");
    EXPECT_GT(nodes, 2U);
    EXPECT_EQ(guardado[N], sem_lance);
    EXPECT_EQ(guardado_g[N], sem_lance);
  });
}

TEST(StoredMoves, ThePlainMembersSkipThem) {
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(two_takers, false);
    guardado_g[N] = move_of<cor>("d4b3");
    run<cor>(LOOP(N, gerador), "d4");
    EXPECT_EQ(nodes, 1U) << "the other knight alone";

    prepare<N, cor>(knight, false);
    guardado[N] = move_of<cor>("b1a3");
    run<cor>(LOOP(N, analiselivre_cavalo), "b1");
    EXPECT_EQ(nodes, 2U) << "d2 and c3";
  });
}

TEST(StoredMoves, TheTestMembersTryThemAloneAndStoreNothing) {
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(two_takers, true);
    guardado_g[N] = move_of<cor>("d4b3");
    run<cor>(LOOP(N, geradortest), "d4");
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(cut_flag(N), 1) << "it cuts";
    EXPECT_EQ(guardado_g[N], move_of<cor>("d4b3"));

    prepare<N, cor>(knight, true);
    guardado[N] = move_of<cor>("b1a3");
    run<cor>(LOOP(N, analiselivretest_cavalo), "b1");
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(cut_flag(N), 1);
    EXPECT_EQ(guardado[N], move_of<cor>("b1a3"));
  });
}

TEST(StoredMoves, TheTestMembersTryNothingThatTheWalkDoesNotMeet) {
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(two_takers, false);
    guardado_g[N] = move_of<cor>("d4c2");  // no knight stands there
    run<cor>(LOOP(N, geradortest), "d4");
    guardado[N] = move_of<cor>("b3d4");  // a capture now
    run<cor>(LOOP(N, analiselivretest_cavalo), "b3");
    guardado[N] = move_of<cor>("b3b4");  // no knight's move
    run<cor>(LOOP(N, analiselivretest_cavalo), "b3");
    EXPECT_EQ(nodes, 0U);
  });
}

TEST(StoredMoves, ACaptureFromAfarIsTriedWhileNothingStandsBetween) {
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>("4k3/8/8/8/3p4/8/8/3RK3 w - - 0 1", true);
    guardado_g[N] = move_of<cor>("d4d1");
    run<cor>(LOOP(N, geradortest), "d4");
    EXPECT_EQ(nodes, 1U);
    prepare<N, cor>("4k3/8/8/8/3p4/8/3N4/3RK3 w - - 0 1", true);
    guardado_g[N] = move_of<cor>("d4d1");
    run<cor>(LOOP(N, geradortest), "d4");
    EXPECT_EQ(nodes, 0U);
  });
}

TEST(StoredMoves, PromotionsOfTheirOwnLoopAreNotStored) {
  each_node<7, 23, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(promoting, true);
    run<cor>(LOOP(N, analisepositive_peao), "a7");
    EXPECT_EQ(cut_flag(N), 1);
    EXPECT_EQ(guardado[N], sem_lance);
    EXPECT_EQ(guardado_g[N], sem_lance);
  });
}

TEST(StoredMoves, ACaptureIsForgottenAtEvenPliesFrom6OnePlyBeforeTheEnd) {
  each_node<3, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {N, N + 1, N + 2}) {
      stand(N - 1, told_for<cor>(locked));
      deep = depth;
      DEEP = 25;
      guardado_g[N] = {1, 1, 0, 0};
      enter<N, cor>("d1e1");
      const bool forgets = N % 2 == 0 && N >= 6 && depth == N + 1;
      EXPECT_EQ(guardado_g[N].aa, forgets ? -1 : 1) << "deep " << depth;
    }
  });
}

// --- What a node makes of them ---

// Number of moves that the node tries, each the end of a line, none a cut.
template <int N, Cor cor>
std::uint32_t tried_by_the_node(std::string_view fen, std::string_view move, Lance quiet,
                                Lance capture) {
  stand(N - 1, told_for<cor>(fen));
  totals<cor>(N - 1, 200, 200);
  deep = N;
  DEEP = 25;
  guardado[N] = quiet;
  guardado_g[N] = capture;
  enter<N, cor>(move);
  return nodes;
}

// Black, to reply: knight b8 takes a6 or goes to c6 and d7; king e8 has five steps.
constexpr std::string_view replies = "1n2k3/8/P7/8/8/8/8/1N2K3 w - - 0 1";
constexpr std::uint32_t all_replies = 8;

TEST(StoredMoves, WhateverTheyHoldEveryMoveIsTriedOnce) {
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto m = [](std::string_view text) { return move_of<cor>(text); };
    const auto with = [](Lance quiet, Lance capture) {
      return tried_by_the_node<N, cor>(replies, "b1d2", quiet, capture);
    };
    EXPECT_EQ(with(sem_lance, sem_lance), all_replies);
    EXPECT_EQ(with(m("b8c6"), m("a6b8")), all_replies) << "good ones";
    EXPECT_EQ(with(m("g8f6"), m("h5g3")), all_replies) << "of men that are gone";
    EXPECT_EQ(with(m("b8a6"), m("c6b8")), all_replies) << "a capture now, a quiet move now";
    EXPECT_EQ(with(m("d2f3"), m("b8a6")), all_replies) << "of the wrong side";
    EXPECT_EQ(with(sem_lance, m("e1e8")), all_replies) << "of a king";
  });
}

TEST(StoredMoves, AQuietMoveIsTriedByTheManThatStandsThereNow) {
  // A bishop's move once, now a queen's: her test member tries it, her plain member leaves it out.
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto with = [](Lance quiet) {
      return tried_by_the_node<N, cor>("q3k3/8/8/8/8/8/7P/4K3 w - - 0 1", "h2h3", quiet, sem_lance);
    };
    EXPECT_EQ(with(move_of<cor>("a8d5")), with(sem_lance));
    EXPECT_EQ(with(move_of<cor>("a8b6")), with(sem_lance)) << "no move of a queen";
  });
}

TEST(StoredMoves, AWalkMeetsTheSkippedSquareOfAnotherMan) {
  // The stored pawn's push from a7 to a5 belongs to no man now, and the pawn on a6 keeps its own.
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto with = [](Lance quiet) {
      return tried_by_the_node<N, cor>("4k3/8/p7/8/8/8/7P/4K3 w - - 0 1", "h2h3", quiet, sem_lance);
    };
    EXPECT_EQ(with(move_of<cor>("a7a5")), 6U);
    EXPECT_EQ(with(sem_lance), 6U);
  });
}

}  // namespace
}  // namespace korvu
