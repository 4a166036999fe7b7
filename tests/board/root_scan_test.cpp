// One expander of the root: what it generates, and which moves pass its filter.
#include <gtest/gtest.h>

#include <set>

#include "board/attack.h"
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

constexpr std::array<Classe, 6> all_classes = {Classe::livre,     Classe::positive1,
                                               Classe::positive2, Classe::positive3,
                                               Classe::positive4, Classe::positive5};

// The moves that the expander of a class and check class searches from one square, told from
// White's point of view.
std::string searched(Seen seen, std::string_view fen, const Expansor& e, std::string_view from) {
  kit::open_root(seen.fen(fen));
  std::string text;
  for (const kit::RootMove& m : kit::expanded(e, seen.square(from)))
    text += seen.move(m.move) + ' ';
  return text;
}

// The same where all moves have one rating, so that they come in the order of generation.
std::string generated(Seen seen, std::string_view fen, const Expansor& e, std::string_view from) {
  kit::open_root(seen.fen(fen));
  matrix = 0;
  agreschrei = 0;
  std::string text;
  std::vector<int> ratings;
  for (const kit::RootMove& m : kit::expanded(e, seen.square(from))) {
    text += seen.move(m.move) + ' ';
    ratings.push_back(m.rating);
    EXPECT_EQ(m.rating, ratings.front()) << m.move;  // else the order says nothing
  }
  return text;
}

// --- Generation ---

// The men in the other colour on the same squares.
std::string recoloured(std::string_view fen) {
  const std::string ranks_too = kit::mirrored(fen);
  const std::string back = ranks_too.substr(0, ranks_too.find(' '));
  std::string board;
  for (std::size_t at = 0; at < back.size();) {
    const std::size_t end = std::min(back.find('/', at), back.size());
    board = back.substr(at, end - at) + (board.empty() ? "" : "/") + board;
    at = end + 1;
  }
  return board + ranks_too.substr(ranks_too.find(' '));
}

TEST(ExpanderScan, GeneratesInAFixedOrder) {
  struct Row {
    std::string_view fen;
    Peca man;
    std::string_view quiet, checking;  // "-": of several ratings
  };
  for (const Row& r :
       {Row{"7k/8/8/8/3N4/8/8/K7 w - - 0 1", Peca::cavalo,
            "d4f5 d4f3 d4b3 d4b5 d4c6 d4e6 d4e2 d4c2 ", ""},
        Row{"7k/8/8/8/3K4/8/8/8 w - - 0 1", Peca::rei, "d4e4 d4c4 d4d5 d4d3 d4c3 d4e5 d4c5 d4e3 ",
            ""},
        Row{"7k/8/8/8/3R4/8/8/K7 w - - 0 1", Peca::torre,
            "d4e4 d4f4 d4g4 d4c4 d4b4 d4a4 d4d5 d4d6 d4d7 d4d3 d4d2 d4d1 ", "d4h4 d4d8 "},
        Row{"8/8/8/8/k2B4/8/7K/8 w - - 0 1", Peca::bispo,
            "d4e5 d4f6 d4g7 d4h8 d4e3 d4f2 d4g1 d4c3 d4b2 d4a1 d4c5 d4b6 d4a7 ", ""},
        Row{"4k3/8/8/8/3Q4/8/7K/8 w - - 0 1", Peca::dama,
            "d4f4 d4g4 d4h4 d4c4 d4b4 d4d5 d4d6 d4d3 d4d2 d4d1 "
            "d4f6 d4g7 d4f2 d4g1 d4c3 d4b2 d4a1 d4c5 d4b6 d4a7 ",
            "-"}})
    for (const bool white : {true, false}) {
      // The order is that of the board, whatever the colour.
      const std::string fen = white ? std::string(r.fen) : recoloured(r.fen);
      const Seen as_it_is = {true};
      EXPECT_EQ(generated(as_it_is, fen, {Classe::livre, Xeque::sh, r.man}, "d4"), r.quiet);
      if (r.checking == "-") continue;
      EXPECT_EQ(generated(as_it_is, fen, {Classe::livre, Xeque::ch, r.man}, "d4"), r.checking);
    }
}

