// What the upper plies do around the body of a node: reductions (plies 2 to 9), null move (2 to 5),
// pre-search (2, 3), null window and draw test (2), tables (3 to 5).
#pragma once

#include "board/draw.h"
#include "tree/node_body.h"

namespace korvu {

// Forgets what the children of ply N learned about reductions under an earlier parent.
template <int N>
void zera_reducoes() {
  if constexpr (reduz(N)) LmrT[N] = AmrT[N] = 0;
}

// The same, and the count of the moves tried at the parent.
template <int N>
void zera_contagem() {
  zera_reducoes<N>();
  if constexpr (reduz(N)) currN[N] = 0;
}

// --- Reductions ---

enum class Reducao { nenhuma, tarde, cedo };

// A late quiet move: the parent has a value already and four moves have been tried.
template <int N, Cor cor>
bool cabe_reduzir_tarde(int x1, int y1, int x2, int y2) {
  // At plies 8 and 9 the test for a pawn knows White's code alone, so that a Black pawn's move is
  // reduced like any other there. An asymmetry to keep: node counts hang on it.
  constexpr std::uint8_t peao = N >= 8 ? Lado<Cor::b>::peao : Lado<cor>::peao;
  return !LmrT[N] && LMR && deep > cronograma[N].tarde && valor<N - 1>() != valor_inicial<N - 1> &&
         tabd[N - 1][casa(x1, y1)] != peao && tabd[N - 1][casa(x2, y2)] == vazia && currN[N] > 4 &&
         !em_xeque_no_no<N, cor>(x1, y1, x2, y2);
}

// One of the first four moves, of any kind.
template <int N, Cor cor>
bool cabe_reduzir_cedo(int x1, int y1, int x2, int y2) {
  return !AmrT[N] && LMR && deep > cronograma[N].cedo && currN[N] <= 4 &&
         !em_xeque_no_no<N, cor>(x1, y1, x2, y2);
}

// Must the shortened search be done again at full depth? Seen from the side that made the move: a
// late one is trusted when it brings nothing better than there was, an early one when it is
// refuted.
template <int N>
bool desmentida(Reducao r) {
  const float v = valor<N>();
  const bool passa_algum =
      algum<N - 2>([v](float limite) { return par(N) ? v <= limite : v >= limite; });
  return r == Reducao::tarde ? passa_algum : !passa_algum;
}

// The body, with the counters of its moves cleared.
template <int N, Cor cor>
void corpo_contado(int x1, int y1, int x2, int y2) {
  zera_contagem<N + 1>();
  corpo<N, cor>(x1, y1, x2, y2);
}

// Runs corpo_contado two plies shorter where the move allows it, and again where that finding must
// be verified. `roda` is the run itself.
template <int N, Cor cor, class F>
void com_reducoes(int x1, int y1, int x2, int y2, F roda) {
  Reducao r = Reducao::nenhuma;
  ++currN[N];
  if (cabe_reduzir_tarde<N, cor>(x1, y1, x2, y2))
    r = Reducao::tarde;
  else if (cabe_reduzir_cedo<N, cor>(x1, y1, x2, y2))
    r = Reducao::cedo;
  {
    const Repoe<int> repoe_deep(deep);
    const Repoe<std::uint8_t> repoe_tabelas(HASHf);
    if (r != Reducao::nenhuma) {
      deep -= 2;
      if (N <= 5) HASHf = 0;
    }
    roda();
  }
  if (r == Reducao::nenhuma || !desmentida<N>(r)) return;
  (r == Reducao::tarde ? LmrT : AmrT)[N] = 1;
  roda();
}

// --- Null move ---

// Has any node of plies K, K - 2 ... below the root a value yet?
template <int K>
bool algum_valor() {
  if constexpr (K <= 0)
    return false;
  else
    return valor<K>() != valor_inicial<K> || algum_valor<K - 2>();
}

template <int N, Cor cor>
bool cabe_passar(int x1, int y1, int x2, int y2) {
  constexpr Cor joga = outra(cor);
  if (deep <= cronograma[N].nulo) return false;
  const bool ha_o_que_bater = (!par(N) && SCANT) || algum_valor<N - 1>();
  constexpr int nivel = N == 2 ? 1 : 2;
  return ha_o_que_bater && NULL_MOVE >= nivel && npecas<joga>() > 4 && npecas<cor>() > 2 &&
         !em_xeque_no_no<N, cor>(x1, y1, x2, y2);
}

// Puts the bounds of the side to move at ply N back to their start values while it lives.
template <int N>
class SemLimites {
 public:
  SemLimites() { guarda<N - 2>(); }
  ~SemLimites() { repoe<N - 2>(); }
  SemLimites(const SemLimites&) = delete;
  SemLimites& operator=(const SemLimites&) = delete;

