// What the structure gives each pawn, for the scan of a leaf: the sums of eval/pawns.h found from
// sets, and kept for the pawns met lately.
#pragma once

#include "board/bits.h"

namespace korvu {

// What the structure gives each pawn of the board, in the order of the scan: the sum of its terms.
inline constexpr std::size_t maximo_de_peoes = 16;
using Estruturas = std::array<std::int16_t, maximo_de_peoes>;

// The structure of at most 16 pawns, from a small cache keyed by both sides' sets.
const Estruturas& estruturas_de(Bits peoes_b, Bits peoes_p);

}  // namespace korvu
