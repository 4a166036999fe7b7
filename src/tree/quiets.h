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
template <Laco L, int N, Cor cor>
void livre_do_peao(const NoAberto<N, cor>& no, int x, int y) {
  using T = Lado<cor>;
  const Tabuleiro& t = tabd[N];
  if (y == T::fila(4))
    for (const int i : {x + 1, x - 1})
      if (dentro(i, T::fila(5)) && t[casa(i, T::fila(5))] == vazia &&
          duplo<T::outro>(duplos_D[N])[static_cast<std::size_t>(i)] &&
          tenta<L>(no, x, y, i, T::fila(5)))
        return;
  if (y == T::fila(1) && t[casa(x, T::fila(2))] == vazia && t[casa(x, T::fila(3))] == vazia &&
      tenta<L>(no, x, y, x, T::fila(3)))
    return;
  if (cronograma[N].promocoes && y == T::fila(6)) return;
  if (dentro(x, y + T::frente) && t[casa(x, y + T::frente)] == vazia)
    tenta<L>(no, x, y, x, y + T::frente);
}

// One castling of the king on (x, y); true on a cut. A king that is not attacked clears
// XEQUE_MATE[N]: without a legal move that is stalemate, not mate.
template <Laco L, Ala ala, int N, Cor cor>
bool tenta_roque(const NoAberto<N, cor>& no, int x, int y) {
  constexpr int alvo = ala == Ala::torre_h ? 6 : 2;
  constexpr int fila = Lado<cor>::fila(0);
  XM = atacada<cor>(no.homens, static_cast<int>(casa(x, y)));
  if (XM) return false;
  XEQUE_MATE[N] = 0;
  if (!roque_livre<N, cor, ala>() || !cabe_no_laco<N, L>(4, fila, alvo, fila)) return false;
  verifica_roque<N, cor, ala>();
  if (R) return false;
  ++nodes;
  roque<cor>() = valor_do_roque_em(N);
  filho<N, cor>(4, fila, alvo, fila);
  roque<cor>() = 0;
  return julga<N, L>(no.limite, 4, fila, alvo, fila);
}

// The moves of a rook, bishop or queen on s to empty squares, direction by direction.
template <Laco L, Peca p, int N, Cor cor>
void livre_em_linha(const NoAberto<N, cor>& no, int s) {
  constexpr int de = p == Peca::bispo ? 4 : 0, ate = p == Peca::torre ? 3 : 7;
  cada_direcao<de, ate>([&]<int d>() {
    const int ultima = fim_do_raio<d>(no.homens.ocupadas, s);
    const int livres =
        passos_ate<d>(s, ultima) - static_cast<int>(no.homens.ocupadas >> ultima & 1);
    for (int k = 0; k < livres; ++k) {
      const int alvo = raio(d, s).lista[static_cast<std::size_t>(k)];
      if (tenta<L>(no, coluna_de(s), fila_de(s), coluna_de(alvo), fila_de(alvo))) return true;
    }
    return false;
  });
}

// analiselivre_torre_b_deepN and its kin, with `teste` the analiselivretest members: the moves to
// empty squares of the man of kind p and colour `cor` on (x, y).
template <Peca p, bool teste = false, int N, Cor cor>
void analiselivre(const NoAberto<N, cor>& no, int x, int y) {
  constexpr Laco L = laco_livre<p, teste>;
  if constexpr (p == Peca::peao) {
    livre_do_peao<L>(no, x, y);
  } else if constexpr (p == Peca::cavalo || p == Peca::rei) {
    if constexpr (p == Peca::rei)
      if (tenta_roque<L, Ala::torre_h>(no, x, y) || tenta_roque<L, Ala::torre_a>(no, x, y)) return;
    for (const Passo d : p == Peca::cavalo ? saltos_do_cavalo : passos_do_rei)
      if (dentro(x + d.dx, y + d.dy) && tabd[N][casa(x + d.dx, y + d.dy)] == vazia &&
          tenta<L>(no, x, y, x + d.dx, y + d.dy))
        return;
  } else {
    livre_em_linha<L, p>(no, static_cast<int>(casa(x, y)));
  }
}

}  // namespace korvu
