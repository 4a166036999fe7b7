// One expander: which moves it makes of a square, the filters that a move passes, and the books
// that are kept of the best one.
#include <gtest/gtest.h>

#include <string>

#include "board/attack.h"
#include "board/draw.h"
#include "board/root_move.h"
#include "eval/strategy.h"
#include "root/expanders.h"
#include "root/ladder.h"
#include "root/root_lab.h"

namespace korvu {
namespace {

using namespace root_lab;
using enum Classe;
constexpr Xeque with_check = Xeque::ch, without = Xeque::sh;

void at_depth_1(std::string_view fen) {
  at_root(fen);
  deep = DEEP = 1;
  SCANT = 1;  // so that moves are reported
}

// Serves all ratings to one expander on one square.
template <Cor root>
void expand(Classe k, Xeque x, Peca p, std::string_view square) {
  const auto s = static_cast<int>(tree_lab::square_of<root>(square));
  for (ataque = 100; ataque >= -100; --ataque) analise100<root>({k, x, p}, s / 8, s % 8);
}

// Both check classes.
template <Cor root>
void expand(Classe k, Peca p, std::string_view square) {
  expand<root>(k, with_check, p, square);
  expand<root>(k, without, p, square);
}

// Have these moves been reported, and no others? Told as for White.
template <Cor root>
void expect_moves(std::initializer_list<std::string_view> moves) {
  EXPECT_EQ(reports().size(), moves.size()) << reported_moves();
  for (const std::string_view m : moves)
    EXPECT_NE(reported_moves().find(written<root>(m)), std::string::npos)
        << m << " is not among " << reported_moves();
}

// --- Target and check classes ---

constexpr std::string_view rook_ahead = "7k/3r4/8/8/8/8/8/3QK3 w - - 0 1";

TEST(Expander, AQuietRayEndsBeforeTheManAndACapturingOneIsThatManAlone) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(rook_ahead));
    expand<root>(livre, Peca::dama, "d1");
    expect_moves<root>({"d1c1", "d1b1", "d1a1", "d1d2", "d1d3", "d1d4", "d1d5", "d1d6", "d1e2",
                        "d1f3", "d1g4", "d1h5", "d1c2", "d1b3", "d1a4"});
    for (const Classe k : {positive1, positive2, positive3, positive4, positive5}) {
      at_depth_1(told_for<root>(rook_ahead));
      expand<root>(k, Peca::dama, "d1");
      if (k == positive4)
        expect_moves<root>({"d1d7"});
      else
        expect_moves<root>({});
    }
  });
}

TEST(Expander, EachClassTakesItsVictim) {
  each_colour([]<Cor root>() {
    const auto taken_by_knight = [](Classe k) {
      at_depth_1(told_for<root>("7k/8/2p1b3/1n3r2/3N4/1q6/8/4K3 w - - 0 1"));
      expand<root>(k, Peca::cavalo, "d4");
      return reported_moves();
    };
    EXPECT_EQ(taken_by_knight(positive1), written<root>("d4c6"));
    EXPECT_EQ(taken_by_knight(positive2), written<root>("d4e6"));
    EXPECT_EQ(taken_by_knight(positive3), written<root>("d4b5"));
    EXPECT_EQ(taken_by_knight(positive4), written<root>("d4f5"));
    EXPECT_EQ(taken_by_knight(positive5), written<root>("d4b3"));
  });
}

TEST(Expander, TheCheckClassesShareTheMoves) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(rook_ahead));
    expand<root>(livre, with_check, Peca::dama, "d1");
    expect_moves<root>({"d1a1", "d1h5", "d1d4"});
    at_depth_1(told_for<root>(rook_ahead));
    expand<root>(livre, without, Peca::dama, "d1");
    EXPECT_EQ(reports().size(), 12U);
  });
}

TEST(Expander, IllegalMovesAreDropped) {
  each_colour([]<Cor root>() {
    // The knight is pinned; of the king's steps one is guarded.
    at_depth_1(told_for<root>("3kr3/8/8/8/8/8/4N3/4K3 w - - 0 1"));
    expand<root>(livre, Peca::cavalo, "e2");
    expect_moves<root>({});
    EXPECT_EQ(best_move(), "none");
    at_depth_1(told_for<root>("3kr3/8/8/8/8/8/3N4/4K3 w - - 0 1"));
    expand<root>(livre, Peca::rei, "e1");
    expect_moves<root>({"e1f1", "e1d1", "e1f2"});
  });
}

