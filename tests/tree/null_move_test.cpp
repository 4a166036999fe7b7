// The null move of plies 2 to 5: the side to move passes, the mover of the incoming move plays
// again one ply on, two plies short. When that refutes the line the node never makes its own moves:
// its board keeps a mark.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "memory/ply_tables.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

constexpr std::string_view king_takes =
    "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/3Kn3 w - - 0 1";  // d1e1
constexpr std::string_view check =
    "3k4/p1p1p1p1/P1P1P1P1/8/7R/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1";  // h4h8, h4h7
// A queen shuts the king in: when White has gone to a1 he has no move left, and is not in check.
constexpr std::string_view shut_in = "8/8/8/8/8/8/2q5/1K4k1 w - - 0 1";  // b1a1
// After g1h1 White's only move is back to g1, where the queen mates.
constexpr std::string_view second_move_loses = "8/8/8/8/8/6k1/q7/6K1 w - - 0 1";

constexpr int passes_above(int n) {
  return n <= 3 ? 6 : 8;
}

// Everything that a null move at ply N needs, with a bound that the value 0 of the locked position
// meets: for even N what the opponent already has, for odd N what the root side has.
template <int N, Cor cor>
void prepare(std::string_view fen = locked) {
  stand(N - 1, told_for<cor>(fen));
  NULL_MOVE = 2;
  SCANT = 1;
  npecasb = npecasp = 8;
  deep = DEEP = passes_above(N) + 1;
  if constexpr (N % 2 == 0)
    beta[N - 1] = 0;
  else
    alfa[N - 1] = 0;
}

// Does passing refute the line, so that the node ends without moves of its own?
template <int N, Cor cor>
bool passing_refutes(std::string_view move = "d1e1") {
  mark_board(N);
  enter<N, cor>(move);
  return board_is_marked(N);
}

// --- Whether it is tried ---

TEST(NullMove, RefutesALineWhereDoingNothingIsEnough) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    EXPECT_TRUE((passing_refutes<N, cor>()));
    EXPECT_EQ(value(N), 0);
    EXPECT_EQ(deep, passes_above(N) + 1);
  });
}

TEST(NullMove, NeedsItsDepth) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    for (const int depth : {passes_above(N), passes_above(N) - 1}) {
      prepare<N, cor>();
      deep = depth;
      EXPECT_FALSE((passing_refutes<N, cor>())) << depth;
    }
  });
}

TEST(NullMove, NormalReachesPly2AndPlusReachesPly5) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    NULL_MOVE = 0;
    EXPECT_FALSE((passing_refutes<N, cor>()));
    prepare<N, cor>();
    NULL_MOVE = 1;
    EXPECT_EQ((passing_refutes<N, cor>()), N == 2);
  });
}

TEST(NullMove, DoesNotStandFromPly6) {
  each_node<6, 9>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    NULL_MOVE = 2;
    SCANT = 1;
    deep = DEEP = 13;
    value(N - 1) = 0;
    EXPECT_FALSE((passing_refutes<N, cor>()));
  });
}

TEST(NullMove, NeedsMoreThan4MenOfThePasserAndMoreThan2OfTheOther) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto with = [](int passer, int other) {
      prepare<N, cor>();
      npecas<outra(cor)>() = passer;
      npecas<cor>() = other;
      return passing_refutes<N, cor>();
    };
    EXPECT_TRUE(with(5, 3));
    EXPECT_FALSE(with(4, 3));
    EXPECT_FALSE(with(5, 2));
  });
}

TEST(NullMove, CountsTheMenOfTheRootNotOfTheBoard) {
  // After the capture the passer has as many men as before at the root.
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(king_takes);
    npecas<outra(cor)>() = 5;
    if (N % 2 == 0)
      beta[N - 1] = -900;
    else
      alfa[N - 1] = 900;
    EXPECT_TRUE((passing_refutes<N, cor>()));
  });
}

TEST(NullMove, IsNotTriedInCheck) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    const auto after = [](std::string_view move) {
      prepare<N, cor>(check);
      if (N % 2 == 0)
        beta[N - 1] = -16000;
      else
        alfa[N - 1] = 16000;
      return passing_refutes<N, cor>(move);
    };
    EXPECT_TRUE(after("h4h7"));
    EXPECT_FALSE(after("h4h8"));
  });
}

