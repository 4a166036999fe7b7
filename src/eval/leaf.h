// The value of a leaf: material, and the correction that a scan of the board gives.
#pragma once

#include <algorithm>

#include "board/state.h"
#include "eval/knobs.h"

namespace korvu {

// Root side's total against the other's, score units: the difference, and with `extradef` one of
// two quotient terms. Computed in extended precision and rounded once.
float diferenca(float raiz, float outro);
float com_quociente(float raiz, float outro);  // + raiz / outro
float com_logaritmo(float raiz, float outro);  // + MQ x ln(raiz / outro), whatever extradef says

// The correction of the position on tab2 for a search of `raiz`, with `ataca` to move; in its
// budget of plus or minus piecesac. Writes extraeval, EMPAT and the slots of the sums. Kings are
// taken where the last legality tests left them.
//   extra_eval_b:  <b, b>    extra_eval_p:  <p, p>  (these also raise ddep to deep)
//   extra_evall_b: <b, p>    extra_evall_p: <p, b>
template <Cor raiz, Cor ataca>
void extra_eval();

struct Faixa {
  float de, ate;
};
// Bounds of that correction, score units, from an estimate far cheaper than the correction itself.
// Writes EMPAT, and ddep as extra_eval does; not extraeval. A draw by lack of material has no
// correction: the bounds are then infinite.
template <Cor raiz, Cor ataca>
Faixa faixa_do_extra();

// The correction's whole budget, without a look at the board: its bounds wherever nobody lacks
// material, as with more than two men on one side. Writes ddep as the others do.
template <Cor raiz, Cor ataca>
Faixa faixa_inteira() {
  if (raiz == ataca) ddep = std::max(ddep, deep);
  const auto limite = static_cast<float>(piecesac);
  return {-limite, limite};
}

extern template void extra_eval<Cor::b, Cor::b>();
extern template void extra_eval<Cor::b, Cor::p>();
extern template void extra_eval<Cor::p, Cor::b>();
extern template void extra_eval<Cor::p, Cor::p>();
extern template Faixa faixa_do_extra<Cor::b, Cor::b>();
extern template Faixa faixa_do_extra<Cor::b, Cor::p>();
extern template Faixa faixa_do_extra<Cor::p, Cor::b>();
extern template Faixa faixa_do_extra<Cor::p, Cor::p>();

}  // namespace korvu