TEST(Expander, EveryMoveIsSearchedAtItsRatingAndNowhereElse) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(rook_ahead));
    expand<root>(livre, Peca::dama, "d1");
    for (const Report& r : reports()) {
      const Lance m = {r.move[0] - 'a', r.move[1] - '1', r.move[2] - 'a', r.move[3] - '1'};
      init_tabuleiro2<root>(m.aa, m.bb, m.cc, m.dd);
      verifica_rei<root>();
      verifica_estrategia<root>();
      EXPECT_EQ(r.rating, ESTRATEGIA) << r.move;
    }
  });
}

TEST(Expander, OrderOfAPawnsMoves) {
  // All ratings at once: the order within one rating is that of generation, so moves of equal
  // rating are compared.
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>("7k/8/8/1pPp4/8/8/4P3/4K3 w - b6 0 1"));
    duplo<outra(root)>(duplos)[3] = 1;  // as if both neighbours had just come
    expand<root>(positive1, Peca::peao, "c5");
    expect_moves<root>({"c5b6", "c5d6"});
    if (reports().size() == 2 && reports()[0].rating == reports()[1].rating) {
      EXPECT_EQ(reports()[0].move, written<root>("c5d6"));
    }
    at_depth_1(told_for<root>("7k/8/8/1pPp4/8/8/4P3/4K3 w - - 0 1"));
    expand<root>(livre, Peca::peao, "e2");
    expect_moves<root>({"e2e4", "e2e3"});
    expand<root>(positive1, Peca::peao, "c5");
    expect_moves<root>({"e2e4", "e2e3"});  // no pawn has just come
  });
}

TEST(Expander, CapturesInPassingAreOfClass1Alone) {
  each_colour([]<Cor root>() {
    for (const Classe k : {livre, positive2, positive3, positive4, positive5}) {
      at_depth_1(told_for<root>("7k/8/8/1pP5/8/8/8/4K3 w - b6 0 1"));
      expand<root>(k, Peca::peao, "c5");
      if (k == livre)
        expect_moves<root>({"c5c6"});
      else
        expect_moves<root>({});
    }
  });
}

// --- The books ---

TEST(Expander, TheBestMoveIsStoredWithItsScore) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(locked));
    MAXcut[0] = 1.0F;  // ends after the first
    expand<root>(livre, Peca::rei, "d1");
    ASSERT_GE(reports().size(), 1U);
    const Lance m = melhor;
    EXPECT_EQ(best_move(), reports()[0].move);
    EXPECT_EQ(jogada.a, m.aa);
    EXPECT_EQ(jogada.b, m.bb);
    EXPECT_EQ(jogada.c, m.cc);
    EXPECT_EQ(jogada.d, m.dd);
    EXPECT_EQ(E, 1);
    EXPECT_EQ(alfa0, 1);
  });
}

TEST(Expander, AlfaAndTheBestScoreGoTheirOwnWays) {
  each_colour([]<Cor root>() {
    const auto after = [](float alfa, float best) {
      at_depth_1(told_for<root>(locked));
      alfa0 = alfa;
      E = best;
      expand<root>(livre, Peca::rei, "d1");  // both moves are worth 1
    };
    after(0, 50);
    EXPECT_EQ(alfa0, 1);
    EXPECT_EQ(E, 50);
    EXPECT_EQ(best_move(), "none");
    after(100, -50);
    EXPECT_EQ(alfa0, 100);
    EXPECT_EQ(E, 1);
    EXPECT_NE(best_move(), "none");
    after(1, 1);
    EXPECT_EQ(best_move(), "none") << "equal is not better";
  });
}

TEST(Expander, EverySearchedMoveCountsANode) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>(locked));
    deep = 0;
    expand<root>(livre, Peca::rei, "d1");
    EXPECT_EQ(nodes, 2U);
  });
}

