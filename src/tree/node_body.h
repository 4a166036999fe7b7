// The body of a node: leaf tests, the incoming move on the ply's own board, the replies, the end.
// Everything selective around it stands in node_search.h.
#pragma once

#include "tree/selective.h"

namespace korvu {

// The totals of ply `Destino` after a move of `cor` still unplayed on the board of ply `De`.
template <int Destino, int De, Cor cor>
void atualiza_material(int x2, int y2) {
  const Totais t = totais_apos<De, cor>(x2, y2);
  material<cor>(Destino) = t.proprio;
  material<outra(cor)>(Destino) = t.outro;
}

// Makes a move of `cor`, unplayed on the board of ply `De`, on the board of ply `Destino`, and
// readies that ply for its loops.
template <int Destino, int De, Cor cor>
void monta_no(int x1, int y1, int x2, int y2) {
  copia_posicao<Destino, De>();
  init_tabuleiro_deep<Destino, cor>(x1, y1, x2, y2);
  XEQUE_MATE[Destino] = 1;
  corte<Destino>() = 0;
}

// No reply was found and no child began its moves: mate, or stalemate when the king's loop found
// the king safe.
template <int N>
void sem_resposta() {
  if (!X_D[N] || nd != N) return;
  constexpr float mate = par(N) ? -valor_do_mate(N) : valor_do_mate(N);
  valor<N>() = XEQUE_MATE[N] ? mate : static_cast<float>(emp);
}

// The node at ply N (2 to 24) after a move of `cor`, without the reductions. `deep` is put back.
template <int N, Cor cor>
void corpo(int x1, int y1, int x2, int y2) {
  mede_peao<N - 1, cor>(x1, y1, x2, y2);
  if (fim_da_linha<N, cor>(x1, y1, x2, y2)) {
    avalia_folha<N, cor>(x2, y2);
    return;
  }
  if constexpr (N <= ultimo_lance) {
    if (deep < N) return;
    const Repoe<int> repoe(deep);
    valor<N>() = valor_inicial<N>;
    atualiza_material<N, N - 1, cor>(x2, y2);
    if constexpr (!par(N))
      if (decide_antes<N, cor>(x1, y1, x2, y2)) return;
    nd = N;
    monta_no<N, N - 1, cor>(x1, y1, x2, y2);
    fases<N, outra(cor)>();
    sem_resposta<N>();
  }
}

}  // namespace korvu
