// The members of the tree by their own names: deep_b<7>, analiselivre_torre_p<7>. The node of a ply
// is entered after a move of the colour in its name; a loop moves the men of that colour.
#pragma once

#include "tree/phases.h"

namespace korvu {

// The loops as functions of a square, on the node's board as it is when they are called.
template <int N, Cor cor, Laco L>
void gerador_em(int x, int y) {
  gerador<L>(NoAberto<N, cor>(), x, y);
}
template <int N, Cor cor>
void positive_em(int x, int y) {
  analisepositive_peao(NoAberto<N, cor>(), x, y);
}
template <int N, Cor cor, Peca p, bool teste>
void livre_em(int x, int y) {
  analiselivre<p, teste>(NoAberto<N, cor>(), x, y);
}

template <int N>
inline constexpr auto deep_b = &no<N, Cor::b>;
template <int N>
inline constexpr auto deep_p = &no<N, Cor::p>;

template <int N>
inline constexpr auto gerador_b = &gerador_em<N, Cor::b, Laco::gerador>;
template <int N>
inline constexpr auto gerador_p = &gerador_em<N, Cor::p, Laco::gerador>;
template <int N>
inline constexpr auto geradortest_b = &gerador_em<N, Cor::b, Laco::geradortest>;
template <int N>
inline constexpr auto geradortest_p = &gerador_em<N, Cor::p, Laco::geradortest>;
template <int N>
inline constexpr auto analisepositive_peao_b = &positive_em<N, Cor::b>;
template <int N>
inline constexpr auto analisepositive_peao_p = &positive_em<N, Cor::p>;

template <int N>
inline constexpr auto analiselivre_peao_b = &livre_em<N, Cor::b, Peca::peao, false>;
template <int N>
inline constexpr auto analiselivre_peao_p = &livre_em<N, Cor::p, Peca::peao, false>;
template <int N>
inline constexpr auto analiselivre_cavalo_b = &livre_em<N, Cor::b, Peca::cavalo, false>;
template <int N>
inline constexpr auto analiselivre_cavalo_p = &livre_em<N, Cor::p, Peca::cavalo, false>;
template <int N>
inline constexpr auto analiselivre_bispo_b = &livre_em<N, Cor::b, Peca::bispo, false>;
template <int N>
inline constexpr auto analiselivre_bispo_p = &livre_em<N, Cor::p, Peca::bispo, false>;
template <int N>
inline constexpr auto analiselivre_torre_b = &livre_em<N, Cor::b, Peca::torre, false>;
template <int N>
inline constexpr auto analiselivre_torre_p = &livre_em<N, Cor::p, Peca::torre, false>;
template <int N>
inline constexpr auto analiselivre_dama_b = &livre_em<N, Cor::b, Peca::dama, false>;
template <int N>
inline constexpr auto analiselivre_dama_p = &livre_em<N, Cor::p, Peca::dama, false>;
template <int N>
inline constexpr auto analiselivre_rei_b = &livre_em<N, Cor::b, Peca::rei, false>;
template <int N>
inline constexpr auto analiselivre_rei_p = &livre_em<N, Cor::p, Peca::rei, false>;

template <int N>
inline constexpr auto analiselivretest_peao_b = &livre_em<N, Cor::b, Peca::peao, true>;
template <int N>
inline constexpr auto analiselivretest_peao_p = &livre_em<N, Cor::p, Peca::peao, true>;
template <int N>
inline constexpr auto analiselivretest_cavalo_b = &livre_em<N, Cor::b, Peca::cavalo, true>;
template <int N>
inline constexpr auto analiselivretest_cavalo_p = &livre_em<N, Cor::p, Peca::cavalo, true>;
template <int N>
inline constexpr auto analiselivretest_bispo_b = &livre_em<N, Cor::b, Peca::bispo, true>;
template <int N>
inline constexpr auto analiselivretest_bispo_p = &livre_em<N, Cor::p, Peca::bispo, true>;
template <int N>
inline constexpr auto analiselivretest_torre_b = &livre_em<N, Cor::b, Peca::torre, true>;
template <int N>
inline constexpr auto analiselivretest_torre_p = &livre_em<N, Cor::p, Peca::torre, true>;
template <int N>
inline constexpr auto analiselivretest_dama_b = &livre_em<N, Cor::b, Peca::dama, true>;
template <int N>
inline constexpr auto analiselivretest_dama_p = &livre_em<N, Cor::p, Peca::dama, true>;
template <int N>
inline constexpr auto analiselivretest_rei_b = &livre_em<N, Cor::b, Peca::rei, true>;
template <int N>
inline constexpr auto analiselivretest_rei_p = &livre_em<N, Cor::p, Peca::rei, true>;

}  // namespace korvu
