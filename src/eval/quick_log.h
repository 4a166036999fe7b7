// Sums of logarithms in double precision, with a test that tells whether the sum in extended
// precision would round to the same float. Only where it might not is the slow sum needed.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

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

// The interval [1, 2) in 128 parts: the inverse of each one's middle, and its logarithm.
struct Trecho {
  double inverso, ln;
};
inline constexpr int digitos_do_trecho = 7;
extern const std::array<Trecho, std::size_t{1} << digitos_do_trecho> trechos;

// ln x for an estimate, within 3e-8 for any normal x above 0: the part's logarithm, and two terms
// of the series for the rest, which is below 2^-8.
inline double ln_aproximado(double x) {
  constexpr int digitos = 52;
  constexpr std::uint64_t fracao = (std::uint64_t{1} << digitos) - 1;
  const auto bits = std::bit_cast<std::uint64_t>(x);
  const double expoente = static_cast<int>(bits >> digitos) - 1023;
  const Trecho& t = trechos[(bits & fracao) >> (digitos - digitos_do_trecho)];
  const auto m = std::bit_cast<double>((bits & fracao) | std::bit_cast<std::uint64_t>(1.0));
  const double r = m * t.inverso - 1;
  constexpr double ln_2 = 0.69314718055994530942;
  return expoente * ln_2 + t.ln + (r - 0.5 * r * r);
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
