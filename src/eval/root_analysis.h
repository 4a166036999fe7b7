// The game-level move with the analysis of the position it leads to.
#pragma once

namespace korvu {

// init_tabuleiro: plays a, b, c, d on tab, then rebuilds king squares, the tables around kings and
// pawns, the counters and `shashinn`, the reading of the position from the side of the root colour
// in force (joga_com_b). Used for every move of a position line and for the engine's own move.
void init_tabuleiro();

}  // namespace korvu
