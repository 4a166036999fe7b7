// Making a move on a board: the part that trial moves, nodes and the game share.
#pragma once

#include "board/state.h"

namespace korvu {

// A king's move of two files from its own square takes the rook along.
template <Cor cor>
constexpr void leva_a_torre(Tabuleiro& t, int x1, int y1, int x2) {
  using L = Lado<cor>;
  if (x1 != 4 || y1 != L::fila(0)) return;
  if (x2 == 2) {
    t[L::primeira(3)] = L::torre;
    t[L::primeira(0)] = vazia;
  } else if (x2 == 6) {
    t[L::primeira(5)] = L::torre;
    t[L::primeira(7)] = vazia;
  }
}

// A pawn of `cor` that reaches its sixth rank on a file where the enemy has just made a double step
// takes in passing. Does the man with this code, arriving on (x2, y2)?
template <Cor cor>
constexpr bool de_passagem(std::uint8_t codigo, const Duplos& f, int x2, int y2) {
  using L = Lado<cor>;
  return codigo == L::peao && y2 == L::fila(5) &&
         duplo<L::outro>(f)[static_cast<std::size_t>(x2)] != 0;
}

// Makes such a capture. True when it did; the pieces then stand as after it.
template <Cor cor>
constexpr bool toma_de_passagem(Tabuleiro& t, const Duplos& f, int x1, int y1, int x2, int y2) {
  using L = Lado<cor>;
  if (!de_passagem<cor>(t[casa(x1, y1)], f, x2, y2)) return false;
  t[casa(x1, y1)] = vazia;
  t[casa(x2, L::fila(4))] = vazia;
  t[casa(x2, y2)] = L::peao;
  return true;
}

constexpr void transfere(Tabuleiro& t, int x1, int y1, int x2, int y2) {
  t[casa(x2, y2)] = t[casa(x1, y1)];
  t[casa(x1, y1)] = vazia;
}

// Moves the men of a move of `cor` on t; f are the double steps before it. Every promotion is to a
// queen. The move is trusted.
template <Cor cor>
constexpr void move_as_pecas(Tabuleiro& t, const Duplos& f, int x1, int y1, int x2, int y2) {
  using L = Lado<cor>;
  if (t[casa(x1, y1)] == L::rei) leva_a_torre<cor>(t, x1, y1, x2);
  if (!toma_de_passagem<cor>(t, f, x1, y1, x2, y2)) transfere(t, x1, y1, x2, y2);
  if (y2 == L::fila(7) && t[casa(x2, y2)] == L::peao) t[casa(x2, y2)] = L::dama;
}

// The castling bytes after a man of `cor` with this code has left file x1.
template <Cor cor>
constexpr void marca_movidos(Movidos& m, std::uint8_t codigo, int x1) {
  using L = Lado<cor>;
  if (codigo == L::rei) rei_moveu<cor>(m) = 1;
  if (codigo == L::torre && x1 == 0) torre_a_moveu<cor>(m) = 1;
  if (codigo == L::torre && x1 == 7) torre_h_moveu<cor>(m) = 1;
}

// The en-passant bytes after the move: older ones go, a double step of a pawn of `cor` sets its
// own.
template <Cor cor>
constexpr void marca_duplo(Duplos& f, std::uint8_t codigo, int x1, int y1, int y2) {
  using L = Lado<cor>;
  f = {};
  if (codigo == L::peao && y1 == L::fila(1) && y2 == L::fila(3))
    duplo<cor>(f)[static_cast<std::size_t>(x1)] = 1;
}

// init_tabuleiroN: makes a move of `cor` on tabd[N] in place and brings the flags of ply N up to
// date. The node has copied an earlier ply into the slots of ply N before. Sets X_D[N].
template <int N, Cor cor>
void init_tabuleiro_deep(int x1, int y1, int x2, int y2) {
  const std::uint8_t codigo = tabd[N][casa(x1, y1)];
  marca_movidos<cor>(jm_D[N], codigo, x1);
  move_as_pecas<cor>(tabd[N], duplos_D[N], x1, y1, x2, y2);
  marca_duplo<cor>(duplos_D[N], codigo, x1, y1, y2);
  X_D[N] = 1;
}

// init_tabuleiro2_deepN: tab2 becomes tabd[N] with a move of `cor` made. No flag is written; the
// legality test that follows reads tab2.
template <int N, Cor cor>
void init_tabuleiro2_deep(int x1, int y1, int x2, int y2) {
  tab2 = tabd[N];
  move_as_pecas<cor>(tab2, duplos_D[N], x1, y1, x2, y2);
}

// Copies board, castling bytes and en-passant bytes of ply `De` to ply `Para`.
template <int Para, int De>
void copia_posicao() {
  tabd[Para] = tabd[De];
  jm_D[Para] = jm_D[De];
  duplos_D[Para] = duplos_D[De];
}

// promocao and ppassado of a move of `cor` still unplayed on tabd[N].
template <int N, Cor cor>
void mede_peao(int x1, int y1, int x2, int y2) {
  using L = Lado<cor>;
  const bool peao = tabd[N][casa(x1, y1)] == L::peao;
  const bool na_penultima = y1 == L::fila(6), de_lado = x1 != x2;
  const bool sem_vitima = tabd[N][casa(x2, y2)] == vazia;
  promocao = (peao & na_penultima) * 80;
  ppassado = (peao & de_lado & sem_vitima) * 10;
}

// The totals after the first ply start this much lower, which only their quotient notices.
inline constexpr float desconto_da_raiz = 100;

// Total of `cor` after ply N; for N = 0 the root's, less the discount.
template <int N, Cor cor>
float total_em() {
  if constexpr (N == 0)
    return material_da_raiz<cor>() - desconto_da_raiz;
  else
    return material<cor>(N);
}

struct Totais {
  float proprio, outro;  // of the mover, of the other side
};

// The totals after a move of `cor` still unplayed on tabd[N]; reads promocao and ppassado. A
// capture in passing adds to the taker and leaves the victim's total alone: the difference comes
// out right, and only the quotient of the totals notices.
template <int N, Cor cor>
Totais totais_apos(int x2, int y2) {
  return {total_em<N, cor>() + static_cast<float>(promocao + ppassado),
          total_em<N, outra(cor)>() + static_cast<float>(Lado<cor>::visto(tabd[N][casa(x2, y2)]))};
}

}  // namespace korvu
