// When a reply refutes the line: against every bound of the other parity above, against the cap of
// the ply, and at the last ply of a line for most loops with the first legal reply.
#include <gtest/gtest.h>

#include <cmath>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

// --- Bounds and caps ---

constexpr std::string_view knight = "4k3/8/8/8/8/8/8/1N2K3 w - - 0 1";  // to d2, a3, c3
constexpr Lance none = {-1, -1, -1, -1};

// What every knight's move is worth below, by the ply of the leaf: equal totals.
template <int N>
constexpr float worth = N == 3 || N == 4 ? 1 : 0;

// The knight's loop at ply N stands ready; behind it lines end without a cut of their own.
template <int N, Cor cor>
void prepare() {
  stand(N, told_for<cor>(knight));
  totals<cor>(N, 200, 200);
  deep = N == 2 ? 3 : N % 2 == 0 ? N : N + 1;
  DEEP = 25;
}

// Plain and test member of a loop, by colour.
#define LOOP(N, name) (cor == Cor::b ? name##_b<N> : name##_p<N>)

// At ply 23 a line has no depth but 23, where the plain member is content with any reply; there the
// test member is asked.
template <int N, Cor cor>
bool knight_cuts() {
  constexpr Lance first = move_of<cor>("b1d2");
  if constexpr (N == 23) {
    deep = N;
    guardado[N] = first;
    LOOP(N, analiselivretest_cavalo)(first.aa, first.bb);
  } else {
    LOOP(N, analiselivre_cavalo)(first.aa, first.bb);
  }
  EXPECT_EQ(value(N), worth<N>);
  const bool cut = cut_flag(N) != 0;
  if (N != 23) {
    EXPECT_EQ(guardado[N], cut ? first : none) << "a cut stores its move, and nothing else does";
  }
  return cut;
}

TEST(Cut, OpenBoundsLetEveryMoveBeTried) {
  each_node<2, 22>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    EXPECT_FALSE((knight_cuts<N, cor>()));
    EXPECT_GE(nodes, 3U);
    EXPECT_EQ(X_D[N], 0);
  });
}

TEST(Cut, AnEvenPlyIsCutByReachingAnyBetaAbove) {
  each_node<2, 22, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 1; k < N; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against beta" + std::to_string(k));
      prepare<N, cor>();
      beta[k] = worth<N>;
      EXPECT_TRUE((knight_cuts<N, cor>()));
      prepare<N, cor>();
      beta[k] = worth<N> + 0.5F;
      EXPECT_FALSE((knight_cuts<N, cor>()));
    }
  });
}

TEST(Cut, AnOddPlyIsCutByFallingToAnyAlfaAbove) {
  each_node<3, 23, 2>([]<int N, Cor cor>() {
    for (std::size_t k = 0; k < N; k += 2) {
      SCOPED_TRACE(at<cor>(N) + " against alfa" + std::to_string(k));
      prepare<N, cor>();
      alfa[k] = worth<N>;
      EXPECT_TRUE((knight_cuts<N, cor>()));
      prepare<N, cor>();
      alfa[k] = worth<N> - 0.5F;
      EXPECT_FALSE((knight_cuts<N, cor>()));
    }
  });
}

TEST(Cut, TheCapOfThePlyCuts) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    constexpr float gain = N % 2 == 0 ? worth<N> : -worth<N>;  // of the side that moves here
    prepare<N, cor>();
    MAXcut[N] = gain;
    EXPECT_TRUE((knight_cuts<N, cor>()));
    prepare<N, cor>();
    MAXcut[N] = gain + 0.5F;
    EXPECT_FALSE((knight_cuts<N, cor>()));
  });
}

TEST(Cut, CapsOfOtherPliesDoNot) {
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    MAXcut.fill(-5000);
    MAXcut[N] = 20000;
    EXPECT_FALSE((knight_cuts<N, cor>()));
  });
}

TEST(Cut, BoundsOfThePlysOwnParityDoNot) {
  each_node<4, 22, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    for (std::size_t k = 0; k < N; k += 2) alfa[k] = 900;
    EXPECT_FALSE((knight_cuts<N, cor>()));
  });
}

// --- The node looks at the flag after every loop call ---

TEST(Cut, EndsTheNode) {
  each_node<2, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    // Black answers with pawns, knight and king; the first pawn's first move meets the cap.
    stand(N - 1, told_for<cor>("1n2k3/pp6/8/8/8/8/1P6/1N2K3 w - - 0 1"));
    deep = N == 2 ? 3 : N;
    DEEP = 25;
    MAXcut[N] = -5000;
    enter<N, cor>("b1c3");
    EXPECT_EQ(cut_flag(N), 1);
    EXPECT_EQ(guardado[N], move_of<cor>("a7a5"));
    if (N > 2) {
      EXPECT_EQ(nodes, 1U);
    }
  });
}

TEST(Cut, TheFlagIsClearedBeforeTheFirstLoop) {
  each_node<3, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    deep = N;
    DEEP = 25;
    cut_flag(N) = 1;
    enter<N, cor>("d1e1");
    EXPECT_GT(nodes, 0U);
  });
}

// --- One reply is enough at the last ply ---

