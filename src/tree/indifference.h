// Which leaves need no exact value. A value is only ever compared with bounds of the line, so one
// that lies beyond a bound does as well as any other beyond it: the nodes on the way up are refuted
// or left as they are, whatever it is. Three things stop that on the way: a cap, which is a bound
// of its own; the table of a ply, which writes the value down for other lines; and a mate as the
// bound, which ply 7's vertical filter passes over for the lesser ones below it.
#pragma once

#include <cmath>

#include "eval/knobs.h"
#include "tree/bounds.h"

namespace korvu {

// Every leaf gets its exact value all the same. For tests that compare whole searches.
inline bool folhas_exatas = false;

// A value that no correction makes a mate: on the way up a mate is told from any other value.
inline bool longe_do_mate(float v) {
  return std::abs(v) < limiar_de_mate - static_cast<float>(piecesac) - 1;
}

// Nodes of plies 4 and 5 that will be written down when they are done.
inline int registros_a_fazer = 0;

// May the value of a leaf pass the nodes below ply K unseen?
template <int K>
bool sem_registro_abaixo() {
  return K >= 5 || (K >= 3 && registros_a_fazer == 0);
}

// A leaf of ply N whose value lies on v's side of a bound, or beyond v: is it no gain at ply K or
// at one of the plies of the same parity above, and none of the nodes on the way ended by a cap?
template <int N, int K>
bool nada_muda(float v) {
  if constexpr (K < 3)
    return false;
  else {
    constexpr bool primeira = K >= N - 2;
    if (!sem_registro_abaixo<K>()) return false;
    if (par(K) ? v <= valor<K>() : v >= valor<K>())
      return primeira || !par(K) || valor<K>() < limiar_de_mate;
    const bool aquem_do_teto = par(K) ? v < MAXcut[K] : v > -MAXcut[K];
    return aquem_do_teto && nada_muda<N, K - 2>(v);
  }
}

// Is a value of this much at most no gain for the root side?
template <int N>
bool nao_chega(float no_maximo) {
  return nada_muda < N, par(N) ? N - 2 : N - 1 > (no_maximo);
}
// Is a value of this much at least no gain for the other side?
template <int N>
bool passa(float no_minimo) {
  return nada_muda < N, par(N) ? N - 1 : N - 2 > (no_minimo);
}

}  // namespace korvu
