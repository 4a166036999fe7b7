#include "root/first_ply.h"

#include "root/caps.h"
#include "root/first_ply_moves.h"
#include "tree/knobs.h"
#include "tree/node_body.h"
#include "tree/restore.h"

namespace korvu {
namespace {

constexpr float sem_valor = -infinito;  // alfa0 or ALFA0 before a first score exists

// --- Caps of the even plies ---

template <class F>
void caps_pares(F f) {
  for (std::size_t n = 2; n < MAXcut.size(); n += 2) f(n);
}

void rebaixa_caps(float limite) {
  caps_pares([=](std::size_t n) { MAXcut[n] = std::min(MAXcut[n], limite); });
}

void refaz_caps(float limite) {
  caps_pares([](std::size_t n) { MAXcut[n] = MAXcutt[n]; });
  rebaixa_caps(limite);
}

// The best score so far is not clearly worse than that of the previous depth.
bool mantida() {
  return alfa0 >= 5 || (alfa0 >= ALFA0 - 5 && alfa0 >= -15);
}

bool adiante(float minimo) {
  return alfa0 >= 5 || (alfa0 >= ALFA0 && alfa0 >= minimo);
}

// Material balance with the last capture of the game.
template <Cor raiz>
float balanco() {
  return materialflot0 + static_cast<float>(raiz == Cor::b ? peca : -peca);
}

template <Cor raiz>
void turbo_primeira_linha() {
  if (TURBO && E >= balanco<raiz>() - 33) refaz_caps(E + 33);
}

// Narrows the caps the more, the better the root stands; with a shallow search of this move the
// more, the less it promised. Later rows override earlier ones.
template <Cor raiz>
void turbo(bool houve_rasa) {
  if (!TURBO) return;
  const float m = balanco<raiz>();
  turbo_primeira_linha<raiz>();
  if (E >= m - 10 && mantida() && deep > 8) refaz_caps(E + 10);
  if (E >= m - 15 && adiante(-15) && deep == 9) refaz_caps(E + 9);
  if (E >= m - 5 && adiante(-5) && deep == 9) refaz_caps(E + 5);
  if (E >= m && adiante(0) && deep == 9) refaz_caps(E + 3);
  if (DEEP9 && deep == 9 && alfa0 >= -15) refaz_caps(E + 1);
  if (houve_rasa && E >= m - 10 && mantida())
    rebaixa_caps(E > BETA1 ? E + 1 : E == BETA1 ? E + 3 : E + 7);
}

// --- Steps that the searches share ---

template <Cor raiz>
void prepara(int x1, int y1, int x2, int y2) {
  deeppromo = 1;
  LmrT[2] = AmrT[2] = 0;
  currN[2] = 0;
  mede_peao<0, raiz>(x1, y1, x2, y2);
}

template <Cor raiz>
void responde(int x1, int y1, int x2, int y2) {
  linha.fill({' ', ' ', ' ', ' '});
  linha[0] = texto_do_lance(x1, y1, x2, y2);
  nd = 1;
  monta_no<1, 0, raiz>(x1, y1, x2, y2);
  fases_da_primeira<outra(raiz)>();
  if (X_D[1] && nd == 1) beta1 = XEQUE_MATE[1] ? valor_do_mate(1) : static_cast<float>(emp);
}

// While it lives the search is some plies shorter and uses no tables; with its end the search below
// the first ply is over too.
class MaisRasa {
 public:
  explicit MaisRasa(int menos) : deep_(deep), tabelas_(HASHf) {
    deep -= menos;
    HASHf = 0;
  }
  ~MaisRasa() { deeppromo = 0; }
  MaisRasa(const MaisRasa&) = delete;
  MaisRasa& operator=(const MaisRasa&) = delete;

