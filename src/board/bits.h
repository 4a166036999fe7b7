// Sets of squares as 64-bit words: what the fast ways of the scans, loops and tests are made of.
#pragma once

#include <bit>
#include <cstdint>

#include "board/types.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace korvu {

// Bit 8 * file + rank. The order of the bits is that of every scan of a board, file by file.
using Bits = std::uint64_t;

constexpr Bits bit(int s) {
  return Bits{1} << s;
}
constexpr int primeira_de(Bits b) {
  return std::countr_zero(b);
}
constexpr int ultima_de(Bits b) {
  return 63 - std::countl_zero(b);
}

constexpr int coluna_de(int s) {
  return s >> 3;
}
constexpr int fila_de(int s) {
  return s & 7;
}

// Calls f(square) for each square of the set in the order of a scan; ends when f gives true, and
// then gives true.
template <class F>
constexpr bool cada_casa(Bits b, F f) {
  for (; b != 0; b &= b - 1)
    if (f(primeira_de(b))) return true;
  return false;
}

// A set of squares, each moved one rank forward; what leaves the board is gone.
template <Cor cor>
constexpr Bits um_adiante(Bits b) {
  constexpr Bits primeira_fila = 0x0101010101010101;
  return cor == Cor::b ? (b & ~(primeira_fila << 7)) << 1 : (b & ~primeira_fila) >> 1;
}

// Number of squares. Without the processor's instruction, which not every x86-64 has.
constexpr int quantas(Bits b) {
  constexpr Bits um = 0x5555555555555555, dois = 0x3333333333333333, quatro = 0x0f0f0f0f0f0f0f0f;
  b -= (b >> 1) & um;
  b = (b & dois) + ((b >> 2) & dois);
  b = (b + (b >> 4)) & quatro;
  return static_cast<int>((b * 0x0101010101010101) >> 56);
}

// The same for two sets together.
constexpr int quantas(Bits a, Bits b) {
  constexpr Bits um = 0x5555555555555555, dois = 0x3333333333333333, quatro = 0x0f0f0f0f0f0f0f0f;
  a -= (a >> 1) & um;
  b -= (b >> 1) & um;
  a = (a & dois) + ((a >> 2) & dois) + (b & dois) + ((b >> 2) & dois);
  a = (a & quatro) + ((a >> 4) & quatro);
  return static_cast<int>((a * 0x0101010101010101) >> 56);
}

// The squares of t that hold this code.
inline Bits onde(const Tabuleiro& t, std::uint8_t codigo) {
  Bits b = 0;
#ifdef __SSE2__
  const __m128i alvo = _mm_set1_epi8(static_cast<char>(codigo));
  for (std::size_t i = 0; i < 64; i += 16) {
    const __m128i casas = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&t[i]));
    b |= static_cast<Bits>(_mm_movemask_epi8(_mm_cmpeq_epi8(casas, alvo))) << i;
  }
#else
  for (std::size_t i = 0; i < 64; ++i) b |= static_cast<Bits>(t[i] == codigo) << i;
#endif
  return b;
}

inline Bits ocupadas(const Tabuleiro& t) {
  return ~onde(t, vazia);
}

// The squares whose code is negative as a signed number: Black's men.
inline Bits negativas(const Tabuleiro& t) {
  Bits b = 0;
#ifdef __SSE2__
  for (std::size_t i = 0; i < 64; i += 16)
    b |= static_cast<Bits>(
             _mm_movemask_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(&t[i]))))
         << i;
#else
  for (std::size_t i = 0; i < 64; ++i) b |= static_cast<Bits>(t[i] >> 7) << i;
#endif
  return b;
}

// Binary digits of the men's values by square, and their colour.
struct Digitos {
  Bits ocupadas, pretas, de64, de32, de16, de1;
};
Digitos digitos_de(const Tabuleiro& t);

// Where the men of a board stand, by colour and kind.
struct Homens {
  std::array<std::array<Bits, 6>, 2> conjuntos{};  // by Cor and Peca
  Bits ocupadas;

  explicit Homens(const Tabuleiro& t) : Homens(digitos_de(t)) {}
  explicit constexpr Homens(const Digitos& d);

