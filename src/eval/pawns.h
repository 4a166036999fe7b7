// What the pawns' structure gives each pawn. Only pawns matter to it.
#pragma once

#include "board/types.h"

namespace korvu {

inline bool tem_codigo(const Tabuleiro& t, int x, int y, std::uint8_t codigo) {
  return dentro(x, y) && t[casa(x, y)] == codigo;
}

// Can the pawn be opened by a lever towards file x + lado? The file and the one beyond the capture
// square must be free of enemy pawns from two ranks ahead to the rank before promotion.
template <Cor cor>
bool alavanca(const Tabuleiro& t, int x, int y, int lado) {
  using L = Lado<cor>;
  using Inimigo = Lado<L::outro>;
  const int i = x + lado, j = y + L::frente;
  if (!dentro(i, j) || t[casa(i, j)] == L::peao || t[casa(i, j)] == Inimigo::peao) return false;
  const int partida = L::fila(y) + 2;
  for (int r = partida; r <= 6; ++r)
    if (t[casa(x, L::fila(r))] == Inimigo::peao ||
        tem_codigo(t, i + lado, L::fila(r), Inimigo::peao))
      return false;
  return partida <= 6;
}

// Walks to the rank before promotion; neighbours met on the way count even when the walk then ends
// with nothing.
template <Cor cor, class F>
void passado(const Tabuleiro& t, int x, int y, F termo) {
  using L = Lado<cor>;
  using Inimigo = Lado<L::outro>;
  for (int r = L::fila(y) + 1; r <= 6; ++r) {
    const int j = L::fila(r);
    if (t[casa(x, j)] == Inimigo::peao || t[casa(x, j)] == L::peao ||
        tem_codigo(t, x + 1, j, Inimigo::peao) || tem_codigo(t, x - 1, j, Inimigo::peao))
      return;
    for (const int i : {x + 1, x - 1})
      if (tem_codigo(t, i, j, L::peao)) termo(10);
  }
  termo(33);
}

// Calls termo(n) for each addition to the positional sum that the structure gives the pawn of `cor`
// on (x, y), in their order; n is in score units, 10 to 100.
template <Cor cor, class F>
void estrutura_do_peao(const Tabuleiro& t, int x, int y, F termo) {
  using L = Lado<cor>;
  if (y == L::fila(6)) termo(100);
  for (const int i : {x + 1, x - 1})
    if (tem_codigo(t, i, y, L::peao)) termo(13);
  for (const int i : {x + 1, x - 1})
    if (tem_codigo(t, i, y + L::frente, L::peao)) termo(11);
  for (const int lado : {+1, -1})
    if (alavanca<cor>(t, x, y, lado)) termo(25);
  passado<cor>(t, x, y, termo);
}

}  // namespace korvu