 private:
  const Repoe<int> deep_;
  const Repoe<std::uint8_t> tabelas_;
};

// --- Stages ---

// The opponent passes. True when the root side, with two moves in a row, does not beat alfa0: the
// move is refuted by doing nothing, and beta1 has the value.
template <Cor raiz>
bool passe_refuta(int x1, int y1, int x2, int y2) {
  constexpr Cor outro = outra(raiz);
  if (!SCANT || npecas<raiz>() < 3 || NULL_MOVE <= 0 || npecas<outro>() < 5) return false;
  verifica_rei<outro>();
  if (Y) return false;
  {
    const MaisRasa mais_rasa(2);
    prepara<raiz>(x1, y1, x2, y2);
    alfa[2] = -infinito;
    atualiza_material<2, 0, raiz>(x2, y2);
    beta1 = static_cast<float>(alfa0 + 0.001);
    nd = 1;
    monta_no<2, 0, raiz>(x1, y1, x2, y2);
    fases<2, raiz>();
  }
  if (alfa[2] <= -limiar_de_mate || alfa0 < alfa[2]) return false;
  beta1 = alfa[2];
  return true;
}

// Four plies shorter; leaves its value in BETA1 and beta1. True when the move mates.
template <Cor raiz>
bool busca_rasa(int x1, int y1, int x2, int y2) {
  {
    const MaisRasa mais_rasa(4);
    prepara<raiz>(x1, y1, x2, y2);
    beta1 = infinito;
    atualiza_material<1, 0, raiz>(x2, y2);
    turbo_primeira_linha<raiz>();
    responde<raiz>(x1, y1, x2, y2);
  }
  BETA1 = beta1;
  return beta1 >= limiar_de_mate;
}

// Without depth the value is pure material. True when `deep` leaves nothing to search.
template <Cor raiz>
bool sem_profundidade(int x2, int y2) {
  if (deep > 0) return false;
  if (deep == 0)
    beta1 = static_cast<float>(ppassado + promocao) + material_da_raiz<raiz>() -
            material_da_raiz<outra(raiz)>() -
            static_cast<float>(Lado<raiz>::visto(tab[casa(x2, y2)]));
  return true;
}

enum class Capada { fim, decidida, de_novo };

// Does the capped value stand, or must the move be searched in full? `cap` is the cap of ply 2
// before the null window.
template <Cor raiz>
Capada julga_capada(float cap) {
  const float v = beta1;
  if (SCAN1) {
    const bool abre_a_janela = v <= alfa0 && !DEEP9 && deep <= 9;
    if (!abre_a_janela && (v < ALFA0 + 5 || v >= balanco<raiz>() + 15)) return Capada::decidida;
  }
  if (SCANT && (alfa0 + 0.001 > v || v >= cap)) return Capada::decidida;
  return Capada::de_novo;
}

// With caps just above what this move may be expected to give.
template <Cor raiz>
Capada busca_capada(int x1, int y1, int x2, int y2, bool houve_rasa) {
  PVSm = 1;
  ddep = 0;
  prepara<raiz>(x1, y1, x2, y2);
  if (sem_profundidade<raiz>(x2, y2)) return Capada::fim;
  ++curr;
  beta1 = infinito;
  atualiza_material<1, 0, raiz>(x2, y2);
  turbo<raiz>(houve_rasa);
  const float cap = MAXcut[2];
  if (SCAN1) refaz_caps(ALFA0 + 5);
  if (SCANT && ALFA0 != sem_valor && mantida()) refaz_caps(static_cast<float>(alfa0 + 0.001));
  responde<raiz>(x1, y1, x2, y2);
  PVSm = 0;
  return julga_capada<raiz>(cap);
}

// The best move of a single-move pass fell to the lowered window: open it.
template <Cor raiz>
void abre_janela() {
  beta1 = alfa0;
  const Estendido minimo = balanco<raiz>() + quociente_da_raiz<raiz>() - 15;
  if (alfa0 >= -15 && E >= minimo) {
    alfa0 -= 75;
    E -= 75;
  }
  if (alfa0 < -15 || minimo > E) {
    alfa0 = sem_valor;
    E = sem_melhor;
  }
}

// False when `deep` leaves nothing to search. The caps stay as an earlier stage left them unless a
// row of the schedule sets them: a second search does not lift the null window by itself.
template <Cor raiz>
bool busca_inteira(int x1, int y1, int x2, int y2, bool segunda, bool houve_rasa) {
  ddep = 0;
  prepara<raiz>(x1, y1, x2, y2);
  if (sem_profundidade<raiz>(x2, y2)) return false;
  atualiza_material<1, 0, raiz>(x2, y2);
  if (SCAN1 && deep == 9 && !DEEP9 && alfa0 >= beta1)
    abre_janela<raiz>();
  else
    beta1 = infinito;
  if (!segunda) ++curr;
  turbo<raiz>(houve_rasa);
  responde<raiz>(x1, y1, x2, y2);
  return true;
}

bool cabe_capada() {
  return PVS && (SCAN1 || (SCANT && ALFA0 != sem_valor));
}

// True when the move has a value worth reporting.
template <Cor raiz>
bool etapas(int x1, int y1, int x2, int y2) {
  PVSm = 0;
  BETA1 = infinito;
  LMRtest = 0;
  if (deep < 0) return false;
  const bool houve_rasa = deep > 6;
  if (houve_rasa) {
    if (passe_refuta<raiz>(x1, y1, x2, y2)) return false;
    if (busca_rasa<raiz>(x1, y1, x2, y2)) return false;
  }
  const bool capada = cabe_capada();
  if (capada) {
    const Capada c = busca_capada<raiz>(x1, y1, x2, y2, houve_rasa);
    if (c != Capada::de_novo) return c == Capada::decidida;
    LMRtest = 1;
  }
  return busca_inteira<raiz>(x1, y1, x2, y2, capada, houve_rasa);
}

}  // namespace

template <Cor raiz>
void deep1(int x1, int y1, int x2, int y2) {
  if (etapas<raiz>(x1, y1, x2, y2) && (SCAN1 || SCANT)) relata_linha();
  deeppromo = 0;
  roque_b = roque_p = 0;
}

template void deep1<Cor::b>(int, int, int, int);
template void deep1<Cor::p>(int, int, int, int);

}  // namespace korvu
