// What is derived from the position of the game once: king squares, the tables around kings and
// pawns, and the counts of men and material.
#pragma once

#include "board/state.h"
#include "board/tables.h"

namespace korvu {

// Around each king of tab, and around each colour's most advanced pawn (all 0 without pawns).
inline TabelaInt Xr_b{}, Xr_p{}, XP_b{}, XP_p{};

template <Cor cor>
TabelaInt& Xr() {
  return cor == Cor::b ? Xr_b : Xr_p;
}
template <Cor cor>
TabelaInt& XP() {
  return cor == Cor::b ? XP_b : XP_p;
}

// King squares, Xr_b, Xr_p (by the totals as they still stand), XP_b, XP_p, then the counters of
// men and material, materialflot0 by joga_com_b.
void analisa_tabuleiro();

}  // namespace korvu
