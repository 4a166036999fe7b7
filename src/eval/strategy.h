// The rating of a root move: in which order it is searched, and what its leaves inherit.
#pragma once

#include "board/types.h"

namespace korvu {

inline int ATAQUE = 0;      // the rating before it is cut to range
inline int ESTRATEGIA = 0;  // rating of the root move, -100 to 100
inline int ataque = 0;      // the rating that is being searched now

// verifica_estrategia_b, verifica_estrategia_p: rates the root move of `cor` that led to tab2.
// Writes ATAQUE and ESTRATEGIA from the attack tables and MATRIZ of the last init_tabuleiro2 (and
// may scale MATRIZ in place), and extraevalll, which every leaf below the move adds.
template <Cor cor>
void verifica_estrategia();

extern template void verifica_estrategia<Cor::b>();
extern template void verifica_estrategia<Cor::p>();

}  // namespace korvu
