#include "board/attack.h"

namespace korvu {

template <Cor cor>
bool atacada(const Tabuleiro& t, int x, int y) {
  using L = Lado<cor>;
  using Inimigo = Lado<L::outro>;
  const auto tem = [&](int i, int j, std::uint8_t codigo) {
    return dentro(i, j) && t[casa(i, j)] == codigo;
  };
  const auto raio_tem = [&](Passo d, std::uint8_t oficial) {
    return anda(t, x, y, d, [&](int i, int j) {
      const std::uint8_t q = t[casa(i, j)];
      return q == oficial || q == Inimigo::dama;
    });
  };
  if (tem(x + 1, y + L::frente, Inimigo::peao) || tem(x - 1, y + L::frente, Inimigo::peao))
    return true;
  for (Passo d : passos_do_rei)
    if (tem(x + d.dx, y + d.dy, Inimigo::rei)) return true;
  for (Passo d : saltos_do_cavalo)
    if (tem(x + d.dx, y + d.dy, Inimigo::cavalo)) return true;
  for (Passo d : raios_do_bispo)
    if (raio_tem(d, Inimigo::bispo)) return true;
  for (Passo d : raios_da_torre)
    if (raio_tem(d, Inimigo::torre)) return true;
  return false;
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
template void verifica_rei<Cor::b>();
template void verifica_rei<Cor::p>();
template void verifica_xeque<Cor::b>();
template void verifica_xeque<Cor::p>();

}  // namespace korvu