TEST(ExpanderScan, APawnStepsTwiceThenOnce) {
  for_both_sides([](Seen seen) {
    const Expansor pawn = {Classe::livre, Xeque::sh, Peca::peao};
    EXPECT_EQ(generated(seen, "7k/p7/8/8/8/8/4P3/K7 w - - 0 1", pawn, "e2"), "e2e4 e2e3 ");
    EXPECT_EQ(generated(seen, "7k/p7/8/8/8/4P3/8/K7 w - - 0 1", pawn, "e3"), "e3e4 ");
    EXPECT_EQ(generated(seen, "7k/p7/8/8/4n3/8/4P3/K7 w - - 0 1", pawn, "e2"), "e2e3 ");
    EXPECT_EQ(generated(seen, "7k/p7/8/8/8/4n3/4P3/K7 w - - 0 1", pawn, "e2"), "");
  });
}

TEST(ExpanderScan, APawnTakesToTheRightThenToTheLeftThenInPassing) {
  for_both_sides([](Seen seen) {
    const Expansor pawn = {Classe::positive1, Xeque::sh, Peca::peao};
    EXPECT_EQ(generated(seen, "7k/8/3p1p2/4P3/8/8/8/K7 w - - 0 1", pawn, "e5"), "e5f6 e5d6 ");
    EXPECT_EQ(generated(seen, "7k/8/8/3pPp2/8/8/8/K7 w - f6 0 1", pawn, "e5"), "e5f6 ");
    EXPECT_EQ(generated(seen, "7k/8/8/3pPp2/8/8/8/K7 w - d6 0 1", pawn, "e5"), "e5d6 ");
    EXPECT_EQ(generated(seen, "7k/8/8/3pPp2/8/8/8/K7 w - - 0 1", pawn, "e5"), "");
    EXPECT_EQ(searched(seen, "7k/8/5p2/3pP3/8/8/8/K7 w - d6 0 1", pawn, "e5").size(), 10U);
    EXPECT_EQ(generated(seen, "7k/8/5n2/4Pp2/8/8/8/K7 w - f6 0 1", pawn, "e5"), "");  // not empty
    EXPECT_EQ(generated(seen, "7k/8/4P3/5p2/8/8/8/K7 w - f6 0 1", pawn, "e6"), "");
    EXPECT_EQ(generated(seen, "7k/8/8/p6P/8/8/8/K7 w - a6 0 1", pawn, "h5"), "");
    // Both neighbours at once, as no game has them: to the right first.
    kit::open_root(seen.fen("7k/8/8/3pPp2/8/8/8/K7 w - f6 0 1"));
    (seen.white ? duplos.pp : duplos.pb)[3] = 1;
    matrix = 0;
    std::string both;
    std::set<int> ratings;
    for (const kit::RootMove& m : kit::expanded(pawn, seen.square("e5"))) {
      both += seen.move(m.move) + ' ';
      ratings.insert(m.rating);
    }
    EXPECT_EQ(both, "e5f6 e5d6 ");
    EXPECT_EQ(ratings.size(), 1U) << "else the order says nothing";
    // Captures in passing stand with the captures of pawns alone.
    for (const Classe k : all_classes) {
      const Expansor other = {k, Xeque::sh, Peca::peao};
      const std::string text = searched(seen, "7k/4n3/8/3pPp2/8/8/8/K7 w - f6 0 1", other, "e5");
      EXPECT_EQ(text.find("e5f6") != std::string::npos, k == Classe::positive1) << text;
    }
  });
}

TEST(ExpanderScan, KnowsOneKindOfTarget) {
  struct Row {
    Classe k;
    std::string_view moves;
  };
  for (const Row& r : {Row{Classe::positive1, "d4b6 "}, Row{Classe::positive2, "d4d7 "},
                       Row{Classe::positive3, "d4g4 "}, Row{Classe::positive4, "d4a4 "},
                       Row{Classe::positive5, "d4d2 "}})
    for_both_sides([&](Seen seen) {
      EXPECT_EQ(searched(seen, "7k/3b4/1p6/8/r2Q2n1/8/3q4/6BK w - - 0 1",
                         {r.k, Xeque::sh, Peca::dama}, "d4") +
                    searched(seen, "7k/3b4/1p6/8/r2Q2n1/8/3q4/6BK w - - 0 1",
                             {r.k, Xeque::ch, Peca::dama}, "d4"),
                r.moves);
    });
}

