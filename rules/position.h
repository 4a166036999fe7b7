// The rules of chess: a plain mailbox move generator that favours being obviously right over being
// fast, and that shares no code with the engine. The companion tells legal moves by it, and the
// tests judge the engine by it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rules {

// Squares are 8 * file + rank: a1 is 0, a8 is 7, h1 is 56, h8 is 63.
constexpr int square(int file, int rank) {
  return 8 * file + rank;
}
constexpr int file_of(int sq) {
  return sq / 8;
}
constexpr int rank_of(int sq) {
  return sq % 8;
}

std::string square_name(int sq);

struct Move {
  int from = 0;
  int to = 0;
  char promo = 0;  // 'q', 'r', 'b', 'n', or 0 for none; always lower case

  std::string text() const;  // "e2e4", "e7e8q"

  friend bool operator==(const Move&, const Move&) = default;
};

enum class Side { white, black };

constexpr Side opponent(Side s) {
  return s == Side::white ? Side::black : Side::white;
}

struct CastlingRights {
  bool white_king_side = false;
  bool white_queen_side = false;
  bool black_king_side = false;
  bool black_queen_side = false;
};

class Position {
 public:
  // Reads the first four fields of a FEN, and the two counters when they are there. Throws
  // std::invalid_argument on a text that is not a FEN.
  static Position from_fen(std::string_view text);
  static Position start();

  // The en passant field is written after every double step, whether or not a capture is possible.
  std::string fen() const;

  std::vector<Move> legal_moves() const;
  bool is_legal(const Move& m) const;

  // The position after a move, which must be one of legal_moves().
  Position after(const Move& m) const;

  bool in_check() const;  // the king of the side to move
  bool attacked(int sq, bool by_white) const;

  char at(int sq) const { return board_[static_cast<std::size_t>(sq)]; }  // 'P', 'n', ' ' ...
  bool white_to_move() const { return side_ == Side::white; }
  const CastlingRights& castling() const { return castling_; }
  std::optional<int> en_passant() const { return en_passant_; }  // the square passed over
  int halfmove_clock() const { return halfmoves_; }
  int king_square(bool white) const;  // -1 when there is none

  // How many men stand on the board, kings included.
  int men() const;

  // Board, side to move, castling rights and a really possible en passant capture: the four things
  // that make two positions the same for the draw by repetition.
  std::string repetition_key() const;

  // Neither side has the men to mate: bare kings, or a single bishop or knight more, or bishops
  // that all stand on one colour of squares.
  bool insufficient_material() const;

  // The same position with one square emptied and nothing else changed.
  Position with_emptied(int sq) const;

  // A move in the notation of game records ("Nbxd7+", "O-O", "e8=Q#"); empty when it fits no legal
  // move or more than one. Check marks and annotation marks are not looked at.
  std::optional<Move> move_from_san(std::string_view san) const;

 private:
  std::vector<Move> pseudo_legal_moves() const;
  void add_pawn_moves(int from, std::vector<Move>& out) const;
  void add_castling_moves(std::vector<Move>& out) const;
  bool own(int sq) const;
  bool enemy(int sq) const;

  std::array<char, 64> board_{};
  Side side_ = Side::white;
  CastlingRights castling_;
  std::optional<int> en_passant_;
  int halfmoves_ = 0;
  int move_number_ = 1;
};

// Number of move sequences of the given length.
std::uint64_t perft(const Position& p, int depth);

}  // namespace rules
