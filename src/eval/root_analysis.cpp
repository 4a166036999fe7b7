#include "eval/root_analysis.h"

#include "board/game_move.h"
#include "board/root_tables.h"
#include "eval/quotients.h"

namespace korvu {
namespace {

// The leaf's formula over tab, but with the material and the advance taken with the opposite sign:
// a side that has spent men, or stayed back, reads better.
template <Cor raiz>
float le_posicao(const Figuras& r, const Figuras& o) {
  const Estendido proprio = material_da_raiz<raiz>();
  const Estendido outro = material_da_raiz<outra(raiz)>();
  Estendido total = 0.1 * logaritmo((outro + 0.1) / (proprio + 0.1));
  total += defesa_do_rei(r, o);
  total += ataque_ao_rei(r, o);
  total += peso(r, o);
  total += mobilidade(r, o);
  total += densidade(r) - avanco(r) + avanco(o) - densidade(o);
  return arredonda(total);
}

}  // namespace

void init_tabuleiro() {
  joga_no_tabuleiro();
  analisa_tabuleiro();
  extraeval = 0;
  // Neither the root side nor the attacking one matters to the figures that are read here.
  const Varre<Varredura::raiz, Cor::b, Cor::b> v(tab);
  const Figuras& b = v.de<Cor::b>();
  const Figuras& p = v.de<Cor::p>();
  registra_somas(b, p);
  shashinn = joga_com_b ? le_posicao<Cor::b>(b, p) : le_posicao<Cor::p>(p, b);
  if (!deeppromo) PRe = '0';
}

}  // namespace korvu
