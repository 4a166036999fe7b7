#include "board/attack.h"

namespace korvu {

namespace {

// The pawns, knights and kings other than cor's that attack s.
template <Cor cor>
Bits ao_lado(const Homens& h, int s) {
  constexpr Cor outro = outra(cor);
  const auto i = static_cast<std::size_t>(s);
  return (h.de<outro>(Peca::peao) & peao_ataca<cor>[i]) |
         (h.de<outro>(Peca::cavalo) & saltos_de[i]) | (h.de<outro>(Peca::rei) & vizinhas_de[i]);
}

// The other men that do if nothing stands between.
template <Cor cor>
Bits na_mira(const Homens& h, int s) {
  constexpr Cor outro = outra(cor);
  const auto i = static_cast<std::size_t>(s);
  const Bits damas = h.de<outro>(Peca::dama);
  return ((h.de<outro>(Peca::torre) | damas) & retas_de[i]) |
         ((h.de<outro>(Peca::bispo) | damas) & diagonais_de[i]);
}

// The squares that men reach in direction d, all at once: a man stops the walk.
template <int d>
Bits alcance_em_linha(Bits homens, Bits vazias) {
  constexpr Passo p = direcoes[static_cast<std::size_t>(d)];
  constexpr int passo = 8 * p.dx + p.dy;
  constexpr Bits beira = Bits{0x0101010101010101} << (p.dy > 0 ? 0 : 7);
  constexpr Bits entram = p.dy == 0 ? ~Bits{0} : ~beira;  // what wraps around comes in there
  const auto anda = [](Bits b, int n) { return passo > 0 ? b << n * passo : b >> n * -passo; };
  vazias &= entram;
  homens |= vazias & anda(homens, 1);
  vazias &= anda(vazias, 1);
  homens |= vazias & anda(homens, 2);
  vazias &= anda(vazias, 2);
  homens |= vazias & anda(homens, 4);
  return anda(homens, 1) & entram;
}

template <int de, int ate>
Bits alcances_em_linha(Bits homens, Bits vazias) {
  Bits b = 0;
  if (homens != 0)
    cada_direcao<de, ate>([&]<int d>() {
      b |= alcance_em_linha<d>(homens, vazias);
      return false;
    });
  return b;
}

Bits saltos_de_todos(const Conjuntos& saltos, Bits homens) {
  Bits b = 0;
  cada_casa(homens, [&](int s) {
    b |= saltos[static_cast<std::size_t>(s)];
    return false;
  });
  return b;
}

// What kings and pawns attack.
template <Cor cor>
Bits de_perto(const Homens& h) {
  const Bits diante = um_adiante<cor>(h.de<cor>(Peca::peao));
  return saltos_de_todos(vizinhas_de, h.de<cor>(Peca::rei)) | diante << 8 | diante >> 8;
}

}  // namespace

template <Cor cor>
Bits atacadas_por(const Homens& h) {
  const Bits damas = h.de<cor>(Peca::dama), vazias = ~h.ocupadas;
  return alcances_em_linha<0, 3>(h.de<cor>(Peca::torre) | damas, vazias) |
         alcances_em_linha<4, 7>(h.de<cor>(Peca::bispo) | damas, vazias) |
         saltos_de_todos(saltos_de, h.de<cor>(Peca::cavalo)) | de_perto<cor>(h);
}

#ifdef KORVU_WIDE_REGISTERS
namespace {

// What rooks, bishops, queens and knights attack, White's and Black's.
KORVU_WIDE __m128i dos_oficiais(const Homens& h) {
  const auto pares = [&h](Peca p, Peca q) {
    return _mm_set_epi64x(static_cast<long long>(h.de<Cor::p>(p) | h.de<Cor::p>(q)),
                          static_cast<long long>(h.de<Cor::b>(p) | h.de<Cor::b>(q)));
  };
  const __m128i vazias = _mm_set1_epi64x(static_cast<long long>(~h.ocupadas));
  const __m128i cavalos = pares(Peca::cavalo, Peca::cavalo);
  const Largos::Caminhos<primeira_reta> retas(vazias);
  const Largos::Caminhos<primeira_diagonal> diagonais(vazias);
  const __m512i em_linha = _mm512_or_si512(retas.de(pares(Peca::torre, Peca::dama)),
                                           diagonais.de(pares(Peca::bispo, Peca::dama)));
  const __m512i saltos = _mm512_or_si512(Largos::saltos<0>(cavalos), Largos::saltos<4>(cavalos));
  const __m512i todas = _mm512_or_si512(em_linha, saltos);
  const __m256i metade =
      _mm256_or_si256(_mm512_castsi512_si256(todas), _mm512_extracti64x4_epi64(todas, 1));
  return _mm_or_si128(_mm256_castsi256_si128(metade), _mm256_extracti128_si256(metade, 1));
}

}  // namespace

KORVU_WIDE Dominio dominio_ao_largo(const Tabuleiro& t) {
  Dominio a{Largos::homens(t)};
  _mm_storeu_si128(reinterpret_cast<__m128i*>(a.casas.data()), dos_oficiais(a.homens));
  a.casas[0] |= de_perto<Cor::b>(a.homens);
  a.casas[1] |= de_perto<Cor::p>(a.homens);
  return a;
}
#endif

template <Cor cor>
bool atacada(const Homens& h, int s, Bits ocupadas) {
  const Bits longe = na_mira<cor>(h, s);
  return ao_lado<cor>(h, s) != 0 ||
         cada_casa(longe, [=](int de) { return (entre(s, de) & ocupadas) == 0; });
}

template <Cor cor>
Bits atacantes(const Homens& h, int s) {
  Bits b = ao_lado<cor>(h, s);
  cada_casa(na_mira<cor>(h, s), [&](int de) {
    if ((entre(s, de) & h.ocupadas) == 0) b |= bit(de);
    return false;
  });
  return b;
}

template <Cor cor>
bool atacada(const Tabuleiro& t, int x, int y) {
  return atacada<cor>(Homens(t), static_cast<int>(casa(x, y)));
}

template <Cor cor>
void verifica_rei() {
  Y = rei_atacado<cor>(tab2, [](int x, int y) {
    rei_x<cor>() = x;
    rei_y<cor>() = y;
  });
}

template <Cor cor>
void verifica_xeque() {
  XEQUE = rei_atacado<outra(cor)>(tab2, [](int, int) {});
}

template bool atacada<Cor::b>(const Tabuleiro&, int, int);
template bool atacada<Cor::p>(const Tabuleiro&, int, int);
template bool atacada<Cor::b>(const Homens&, int, Bits);
template bool atacada<Cor::p>(const Homens&, int, Bits);
template Bits atacantes<Cor::b>(const Homens&, int);
template Bits atacantes<Cor::p>(const Homens&, int);
template Bits atacadas_por<Cor::b>(const Homens&);
template Bits atacadas_por<Cor::p>(const Homens&);
template void verifica_rei<Cor::b>();
template void verifica_rei<Cor::p>();
template void verifica_xeque<Cor::b>();
template void verifica_xeque<Cor::p>();

}  // namespace korvu
