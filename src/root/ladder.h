// The root ladder: in which order a pass runs the expanders.
#pragma once

#include "board/types.h"

namespace korvu {

inline int Temperamento = 3;  // 3 dynamic, 2 consistent, 1 positional: selects the ladder

// Runs one pass over the root moves of `raiz`. Clears corte_MAXcut first; the pass ends when it is
// set. A bare enemy king has a ladder of its own; an enemy total below a king's runs none.
template <Cor raiz>
void percorre_escada();

// The short scan of a game's first move: quiet pawn and knight moves that give no check.
template <Cor raiz>
void percorre_primeiro_lance();

extern template void percorre_escada<Cor::b>();
extern template void percorre_escada<Cor::p>();
extern template void percorre_primeiro_lance<Cor::b>();
extern template void percorre_primeiro_lance<Cor::p>();

}  // namespace korvu
