// The replies of ply 1. Quiet moves come from the tree's loops; captures have loops of their own,
// which look from the taker to the victim and run class by class.
#pragma once

#include "tree/phases.h"

namespace korvu {

// analisepositive1_torre_b_deep1 and its kin: the captures by the man of kind p on (x, y) of a man
// that vitima(code) accepts. With L = geradortest, analisepositivetest_...: the stored capture
// alone.
template <Peca p, Laco L, Cor cor, class F>
void capturas_da_primeira(const NoAberto<1, cor>& no, int x, int y, F vitima) {
  const Tabuleiro& t = tabd[1];
  const auto toma = [&](int i, int j) {
    return dentro(i, j) && vitima(t[casa(i, j)]) && tenta<L>(no, x, y, i, j);
  };
  if constexpr (p == Peca::peao)
    static_cast<void>(toma(x + 1, y + Lado<cor>::frente) || toma(x - 1, y + Lado<cor>::frente));
  else
    alvos<p>(t, x, y, toma);
}

template <Cor cor>
void captura_guardada_da_primeira(const NoAberto<1, cor>& no) {
  using Inimigo = Lado<outra(cor)>;
  const Lance g = guardado_g[1];
  if (g.aa == -1) return;
  const auto tomavel = [](std::uint8_t q) { return Lado<cor>::inimiga(q) && q != Inimigo::rei; };
  com_a_peca<cor>(tabd[1][casa(g.aa, g.bb)], [&]<Peca p>() {
    capturas_da_primeira<p, Laco::geradortest>(no, g.aa, g.bb, tomavel);
  });
}

// All replies of `cor` at ply 1 until the node is cut: stored capture, captures by class (queens,
// rooks, knights, bishops, pawns), stored quiet move, quiet moves. None at all when beta1 starts at
// or below alfa0.
template <Cor cor>
void fases_da_primeira() {
  using Vitima = Lado<outra(cor)>;
  if (!(beta1 > alfa0)) return;
  const NoAberto<1, cor> no;
  captura_guardada_da_primeira(no);
  if (corte<1>()) return;
  for (const std::uint8_t vitima :
       {Vitima::dama, Vitima::torre, Vitima::cavalo, Vitima::bispo, Vitima::peao}) {
    const bool cortado = cada_peca([&]<Peca p>() {
      return em_cada<1>(no.homens.template de<cor>(p), [&](int x, int y) {
        capturas_da_primeira<p, Laco::gerador>(no, x, y,
                                               [&](std::uint8_t q) { return q == vitima; });
      });
    });
    if (cortado) return;
  }
  fase_do_lance_guardado(no);
  if (corte<1>()) return;
  cada_peca([&]<Peca p>() { return fase_livre<p>(no); });
}

}  // namespace korvu
