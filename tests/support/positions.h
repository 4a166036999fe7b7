// Positions for tests that want many of them: one fixed set, the same in every run and on every
// platform.
#pragma once

#include <string>
#include <vector>

namespace referee {

// At least 320 distinct legal positions as FENs, reached by random legal games from the start
// position and from some that bring castling, promotions, captures in passing and endings near.
// Each has a king of both colours, at least one legal move, and no king left to be taken.
const std::vector<std::string>& varied_fens();

// Those and what random games from each of them lead to: some thousands. For tests that are quick
// with a position.
const std::vector<std::string>& many_fens();

}  // namespace referee
