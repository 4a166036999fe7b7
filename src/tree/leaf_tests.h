// Where a line ends, and what its end is worth.
#pragma once

#include "eval/knobs.h"
#include "eval/leaf.h"
#include "tree/bounds.h"
#include "tree/indifference.h"
#include "tree/phases.h"
#include "tree/restore.h"

namespace korvu {

// The side that moves at the root, of the node at ply N entered after a move of `cor`.
template <int N, Cor cor>
constexpr Cor raiz_de = par(N) ? outra(cor) : cor;

// Is the side to move attacked? tab2 holds the node's position.
template <Cor cor>
bool em_xeque() {
  verifica_rei<outra(cor)>();
  return Y;
}

// The same after a search may have left another position in tab2.
template <int N, Cor cor>
bool em_xeque_no_no(int x1, int y1, int x2, int y2) {
  init_tabuleiro2_deep<N - 1, cor>(x1, y1, x2, y2);
  return em_xeque<cor>();
}

struct TotaisDaRaiz {
  float raiz, outro;
};

// Root side's and other side's total after the incoming move; reads promocao and ppassado.
template <int N, Cor cor>
TotaisDaRaiz totais_da_raiz(int x2, int y2) {
  const Totais t = totais_apos<N - 1, cor>(x2, y2);
  if constexpr (raiz_de<N, cor> == cor)
    return {t.proprio, t.outro};
  else
    return {t.outro, t.proprio};
}

template <int N>
float valor_estatico(const TotaisDaRaiz& t) {
  if (!extradef) return diferenca(t.raiz, t.outro);
  return cronograma[N].termo == Termo::logaritmo ? com_logaritmo(t.raiz, t.outro)
                                                 : com_quociente(t.raiz, t.outro);
}

// The lazy gate: is the static value within the correction's budget of every bound above?
template <int N>
bool perto_da_janela(float v) {
  const auto margem = static_cast<float>(piecesac);
  if constexpr (par(N))
    return todos<N - 2>([=](float limite) { return v > limite - margem; });
  else
    return todos<N - 2>([=](float limite) { return v < limite + margem; });
}

// Gives a leaf of ply N a value that tells on which side of a bound it falls, if a correction
// within f cannot take it to the other.
template <int N>
bool decide_a_folha(float& v, const Faixa& f) {
  const float no_minimo = v + f.de, no_maximo = v + f.ate;
  if (passa<N>(no_minimo))
    v = no_minimo;
  else if (nao_chega<N>(no_maximo))
    v = no_maximo;
  else
    return false;
  return true;
}

// Are there more men at ply N than two on each side? A line takes one a ply at the most.
template <int N>
bool sobram_homens() {
  return npecasb + npecasp > N + 4;
}

// Gives the node of ply N its value as the end of a line. Where only the side of a bound matters on
// which it falls, that is what the value tells, and not where exactly.
template <int N, Cor cor>
void avalia_folha(int x2, int y2) {
  constexpr Cor raiz = raiz_de<N, cor>;
  float& v = valor<N>();
  v = valor_estatico<N>(totais_da_raiz<N, cor>(x2, y2));
  if constexpr (cronograma[N].extra) {
    if (!EXTRA_EVAL || !perto_da_janela<N>(v)) return;
    if (!folhas_exatas && longe_do_mate(v)) {
      if (sobram_homens<N>() && decide_a_folha<N>(v, faixa_inteira<raiz, outra(cor)>())) return;
      if (decide_a_folha<N>(v, faixa_do_extra<raiz, outra(cor)>())) return;
    }
    extra_eval<raiz, outra(cor)>();
    v += extraeval;
    if (EMPAT) v = static_cast<float>(emp);
  }
}

template <int N, Cor cor>
bool peao_ou_captura(int x1, int y1, int x2, int y2) {
  return tabd[N - 1][casa(x1, y1)] == Lado<cor>::peao || tabd[N - 1][casa(x2, y2)] != vazia;
}

// Does the line end at this node? `deep` is odd in play, so that the first test stops even plies;
// with an even one, odd plies from 11 on are searched on while in check. Beyond the nominal depth a
// line goes on only by captures, pawn moves and checks.
template <int N, Cor cor>
bool fim_da_linha(int x1, int y1, int x2, int y2) {
  constexpr bool xeque_continua = !par(N) && N >= 11;
  if (deep == N - 1 && (!xeque_continua || !em_xeque<cor>())) return true;
  if constexpr (!cronograma[N].quieto.existe())
    return false;
  else
    return cronograma[N].quieto.contem(DEEP) && !peao_ou_captura<N, cor>(x1, y1, x2, y2) &&
           !em_xeque<cor>();
}

}  // namespace korvu