 private:
  template <int K>
  void guarda() {
    if constexpr (K >= 0) {
      valores_[K] = valor<K>();
      valor<K>() = valor_inicial<K>;
      guarda<K - 2>();
    }
  }
  template <int K>
  void repoe() {
    if constexpr (K >= 0) {
      valor<K>() = valores_[K];
      repoe<K - 2>();
    }
  }
  std::array<float, N> valores_{};
};

// The mover of the incoming move plays again at ply N + 1, two plies short, against a null window.
// A side without a move there leaves the start value, and no cut comes of it.
template <int N, Cor cor>
void busca_apos_passe(int x1, int y1, int x2, int y2) {
  const SemLimites<N> sem_limites;
  const Repoe<int> repoe_deep(deep);
  const Repoe<std::uint8_t> repoe_tabelas(HASHf);
  mede_peao<N - 1, cor>(x1, y1, x2, y2);
  zera_contagem<N + 1>();
  valor<N>() = static_cast<float>(mais_estreito<N - 1>() + (par(N) ? -0.001 : 0.001));
  valor<N + 1>() = valor_inicial<N + 1>;
  deep -= 2;
  HASHf = 0;
  atualiza_material<N + 1, N - 1, cor>(x2, y2);
  nd = N;
  monta_no<N + 1, N - 1, cor>(x1, y1, x2, y2);
  fases<N + 1, cor>();
}

// True when passing refutes the line already; the node then has that value.
template <int N, Cor cor>
bool lance_nulo(int x1, int y1, int x2, int y2) {
  if (!cabe_passar<N, cor>(x1, y1, x2, y2)) return false;
  busca_apos_passe<N, cor>(x1, y1, x2, y2);
  const float r = valor<N + 1>();
  const bool sem_mate = par(N) ? r < limiar_de_mate : r > -limiar_de_mate;
  const bool basta = algum<N - 1>([r](float limite) { return par(N) ? r >= limite : r <= limite; });
  if (!sem_mate || !basta) return false;
  valor<N>() = r;
  return true;
}

// --- Pre-search ---

// The moves of the node once, four plies shorter: fills its stored moves. True when it finds a mate
// against the side to move; the node then has that value.
template <int N, Cor cor>
bool pre_busca(int x1, int y1, int x2, int y2) {
  if (deep <= cronograma[N].pre_busca) return false;
  {
    const Repoe<int> repoe_deep(deep);
    const Repoe<std::uint8_t> repoe_tabelas(HASHf);
    deep -= 4;
    HASHf = 0;
    corpo_contado<N, cor>(x1, y1, x2, y2);
  }
  return par(N) ? valor<N>() <= -limiar_de_mate : valor<N>() >= limiar_de_mate;
}

// --- Ply 2 ---

// The body of ply 2 against a null window: caps of the odd plies end every opponent's node that
// cannot lift this root move above what the ply-1 node has.
template <Cor cor>
void corpo_em_janela_nula(int x1, int y1, int x2, int y2) {
  PVSm2 = 1;
  for (std::size_t k = 3; k <= ultimo_lance; k += 2)
    if (beta1 - 1 > -MAXcut[k]) MAXcut[k] = 1 - beta1;
  corpo_contado<2, cor>(x1, y1, x2, y2);
  PVSm2 = 0;
  for (std::size_t k = 3; k <= ultimo_lance; k += 2) MAXcut[k] = MAXcutt[k];
}

template <Cor cor>
void busca_da_segunda(int x1, int y1, int x2, int y2) {
  if (PVS && beta1 != infinito) {
    com_reducoes<2, cor>(x1, y1, x2, y2, [=] { corpo_em_janela_nula<cor>(x1, y1, x2, y2); });
    if (alfa[2] > beta1 - 1 || -MAXcutt[1] >= alfa[2]) return;
  }
  com_reducoes<2, cor>(x1, y1, x2, y2, [=] { corpo_contado<2, cor>(x1, y1, x2, y2); });
}

// A reply that repeats the game's position for the third time; the node then has the draw's value.
inline bool empata_por_repeticao() {
  verifica_empate();
  if (pempate) alfa[2] = static_cast<float>(emp);
  return pempate;
}

// --- The node ---

// The incoming move as text of the running line: the first one since the line was blanked.
template <int N>
void escreve_linha(int x1, int y1, int x2, int y2) {
  Texto& t = linha[N - 1];
  if (t.A == ' ') t = texto_do_lance(x1, y1, x2, y2);
}

template <int N, Cor cor>
void busca(int x1, int y1, int x2, int y2) {
  if constexpr (cronograma[N].nulo != nunca)
    if (lance_nulo<N, cor>(x1, y1, x2, y2)) return;
  if constexpr (cronograma[N].pre_busca != nunca)
    if (pre_busca<N, cor>(x1, y1, x2, y2)) return;
  if constexpr (N == 2)
    busca_da_segunda<cor>(x1, y1, x2, y2);
  else
    com_reducoes<N, cor>(x1, y1, x2, y2, [=] { corpo_contado<N, cor>(x1, y1, x2, y2); });
}

// Plies 3 to 5: with a record of the position around the search.
template <int N, Cor cor>
void busca_registrada(int x1, int y1, int x2, int y2) {
  const bool registra = HASHf && (N == 3 || deep >= 8);
  if (registra) hash_table_build<N, cor>();
  {
    const Repoe<int> repoe(registros_a_fazer);
    if (registra && N > 3) ++registros_a_fazer;
    busca<N, cor>(x1, y1, x2, y2);
  }
  if (registra) hash_table_valor<N, cor>();
}

template <int N, Cor cor>
void no(int x1, int y1, int x2, int y2) {
  if constexpr (N == 2)
    if (deep <= 0 || empata_por_repeticao()) return;
  if constexpr (N <= 8) escreve_linha<N>(x1, y1, x2, y2);
  if constexpr (reduz(N)) zera_reducoes<N + 1>();
  if constexpr (cronograma[N].tabela)
    busca_registrada<N, cor>(x1, y1, x2, y2);
  else if constexpr (reduz(N))
    busca<N, cor>(x1, y1, x2, y2);
  else
    corpo<N, cor>(x1, y1, x2, y2);
}

}  // namespace korvu
