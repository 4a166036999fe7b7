// Two sets of squares, one for each colour, worked on together.
#pragma once

#include "board/bits.h"

namespace korvu {

// The word of Cor::b and that of Cor::p. As a number a word is unsigned and wraps.
class Par {
 public:
  Par() = default;  // without a value
#ifdef __SSE2__
  Par(Bits b, Bits p) : v_(_mm_set_epi64x(static_cast<long long>(p), static_cast<long long>(b))) {}
  explicit Par(__m128i v) : v_(v) {}
  template <Cor cor>
  Bits de() const {
    alignas(16) std::array<Bits, 2> palavras;
    _mm_store_si128(reinterpret_cast<__m128i*>(palavras.data()), v_);
    return palavras[static_cast<std::size_t>(cor)];
  }
  __m128i registro() const {
    return v_;
  }
  friend Par operator&(Par a, Par c) {
    return Par(_mm_and_si128(a.v_, c.v_));
  }
  friend Par operator|(Par a, Par c) {
    return Par(_mm_or_si128(a.v_, c.v_));
  }
  friend Par operator^(Par a, Par c) {
    return Par(_mm_xor_si128(a.v_, c.v_));
  }
  friend Par operator+(Par a, Par c) {
    return Par(_mm_add_epi64(a.v_, c.v_));
  }
  Par sem(Par c) const {
    return Par(_mm_andnot_si128(c.v_, v_));
  }
  // Each square n further, or back when n is negative; what leaves the word is gone.
  template <int n>
  Par adiante() const {
    return Par(n > 0 ? _mm_slli_epi64(v_, n) : _mm_srli_epi64(v_, -n));
  }
  // Both words times a small number; they must be below 2^32.
  Par vezes(int n) const {
    return Par(_mm_mul_epu32(v_, _mm_set1_epi64x(n)));
  }
  bool vazio() const {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(v_, _mm_setzero_si128())) == 0xffff;
  }

 private:
  friend Par por_byte(Par a);
  __m128i v_;
#else
  Par(Bits b, Bits p) : b_(b), p_(p) {}
  template <Cor cor>
  Bits de() const {
    return cor == Cor::b ? b_ : p_;
  }
  friend Par operator&(Par a, Par c) {
    return Par(a.b_ & c.b_, a.p_ & c.p_);
  }
  friend Par operator|(Par a, Par c) {
    return Par(a.b_ | c.b_, a.p_ | c.p_);
  }
  friend Par operator^(Par a, Par c) {
    return Par(a.b_ ^ c.b_, a.p_ ^ c.p_);
  }
  friend Par operator+(Par a, Par c) {
    return Par(a.b_ + c.b_, a.p_ + c.p_);
  }
  Par sem(Par c) const {
    return Par(b_ & ~c.b_, p_ & ~c.p_);
  }
  template <int n>
  Par adiante() const {
    return n > 0 ? Par(b_ << n, p_ << n) : Par(b_ >> -n, p_ >> -n);
  }
  Par vezes(int n) const {
    return Par(b_ * static_cast<Bits>(n), p_ * static_cast<Bits>(n));
  }
  bool vazio() const {
    return (b_ | p_) == 0;
  }

 private:
  friend Par por_byte(Par a);
  Bits b_, p_;
#endif
};

inline Par nos_dois(Bits c) {
  return {c, c};
}

// The squares of one rank, from 0.
constexpr Bits na_fila(int r) {
  return Bits{0x0101010101010101} << r;
}

// The sums of the eight bytes of each word.
inline Par por_byte(Par a) {
#ifdef __SSE2__
  return Par(_mm_sad_epu8(a.v_, _mm_setzero_si128()));
#else
  const auto soma = [](Bits c) {
    c = (c & 0x00ff00ff00ff00ff) + ((c >> 8) & 0x00ff00ff00ff00ff);
    return (c * 0x0001000100010001) >> 48;
  };
  return Par(soma(a.b_), soma(a.p_));
#endif
}

// The number of squares of each word, of all the sets given together.
template <class... Pares>
[[gnu::always_inline]] inline Par quantas_em(Pares... conjuntos) {
  static_assert(sizeof...(conjuntos) <= 31, "the sum of eight squares each fits a byte");
  const Par dois = nos_dois(0x3333333333333333), quatro = nos_dois(0x0f0f0f0f0f0f0f0f);
  const auto por_quatro = [&](Par a) {
    const Par um = nos_dois(0x5555555555555555);
    const Par pares = (a & um) + (a.adiante<-1>() & um);
    return (pares & dois) + (pares.adiante<-2>() & dois);
  };
  const auto por_oito = [&](Par a) {
    const Par q = por_quatro(a);
    return (q & quatro) + (q.adiante<-4>() & quatro);
  };
  return por_byte((por_oito(conjuntos) + ...));
}

}  // namespace korvu
