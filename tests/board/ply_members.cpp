#include "ply_members.h"

#include <utility>

#include "board/attack.h"
#include "board/move.h"
#include "root/first_ply_moves.h"
#include "support/ply_names.h"

namespace kit {
namespace {

using namespace korvu;

template <int N>
void name_loops(PlyMembers& m, std::integral_constant<Cor, Cor::b>) {
  m.livre = {analiselivre_peao_b<N>,  analiselivre_cavalo_b<N>, analiselivre_bispo_b<N>,
             analiselivre_torre_b<N>, analiselivre_dama_b<N>,   analiselivre_rei_b<N>};
  m.livretest = {analiselivretest_peao_b<N>,  analiselivretest_cavalo_b<N>,
                 analiselivretest_bispo_b<N>, analiselivretest_torre_b<N>,
                 analiselivretest_dama_b<N>,  analiselivretest_rei_b<N>};
  if constexpr (N >= 2) {
    m.gerador = gerador_b<N>;
    m.geradortest = geradortest_b<N>;
  }
  if constexpr (N >= 7 && N % 2 == 1) m.positive_peao = analisepositive_peao_b<N>;
}

template <int N>
void name_loops(PlyMembers& m, std::integral_constant<Cor, Cor::p>) {
  m.livre = {analiselivre_peao_p<N>,  analiselivre_cavalo_p<N>, analiselivre_bispo_p<N>,
             analiselivre_torre_p<N>, analiselivre_dama_p<N>,   analiselivre_rei_p<N>};
  m.livretest = {analiselivretest_peao_p<N>,  analiselivretest_cavalo_p<N>,
                 analiselivretest_bispo_p<N>, analiselivretest_torre_p<N>,
                 analiselivretest_dama_p<N>,  analiselivretest_rei_p<N>};
  if constexpr (N >= 2) {
    m.gerador = gerador_p<N>;
    m.geradortest = geradortest_p<N>;
  }
  if constexpr (N >= 7 && N % 2 == 1) m.positive_peao = analisepositive_peao_p<N>;
}

template <int N, Cor cor>
PlyMembers members_of() {
  PlyMembers m;
  m.check_at = verifica_xequemate<N, cor>;
  m.castle_a = verifica_roque<N, cor, Ala::torre_a>;
  m.castle_h = verifica_roque<N, cor, Ala::torre_h>;
  m.free_a = roque_livre<N, cor, Ala::torre_a>;
  m.free_h = roque_livre<N, cor, Ala::torre_h>;
  if constexpr (N >= 1) {
    m.make = init_tabuleiro_deep<N, cor>;
    m.trial = init_tabuleiro2_deep<N, cor>;
    m.stored_quiet = [] { fase_do_lance_guardado(NoAberto<N, cor>()); };
    name_loops<N>(m, std::integral_constant<Cor, cor>{});
  }
  if constexpr (N == 1) {
    m.phases = fases_da_primeira<cor>;
    m.stored_capture = [] { captura_guardada_da_primeira(NoAberto<1, cor>()); };
  } else if constexpr (N >= 2) {
    m.phases = fases<N, cor>;
    m.stored_capture = [] { fase_da_captura_guardada(NoAberto<N, cor>()); };
  }
  return m;
}

template <Cor cor, int... N>
std::array<PlyMembers, sizeof...(N)> all_plies(std::integer_sequence<int, N...>) {
  return {members_of<N, cor>()...};
}

}  // namespace

const PlyMembers& members(int ply, bool white) {
  using Plies = std::make_integer_sequence<int, ultimo_lance + 1>;
  static const auto of_white = all_plies<Cor::b>(Plies{});
  static const auto of_black = all_plies<Cor::p>(Plies{});
  return (white ? of_white : of_black)[static_cast<std::size_t>(ply)];
}

}  // namespace kit
