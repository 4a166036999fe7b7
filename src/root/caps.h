// The score caps of the root and of each ply for one search.
#pragma once

#include "board/types.h"
#include "eval/extended.h"

namespace korvu {

inline int Positive_filter = 2, Negative_filter = 2;      // schemes in force, 0 to 3
inline int Positive_filterp = 2, Negative_filterp = 2;    // the options they are restored from
inline float positfilter = 100.0F, negatfilter = 100.0F;  // margins of scheme 1, score units

// The rung of the mate ladder at ply N: the cap that no score but a nearer mate exceeds.
float degrau_do_mate(int N);

// All caps to the mate ladder; the saved copies stay.
void caps_de_mate();

// Sets all caps for a search of `raiz` by the two filter options and the material on the board, and
// saves them in MAXcutt.
template <Cor raiz>
void define_caps();

// Copies the saved caps back.
void repoe_caps();

// MQ x ln(own total / other's total) at the root, in extended precision.
template <Cor raiz>
Estendido quociente_da_raiz();

}  // namespace korvu
