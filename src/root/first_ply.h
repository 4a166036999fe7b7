// The node of the first ply: searches one root move up to three ways and reports it.
#pragma once

#include "board/types.h"

namespace korvu {

inline std::uint8_t TURBO = 1;  // the option "Turbo search"
inline std::uint8_t DEEP9 = 0;  // more than 25 men without kings at the intake of the position

// Called after each root move that is reported; the front end hangs its printer here.
inline void (*relata_linha)() = [] {};

// deep_b1 (raiz = b) and deep_p1 (raiz = p): the value of the root move from (x1, y1) to (x2, y2),
// still unplayed on tab, is left in beta1. May move alfa0 and E, when the best move of a
// single-move pass has failed, and narrows the caps of the even plies for the next moves.
template <Cor raiz>
void deep1(int x1, int y1, int x2, int y2);

extern template void deep1<Cor::b>(int, int, int, int);
extern template void deep1<Cor::p>(int, int, int, int);

}  // namespace korvu
