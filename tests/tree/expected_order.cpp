#include "tree/expected_order.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace expected {
namespace {

using referee::file_of;
using referee::Move;
using referee::Position;
using referee::rank_of;
using referee::square;

struct Step {
  int file, rank;
};

const std::vector<Step> rook_rays = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
const std::vector<Step> bishop_rays = {{1, 1}, {1, -1}, {-1, -1}, {-1, 1}};
const std::vector<Step> queen_rays = {{1, 0}, {-1, 0}, {0, 1},   {0, -1},
                                      {1, 1}, {1, -1}, {-1, -1}, {-1, 1}};
const std::vector<Step> knight_leaps = {{2, 1},  {2, -1}, {-2, -1}, {-2, 1},
                                        {-1, 2}, {1, 2},  {1, -2},  {-1, -2}};
const std::vector<Step> king_steps = {{1, 0},   {-1, 0}, {0, 1},  {0, -1},
                                      {-1, -1}, {1, 1},  {-1, 1}, {1, -1}};

bool on_board(int file, int rank) {
  return file >= 0 && file < 8 && rank >= 0 && rank < 8;
}

// The men of one node, by English letters whatever their colour.
class Node {
 public:
  explicit Node(const Position& p) : p_(p), white_(p.white_to_move()) {}

  char own(int s) const { return is_own(s) ? upper(p_.at(s)) : ' '; }
  char enemy(int s) const { return is_own(s) || empty(s) ? ' ' : upper(p_.at(s)); }
  bool empty(int s) const { return p_.at(s) == ' '; }
  int forward() const { return white_ ? 1 : -1; }
  int rank(int r) const { return white_ ? r : 7 - r; }  // own r-th rank

  void try_move(int from, int to) {
    const bool promotes = own(from) == 'P' && rank_of(to) == rank(7);
    const Move m{from, to, promotes ? 'q' : '\0'};
    if (p_.is_legal(m) && std::find(moves.begin(), moves.end(), m) == moves.end())
      moves.push_back(m);
  }

  std::vector<int> walk(int from, const std::vector<Step>& rays, int furthest) const {
    std::vector<int> squares;
    for (const Step d : rays)
      for (int n = 1; n <= furthest; ++n) {
        const int f = file_of(from) + n * d.file, r = rank_of(from) + n * d.rank;
        if (!on_board(f, r)) break;
        squares.push_back(square(f, r));
        if (!empty(square(f, r))) break;
      }
    return squares;
  }

  std::vector<int> reach(char man, int from) const {
    switch (man) {
      case 'N':
        return walk(from, knight_leaps, 1);
      case 'K':
        return walk(from, king_steps, 1);
      case 'B':
        return walk(from, bishop_rays, 7);
      case 'R':
        return walk(from, rook_rays, 7);
      default:
        return walk(from, queen_rays, 7);
    }
  }

  // All captures of the man on `to`, found from there outward.
  void takers_of(int to) {
    // The diagonals on which a pawn takes this man come first.
    const int f = forward();
    const std::vector<Step> diagonals = {{1, -f}, {-1, -f}, {1, f}, {-1, f}};
    for (std::size_t i = 0; i < 4; ++i)
      for (const int from : walk(to, {diagonals[i]}, 7)) {
        const bool near = std::abs(file_of(from) - file_of(to)) == 1;
        const char man = own(from);
        if (man == 'B' || man == 'Q' || (near && man == 'K') || (near && man == 'P' && i < 2))
          try_move(from, to);
      }
    for (const int from : walk(to, rook_rays, 7)) {
      const bool near =
          std::abs(file_of(from) - file_of(to)) + std::abs(rank_of(from) - rank_of(to)) == 1;
      const char man = own(from);
      if (man == 'R' || man == 'Q' || (near && man == 'K')) try_move(from, to);
    }
    for (const int from : walk(to, knight_leaps, 1))
      if (own(from) == 'N') try_move(from, to);
  }

  void promotions() {
    for (int s = 0; s < 64; ++s) {
      if (own(s) != 'P' || rank_of(s) != rank(6)) continue;
      for (const int side : {1, -1})
        if (on_board(file_of(s) + side, 0)) {
          const int to = square(file_of(s) + side, rank(7));
          if (enemy(to) != ' ') try_move(s, to);
        }
      try_move(s, square(file_of(s), rank(7)));
    }
  }

  void quiet_pawn(int s) {
    const int x = file_of(s), y = rank_of(s);
    for (const int side : {1, -1})
      if (on_board(x + side, y + forward()) && p_.en_passant() == square(x + side, y + forward()) &&
          y == rank(4))
        try_move(s, square(x + side, y + forward()));
    if (y == rank(1)) try_move(s, square(x, rank(3)));
    try_move(s, square(x, y + forward()));
  }

  // Pawns file by file, the most advanced of a file first.
  void quiet(char man) {
    if (man == 'P') {
      for (int x = 0; x < 8; ++x)
        for (int r = 6; r >= 1; --r)
          if (own(square(x, rank(r))) == 'P') quiet_pawn(square(x, rank(r)));
      return;
    }
    for (int s = 0; s < 64; ++s) {
      if (own(s) != man) continue;
      if (man == 'K' && s == square(4, rank(0))) {
        try_move(s, square(6, rank(0)));
        try_move(s, square(2, rank(0)));
      }
      for (const int to : reach(man, s))
        if (empty(to)) try_move(s, to);
    }
  }

  // Captures of men of one kind by men of one kind, from the taker.
  void captures_by(char man, char victim) {
    for (int s = 0; s < 64; ++s) {
      if (own(s) != man) continue;
      std::vector<int> squares;
      if (man == 'P') {
        for (const int side : {1, -1})
          if (on_board(file_of(s) + side, rank_of(s) + forward()))
            squares.push_back(square(file_of(s) + side, rank_of(s) + forward()));
      } else {
        squares = reach(man, s);
      }
      for (const int to : squares)
        if (enemy(to) == victim) try_move(s, to);
    }
  }

  std::vector<Move> moves;

 private:
  static char upper(char man) { return man >= 'a' ? static_cast<char>(man - 'a' + 'A') : man; }
  bool is_own(int s) const {
    const char man = p_.at(s);
    return man != ' ' && (man < 'a') == white_;
  }

  const Position& p_;
  bool white_;
};

// Knights before bishops, though a bishop is worth one more.
constexpr std::string_view victims = "QRNBP", men = "PNBRQK";

}  // namespace

std::vector<Move> order(const Position& p, Promotions promotions) {
  Node node(p);
  if (promotions == Promotions::first) node.promotions();
  for (const char victim : victims)
    for (int s = 0; s < 64; ++s)
      if (node.enemy(s) == victim) node.takers_of(s);
  for (const char man : men) node.quiet(man);
  return node.moves;
}

std::vector<Move> order_at_the_first_ply(const Position& p) {
  Node node(p);
  for (const char victim : victims)
    for (const char man : men) node.captures_by(man, victim);
  // Pawns, too, in the order of the board.
  for (int s = 0; s < 64; ++s)
    if (node.own(s) == 'P') node.quiet_pawn(s);
  for (const char man : men)
    if (man != 'P') node.quiet(man);
  return node.moves;
}

std::vector<int> targets(const Position& p, int from) {
  const char man = p.at(from);
  return Node(p).reach(man >= 'a' ? static_cast<char>(man - 'a' + 'A') : man, from);
}

}  // namespace expected
