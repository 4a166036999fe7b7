// The order in which a node tries its moves.
#pragma once

#include "tree/captures.h"
#include "tree/quiets.h"

namespace korvu {

// Calls loop(x, y) for every square of the set, file by file, until the node at ply N is cut. True
// when it is.
template <int N, class F>
bool em_cada(Bits casas, F loop) {
  return cada_casa(casas, [&](int s) {
    loop(coluna_de(s), fila_de(s));
    return corte<N>() != 0;
  });
}

template <int N, Cor cor>
void fase_da_captura_guardada(const NoAberto<N, cor>& no) {
  using T = Lado<cor>;
  Lance& g = guardado_g[N];
  if constexpr (cronograma[N].esquece)
    if (deep == N + 1) g.aa = -1;
  if (g.aa == -1) return;
  const std::uint8_t vitima = tabd[N][casa(g.aa, g.bb)];
  if (T::inimiga(vitima) && vitima != Lado<T::outro>::rei && T::propria(tabd[N][casa(g.cc, g.dd)]))
    gerador<Laco::geradortest>(no, g.aa, g.bb);
}

// The stored quiet move, by the loop of the man that stands on its from-square now.
template <int N, Cor cor>
void fase_do_lance_guardado(const NoAberto<N, cor>& no) {
  const Lance& g = guardado[N];
  if (g.aa == -1) return;
  com_a_peca<cor>(tabd[N][casa(g.aa, g.bb)],
                  [&]<Peca p>() { analiselivre<p, true>(no, g.aa, g.bb); });
}

// Pawns within a file from the most advanced down; ranks 1 to 6 only.
template <int N, Cor cor>
bool fase_dos_peoes(const NoAberto<N, cor>& no) {
  constexpr Bits filas = 0x7e;
  const Bits peoes = no.homens.template de<cor>(Peca::peao);
  for (int x = 0; x < 8; ++x)
    for (Bits b = peoes >> (8 * x) & filas; b != 0;) {
      const int y = cor == Cor::b ? ultima_de(b) : primeira_de(b);
      b &= ~bit(y);
      analiselivre<Peca::peao>(no, x, y);
      if (corte<N>()) return true;
    }
  return false;
}

template <Peca p, int N, Cor cor>
bool fase_livre(const NoAberto<N, cor>& no) {
  return em_cada<N>(no.homens.template de<cor>(p),
                    [&](int x, int y) { analiselivre<p>(no, x, y); });
}

// All moves of `cor` at ply N (2 to 23), until the cut flag of the node is set: stored capture,
// promotions, captures by the victim (knights before bishops, unlike their values), stored quiet
// move, quiet moves by piece.
template <int N, Cor cor>
void fases() {
  const NoAberto<N, cor> no;
  fase_da_captura_guardada(no);
  if (corte<N>()) return;
  if constexpr (cronograma[N].promocoes) {
    constexpr Bits penultima = Bits{0x0101010101010101} << Lado<cor>::fila(6);
    if (em_cada<N>(no.homens.template de<cor>(Peca::peao) & penultima,
                   [&](int x, int y) { analisepositive_peao(no, x, y); }))
      return;
  }
  const Bits atacadas = no.atacadas();
  for (const Peca vitima : {Peca::dama, Peca::torre, Peca::cavalo, Peca::bispo, Peca::peao})
    if (em_cada<N>(no.homens.template de<outra(cor)>(vitima) & atacadas,
                   [&](int x, int y) { gerador(no, x, y); }))
      return;
  fase_do_lance_guardado(no);
  if (corte<N>()) return;
  if (fase_dos_peoes(no)) return;
  if (fase_livre<Peca::cavalo>(no)) return;
  if (fase_livre<Peca::bispo>(no)) return;
  if (fase_livre<Peca::torre>(no)) return;
  if (fase_livre<Peca::dama>(no)) return;
  fase_livre<Peca::rei>(no);
}

// The null move of the first ply runs the loops of ply 2 by itself.
extern template void fases<2, Cor::b>();
extern template void fases<2, Cor::p>();

}  // namespace korvu
