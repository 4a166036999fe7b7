// The passes of one search.
#pragma once

#include "board/types.h"

namespace korvu {

inline std::uint8_t IIDS = 1;  // deepening is allowed

// emp and emppp for a search of `raiz`: the draw's value by the material quotient and "Confidence".
template <Cor raiz>
void define_empate();

// Clears all move slots: the best root move and the stored moves of every ply.
void esquece_lances();

// Searches tab for `raiz` with deep, tempo and the options as the front end has set them: caps,
// then the passes. Leaves the chosen move in a, b, c, d and its score in E. Without a legal move,
// or without an enemy king's worth of material on the counters, the move stays what it was.
template <Cor raiz>
void procura();

extern template void define_empate<Cor::b>();
extern template void define_empate<Cor::p>();
extern template void procura<Cor::b>();
extern template void procura<Cor::p>();

}  // namespace korvu
