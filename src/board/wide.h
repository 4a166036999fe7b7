// Registers of 512 bits: eight words of sets or a whole board at once. Not every processor has
// them; what needs them is compiled beside a way that needs nothing, and the engine asks once, at
// the start.
#pragma once

#include "board/bits.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define KORVU_WIDE_REGISTERS 1

// GCC 12 takes the undefined operands within its intrinsics for mistakes.
#ifndef __clang__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Wuninitialized"
#endif
#include <immintrin.h>
#ifndef __clang__
#pragma GCC diagnostic pop
#endif

// For functions that only such a processor may run.
#define KORVU_WIDE                                                      \
  __attribute__((                                                       \
      target("avx2,bmi,bmi2,popcnt,avx512f,avx512bw,avx512dq,avx512vl," \
             "avx512vpopcntdq,avx512vbmi,avx512bitalg,gfni")))

namespace korvu {

inline bool tem_registros_largos() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
         __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
         __builtin_cpu_supports("avx512vpopcntdq") && __builtin_cpu_supports("avx512vbmi") &&
         __builtin_cpu_supports("avx512bitalg") && __builtin_cpu_supports("gfni") &&
         __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
         __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
}

// The engine sees with them. Tests put it to false and see the same.
inline bool ve_ao_largo = tem_registros_largos();

// --- Directions, a word for each colour ---

struct alignas(64) PorRumo : std::array<Bits, 16> {};

template <class F>
constexpr PorRumo por_rumo(const std::array<Passo, 8>& passos, F f) {
  PorRumo t{};
  for (std::size_t i = 0; i < 16; ++i) t[i] = static_cast<Bits>(f(passos[i / 2]));
  return t;
}

// The squares that a step enters without wrapping around.
constexpr Bits entradas(Passo p) {
  Bits b = 0;
  for (int s = 0; s < 64; ++s)
    if (dentro(coluna_de(s) - p.dx, fila_de(s) - p.dy)) b |= bit(s);
  return b;
}

// By how much a word is rotated for one step, two and four.
struct Rumos {
  PorRumo um, dois, quatro, entram;
};
constexpr Rumos rumos_de(const std::array<Passo, 8>& passos) {
  const auto rotacao = [&passos](int vezes) {
    return por_rumo(passos, [vezes](Passo p) { return vezes * (8 * p.dx + p.dy) & 63; });
  };
  return {rotacao(1), rotacao(2), rotacao(4), por_rumo(passos, entradas)};
}
inline constexpr Rumos rumos = rumos_de(direcoes), pulos = rumos_de(saltos_do_cavalo);

// The work with them. A pair holds two words: White's, then Black's.
struct Largos {
  KORVU_WIDE static __m512i le(const void* de) { return _mm512_loadu_si512(de); }
  KORVU_WIDE static __m512i em_quatro(__m128i par) { return _mm512_broadcast_i64x2(par); }

  KORVU_WIDE static Homens homens(const Tabuleiro& t) {
    const __m512i codigos = le(t.data()), valores = _mm512_abs_epi8(codigos);
    return Homens(Digitos{_mm512_test_epi8_mask(codigos, codigos), _mm512_movepi8_mask(codigos),
                          com_digito<64>(valores), com_digito<32>(valores), com_digito<16>(valores),
                          com_digito<1>(valores)});
  }

  // Empty squares in runs of 1, 2 and 4 along directions d to d + 3.
  template <std::size_t d>
  class Caminhos {
   public:
    KORVU_WIDE explicit Caminhos(__m128i vazias) {
      um_ = _mm512_and_si512(em_quatro(vazias), le(&rumos.entram[i]));
      dois_ = _mm512_and_si512(um_, _mm512_rolv_epi64(um_, le(&rumos.um[i])));
      quatro_ = _mm512_and_si512(dois_, _mm512_rolv_epi64(dois_, le(&rumos.dois[i])));
    }
    // What men reach there: empty squares and the first man met.
    KORVU_WIDE __m512i de(__m128i pares) const {
      __m512i homens = em_quatro(pares);
      homens = mais(homens, um_, le(&rumos.um[i]));
      homens = mais(homens, dois_, le(&rumos.dois[i]));
      homens = mais(homens, quatro_, le(&rumos.quatro[i]));
      return _mm512_and_si512(le(&rumos.entram[i]), _mm512_rolv_epi64(homens, le(&rumos.um[i])));
    }

   private:
    KORVU_WIDE static __m512i mais(__m512i homens, __m512i corridas, __m512i passo) {
      return _mm512_or_si512(homens, _mm512_and_si512(corridas, _mm512_rolv_epi64(homens, passo)));
    }
    static constexpr std::size_t i = 2 * d;
    __m512i um_, dois_, quatro_;
  };

  // Leaps d to d + 3.
  template <std::size_t d>
  KORVU_WIDE static __m512i saltos(__m128i cavalos) {
    const __m512i saltam = _mm512_rolv_epi64(em_quatro(cavalos), le(&pulos.um[2 * d]));
    return _mm512_and_si512(saltam, le(&pulos.entram[2 * d]));
  }

 private:
  template <int digito>
  KORVU_WIDE static Bits com_digito(__m512i valores) {
    return _mm512_test_epi8_mask(valores, _mm512_set1_epi8(digito));
  }
};

}  // namespace korvu
#else
namespace korvu {
constexpr bool ve_ao_largo = false;
}
#endif