constexpr bool one_reply(int n) {
  return n % 2 != 0 && n >= 7;
}

// Runs one loop of the man on a square at ply N with `deep` there (at even plies one behind, so
// that it is odd as in play), with a stored move or none. `tried` counts the loop's moves, and at
// even plies replies to them too.
struct Loop {
  std::uint32_t tried;
  bool cut;
};

template <int N, Cor cor, class F>
Loop run(std::string_view fen, std::string_view square, F loop, Lance quiet = none,
         Lance capture = none) {
  stand(N, told_for<cor>(fen));
  totals<cor>(N, 200, 200);
  deep = N | 1;
  DEEP = 25;
  guardado[N] = quiet;
  guardado_g[N] = capture;
  const auto from = static_cast<int>(square_of<cor>(square));
  loop(from / 8, from % 8);
  return {nodes, cut_flag(N) != 0};
}

constexpr std::string_view men = "4k3/8/8/8/3Q4/2R2B2/1P6/1N2K3 w - - 0 1";
constexpr std::string_view two_takers = "4k3/8/8/8/3p4/1N3N2/8/4K3 w - - 0 1";
constexpr std::string_view promoting = "1n6/P7/7k/8/8/8/8/4K3 w - - 0 1";

TEST(OneReply, EndsTheNodeInTheCaptureLoop) {
  each_node<3, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const Loop l = run<N, cor>(two_takers, "d4", LOOP(N, gerador));
    if (N % 2 != 0) {
      EXPECT_EQ(l.tried, one_reply(N) ? 1U : 2U);
    }
    EXPECT_EQ(l.cut, one_reply(N));
  });
}

TEST(OneReply, EndsTheNodeInEveryLoopOfQuietMoves) {
  each_node<3, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto expect = [](const Loop& l) {
      EXPECT_EQ(l.cut, one_reply(N));
      if (one_reply(N)) {
        EXPECT_EQ(l.tried, 1U);
      } else {
        EXPECT_GT(l.tried, 1U);
      }
    };
    expect(run<N, cor>(men, "b2", LOOP(N, analiselivre_peao)));
    expect(run<N, cor>(men, "b1", LOOP(N, analiselivre_cavalo)));
    expect(run<N, cor>(men, "f3", LOOP(N, analiselivre_bispo)));
    expect(run<N, cor>(men, "c3", LOOP(N, analiselivre_torre)));
    expect(run<N, cor>(men, "d4", LOOP(N, analiselivre_dama)));
    expect(run<N, cor>(men, "e1", LOOP(N, analiselivre_rei)));
    expect(run<N, cor>("4k3/8/8/8/8/8/8/4K2R w K - 0 1", "e1", LOOP(N, analiselivre_rei)));
  });
}

TEST(OneReply, OfTheTestMembersOnlyThePawnsTakesPart) {
  each_node<3, 23>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto expect = [](const Loop& l, bool cut) {
      EXPECT_EQ(l.cut, cut);
      if (N % 2 != 0) {
        EXPECT_EQ(l.tried, 1U);
      } else {
        EXPECT_GT(l.tried, 0U);
      }
    };
    const auto m = [](std::string_view text) { return move_of<cor>(text); };
    expect(run<N, cor>(men, "b2", LOOP(N, analiselivretest_peao), m("b2b3")), one_reply(N));
    expect(run<N, cor>(men, "b1", LOOP(N, analiselivretest_cavalo), m("b1a3")), false);
    expect(run<N, cor>(men, "f3", LOOP(N, analiselivretest_bispo), m("f3g4")), false);
    expect(run<N, cor>(men, "c3", LOOP(N, analiselivretest_torre), m("c3a3")), false);
    expect(run<N, cor>(men, "d4", LOOP(N, analiselivretest_dama), m("d4d7")), false);
    expect(run<N, cor>(men, "e1", LOOP(N, analiselivretest_rei), m("e1f1")), false);
    const Lance capture = m("d4b3");  // target first
    expect(run<N, cor>(two_takers, "d4", LOOP(N, geradortest), none, capture), false);
  });
}

TEST(OneReply, DoesNotEndThePromotions) {
  each_node<7, 23, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const Loop l = run<N, cor>(promoting, "a7", LOOP(N, analisepositive_peao));
    EXPECT_EQ(l.tried, 2U) << "the capture and the push";
    EXPECT_FALSE(l.cut);
  });
}

TEST(OneReply, IsNotEnoughBeforeTheLastPly) {
  each_node<7, 21, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    deep = N + 2;
    EXPECT_FALSE((knight_cuts<N, cor>()));
  });
}

// Knights come before bishops: where one reply is enough the bishop, worth one more, stays.
TEST(OneReply, ItsValueStandsThoughABetterReplyIsThere) {
  each_node<3, 23, 2>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>("4k3/8/2p1p3/1N1B4/8/8/8/4K3 w - - 0 1"));
    totals<cor>(N - 1, 300, 200);
    deep = N;
    DEEP = 25;
    extradef = 0;
    enter<N, cor>("e1f1");
    EXPECT_EQ(value(N), one_reply(N) ? 68 : 67);
  });
}

}  // namespace
}  // namespace korvu