TEST(Expander, ReachingTheRootsCapReturnsAtOnceInTheMiddleOfARay) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(rook_ahead));
    MAXcut[0] = -1000;
    const auto s = static_cast<int>(tree_lab::square_of<root>("d1"));
    // At some rating several moves would be searched by one call.
    int most = 0;
    {
      at_depth_1(told_for<root>(rook_ahead));
      for (ataque = 100; ataque >= -100; --ataque) {
        const std::size_t before = reports().size();
        analise100<root>({livre, without, Peca::dama}, s / 8, s % 8);
        most = std::max(most, static_cast<int>(reports().size() - before));
      }
    }
    ASSERT_GT(most, 1);
    at_depth_1(told_for<root>(rook_ahead));
    MAXcut[0] = -1000;
    for (ataque = 100; ataque >= -100; --ataque) {
      const std::size_t before = reports().size();
      analise100<root>({livre, without, Peca::dama}, s / 8, s % 8);
      EXPECT_LE(reports().size() - before, 1U);
    }
    EXPECT_EQ(corte_MAXcut, 1);
  });
}

TEST(Expander, ACutSetBelowEndsTheExpanderToo) {
  each_colour([]<Cor root>() {
    const auto s = static_cast<int>(tree_lab::square_of<root>("d1"));
    at_depth_1(told_for<root>(rook_ahead));
    for (ataque = 100; ataque >= -100; --ataque) {
      corte_MAXcut = 1;  // as a reader of the clock leaves it
      const std::size_t before = reports().size();
      analise100<root>({livre, without, Peca::dama}, s / 8, s % 8);
      EXPECT_LE(reports().size() - before, 1U);
    }
    EXPECT_GT(reports().size(), 0U) << "the move that was under way still counts";
    EXPECT_NE(best_move(), "none");
  });
}

// --- Promotion ---

TEST(Expander, APromotionIsToAQueenAndLeavesTheLetter) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>("1n5k/P7/8/8/8/8/8/4K3 w - - 0 1"));
    deep = 0;
    expand<root>(livre, Peca::peao, "a7");
    EXPECT_EQ(E, 120 + 80 - 142);
    EXPECT_EQ(PRs, 'q');
    at_root(told_for<root>("1n5k/P7/8/8/8/8/8/4K3 w - - 0 1"));
    deep = 0;
    expand<root>(positive3, Peca::peao, "a7");
    EXPECT_EQ(E, 120 + 80 - 110);
    EXPECT_EQ(PRs, 'q');
  });
}

TEST(Expander, TheLetterStandsWhenAnotherMoveIsBetter) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>("7k/P7/8/8/8/8/8/4K2R w - - 0 1"));
    deep = 0;
    expand<root>(livre, Peca::peao, "a7");
    E = -500;
    expand<root>(livre, Peca::rei, "e1");
    EXPECT_NE(best_move(), written<root>("a7a8"));
    EXPECT_EQ(PRs, 'q');
  });
}

TEST(Expander, APromotionThatIsNotTheBestAndACaptureInPassingLeaveNoLetter) {
  each_colour([]<Cor root>() {
    at_root(told_for<root>("7k/P7/8/8/8/8/8/4K2R w - - 0 1"));
    deep = 0;
    E = 5000;
    expand<root>(livre, Peca::peao, "a7");
    EXPECT_EQ(PRs, '0');
    at_root(told_for<root>("7k/8/8/1pP5/8/8/8/4K3 w - b6 0 1"));
    deep = 0;
    expand<root>(positive1, Peca::peao, "c5");
    EXPECT_EQ(best_move(), written<root>("c5b6"));
    EXPECT_EQ(PRs, '0');
  });
}

// --- Which moves a pass admits ---

