// The order in which a node tries its moves: of two equal ones the earlier stays the best.
#include <gtest/gtest.h>

#include <algorithm>

#include "child_log.h"
#include "sides.h"

namespace {

using namespace korvu;
using referee::Move;
using referee::Position;

struct Step {
  int dx, dy;
};

const std::vector<Step> rook_rays = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
const std::vector<Step> bishop_rays = {{1, 1}, {1, -1}, {-1, -1}, {-1, 1}};
const std::vector<Step> knight_leaps = {{2, 1},  {2, -1}, {-2, -1}, {-2, 1},
                                        {-1, 2}, {1, 2},  {1, -2},  {-1, -2}};
const std::vector<Step> king_steps = {{1, 0},   {-1, 0}, {0, 1},  {0, -1},
                                      {-1, -1}, {1, 1},  {-1, 1}, {1, -1}};

// The legal moves of a position in the order of a node at ply n, told square by square.
class Order {
 public:
  Order(const Position& p, int n) : p_(p), white_(p.white_to_move()), n_(n) {
    legal_ = kit::searched_moves(p);
    if (n == 1) {
      captures_of_the_first_ply();
    } else {
      if (apart()) promotions();
      captures_by_victim();
    }
    if (n == 1)
      each_own('p', [&](int s) { pawn(s); });
    else
      pawns_by_file();
    each_own('n', [&](int s) { leap(s, knight_leaps); });
    each_own('b', [&](int s) { ride(s, bishop_rays); });
    each_own('r', [&](int s) { ride(s, rook_rays); });
    each_own('q', [&](int s) {
      ride(s, rook_rays);
      ride(s, bishop_rays);
    });
    each_own('k', [&](int s) {
      castle(s, 6);
      castle(s, 2);
      leap(s, king_steps);
    });
  }
  const std::vector<Move>& moves() const { return moves_; }

 private:
  // Promotions come first and in a loop of their own.
  bool apart() const { return n_ >= 7 && n_ % 2 == 1; }
  int forward() const { return white_ ? 1 : -1; }
  int rank(int told) const { return white_ ? told : 7 - told; }
  char man(char letter, bool own) const {
    return white_ == own ? static_cast<char>(letter - 'a' + 'A') : letter;
  }
  bool own(int s) const { return p_.at(s) != ' ' && (p_.at(s) < 'a') == white_; }
  bool enemy(int s) const { return p_.at(s) != ' ' && !own(s); }
  static bool on_board(int x, int y) { return x >= 0 && x < 8 && y >= 0 && y < 8; }

  void add(int from, int to) {
    const auto m = std::find_if(legal_.begin(), legal_.end(),
                                [&](const Move& l) { return l.from == from && l.to == to; });
    if (m != legal_.end()) moves_.push_back(*m);
  }

  template <class F>
  void each(char piece, F f) {
    for (int s = 0; s < 64; ++s)
      if (p_.at(s) == piece) f(s);
  }
  template <class F>
  void each_own(char letter, F f) {
    each(man(letter, true), f);
  }

  // The first man from s along the ray, and how far it stands; -1 when there is none.
  struct Met {
    int square, distance;
  };
  Met first_man(int s, Step d) const {
    int x = s / 8 + d.dx, y = s % 8 + d.dy;
    for (int i = 1; on_board(x, y); ++i, x += d.dx, y += d.dy)
      if (p_.at(8 * x + y) != ' ') return {8 * x + y, i};
    return {-1, 0};
  }

  // Promotions, pawn by pawn: taking to the right, to the left, straight ahead.
  void promotions() {
    each_own('p', [&](int s) {
      if (s % 8 != rank(6)) return;
      for (const int dx : {1, -1}) {
        const int x = s / 8 + dx;
        if (on_board(x, rank(7)) && enemy(8 * x + rank(7))) add(s, 8 * x + rank(7));
      }
      add(s, s + forward());
    });
  }

  // The takers of the man on t, met from t outward.
  void takers(int t) {
    const std::vector<Step> diagonals = white_
                                            ? std::vector<Step>{{1, -1}, {-1, -1}, {1, 1}, {-1, 1}}
                                            : std::vector<Step>{{1, 1}, {-1, 1}, {1, -1}, {-1, -1}};
    for (const Step d : diagonals) {
      const Met m = first_man(t, d);
      if (m.square < 0 || !own(m.square)) continue;
      const char k = p_.at(m.square);
      const bool pawn_takes = k == man('p', true) && m.distance == 1 && d.dy == -forward() &&
                              !(apart() && m.square % 8 == rank(6));
      if (k == man('b', true) || k == man('q', true) || (k == man('k', true) && m.distance == 1) ||
          pawn_takes)
        add(m.square, t);
    }
    for (const Step d : rook_rays) {
      const Met m = first_man(t, d);
      if (m.square < 0) continue;
      const char k = p_.at(m.square);
      if (k == man('r', true) || k == man('q', true) || (k == man('k', true) && m.distance == 1))
        add(m.square, t);
    }
    for (const Step d : knight_leaps) {
      const int x = t / 8 + d.dx, y = t % 8 + d.dy;
      if (on_board(x, y) && p_.at(8 * x + y) == man('n', true)) add(8 * x + y, t);
    }
  }

