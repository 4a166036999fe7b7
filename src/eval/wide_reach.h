// The reach of men and its weights in registers of 512 bits, for processors that have them: eight
// words of sets or a whole board at once. The results are those of reach.h and weighing.h to the
// last bit.
#pragma once

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

// Where vpermt2b finds, in eight pairs of sets, the bytes of one colour: file by file, those of all
// eight.
template <Cor cor>
inline constexpr auto por_coluna = [] {
  struct alignas(64) : std::array<std::uint8_t, 64> {
  } t{};
  for (std::size_t x = 0; x < 8; ++x)
    for (std::size_t i = 0; i < 8; ++i)
      t[8 * x + i] = static_cast<std::uint8_t>(8 * (2 * i + static_cast<std::size_t>(cor)) + x);
  return t;
}();

// How often each square is reached: a byte a square, for each colour.
class Contagem {
 public:
  KORVU_WIDE explicit Contagem(const Alcances& a)
      : b_(de_todos<Cor::b>(a)), p_(de_todos<Cor::p>(a)) {}
  KORVU_WIDE void junta(Par a) {
    b_ = mais_um(b_, a.de<Cor::b>());
    p_ = mais_um(p_, a.de<Cor::p>());
  }
  template <Cor cor>
  KORVU_WIDE __m512i contas() const {
    return cor == Cor::b ? b_ : p_;
  }

 private:
  KORVU_WIDE static __m512i mais_um(__m512i contas, Bits casas) {
    return _mm512_mask_add_epi8(contas, casas, contas, _mm512_set1_epi8(1));
  }
  // Eight sets at once: the bits of a file's eight bytes are turned about, so that each byte holds
  // one square's, and counted.
  template <Cor cor>
  KORVU_WIDE static __m512i de_oito(__m512i primeiros, __m512i ultimos) {
    const __m512i colunas =
        _mm512_permutex2var_epi8(primeiros, Largos::le(por_coluna<cor>.data()), ultimos);
    const __m512i um_bit_cada = _mm512_set1_epi64(static_cast<long long>(0x8040201008040201));
    return _mm512_popcnt_epi8(_mm512_gf2p8affine_epi64_epi8(um_bit_cada, colunas, 0));
  }
  template <Cor cor>
  KORVU_WIDE static __m512i de_todos(const Alcances& a) {
    const __m512i linhas =
        de_oito<cor>(_mm512_or_si512(Largos::le(&a.linhas[0]), Largos::le(&a.damas[0])),
                     _mm512_or_si512(Largos::le(&a.linhas[4]), Largos::le(&a.damas[4])));
    return _mm512_add_epi8(linhas,
                           de_oito<cor>(Largos::le(&a.cavalos[0]), Largos::le(&a.cavalos[4])));
  }

  __m512i b_, p_;
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

  KORVU_WIDE static Contagem conta(const Alcances& a) { return Contagem(a); }

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