  template <Cor cor>
  Bits de(Peca p) const {
    return conjuntos[static_cast<std::size_t>(cor)][static_cast<std::size_t>(p)];
  }
  // The square of the only man of its kind; -1 when there is none, or more than one.
  template <Cor cor>
  int unico(Peca p) const {
    const Bits b = de<cor>(p);
    return b != 0 && (b & (b - 1)) == 0 ? primeira_de(b) : -1;
  }
};

// Four binary digits tell the values of the men apart: 10, 32, 33, 50, 90, 110 are 0001010,
// 0100000, 0100001, 0110010, 1011010 and 1101110.
constexpr Homens::Homens(const Digitos& d) : ocupadas(d.ocupadas) {
  const auto reparte = [&](Peca p, Bits b) {
    conjuntos[0][static_cast<std::size_t>(p)] = b & ~d.pretas;
    conjuntos[1][static_cast<std::size_t>(p)] = b & d.pretas;
  };
  reparte(Peca::peao, ocupadas & ~(d.de64 | d.de32));
  reparte(Peca::cavalo, d.de32 & ~(d.de64 | d.de16 | d.de1));
  reparte(Peca::bispo, d.de1);
  reparte(Peca::torre, d.de32 & d.de16);
  reparte(Peca::dama, d.de64 & d.de16);
  reparte(Peca::rei, d.de64 & d.de32);
}

#ifdef __SSE2__
inline Digitos digitos_de(const Tabuleiro& t) {
  const __m128i zero = _mm_setzero_si128();
  Bits vazias = 0, pretas = 0, de64 = 0, de32 = 0, de16 = 0, de1 = 0;
  for (std::size_t i = 0; i < 64; i += 16) {
    const __m128i codigos = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&t[i]));
    const __m128i sinais = _mm_cmpgt_epi8(zero, codigos);
    const __m128i valores = _mm_sub_epi8(_mm_xor_si128(codigos, sinais), sinais);
    const auto nota = [i](Bits& b, __m128i a) {
      b |= static_cast<Bits>(static_cast<unsigned>(_mm_movemask_epi8(a))) << i;
    };
    nota(vazias, _mm_cmpeq_epi8(codigos, zero));
    nota(pretas, codigos);
    nota(de64, _mm_slli_epi16(valores, 1));
    nota(de32, _mm_slli_epi16(valores, 2));
    nota(de16, _mm_slli_epi16(valores, 3));
    nota(de1, _mm_slli_epi16(valores, 7));
  }
  return {~vazias, pretas, de64, de32, de16, de1};
}
#else
inline Digitos digitos_de(const Tabuleiro& t) {
  Digitos d{};
  for (std::size_t s = 0; s < 64; ++s) {
    const bool preta = (t[s] & 0x80) != 0;
    const unsigned valor = preta ? 0x100U - t[s] : t[s];
    const auto nota = [s](Bits& b, bool sim) { b |= static_cast<Bits>(sim) << s; };
    nota(d.ocupadas, valor != 0);
    nota(d.pretas, preta);
    nota(d.de64, (valor & 64) != 0);
    nota(d.de32, (valor & 32) != 0);
    nota(d.de16, (valor & 16) != 0);
    nota(d.de1, (valor & 1) != 0);
  }
  return d;
}
#endif

// --- Rays ---

inline constexpr std::array<Passo, 8> direcoes = {
    {{+1, 0}, {-1, 0}, {0, +1}, {0, -1}, {+1, +1}, {+1, -1}, {-1, -1}, {-1, +1}}};
inline constexpr int primeira_reta = 0, primeira_diagonal = 4;  // each followed by three more

// Do squares along direction d have growing numbers?
constexpr bool crescente(int d) {
  return 8 * direcoes[static_cast<std::size_t>(d)].dx + direcoes[static_cast<std::size_t>(d)].dy >
         0;
}

// The ray of one direction from one square.
struct Raio {
  Bits casas = 0;                       // its squares
  Bits fim = 0;                         // the last of them; of an empty ray its start
  std::array<std::uint8_t, 8> lista{};  // its squares, the nearest first; seven at most
  std::uint8_t n = 0;
};

using TabelaDeRaios = std::array<std::array<Raio, 64>, 8>;

