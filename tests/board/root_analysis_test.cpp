// The reading of the position after a game move: the sums of the scan, and `shashinn`.
#include "eval/root_analysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "eval/knobs.h"
#include "sides.h"

namespace {

using namespace korvu;

// A side's figures, counted from the arbiter's position in double precision.
struct Side {
  double attack = 0, defence = 0, centre = 0;
  int shield = 0, weight = 0, officers = 0, pawns = 0, mobility = 0, advance = 0;
  int xmin = 7, xmax = 0, ymin = 7, ymax = 0;
};

// The men of one colour in a position with that colour to move.
class Scan {
 public:
  Scan(const referee::Position& p, bool white)
      : p_(p), white_(white), own_king_(p.king_square(white)), other_king_(p.king_square(!white)) {
    for (int s = 0; s < 64; ++s) officers_against_ += officer_value(s);
    for (int s = 0; s < 64; ++s)
      if (is(s, white_)) man(s);
  }
  const Side& side() const { return side_; }

 private:
  static char kind(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
  bool is(int s, bool white) const { return p_.at(s) != ' ' && (p_.at(s) >= 'a') != white; }
  int officer_value(int s) const {
    if (!is(s, !white_)) return 0;
    switch (kind(p_.at(s))) {
      case 'n':
        return 32;
      case 'b':
        return 33;
      case 'r':
        return 50;
      case 'q':
        return 90;
      default:
        return 0;
    }
  }
  // With few enemy officers a king fights, and pawns are looked at as promotion's and not as
  // shelter's.
  bool ending() const { return officers_against_ <= 90; }

  static double nearness(int s, int t) {
    const int dx = referee::file_of(s) - referee::file_of(t);
    const int dy = referee::rank_of(s) - referee::rank_of(t);
    return 1.0 / (dx * dx + dy * dy + 2);
  }
  void note(int s) {
    const double x = referee::file_of(s) - 3.5, y = referee::rank_of(s) - 3.5;
    side_.centre += 50 / (x * x + y * y + 2);
    side_.attack += nearness(s, other_king_);
    side_.defence += nearness(s, own_king_);
  }
  void move(int from, int to) {
    const bool last_rank = referee::rank_of(to) == (white_ ? 7 : 0);
    const char promo = kind(p_.at(from)) == 'p' && last_rank ? 'q' : '\0';
    const referee::Position next = p_.after({from, to, promo});
    side_.mobility += !next.attacked(next.king_square(white_), !white_);
  }
  void reach(int from, int to) {
    if (!is(to, white_)) move(from, to);
    note(to);
  }
  static bool on_board(int x, int y) { return x >= 0 && x < 8 && y >= 0 && y < 8; }

  void ride(int s, bool straight, bool diagonal) {
    for (int dx = -1; dx <= 1; ++dx)
      for (int dy = -1; dy <= 1; ++dy) {
        if (dx == 0 && dy == 0) continue;
        if ((dx == 0 || dy == 0) ? !straight : !diagonal) continue;
        int x = referee::file_of(s) + dx, y = referee::rank_of(s) + dy;
        for (; on_board(x, y); x += dx, y += dy) {
          reach(s, referee::square(x, y));
          if (p_.at(referee::square(x, y)) != ' ') break;
        }
      }
  }
  void leap(int s, int square_of_length) {
    for (int dx = -2; dx <= 2; ++dx)
      for (int dy = -2; dy <= 2; ++dy) {
        const int d = dx * dx + dy * dy;
        const int x = referee::file_of(s) + dx, y = referee::rank_of(s) + dy;
        const bool fits = square_of_length == 5 ? d == 5 : d == 1 || d == 2;
        if (fits && on_board(x, y)) reach(s, referee::square(x, y));
      }
  }
  void extend(int s) {
    side_.xmin = std::min(side_.xmin, referee::file_of(s));
    side_.xmax = std::max(side_.xmax, referee::file_of(s));
    side_.ymin = std::min(side_.ymin, referee::rank_of(s));
    side_.ymax = std::max(side_.ymax, referee::rank_of(s));
  }
  void pawn(int s) {
    const int forward = white_ ? 1 : -1;
    const int x = referee::file_of(s), y = referee::rank_of(s);
    ++side_.pawns;
    extend(s);
    if (!ending()) {
      const int ahead = forward * (y - referee::rank_of(own_king_));
      const bool near = std::abs(x - referee::file_of(own_king_)) <= 1;
      side_.shield += near && ahead >= 0 && ahead <= 2;
    }
    for (const int i : {x - 1, x + 1}) {
      if (!on_board(i, y + forward)) continue;
      const int t = referee::square(i, y + forward);
      if (!ending()) note(t);
      if (is(t, !white_)) move(s, t);
    }
    const int one = referee::square(x, y + forward);
    if (p_.at(one) != ' ') return;
    move(s, one);
    const int two = one + forward;
    if (y == (white_ ? 1 : 6) && p_.at(two) == ' ') move(s, two);
  }
  void man(int s) {
    side_.advance += white_ ? referee::rank_of(s) + 1 : 8 - referee::rank_of(s);
    const char k = kind(p_.at(s));
    if (k == 'p') return pawn(s);
    if (k == 'k') {
      extend(s);
      if (ending()) leap(s, 1);
      return;
    }
    ++side_.officers;
    side_.weight += k == 'q' ? 9 : k == 'r' ? 5 : 3;
    if (k == 'n')
      leap(s, 5);
    else
      ride(s, k != 'b', k != 'r');
  }

  const referee::Position& p_;
  const bool white_;
  const int own_king_, other_king_;
  int officers_against_ = 0;
  Side side_;
};

int total(const referee::Position& p, bool white) {
  const std::string_view men = white ? "PNBRQK" : "pnbrqk";
  const int values[] = {10, 32, 33, 50, 90, 110};
  int sum = 0;
  for (int s = 0; s < 64; ++s)
    if (const std::size_t kind = men.find(p.at(s)); kind != men.npos) sum += values[kind];
  return sum;
}

double forwardness(const Side& s) {
  return (s.advance + 0.1) / (s.officers + s.pawns + 1);
}
double closeness(const Side& s) {
  return (s.pawns + 1.0) / ((s.xmax - s.xmin + 1) * (s.ymax - s.ymin + 1));
}

// The reading from the side of `own`.
double reading(const Side& own, const Side& other, double own_total, double other_total) {
  double sum = 0.1 * std::log((other_total + 0.1) / (own_total + 0.1));
  sum += 5 * std::log((own.defence + own.shield + 3) / (other.attack + 3));
  sum += 5 * std::log((own.attack + 3) / (other.defence + other.shield + 3));
  sum += 2 * std::log((own.weight + 10.1) / (other.weight + 10.1));
  sum += static_cast<double>(MOB) * std::log((own.mobility + 3.0) / (other.mobility + 3.0));
  return sum + closeness(own) - forwardness(own) + forwardness(other) - closeness(other);
}

struct Both {
  Side white, black;
};
Both scan(const referee::Position& p) {
  const referee::Position other = kit::other_to_move(p);
  return {Scan(p.white_to_move() ? p : other, true).side(),
          Scan(p.white_to_move() ? other : p, false).side()};
}

// Plays the move as the game does, with a root of the given colour.
void play(std::string_view fen, std::string_view move, bool white_root, float mobility_weight = 5) {
  kit::place(fen);
  MOB = mobility_weight;
  joga_com_b = white_root;
  const auto s = kit::squares_of(move);
  jogada = {s.x1, s.y1, s.x2, s.y2};
  PRs = 'q';
  PRe = '0';
  init_tabuleiro();
}

TEST(RootAnalysis, ReadsThePositionFromTheRootSide) {
  int read = 0;
  for (const kit::Case& c : kit::cases())
    for (const bool white_root : {true, false}) {
      const referee::Move m = c.moves[static_cast<std::size_t>(read) % c.moves.size()];
      const referee::Position p = c.position.after(m);
      play(c.fen, m.text(), white_root);
      const Both b = scan(p);
      const double w = total(p, true), k = total(p, false);
      const double should =
          white_root ? reading(b.white, b.black, w, k) : reading(b.black, b.white, k, w);
      EXPECT_NEAR(shashinn, should, 1e-4) << c.fen << ' ' << m.text();
      ++read;
    }
  EXPECT_GE(read, 600);
}

TEST(RootAnalysis, LeavesTheSumsOfTheScan) {
  int at = 0;
  for (const kit::Case& c : kit::cases()) {
    const referee::Move m = c.moves[static_cast<std::size_t>(at++) % c.moves.size()];
    extraeval = 99;
    play(c.fen, m.text(), true);
    const Both b = scan(c.position.after(m));
    SCOPED_TRACE(c.fen + ' ' + m.text());
    EXPECT_NEAR(atack_ksf_b, b.white.attack, 1e-4);
    EXPECT_NEAR(defesa_ksf_b, b.white.defence, 1e-4);
    EXPECT_NEAR(centro_b, b.white.centre, 1e-2);
    EXPECT_NEAR(atack_ksf_p, b.black.attack, 1e-4);
    EXPECT_NEAR(defesa_ksf_p, b.black.defence, 1e-4);
    EXPECT_NEAR(centro_p, b.black.centre, 1e-2);
    EXPECT_EQ(extraeval, 0);
  }
  EXPECT_GE(at, 300);
}

// Every addition to a sum is rounded to float, square by square in the order of the scan.
TEST(RootAnalysis, RoundsTheSumsAtEachSquare) {
  play("rq5k/8/8/8/8/5N2/8/K7 w - - 0 1", "f3e5", true);
  float attack = 0, defence = 0, centre = 0;
  for (const std::string_view s : {"g6", "g4", "c6", "c4", "d7", "d3", "f3", "f7"}) {
    const int x = s[0] - 'a', y = s[1] - '1';
    attack = static_cast<float>(attack + 1.0 / ((7 - x) * (7 - x) + (7 - y) * (7 - y) + 2));
    defence = static_cast<float>(defence + 1.0 / (x * x + y * y + 2));
    centre += static_cast<float>(50 / ((x - 3.5) * (x - 3.5) + (y - 3.5) * (y - 3.5) + 2));
  }
  EXPECT_EQ(atack_ksf_b, attack);
  EXPECT_EQ(defesa_ksf_b, defence);
  EXPECT_EQ(centro_b, centre);
}

// The mobility quotient alone: what the reading loses when its weight falls from 1 to 0.
double mobility_quotient(std::string_view fen, std::string_view move) {
  play(fen, move, true, 1);
  const double with = shashinn;
  play(fen, move, true, 0);
  return with - shashinn;
}

TEST(RootAnalysis, CountsAPinnedManAsImmobile) {
  const std::string_view fen = "k3r3/8/8/8/8/8/4N3/5K2 w - - 0 1";
  // Black: the king's a7, b7, b8 and the rook's b8 to d8, f8 to h8, e7 to e3 and the knight.
  const int black = 3 + 3 + 3 + 5 + 1;
  // After Ke1 the knight is pinned, and the king has d1, d2, f1 and f2.
  EXPECT_NEAR(mobility_quotient(fen, "f1e1"), std::log((4 + 3.0) / (black + 3.0)), 1e-5);
  // After Kg1 it is not: c1, c3, d4, f4, g3, and the king's f1, f2, g2, h1, h2.
  EXPECT_NEAR(mobility_quotient(fen, "f1g1"), std::log((5 + 5 + 3.0) / (black + 3.0)), 1e-5);
}

TEST(RootAnalysis, OfKingsAloneIsTheirAttackAndDefence) {
  // Kings alone on e1 and e8 after Ke1: five steps each, one man each on its first rank.
  play("4k3/8/8/8/8/8/8/3K4 w - - 0 1", "d1e1", true);
  // Everything is equal but the two quotients of attack and defence, which are each other's
  // inverse.
  const double attack = 2 / (36.0 + 1 + 2) + 2 / (49.0 + 1 + 2) + 1 / (36.0 + 2);
  const double defence = 2 / 3.0 + 2 / 4.0 + 1 / 3.0;
  EXPECT_NEAR(atack_ksf_b, attack, 1e-6);
  EXPECT_NEAR(defesa_ksf_b, defence, 1e-6);
  EXPECT_NEAR(
      shashinn,
      5 * std::log((defence + 3) / (attack + 3)) + 5 * std::log((attack + 3) / (defence + 3)),
      1e-5);
}

}  // namespace
