// One expander of the root: what it makes of a value, and of a move that repeats the game.
#include <gtest/gtest.h>

#include "board/root_move.h"
#include "eval/knobs.h"
#include "eval/strategy.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "root_log.h"
#include "sides.h"
#include "tree/knobs.h"

namespace {

using namespace korvu;
using kit::for_both_sides;
using kit::Seen;

// --- What is made of a value ---

// Searches without any depth: the value of a move is the material that it leaves, and no report is
// made. All bounds are open.
void open_root_for_values(Seen seen, std::string_view fen) {
  kit::open_root(seen.fen(fen));
  deep = DEEP = 0;
  alfa.fill(-16500);
  beta.fill(16500);
  E = -10000000;
  EP = 0;
  PRs = '0';
  jogada = {-1, -1, -1, -1};
}

void run(Seen seen, const Expansor& e, std::string_view from) {
  const std::size_t s = seen.square(from);
  for (ataque = 100; ataque >= -100; --ataque)
    por_cor(seen.white, [&]<Cor cor>() {
      analise100<cor>(e, static_cast<int>(s / 8), static_cast<int>(s % 8));
    });
}

Lance lance_of(Seen seen, std::string_view move) {
  const auto [x1, y1, x2, y2] = seen.squares(move);
  return {x1, y1, x2, y2};
}

void expect_best(Seen seen, std::string_view move) {
  EXPECT_EQ(melhor, lance_of(seen, move));
  EXPECT_EQ((Lance{jogada.a, jogada.b, jogada.c, jogada.d}), lance_of(seen, move));
}

TEST(ScanValue, OfTheBestMoveIsStored) {
  for_both_sides([](Seen seen) {
    // Totals 200 and 160 + 50: taking the rook leaves a balance of 40.
    open_root_for_values(seen, "7k/8/3r4/4P3/8/8/8/R6K w - - 0 1");
    SCANT = 0;
    run(seen, {Classe::positive4, Xeque::sh, Peca::peao}, "e5");
    expect_best(seen, "e5d6");
    EXPECT_EQ(E, 170 - 110);
    EXPECT_EQ(alfa0, 170 - 110);
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(PRs, '0');
    EXPECT_EQ(corte_MAXcut, 0);
  });
}

TEST(ScanValue, EqualToTheBestIsNotStored) {
  for_both_sides([](Seen seen) {
    for (const auto& [best, stored] : {std::pair{9.5F, true}, {10.F, false}, {10.5F, false}}) {
      open_root_for_values(seen, "7k/8/8/8/8/8/4P3/7K w - - 0 1");
      E = best;
      run(seen, {Classe::livre, Xeque::sh, Peca::peao}, "e2");
      EXPECT_EQ(melhor == sem_lance, !stored) << best;
      EXPECT_EQ(E, stored ? 10 : best);
      EXPECT_EQ(alfa0, 10);  // alpha goes its own way
      EXPECT_EQ(nodes, 2U);
    }
  });
}

TEST(ScanValue, OfTheFirstOfEqualMovesStays) {
  for_both_sides([](Seen seen) {
    open_root_for_values(seen, "7k/p7/8/8/8/8/4P3/7K w - - 0 1");
    SCANT = 0;
    matrix = 0;
    run(seen, {Classe::livre, Xeque::sh, Peca::peao}, "e2");
    EXPECT_EQ(nodes, 2U);
    expect_best(seen, "e2e4");
  });
}

// One call of the expander, at the rating 0.
void run_once(Seen seen, const Expansor& e, std::string_view from) {
  const std::size_t s = seen.square(from);
  ataque = 0;
  por_cor(seen.white,
          [&]<Cor cor>() { analise100<cor>(e, static_cast<int>(s / 8), static_cast<int>(s % 8)); });
}

TEST(ScanValue, AtTheCapEndsTheExpander) {
  for_both_sides([](Seen seen) {
    // All twelve moves of the rook without check leave the balance of 50 and have one rating.
    for (const auto& [cap, moves] : {std::pair{50.F, 1U}, {50.5F, 12U}}) {
      open_root_for_values(seen, "k7/8/8/8/3R4/8/8/7K w - - 0 1");
      SCANT = 0;
      matrix = 0;
      MAXcut[0] = cap;
      run_once(seen, {Classe::livre, Xeque::sh, Peca::torre}, "d4");
      EXPECT_EQ(nodes, moves) << cap;
      EXPECT_EQ(corte_MAXcut, moves == 1 ? 1 : 0) << cap;
      expect_best(seen, "d4e4");
    }
  });
}

TEST(ScanValue, AfterAnEndedPassOneMoveIsTheLast) {
  for_both_sides([](Seen seen) {
    open_root_for_values(seen, "k7/8/8/8/3R4/8/8/7K w - - 0 1");
    SCANT = 0;
    matrix = 0;
    corte_MAXcut = 1;
    run_once(seen, {Classe::livre, Xeque::sh, Peca::torre}, "d4");
    EXPECT_EQ(nodes, 1U);
    expect_best(seen, "d4e4");  // its value still counts
  });
}

TEST(ScanValue, OfAPromotionAsksForTheLetter) {
  for_both_sides([](Seen seen) {
    struct Row {
      std::string_view fen;
      Expansor e;
      std::string_view from;
      char letter;
    };
    for (const Row& r :
         {Row{"8/P6k/8/8/8/8/8/K7 w - - 0 1", {Classe::livre, Xeque::sh, Peca::peao}, "a7", 'q'},
          Row{"1n6/P6k/8/8/8/8/8/K7 w - - 0 1",
              {Classe::positive3, Xeque::sh, Peca::peao},
              "a7",
              'q'},
          Row{"8/7k/P7/8/8/8/8/K7 w - - 0 1", {Classe::livre, Xeque::sh, Peca::peao}, "a6", '0'},
          Row{"8/R6k/8/8/8/8/8/K7 w - - 0 1",
              {Classe::livre, Xeque::sh, Peca::torre},
              "a7",
              '0'}}) {
      open_root_for_values(seen, r.fen);
      SCANT = 0;
      run(seen, r.e, r.from);
      EXPECT_NE(melhor, sem_lance) << r.fen;
      EXPECT_EQ(PRs, r.letter) << r.fen;
      if (r.letter == '0') continue;
      // A later best move of another man leaves the letter standing.
      E = -1e6F;
      run(seen, {Classe::livre, Xeque::sh, Peca::rei}, "a1");
      EXPECT_EQ(tab[casa(melhor.aa, melhor.bb)], seen.code('K'));
      EXPECT_EQ(PRs, 'q');
    }
  });
}

TEST(ScanValue, WithoutDepthIsTheMaterialLeft) {
  for_both_sides([](Seen seen) {
    open_root_for_values(seen, "1n6/P6k/8/8/8/8/8/K7 w - - 0 1");
    run(seen, {Classe::positive3, Xeque::sh, Peca::peao}, "a7");
    EXPECT_EQ(E, 120 + 80 - 110);
    open_root_for_values(seen, "7k/8/8/3pP3/8/8/8/K7 w - d6 0 1");
    run(seen, {Classe::positive1, Xeque::sh, Peca::peao}, "e5");
    EXPECT_EQ(E, 120 + 10 - 120);
  });
}

// --- Repetition ---

// The game has had the position after the knight's move to c3 already.
void open_repetition(Seen seen, std::string_view fen, std::string_view after) {
  open_root_for_values(seen, fen);
  SCANT = 0;
  pempatee = 1;
  nb = 20;
  for (Tabuleiro& t : tabr1) t.fill(1);
  tabr1[seen.white ? 4 : 5] = seen.board(after);
  deeppromo = 0;
  emp = -33;
}

constexpr std::string_view knight_home = "k7/p7/8/8/8/8/P7/1N5K w - - 0 1";
constexpr std::string_view knight_on_c3 = "k7/p7/8/8/8/2N5/P7/7K b - - 0 1";
constexpr Expansor quiet_knight = {Classe::livre, Xeque::sh, Peca::cavalo};

TEST(RepetitionScan, IsADrawWithoutASearch) {
  for_both_sides([](Seen seen) {
    open_repetition(seen, knight_home, knight_on_c3);
    E = 1e9F;
    run(seen, quiet_knight, "b1");
    EXPECT_EQ(nodes, 2U);  // a3 and d2 alone
    EXPECT_EQ(EP, -33);
    EXPECT_EQ(melhor, sem_lance);
  });
}

TEST(RepetitionScan, BecomesTheBestMoveWhenTheDrawIsBetter) {
  for_both_sides([](Seen seen) {
    for (const auto& [best, stored] : {std::pair{-33.5F, true}, {-33.F, false}, {-32.5F, false}}) {
      open_repetition(seen, knight_home, knight_on_c3);
      // Every other move is worth -100.
      (seen.white ? materialba : materialpa) = 10;
      (seen.white ? materialpa : materialba) = 110;
      E = best;
      run(seen, quiet_knight, "b1");
      EXPECT_EQ(nodes, 2U);
      EXPECT_EQ(EP, -33);
      EXPECT_EQ(E, stored ? -33 : best);
      EXPECT_EQ(alfa0, stored ? -33 : -100);
      EXPECT_EQ(melhor == sem_lance, !stored);
      if (stored) expect_best(seen, "b1c3");
    }
  });
}

TEST(RepetitionScan, IsNotTestedAgainstTheCap) {
  for_both_sides([](Seen seen) {
    // d2 is the knight's first move; the second one is searched, and then the cap is found met.
    open_repetition(seen, knight_home, "k7/p7/8/8/8/8/P2N4/7K b - - 0 1");
    (seen.white ? materialba : materialpa) = 10;
    (seen.white ? materialpa : materialba) = 110;
    E = -1000;
    MAXcut[0] = -50;
    matrix = 0;
    run_once(seen, quiet_knight, "b1");
    expect_best(seen, "b1d2");
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(corte_MAXcut, 1);
  });
}

TEST(RepetitionScan, IsSearchedLikeAnyMoveWithoutTheSwitch) {
  for_both_sides([](Seen seen) {
    open_repetition(seen, knight_home, knight_on_c3);
    pempatee = 0;
    E = 1e9F;
    run(seen, quiet_knight, "b1");
    EXPECT_EQ(nodes, 3U);
    EXPECT_EQ(EP, 0);
    EXPECT_EQ(pempate, 0);
  });
}

TEST(RepetitionScan, CountsInThePassAndClassOfTheMoveAlone) {
  for_both_sides([](Seen seen) {
    open_repetition(seen, knight_home, knight_on_c3);
    E = 1e9F;
    SCANT = 1;
    melhor = lance_of(seen, "b1c3");
    run(seen, quiet_knight, "b1");
    EXPECT_EQ(EP, 0);
    melhor = sem_lance;
    run(seen, {Classe::livre, Xeque::ch, Peca::cavalo}, "b1");
    EXPECT_EQ(EP, 0);
    run(seen, quiet_knight, "b1");
    EXPECT_EQ(EP, -33);
  });
}

TEST(RepetitionScan, IsNotAskedOfPawnsAndCastlings) {
  for_both_sides([](Seen seen) {
    open_repetition(seen, "k7/p7/8/8/8/8/4P3/7K w - - 0 1", "k7/p7/8/8/4P3/8/8/7K b - - 0 1");
    E = 1e9F;
    run(seen, {Classe::livre, Xeque::sh, Peca::peao}, "e2");
    EXPECT_EQ(nodes, 2U);
    EXPECT_EQ(EP, 0);

    open_repetition(seen, "k7/p7/8/8/8/8/P7/4K2R w K - 0 1", "k7/p7/8/8/8/8/P7/5RK1 b - - 0 1");
    E = 1e9F;
    run(seen, {Classe::positive1, Xeque::sh, Peca::rei}, "e1");
    EXPECT_EQ(nodes, 1U);
    EXPECT_EQ(EP, 0);
  });
}

// A repetition found below the move, at the reply that was tried last, brings the searched move
// through the draw as well; not when that reply was no legal one.
TEST(RepetitionScan, FoundBelowTheMoveScoresItAsADrawToo) {
  struct Row {
    std::string_view fen, below;
    std::uint32_t replies;
    bool drawn;
  };
  for (const Row& r :
       {Row{"k7/8/8/8/8/8/5K2/1N6 w - - 0 1", "8/1k6/8/8/8/2N5/5K2/8 w - - 0 1", 3, true},
        Row{"7k/5K2/8/8/8/8/8/1N6 w - - 0 1", "8/5K1k/8/8/8/2N5/8/8 w - - 0 1", 1, false}})
    for_both_sides([&](Seen seen) {
      for (const int times : {0, 1, 2}) {
        open_repetition(seen, r.fen, "8/8/8/8/8/8/8/8 w - - 0 1");
        for (int k = 0; k < times; ++k)
          tabr1[static_cast<std::size_t>((seen.white ? 1 : 0) + 4 * k)] = seen.board(r.below);
        deep = 1;
        E = 1e9F;
        SCAN1 = 1;
        melhor = lance_of(seen, "b1c3");
        run(seen, quiet_knight, "b1");
        EXPECT_EQ(nodes, 1 + r.replies) << r.fen;
        EXPECT_EQ(EP, times == 2 && r.drawn ? -33 : 0) << r.fen << ' ' << times;
      }
    });
}

}  // namespace
