// What a node finds out about its board once, before its loops run: where the men stand, whether
// the mover is in check, and which value ends it.
#pragma once

#include "board/attack.h"
#include "board/bits.h"
#include "board/state.h"
#include "eval/leaf_cache.h"
#include "tree/bounds.h"

namespace korvu {

// The node at ply N whose men of `cor` are about to move on tabd[N]. Nothing in it changes while
// the loops run: children write their own plies only, and the bounds above a node stand still.
template <int N, Cor cor>
class NoAberto {
 public:
  const Dominio dominio = dominio_ou_homens(tabd[N]);
  const Homens& homens = dominio.homens;
  const float limite = limite_que_refuta<N>();

  // Where the moves of the line's last ply lead to leaves: the board's place in their cache.
  const std::uint64_t impressao = deep == N ? impressao_de(tabd[N]) : 0;

  // The square of the mover's king when there is just one, else -1.
  const int rei = homens.template unico<cor>(Peca::rei);
  const bool em_xeque = rei >= 0 && atacada_por_inimigo(rei);

  // The squares that the mover attacks.
  Bits atacadas() const {
    return ve_ao_largo ? dominio.template por<cor>() : atacadas_por<cor>(homens);
  }

  // The same for tab2 after a move from (x1, y1) to (x2, y2); of a capture in passing, about.
  std::uint64_t impressao_apos(int x1, int y1, int x2, int y2) const {
    const std::size_t de = casa(x1, y1), para = casa(x2, y2);
    return impressao + mudanca_da_impressao(de, tabd[N][de], vazia) +
           mudanca_da_impressao(para, tabd[N][para], tab2[para]);
  }

  // verifica_rei on tab2 after a move of `cor` from (x1, y1) to (x2, y2) on tabd[N], with the same
  // answer in Y and the same king square. A man that is not in line with its unattacked king
  // cannot leave it open to attack; only a capture in passing takes another man off the board.
  void verifica_rei_apos(int x1, int y1, int x2, int y2) const {
    const std::uint8_t q = tabd[N][casa(x1, y1)];
    const bool de_passagem = q == Lado<cor>::peao && x1 != x2 && tabd[N][casa(x2, y2)] == vazia;
    if (rei < 0 || em_xeque || q == Lado<cor>::rei || de_passagem) {
      verifica_rei<cor>();
      return;
    }
    rei_x<cor>() = coluna_de(rei);
    rei_y<cor>() = fila_de(rei);
    Y = descobre_o_rei(static_cast<int>(casa(x1, y1)));
  }

 private:
  bool atacada_por_inimigo(int s) const {
    return ve_ao_largo ? (dominio.template por<outra(cor)>() & bit(s)) != 0
                       : atacada<cor>(homens, s);
  }
  bool descobre_o_rei(int deixada) const {
    const int d = direcao_entre[static_cast<std::size_t>(rei)][static_cast<std::size_t>(deixada)];
    if (d < 0) return false;
    const Raio& r = raio(d, rei);
    for (std::size_t k = 0; k < r.n; ++k) {
      const std::uint8_t q = tab2[r.lista[k]];
      if (q == vazia) continue;
      using Inimigo = Lado<outra(cor)>;
      return q == Inimigo::dama || q == (d < primeira_diagonal ? Inimigo::torre : Inimigo::bispo);
    }
    return false;
  }
};

}  // namespace korvu
