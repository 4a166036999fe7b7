// The words every room speaks: colours, pieces, squares and boards.
#pragma once

#include <array>
#include <cstdint>

namespace korvu {

// b = brancas (White), p = pretas (Black). The letter ends the name of everything that comes in
// two colours.
enum class Cor : int { b, p };

constexpr Cor outra(Cor c) {
  return c == Cor::b ? Cor::p : Cor::b;
}

enum class Peca : int { peao, cavalo, bispo, torre, dama, rei };

inline constexpr std::array<Peca, 6> todas_as_pecas = {Peca::peao,  Peca::cavalo, Peca::bispo,
                                                       Peca::torre, Peca::dama,   Peca::rei};

// Score units (tenths of a pawn), by Peca. A square holds the value itself, so that a capture is
// valued by reading the square; code and value are one number.
inline constexpr std::array<int, 6> valor_da_peca = {10, 32, 33, 50, 90, 110};

constexpr int valor_de(Peca p) {
  return valor_da_peca[static_cast<std::size_t>(p)];
}

// 64 bytes, index 8 * file + rank: a1 is 0, a8 is 7, h1 is 56. Black's codes are the negated values
// as two's-complement bytes, 0 is an empty square.
using Tabuleiro = std::array<std::uint8_t, 64>;

inline constexpr std::uint8_t vazia = 0;

// x is the file, y the rank, both 0 to 7.
constexpr std::size_t casa(int x, int y) {
  return static_cast<std::size_t>(8 * x + y);
}

constexpr bool dentro(int x, int y) {
  return static_cast<unsigned>(x) < 8 && static_cast<unsigned>(y) < 8;
}

// The content of a square as a signed number: positive for White.
constexpr int com_sinal(std::uint8_t codigo) {
  return static_cast<std::int8_t>(codigo);
}

constexpr std::uint8_t codigo_de(Peca p, Cor c) {
  return static_cast<std::uint8_t>(c == Cor::b ? valor_de(p) : -valor_de(p));
}

// All geometry that depends on the colour. Code that takes a colour reads as if written for White:
// `frente` is towards promotion, `fila(r)` the rank index of the side's own r-th rank from 0.
template <Cor c>
struct Lado {
  static constexpr bool branco = c == Cor::b;
  static constexpr Cor outro = outra(c);
  static constexpr int sinal = branco ? 1 : -1;
  static constexpr int frente = sinal;

  static constexpr std::uint8_t peao = codigo_de(Peca::peao, c);
  static constexpr std::uint8_t cavalo = codigo_de(Peca::cavalo, c);
  static constexpr std::uint8_t bispo = codigo_de(Peca::bispo, c);
  static constexpr std::uint8_t torre = codigo_de(Peca::torre, c);
  static constexpr std::uint8_t dama = codigo_de(Peca::dama, c);
  static constexpr std::uint8_t rei = codigo_de(Peca::rei, c);

  static constexpr int fila(int r) { return branco ? r : 7 - r; }
  // The square of file x on the first rank: primeira(0) is a1 for White, a8 for Black.
  static constexpr std::size_t primeira(int x) { return casa(x, fila(0)); }

  // The code seen from this side: own men positive, enemy men negative.
  static constexpr int visto(std::uint8_t codigo) { return sinal * com_sinal(codigo); }
  static constexpr bool propria(std::uint8_t codigo) { return visto(codigo) > 0; }
  static constexpr bool inimiga(std::uint8_t codigo) { return visto(codigo) < 0; }
};

// A run-time colour becomes a compile-time one here, once, at the outermost call.
template <class F>
decltype(auto) por_cor(bool branco, F f) {
  return branco ? f.template operator()<Cor::b>() : f.template operator()<Cor::p>();
}

// Calls f<p>() for each kind of man from pawn to king until it gives true, and then gives true.
template <class F>
constexpr bool cada_peca(F f) {
  return f.template operator()<Peca::peao>() || f.template operator()<Peca::cavalo>() ||
         f.template operator()<Peca::bispo>() || f.template operator()<Peca::torre>() ||
         f.template operator()<Peca::dama>() || f.template operator()<Peca::rei>();
}

// Calls f<p>() for the kind of the man of `cor` with this code; does nothing for any other code.
template <Cor cor, class F>
constexpr void com_a_peca(std::uint8_t codigo, F f) {
  cada_peca([&]<Peca p>() {
    if (codigo != codigo_de(p, cor)) return false;
    f.template operator()<p>();
    return true;
  });
}

// A step on the board.
struct Passo {
  int dx, dy;
};

// Orders of generation. They decide which of two equal moves stays best.
inline constexpr std::array<Passo, 4> raios_da_torre = {{{+1, 0}, {-1, 0}, {0, +1}, {0, -1}}};
inline constexpr std::array<Passo, 4> raios_do_bispo = {{{+1, +1}, {+1, -1}, {-1, -1}, {-1, +1}}};
inline constexpr std::array<Passo, 8> saltos_do_cavalo = {
    {{+2, +1}, {+2, -1}, {-2, -1}, {-2, +1}, {-1, +2}, {+1, +2}, {+1, -2}, {-1, -2}}};
inline constexpr std::array<Passo, 8> passos_do_rei = {
    {{+1, 0}, {-1, 0}, {0, +1}, {0, -1}, {-1, -1}, {+1, +1}, {-1, +1}, {+1, -1}}};

// Calls f(x, y, square) for every square of the board, file by file; the scan ends at once when f
// gives true.
template <class F>
constexpr bool percorre_tabuleiro(F f) {
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y)
      if (f(x, y, casa(x, y))) return true;
  return false;
}

// Walks from the neighbour of (x, y) to the first man or the edge and calls f(x, y) on every square
// reached, the man's own included; ends when f gives true, and then gives true.
template <class F>
constexpr bool anda(const Tabuleiro& t, int x, int y, Passo d, F f) {
  for (int i = x + d.dx, j = y + d.dy; dentro(i, j); i += d.dx, j += d.dy) {
    if (f(i, j)) return true;
    if (t[casa(i, j)] != vazia) break;
  }
  return false;
}

// Every square that an officer or king of kind p reaches from (x, y), in the order of generation.
// Ends when f(x, y) gives true, and then gives true. Pawns have loops of their own.
template <Peca p, class F>
constexpr bool alvos(const Tabuleiro& t, int x, int y, F f) {
  static_assert(p != Peca::peao, "a pawn's moves depend on its colour");
  constexpr bool anda_reto = p == Peca::torre || p == Peca::dama;
  constexpr bool anda_diagonal = p == Peca::bispo || p == Peca::dama;
  if constexpr (anda_reto)
    for (Passo d : raios_da_torre)
      if (anda(t, x, y, d, f)) return true;
  if constexpr (anda_diagonal)
    for (Passo d : raios_do_bispo)
      if (anda(t, x, y, d, f)) return true;
  if constexpr (!anda_reto && !anda_diagonal)
    for (Passo d : p == Peca::cavalo ? saltos_do_cavalo : passos_do_rei)
      if (dentro(x + d.dx, y + d.dy) && f(x + d.dx, y + d.dy)) return true;
  return false;
}

}  // namespace korvu
