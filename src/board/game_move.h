// A move of the game on the board of the game.
#pragma once

namespace korvu {

// Plays a, b, c, d on tab with all flags of the game: steps of the pieces, castling by the two-file
// king's move or, with CHESS_960, by the king onto its own rook, capture in passing, promotion by
// PRs and PRe (sets PR when the engine's own promotion is played). The man on the from-square
// decides whose move it is; the move is trusted. While deeppromo is set the special moves and flags
// of the root colour alone are looked at, and every promotion is to a queen.
void joga_no_tabuleiro();

}  // namespace korvu
