// The reach of men and its weights in registers of 512 bits, for processors that have them: eight
// words of sets or a whole board at once. The results are those of reach.h and weighing.h to the
// last bit.
#pragma once

#include <cstring>

#include "board/wide.h"
#include "eval/reach.h"

#ifdef KORVU_WIDE_REGISTERS
namespace korvu {

// --- Weights by square, as a board is laid out ---

constexpr Pesos por_casa(const Pesos& por_fila) {
  Pesos p{};
  for (int s = 0; s < 64; ++s)
    p[static_cast<std::size_t>(s)] = por_fila[casa(fila_de(s), coluna_de(s))];
  return p;
}
inline constexpr Pesos centro_por_casa = por_casa(pesos_do_centro);
inline constexpr std::array<Pesos, 64> rei_por_casa = [] {
  std::array<Pesos, 64> t{};
  for (std::size_t r = 0; r < 64; ++r) t[r] = por_casa(pesos_do_rei[r]);
  return t;
}();

// The sets that say how often each square is reached; counted when they are weighed.
class Contagem {
 public:
  explicit Contagem(const std::array<Par, 16>& conjuntos) {
    static_assert(sizeof conjuntos == sempre * sizeof(Palavras));
    std::memcpy(conjuntos_.data(), conjuntos.data(), sizeof conjuntos);
  }
  void junta(Par a) { conjuntos_[n_++] = {a.de<Cor::b>(), a.de<Cor::p>()}; }

  // A byte a square.
  template <Cor cor>
  KORVU_WIDE __m512i contas() const {
    __m512i c = _mm512_setzero_si512();
#pragma GCC unroll 16
    for (std::size_t i = 0; i < sempre; ++i) c = mais_um<cor>(c, i);
    for (std::size_t i = sempre; i < n_; ++i) c = mais_um<cor>(c, i);
    return c;
  }

 private:
  template <Cor cor>
  KORVU_WIDE __m512i mais_um(__m512i c, std::size_t i) const {
    const Bits casas = conjuntos_[i][static_cast<std::size_t>(cor)];
    return _mm512_mask_add_epi8(c, casas, c, _mm512_set1_epi8(1));
  }

  using Palavras = std::array<Bits, 2>;                      // by Cor
  static constexpr std::size_t sempre = 16, no_maximo = 19;  // two of pawns and one of kings
  std::array<Palavras, no_maximo> conjuntos_;
  std::size_t n_ = sempre;
};

class Largo {
 public:
  using Conta = Contagem;

  KORVU_WIDE static Homens homens(const Tabuleiro& t) { return Largos::homens(t); }

  KORVU_WIDE static Alcances alcances(const Oficiais& o, Par vazias) {
    Alcances a;
    metade<primeira_reta>(a, o.torres, o, vazias);
    metade<primeira_diagonal>(a, o.bispos, o, vazias);
    return a;
  }

  template <class... Pares>
  KORVU_WIDE static Par quantas(Pares... conjuntos) {
    return (Par(_mm_popcnt_epi64(conjuntos.registro())) + ...);
  }

  KORVU_WIDE static std::array<Pesagem, 2> pesa(const Contagem& c, Par proprios, Par inimigos,
                                                std::size_t rei_b, std::size_t rei_p) {
    return {pesa_lado<Cor::b>(c, proprios, inimigos, rei_b, rei_p),
            pesa_lado<Cor::p>(c, proprios, inimigos, rei_b, rei_p)};
  }

 private:
  // Directions d to d + 3, and as many leaps; `homens` walk these directions beside the queens.
  template <std::size_t d>
  KORVU_WIDE static void metade(Alcances& a, Par homens, const Oficiais& o, Par vazias) {
    const Largos::Caminhos<d> caminhos(vazias.registro());
    _mm512_storeu_si512(&a.linhas[d], caminhos.de(homens.registro()));
    _mm512_storeu_si512(&a.damas[d], caminhos.de(o.damas.registro()));
    _mm512_storeu_si512(&a.cavalos[d], Largos::saltos<d>(o.cavalos.registro()));
  }

  // The sum of the bytes of the squares held, in eight parts.
  KORVU_WIDE static __m512i soma_em(Bits casas, __m512i bytes) {
    return _mm512_sad_epu8(_mm512_maskz_mov_epi8(casas, bytes), _mm512_setzero_si512());
  }
  // The sum of counts times weights; the counts of the first and of the last 32 squares.
  KORVU_WIDE static int ponderada(__m512i primeiras, __m512i ultimas, const Pesos& p) {
    return _mm512_reduce_add_epi32(
        _mm512_add_epi32(_mm512_madd_epi16(primeiras, Largos::le(&p[0])),
                         _mm512_madd_epi16(ultimas, Largos::le(&p[32]))));
  }

  template <Cor cor>
  KORVU_WIDE static Pesagem pesa_lado(const Contagem& contagem, Par proprios, Par inimigos,
                                      std::size_t rei_b, std::size_t rei_p) {
    const Bits meus = proprios.de<cor>();
    const __m512i contas = contagem.contas<cor>();
    const __m512i filas = _mm512_set1_epi64(0x0807060504030201);
    // Four sums in one: each is below 2^16 even of all squares together.
    const __m512i contadas = _mm512_or_si512(
        _mm512_or_si512(soma_em(~Bits{0}, contas), _mm512_slli_epi64(soma_em(meus, contas), 16)),
        _mm512_or_si512(_mm512_slli_epi64(soma_em(inimigos.de<cor>(), contas), 32),
                        _mm512_slli_epi64(soma_em(meus, filas), 48)));
    const auto somas = static_cast<Bits>(_mm512_reduce_add_epi64(contadas));
    const auto soma = [somas](int i) { return static_cast<int>(somas >> (16 * i) & 0xffff); };
    const __m512i primeiras = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(contas));
    const __m512i ultimas = _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(contas, 1));
    return {soma(0),
            soma(1),
            soma(2),
            ponderada(primeiras, ultimas, centro_por_casa),
            ponderada(primeiras, ultimas, rei_por_casa[rei_b]),
            ponderada(primeiras, ultimas, rei_por_casa[rei_p]),
            soma(3),
            9 * static_cast<int>(_mm_popcnt_u64(meus)) - soma(3)};
  }
};

}  // namespace korvu
#endif
