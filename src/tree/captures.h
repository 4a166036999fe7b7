// The loops of captures and promotions, plies 2 to 23.
#pragma once

#include "tree/try_move.h"

namespace korvu {

// The men of the mover that take on s, if nothing stands between. A pawn about to promote is left
// to analisepositive_peao where that loop exists.
template <int N, Cor cor>
Bits pretendentes(const NoAberto<N, cor>& no, int s) {
  using L = Lado<cor>;
  const auto i = static_cast<std::size_t>(s);
  const Bits damas = no.homens.template de<cor>(Peca::dama);
  Bits b = (diagonais_de[i] & (no.homens.template de<cor>(Peca::bispo) | damas)) |
           (retas_de[i] & (no.homens.template de<cor>(Peca::torre) | damas)) |
           (vizinhas_de[i] & no.homens.template de<cor>(Peca::rei)) |
           (saltos_de[i] & no.homens.template de<cor>(Peca::cavalo));
  if (!cronograma[N].promocoes || fila_de(s) != L::fila(7))
    b |= peao_ataca<L::outro>[i] & no.homens.template de<cor>(Peca::peao);
  return b;
}

// gerador_b_deepN and, with L = geradortest, geradortest_b_deepN: every capture by `cor` of the
// enemy man on (x, y), found from the target outward. Diagonals on which a pawn takes come first.
// geradortest tries the stored capture alone, whose victim stands on (x, y).
template <Laco L = Laco::gerador, int N, Cor cor>
void gerador(const NoAberto<N, cor>& no, int x, int y) {
  static_assert(de_capturas(L) && N > 1);
  const int s = static_cast<int>(casa(x, y));
  const Bits homens = pretendentes(no, s);
  if (homens == 0) return;
  const auto toma = [&](int de) { return tenta<L>(no, coluna_de(de), fila_de(de), x, y); };
  if constexpr (so_o_guardado(L)) {
    const Lance& g = lance_guardado<N, L>();
    const int de = static_cast<int>(casa(g.cc, g.dd));
    if ((bit(de) & homens) != 0 && (entre(s, de) & no.homens.ocupadas) == 0) toma(de);
    return;
  }
  const auto do_raio = [&]<int d>() {
    if ((raio(d, s).casas & homens) == 0) return false;
    const int de = fim_do_raio<d>(no.homens.ocupadas, s);
    return (bit(de) & homens) != 0 && toma(de);
  };
  if ((diagonais_de[static_cast<std::size_t>(s)] & homens) != 0) {
    // The two diagonals behind the target, seen from the mover's side, hold the pawns.
    constexpr bool b = cor == Cor::b;
    if (do_raio.template operator() < b             ? 5
        : 4 > () || do_raio.template operator() < b ? 6
        : 7 > () || do_raio.template operator() < b ? 4
        : 5 > () || do_raio.template operator() < b ? 7
                                                    : 6 > ())
      return;
  }
  if ((retas_de[static_cast<std::size_t>(s)] & homens) != 0 && cada_direcao<0, 3>(do_raio)) return;
  if ((saltos_de[static_cast<std::size_t>(s)] & homens) == 0) return;
  for (const Passo& d : saltos_do_cavalo) {
    const int i = x + d.dx, j = y + d.dy;
    if (dentro(i, j) && (bit(static_cast<int>(casa(i, j))) & homens) != 0 &&
        toma(static_cast<int>(casa(i, j))))
      return;
  }
}

// analisepositive_peao_b_deepN: the promotions of the pawn of `cor` on (x, y), captures first; does
// nothing unless the pawn is one step from promotion.
template <int N, Cor cor>
void analisepositive_peao(const NoAberto<N, cor>& no, int x, int y) {
  using T = Lado<cor>;
  const Tabuleiro& t = tabd[N];
  if (y != T::fila(6)) return;
  for (const int i : {x + 1, x - 1}) {
    if (!dentro(i, T::fila(7))) continue;
    const std::uint8_t vitima = t[casa(i, T::fila(7))];
    if (T::inimiga(vitima) && vitima != Lado<T::outro>::rei &&
        tenta<Laco::positive>(no, x, y, i, T::fila(7)))
      return;
  }
  if (t[casa(x, T::fila(7))] == vazia) tenta<Laco::positive>(no, x, y, x, T::fila(7));
}

}  // namespace korvu
