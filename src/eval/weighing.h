// How often each square of a board is reached, and sums of weights over that.
#pragma once

#include <utility>

#include "board/tables.h"
#include "eval/set_pair.h"

namespace korvu {

// One binary number a square, its digits spread over sets: the count of the sets that hold it. Up
// to 31 sets may be counted.
class Planos {
 public:
  static constexpr std::size_t n = 5;

  explicit Planos(const std::array<Par, 16>& conjuntos) {
    const Par* proximo = conjuntos.data();
    digitos_[4] = absorve<4>(proximo);
  }
  void junta(Par a) {
    for (Par& d : digitos_) {
      const Par vai = d & a;
      d = d ^ a;
      a = vai;
    }
  }
  Par digito(std::size_t i) const { return digitos_[i]; }

 private:
  // Counts 2^k sets more; what is carried beyond the digit below k.
  template <int k>
  Par absorve(const Par*& proximo) {
    if constexpr (k == 0) {
      return *proximo++;
    } else {
      const Par a = absorve<k - 1>(proximo), c = absorve<k - 1>(proximo);
      Par& d = digitos_[k - 1];
      const Par um_so = a ^ c;
      const Par vai = (a & c) | (d & um_so);
      d = d ^ um_so;
      return vai;
    }
  }
  std::array<Par, n> digitos_{};
};

// Weights of the squares in fixed point, below 2^15; by rank and then file, unlike a board.
struct alignas(16) Pesos : std::array<std::int16_t, 64> {};

// f gives the weight of a file and rank, above 0.
template <class F>
constexpr Pesos pesos(int escala, F f) {
  Pesos p{};
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y) {
      const int metades = static_cast<int>(2 * escala * f(x, y));
      p[casa(y, x)] = static_cast<std::int16_t>((metades + 1) / 2);
    }
  return p;
}

inline constexpr int escala_do_centro = 1 << 10, escala_dos_reis = 1 << 15;
inline constexpr Pesos pesos_do_centro =
    pesos(escala_do_centro, [](int x, int y) { return static_cast<double>(centroo[casa(x, y)]); });
// By a king's square: 1 / divisor to it.
inline constexpr std::array<Pesos, 64> pesos_do_rei = [] {
  std::array<Pesos, 64> t{};
  for (int r = 0; r < 64; ++r)
    t[static_cast<std::size_t>(r)] = pesos(escala_dos_reis, [r](int x, int y) {
      return 1.0 / divisor(coluna_de(r), fila_de(r), x, y);
    });
  return t;
}();

// What one side reaches: squares, own and enemy men among them, and the sums of the three weights.
// And how far its men have come: their ranks from 1, as White sees them and as Black does.
struct Pesagem {
  int total, proprios, inimigos;
  int no_centro, rei_b, rei_p;
  int filas_b, filas_p;
};

#ifdef __SSE2__
namespace pesagem {

inline int soma_das_palavras(__m128i a) {
  a = _mm_add_epi32(a, _mm_shuffle_epi32(a, 0x4e));
  return _mm_cvtsi128_si32(_mm_add_epi32(a, _mm_shuffle_epi32(a, 0xb1)));
}

// One rank of both colours' sets: a byte for each file, first White's. 1 where the square is held.
template <int fila>
__m128i na_fila(Par a) {
  return _mm_and_si128(_mm_srli_epi64(a.registro(), fila), _mm_set1_epi8(1));
}
template <int fila, int... i>
__m128i contas_na_fila(const Planos& planos, std::integer_sequence<int, 0, i...> /*digitos*/) {
  __m128i contas = na_fila<fila>(planos.digito(0));
  ((contas = _mm_add_epi8(contas, _mm_slli_epi64(na_fila<fila>(planos.digito(i)), i))), ...);
  return contas;
}

// The weighted sums of one colour.
struct Ponderada {
  __m128i no_centro = _mm_setzero_si128(), rei_b = no_centro, rei_p = no_centro;

