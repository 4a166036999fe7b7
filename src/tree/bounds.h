// Values, cut flags and the comparisons with all ancestors. There are no window arguments: a node
// reads the slots of every ply above it.
#pragma once

#include <algorithm>

#include "board/state.h"

namespace korvu {

constexpr bool par(int N) {
  return N % 2 == 0;
}

// alfaN at even plies, betaN at odd ones.
template <int N>
float& valor() {
  return (par(N) ? alfa : beta)[N];
}

template <int N>
constexpr float valor_inicial = par(N) ? -infinito : infinito;

// The cut flag of the node at ply N; it bears the number of the parent's ply.
template <int N>
std::uint8_t& corte() {
  return (par(N) ? corte_beta : corte_alfa)[N - 1];
}

// True when test(value) holds for any of the slots of plies K, K - 2, ... down to 0 or 1.
template <int K, class F>
bool algum(F test) {
  if constexpr (K < 0)
    return false;
  else
    return test(valor<K>()) || algum<K - 2>(test);
}

// True when it holds for all of them.
template <int K, class F>
bool todos(F test) {
  return !algum<K>([&](float v) { return !test(v); });
}

// The narrowest bound of plies K, K - 2 ...: the greatest alfa, the least beta.
template <int K>
float mais_estreito() {
  if constexpr (K < 2)
    return valor<K>();
  else if constexpr (par(K))
    return std::max(valor<K>(), mais_estreito<K - 2>());
  else
    return std::min(valor<K>(), mais_estreito<K - 2>());
}

// Does the value of ply N, improved by a reply v, take it? Equal values keep the earlier move.
template <int N>
bool melhora(float v) {
  return par(N) ? v > valor<N>() : valor<N>() > v;
}

// The value of ply N refutes the line: it meets a bound of the other parity or the cap of the ply.
template <int N>
bool refuta() {
  const float v = valor<N>();
  if constexpr (par(N))
    return algum<N - 1>([v](float limite) { return v >= limite; }) || v >= MAXcut[N];
  else
    return algum<N - 1>([v](float limite) { return v <= limite; }) || -MAXcut[N] >= v;
}

}  // namespace korvu
