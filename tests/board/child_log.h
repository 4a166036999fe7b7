// The order in which the loops of a ply enter its children, told by the clock: odd plies from 7
// read it on entry, and a test may stand in for it.
#pragma once

#include <vector>

#include "board/state.h"

namespace kit {

// Runs all loops of ply `n` (1 to 20) for a mover over the position of the root, and gives the
// boards of the children in the order of their first reading of the clock: below plies 6, 8 ... 20
// every child reads it; below the others a child's own children do, so that a child without a reply
// is not met. Below ply n every node is content with its first reply. The stored moves of ply n are
// those given, in the order of their slots.
std::vector<korvu::Tabuleiro> children(int n, bool white,
                                       const korvu::Lance& stored_quiet = korvu::sem_lance,
                                       const korvu::Lance& stored_capture = korvu::sem_lance);

// The castling mark of the mover as each of those children had it.
const std::vector<int>& castling_marks();

}  // namespace kit
