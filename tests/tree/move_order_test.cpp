// Which moves a node tries, and in which order.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "memory/ply_tables.h"
#include "support/positions.h"
#include "support/referee.h"
#include "tree/expected_order.h"
#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;
using expected::Promotions;

Lance lance_of(const referee::Move& m) {
  return {referee::file_of(m.from), referee::rank_of(m.from), referee::file_of(m.to),
          referee::rank_of(m.to)};
}

std::string names(const std::vector<referee::Move>& moves) {
  std::string text;
  for (const referee::Move& m : moves) text += m.text() + ' ';
  return text;
}

// --- Whole orders, at the plies whose children have a table ---

// The records of the children's table lie in the order of the moves tried. Bounds are such that
// every record has the same key, and caps such that every descendant is content with its first
// reply and this ply with none.
template <int N, Cor cor>
std::vector<referee::Move> tried(const referee::Position& p, Lance quiet = sem_lance,
                                 Lance capture = sem_lance) {
  stand(N, p.fen());
  guardado[N] = quiet;
  guardado_g[N] = capture;
  limpa_tabelas<Cor::b>();
  limpa_tabelas<Cor::p>();
  HASHf = 1;
  deep = N == 2 ? 3 : 9;
  DEEP = 25;
  MAXcut.fill(-20000);
  MAXcut[N] = 20000;
  if constexpr (N % 2 == 0)
    alfa[0] = 16000;  // hides what this ply's own value adds to the lower bound
  else
    beta[1] = -16000;  // likewise for the upper bound
  fases<N, cor>();

  struct Found {
    const float* record;
    referee::Move move;
  };
  std::vector<Found> found;
  for (const referee::Move& m : p.legal_moves()) {
    if (m.promo != 0 && m.promo != 'q') continue;
    const Lance l = lance_of(m);
    init_tabuleiro2_deep<N, cor>(l.aa, l.bb, l.cc, l.dd);
    const float* record = tabela_de<N + 1, cor>().procura(chave_atual<N + 1>());
    if (record != nullptr) found.push_back({record, m});
  }
  const int records = tabela_de<N + 1, cor>().indice();
  EXPECT_EQ(records, static_cast<int>(found.size())) << "moves tried that are not legal, or twice";
  std::sort(found.begin(), found.end(),
            [](const Found& a, const Found& b) { return a.record < b.record; });
  std::vector<referee::Move> moves;
  for (const Found& f : found) moves.push_back(f.move);
  return moves;
}

template <int N>
void expect_order_everywhere() {
  int positions = 0;
  for (const std::string& fen : referee::varied_fens()) {
    const referee::Position p = referee::Position::from_fen(fen);
    const auto seen = p.white_to_move() ? tried<N, Cor::b>(p) : tried<N, Cor::p>(p);
    ASSERT_EQ(names(seen), names(expected::order(p, Promotions::among_the_others))) << fen;
    ++positions;
  }
  EXPECT_GT(positions, 300);
}

TEST(MoveOrder, AtPly2) {
  expect_order_everywhere<2>();
}
TEST(MoveOrder, AtPly3) {
  expect_order_everywhere<3>();
}
TEST(MoveOrder, AtPly4) {
  expect_order_everywhere<4>();
}

// --- The first move tried, at all plies below ---

// Plays m, unplayed at ply N - 1, and has the node content with its first reply.
template <int N, Cor cor>
void expect_first_reply(const referee::Position& before, const referee::Move& m) {
  const auto replies = expected::order(
      before.after(m), N % 2 != 0 ? Promotions::first : Promotions::among_the_others);
  if (replies.empty()) return;
  stand(N - 1, before.fen());
  deep = N;
  DEEP = 25;
  MAXcut[N] = -20000;
  const Lance l = lance_of(m);
  init_tabuleiro2_deep<N - 1, cor>(l.aa, l.bb, l.cc, l.dd);
  no<N, cor>(l.aa, l.bb, l.cc, l.dd);

  const referee::Move& first = replies.front();
  const Lance reply = lance_of(first);
  ASSERT_EQ(nodes, 1U);
  if (N % 2 != 0 && first.promo != 0) {
    EXPECT_EQ(guardado[N], sem_lance);
    EXPECT_EQ(guardado_g[N], sem_lance);
  } else if (before.after(m).at(first.to) != ' ') {
    EXPECT_EQ(guardado_g[N], (Lance{reply.cc, reply.dd, reply.aa, reply.bb}));
    EXPECT_EQ(guardado[N], sem_lance);
  } else {
    EXPECT_EQ(guardado[N], reply);
    EXPECT_EQ(guardado_g[N], sem_lance);
  }
}

