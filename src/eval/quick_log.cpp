#include "eval/quick_log.h"

namespace korvu {

const Logaritmos ln_de_inteiros = [] {
  Logaritmos t{};
  for (std::size_t n = 1; n < t.size(); ++n)
    t[n] = static_cast<double>(std::log(static_cast<long double>(n)));
  return t;
}();

const Logaritmos ln_de_pesos = [] {
  Logaritmos t{};
  for (std::size_t n = 0; n < t.size(); ++n)
    t[n] = static_cast<double>(std::log(static_cast<long double>(n) + 10.1));
  return t;
}();

const std::array<Trecho, std::size_t{1} << digitos_do_trecho> trechos = [] {
  std::array<Trecho, std::size_t{1} << digitos_do_trecho> t{};
  for (std::size_t i = 0; i < t.size(); ++i) {
    const double meio = 1 + (static_cast<double>(i) + 0.5) / static_cast<double>(t.size());
    t[i] = {1 / meio, std::log(meio)};
  }
  return t;
}();

}  // namespace korvu
