// Which leaves need no exact value. A value is only ever compared with bounds of the line, so one
// that lies beyond a bound does as well as any other beyond it: the nodes on the way up are refuted
// or left as they are, whatever it is. Three things stop that on the way: a cap, which is a bound
// of its own; the table of a ply, which writes the value down for other lines; and a mate as the
// bound, which ply 7's vertical filter passes over for the lesser ones below it.
#pragma once

#include "tree/bounds.h"

namespace korvu {

// Every leaf gets its exact value all the same. For tests that compare whole searches.
inline bool folhas_exatas = false;

// Nodes of plies 4 and 5 that will be written down when they are done.
inline int registros_a_fazer = 0;

// May the value of a leaf pass the nodes below ply K unseen?
template <int K>
bool sem_registro_abaixo() {
  return K >= 5 || (K >= 3 && registros_a_fazer == 0);
}

// A leaf of ply N with at most this value: is it no gain for the root side at ply K or at one of
// the even plies above, and none of the nodes on the way ended by a cap? K: the first even ply
// above N to look at.
template <int N, int K = par(N) ? N - 2 : N - 1>
bool nao_chega(float no_maximo) {
  if constexpr (K < 4)
    return false;
  else {
    if (!sem_registro_abaixo<K>()) return false;
    constexpr bool primeira = K >= N - 2;
    if (no_maximo <= alfa[K]) return primeira || alfa[K] < limiar_de_mate;
    return no_maximo < MAXcut[K] && nao_chega<N, K - 2>(no_maximo);
  }
}

// The same for the other side and the odd plies.
template <int N, int K = par(N) ? N - 1 : N - 2>
bool passa(float no_minimo) {
  if constexpr (K < 3)
    return false;
  else {
    if (!sem_registro_abaixo<K>()) return false;
    if (no_minimo >= beta[K]) return true;
    return no_minimo > -MAXcut[K] && passa<N, K - 2>(no_minimo);
  }
}

}  // namespace korvu