  void junta(__m128i contas, const std::int16_t* centros, const std::int16_t* b,
             const std::int16_t* p) {
    const auto pondera = [contas](__m128i& soma, const std::int16_t* pesos) {
      const __m128i w = _mm_load_si128(reinterpret_cast<const __m128i*>(pesos));
      soma = _mm_add_epi32(soma, _mm_madd_epi16(contas, w));
    };
    pondera(no_centro, centros);
    pondera(rei_b, b);
    pondera(rei_p, p);
  }
};

// Works rank by rank, the counts in bytes. n: binary digits of the counts.
template <int n>
std::array<Pesagem, 2> por_filas(const Planos& planos, Par proprios, Par inimigos,
                                 const Pesos& rei_b, const Pesos& rei_p) {
  const __m128i zero = _mm_setzero_si128();
  __m128i total = zero, nos_proprios = zero, nos_inimigos = zero, ate_aqui = zero, filas = zero;
  Ponderada b, p;
  std::array<Par, 8> contas;
  const auto pondera_na_fila = [&]<int fila>() {
    const __m128i c = contas_na_fila<fila>(planos, std::make_integer_sequence<int, n>());
    const std::int16_t *centros = &pesos_do_centro[8 * fila], *ao_b = &rei_b[8 * fila],
                       *ao_p = &rei_p[8 * fila];
    b.junta(_mm_unpacklo_epi8(c, zero), centros, ao_b, ao_p);
    p.junta(_mm_unpackhi_epi8(c, zero), centros, ao_b, ao_p);
    contas[fila] = Par(c);
  };
  const auto conta_na_fila = [&]<int fila>() {
    const __m128i c = contas[fila].registro(), meus = na_fila<fila>(proprios);
    const auto nos = [=](__m128i homens) { return _mm_and_si128(c, _mm_sub_epi8(zero, homens)); };
    total = _mm_add_epi8(total, c);
    nos_proprios = _mm_add_epi8(nos_proprios, nos(meus));
    nos_inimigos = _mm_add_epi8(nos_inimigos, nos(na_fila<fila>(inimigos)));
    ate_aqui = _mm_add_epi8(ate_aqui, meus);
    filas = _mm_add_epi8(filas, ate_aqui);
  };
  // Never a call of its own: that would be made for any processor, and one with AVX waits long
  // where such code meets its own.
  const auto em_cada_fila = []<int... fila>(auto&& f, std::integer_sequence<int, fila...> /*todas*/)
      __attribute__((always_inline)) {
    (f.template operator()<fila>(), ...);
  };
  em_cada_fila(pondera_na_fila, std::make_integer_sequence<int, 8>());
  em_cada_fila(conta_na_fila, std::make_integer_sequence<int, 8>());
  const auto lado = [&](const Ponderada& w, auto de) {
    const int homens = de(ate_aqui), vistas_por_p = de(filas);
    return Pesagem{de(total),
                   de(nos_proprios),
                   de(nos_inimigos),
                   soma_das_palavras(w.no_centro),
                   soma_das_palavras(w.rei_b),
                   soma_das_palavras(w.rei_p),
                   9 * homens - vistas_por_p,
                   vistas_por_p};
  };
  return {lado(b, [zero](__m128i a) { return _mm_cvtsi128_si32(_mm_sad_epu8(a, zero)); }),
          lado(p, [zero](__m128i a) {
            return _mm_cvtsi128_si32(_mm_srli_si128(_mm_sad_epu8(a, zero), 8));
          })};
}

}  // namespace pesagem

inline std::array<Pesagem, 2> pesa(const Planos& planos, Par proprios, Par inimigos,
                                   const Pesos& rei_b, const Pesos& rei_p) {
  const bool ate_sete = (planos.digito(3) | planos.digito(4)).vazio();
  return ate_sete ? pesagem::por_filas<3>(planos, proprios, inimigos, rei_b, rei_p)
                  : pesagem::por_filas<static_cast<int>(Planos::n)>(planos, proprios, inimigos,
                                                                    rei_b, rei_p);
}
#else
template <Cor cor>
Pesagem pesa_lado(const Planos& planos, Par proprios, Par inimigos, const Pesos& rei_b,
                  const Pesos& rei_p) {
  Pesagem r{};
  for (std::size_t i = 0; i < Planos::n; ++i)
    cada_casa(planos.digito(i).de<cor>(), [&, vezes = 1 << i](int s) {
      const std::size_t k = casa(fila_de(s), coluna_de(s));
      r.total += vezes;
      if ((proprios.de<cor>() & bit(s)) != 0) r.proprios += vezes;
      if ((inimigos.de<cor>() & bit(s)) != 0) r.inimigos += vezes;
      r.no_centro += vezes * pesos_do_centro[k];
      r.rei_b += vezes * rei_b[k];
      r.rei_p += vezes * rei_p[k];
      return false;
    });
  cada_casa(proprios.de<cor>(), [&r](int s) {
    r.filas_b += fila_de(s) + 1;
    r.filas_p += 8 - fila_de(s);
    return false;
  });
  return r;
}

inline std::array<Pesagem, 2> pesa(const Planos& planos, Par proprios, Par inimigos,
                                   const Pesos& rei_b, const Pesos& rei_p) {
  return {pesa_lado<Cor::b>(planos, proprios, inimigos, rei_b, rei_p),
          pesa_lado<Cor::p>(planos, proprios, inimigos, rei_b, rei_p)};
}
#endif

}  // namespace korvu
