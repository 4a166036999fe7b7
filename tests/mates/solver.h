// Forced mates by brute force upon the referee's moves: every move of the side that mates, every
// reply of the other.
#pragma once

#include <optional>
#include <vector>

#include "support/referee.h"

namespace mates {

// The side to move mates with its `moves`-th move at the latest, whatever is replied.
bool forced_within(const referee::Position& p, int moves);

// The least such number up to `most`, or nothing.
std::optional<int> distance(const referee::Position& p, int most);

// After the move, its side still mates with `moves` further ones; with 0, the move itself mates.
bool keeps_mate_within(const referee::Position& p, const referee::Move& m, int moves);

}  // namespace mates