  void captures_by_victim() {
    for (const char victim : std::string_view("qrnbp"))
      each(man(victim, false), [&](int t) { takers(t); });
  }

  // At ply 1: by the victim's kind, within it by the taker's, and each taker's targets in turn.
  void captures_of_the_first_ply() {
    for (const char victim : std::string_view("qrnbp"))
      for (const char taker : std::string_view("pnbrqk"))
        each_own(taker, [&](int s) { takes(s, taker, man(victim, false)); });
  }
  void takes(int s, char taker, char victim) {
    const auto at = [&](int x, int y) {
      if (on_board(x, y) && p_.at(8 * x + y) == victim) add(s, 8 * x + y);
    };
    const auto along = [&](const std::vector<Step>& rays) {
      for (const Step d : rays)
        if (const Met m = first_man(s, d); m.square >= 0) at(m.square / 8, m.square % 8);
    };
    switch (taker) {
      case 'p':
        at(s / 8 + 1, s % 8 + forward());
        at(s / 8 - 1, s % 8 + forward());
        break;
      case 'n':
        for (const Step d : knight_leaps) at(s / 8 + d.dx, s % 8 + d.dy);
        break;
      case 'k':
        for (const Step d : king_steps) at(s / 8 + d.dx, s % 8 + d.dy);
        break;
      default:
        if (taker != 'b') along(rook_rays);
        if (taker != 'r') along(bishop_rays);
        break;
    }
  }

  // The most advanced pawn of a file first.
  void pawns_by_file() {
    for (int x = 0; x < 8; ++x)
      for (int r = 6; r >= 1; --r)
        if (p_.at(8 * x + rank(r)) == man('p', true)) pawn(8 * x + rank(r));
  }
  // In passing to the right, to the left, two squares, one square.
  void pawn(int s) {
    if (s % 8 == rank(4))
      for (const int dx : {1, -1})
        if (p_.en_passant() == 8 * (s / 8 + dx) + rank(5)) add(s, *p_.en_passant());
    if (s % 8 == rank(1)) add(s, s + 2 * forward());
    if (apart() && s % 8 == rank(6)) return;
    add(s, s + forward());
  }
  void leap(int s, const std::vector<Step>& steps) {
    for (const Step d : steps) {
      const int x = s / 8 + d.dx, y = s % 8 + d.dy;
      if (on_board(x, y) && p_.at(8 * x + y) == ' ') add(s, 8 * x + y);
    }
  }
  void ride(int s, const std::vector<Step>& rays) {
    for (const Step d : rays) {
      int x = s / 8 + d.dx, y = s % 8 + d.dy;
      for (; on_board(x, y) && p_.at(8 * x + y) == ' '; x += d.dx, y += d.dy) add(s, 8 * x + y);
    }
  }
  // The arbiter writes a castling as the king's move of two files.
  void castle(int s, int to_file) {
    if (s / 8 == 4) add(s, 8 * to_file + s % 8);
  }

