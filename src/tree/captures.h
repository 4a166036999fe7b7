// The loops of captures and promotions, plies 2 to 23.
#pragma once

#include "tree/try_move.h"

namespace korvu {

// A pawn about to promote is left to analisepositive_peao where that loop exists.
template <int N, Cor cor>
constexpr bool peao_ja_promoveu(int y) {
  return cronograma[N].promocoes && y == Lado<cor>::fila(6);
}

// gerador_b_deepN and, with L = geradortest, geradortest_b_deepN: every capture by `cor` of the
// enemy man on (x, y), found from the target outward. Diagonals on which a pawn takes come first.
template <int N, Cor cor, Laco L = Laco::gerador>
void gerador(int x, int y) {
  static_assert(de_capturas(L));
  using T = Lado<cor>;
  constexpr int f = T::frente;
  constexpr std::array<Passo, 4> diagonais = {{{+1, -f}, {-1, -f}, {+1, +f}, {-1, +f}}};
  const Tabuleiro& t = tabd[N];
  const auto toma = [&](int i, int j, Passo d, bool do_peao, std::uint8_t oficial) {
    const std::uint8_t q = t[casa(i, j)];
    const bool vizinho = i == x + d.dx && j == y + d.dy;
    const bool pode = q == T::dama || q == oficial || (q == T::rei && vizinho) ||
                      (q == T::peao && vizinho && do_peao && !peao_ja_promoveu<N, cor>(j));
    return pode && tenta<N, cor, L>(i, j, x, y);
  };
  for (const Passo& d : diagonais)
    if (anda(t, x, y, d, [&](int i, int j) { return toma(i, j, d, d.dy == -f, T::bispo); })) return;
  for (const Passo& d : raios_da_torre)
    if (anda(t, x, y, d, [&](int i, int j) { return toma(i, j, d, false, T::torre); })) return;
  for (const Passo& d : saltos_do_cavalo) {
    const int i = x + d.dx, j = y + d.dy;
    if (dentro(i, j) && t[casa(i, j)] == T::cavalo && tenta<N, cor, L>(i, j, x, y)) return;
  }
}

// analisepositive_peao_b_deepN: the promotions of the pawn of `cor` on (x, y), captures first; does
// nothing unless the pawn is one step from promotion.
template <int N, Cor cor>
void analisepositive_peao(int x, int y) {
  using T = Lado<cor>;
  const Tabuleiro& t = tabd[N];
  if (y != T::fila(6)) return;
  for (const int i : {x + 1, x - 1}) {
    if (!dentro(i, T::fila(7))) continue;
    const std::uint8_t vitima = t[casa(i, T::fila(7))];
    if (T::inimiga(vitima) && vitima != Lado<T::outro>::rei &&
        tenta<N, cor, Laco::positive>(x, y, i, T::fila(7)))
      return;
  }
  if (t[casa(x, T::fila(7))] == vazia) tenta<N, cor, Laco::positive>(x, y, x, T::fila(7));
}

}  // namespace korvu
