#include "board/attack.h"

namespace korvu {

namespace {

// Does one of these men, each in line with s, see it?
bool ve_a_casa(Bits homens, int s, Bits ocupadas) {
  return cada_casa(homens, [=](int de) { return (entre(s, de) & ocupadas) == 0; });
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

}  // namespace

template <Cor cor>
Bits atacadas_por(const Homens& h) {
  const Bits damas = h.de<cor>(Peca::dama), vazias = ~h.ocupadas;
  const Bits diante = um_adiante<cor>(h.de<cor>(Peca::peao));
  return alcances_em_linha<0, 3>(h.de<cor>(Peca::torre) | damas, vazias) |
         alcances_em_linha<4, 7>(h.de<cor>(Peca::bispo) | damas, vazias) |
         saltos_de_todos(saltos_de, h.de<cor>(Peca::cavalo)) |
         saltos_de_todos(vizinhas_de, h.de<cor>(Peca::rei)) | diante << 8 | diante >> 8;
}

template <Cor cor>
bool atacada(const Homens& h, int s) {
  constexpr Cor outro = outra(cor);
  const auto i = static_cast<std::size_t>(s);
  const Bits damas = h.de<outro>(Peca::dama);
  const Bits perto = (h.de<outro>(Peca::peao) & peao_ataca<cor>[i]) |
                     (h.de<outro>(Peca::cavalo) & saltos_de[i]) |
                     (h.de<outro>(Peca::rei) & vizinhas_de[i]);
  const Bits longe = ((h.de<outro>(Peca::torre) | damas) & retas_de[i]) |
                     ((h.de<outro>(Peca::bispo) | damas) & diagonais_de[i]);
  return perto != 0 || (longe != 0 && ve_a_casa(longe, s, h.ocupadas));
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
template bool atacada<Cor::b>(const Homens&, int);
template bool atacada<Cor::p>(const Homens&, int);
template Bits atacadas_por<Cor::b>(const Homens&);
template Bits atacadas_por<Cor::p>(const Homens&);
template void verifica_rei<Cor::b>();
template void verifica_rei<Cor::p>();
template void verifica_xeque<Cor::b>();
template void verifica_xeque<Cor::p>();

}  // namespace korvu
