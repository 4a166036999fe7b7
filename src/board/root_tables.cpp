#include "board/root_tables.h"

namespace korvu {
namespace {

template <Cor cor>
void tabela_do_rei() {
  const float total = material_da_raiz<cor>();
  if (total == 110)
    Xr<cor>() = colina(375, rei_x<cor>(), rei_y<cor>());
  else if (total > 110)
    Xr<cor>() = colina(15, rei_x<cor>(), rei_y<cor>());
}

template <Cor cor>
void acha_rei() {
  percorre_tabuleiro([](int x, int y, std::size_t s) {
    if (tab[s] == Lado<cor>::rei) {
      rei_x<cor>() = x;
      rei_y<cor>() = y;
    }
    return false;
  });
}

// The pawn nearest its promotion rank; among equals the one on the highest file.
template <Cor cor>
void tabela_do_peao() {
  XP<cor>() = {};
  for (int r = 7; r >= 0; --r)
    for (int x = 7; x >= 0; --x)
      if (tab[casa(x, Lado<cor>::fila(r))] == Lado<cor>::peao) {
        XP<cor>() = colina(75, x, Lado<cor>::fila(r));
        return;
      }
}

template <Cor cor>
void conta_material() {
  using L = Lado<cor>;
  int total = 0, homens = 0, peoes = 0;
  for (const std::uint8_t q : tab) {
    if (!L::propria(q)) continue;
    total += L::visto(q);
    if (q != L::rei) ++homens;
    if (q == L::peao) ++peoes;
  }
  material_da_raiz<cor>() = static_cast<float>(total);
  npecas<cor>() = homens;
  npecasdp<cor>() = homens - peoes;
  material_maior<cor>() =
      static_cast<float>(total - valor_de(Peca::peao) * peoes - valor_de(Peca::rei));
}

}  // namespace

void analisa_tabuleiro() {
  acha_rei<Cor::p>();
  acha_rei<Cor::b>();
  tabela_do_rei<Cor::p>();
  tabela_do_rei<Cor::b>();
  tabela_do_peao<Cor::b>();
  tabela_do_peao<Cor::p>();
  conta_material<Cor::b>();
  conta_material<Cor::p>();
  materialflot0 = joga_com_b ? materialba - materialpa : materialpa - materialba;
}

}  // namespace korvu
