// Sums of logarithms in double precision, with a test that tells whether the sum in extended
// precision would round to the same float. Only where it might not is the slow sum needed.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace korvu {

// Logarithms of the counts that quotients are made of.
inline constexpr std::size_t logaritmos_tabulados = 2048;
using Logaritmos = std::array<double, logaritmos_tabulados>;
extern const Logaritmos ln_de_inteiros;  // [n]: ln n, from 1
extern const Logaritmos ln_de_pesos;     // [n]: ln(n + 10.1)

inline double ln_inteiro(int n) {
  const auto i = static_cast<std::size_t>(n);
  return i - 1 < logaritmos_tabulados - 1 ? ln_de_inteiros[i] : std::log(static_cast<double>(n));
}
inline double ln_do_peso(int n) {
  const auto i = static_cast<std::size_t>(n);
  return i < logaritmos_tabulados ? ln_de_pesos[i] : std::log(n + 10.1);
}

// Totals of material are whole numbers in play; no table holds the others.
inline bool ha_ln_do_total(float total) {
  return total >= 1 && total < static_cast<float>(logaritmos_tabulados) &&
         total == static_cast<float>(static_cast<int>(total));
}
inline double ln_do_total(float total) {
  return ln_de_inteiros[static_cast<std::size_t>(total)];
}

// A sum of a dozen terms, each below 1000 and within some units in the last place of a double, is
// wrong by less than 12 x 1000 x 2^-50, about 1e-11. A score unit is a tenth of a pawn.
inline constexpr double margem_da_soma = 1e-10;

// Rounds a sum that is known to within margem_da_soma. False when its float is not certain, a sum
// next to 0 or no number included.
inline bool arredonda_com_certeza(double soma, float& resultado) {
  resultado = static_cast<float>(soma - margem_da_soma);
  return resultado == static_cast<float>(soma + margem_da_soma) && resultado != 0;
}

}  // namespace korvu
