// In which order a node should try its moves, told plainly over the referee's board.
#pragma once

#include <vector>

#include "support/referee.h"

namespace expected {

// Do pawns about to promote go first, in a loop of their own?
enum class Promotions { among_the_others, first };

// The legal moves of the side to move in the order of a node without stored moves; every promotion
// is to a queen.
std::vector<referee::Move> order(const referee::Position& p, Promotions promotions);

// The same for the first ply, which looks for captures from the taker to the victim.
std::vector<referee::Move> order_at_the_first_ply(const referee::Position& p);

// The targets of an officer or king from a square, of whatever content: the order in which moves of
// one man come.
std::vector<int> targets(const referee::Position& p, int from);

}  // namespace expected