TEST(ExpanderScan, ARayEndsAtItsFirstMan) {
  for_both_sides([](Seen seen) {
    const std::string_view fen = "k7/3r4/8/8/3Q4/8/3P4/K7 w - - 0 1";
    std::string quiet, taking;
    for (const Xeque x : {Xeque::ch, Xeque::sh}) {
      quiet += searched(seen, fen, {Classe::livre, x, Peca::dama}, "d4");
      taking += searched(seen, fen, {Classe::positive4, x, Peca::dama}, "d4");
    }
    for (const std::string_view m : {"d4d5", "d4d6", "d4d3"})
      EXPECT_NE(quiet.find(m), std::string::npos) << m;
    for (const std::string_view m : {"d4d7", "d4d8", "d4d2", "d4d1"})
      EXPECT_EQ(quiet.find(m), std::string::npos) << m;
    EXPECT_EQ(taking, "d4d7 ");
  });
}

TEST(ExpanderScan, NeverTakesAKing) {
  // Black's king stands to be taken by everything.
  for_both_sides([](Seen seen) {
    const std::string_view fen = "8/8/8/2BkR3/2P1N3/2K1Q3/8/8 w - - 0 1";
    struct Row {
      Peca man;
      std::string_view from;
    };
    int moves = 0;
    for (const Row& r : {Row{Peca::peao, "c4"}, Row{Peca::cavalo, "e4"}, Row{Peca::bispo, "c5"},
                         Row{Peca::torre, "e5"}, Row{Peca::dama, "e3"}, Row{Peca::rei, "c3"}})
      for (const Classe k : all_classes)
        for (const Xeque x : {Xeque::ch, Xeque::sh}) {
          const std::string text = searched(seen, fen, {k, x, r.man}, r.from);
          EXPECT_EQ(text.find("d5 "), std::string::npos) << text;
          moves += static_cast<int>(text.size() / 5);
        }
    EXPECT_GE(moves, 20);
  });
}

TEST(ExpanderScan, TheCheckClassIsWhatTheMoveGives) {
  for_both_sides([](Seen seen) {
    const std::string_view fen = "k7/p7/8/8/8/8/P7/1R5K w - - 0 1";
    EXPECT_EQ(searched(seen, fen, {Classe::livre, Xeque::ch, Peca::torre}, "b1"), "b1b8 ");
    EXPECT_EQ(searched(seen, fen, {Classe::livre, Xeque::sh, Peca::torre}, "b1").find("b1b8"),
              std::string::npos);
    // With a pawn before the rook the knight checks by itself or not at all; without it every move
    // of the knight lets the rook check.
    const auto count = [&](std::string_view position, Xeque x) {
      return searched(seen, position, {Classe::livre, x, Peca::cavalo}, "a4").size() / 5;
    };
    const std::string_view covered = "k7/8/p7/8/N7/8/8/R6K w - - 0 1";
    const std::string_view discovering = "k7/8/8/8/N7/8/8/R6K w - - 0 1";
    EXPECT_EQ(searched(seen, covered, {Classe::livre, Xeque::ch, Peca::cavalo}, "a4"), "a4b6 ");
    EXPECT_EQ(count(covered, Xeque::sh), 3U);
    EXPECT_EQ(count(discovering, Xeque::ch), 4U);
    EXPECT_EQ(count(discovering, Xeque::sh), 0U);
  });
}

TEST(ExpanderScan, DropsIllegalMovesInSilence) {
  for_both_sides([](Seen seen) {
    const std::string_view fen = "k3r3/p7/8/8/8/8/4N3/4K3 w - - 0 1";
    EXPECT_EQ(searched(seen, fen, {Classe::livre, Xeque::sh, Peca::cavalo}, "e2"), "");
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(E, 1e9F);
  });
}

TEST(ExpanderScan, SearchesAMoveAtItsRatingAlone) {
  for_both_sides([](Seen seen) {
    kit::open_root(seen.fen("k7/p7/8/3q4/8/1B6/8/6K1 w - - 0 1"));
    const Expansor bishop = {Classe::livre, Xeque::sh, Peca::bispo};
    const auto moves = kit::expanded(bishop, seen.square("b3"));
    EXPECT_GE(moves.size(), 4U);
    for (const kit::RootMove& m : moves)
      for (const int off : {-1, 0, 1}) {
        nodes = 0;
        std::size_t same = 0;
        for (const kit::RootMove& other : moves) same += other.rating == m.rating + off;
        ataque = m.rating + off;
        por_cor(seen.white, [&]<Cor cor>() {
          const std::size_t s = seen.square("b3");
          analise100<cor>(bishop, static_cast<int>(s / 8), static_cast<int>(s % 8));
        });
        EXPECT_EQ(nodes, same) << m.move << ' ' << off;
      }
  });
}