  const Position& p_;
  const bool white_;
  const int n_;
  std::vector<Move> legal_, moves_;
};

bool sees_children_without_replies(int n) {
  return n >= 6 && n % 2 == 0;
}

// How the boards of the children would read, were they entered in the order above.
std::string moves_between(const Position& p, const std::vector<Tabuleiro>& boards) {
  std::string text;
  for (const Tabuleiro& board : boards) {
    std::string name = "?";
    for (const Move& m : kit::searched_moves(p))
      if (kit::board_of(p.after(m)) == board) name = m.text();
    text += name + ' ';
  }
  return text;
}

std::string expected_text(const Position& p, int n) {
  std::string text;
  const Order order(p, n);
  for (const Move& m : order.moves())
    if (sees_children_without_replies(n) || !p.after(m).legal_moves().empty())
      text += m.text() + ' ';
  return text;
}

void expect_order(const kit::Case& c, int n) {
  kit::place(c.fen);
  EXPECT_EQ(moves_between(c.position, kit::children(n, c.position.white_to_move())),
            expected_text(c.position, n))
      << c.fen << " ply " << n;
}

TEST(NodeOrder, TheOrderedMovesAreAllTheLegalOnes) {
  for (const kit::Case& c : kit::cases())
    for (const int n : {1, 2, 7, 8})
      EXPECT_EQ(Order(c.position, n).moves().size(), c.moves.size()) << c.fen << " ply " << n;
}

TEST(NodeOrder, OfAnEvenPly) {
  for (const kit::Case& c : kit::cases()) expect_order(c, 8);
  EXPECT_GE(kit::cases().size(), 300U);
}

TEST(NodeOrder, OfAnOddPlyWithPromotionsApart) {
  for (const kit::Case& c : kit::cases()) expect_order(c, 7);
}

TEST(NodeOrder, IsTheSameAtAllPliesThatCanBeSeen) {
  for (std::size_t at = 0; at < kit::cases().size(); at += 6)
    for (int n = 5; n <= 20; ++n) expect_order(kit::cases()[at], n);
}

kit::Case case_of(std::string_view fen) {
  Position p = Position::from_fen(fen);
  return {std::string(fen), p, kit::searched_moves(p)};
}

// Here a reading of the clock needs some plies more, so that lines must not end before.
constexpr std::string_view full_boards[] = {
    "r3k2r/pppq1ppp/2npbn2/2b1p3/2B1P3/2NPBN2/PPPQ1PPP/R3K2R w KQkq - 0 8",
    "r3k2r/pp1q1ppp/2n1bn2/1Bpp4/3PpP2/2N1B3/PPPQN1PP/R3K2R b KQkq f3 0 8",
    "r1bq1rk1/pp2bppp/2n1pn2/2pp4/3P1B2/2PBPN2/PP1N1PPP/R2QK2R w KQ - 0 8",
    "1r3rk1/P3q1pp/2n2p2/1b1n4/1R2PP2/2N2B2/p4QPP/1R4K1 w - - 0 30",
};

TEST(NodeOrder, OfTheFirstPlies) {
  for (const std::string_view fen : full_boards)
    for (const bool as_told : {true, false})
      for (int n = 1; n <= 4; ++n)
        expect_order(case_of(as_told ? std::string(fen) : kit::mirrored(fen)), n);
}

// --- Told by hand ---

std::string order_of(std::string_view fen, int n, const Lance& stored_quiet = sem_lance,
                     const Lance& stored_capture = sem_lance) {
  const kit::Case c = case_of(fen);
  kit::place(fen);
  return moves_between(c.position,
                       kit::children(n, c.position.white_to_move(), stored_quiet, stored_capture));
}

TEST(NodeOrder, VictimsComeByValueKnightsBeforeBishops) {
  const std::string fen = "6k1/8/8/qp1b1n1r/1PP1P1P1/8/8/6K1 w - - 0 1";
  EXPECT_EQ(order_of(fen, 8).substr(0, 35), "b4a5 g4h5 g4f5 e4f5 e4d5 c4d5 c4b5 ");
  EXPECT_EQ(order_of(kit::mirrored(fen), 8).substr(0, 35), "b5a4 g5h4 g5f4 e5f4 e5d4 c5d4 c5b4 ");
}

TEST(NodeOrder, TakersAreMetFromTheVictimOutward) {
  // The diagonals below the victim first, pawns on the first square only; then ranks and files;
  // knights last.
  EXPECT_EQ(order_of("7k/1B6/5N2/R2r2R1/4P3/3Q4/B7/7K w - - 0 1", 8).substr(0, 35),
            "e4d5 a2d5 b7d5 g5d5 a5d5 d3d5 f6d5 ");
  EXPECT_EQ(order_of("7k/b7/3q4/4p3/r2R2r1/5n2/1b6/7K b - - 0 1", 8).substr(0, 35),
            "e5d4 a7d4 b2d4 g4d4 a4d4 d6d4 f3d4 ");
}

TEST(NodeOrder, PromotionsComeBeforeAnyCaptureAndOnce) {
  // The queen's capture on a8 would come first by its victim; the pawn's is not repeated there.
  const std::string_view fen = "q1n4k/1P6/8/8/8/8/8/Q3K3 w - - 0 1";
  EXPECT_EQ(order_of(fen, 7).substr(0, 23), "b7c8q b7a8q b7b8q a1a8 ");
  const std::string all = order_of(fen, 7);
  EXPECT_EQ(all.find("b7a8q"), all.rfind("b7a8q"));
  // Elsewhere a promoting capture comes with its victim, and the step with the quiet moves.
  EXPECT_EQ(order_of(fen, 8).substr(0, 23), "b7a8q a1a8 b7c8q b7b8q ");
}

TEST(NodeOrder, AmongPawnsTheMostAdvancedOfAFileIsFirst) {
  EXPECT_EQ(order_of("7k/8/8/1P6/8/P1P5/P7/7K w - - 0 1", 8), "a3a4 b5b6 c3c4 h1g1 h1h2 h1g2 ");
  EXPECT_EQ(order_of("7k/8/8/8/P6p/8/P7/7K w - - 0 1", 8), "a4a5 a2a3 h1g1 h1h2 h1g2 ");
  EXPECT_EQ(order_of("7k/p7/8/p7/8/8/7P/7K b - - 0 1", 8), "a5a4 a7a6 h8g8 h8h7 h8g7 ");
}

TEST(NodeOrder, APawnTakesInPassingThenStepsTwiceThenOnce) {
  EXPECT_EQ(order_of("7k/8/8/1PpP4/8/8/4P3/7K w - c6 0 1", 8),
            "b5c6 b5b6 d5c6 d5d6 e2e4 e2e3 h1g1 h1h2 h1g2 ");
  EXPECT_EQ(order_of("7k/4p3/8/8/1pPp4/8/8/7K b - c3 0 1", 8),
            "b4c3 b4b3 d4c3 d4d3 e7e5 e7e6 h8g8 h8h7 h8g7 ");
}

TEST(NodeOrder, TheKingCastlesBeforeItSteps) {
  EXPECT_EQ(order_of("r3k2r/p6p/8/8/8/8/P6P/R3K2R w KQ - 0 1", 8),
            "a2a4 a2a3 h2h4 h2h3 a1b1 a1c1 a1d1 h1g1 h1f1 e1g1 e1c1 e1f1 e1d1 e1e2 e1f2 e1d2 ");
}

TEST(NodeOrder, AStoredMoveIsMovedAhead) {
  const std::string_view fen = "7k/8/8/3r1n2/4P3/8/8/7K w - - 0 1";
  ASSERT_EQ(order_of(fen, 8), "e4d5 e4f5 e4e5 h1g1 h1h2 h1g2 ");
  // Ahead of all moves when it takes: the victim's square is stored first.
  const Lance takes_f5 = {5, 4, 4, 3};
  EXPECT_EQ(order_of(fen, 8, sem_lance, takes_f5), "e4f5 e4d5 e4e5 h1g1 h1h2 h1g2 ");
  // Behind the captures when it does not.
  const Lance to_h2 = {7, 0, 7, 1};
  EXPECT_EQ(order_of(fen, 8, to_h2), "e4d5 e4f5 h1h2 e4e5 h1g1 h1g2 ");
  EXPECT_EQ(order_of(fen, 8, to_h2, takes_f5), "e4f5 e4d5 h1h2 e4e5 h1g1 h1g2 ");
  // Ahead of promotions too, where these come first.
  const std::string_view promoting = "7k/P7/8/3r1n2/4P3/8/8/7K w - - 0 1";
  EXPECT_EQ(order_of(promoting, 7, to_h2, takes_f5), "e4f5 a7a8q e4d5 h1h2 e4e5 h1g1 h1g2 ");
}

TEST(NodeOrder, TheFirstPlyStoresACaptureFromItsTaker) {
  const std::string_view fen =
      "r1bq1rk1/pp2bppp/2n1pn2/2pp4/3P1B2/2PBPN2/PP1N1PPP/R2QK2R w KQ - 0 8";
  ASSERT_EQ(order_of(fen, 1).substr(0, 15), "d4c5 d3h7 a2a4 ");
  const Lance d3h7 = {3, 2, 7, 6}, c3c4 = {2, 2, 2, 3};
  EXPECT_EQ(order_of(fen, 1, c3c4, d3h7).substr(0, 20), "d3h7 d4c5 c3c4 a2a4 ");
}

// --- The castling mark ---

TEST(CastlingMark, StandsBelowACastlingAlone) {
  const int of_ply[] = {10, 10, 9, 9, 8, 8, 7, 7, 6, 6, 5, 5, 4, 4, 3, 3, 2, 2, 2, 2, 2};
  const kit::Case white = case_of(full_boards[0]);
  const kit::Case black = case_of(kit::mirrored(full_boards[0]));
  for (int n = 1; n <= 20; ++n)
    for (const kit::Case& c : {white, black}) {
      kit::place(c.fen);
      const bool is_white = c.position.white_to_move();
      const std::vector<Tabuleiro> boards = kit::children(n, is_white);
      ASSERT_EQ(boards.size(), c.moves.size());
      int castled = 0;
      for (const Move& m : c.moves) {
        const auto i = std::find(boards.begin(), boards.end(), kit::board_of(c.position.after(m)));
        ASSERT_NE(i, boards.end());
        const bool castles = std::abs(m.from - m.to) == 16 && m.from / 8 == 4 &&
                             (c.position.at(m.from) == 'K' || c.position.at(m.from) == 'k');
        EXPECT_EQ(kit::castling_marks()[static_cast<std::size_t>(i - boards.begin())],
                  castles ? of_ply[n] : 0)
            << m.text() << " ply " << n;
        castled += castles;
      }
      EXPECT_EQ(castled, 2);
      EXPECT_EQ(roque_b, 0);
      EXPECT_EQ(roque_p, 0);
    }
}

}  // namespace