TEST(Pass, AdmitsByItsKindAndTheBestMoveSoFar) {
  constexpr Lance best = {3, 0, 4, 0}, other = {3, 0, 2, 0};
  struct Row {
    std::uint8_t single, rest;
    bool is_best;
    int admitted;
  };
  for (const Row& r : {Row{0, 0, true, 1}, Row{0, 0, false, 1}, Row{1, 0, true, 1},
                       Row{1, 0, false, 0}, Row{0, 1, true, 0}, Row{0, 1, false, 1}}) {
    at_root(locked);
    melhor = best;
    SCAN1 = r.single;
    SCANT = r.rest;
    TEST1IID = 7;
    admite_na_varredura(r.is_best ? best : other);
    EXPECT_EQ(TEST1IID, r.admitted);
    init_tabuleiro2<Cor::b>(3, 0, r.is_best ? 4 : 2, 0);
    EXPECT_EQ(TEST1IID, r.admitted);
  }
}

TEST(Pass, OfASingleMoveSearchesThatMove) {
  each_colour([]<Cor root>() {
    for (const bool single : {true, false}) {
      at_depth_1(told_for<root>(locked));
      SCAN1 = single;
      SCANT = !single;
      melhor = move_of<root>("d1e1");
      E = 5000;  // so that the best move stays what it is
      expand<root>(livre, Peca::rei, "d1");
      expect_moves<root>({single ? "d1e1" : "d1c1"});
    }
  });
}

TEST(Pass, OfAMoveThatIsNotLegalSearchesNothing) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(locked));
    SCAN1 = 1;
    SCANT = 0;
    melhor = {0, 0, 0, 1};
    alfa0 = -42;
    E = -43;
    percorre_escada<root>();
    expect_moves<root>({});
    EXPECT_EQ(alfa0, -42);
    EXPECT_EQ(E, -43);
    EXPECT_EQ(nodes, 0U);
  });
}

// --- Repetition ---

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
    at_depth_1(told_for<root>(locked));
    played_before<root>("d1e1");
    emp = -15;
    E = -15;
    alfa0 = -16000;
    expand<root>(livre, Peca::rei, "d1");
    EXPECT_EQ(best_move(), written<root>("d1c1"));
    EXPECT_EQ(E, 1);
    EXPECT_EQ(alfa0, 1);
    EXPECT_EQ(EP, -15);
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

// --- Castling ---

constexpr std::string_view both_castlings = "4k3/p7/8/8/8/8/P7/R3K2R w KQ - 0 1";

// No move becomes the best one, on which admission to the pass would hang.
void none_is_best() {
  E = 5000;
}

template <Cor root>
void castle(std::string_view fen) {
  at_depth_1(told_for<root>(fen));
  expand<root>(positive1, Peca::rei, "e1");
}

TEST(RootCastling, IsInTheKingsFirstCaptureClassAlone) {
  each_colour([]<Cor root>() {
    castle<root>(both_castlings);
    expect_moves<root>({"e1g1", "e1c1"});
    for (const Classe k : {livre, positive2, positive3, positive4, positive5}) {
      at_depth_1(told_for<root>(both_castlings));
      expand<root>(k, Peca::rei, "e1");
      EXPECT_EQ(reported_moves().find(written<root>("e1g1")), std::string::npos);
      EXPECT_EQ(reported_moves().find(written<root>("e1c1")), std::string::npos);
    }
  });
}