// Between two visits every other move is rated too; what a move's leaves add is its own figure.
TEST(ExpanderScan, SearchesAMoveWithItsOwnAssessmentInForce) {
  for_both_sides([](Seen seen) {
    const std::string fen = seen.fen("4k3/p4p2/8/3q4/4P3/1B3N2/P7/6K1 w - - 0 1");
    kit::open_root(fen);
    const std::vector<kit::RootMove> moves = kit::scanned();
    std::set<float> told_apart;
    kit::open_root(fen);
    for (const kit::RootMove& m : moves) {
      const auto [x1, y1, x2, y2] = kit::squares_of(m.move);
      por_cor(seen.white, [&, x1 = x1, y1 = y1, x2 = x2, y2 = y2]<Cor cor>() {
        init_tabuleiro2<cor>(x1, y1, x2, y2);
        verifica_rei<cor>();
        verifica_estrategia<cor>();
      });
      EXPECT_EQ(m.inherited, extraevalll) << m.move;
      told_apart.insert(m.inherited);
    }
    EXPECT_GT(told_apart.size(), 10U);
  });
}

// What an earlier test for a repetition left says nothing of a move that is not tested.
TEST(ExpanderScan, AnOldRepetitionMarkHoldsNoMoveBack) {
  for_both_sides([](Seen seen) {
    const auto searched_beside_the_mark = [&](const Expansor& e, std::string_view from) {
      kit::open_root(seen.fen("4k3/p7/8/8/8/8/P7/4K2R w K - 0 1"));
      EP = 0;
      const std::size_t s = seen.square(from);
      for (ataque = 100; ataque >= -100; --ataque) {
        pempate = 1;
        por_cor(seen.white, [&]<Cor cor>() {
          analise100<cor>(e, static_cast<int>(s / 8), static_cast<int>(s % 8));
        });
      }
      EXPECT_EQ(EP, 0) << "no draw";
      return nodes;
    };
    EXPECT_EQ(searched_beside_the_mark({Classe::livre, Xeque::sh, Peca::torre}, "h1"), 8U);
    EXPECT_EQ(searched_beside_the_mark({Classe::livre, Xeque::sh, Peca::peao}, "a2"), 2U);
    EXPECT_EQ(searched_beside_the_mark({Classe::positive1, Xeque::sh, Peca::rei}, "e1"), 1U);
  });
}

// --- Castling ---

// Both moves take the queen off or leave her to the pawn, which is worth the most there is.
TEST(CastlingScan, ComesBehindTheKingsCapturesOfTheSameRating) {
  for_both_sides([](Seen seen) {
    EXPECT_EQ(generated(seen, "4k3/7p/8/q7/1P6/2P5/7P/3pK2R w K - 0 1",
                        {Classe::positive1, Xeque::sh, Peca::rei}, "e1"),
              "e1d1 e1g1 ");
  });
}

TEST(CastlingScan, DoesNotLookWhereTheKingStands) {
  // The flags say that he has not moved, and that is taken for his square.
  for_both_sides([](Seen seen) {
    EXPECT_EQ(searched(seen, "4k3/p7/8/8/8/8/P7/3K3R w K - 0 1",
                       {Classe::positive1, Xeque::sh, Peca::rei}, "d1"),
              "e1g1 ");
  });
}

TEST(CastlingScan, BelongsToTheKingsCapturesOfPawns) {
  for_both_sides([](Seen seen) {
    const std::string_view fen = "4k3/p6p/8/8/8/8/P6P/R3K2R w KQ - 0 1";
    for (const Classe k : all_classes)
      for (const Xeque x : {Xeque::ch, Xeque::sh}) {
        const std::string text = searched(seen, fen, {k, x, Peca::rei}, "e1");
        const bool here = k == Classe::positive1 && x == Xeque::sh;
        EXPECT_EQ(text.find("e1g1") != std::string::npos, here);
        EXPECT_EQ(text.find("e1c1") != std::string::npos, here);
      }
    // The king side first, behind the king's own captures.
    EXPECT_EQ(generated(seen, "4k3/7p/8/8/8/8/4p2P/R3K2R w KQ - 0 1",
                        {Classe::positive1, Xeque::sh, Peca::rei}, "e1"),
              "e1e2 ");
    EXPECT_EQ(generated(seen, fen, {Classe::positive1, Xeque::sh, Peca::rei}, "e1"), "e1g1 e1c1 ");
  });
}

