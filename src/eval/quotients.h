// The logarithms of quotients that every formula of the evaluation is built from. All in extended
// precision; the caller rounds the whole sum once.
#pragma once

#include <cmath>

#include "eval/extended.h"
#include "eval/figures.h"

namespace korvu {

inline Estendido logaritmo(Estendido x) {
  using std::log;
  return log(x);
}

// The sum rounded once. A sum that is no number counts as nothing: a leaf always has a value.
inline float arredonda(Estendido total) {
  using std::isnan;
  return isnan(total) ? 0.0F : static_cast<float>(total);
}

// raiz / outro as a logarithm, with `base` added to both: counts then are never 0. A positional sum
// may still be, or lie below it (agres 0 makes pawn attacks a loss); that gives no number.
inline Estendido quociente(Estendido raiz, Estendido outro, Estendido base) {
  return logaritmo((raiz + base) / (outro + base));
}

// Safety of the own king, danger of the other's: defence against attack of the reached squares.
inline Estendido defesa_do_rei(const Figuras& dono, const Figuras& atacante) {
  return 5 * logaritmo((static_cast<Estendido>(dono.kdefend) + dono.shield + 3) /
                       (static_cast<Estendido>(atacante.kattack) + 3));
}
inline Estendido ataque_ao_rei(const Figuras& atacante, const Figuras& dono) {
  return 5 * logaritmo((static_cast<Estendido>(atacante.kattack) + 3) /
                       (static_cast<Estendido>(dono.kdefend) + dono.shield + 3));
}

// Officers' weight, at weight two.
inline Estendido peso(const Figuras& raiz, const Figuras& outro) {
  return 2 * quociente(raiz.weight, outro.weight, 10.1);
}

inline Estendido mobilidade(const Figuras& raiz, const Figuras& outro) {
  return MOB * quociente(raiz.mob, outro.mob, 3);
}

inline Estendido posicao(const Figuras& raiz, const Figuras& outro) {
  return PM * quociente(static_cast<Estendido>(raiz.pos) + raiz.cen,
                        static_cast<Estendido>(outro.pos) + outro.cen, 10.1);
}

// The castling marks' quotient; absent when neither side castled on the line.
template <Cor raiz>
Estendido valor_do_roque() {
  if (roque_b == 0 && roque_p == 0) return 0;
  return roque_v * quociente(roque<raiz>(), roque<outra(raiz)>(), 3);
}

// Attack against defence, weighted by the root's assessment. The other side's figure is added too,
// not subtracted, at a tenth of the weight: lively positions count for both.
inline Estendido ataque_por_defesa(const Figuras& raiz, const Figuras& outro) {
  const Estendido peso_da_raiz = shashinn;
  return peso_da_raiz * 0.01 * quociente(raiz.att, raiz.def, 3) +
         peso_da_raiz * 0.001 * quociente(outro.att, outro.def, 3);
}

// Leaves the sums of a scan in their slots.
inline void registra_somas(const Figuras& branco, const Figuras& preto) {
  atack_ksf_b = branco.kattack;
  defesa_ksf_b = branco.kdefend;
  centro_b = branco.cen;
  atack_ksf_p = preto.kattack;
  defesa_ksf_p = preto.kdefend;
  centro_p = preto.cen;
}

}  // namespace korvu
