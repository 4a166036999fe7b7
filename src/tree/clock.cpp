#include "tree/clock.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "board/state.h"

namespace korvu {
namespace {

// The more men are left, the longer the game, the smaller a move's share of the clock.
int partes() {
  return (npecasb + npecasp) / Tu;
}

}  // namespace

int relogio_monotonico() {
  using namespace std::chrono;
  const auto agora = steady_clock::now().time_since_epoch();
  return static_cast<int>(static_cast<std::uint32_t>(duration_cast<milliseconds>(agora).count()));
}

int decorrido() {
  fim = relogio();
  const std::uint32_t ms = static_cast<std::uint32_t>(fim) - static_cast<std::uint32_t>(inicio);
  constexpr std::uint32_t maior = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(ms, maior));
}

int limite_brando() {
  return tempo / (10 * partes() + 50);
}

int limite_duro() {
  return tempo / (partes() + 5);
}

}  // namespace korvu