TEST(NullMove, AtPly2NeedsAValueOfPly1) {
  each_colour([]<Cor cor>() {
    prepare<2, cor>();
    beta[1] = start_beta;
    EXPECT_FALSE((passing_refutes<2, cor>()));
    prepare<2, cor>();
    SCANT = 0;
    EXPECT_TRUE((passing_refutes<2, cor>())) << "the pass kind is no matter here";
  });
}

TEST(NullMove, AtPly3NeedsTheRestPassOrAValueOfPly2) {
  each_colour([]<Cor cor>() {
    const auto with = [](std::uint8_t rest_pass, float alfa2) {
      prepare<3, cor>();
      SCANT = rest_pass;
      alfa[0] = 0;
      alfa[2] = alfa2;
      return passing_refutes<3, cor>();
    };
    EXPECT_TRUE(with(1, start_alfa));
    EXPECT_TRUE(with(0, -100));
    EXPECT_FALSE(with(0, start_alfa)) << "the root's own value does not count";
  });
}

TEST(NullMove, AtPly4NeedsAValueOfPly1OrPly3) {
  each_colour([]<Cor cor>() {
    const auto with = [](float beta1_, float beta3) {
      prepare<4, cor>();
      beta[1] = beta1_;
      beta[3] = beta3;
      return passing_refutes<4, cor>();
    };
    EXPECT_TRUE(with(0, start_beta));
    EXPECT_TRUE(with(start_beta, 0));
    EXPECT_FALSE(with(start_beta, start_beta));
  });
}

TEST(NullMove, AtPly5NeedsTheRestPassOrAValueOfPly2Or4) {
  each_colour([]<Cor cor>() {
    const auto with = [](std::uint8_t rest_pass, float alfa2, float alfa4) {
      prepare<5, cor>();
      SCANT = rest_pass;
      alfa[0] = 0;
      alfa[2] = alfa2;
      alfa[4] = alfa4;
      return passing_refutes<5, cor>();
    };
    EXPECT_TRUE(with(1, start_alfa, start_alfa));
    EXPECT_TRUE(with(0, -100, start_alfa));
    EXPECT_TRUE(with(0, start_alfa, -100));
    EXPECT_FALSE(with(0, start_alfa, start_alfa));
  });
}

// --- What it makes ---

TEST(NullMove, TheMoverPlaysAgainFromThePositionAfterHisMove) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(king_takes);
    if (N % 2 == 0)
      beta[N - 1] = -900;
    else
      alfa[N - 1] = 900;
    jm_D[N - 1] = {1, 0, 1, 0, 1, 0};
    const float mover = material<cor>(N - 1), other = material<outra(cor)>(N - 1);
    ASSERT_TRUE((passing_refutes<N, cor>()));
    EXPECT_EQ(tabd[N + 1][square_of<cor>("e1")], Lado<cor>::rei);
    EXPECT_EQ(tabd[N + 1][square_of<cor>("d1")], vazia);
    EXPECT_EQ(tabd[N + 1][square_of<cor>("d8")], Lado<outra(cor)>::rei) << "nobody answered";
    EXPECT_EQ(material<cor>(N + 1), mover);
    EXPECT_EQ(material<outra(cor)>(N + 1), other - 32);
    EXPECT_EQ(torre_a_moveu<Cor::b>(jm_D[N + 1]), 1) << "castling bytes come along";
    EXPECT_EQ(torre_h_moveu<Cor::b>(jm_D[N + 1]), 0);
    EXPECT_EQ(rei_moveu<cor>(jm_D[N + 1]), 1) << "and the move leaves its own";
  });
}

TEST(NullMove, CountsThePawnThatTheMoverHasJustPromoted) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>("8/P7/7k/8/8/8/8/4K3 w - - 0 1");
    for (std::size_t k = N + 2; k < MAXcut.size(); ++k) MAXcut[k] = -20000;
    value(N - 1) = N % 2 == 0 ? -16000 : 16000;  // met by any move
    promocao = 0;
    ppassado = 10;  // of another line
    ASSERT_TRUE((passing_refutes<N, cor>("a7a8")));
    EXPECT_EQ(material<cor>(N + 1), 120 + 80);
    EXPECT_EQ(material<outra(cor)>(N + 1), 110);
    EXPECT_EQ(tabd[N + 1][square_of<cor>("a8")], Lado<cor>::dama);
  });
}

TEST(NullMove, WhenTheMoverHasMoreTheNodeGoesOn) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    if (N % 2 == 0)
      beta[N - 1] = 0.5;
    else
      alfa[N - 1] = -0.5;
    EXPECT_FALSE((passing_refutes<N, cor>()));
    const Lance second = guardado[N + 1];
    EXPECT_NE(second, sem_lance) << "a second move of the mover met the null window";
    EXPECT_EQ(deep, passes_above(N) + 1);
  });
}

