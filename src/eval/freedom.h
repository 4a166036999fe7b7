// May a man counted for mobility really move? Used by the scans at the root only.
#pragma once

#include "board/types.h"

namespace korvu {

// verifica_liberdade_b, verifica_liberdade_p: plays the move of `cor` on a private copy of tab
// (tab2t) without special moves, a pawn on its last rank becoming a queen, and writes YY: 1 when
// the mover's king is then attacked.
template <Cor cor>
void verifica_liberdade(int x1, int y1, int x2, int y2);

// verifica_liberdadee_b, verifica_liberdadee_p: the same from tab2.
template <Cor cor>
void verifica_liberdadee(int x1, int y1, int x2, int y2);

}  // namespace korvu
