// One expander: which moves it makes of a square, the filters that a move passes, and the books
// that are kept of the best one.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "board/attack.h"
#include "board/root_move.h"
#include "root/expander_lab.h"
#include "root/ladder.h"

namespace korvu {
namespace {

using namespace root_lab;

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

TEST(Expander, APawnTakesInPassingOnBothSidesAndStepsOnceOrTwice) {
  each_colour([]<Cor root>() {
    at_depth_1(told_for<root>("7k/8/8/1pPp4/8/8/4P3/4K3 w - b6 0 1"));
    duplo<outra(root)>(duplos)[3] = 1;  // as if both neighbours had just come
    expand<root>(positive1, Peca::peao, "c5");
    expect_moves<root>({"c5b6", "c5d6"});
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

}  // namespace
}  // namespace korvu