inline constexpr TabelaDeRaios raios = [] {
  TabelaDeRaios t{};
  for (std::size_t d = 0; d < 8; ++d)
    for (int s = 0; s < 64; ++s) {
      Raio& r = t[d][static_cast<std::size_t>(s)];
      const Passo p = direcoes[d];
      for (int x = coluna_de(s) + p.dx, y = fila_de(s) + p.dy; dentro(x, y); x += p.dx, y += p.dy) {
        r.lista[r.n++] = static_cast<std::uint8_t>(casa(x, y));
        r.casas |= bit(static_cast<int>(casa(x, y)));
      }
      r.fim = bit(r.n == 0 ? s : r.lista[r.n - 1U]);
    }
  return t;
}();

constexpr const Raio& raio(int d, int s) {
  return raios[static_cast<std::size_t>(d)][static_cast<std::size_t>(s)];
}

// The first occupied square of direction d from s, or else the last square before the edge; s
// itself when it stands at that edge.
template <int d>
constexpr int fim_do_raio(Bits ocupadas, int s) {
  const Raio& r = raio(d, s);
  const Bits b = (r.casas & ocupadas) | r.fim;
  return crescente(d) ? primeira_de(b) : ultima_de(b);
}

// Steps along direction d from s to the square f.
template <int d>
constexpr int passos_ate(int s, int f) {
  constexpr Passo p = direcoes[static_cast<std::size_t>(d)];
  if constexpr (p.dx == 0)
    return p.dy * (f - s);
  else
    return p.dx * (coluna_de(f) - coluna_de(s));
}

// Calls f<d>() for the directions from `de` to `ate`, both included, until it gives true; then
// gives true.
template <int de, int ate, class F>
[[gnu::always_inline]] constexpr bool cada_direcao(F f) {
  if constexpr (de > ate)
    return false;
  else
    return f.template operator()<de>() || cada_direcao<de + 1, ate>(f);
}

// --- Leaps ---

using Conjuntos = std::array<Bits, 64>;

template <std::size_t n>
constexpr Conjuntos conjuntos_de(const std::array<Passo, n>& passos) {
  Conjuntos c{};
  for (int s = 0; s < 64; ++s)
    for (const Passo p : passos) {
      const int x = coluna_de(s) + p.dx, y = fila_de(s) + p.dy;
      if (dentro(x, y)) c[static_cast<std::size_t>(s)] |= bit(static_cast<int>(casa(x, y)));
    }
  return c;
}

inline constexpr Conjuntos saltos_de = conjuntos_de(saltos_do_cavalo);
inline constexpr Conjuntos vizinhas_de = conjuntos_de(passos_do_rei);
// Squares that a pawn of `cor` on the square attacks.
template <Cor cor>
inline constexpr Conjuntos peao_ataca = conjuntos_de<2>({{{+1, Lado<cor>::frente},
                                                          {-1, Lado<cor>::frente}}});

// All squares in line with one, whatever stands between: ranks and files, diagonals, both.
inline constexpr Conjuntos retas_de = [] {
  Conjuntos c{};
  for (int s = 0; s < 64; ++s)
    for (int d = 0; d < 4; ++d) c[static_cast<std::size_t>(s)] |= raio(d, s).casas;
  return c;
}();
inline constexpr Conjuntos diagonais_de = [] {
  Conjuntos c{};
  for (int s = 0; s < 64; ++s)
    for (int d = 4; d < 8; ++d) c[static_cast<std::size_t>(s)] |= raio(d, s).casas;
  return c;
}();

// Direction from one square to another in line with it; -1 when they are not, or are the same.
inline constexpr std::array<std::array<std::int8_t, 64>, 64> direcao_entre = [] {
  std::array<std::array<std::int8_t, 64>, 64> t{};
  for (auto& da_casa : t) da_casa.fill(-1);
  for (std::size_t d = 0; d < 8; ++d)
    for (std::size_t s = 0; s < 64; ++s)
      for (std::size_t k = 0; k < raios[d][s].n; ++k)
        t[s][raios[d][s].lista[k]] = static_cast<std::int8_t>(d);
  return t;
}();

// The squares between two in line with each other; none between others.
inline Bits entre(int s, int de) {
  const int d = direcao_entre[static_cast<std::size_t>(s)][static_cast<std::size_t>(de)];
  return d < 0 ? 0 : raio(d, s).casas & ~raio(d, de).casas & ~bit(de);
}

}  // namespace korvu
