// What the tests of the board and of the move loops share: boards as the referee sees them, the
// plies as run-time numbers, and a window in which no loop is cut.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "board/state.h"
#include "support/lab.h"
#include "support/positions.h"
#include "support/referee.h"

namespace kit {

inline constexpr int first_ply = 1, last_ply = 23;

// --- Boards ---

// The byte of a man, by its letter in a FEN; a blank is an empty square.
std::uint8_t code_of(char man);
korvu::Tabuleiro board_of(const referee::Position& p);
korvu::Tabuleiro board_of(std::string_view fen);

// The same men with the other side to move and nobody's double step remembered.
referee::Position other_to_move(const referee::Position& p);

// The position with the colours and the ranks exchanged.
std::string mirrored(std::string_view fen);

// Boards differ square by square: a message for the first difference, empty when they are equal.
std::string difference(const korvu::Tabuleiro& is, const korvu::Tabuleiro& should);

// --- Moves ---

struct Squares {
  int x1, y1, x2, y2;
};
Squares squares_of(const referee::Move& m);
Squares squares_of(std::string_view move);  // "e2e4"
referee::Move move_of(std::string_view move);

// The legal moves as the search knows them: of the promotions those to a queen alone.
std::vector<referee::Move> searched_moves(const referee::Position& p);

// --- The move loops ---

// Odd plies from 7 have a loop of their own for promotions.
bool has_promotion_loop(int n);

// A man stands on the target square: what the loops call a capture.
bool is_capture(const referee::Position& p, const referee::Move& m);

// The kind of a man by its letter: pawn 0 ... king 5.
std::size_t kind_of(char man);

// Stores the move at ply `n`, and no other, as the ply keeps it: captures target first, but not at
// ply 1.
void store(int n, const referee::Move& m, bool capture);

// --- Setting up ---

// lab::position, with the tables around the kings made of this position's totals, every setting
// that steers a test at its usual value, no stored moves and no log on the clock.
void place(std::string_view fen);

// Board and flags of ply `n` as those of the root.
void copy_root_to(int n);

// Makes ply `n` ready for its loops: the root's board and flags, bounds and caps so wide that
// nothing is cut, no depth for the children, counters and flags at 0.
void open_ply(int n);

// The value slot of a ply, and the cut flag of its node.
float& value(int n);
std::uint8_t& cut_flag(int n);

// --- The positions that many tests walk over ---

struct Case {
  std::string fen;
  referee::Position position;
  std::vector<referee::Move> moves;  // searched_moves
};
// All of referee::varied_fens().
const std::vector<Case>& cases();

}  // namespace kit
