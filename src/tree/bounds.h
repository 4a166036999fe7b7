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

// The nearest value with which ply N refutes the line: the narrowest bound of the other parity, or
// the cap of the ply. It stands still while the loops of ply N run.
template <int N>
float limite_que_refuta() {
  float limite = mais_estreito<N - 1>();
  if constexpr (par(N)) {
    if (MAXcut[N] < limite) limite = MAXcut[N];
  } else {
    if (-MAXcut[N] > limite) limite = -MAXcut[N];
  }
  return limite;
}

// The value of ply N refutes the line, by that limit.
template <int N>
bool refuta(float limite) {
  return par(N) ? valor<N>() >= limite : valor<N>() <= limite;
}

}  // namespace korvu