TEST(CastlingScan, BearsItsMarkWhileItIsSearched) {
  for_both_sides([](Seen seen) {
    kit::open_root(seen.fen("4k3/p6p/8/8/8/8/P5PP/R3K2R w KQ - 0 1"));
    int castlings = 0;
    for (const kit::RootMove& m : kit::scanned()) {
      const std::string told = seen.move(m.move);
      const bool castling = told == "e1g1" || told == "e1c1";
      EXPECT_EQ(m.own_mark, castling ? 10 : 0) << m.move;
      EXPECT_EQ(m.other_mark, 0) << m.move;
      castlings += castling;
    }
    EXPECT_EQ(castlings, 2);
    EXPECT_EQ(roque_b, 0);
    EXPECT_EQ(roque_p, 0);
  });
}

TEST(CastlingScan, IsNotTriedOutOfCheckThroughCheckOrWithoutTheRight) {
  for_both_sides([](Seen seen) {
    const Expansor king = {Classe::positive1, Xeque::sh, Peca::rei};
    EXPECT_EQ(searched(seen, "3kr3/p6p/8/8/8/8/P6P/R3K2R w KQ - 0 1", king, "e1"), "");
    EXPECT_EQ(searched(seen, "2k2r2/p6p/8/8/8/8/P6P/R3K2R w KQ - 0 1", king, "e1"), "e1c1 ");
    EXPECT_EQ(searched(seen, "2kr4/p6p/8/8/8/8/P6P/R3K2R w KQ - 0 1", king, "e1"), "e1g1 ");
    EXPECT_EQ(searched(seen, "1rk5/p6p/8/8/8/8/P6P/R3K2R w KQ - 0 1", king, "e1"), "e1g1 e1c1 ");
    EXPECT_EQ(searched(seen, "4k3/p6p/8/8/8/8/P6P/R3K2R w Q - 0 1", king, "e1"), "e1c1 ");
    EXPECT_EQ(searched(seen, "4k3/p6p/8/8/8/8/P6P/R3K2R w K - 0 1", king, "e1"), "e1g1 ");
    EXPECT_EQ(searched(seen, "4k3/p6p/8/8/8/8/P6P/RN2K2R w KQ - 0 1", king, "e1"), "e1g1 ");
  });
}

TEST(CastlingScan, TakesPartInThePassByItsOwnMove) {
  for_both_sides([](Seen seen) {
    const Expansor king = {Classe::positive1, Xeque::sh, Peca::rei};
    const auto found = [&](std::uint8_t scan1, std::string_view best) {
      kit::open_root(seen.fen("4k3/p6p/8/8/8/8/P6P/R3K2R w KQ - 0 1"));
      SCAN1 = scan1;
      SCANT = !scan1;
      const auto [x1, y1, x2, y2] = seen.squares(best);
      melhor = {x1, y1, x2, y2};
      std::string text;
      for (const kit::RootMove& m : kit::expanded(king, seen.square("e1")))
        text += seen.move(m.move) + ' ';
      return text;
    };
    EXPECT_EQ(found(1, "e1g1"), "e1g1 ");
    EXPECT_EQ(found(1, "e1c1"), "e1c1 ");
    EXPECT_EQ(found(1, "e1f1"), "");
    EXPECT_EQ(found(0, "e1g1"), "e1c1 ");
    EXPECT_EQ(found(0, "e1c1"), "e1g1 ");
    EXPECT_EQ(found(0, "e1f1"), "e1g1 e1c1 ");
  });
}

// With check, White's queen-side castling asks the king-side test.
std::string castlings(Seen seen, std::string_view fen, Xeque x) {
  return searched(seen, fen, {Classe::positive1, x, Peca::rei}, "e1");
}

TEST(CastlingScan, OnTheQueenSideWithCheckIsBlacksAlone) {
  // The rook checks on the d-file.
  const std::string_view on_d = "3k4/7p/8/8/8/8/7P/R3K3 w Q - 0 1";
  EXPECT_EQ(castlings({true}, on_d, Xeque::ch), "");
  EXPECT_EQ(castlings({true}, on_d, Xeque::sh), "");
  EXPECT_EQ(castlings({false}, on_d, Xeque::ch), "e1c1 ");
  EXPECT_EQ(castlings({false}, on_d, Xeque::sh), "");
}

