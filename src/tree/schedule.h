// What each ply of the tree has and lacks. The selective machinery thins out with the depth; nodes
// and loops read these columns at compile time.
#pragma once

#include <array>
#include <climits>

#include "board/state.h"

namespace korvu {

inline constexpr int nunca = INT_MAX;  // a depth that `deep` never exceeds

enum class Termo { quociente, logaritmo };       // what a leaf adds to the material difference
enum class Filtro { nao, sete, geral, ultimo };  // forms of the vertical filter

struct Intervalo {
  int de, ate;
  constexpr bool contem(int v) const { return v >= de && v <= ate; }
  constexpr bool existe() const { return de <= ate; }
};
inline constexpr Intervalo vazio = {1, 0};
constexpr Intervalo ate(int v) {
  return {INT_MIN, v};
}

struct LinhaDoCronograma {
  int N;
  bool tabela;         // has a table of positions (memory/ply_tables.h)
  int nulo;            // null move when deep exceeds this
  int pre_busca;       // pre-search when deep exceeds this
  int tarde, cedo;     // late and early reductions when deep exceeds this
  Filtro filtro;       // vertical filter
  Intervalo extensao;  // DEEP that allows an extension
  bool relogio;        // reads the clock
  Intervalo quieto;    // DEEP at which a quiet move ends the line
  Termo termo;         // leaf term
  bool extra;          // leaves get the extra evaluation
  bool promocoes;      // promotion loop, and one reply is enough at the last ply of the line
  bool esquece;        // forgets its stored capture when deep equals N + 1
};

// clang-format off
inline constexpr std::array<LinhaDoCronograma, ultimo_no + 1> cronograma = {{
//    N  table  null   pre    late   early  vertical        extension  clock  quiet    leaf term         extra  promo  forget
    { 0, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, vazio,   Termo::quociente, false, false, false},
    { 1, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, vazio,   Termo::quociente, false, false, false},
    { 2, false, 6,     6,     8,     8,     Filtro::nao,    vazio,     false, vazio,   Termo::quociente, false, false, false},
    { 3, true,  6,     6,     8,     8,     Filtro::nao,    vazio,     false, vazio,   Termo::quociente, false, false, false},
    { 4, true,  8,     nunca, 8,     8,     Filtro::nao,    vazio,     false, vazio,   Termo::logaritmo, true,  false, false},
    { 5, true,  8,     nunca, 8,     8,     Filtro::nao,    vazio,     false, vazio,   Termo::quociente, false, false, false},
    { 6, false, nunca, nunca, 8,     10,    Filtro::nao,    vazio,     false, vazio,   Termo::logaritmo, true,  false, true},
    { 7, false, nunca, nunca, 8,     10,    Filtro::sete,   vazio,     true,  vazio,   Termo::logaritmo, true,  true,  false},
    { 8, false, nunca, nunca, 10,    12,    Filtro::nao,    vazio,     false, vazio,   Termo::logaritmo, true,  false, true},
    { 9, false, nunca, nunca, 10,    12,    Filtro::geral,  {9, 9},    true,  vazio,   Termo::logaritmo, true,  true,  false},
    {10, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, {9, 9},  Termo::logaritmo, true,  false, true},
    {11, false, nunca, nunca, nunca, nunca, Filtro::geral,  {9, 11},   true,  {9, 9},  Termo::logaritmo, true,  true,  false},
    {12, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, ate(11), Termo::logaritmo, true,  false, true},
    {13, false, nunca, nunca, nunca, nunca, Filtro::geral,  {11, 13},  true,  ate(11), Termo::logaritmo, true,  true,  false},
    {14, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, ate(13), Termo::logaritmo, true,  false, true},
    {15, false, nunca, nunca, nunca, nunca, Filtro::geral,  {13, 15},  true,  ate(13), Termo::logaritmo, true,  true,  false},
    {16, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, ate(15), Termo::logaritmo, true,  false, true},
    {17, false, nunca, nunca, nunca, nunca, Filtro::geral,  {15, 17},  true,  ate(15), Termo::logaritmo, true,  true,  false},
    {18, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, ate(17), Termo::logaritmo, true,  false, true},
    {19, false, nunca, nunca, nunca, nunca, Filtro::geral,  {17, 19},  true,  ate(17), Termo::logaritmo, true,  true,  false},
    {20, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, ate(19), Termo::logaritmo, true,  false, true},
    {21, false, nunca, nunca, nunca, nunca, Filtro::geral,  {19, 21},  true,  ate(19), Termo::logaritmo, true,  true,  false},
    {22, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, ate(21), Termo::logaritmo, true,  false, true},
    {23, false, nunca, nunca, nunca, nunca, Filtro::ultimo, vazio,     false, ate(21), Termo::logaritmo, true,  true,  false},
    {24, false, nunca, nunca, nunca, nunca, Filtro::nao,    vazio,     false, vazio,   Termo::logaritmo, true,  false, false},
}};
// clang-format on

static_assert(
    [] {
      for (std::size_t i = 0; i < cronograma.size(); ++i)
        if (cronograma[i].N != static_cast<int>(i)) return false;
      return true;
    }(),
    "each row stands at its ply");

// Plies whose nodes count their siblings and may be searched shorter.
constexpr bool reduz(int N) {
  return cronograma[static_cast<std::size_t>(N)].tarde != nunca;
}

// Mate at ply N, score units: two plies share a step.
constexpr float valor_do_mate(int N) {
  return static_cast<float>(16500 - 550 * (N + N % 2));
}

// Mark of a castling made at ply N (0: the root): earlier is worth more.
constexpr int valor_do_roque_em(int N) {
  return N <= 1 ? 10 : N >= 16 ? 2 : 10 - N / 2;
}

}  // namespace korvu
