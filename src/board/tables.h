// The fixed square tables, all 64 entries, index 8 * file + rank. Score units.
#pragma once

#include "board/types.h"

namespace korvu {

using TabelaInt = std::array<int, 64>;
using TabelaFloat = std::array<float, 64>;

template <class T, class F>
constexpr std::array<T, 64> tabela(F f) {
  std::array<T, 64> t{};
  for (int x = 0; x < 8; ++x)
    for (int y = 0; y < 8; ++y) t[casa(x, y)] = static_cast<T>(f(x, y));
  return t;
}

constexpr int quadrado(int v) {
  return v * v;
}

// Squared distance between two squares plus 2: the divisor of every proximity term, never 0.
constexpr int divisor(int x1, int y1, int x2, int y2) {
  return quadrado(x1 - x2) + quadrado(y1 - y2) + 2;
}

// altura / divisor to (cx, cy), in integers.
constexpr TabelaInt colina(int altura, int cx, int cy) {
  return tabela<int>([=](int x, int y) { return altura / divisor(x, y, cx, cy); });
}

constexpr double do_centro(int x, int y) {
  return (x - 3.5) * (x - 3.5) + (y - 3.5) * (y - 3.5) + 2;
}

inline constexpr TabelaFloat centro =
    tabela<float>([](int x, int y) { return 1 / do_centro(x, y); });
inline constexpr TabelaFloat centroo =
    tabela<float>([](int x, int y) { return 50 / do_centro(x, y); });
inline constexpr TabelaFloat promo_b =
    tabela<float>([](int, int y) { return 1.0 / (2 * quadrado(y - 7) + 2); });
inline constexpr TabelaFloat promo_p =
    tabela<float>([](int, int y) { return 1.0 / (2 * quadrado(y) + 2); });

inline constexpr TabelaInt posix_b_peao_inici = colina(10, 4, 3);
inline constexpr TabelaInt posix_b_peao_medio =
    tabela<int>([](int, int y) { return 50 / (2 * quadrado(y - 7) + 2); });
inline constexpr TabelaInt posix_b_cavalo = colina(10, 4, 4);
inline constexpr TabelaInt posix_b_bispo = colina(10, 3, 4);
inline constexpr TabelaInt posix_b_torre{};
inline constexpr TabelaInt posix_b_dama = colina(10, 4, 5);
inline constexpr TabelaInt posix_b_reifinal = colina(500, 4, 3);

inline constexpr TabelaInt posix_p_peao_inici = colina(10, 4, 4);
inline constexpr TabelaInt posix_p_peao_medio =
    tabela<int>([](int, int y) { return 50 / (2 * quadrado(y) + 2); });
inline constexpr TabelaInt posix_p_cavalo = colina(10, 4, 3);
inline constexpr TabelaInt posix_p_bispo = colina(10, 3, 3);
inline constexpr TabelaInt posix_p_torre{};
inline constexpr TabelaInt posix_p_dama = colina(10, 4, 2);
inline constexpr TabelaInt posix_p_reifinal = colina(500, 4, 4);

// clang-format off
// index: rank; `beira` for files a and h, `centro` for b to g
inline constexpr std::array<int, 8> peao_b_final_beira  = {  0,  0, 20, 20, 20, 25, 30, 100};
inline constexpr std::array<int, 8> peao_b_final_centro = {  0,  0, 25, 25, 25, 30, 35, 100};
inline constexpr std::array<int, 8> peao_p_final_beira  = {100, 30, 25, 20, 20, 20,  0,   0};
inline constexpr std::array<int, 8> peao_p_final_centro = {100, 35, 30, 25, 25, 25,  0,   0};
// clang-format on

constexpr TabelaInt por_fila(const std::array<int, 8>& beira, const std::array<int, 8>& meio) {
  return tabela<int>(
      [&](int x, int y) { return (x == 0 || x == 7 ? beira : meio)[static_cast<std::size_t>(y)]; });
}

inline constexpr TabelaInt posix_b_peao_final = por_fila(peao_b_final_beira, peao_b_final_centro);
inline constexpr TabelaInt posix_p_peao_final = por_fila(peao_p_final_beira, peao_p_final_centro);

// One colour's set of tables.
struct Posix {
  const TabelaInt &peao_inici, &peao_medio, &peao_final, &cavalo, &bispo, &torre, &dama, &reifinal;
};

template <Cor cor>
inline constexpr Posix posix =
    cor == Cor::b
        ? Posix{posix_b_peao_inici, posix_b_peao_medio, posix_b_peao_final, posix_b_cavalo,
                posix_b_bispo,      posix_b_torre,      posix_b_dama,       posix_b_reifinal}
        : Posix{posix_p_peao_inici, posix_p_peao_medio, posix_p_peao_final, posix_p_cavalo,
                posix_p_bispo,      posix_p_torre,      posix_p_dama,       posix_p_reifinal};

template <Cor cor>
inline constexpr const TabelaFloat& promo = cor == Cor::b ? promo_b : promo_p;

}  // namespace korvu
