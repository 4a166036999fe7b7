// What is derived from the position once, outside the tree: the board part of a game move, the
// tables around kings and pawns, and the attack tables of a root move.
#pragma once

#include "board/state.h"
#include "board/tables.h"

namespace korvu {

// Around each king of tab, and around each colour's most advanced pawn (all 0 without pawns).
inline TabelaInt Xr_b{}, Xr_p{}, XP_b{}, XP_p{};

// Men of each kind that attack a square of tab2, by Peca; N_A: all of the colour.
struct Ataques {
  std::array<TabelaInt, 6> por_peca{};
  TabelaInt N_A{};
};
inline Ataques ataca_b{}, ataca_p{};

inline int MATRIZ = 0;                    // square value of the root move
inline std::uint8_t incentiva_promo = 0;  // MATRIZ is to be scaled: a pawn move late in the game

template <Cor cor>
TabelaInt& Xr() {
  return cor == Cor::b ? Xr_b : Xr_p;
}
template <Cor cor>
TabelaInt& XP() {
  return cor == Cor::b ? XP_b : XP_p;
}
template <Cor cor>
Ataques& ataca() {
  return cor == Cor::b ? ataca_b : ataca_p;
}

// Plays a, b, c, d on tab with all flags of the game: steps of the pieces, castling by the two-file
// king's move or, with CHESS_960, by the king onto its own rook, capture in passing, promotion by
// PRs and PRe (sets PR when the engine's own promotion is played). The man on the from-square
// decides whose move it is; the move is trusted.
void joga_no_tabuleiro();

// King squares, Xr_b, Xr_p (by the totals as they still stand), XP_b, XP_p, then the counters of
// men and material, materialflot0 by joga_com_b.
void analisa_tabuleiro();

// Sets TEST1IID: does this root move take part in the pass of SCAN1 and SCANT?
void admite_na_varredura(const Lance& lance);

// init_tabuleiro2: prepares a root move of `cor` from (x1, y1) to (x2, y2) for its rating:
// TEST1IID, MATRIZ and incentiva_promo, tab2 with the move made, and the attack tables of tab2.
template <Cor cor>
void init_tabuleiro2(int x1, int y1, int x2, int y2);

extern template void init_tabuleiro2<Cor::b>(int, int, int, int);
extern template void init_tabuleiro2<Cor::p>(int, int, int, int);

}  // namespace korvu