TEST(MoveOrder, TheFirstReplyAtEveryPlyFrom6) {
  each_node<6, 23>([]<int N, Cor cor>() {
    std::size_t k = 0;
    for (const std::string& fen : referee::varied_fens()) {
      const referee::Position p = referee::Position::from_fen(fen);
      if (p.white_to_move() != (cor == Cor::b)) continue;
      std::vector<referee::Move> moves = p.legal_moves();
      std::erase_if(moves, [](const referee::Move& m) { return m.promo != 0 && m.promo != 'q'; });
      const referee::Move& m = moves[(7 * N + k++) % moves.size()];
      SCOPED_TRACE(at<cor>(N) + " after " + m.text() + " in " + fen);
      expect_first_reply<N, cor>(p, m);
    }
    EXPECT_GT(k, 100U);
  });
}

// At the last ply of a line every promotion is tried, then one reply more.
TEST(MoveOrder, AllPromotionsComeFirstAtOddPliesFrom7) {
  each_node<7, 23, 2>([]<int N, Cor cor>() {
    int promotions_met = 0;
    for (const std::string& fen : referee::varied_fens()) {
      const referee::Position p = referee::Position::from_fen(fen);
      if (p.white_to_move() != (cor == Cor::b)) continue;
      const referee::Move m = p.legal_moves().front();
      if (m.promo != 0) continue;
      const auto replies = p.after(m).legal_moves();
      const auto promotions =
          std::count_if(replies.begin(), replies.end(), [](auto& r) { return r.promo == 'q'; });
      const bool others =
          std::any_of(replies.begin(), replies.end(), [](auto& r) { return r.promo == 0; });
      promotions_met += promotions > 0;
      stand(N - 1, fen);
      deep = N;
      DEEP = 25;
      const Lance l = lance_of(m);
      init_tabuleiro2_deep<N - 1, cor>(l.aa, l.bb, l.cc, l.dd);
      no<N, cor>(l.aa, l.bb, l.cc, l.dd);
      ASSERT_EQ(nodes, static_cast<std::uint32_t>(promotions) + (others ? 1 : 0))
          << at<cor>(N) << " after " << m.text() << " in " << fen;
    }
    EXPECT_GT(promotions_met, 3);
  });
}

// --- Single positions ---

// The moves of ply 2, with a stored quiet move and a stored capture.
template <Cor cor>
std::string at_ply_2(std::string_view fen, Lance quiet = sem_lance, Lance capture = sem_lance) {
  return names(tried<2, cor>(referee::Position::from_fen(told_for<cor>(fen)), quiet, capture));
}

// Every kind of victim but one can be taken; knights go before bishops, the queen's taker first.
constexpr std::string_view rich = "4k3/8/8/8/2p1b3/2n1r3/1q1P1P2/R1B3K1 w - - 0 1";

TEST(MoveOrder, CapturesByVictimThenQuietMovesByMan) {
  EXPECT_EQ(at_ply_2<Cor::b>(rich),
            "c1b2 f2e3 d2e3 d2c3 d2d4 d2d3 f2f4 f2f3 "
            "a1b1 a1a2 a1a3 a1a4 a1a5 a1a6 a1a7 a1a8 g1f1 g1h2 ");
}

TEST(MoveOrder, StoredMovesComeFirstOfTheirKindAndOnlyOnce) {
  EXPECT_EQ(at_ply_2<Cor::b>(rich, {0, 0, 0, 4}, {2, 2, 3, 1}),
            "d2c3 c1b2 f2e3 d2e3 a1a5 d2d4 d2d3 f2f4 f2f3 "
            "a1b1 a1a2 a1a3 a1a4 a1a6 a1a7 a1a8 g1f1 g1h2 ");
}

