// The loops of quiet moves, plies 1 to 23. Castling and captures in passing stand here too.
#pragma once

#include "tree/try_move.h"

namespace korvu {

template <Peca p, bool teste>
constexpr Laco laco_livre = !teste            ? Laco::livre
                            : p == Peca::peao ? Laco::livretest_peao
                                              : Laco::livretest;

// Captures in passing, then the pushes, the double step first. A push that promotes is left to
// analisepositive_peao where that loop exists.
template <int N, Cor cor, Laco L>
void livre_do_peao(int x, int y) {
  using T = Lado<cor>;
  const Tabuleiro& t = tabd[N];
  if (y == T::fila(4))
    for (const int i : {x + 1, x - 1})
      if (dentro(i, T::fila(5)) && t[casa(i, T::fila(5))] == vazia &&
          duplo<T::outro>(duplos_D[N])[static_cast<std::size_t>(i)] &&
          tenta<N, cor, L>(x, y, i, T::fila(5)))
        return;
  if (y == T::fila(1) && t[casa(x, T::fila(2))] == vazia && t[casa(x, T::fila(3))] == vazia &&
      tenta<N, cor, L>(x, y, x, T::fila(3)))
    return;
  if (cronograma[N].promocoes && y == T::fila(6)) return;
  if (dentro(x, y + T::frente) && t[casa(x, y + T::frente)] == vazia)
    tenta<N, cor, L>(x, y, x, y + T::frente);
}

// One castling of the king on (x, y); true on a cut. A king that is not attacked clears
// XEQUE_MATE[N]: without a legal move that is stalemate, not mate.
template <int N, Cor cor, Laco L, Ala ala>
bool tenta_roque(int x, int y) {
  constexpr int alvo = ala == Ala::torre_h ? 6 : 2;
  constexpr int fila = Lado<cor>::fila(0);
  verifica_xequemate<N, cor>(x, y);
  if (XM) return false;
  XEQUE_MATE[N] = 0;
  if (!roque_livre<N, cor, ala>() || !cabe_no_laco<N, L>(4, fila, alvo, fila)) return false;
  verifica_roque<N, cor, ala>();
  if (R) return false;
  ++nodes;
  roque<cor>() = valor_do_roque_em(N);
  filho<N, cor>(4, fila, alvo, fila);
  roque<cor>() = 0;
  return julga<N, L>(4, fila, alvo, fila);
}

// analiselivre_torre_b_deepN and its kin, with `teste` the analiselivretest members: the moves to
// empty squares of the man of kind p and colour `cor` on (x, y).
template <int N, Cor cor, Peca p, bool teste = false>
void analiselivre(int x, int y) {
  constexpr Laco L = laco_livre<p, teste>;
  if constexpr (p == Peca::peao) {
    livre_do_peao<N, cor, L>(x, y);
  } else {
    if constexpr (p == Peca::rei)
      if (tenta_roque<N, cor, L, Ala::torre_h>(x, y) || tenta_roque<N, cor, L, Ala::torre_a>(x, y))
        return;
    alvos<p>(tabd[N], x, y, [&](int i, int j) {
      return tabd[N][casa(i, j)] == vazia && tenta<N, cor, L>(x, y, i, j);
    });
  }
}

}  // namespace korvu