TEST(RootCastling, NeedsItsRightsRookSquaresAndSafeWay) {
  each_colour([]<Cor root>() {
    castle<root>("4k3/p7/8/8/8/8/P7/R3K2R w K - 0 1");
    expect_moves<root>({"e1g1"});
    castle<root>("4k3/p7/8/8/8/8/P7/R3K2R w Q - 0 1");
    expect_moves<root>({"e1c1"});
    castle<root>("4k3/p7/8/8/8/8/P7/R3K2R w - - 0 1");
    expect_moves<root>({});
    castle<root>("4k3/p7/8/8/8/8/P7/RN2K1NR w KQ - 0 1");
    expect_moves<root>({});
    castle<root>("4k3/p7/8/8/8/8/P7/4K3 w KQ - 0 1");
    expect_moves<root>({});
    castle<root>("4kr2/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
    expect_moves<root>({"e1c1"});
    castle<root>("3rk3/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
    expect_moves<root>({"e1g1"});
    castle<root>("4k3/p7/8/8/8/4r3/P7/R3K2R w KQ - 0 1");
    expect_moves<root>({});
  });
}

TEST(RootCastling, BearsItsMarkWhileItIsSearched) {
  each_colour([]<Cor root>() {
    castle<root>(both_castlings);
    ASSERT_EQ(reports().size(), 2U);
    for (const Report& r : reports()) {
      EXPECT_EQ(root == Cor::b ? r.roque_b : r.roque_p, 10);
      EXPECT_EQ(root == Cor::b ? r.roque_p : r.roque_b, 0);
    }
    EXPECT_EQ(roque_b + roque_p, 0);
    castle<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1");
    EXPECT_EQ(nodes, 1U + 5U) << "itself, and the replies: two pawn moves, three king's steps";
  });
}

TEST(RootCastling, IsStoredLikeAnyMove) {
  each_colour([]<Cor root>() {
    castle<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1");
    EXPECT_EQ(best_move(), written<root>("e1g1"));
    EXPECT_EQ(E, reports()[0].score);
    EXPECT_EQ(alfa0, E);
    castle<root>("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1");
    at_depth_1(told_for<root>(both_castlings));
    MAXcut[0] = -1000;
    expand<root>(positive1, without, Peca::rei, "e1");
    EXPECT_EQ(corte_MAXcut, 1);
  });
}

TEST(RootCastling, TakesPartInThePassesByItsOwnCoordinates) {
  each_colour([]<Cor root>() {
    for (const std::string_view best : {"e1g1", "e1c1"})
      for (const bool single : {true, false}) {
        at_depth_1(told_for<root>(both_castlings));
        SCAN1 = single;
        SCANT = !single;
        melhor = move_of<root>(best);
        none_is_best();
        expand<root>(positive1, without, Peca::rei, "e1");
        expect_moves<root>({(best == "e1g1") == single ? "e1g1" : "e1c1"});
      }
  });
}

// The short castling gives check on the f-file, the long one none.
constexpr std::string_view short_checks = "5k2/p7/8/8/8/8/P7/R3K2R w KQ - 0 1";
// The long one gives check on the d-file, the short one none.
constexpr std::string_view long_checks = "3k4/p7/8/8/8/8/P7/R3K2R w KQ - 0 1";

TEST(RootCastling, WithCheckWhitesLongOneAsksTheTestOfTheShortOne) {
  // Black's long castling is judged by itself.
  at_depth_1(told_for<Cor::p>(short_checks));
  none_is_best();
  expand<Cor::p>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::p>({"e1g1"});
  at_depth_1(told_for<Cor::p>(long_checks));
  none_is_best();
  expand<Cor::p>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::p>({"e1c1"});

  // White's is taken for the short one: it "gives check" when that does.
  at_depth_1(short_checks);
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({"e1g1", "e1c1"});
  at_depth_1(long_checks);
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({});
}

TEST(RootCastling, WithoutCheckEachIsJudgedByItself) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>(short_checks));
    none_is_best();
    expand<root>(positive1, without, Peca::rei, "e1");
    expect_moves<root>({"e1c1"});
    at_depth_1(told_for<root>(long_checks));
    none_is_best();
    expand<root>(positive1, without, Peca::rei, "e1");
    expect_moves<root>({"e1g1"});
  });
}

TEST(RootCastling, WithCheckWhitesLongOneHasTheOthersSafetyAndAdmission) {
  // g1 is attacked: the short castling is forbidden, and with it White's long one in this class.
  at_depth_1("5kr1/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({});
  // d1 is attacked: the long castling would walk through it, and is searched all the same.
  at_depth_1("3r1k2/p7/8/8/8/8/P7/R3K2R w KQ - 0 1");
  none_is_best();
  expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
  expect_moves<Cor::b>({"e1g1", "e1c1"});
  // Admitted when the short one is.
  for (const bool single : {true, false}) {
    at_depth_1(short_checks);
    SCAN1 = single;
    SCANT = !single;
    melhor = {4, 0, 6, 0};
    none_is_best();
    expand<Cor::b>(positive1, with_check, Peca::rei, "e1");
    if (single)
      expect_moves<Cor::b>({"e1g1", "e1c1"});
    else
      expect_moves<Cor::b>({});
  }
}

}  // namespace
}  // namespace korvu
