#include "board/draw.h"

#include <algorithm>

#include "board/state.h"

namespace korvu {

void verifica_empate() {
  pempate = 0;
  if (!pempatee || nb > maximo_de_posicoes) return;
  const bool indices_pares = (joga_com_b == 1) == (deeppromo == 0);
  const int precisas = deeppromo ? 2 : 1;
  int iguais = 0;
  for (int k = indices_pares ? 0 : 1; k < nb && iguais < precisas; k += 2)
    if (tabr1[static_cast<std::size_t>(k)] == tab2) ++iguais;
  pempate = iguais == precisas;
}

void guarda_posicao_do_jogo() {
  if (nb >= 1 && nb <= maximo_de_posicoes) tabr1[static_cast<std::size_t>(nb - 1)] = tab;
}

}  // namespace korvu
