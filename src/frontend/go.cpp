#include "frontend/go.h"

#include <array>
#include <optional>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/line.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace korvu {
namespace {

int homens() {
  return npecasb + npecasp;
}

void desliga_extras() {
  SEARCH_E = IIDS = EXTRA_EVAL = 0;
}

// Column of the first clock's first character, by the forms that are recognised: directly behind
// `go`, or behind a moves-to-go of one to three digits.
std::optional<std::size_t> coluna_do_relogio() {
  if (coluna(4) == 't') return 9;
  if (coluna(3) != 'm') return std::nullopt;
  for (const std::size_t digitos : {1U, 2U, 3U})
    if (coluna(15 + digitos) == 't') return 20 + digitos;
  return std::nullopt;
}

// Columns up to the blank behind the clock; 8 for eight or more.
int comprimento(std::size_t k) {
  for (std::size_t n = 1; n <= 7; ++n)
    if (coluna(k + n) == ' ') return static_cast<int>(n);
  return 8;
}

// A clock under ten seconds: so little that only the depth counts. With few men a little more.
struct RelogioCurto {
  int deep, deep_com_poucos, poucos;
};
constexpr RelogioCurto curtos[] = {
    {0, 0, 0}, {0, 1, 1}, {1, 3, 3}, {3, 5, 5}};  // by columns 1 to 4

void orca_curto(int colunas) {
  const RelogioCurto& c = curtos[colunas - 1];
  deep = homens() <= c.poucos ? c.deep_com_poucos : c.deep;
  desliga_extras();
}

// One test of the level ladder: at a clock of at most `relogio` the depth, and a greater one when
// at most so many men are left, by level. A later test overwrites the earlier.
struct DegrauDeNivel {
  int relogio, deep, deep_com_poucos;
  std::array<int, 4> poucos;  // extreme, high, medium, low
};
// clang-format off
constexpr std::array<int, 4> sem_extras_ate = {10000, 20000, 30000, 50000};
constexpr DegrauDeNivel niveis[] = {
    {90000, 7, 9, {15, 13, 11,  9}},
    {60000, 7, 9, {11,  9,  7,  5}},
    {30000, 5, 7, {17, 15, 13, 11}},
    {30000, 0, 9, { 7,  5,  3,  1}},  // 0: the depth of the test before stays
    {10000, 5, 7, { 9,  7,  5,  3}},
};
// clang-format on

std::optional<std::size_t> nivel() {
  switch (CPU) {
    case 5:
      return 0;
    case 1:
      return 1;
    case 2:
      return 2;
    case 3:
      return 3;
    default:
      return std::nullopt;
  }
}

void escada_de_nivel() {
  const auto n = nivel();
  if (!n) return;
  if (tempo <= sem_extras_ate[*n]) desliga_extras();
  for (const DegrauDeNivel& g : niveis) {
    if (tempo > g.relogio) continue;
    if (g.deep != 0) deep = g.deep;
    if (homens() <= g.poucos[*n]) deep = g.deep_com_poucos;
  }
}

void orca_longo(int colunas, int primeiro) {
  constexpr int unidades[] = {10000, 100000, 1000000};  // by columns 5 to 7
  if (colunas >= 8)
    tempo = 10000000;
  else if (primeiro >= '1' && primeiro <= '9')
    tempo = (primeiro - '0') * unidades[colunas - 5];
  escada_de_nivel();
}

}  // namespace

template <Cor raiz>
void prepara_busca() {
  if (HASHf) limpa_tabelas<raiz>();
  nodes = 0;
  define_empate<raiz>();
  if (deep > 8) deep = 9;
  DEEP9 = homens() > 25;
  Positive_filter = Positive_filterp;
  Negative_filter = Negative_filterp;
  EXTRA_EVAL = EXTRA_EVALL;
  tempo = 300000;
}

void le_relogio() {
  const auto k = coluna_do_relogio();
  if (!k || coluna(*k) == ' ') return;
  const int colunas = comprimento(*k);
  if (colunas <= 4)
    orca_curto(colunas);
  else
    orca_longo(colunas, coluna(*k));
}

template void prepara_busca<Cor::b>();
template void prepara_busca<Cor::p>();

}  // namespace korvu
