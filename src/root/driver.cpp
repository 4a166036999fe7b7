#include "root/driver.h"

#include <cmath>

#include "board/state.h"
#include "eval/knobs.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "tree/clock.h"

namespace korvu {
namespace {

constexpr int profundidade_previa = 7;

enum class Passe { previo, so_o_melhor, os_outros };

void poe_passe(Passe p) {
  SCAN1 = p == Passe::so_o_melhor;
  SCANT = p == Passe::os_outros;
  roque_b = roque_p = 0;
}

template <Cor raiz>
void corre_passe() {
  DEEP = deep;
  percorre_escada<raiz>();
}

// The single-move pass searches against a window below the score so far, so that a best move that
// falls by less stays best.
void abaixa_janela() {
  const float margem = DEEP9 ? 1 : 10;
  ALFA0 = alfa0;
  EP = 0;
  alfa0 -= margem;
  E -= margem;
}

// Finds a first best move at a fixed depth, without repetition tests.
template <Cor raiz>
void passe_previo() {
  const int deepIID1 = deep;
  deep = profundidade_previa;
  pempatee = 0;
  poe_passe(Passe::previo);
  repoe_caps();
  corre_passe<raiz>();
  deep = deepIID1;
}

// While the root stands no worse than its material and the game is quiet, a draw becomes dearer.
template <Cor raiz>
void encarece_empate() {
  if (alfa0 >= materialflot0 - 5 + quociente_da_raiz<raiz>() && peca == 0) emp += 10;
}

template <Cor raiz>
void primeiro_passe_do_melhor() {
  curr = 0;
  if (HASHf) limpa_tabelas<raiz>();
  poe_passe(Passe::so_o_melhor);
  pempatee = 1;
  encarece_empate<raiz>();
  abaixa_janela();
  if (alfa0 >= limiar_de_mate) {  // a mate of the pre-pass is searched again with an open window
    ALFA0 = alfa0;
    alfa0 = -infinito;
    E = sem_melhor;
  }
  repoe_caps();
  corre_passe<raiz>();
}

template <Cor raiz>
void passe_dos_outros() {
  poe_passe(Passe::os_outros);
  repoe_caps();
  corre_passe<raiz>();
}

bool pode_seguir(int ultima) {
  return !corte_MAXcut && IIDS && EXTRA_EVAL && alfa0 < limiar_de_mate && deep >= 9 &&
         deep <= ultima;
}

bool pode_aprofundar() {
  if (!pode_seguir(21)) return false;
  if (deep + 1 >= deepp && deepp != 17) return false;
  return decorrido() <= limite_brando() || !TC;
}

template <Cor raiz>
void aprofunda() {
  curr = 0;
  poe_passe(Passe::so_o_melhor);
  abaixa_janela();
  deep += 2;
  repoe_caps();
  corre_passe<raiz>();
}

}  // namespace

template <Cor raiz>
void define_empate() {
  const Estendido valor = quociente_da_raiz<raiz>() + empp - 10;
  // While a side counts no material the quotient is no number to cut; any draw value will do.
  using std::isfinite;
  emp = isfinite(valor) ? static_cast<int>(valor) : empp - 10;
  emppp = emp;
}

void esquece_lances() {
  melhor = sem_lance;
  guardado.fill(sem_lance);
  guardado_g.fill(sem_lance);
}

template <Cor raiz>
void procura() {
  define_caps<raiz>();
  if (deep > 8) {
    passe_previo<raiz>();
    if (curr == 1) return;  // nothing to compare the only candidate with
    primeiro_passe_do_melhor<raiz>();
    if (corte_MAXcut) return;
  }
  passe_dos_outros<raiz>();
  while (pode_aprofundar()) {
    aprofunda<raiz>();
    if (!pode_seguir(23)) return;
    passe_dos_outros<raiz>();
  }
}

template void define_empate<Cor::b>();
template void define_empate<Cor::p>();
template void procura<Cor::b>();
template void procura<Cor::p>();

}  // namespace korvu