TEST(MoveOrder, AStoredCaptureWhoseVictimHasGoneIsNotLostElsewhere) {
  const std::string all = at_ply_2<Cor::b>(rich);
  EXPECT_EQ(at_ply_2<Cor::b>(rich, sem_lance, {3, 2, 3, 1}), all) << "nothing stands on d3";
  EXPECT_EQ(at_ply_2<Cor::b>(rich, sem_lance, {2, 2, 1, 0}), all) << "nobody on b1 takes";
  EXPECT_EQ(at_ply_2<Cor::b>(rich, sem_lance, {3, 1, 2, 0}), all) << "a man of one's own";
  EXPECT_EQ(at_ply_2<Cor::b>(rich, sem_lance, {4, 7, 0, 0}), all) << "a king";
}

TEST(MoveOrder, AKingsCastlingsComeBeforeItsStepsTheShortOneFirst) {
  constexpr std::string_view fen = "4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1";
  const std::string white = at_ply_2<Cor::b>(fen), black = at_ply_2<Cor::p>(fen);
  EXPECT_TRUE(white.ends_with("e1g1 e1c1 e1f1 e1d1 e1e2 e1f2 e1d2 ")) << white;
  EXPECT_TRUE(black.ends_with("e8g8 e8c8 e8f8 e8d8 e8e7 e8d7 e8f7 ")) << black;
}

TEST(MoveOrder, OnAFileTheMostAdvancedPawnMovesFirst) {
  constexpr std::string_view fen = "7k/8/8/4P3/8/1P6/4P3/7K w - - 0 1";
  const std::string white = at_ply_2<Cor::b>(fen), black = at_ply_2<Cor::p>(fen);
  EXPECT_TRUE(white.starts_with("b3b4 e5e6 e2e4 e2e3 ")) << white;
  EXPECT_TRUE(black.starts_with("b6b5 e4e3 e7e5 e7e6 ")) << black;
}

TEST(MoveOrder, ACaptureInPassingComesBeforeThePushAndNeedsTheDoubleStep) {
  const std::string with = at_ply_2<Cor::b>("4k3/8/8/2pPp3/8/8/8/4K3 w - c6 0 1");
  EXPECT_TRUE(with.starts_with("d5c6 d5d6 e1f1 ")) << with;
  const std::string without = at_ply_2<Cor::b>("4k3/8/8/2pPp3/8/8/8/4K3 w - - 0 1");
  EXPECT_TRUE(without.starts_with("d5d6 e1f1 ")) << without;
}

TEST(MoveOrder, AMoveOfTheKingAloneIsFoundInTheLastPhase) {
  EXPECT_EQ(at_ply_2<Cor::b>("7k/8/8/8/8/1q6/8/K7 w - - 0 1"), "");
  EXPECT_EQ(at_ply_2<Cor::b>("7k/8/8/8/8/2q5/8/K7 w - - 0 1"), "a1b1 a1a2 ");
}

// --- Castling ---

// The castlings among the moves of ply 2.
template <Cor cor>
std::string castlings(std::string_view fen) {
  std::string text;
  const std::string moves = at_ply_2<cor>(fen);
  if (moves.find(cor == Cor::b ? "e1g1" : "e8g8") != std::string::npos) text += 'K';
  if (moves.find(cor == Cor::b ? "e1c1" : "e8c8") != std::string::npos) text += 'Q';
  return text;
}