TEST(NullMove, AnyBoundOfTheOtherSideMayBeMet) {
  each_node<4, 5>([]<int N, Cor cor>() {
    for (int k = N - 1; k >= 0; k -= 2) {
      SCOPED_TRACE(at<cor>(N) + " by ply " + std::to_string(k));
      prepare<N, cor>();
      value(N - 1) = N % 2 == 0 ? 50 : -50;  // a value, not met
      value(k) = 0;
      EXPECT_TRUE((passing_refutes<N, cor>()));
    }
  });
}

// The slots as a reader of the clock sees them in the search after the pass.
struct Slots {
  float own, next;
  std::vector<float> bounds;  // of the passer, from the nearest ply to the root
  int deep, tables;
};

template <int N, Cor cor>
Slots slots_after_the_pass() {
  Slots s{};
  bool seen = false;
  TC = 1;
  clock_says([&] {
    if (!seen) {
      s.own = value(N);
      for (int k = N - 2; k >= 0; k -= 2) s.bounds.push_back(value(k));
      s.deep = deep;
      s.tables = HASHf;
      seen = true;
    }
    return 0;
  });
  enter<N, cor>("d1e1");
  EXPECT_TRUE(seen);
  return s;
}

TEST(NullMove, IsSearchedWithoutThePassersBoundsAgainstANullWindowTwoPliesShort) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    if (N == 2) NULL_MOVE = 1;  // further passes below would keep the line from its readers
    deep = DEEP = 11;
    HASHf = 1;
    std::vector<float> before;
    for (int k = N - 2; k >= 0; k -= 2) {
      value(k) = N % 2 == 0 ? -7 - k : 7 + k;
      before.push_back(value(k));
    }
    // Two bounds of the other side where there are two: the narrower one counts.
    constexpr float narrowest = N % 2 == 0 ? 1.25F : -1.25F;
    value(N - 1) = N % 2 == 0 ? 3 : -3;
    value(N % 2 == 0 ? 1 : 0) = narrowest;
    const Slots s = slots_after_the_pass<N, cor>();
    EXPECT_EQ(s.own, static_cast<float>(narrowest + (N % 2 == 0 ? -0.001 : 0.001)));
    for (const float bound : s.bounds) EXPECT_EQ(bound, N % 2 == 0 ? start_alfa : start_beta);
    EXPECT_EQ(s.deep, 9);
    EXPECT_EQ(s.tables, 0);
    std::vector<float> after;
    for (int k = N - 2; k >= 0; k -= 2) after.push_back(value(k));
    EXPECT_EQ(after, before) << "put back";
    EXPECT_EQ(deep, 11);
    EXPECT_EQ(HASHf, 1);
  });
}

TEST(NullMove, CountsTheMoversMovesAfresh) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>();
    currN[N] = 3;
    LmrT[N] = AmrT[N] = 1;
    currN[N + 1] = 17;
    LmrT[N + 1] = AmrT[N + 1] = 1;
    ASSERT_TRUE((passing_refutes<N, cor>()));
    EXPECT_EQ(LmrT[N + 1], 0);
    EXPECT_EQ(AmrT[N + 1], 0);
    EXPECT_EQ(currN[N + 1], 0) << "no node of ply N + 1 is entered";
    EXPECT_EQ(currN[N], 3) << "the node itself has not been counted";
    EXPECT_EQ(LmrT[N], 1);
    EXPECT_EQ(AmrT[N], 1);
  });
}

// --- Results that are not trusted ---

TEST(NullMove, AMateBehindThePassIsNotTrusted) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(second_move_loses);
    deep = N <= 2 ? 7 : N <= 4 ? 9 : 11;     // three plies behind the pass the mate is seen
    value(N - 1) = N % 2 == 0 ? 200 : -200;  // which nothing but a mate meets
    EXPECT_FALSE((passing_refutes<N, cor>("g1h1")));
  });
}

TEST(NullMove, AMoverWithoutASecondMoveRefutesNothing) {
  each_node<2, 5>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    prepare<N, cor>(shut_in);
    emp = N % 2 == 0 ? 5 : -5;  // a stalemate's value would meet the bound
    for (std::size_t k = N + 2; k < MAXcut.size(); ++k) MAXcut[k] = -20000;
    EXPECT_FALSE((passing_refutes<N, cor>("b1a1")));
  });
}

}  // namespace
}  // namespace korvu
