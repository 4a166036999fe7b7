#include "board/game_move.h"

#include <optional>

#include "board/move.h"

namespace korvu {
namespace {

// With CHESS_960 the king moves onto its own rook, and both land on the standard squares of the
// side that the rook stands on, wherever they came from.
template <Cor cor>
bool roca_960(int x1, int y1, int x2, int y2) {
  using L = Lado<cor>;
  if (!CHESS_960 || tab[casa(x2, y2)] != L::torre) return false;
  tab[casa(x1, y1)] = vazia;
  tab[casa(x2, y2)] = vazia;
  const bool ala_a = x1 > x2;
  tab[L::primeira(ala_a ? 3 : 5)] = L::torre;
  tab[L::primeira(ala_a ? 2 : 6)] = L::rei;
  return true;
}

// True when a special move has placed the pieces already.
template <Cor cor>
bool lance_especial(int x1, int y1, int x2, int y2) {
  if (tab[casa(x1, y1)] == Lado<cor>::rei) {
    if (roca_960<cor>(x1, y1, x2, y2)) return true;
    if (!CHESS_960) leva_a_torre<cor>(tab, x1, y1, x2);
    return false;
  }
  return toma_de_passagem<cor>(tab, duplos, x1, y1, x2, y2);
}

std::optional<Peca> peca_da_letra(char letra) {
  switch (letra) {
    case 'q':
      return Peca::dama;
    case 'r':
      return Peca::torre;
    case 'n':
      return Peca::cavalo;
    case 'b':
      return Peca::bispo;
    default:
      return std::nullopt;
  }
}

template <Cor cor>
void promove(int x, int y) {
  std::uint8_t& q = tab[casa(x, y)];
  if (q != Lado<cor>::peao || y != Lado<cor>::fila(7)) return;
  if (deeppromo) {
    q = Lado<cor>::dama;
  } else if (PRs == 'q' && PRe == '0') {
    q = Lado<cor>::dama;
    PR = 'q';
  } else if (PRs == '0') {
    if (const auto p = peca_da_letra(PRe)) q = codigo_de(*p, cor);
  }
}

template <Cor cor>
void joga_lado() {
  const auto [x1, y1, x2, y2] = jogada;
  const std::uint8_t codigo = tab[casa(x1, y1)];
  const bool olha_especiais = !deeppromo || joga_com_b == Lado<cor>::branco;
  if (olha_especiais) marca_movidos<cor>(jm, codigo, x1);
  if (!(olha_especiais && lance_especial<cor>(x1, y1, x2, y2))) transfere(tab, x1, y1, x2, y2);
  marca_duplo<cor>(duplos, codigo, x1, y1, y2);
  promove<cor>(x2, y2);
}

}  // namespace

void joga_no_tabuleiro() {
  const std::uint8_t codigo = tab[casa(jogada.a, jogada.b)];
  por_cor(!Lado<Cor::p>::propria(codigo), []<Cor cor>() { joga_lado<cor>(); });
}

}  // namespace korvu
