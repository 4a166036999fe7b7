// What a node finds out about its board once, before its loops run: where the men stand, whether
// the mover is in check, and which value ends it.
#pragma once

#include "board/attack.h"
#include "board/bits.h"
#include "board/move.h"
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
  // answer in Y and the same king square. The king must not arrive on an attacked square, and what
  // it leaves hides none. Another man must end the check there is, and open no line to its king;
  // only a capture in passing takes more off the board than that.
  void verifica_rei_apos(int x1, int y1, int x2, int y2) const {
    const int de = static_cast<int>(casa(x1, y1)), para = static_cast<int>(casa(x2, y2));
    const std::uint8_t q = tabd[N][casa(x1, y1)];
    const bool move_o_rei = q == Lado<cor>::rei;
    if (rei < 0 ||
        (move_o_rei ? com_a_torre(de, para) : de_passagem<cor>(q, duplos_D[N], x2, y2))) {
      verifica_rei<cor>();
      return;
    }
    const int fica = move_o_rei ? para : rei;
    rei_x<cor>() = coluna_de(fica);
    rei_y<cor>() = fila_de(fica);
    Y = move_o_rei ? atacada<cor>(homens, para, homens.ocupadas & ~bit(de))
                   : (amparo_ & bit(para)) == 0 || descobre_o_rei(de, para);
  }

 private:
  bool atacada_por_inimigo(int s) const {
    return ve_ao_largo ? (dominio.template por<outra(cor)>() & bit(s)) != 0
                       : atacada<cor>(homens, s);
  }
  static bool com_a_torre(int de, int para) {
    return (vizinhas_de[static_cast<std::size_t>(de)] & bit(para)) == 0;
  }
  // Where another man than the king must arrive: on the only attacker of the king, or before it.
  Bits casas_de_amparo() const {
    const Bits xeques = atacantes<cor>(homens, rei);
    const int de = primeira_de(xeques);
    return (xeques & (xeques - 1)) == 0 ? xeques | entre(rei, de) : 0;
  }
  // Does a line attacker see the king when a man has left this square for that one? It may have
  // moved within the line, or have taken the attacker.
  bool descobre_o_rei(int deixada, int chegada) const {
    const int d = direcao_entre[static_cast<std::size_t>(rei)][static_cast<std::size_t>(deixada)];
    if (d < 0) return false;
    constexpr Cor outro = outra(cor);
    const Bits de_linha =
        homens.template de<outro>(Peca::dama) |
        homens.template de<outro>(d < primeira_diagonal ? Peca::torre : Peca::bispo);
    const Bits na_linha = raio(d, rei).casas & de_linha & ~bit(chegada);
    if (na_linha == 0) return false;
    const Bits ocupadas = (homens.ocupadas & ~bit(deixada)) | bit(chegada);
    return cada_casa(na_linha, [&](int de) { return (entre(rei, de) & ocupadas) == 0; });
  }

  const Bits amparo_ = em_xeque ? casas_de_amparo() : ~Bits{0};
};

}  // namespace korvu
