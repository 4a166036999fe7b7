// A root move before it is rated: on tab2, with what every square of it is attacked by.
#pragma once

#include "board/state.h"
#include "board/tables.h"

namespace korvu {

// Men of each kind that attack a square of tab2, by Peca; N_A: all of the colour.
struct Ataques {
  std::array<TabelaInt, 6> por_peca{};
  TabelaInt N_A{};
};
inline Ataques ataca_b{}, ataca_p{};

inline int MATRIZ = 0;                    // square value of the root move
inline std::uint8_t incentiva_promo = 0;  // MATRIZ is to be scaled: a pawn move late in the game

template <Cor cor>
Ataques& ataca() {
  return cor == Cor::b ? ataca_b : ataca_p;
}

// Sets TEST1IID: does this root move take part in the pass of SCAN1 and SCANT?
void admite_na_varredura(const Lance& lance);

// init_tabuleiro2: prepares a root move of `cor` from (x1, y1) to (x2, y2) for its rating:
// TEST1IID, MATRIZ and incentiva_promo, tab2 with the move made, and the attack tables of tab2.
template <Cor cor>
void init_tabuleiro2(int x1, int y1, int x2, int y2);

extern template void init_tabuleiro2<Cor::b>(int, int, int, int);
extern template void init_tabuleiro2<Cor::p>(int, int, int, int);

}  // namespace korvu
