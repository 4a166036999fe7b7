// The step that every move of every loop goes through: try it, test its legality, descend, judge.
#pragma once

#include "board/attack.h"
#include "board/move.h"
#include "memory/ply_tables.h"
#include "tree/node.h"
#include "tree/open_node.h"
#include "tree/schedule.h"

namespace korvu {

// Kinds of loops. livretest_peao is livretest for pawns: it alone of the test members takes part in
// the one-reply cut. A test member repeats the walk of its plain member for the stored move alone,
// which the plain member leaves out: whether the walk still meets the move is its whole validity
// test.
enum class Laco { gerador, geradortest, livre, livretest, livretest_peao, positive };

constexpr bool so_o_guardado(Laco l) {
  return l == Laco::geradortest || l == Laco::livretest || l == Laco::livretest_peao;
}
constexpr bool de_capturas(Laco l) {
  return l == Laco::gerador || l == Laco::geradortest;
}

template <int N, Laco L>
Lance& lance_guardado() {
  return (de_capturas(L) ? guardado_g : guardado)[N];
}

// A move in the order of its slot: captures are stored target first, but not at ply 1.
template <int N, Laco L>
constexpr Lance na_ordem(int x1, int y1, int x2, int y2) {
  if (de_capturas(L) && N > 1) return {x2, y2, x1, y1};
  return {x1, y1, x2, y2};
}

template <int N, Laco L>
bool cabe_no_laco(int x1, int y1, int x2, int y2) {
  if constexpr (L == Laco::positive) return true;
  return (lance_guardado<N, L>() == na_ordem<N, L>(x1, y1, x2, y2)) == so_o_guardado(L);
}

// Calls the child unless its table knows the position already.
template <int N, Cor cor>
void filho_com_tabela(int x1, int y1, int x2, int y2) {
  if (HASHf) {
    hash_table_scan<N + 1, cor>();
    if (HASHTABLE<N + 1>()) return;
  }
  no<N + 1, cor>(x1, y1, x2, y2);
}

// The child of a move of `cor` at ply N. Without depth for ply 3 no child runs, and the parent
// reads the stale value of its slot.
template <int N, Cor cor>
void filho(int x1, int y1, int x2, int y2) {
  if constexpr (N == 2) {
    HASHTABLE3 = 0;
    if (deep > 2) filho_com_tabela<N, cor>(x1, y1, x2, y2);
  } else if constexpr (N == 3 || N == 4) {
    HASHTABLE<N + 1>() = 0;
    LmrT[N + 2] = AmrT[N + 2] = 0;
    if (deep >= 8)
      filho_com_tabela<N, cor>(x1, y1, x2, y2);
    else
      no<N + 1, cor>(x1, y1, x2, y2);
  } else {
    no<N + 1, cor>(x1, y1, x2, y2);
  }
}

// Takes the child's value and tests for a cut. True on a cut: the flag is set, and a plain member
// has stored the move. At the last ply of a line the first legal reply of most loops is enough.
template <int N, Laco L>
bool julga(float limite, int x1, int y1, int x2, int y2) {
  constexpr bool uma_resposta =
      cronograma[N].promocoes &&
      (L == Laco::gerador || L == Laco::livre || L == Laco::livretest_peao);
  const float v = valor<N + 1>();
  if (melhora<N>(v)) {
    valor<N>() = v;
    X_D[N] = 0;
  }
  if (!refuta<N>(limite) && !(uma_resposta && deep == N)) return false;
  corte<N>() = 1;
  if constexpr (L == Laco::gerador || L == Laco::livre)
    lance_guardado<N, L>() = na_ordem<N, L>(x1, y1, x2, y2);
  return true;
}

// Tries a move of `cor`: false when it is illegal, otherwise its child has run. One for all loops
// of a ply: the tree is large for the processor's caches.
template <int N, Cor cor>
[[gnu::noinline]] bool desce(const NoAberto<N, cor>& no, int x1, int y1, int x2, int y2) {
  init_tabuleiro2_deep<N, cor>(x1, y1, x2, y2);
  no.verifica_rei_apos(x1, y1, x2, y2);
  if (Y) return false;
  if (deep == N) prepara_resumo(no.impressao_apos(x1, y1, x2, y2));
  ++nodes;
  filho<N, cor>(x1, y1, x2, y2);
  return true;
}

// Tries a move of `cor`; true on a cut.
template <Laco L, int N, Cor cor>
bool tenta(const NoAberto<N, cor>& no, int x1, int y1, int x2, int y2) {
  return cabe_no_laco<N, L>(x1, y1, x2, y2) && desce<N, cor>(no, x1, y1, x2, y2) &&
         julga<N, L>(no.limite, x1, y1, x2, y2);
}

}  // namespace korvu
