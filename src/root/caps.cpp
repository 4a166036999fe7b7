#include "root/caps.h"

#include "board/state.h"
#include "eval/knobs.h"
#include "eval/quotients.h"
#include "tree/schedule.h"

namespace korvu {
namespace {

struct Plies {
  std::size_t de, ate;  // by steps of 2
};
// W caps what the root side may gain, V what the other side may gain.
constexpr Plies W = {6, 16}, V = {5, 17};
constexpr Plies pares = {0, 16}, impares = {1, 17}, pares_sem_raiz = {2, 16};

void poe(Plies plies, Estendido limite) {
  for (std::size_t n = plies.de; n <= plies.ate; n += 2) MAXcut[n] = static_cast<float>(limite);
}

void poe_mate(Plies plies) {
  for (std::size_t n = plies.de; n <= plies.ate; n += 2)
    MAXcut[n] = degrau_do_mate(static_cast<int>(n));
}

// Too few men to win by force against a lone king.
template <Cor cor>
bool so() {
  const float total = material_da_raiz<cor>();
  const int homens = npecas<cor>();
  return total == 110 || ((total == 142 || total == 143) && homens == 1) ||
         (total == 174 && homens == 2);
}

// What the root side expects: a capture just made against it, the balance and the quotient.
template <Cor raiz>
struct Esperado {
  const Estendido L = quociente_da_raiz<raiz>();
  const Estendido ganho =
      (raiz == Cor::b ? peca : -peca) + static_cast<Estendido>(materialflot0) + L;
  const Estendido perda = -static_cast<Estendido>(materialflot0) - L;
};

template <Cor raiz>
void positivo_1(const Esperado<raiz>& e) {
  poe_mate({0, 4});
  poe(W, positfilter + e.ganho);
}

template <Cor raiz>
void positivo_2(const Esperado<raiz>& e) {
  constexpr Cor outro = outra(raiz);
  if (materialflot0 <= -33)
    poe(W, 1100);
  else
    poe(W, (materialflot0 < 50 ? 100 : 90) + e.ganho);
  if (so<outro>()) {
    poe_mate(pares);
    if (material_da_raiz<outro>() == 110 && material_da_raiz<raiz>() >= 160) poe(W, 1100);
  }
  if (so<raiz>()) poe(pares_sem_raiz, 90 + e.ganho);
}

// The only scheme that caps the root itself: with many men any gain of this size ends the scans.
template <Cor raiz>
void positivo_3(const Esperado<raiz>& e) {
  if (npecasb + npecasp > 20) MAXcut[0] = static_cast<float>(33 + e.ganho);
  const int margem = materialflot0 <= -33 ? 50
                     : materialflot0 < 50 ? 32
                     : materialflot0 < 90 ? 33
                                          : 10;
  poe(W, margem + e.ganho);
  if (so<raiz>()) poe(pares, 50 + e.ganho);
}

template <Cor raiz>
void negativo_1(const Esperado<raiz>& e) {
  poe_mate({1, 3});
  poe(V, negatfilter + e.perda);
}

template <Cor raiz>
void lados_sos_do_negativo(const Esperado<raiz>& e) {
  if (so<outra(raiz)>()) poe(impares, 33 + e.perda);
  if (so<raiz>()) poe_mate(impares);
}

template <Cor raiz>
void negativo_2(const Esperado<raiz>& e) {
  if (materialflot0 <= -33)
    poe(V, 1100);
  else
    poe(V, (materialflot0 < 50 ? 100 : 90) + e.perda);
  lados_sos_do_negativo(e);
}

template <Cor raiz>
void negativo_3(const Esperado<raiz>& e) {
  const int margem = materialflot0 <= -33 ? 90
                     : materialflot0 < 50 ? 50
                     : materialflot0 < 90 ? 32
                                          : 33;
  poe(V, margem + e.perda);
  lados_sos_do_negativo(e);
}

}  // namespace

float degrau_do_mate(int N) {
  return valor_do_mate(N + 1);
}

void caps_de_mate() {
  for (std::size_t n = 0; n < MAXcut.size(); ++n) MAXcut[n] = degrau_do_mate(static_cast<int>(n));
}

template <Cor raiz>
Estendido quociente_da_raiz() {
  return MQ * logaritmo(static_cast<Estendido>(material_da_raiz<raiz>()) /
                        material_da_raiz<outra(raiz)>());
}

template <Cor raiz>
void define_caps() {
  const Esperado<raiz> e;
  if (Positive_filter == 1) positivo_1(e);
  if (Negative_filter == 1) negativo_1(e);
  if (Positive_filter != 1) poe_mate(pares);
  if (Negative_filter != 1) poe_mate(impares);
  if (Positive_filter == 2) positivo_2(e);
  if (Positive_filter == 3) positivo_3(e);
  if (Negative_filter == 2) negativo_2(e);
  if (Negative_filter == 3) negativo_3(e);
  for (const std::size_t n : {18U, 20U, 22U}) MAXcut[n] = MAXcut[16];
  for (const std::size_t n : {19U, 21U, 23U}) MAXcut[n] = MAXcut[17];
  MAXcutt = MAXcut;
}

void repoe_caps() {
  MAXcut = MAXcutt;
}

template Estendido quociente_da_raiz<Cor::b>();
template Estendido quociente_da_raiz<Cor::p>();
template void define_caps<Cor::b>();
template void define_caps<Cor::p>();

}  // namespace korvu
