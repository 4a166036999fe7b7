#include "eval/freedom.h"

#include "board/attack.h"
#include "board/move.h"
#include "board/state.h"

namespace korvu {
namespace {

template <Cor cor>
void testa(const Tabuleiro& origem, int x1, int y1, int x2, int y2) {
  using L = Lado<cor>;
  tab2t = origem;
  transfere(tab2t, x1, y1, x2, y2);
  if (y2 == L::fila(7) && tab2t[casa(x2, y2)] == L::peao) tab2t[casa(x2, y2)] = L::dama;
  YY = rei_atacado<cor>(tab2t, [](int, int) {});
}

}  // namespace

template <Cor cor>
void verifica_liberdade(int x1, int y1, int x2, int y2) {
  testa<cor>(tab, x1, y1, x2, y2);
}

template <Cor cor>
void verifica_liberdadee(int x1, int y1, int x2, int y2) {
  testa<cor>(tab2, x1, y1, x2, y2);
}

template void verifica_liberdade<Cor::b>(int, int, int, int);
template void verifica_liberdade<Cor::p>(int, int, int, int);
template void verifica_liberdadee<Cor::b>(int, int, int, int);
template void verifica_liberdadee<Cor::p>(int, int, int, int);

}  // namespace korvu
