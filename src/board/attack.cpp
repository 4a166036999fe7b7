#include "board/attack.h"

namespace korvu {

namespace {

// Does one of these men, each in line with s, see it?
bool ve_a_casa(Bits homens, int s, Bits ocupadas) {
  return cada_casa(homens, [=](int de) {
    const int d = direcao_entre[static_cast<std::size_t>(s)][static_cast<std::size_t>(de)];
    const Bits entre = raio(d, s).casas & ~raio(d, de).casas & ~bit(de);
    return (entre & ocupadas) == 0;
  });
}

}  // namespace

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
  return atacada<cor>(Homens::so_de<outra(cor)>(t), static_cast<int>(casa(x, y)));
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
template void verifica_rei<Cor::b>();
template void verifica_rei<Cor::p>();
template void verifica_xeque<Cor::b>();
template void verifica_xeque<Cor::p>();

}  // namespace korvu
