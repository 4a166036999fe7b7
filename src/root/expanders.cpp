#include "root/expanders.h"

#include "board/attack.h"
#include "board/draw.h"
#include "board/root_move.h"
#include "eval/strategy.h"
#include "root/first_ply.h"
#include "root/pass_memory.h"
#include "tree/schedule.h"

namespace korvu {
namespace {

template <Cor cor>
constexpr std::uint8_t vitima_de(Classe k) {
  using Inimigo = Lado<outra(cor)>;
  switch (k) {
    case Classe::positive1:
      return Inimigo::peao;
    case Classe::positive2:
      return Inimigo::bispo;
    case Classe::positive3:
      return Inimigo::cavalo;
    case Classe::positive4:
      return Inimigo::torre;
    case Classe::positive5:
      return Inimigo::dama;
    case Classe::livre:
      break;
  }
  return vazia;
}

template <Xeque xeque>
bool cabe_na_classe() {
  return TEST1IID && (XEQUE != 0) == (xeque == Xeque::ch);
}

// Nothing takes PRs back during a scan: it only ever acts on a pawn that reaches its last rank.
void guarda_melhor(float valor_novo, const Lance& lance, bool promove) {
  E = valor_novo;
  jogada = {lance.aa, lance.bb, lance.cc, lance.dd};
  melhor = lance;
  if (promove) PRs = 'q';
}

// Searches the move; true when the pass is over.
template <Cor cor>
bool pesquisa(const Lance& lance, bool promove) {
  ++nodes;
  deep1<cor>(lance.aa, lance.bb, lance.cc, lance.dd);
  if (beta1 > alfa0) alfa0 = beta1;
  if (beta1 > E) guarda_melhor(beta1, lance, promove);
  if (alfa0 >= MAXcut[0] || corte_MAXcut) corte_MAXcut = 1;
  return corte_MAXcut;
}

// A move that repeats a position of the game is a draw without a search.
void pontua_empate(const Lance& lance) {
  EP = static_cast<float>(emp);
  if (!(static_cast<float>(emp) > E)) return;
  guarda_melhor(static_cast<float>(emp), lance, false);
  alfa0 = static_cast<float>(emp);
}

// Rates a move: all its marks are then in their slots.
template <Cor cor, Peca p>
void avalia(const Lance& l) {
  init_tabuleiro2<cor>(l.aa, l.bb, l.cc, l.dd);
  verifica_rei<cor>();
  verifica_xeque<cor>();
  verifica_estrategia<cor>();
  if constexpr (p != Peca::peao) verifica_empate();
  memoria_do_passe.anota(l);
}

constexpr Lance lance_do_roque(Ala ala, int fila) {
  return {4, fila, ala == Ala::torre_h ? 6 : 2, fila};
}

// Rates a castling upon what the move before it has left in MATRIZ and the attack tables.
template <Cor cor>
void avalia_roque(Ala testada) {
  admite_na_varredura(lance_do_roque(testada, Lado<cor>::fila(0)));
  if (testada == Ala::torre_h)
    verifica_roque<0, cor, Ala::torre_h>();
  else
    verifica_roque<0, cor, Ala::torre_a>();
  verifica_xeque<cor>();
  verifica_estrategia<cor>();
}

// One generated move. True when the expander must return. The conditions are read again after the
// search with what it left in them: a repetition found below brings a move through the draw branch
// after it was searched.
template <Cor cor, Xeque xeque, Peca p>
bool passo(int x, int y, int tx, int ty) {
  const Lance lance = {x, y, tx, ty};
  const bool promove = p == Peca::peao && y == Lado<cor>::fila(6);
  if (memoria_do_passe.dispensa(lance)) {
    memoria_do_passe.adia(lance);
    return false;
  }
  avalia<cor, p>(lance);
  if (Y || ESTRATEGIA != ataque) return false;
  if (cabe_na_classe<xeque>() && (p == Peca::peao || !pempate)) {
    if (pesquisa<cor>(lance, promove)) return true;
    if (Y || ESTRATEGIA != ataque) return false;
  }
  if (p != Peca::peao && cabe_na_classe<xeque>() && pempate) pontua_empate(lance);
  return false;
}

template <Cor cor, Classe k, Xeque xeque>
void do_peao(int x, int y) {
  using T = Lado<cor>;
  const auto tenta = [&](int tx, int ty) { return passo<cor, xeque, Peca::peao>(x, y, tx, ty); };
  const auto tem = [](int i, int j, std::uint8_t q) {
    return dentro(i, j) && tab[casa(i, j)] == q;
  };
  const int j = y + T::frente;
  if constexpr (k == Classe::livre) {
    if (y == T::fila(1) && tem(x, T::fila(2), vazia) && tem(x, T::fila(3), vazia) &&
        tenta(x, T::fila(3)))
      return;
    if (tem(x, j, vazia)) tenta(x, j);
    return;
  }
  for (const int i : {x + 1, x - 1})
    if (tem(i, j, vitima_de<cor>(k)) && tenta(i, j)) return;
  if constexpr (k == Classe::positive1)
    if (y == T::fila(4))
      for (const int i : {x + 1, x - 1})
        if (tem(i, j, vazia) && duplo<T::outro>(duplos)[static_cast<std::size_t>(i)] && tenta(i, j))
          return;
}

// A castling of the root; true when the expander must return. With check, White's queen-side move
// asks the king-side test (`testada`): its attacks and its admission to the pass are those of the
// other castling. An asymmetry to keep: which castlings White finds hangs on it.
template <Cor cor, Xeque xeque, Ala ala>
bool roca(int x, int y) {
  constexpr Ala testada = cor == Cor::b && xeque == Xeque::ch ? Ala::torre_h : ala;
  verifica_xequemate<0, cor>(x, y);
  if (XM || !roque_livre<0, cor, ala>()) return false;
  NotaDoRoque& nota = memoria_do_passe.nota_do_roque(testada);
  if (nota.conhecida && (nota.proibido || nota.estrategia != ataque)) {
    memoria_do_passe.adia_roque(testada);
    return false;
  }
  poe_em_dia<cor>();
  avalia_roque<cor>(testada);
  // A scaled MATRIZ would make the next rating another.
  nota = {memoria_do_passe.ativa() && !incentiva_promo, R != 0, ESTRATEGIA};
  if (R || ESTRATEGIA != ataque || !cabe_na_classe<xeque>()) return false;
  roque<cor>() = valor_do_roque_em(0);
  const bool fim_do_passe = pesquisa<cor>(lance_do_roque(ala, Lado<cor>::fila(0)), false);
  roque<cor>() = 0;
  return fim_do_passe;
}

template <Cor cor, Classe k, Xeque xeque, Peca p>
void expande(int x, int y) {
  if constexpr (p == Peca::peao) {
    do_peao<cor, k, xeque>(x, y);
  } else {
    const bool fim_do_passe = alvos<p>(tab, x, y, [&](int tx, int ty) {
      return tab[casa(tx, ty)] == vitima_de<cor>(k) && passo<cor, xeque, p>(x, y, tx, ty);
    });
    if constexpr (p == Peca::rei && k == Classe::positive1)
      if (!fim_do_passe && !roca<cor, xeque, Ala::torre_h>(x, y))
        roca<cor, xeque, Ala::torre_a>(x, y);
  }
}

// --- Dispatch by class, check class and piece ---

using Funcao = void (*)(int, int);
using PorPeca = std::array<Funcao, 6>;
using PorXeque = std::array<PorPeca, 2>;

template <Cor cor, Classe k, Xeque xeque>
constexpr PorPeca por_peca = {
    expande<cor, k, xeque, Peca::peao>,  expande<cor, k, xeque, Peca::cavalo>,
    expande<cor, k, xeque, Peca::bispo>, expande<cor, k, xeque, Peca::torre>,
    expande<cor, k, xeque, Peca::dama>,  expande<cor, k, xeque, Peca::rei>};

template <Cor cor, Classe k>
constexpr PorXeque por_xeque = {por_peca<cor, k, Xeque::ch>, por_peca<cor, k, Xeque::sh>};

template <Cor cor>
constexpr std::array<PorXeque, 6> expansores = {
    por_xeque<cor, Classe::livre>,     por_xeque<cor, Classe::positive1>,
    por_xeque<cor, Classe::positive2>, por_xeque<cor, Classe::positive3>,
    por_xeque<cor, Classe::positive4>, por_xeque<cor, Classe::positive5>};

}  // namespace

template <Cor cor>
void poe_em_dia() {
  MemoriaDoPasse& m = memoria_do_passe;
  if (m.pendente()) {
    const Lance l = m.ultimo();
    if (tab[casa(l.aa, l.bb)] == Lado<cor>::peao)
      avalia<cor, Peca::peao>(l);
    else
      avalia<cor, Peca::cavalo>(l);  // all officers alike
  }
  if (m.roque_pendente()) avalia_roque<cor>(m.roque());
  m.roque_em_dia();
}

template <Cor cor>
void analise100(const Expansor& e, int x, int y) {
  expansores<cor>[static_cast<std::size_t>(e.classe)][static_cast<std::size_t>(e.xeque)]
                 [static_cast<std::size_t>(e.peca)](x, y);
}

template void poe_em_dia<Cor::b>();
template void poe_em_dia<Cor::p>();
template void analise100<Cor::b>(const Expansor&, int, int);
template void analise100<Cor::p>(const Expansor&, int, int);

}  // namespace korvu