TEST(CastlingScan, OnTheQueenSideIsWhitesCheckWhenTheKingSideWouldGiveOne) {
  // A rook on f1 would check on the f-file; one on d1 does not.
  const std::string_view on_f = "5k2/7p/8/8/8/8/7P/R3K3 w Q - 0 1";
  EXPECT_EQ(castlings({true}, on_f, Xeque::ch), "e1c1 ");
  EXPECT_EQ(castlings({true}, on_f, Xeque::sh), "e1c1 ");
  EXPECT_EQ(castlings({false}, on_f, Xeque::ch), "");
  EXPECT_EQ(castlings({false}, on_f, Xeque::sh), "e1c1 ");
  // Unless the king side's own squares are attacked.
  const std::string_view g_attacked = "5kr1/7p/8/8/8/8/7P/R3K3 w Q - 0 1";
  EXPECT_EQ(castlings({true}, g_attacked, Xeque::ch), "");
  EXPECT_EQ(castlings({true}, g_attacked, Xeque::sh), "e1c1 ");
}

TEST(CastlingScan, OnTheQueenSideWithCheckTakesPartAsTheKingSide) {
  const auto found = [](std::uint8_t scan1, const Lance& best) {
    kit::open_root("5k2/7p/8/8/8/8/7P/R3K3 w Q - 0 1");
    SCAN1 = scan1;
    SCANT = !scan1;
    melhor = best;
    return kit::text_of(
        kit::expanded({Classe::positive1, Xeque::ch, Peca::rei}, lab::square("e1")));
  };
  const Lance e1g1 = {4, 0, 6, 0}, e1c1 = {4, 0, 2, 0};
  EXPECT_EQ(found(1, e1g1), "e1c1 ");
  EXPECT_EQ(found(1, e1c1), "");
  EXPECT_EQ(found(0, e1g1), "");
  EXPECT_EQ(found(0, e1c1), "e1c1 ");
}

// --- Passes ---

TEST(ScanPass, OfTheBestMoveSearchesThatOneAlone) {
  const std::string_view fen = "4k3/p6p/8/2n5/1P6/8/P6P/R3K2R w KQ - 0 1";
  const referee::Position p = referee::Position::from_fen(fen);
  for (const referee::Move& m : kit::searched_moves(p)) {
    kit::open_root(fen);
    const auto [x1, y1, x2, y2] = kit::squares_of(m);
    SCAN1 = 1;
    SCANT = 0;
    melhor = {x1, y1, x2, y2};
    EXPECT_EQ(kit::text_of(kit::scanned()), m.text() + ' ');
    EXPECT_EQ(nodes, 1U);
  }
}

TEST(ScanPass, OfTheOthersSearchesAllButThatOne) {
  const std::string_view fen = "4k3/p6p/8/2n5/1P6/8/P6P/R3K2R w KQ - 0 1";
  const referee::Position p = referee::Position::from_fen(fen);
  const std::size_t all = kit::searched_moves(p).size();
  for (const referee::Move& m : kit::searched_moves(p)) {
    kit::open_root(fen);
    const auto [x1, y1, x2, y2] = kit::squares_of(m);
    melhor = {x1, y1, x2, y2};
    const std::string text = kit::text_of(kit::scanned());
    EXPECT_EQ(text.size(), 5 * (all - 1)) << m.text();
    EXPECT_EQ(text.find(m.text()), std::string::npos) << m.text();
  }
}

TEST(ScanPass, OfABestMoveThatIsNotLegalSearchesNothing) {
  for (const std::string_view move : {"e1e3", "e8e7", "a2a5", "e2e4"}) {
    kit::open_root("4k3/p7/8/8/8/8/P7/4K3 w - - 0 1");
    const auto [x1, y1, x2, y2] = kit::squares_of(move);
    SCAN1 = 1;
    SCANT = 0;
    melhor = {x1, y1, x2, y2};
    E = -33;
    alfa0 = 16400;
    EXPECT_EQ(kit::text_of(kit::scanned()), "");
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(E, -33);
    EXPECT_EQ(alfa0, 16400);
  }
}

TEST(ScanPass, PromotesToAQueen) {
  for_both_sides([](Seen seen) {
    kit::open_root(seen.fen("1n5k/P7/8/8/8/8/8/K7 w - - 0 1"));
    int promotions = 0;
    for (const kit::RootMove& m : kit::scanned()) {
      const std::string told = seen.move(m.move);
      if (told[0] != 'a' || told[1] != '7') continue;
      ++promotions;
      EXPECT_EQ(m.after[seen.square(told.substr(2))], seen.code('Q')) << told;
    }
    EXPECT_EQ(promotions, 2);  // a8 and b8, to a queen each
  });
}

}  // namespace
