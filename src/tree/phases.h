// The order in which a node tries its moves.
#pragma once

#include "tree/captures.h"
#include "tree/quiets.h"

namespace korvu {

// Calls loop(x, y) for every square of tabd[N] with this code, file by file, until the node is cut.
// True when it is.
template <int N, class F>
bool em_cada(std::uint8_t codigo, F loop) {
  return percorre_tabuleiro([&](int x, int y, std::size_t s) {
    if (tabd[N][s] != codigo) return false;
    loop(x, y);
    return corte<N>() != 0;
  });
}

template <int N, Cor cor>
void fase_da_captura_guardada() {
  using T = Lado<cor>;
  Lance& g = guardado_g[N];
  if constexpr (cronograma[N].esquece)
    if (deep == N + 1) g.aa = -1;
  if (g.aa == -1) return;
  const std::uint8_t vitima = tabd[N][casa(g.aa, g.bb)];
  if (T::inimiga(vitima) && vitima != Lado<T::outro>::rei && T::propria(tabd[N][casa(g.cc, g.dd)]))
    gerador<N, cor, Laco::geradortest>(g.aa, g.bb);
}

// The stored quiet move, by the loop of the man that stands on its from-square now.
template <int N, Cor cor>
void fase_do_lance_guardado() {
  using T = Lado<cor>;
  const Lance& g = guardado[N];
  if (g.aa == -1) return;
  switch (tabd[N][casa(g.aa, g.bb)]) {
    case T::peao:
      analiselivre<N, cor, Peca::peao, true>(g.aa, g.bb);
      break;
    case T::cavalo:
      analiselivre<N, cor, Peca::cavalo, true>(g.aa, g.bb);
      break;
    case T::bispo:
      analiselivre<N, cor, Peca::bispo, true>(g.aa, g.bb);
      break;
    case T::torre:
      analiselivre<N, cor, Peca::torre, true>(g.aa, g.bb);
      break;
    case T::dama:
      analiselivre<N, cor, Peca::dama, true>(g.aa, g.bb);
      break;
    case T::rei:
      analiselivre<N, cor, Peca::rei, true>(g.aa, g.bb);
      break;
    default:
      break;
  }
}

// Pawns within a file from the most advanced down; ranks 1 to 6 only.
template <int N, Cor cor>
bool fase_dos_peoes() {
  using T = Lado<cor>;
  for (int x = 0; x < 8; ++x)
    for (int r = 6; r >= 1; --r)
      if (tabd[N][casa(x, T::fila(r))] == T::peao) {
        analiselivre<N, cor, Peca::peao>(x, T::fila(r));
        if (corte<N>()) return true;
      }
  return false;
}

template <int N, Cor cor, Peca p>
bool fase_livre() {
  return em_cada<N>(codigo_de(p, cor), [](int x, int y) { analiselivre<N, cor, p>(x, y); });
}

// All moves of `cor` at ply N (2 to 23), until the cut flag of the node is set: stored capture,
// promotions, captures by the victim (knights before bishops, unlike their values), stored quiet
// move, quiet moves by piece.
template <int N, Cor cor>
void fases() {
  using Vitima = Lado<outra(cor)>;
  fase_da_captura_guardada<N, cor>();
  if (corte<N>()) return;
  if constexpr (cronograma[N].promocoes)
    if (em_cada<N>(Lado<cor>::peao, analisepositive_peao<N, cor>)) return;
  for (const std::uint8_t vitima :
       {Vitima::dama, Vitima::torre, Vitima::cavalo, Vitima::bispo, Vitima::peao})
    if (em_cada<N>(vitima, gerador<N, cor>)) return;
  fase_do_lance_guardado<N, cor>();
  if (corte<N>()) return;
  if (fase_dos_peoes<N, cor>()) return;
  if (fase_livre<N, cor, Peca::cavalo>()) return;
  if (fase_livre<N, cor, Peca::bispo>()) return;
  if (fase_livre<N, cor, Peca::torre>()) return;
  if (fase_livre<N, cor, Peca::dama>()) return;
  fase_livre<N, cor, Peca::rei>();
}

// The null move of the first ply runs the loops of ply 2 by itself.
extern template void fases<2, Cor::b>();
extern template void fases<2, Cor::p>();

}  // namespace korvu
