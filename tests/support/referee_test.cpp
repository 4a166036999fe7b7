#include "referee.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "positions.h"

namespace referee {
namespace {

constexpr const char* start_fen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

int sq(const char* name) {
  return square(name[0] - 'a', name[1] - '1');
}

Move move(const char* text) {
  return {sq(text), sq(text + 2), text[4]};
}

bool has(const Position& p, const char* text) {
  return p.is_legal(move(text));
}

Position play(Position p, std::initializer_list<const char*> moves) {
  for (const char* m : moves) {
    EXPECT_TRUE(has(p, m)) << m << " in " << p.fen();
    p = p.after(move(m));
  }
  return p;
}

// Move counts that are published and agreed upon by many move generators.
struct Count {
  const char* name;
  const char* fen;
  std::vector<std::uint64_t> by_depth;
};

class Perft : public testing::TestWithParam<Count> {};

TEST_P(Perft, AgreesWithThePublishedCounts) {
  const Position p = Position::from_fen(GetParam().fen);
  ASSERT_FALSE(GetParam().by_depth.empty());
  for (std::size_t i = 0; i < GetParam().by_depth.size(); ++i) {
    EXPECT_EQ(perft(p, static_cast<int>(i) + 1), GetParam().by_depth[i]) << "depth " << i + 1;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Published, Perft,
    testing::Values(
        Count{"start", start_fen, {20, 400, 8902, 197281}},
        Count{"kiwipete",
              "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
              {48, 2039, 97862}},
        Count{"rook_ending", "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1", {14, 191, 2812, 43238}},
        Count{"tangle",
              "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1",
              {6, 264, 9467}},
        Count{"tangle_mirrored",
              "r2q1rk1/pP1p2pp/Q4n2/bbp1p3/Np6/1B3NBn/pPPP1PPP/R3K2R b KQ - 0 1",
              {6, 264, 9467}},
        Count{"pawn_on_d7",
              "rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8",
              {44, 1486, 62379}},
        Count{"middle_game",
              "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
              {46, 2079, 89890}},
        Count{"promotions", "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1", {24, 496, 9483}}),
    [](const testing::TestParamInfo<Count>& each) { return std::string(each.param.name); });

TEST(RefereeFen, ComesBackAsItWasRead) {
  for (const char* fen : {start_fen, "8/5k2/8/2p5/2P5/8/3K1R2/8 b - - 3 61",
                          "r3k2r/8/8/8/Pp6/8/8/R3K2R b Kq a3 0 20"}) {
    EXPECT_EQ(Position::from_fen(fen).fen(), fen);
  }
}

TEST(RefereeFen, RefusesWhatIsNoFen) {
  for (const char* text :
       {"", "8/8/8/8/8/8/8/8", "8/8/8/8/8/8/8 w - -", "9/8/8/8/8/8/8/8 w - -",
        "8/8/8/8/8/8/8/7 w - -", "8/8/8/8/8/8/8/8 x - -", "8/8/8/8/8/8/8/8 w KX -",
        "8/8/8/8/8/8/8/8 w - e4", "8/8/8/8/8/8/8/8 w - - x 1", "8/8/8/8/8/8/8/7z w - -"}) {
    EXPECT_THROW(Position::from_fen(text), std::invalid_argument) << text;
  }
}

TEST(RefereeSquares, AreNumberedFileByFile) {
  EXPECT_EQ(sq("a1"), 0);
  EXPECT_EQ(sq("a8"), 7);
  EXPECT_EQ(sq("b1"), 8);
  EXPECT_EQ(sq("h1"), 56);
  EXPECT_EQ(sq("h8"), 63);
  EXPECT_EQ(square_name(sq("e4")), "e4");
  EXPECT_EQ(Position::start().at(sq("d1")), 'Q');
  EXPECT_EQ(Position::start().at(sq("d8")), 'q');
  EXPECT_EQ(Position::start().at(sq("d4")), ' ');
}

TEST(RefereeMoves, AreWrittenInCoordinates) {
  EXPECT_EQ((Move{sq("e2"), sq("e4"), 0}.text()), "e2e4");
  EXPECT_EQ((Move{sq("e7"), sq("e8"), 'q'}.text()), "e7e8q");
}

TEST(RefereeMoves, ADoubleStepOpensEnPassantForOneMove) {
  const Position p = play(Position::start(), {"e2e4", "a7a6", "e4e5", "d7d5"});
  EXPECT_EQ(p.en_passant(), sq("d6"));
  EXPECT_TRUE(has(p, "e5d6"));

  const Position taken = p.after(move("e5d6"));
  EXPECT_EQ(taken.at(sq("d5")), ' ');
  EXPECT_EQ(taken.at(sq("d6")), 'P');

  const Position later = play(p, {"h2h3", "h7h6"});
  EXPECT_FALSE(has(later, "e5d6"));
}

TEST(RefereeMoves, EnPassantMayNotUncoverTheOwnKing) {
  const Position p = Position::from_fen("8/8/8/KPp4r/8/8/8/7k w - c6 0 1");
  EXPECT_FALSE(has(p, "b5c6"));
}

TEST(RefereeMoves, CastlingMovesTheRookAndEndsTheRights) {
  const Position p = Position::from_fen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
  const Position white_short = p.after(move("e1g1"));
  EXPECT_EQ(white_short.at(sq("f1")), 'R');
  EXPECT_EQ(white_short.at(sq("h1")), ' ');
  EXPECT_FALSE(white_short.castling().white_queen_side);
  EXPECT_TRUE(white_short.castling().black_queen_side);

  // The rook on f1 now bars e8g8, whose king would cross f8.
  EXPECT_FALSE(has(white_short, "e8g8"));
  const Position black_long = white_short.after(move("e8c8"));
  EXPECT_EQ(black_long.at(sq("d8")), 'r');
  EXPECT_EQ(black_long.at(sq("a8")), ' ');
}

TEST(RefereeMoves, CastlingMayPassOverAnAttackedRookSquareOnly) {
  // Black attacks b1 but neither c1 nor d1.
  EXPECT_TRUE(has(Position::from_fen("1r2k3/8/8/8/8/8/8/R3K3 w Q - 0 1"), "e1c1"));
  EXPECT_FALSE(has(Position::from_fen("3rk3/8/8/8/8/8/8/R3K3 w Q - 0 1"), "e1c1"));
  EXPECT_FALSE(has(Position::from_fen("2r1k3/8/8/8/8/8/8/R3K3 w Q - 0 1"), "e1c1"));
  // Never out of check.
  EXPECT_FALSE(has(Position::from_fen("4r1k1/8/8/8/8/8/8/R3K3 w Q - 0 1"), "e1c1"));
}

TEST(RefereeMoves, ATakenRookTakesTheRightWithIt) {
  const Position p = Position::from_fen("r3k2r/8/8/8/8/8/6n1/R3K2R b KQkq - 0 1");
  // g2 attacks e1, e3, f4, h4; the rook on h8 takes h1.
  const Position after = p.after(move("h8h1"));
  EXPECT_FALSE(after.castling().white_king_side);
  EXPECT_FALSE(after.castling().black_king_side);
  EXPECT_TRUE(after.castling().white_queen_side);
}

TEST(RefereeMoves, APinnedManStaysOnItsLine) {
  const Position p = Position::from_fen("4r1k1/8/8/8/8/8/4R3/4K3 w - - 0 1");
  EXPECT_TRUE(has(p, "e2e5"));
  EXPECT_TRUE(has(p, "e2e8"));
  EXPECT_FALSE(has(p, "e2d2"));
}

TEST(RefereeChecks, AttacksAreSeenFromEveryKindOfMan) {
  const Position p = Position::from_fen("4k3/8/8/3p4/8/1N6/8/B3K2R w - - 0 1");
  EXPECT_TRUE(p.attacked(sq("e4"), false));   // pawn d5
  EXPECT_FALSE(p.attacked(sq("e6"), false));  // not backwards
  EXPECT_FALSE(p.attacked(sq("d4"), false));  // nor straight ahead
  EXPECT_TRUE(p.attacked(sq("d4"), true));    // knight b3 and bishop a1
  EXPECT_TRUE(p.attacked(sq("h8"), true));    // rook and bishop
  EXPECT_TRUE(p.attacked(sq("d2"), true));    // king and knight
  EXPECT_TRUE(p.attacked(sq("f8"), false));   // king e8
  EXPECT_FALSE(p.attacked(sq("a8"), true));
}

TEST(RefereeEnds, MateAndStalemateAreToldApart) {
  const Position mate = Position::from_fen("R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1");
  EXPECT_TRUE(mate.legal_moves().empty());
  EXPECT_TRUE(mate.in_check());

  const Position stalemate = Position::from_fen("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1");
  EXPECT_TRUE(stalemate.legal_moves().empty());
  EXPECT_FALSE(stalemate.in_check());
}

TEST(RefereeEnds, TooLittleMaterialIsKnown) {
  EXPECT_TRUE(Position::from_fen("8/8/4k3/8/8/4K3/8/8 w - - 0 1").insufficient_material());
  EXPECT_TRUE(Position::from_fen("8/8/4k3/8/8/4K1N1/8/8 w - - 0 1").insufficient_material());
  // Bishops on f6 and f2 stand on squares of one colour, those on f6 and e2 do not.
  EXPECT_TRUE(Position::from_fen("8/8/4kb2/8/8/4K3/5B2/8 w - - 0 1").insufficient_material());
  EXPECT_FALSE(Position::from_fen("8/8/4kb2/8/8/4K3/4B3/8 w - - 0 1").insufficient_material());
  EXPECT_FALSE(Position::from_fen("8/8/4k3/8/8/4K1NN/8/8 w - - 0 1").insufficient_material());
  EXPECT_FALSE(Position::from_fen("8/8/4k3/8/8/4K1P1/8/8 w - - 0 1").insufficient_material());
}

TEST(RefereeEnds, TheRepetitionKeyLooksAtRightsAndPossibleCapturesOnly) {
  const Position p = Position::start();
  const Position back = play(p, {"g1f3", "g8f6", "f3g1", "f6g8"});
  EXPECT_EQ(p.repetition_key(), back.repetition_key());
  EXPECT_NE(p.fen(), back.fen());

  // No Black pawn can take on e3, so the double step leaves no trace in the key.
  const Position e4 = play(p, {"e2e4"});
  const Position e4_later = play(e4, {"g8f6", "g1f3", "f6g8", "f3g1"});
  EXPECT_EQ(e4.repetition_key(), e4_later.repetition_key());

  // A rook that has been away has lost its castling right.
  const Position rook_home = play(p, {"h2h4", "h7h5", "h1h2", "h8h7", "h2h1", "h7h8"});
  EXPECT_NE(rook_home.repetition_key(), play(p, {"h2h4", "h7h5"}).repetition_key());
}

TEST(RefereeNotation, ReadsTheMovesOfAGameRecord) {
  const auto reads = [](const char* fen, const char* san, const char* text) {
    const std::optional<Move> m = Position::from_fen(fen).move_from_san(san);
    ASSERT_TRUE(m.has_value()) << san;
    EXPECT_EQ(m->text(), text) << san;
  };
  reads(start_fen, "e4", "e2e4");
  reads(start_fen, "Nf3", "g1f3");
  const char* both_castlings = "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1";
  reads(both_castlings, "O-O", "e1g1");
  reads(both_castlings, "O-O-O", "e1c1");
  reads(both_castlings, "Rxa8+", "a1a8");
  reads(both_castlings, "Kf2", "e1f2");
  reads("1n5k/P7/8/8/8/8/8/K7 w - - 0 1", "a8=N", "a7a8n");
  reads("1n5k/P7/8/8/8/8/8/K7 w - - 0 1", "axb8=Q+", "a7b8q");
  reads("7k/8/8/R7/8/8/8/R6K w - - 0 1", "R1a3", "a1a3");
  reads("7k/8/8/8/8/8/8/R3R2K w - - 0 1", "Rad1", "a1d1");
  reads("7k/8/8/8/4Q2Q/8/8/K6Q w - - 0 1", "Qh4e1", "h4e1");
  reads("7k/8/8/2pP4/8/8/8/K7 w - c6 0 1", "dxc6", "d5c6");
}

TEST(RefereeNotation, RefusesWhatFitsNoMoveOrMoreThanOne) {
  const auto refuses = [](const char* fen, const char* san) {
    EXPECT_FALSE(Position::from_fen(fen).move_from_san(san).has_value()) << san;
  };
  refuses(start_fen, "e5");
  refuses(start_fen, "Ke2");
  refuses(start_fen, "O-O");
  refuses(start_fen, "xyzzy");
  refuses(start_fen, "");
  refuses("7k/8/8/R7/8/8/8/R6K w - - 0 1", "Ra3");
  refuses("1n5k/P7/8/8/8/8/8/K7 w - - 0 1", "a8");
  refuses("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "Kg1");
}

// What the set of positions is for: that every kind of special case is met often. The minima were
// chosen before the set was counted.
class VariedFens : public testing::Test {
 protected:
  template <class Predicate>
  int count(Predicate holds) const {
    int n = 0;
    for (const std::string& fen : varied_fens()) n += holds(Position::from_fen(fen)) ? 1 : 0;
    return n;
  }
};

TEST_F(VariedFens, AreManyAndDistinct) {
  const std::vector<std::string>& fens = varied_fens();
  EXPECT_GE(fens.size(), 320u);
  EXPECT_EQ(std::set<std::string>(fens.begin(), fens.end()).size(), fens.size());
}

TEST_F(VariedFens, AreLegalAndReadBackUnchanged) {
  for (const std::string& fen : varied_fens()) {
    const Position p = Position::from_fen(fen);
    EXPECT_EQ(p.fen(), fen);
    EXPECT_FALSE(p.legal_moves().empty()) << fen;
    ASSERT_GE(p.king_square(true), 0) << fen;
    ASSERT_GE(p.king_square(false), 0) << fen;
    EXPECT_FALSE(p.attacked(p.king_square(!p.white_to_move()), p.white_to_move())) << fen;
  }
}

TEST_F(VariedFens, HaveBothColoursToMove) {
  EXPECT_GE(count([](const Position& p) { return p.white_to_move(); }), 100);
  EXPECT_GE(count([](const Position& p) { return !p.white_to_move(); }), 100);
}

TEST_F(VariedFens, HaveChecks) {
  EXPECT_GE(count([](const Position& p) { return p.white_to_move() && p.in_check(); }), 10);
  EXPECT_GE(count([](const Position& p) { return !p.white_to_move() && p.in_check(); }), 10);
}

TEST_F(VariedFens, HavePins) {
  // A man is pinned when its leaving the board, and nothing else, attacks its own king.
  const auto pinned = [](const Position& p) {
    if (p.in_check()) return false;
    for (int s = 0; s < 64; ++s) {
      const bool own =
          p.white_to_move() ? p.at(s) >= 'A' && p.at(s) <= 'Z' : p.at(s) >= 'a' && p.at(s) <= 'z';
      if (own && p.at(s) != 'K' && p.at(s) != 'k' && p.with_emptied(s).in_check()) return true;
    }
    return false;
  };
  EXPECT_GE(count(pinned), 20);
}

TEST_F(VariedFens, HaveCapturesInPassing) {
  const auto possible = [](const Position& p) {
    const std::vector<Move> moves = p.legal_moves();
    return p.en_passant() && std::any_of(moves.begin(), moves.end(), [&](const Move& m) {
             return m.to == *p.en_passant() && (p.at(m.from) == 'P' || p.at(m.from) == 'p');
           });
  };
  EXPECT_GE(count([&](const Position& p) { return p.white_to_move() && possible(p); }), 5);
  EXPECT_GE(count([&](const Position& p) { return !p.white_to_move() && possible(p); }), 5);
}

TEST_F(VariedFens, HaveAllFourCastlings) {
  for (const char* castling : {"e1g1", "e1c1", "e8g8", "e8c8"}) {
    const char king = castling[1] == '1' ? 'K' : 'k';
    EXPECT_GE(
        count([&](const Position& p) { return p.at(sq(castling)) == king && has(p, castling); }), 8)
        << castling;
  }
}

TEST_F(VariedFens, HavePromotions) {
  const auto promotes = [](const Position& p, bool by_capture) {
    const std::vector<Move> moves = p.legal_moves();
    return std::any_of(moves.begin(), moves.end(), [&](const Move& m) {
      return m.promo != 0 && (file_of(m.from) != file_of(m.to)) == by_capture;
    });
  };
  for (const bool by_capture : {false, true}) {
    EXPECT_GE(
        count([&](const Position& p) { return p.white_to_move() && promotes(p, by_capture); }), 10);
    EXPECT_GE(
        count([&](const Position& p) { return !p.white_to_move() && promotes(p, by_capture); }),
        10);
  }
}

TEST_F(VariedFens, HaveEndings) {
  EXPECT_GE(count([](const Position& p) { return p.men() <= 8; }), 30);
  EXPECT_GE(count([](const Position& p) { return p.men() >= 28; }), 30);
}

}  // namespace
}  // namespace referee
