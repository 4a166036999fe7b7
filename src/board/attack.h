// Is a king attacked? Every test looks at a board afresh and leaves its answer in a result byte.
#pragma once

#include "board/bits.h"
#include "board/state.h"
#include "board/types.h"
#include "board/wide.h"

namespace korvu {

// True when a man of the colour other than `cor` attacks square (x, y) of t. No side effects.
template <Cor cor>
bool atacada(const Tabuleiro& t, int x, int y);

// The same for the men of a board and a square of it, with the given squares in their way.
template <Cor cor>
bool atacada(const Homens& h, int s, Bits ocupadas);
template <Cor cor>
bool atacada(const Homens& h, int s) {
  return atacada<cor>(h, s, h.ocupadas);
}

// The men other than cor's that attack square s.
template <Cor cor>
Bits atacantes(const Homens& h, int s);

// All squares that men of `cor` attack, whatever stands there.
template <Cor cor>
Bits atacadas_por(const Homens& h);

// The men of a board, and by Cor the squares that each side attacks.
struct Dominio {
  Homens homens;
  std::array<Bits, 2> casas{};

  template <Cor cor>
  Bits por() const {
    return casas[static_cast<std::size_t>(cor)];
  }
};

// All of it with wide registers. Without them the men alone: what is attacked is then asked of them
// one by one, which is cheaper than to find it all.
#ifdef KORVU_WIDE_REGISTERS
Dominio dominio_ao_largo(const Tabuleiro& t);
inline Dominio dominio_ou_homens(const Tabuleiro& t) {
  return ve_ao_largo ? dominio_ao_largo(t) : Dominio{Homens(t)};
}
#else
inline Dominio dominio_ou_homens(const Tabuleiro& t) {
  return {Homens(t)};
}
#endif

// The test at every square of t that holds the king of `cor`; f(x, y) is called on each such square
// first. A board without that king gives false.
template <Cor cor, class F>
bool rei_atacado(const Tabuleiro& t, F f) {
  const Homens h(t);
  const Bits reis = h.de<cor>(Peca::rei);
  cada_casa(reis, [&f](int s) {
    f(coluna_de(s), fila_de(s));
    return false;
  });
  return cada_casa(reis, [&h](int s) { return atacada<cor>(h, s); });
}

// verifica_rei_b, verifica_rei_p: is the king of `cor` attacked on tab2? Writes Y and the colour's
// king square (p_x_Rb ... p_y_Rp), which the evaluation reads; without that king the square stays.
template <Cor cor>
void verifica_rei();

// verifica_xeque_b, verifica_xeque_p: does tab2, after a move of `cor`, attack the other king?
// Writes XEQUE alone.
template <Cor cor>
void verifica_xeque();

// verifica_xequemateb (N = 0, on tab) and verifica_xequematebdN (on tabd[N]) and their _p members:
// is a king of `cor` on (x, y) attacked? Writes XM alone.
template <int N, Cor cor>
void verifica_xequemate(int x, int y) {
  XM = atacada<cor>(tabd[N], x, y);
}

enum class Ala { torre_a, torre_h };  // castling to the a-side, to the h-side

// verifica_roque0..., verifica_roque8... on tabd[N]: is a castling of `cor` forbidden by an attack
// on the square the king crosses or reaches? Writes R and leaves the castled position in tab2. The
// caller has tested the rights, the rook and the empty squares.
template <int N, Cor cor, Ala ala>
void verifica_roque() {
  using L = Lado<cor>;
  constexpr int alvo = ala == Ala::torre_a ? 2 : 6;
  constexpr int passagem = ala == Ala::torre_a ? 3 : 5;
  constexpr int canto = ala == Ala::torre_a ? 0 : 7;
  tab2 = tabd[N];
  const bool atravessa = atacada<cor>(tab2, passagem, L::fila(0));
  tab2[L::primeira(passagem)] = L::torre;
  tab2[L::primeira(canto)] = vazia;
  tab2[L::primeira(alvo)] = L::rei;
  tab2[L::primeira(4)] = vazia;
  R = atravessa || atacada<cor>(tab2, alvo, L::fila(0));
}

// The castling may be tried: rook on its corner, king and rook unmoved, squares between
// empty. The king's own safety is the caller's test.
template <int N, Cor cor, Ala ala>
bool roque_livre() {
  using L = Lado<cor>;
  const Tabuleiro& t = tabd[N];
  Movidos& m = jm_D[N];
  if (rei_moveu<cor>(m)) return false;
  if constexpr (ala == Ala::torre_h)
    return t[L::primeira(7)] == L::torre && !torre_h_moveu<cor>(m) && t[L::primeira(5)] == vazia &&
           t[L::primeira(6)] == vazia;
  else
    return t[L::primeira(0)] == L::torre && !torre_a_moveu<cor>(m) && t[L::primeira(1)] == vazia &&
           t[L::primeira(2)] == vazia && t[L::primeira(3)] == vazia;
}

extern template bool atacada<Cor::b>(const Tabuleiro&, int, int);
extern template bool atacada<Cor::p>(const Tabuleiro&, int, int);
extern template bool atacada<Cor::b>(const Homens&, int, Bits);
extern template bool atacada<Cor::p>(const Homens&, int, Bits);
extern template Bits atacantes<Cor::b>(const Homens&, int);
extern template Bits atacantes<Cor::p>(const Homens&, int);
extern template Bits atacadas_por<Cor::b>(const Homens&);
extern template Bits atacadas_por<Cor::p>(const Homens&);
extern template void verifica_rei<Cor::b>();
extern template void verifica_rei<Cor::p>();
extern template void verifica_xeque<Cor::b>();
extern template void verifica_xeque<Cor::p>();

}  // namespace korvu
