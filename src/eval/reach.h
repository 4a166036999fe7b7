// The squares that men reach, all men of a kind and both colours at once.
#pragma once

#include "eval/set_pair.h"
#include "eval/weighing.h"

namespace korvu {

// One step along direction d, all squares of a set at once. What would wrap around is dropped.
template <int d>
Par passo_de(Par a) {
  constexpr Passo p = direcoes[static_cast<std::size_t>(d)];
  if constexpr (p.dy > 0) a = a.sem(nos_dois(na_fila(7)));
  if constexpr (p.dy < 0) a = a.sem(nos_dois(na_fila(0)));
  return a.adiante<8 * p.dx + p.dy>();
}

// The same for a leap.
template <int i>
Par salto_de(Par a) {
  constexpr Passo p = saltos_do_cavalo[static_cast<std::size_t>(i)];
  constexpr Bits alem = p.dy > 0 ? (p.dy == 2 ? na_fila(6) | na_fila(7) : na_fila(7))
                                 : (p.dy == -2 ? na_fila(0) | na_fila(1) : na_fila(0));
  return a.sem(nos_dois(alem)).adiante<8 * p.dx + p.dy>();
}

// Empty squares by runs of 1, 2 and 4 in direction d, for the walks of all men in that direction.
template <int d>
class Caminho {
 public:
  explicit Caminho(Par vazias) {
    constexpr Passo p = direcoes[static_cast<std::size_t>(d)];
    um_ = vazias;
    if constexpr (p.dy > 0) um_ = um_.sem(nos_dois(na_fila(0)));
    if constexpr (p.dy < 0) um_ = um_.sem(nos_dois(na_fila(7)));
    dois_ = um_ & um_.adiante<passo>();
    quatro_ = dois_ & dois_.adiante<2 * passo>();
  }
  // The squares that the men reach: empty ones and the first man met.
  Par de(Par homens) const {
    homens = homens | (um_ & homens.adiante<passo>());
    homens = homens | (dois_ & homens.adiante<2 * passo>());
    homens = homens | (quatro_ & homens.adiante<4 * passo>());
    return passo_de<d>(homens);
  }

 private:
  static constexpr int passo =
      8 * direcoes[static_cast<std::size_t>(d)].dx + direcoes[static_cast<std::size_t>(d)].dy;
  Par um_, dois_, quatro_;
};

struct Oficiais {
  Par torres, bispos, damas, cavalos;
};

// The squares reached by direction, of one kind of man, and by leap.
using PorDirecao = std::array<Par, 8>;
struct Alcances {
  PorDirecao linhas;  // of rooks, then of bishops
  PorDirecao damas, cavalos;
};

// How an estimate works where the processor is not known: with registers of two words, or without.
struct Estreito {
  using Conta = Planos;

  static Homens homens(const Tabuleiro& t) { return Homens(t); }
  static Alcances alcances(const Oficiais& o, Par vazias) {
    Alcances a;
    cada_direcao<0, 7>([&]<int d>() {
      const Caminho<d> caminho(vazias);
      a.linhas[d] = caminho.de(d < primeira_diagonal ? o.torres : o.bispos);
      a.damas[d] = caminho.de(o.damas);
      a.cavalos[d] = salto_de<d>(o.cavalos);
      return false;
    });
    return a;
  }

  static Planos conta(const Alcances& a) {
    std::array<Par, 16> todos;
    for (std::size_t d = 0; d < 8; ++d) {
      todos[2 * d] = a.linhas[d] | a.damas[d];
      todos[2 * d + 1] = a.cavalos[d];
    }
    return Planos(todos);
  }

  template <class... Pares>
  static Par quantas(Pares... conjuntos) {
    return quantas_em(conjuntos...);
  }

  static std::array<Pesagem, 2> pesa(const Planos& planos, Par proprios, Par inimigos,
                                     std::size_t rei_b, std::size_t rei_p) {
    return korvu::pesa(planos, proprios, inimigos, pesos_do_rei[rei_b], pesos_do_rei[rei_p]);
  }
};

}  // namespace korvu
