// The root moves that a scan searches, in their order, told by the report after each.
#pragma once

#include <string>
#include <vector>

#include "board/state.h"
#include "root/expanders.h"

namespace kit {

struct RootMove {
  std::string move;
  int rating;       // ESTRATEGIA as the move was searched
  bool check;       // XEQUE likewise
  float inherited;  // extraevalll likewise
  int own_mark;     // the castling marks of the mover and of the other side
  int other_mark;
  korvu::Tabuleiro after;  // the position that was rated
};

// Places the position with its mover as the root side, and opens the root so wide that every move
// is searched, at the price of one that ends at once: bounds that no reply need be tried for.
void open_root(std::string_view fen);

// Runs one pass of the present ladder for the mover of the position, and gives the moves searched.
std::vector<RootMove> scanned();

// The same of the short scan of a game's first move.
std::vector<RootMove> scanned_at_first_move();

// The same of one expander on one square, for all ratings from the highest to the lowest.
std::vector<RootMove> expanded(const korvu::Expansor& e, std::size_t square);

// The moves alone, with a blank behind each.
std::string text_of(const std::vector<RootMove>& moves);

}  // namespace kit
