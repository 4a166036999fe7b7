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

}  // namespace korvu
