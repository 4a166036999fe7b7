// The selective steps of odd plies from 7: vertical filter, extension and clock.
#pragma once

#include "tree/clock.h"
#include "tree/knobs.h"
#include "tree/leaf_tests.h"

namespace korvu {

// w, the static value before the replies, lies clearly below a bound of the root side.
template <int N>
bool abaixo_da_janela(float w) {
  return algum<N - 1>([w](float limite) { return w <= limite - 10; });
}

// The root stands well enough to look less far where a line falls behind.
inline bool raiz_folgada() {
  return alfa0 >= 15 || (alfa0 >= ALFA0 - 5 && alfa0 >= -15);
}

// Ply 7. True when the node has its value; may also tell the parent to stop, which it does
// when the loop of the present square is done.
template <int N, Cor cor>
bool filtro_de_sete(float w, int x1, int y1, int x2, int y2) {
  if (deep == N) {
    if (algum<N - 1>([w](float limite) { return w <= limite - 10 && limite < limiar_de_mate; }))
      corte<N - 1>() = 1;
    return false;
  }
  const bool captura = tabd[N - 1][casa(x2, y2)] != vazia;
  return deep == N + 2 && !captura && promocao == 0 && abaixo_da_janela<N>(w) &&
         !em_xeque_no_no<N, cor>(x1, y1, x2, y2);
}

// Plies 9 to 21. True when the node has its value; may shorten the line.
template <int N, Cor cor>
bool filtro_geral(float w, int x1, int y1, int x2, int y2) {
  if (deep == N) return abaixo_da_janela<N>(w) && !em_xeque_no_no<N, cor>(x1, y1, x2, y2);
  if (deep == N + 2 && raiz_folgada() && abaixo_da_janela<N>(w)) deep = N;
  return false;
}

// The vertical filter of ply N; true when the node has taken w as its value. The totals of ply N
// are up to date.
template <int N, Cor cor>
bool filtro_vertical(int x1, int y1, int x2, int y2) {
  constexpr Cor raiz = raiz_de<N, cor>;
  if (!VERTICAL_filt) return false;
  const float w = com_logaritmo(material<raiz>(N), material<outra(raiz)>(N));
  bool decidido = false;
  if constexpr (cronograma[N].filtro == Filtro::sete)
    decidido = filtro_de_sete<N, cor>(w, x1, y1, x2, y2);
  else if constexpr (cronograma[N].filtro == Filtro::geral)
    decidido = filtro_geral<N, cor>(w, x1, y1, x2, y2);
  else if (abaixo_da_janela<N>(w))
    corte<N - 1>() = 1;
  if (decidido) valor<N>() = w;
  return decidido;
}

// A second search of a root move goes two plies further here while the soft limit allows.
template <int N>
void estende() {
  if (SEARCH_E && LMRtest && deep == N && SCANT && cronograma[N].extensao.contem(DEEP) &&
      decorrido() <= limite_brando() && CPU != 0)
    deep = N + 2;
}

// Past the hard limit the pass is over; true when the node leaves at once. A line that sees itself
// mated is finished at this depth instead.
template <int N>
bool fora_de_tempo() {
  if (!TC || deep <= N + 1 || decorrido() < limite_duro()) return false;
  deep = N;
  corte_MAXcut = 1;
  if (alfa[N - 1] <= -limiar_de_mate) return false;
  corte<N - 1>() = 1;
  beta[N] = alfa[N - 1];
  return true;
}

// The three in order; true when the node has its value and leaves.
template <int N, Cor cor>
bool decide_antes(int x1, int y1, int x2, int y2) {
  if constexpr (cronograma[N].filtro != Filtro::nao)
    if (filtro_vertical<N, cor>(x1, y1, x2, y2)) return true;
  if constexpr (cronograma[N].extensao.existe()) estende<N>();
  if constexpr (cronograma[N].relogio)
    if (fora_de_tempo<N>()) return true;
  return false;
}

}  // namespace korvu