TEST(Castling, NeedsRightsRookEmptySquaresAndASafeWay) {
  each_colour([]<Cor cor>() {
    SCOPED_TRACE(at<cor>(2));
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1"), "KQ");
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/8/R3K2R w K - 0 1"), "K");
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/8/R3K2R w Q - 0 1"), "Q");
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/8/R3K2R w - - 0 1"), "");
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/8/R3K1N1 w KQ - 0 1"), "Q") << "no rook, and a knight";
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/8/1N2K2R w KQ - 0 1"), "K");
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/8/RN2KB1R w KQ - 0 1"), "") << "b1 and f1 are taken";
    EXPECT_EQ(castlings<cor>("4kr2/8/8/8/8/8/8/R3K2R w KQ - 0 1"), "Q") << "f1 is attacked";
    EXPECT_EQ(castlings<cor>("4k1r1/8/8/8/8/8/8/R3K2R w KQ - 0 1"), "Q") << "g1 is attacked";
    EXPECT_EQ(castlings<cor>("2r1k3/8/8/8/8/8/8/R3K2R w KQ - 0 1"), "K") << "c1 is attacked";
    EXPECT_EQ(castlings<cor>("1r2k3/8/8/8/8/8/8/R3K2R w KQ - 0 1"), "KQ") << "b1 may be attacked";
    EXPECT_EQ(castlings<cor>("4k3/8/8/8/8/8/4r3/R3K2R w KQ - 0 1"), "") << "in check";
    EXPECT_EQ(castlings<cor>("5k2/8/8/8/8/8/8/R3K2R w KQ - 0 1"), "KQ")
        << "the check that the short one gives is no matter to the long one";
  });
}

// While a castling is searched its mark stands, worth more the earlier it was made.
TEST(Castling, LeavesItsMarkForTheTimeOfTheChild) {
  // At ply N the king castles at once by the stored move; the mark is looked at where the clock is
  // read, at an odd ply from 7 below.
  const auto mark_at = []<int N, Cor cor>() {
    stand(N, told_for<cor>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1"));
    TC = 1;
    deep = std::max(9, N % 2 == 0 ? N + 3 : N + 4);
    DEEP = 25;
    for (std::size_t k = N + 1; k < MAXcut.size(); ++k) MAXcut[k] = -20000;
    guardado[N] = move_of<cor>("e1g1");
    int mark = -1, other = -1;
    clock_says([&] {
      if (mark < 0) {
        mark = roque<cor>();
        other = roque<outra(cor)>();
      }
      return 0;
    });
    constexpr auto king = move_of<cor>("e1g1");
    if constexpr (cor == Cor::b)
      analiselivretest_rei_b<N>(king.aa, king.bb);
    else
      analiselivretest_rei_p<N>(king.aa, king.bb);
    EXPECT_EQ(roque<cor>(), 0) << "cleared on return";
    EXPECT_EQ(other, 0);
    return mark;
  };
  // By plies 2 to 19: two plies share a value down to 2.
  constexpr int marks[] = {0, 0, 9, 9, 8, 8, 7, 7, 6, 6, 5, 5, 4, 4, 3, 3, 2, 2, 2, 2};
  each_node<2, 19>([&]<int N, Cor cor>() {
    const int mark = mark_at.template operator()<N, cor>();
    EXPECT_EQ(mark, marks[N]) << at<cor>(N);
  });
  for (const int ply : {20, 21, 22, 23}) EXPECT_EQ(valor_do_roque_em(ply), 2);
  for (const int ply : {0, 1}) EXPECT_EQ(valor_do_roque_em(ply), 10);
}

TEST(Castling, CountsANodeAndGivesNoMarkToStepsOfTheKing) {
  each_colour([]<Cor cor>() {
    stand(6, told_for<cor>("4k3/8/8/8/8/8/8/4K2R w K - 0 1"));
    deep = 6;
    constexpr auto king = move_of<cor>("e1g1");
    (cor == Cor::b ? analiselivre_rei_b<6> : analiselivre_rei_p<6>)(king.aa, king.bb);
    EXPECT_EQ(nodes, 6U) << "a castling and five steps";
    EXPECT_EQ(XEQUE_MATE[6], 0);
    stand(6, told_for<cor>("4k3/8/8/8/8/8/4r3/4K2R w K - 0 1"));
    deep = 6;
    (cor == Cor::b ? analiselivre_rei_b<6> : analiselivre_rei_p<6>)(king.aa, king.bb);
    EXPECT_EQ(nodes, 2U) << "d1 and f1; the rook itself is no target of this loop";
    EXPECT_EQ(XEQUE_MATE[6], 1) << "in check the mark of mate stays";
  });
}

}  // namespace
}  // namespace korvu
