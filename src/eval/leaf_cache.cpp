#include "eval/leaf_cache.h"

namespace korvu {
namespace {

struct alignas(64) Registro {
  Tabuleiro tabuleiro{};
  ChaveDaFolha chave{};  // revision 0: empty
  ResumoDaFolha resumo{};

  bool e_de(const Tabuleiro& t, const ChaveDaFolha& c) const {
    return chave == c && tabuleiro == t;
  }
  const ResumoDaFolha& passa_a(const Tabuleiro& t, const ChaveDaFolha& c, const ResumoDaFolha& r) {
    resumo = r;
    chave = c;
    tabuleiro = t;
    return resumo;
  }
};

// Few enough to stay in the processor's second cache, which pays more than a record now and then.
constexpr int digitos_do_indice = 12;
constexpr std::size_t registros_de_folhas = std::size_t{1} << digitos_do_indice;
std::array<Registro, registros_de_folhas> folhas;

struct ConstantesDaRaiz {
  float agres, agresprxrei, MOB, PM, shashinn;
  int roque_v, npecasb, npecasp;
  bool rei_b_ativo, rei_p_ativo;
  friend bool operator==(const ConstantesDaRaiz&, const ConstantesDaRaiz&) = default;
};

std::size_t indice_de(std::uint64_t impressao) {
  constexpr std::uint64_t primo = 0x9e3779b97f4a7c15;
  return static_cast<std::size_t>(((impressao ^ impressao >> 31) * primo) >>
                                  (64 - digitos_do_indice));
}

// Where prepara_resumo has looked last; too large when it has been used.
std::size_t preparado = registros_de_folhas;

std::size_t indice_preparado(const Tabuleiro& t) {
  const std::size_t i = preparado < registros_de_folhas ? preparado : indice_de(impressao_de(t));
  preparado = registros_de_folhas;
  return i;
}

}  // namespace

std::uint32_t revisao_da_raiz() {
  static ConstantesDaRaiz ultimas{};
  static std::uint32_t revisao = 1;
  const ConstantesDaRaiz agora = {agres,
                                  agresprxrei,
                                  MOB,
                                  PM,
                                  shashinn,
                                  roque_v,
                                  npecasb,
                                  npecasp,
                                  materialmaiorp <= 90,
                                  materialmaiorb <= 90};
  if (!(agora == ultimas)) {
    ultimas = agora;
    ++revisao;
  }
  return revisao;
}

void prepara_resumo(std::uint64_t impressao) {
  preparado = indice_de(impressao);
  __builtin_prefetch(&folhas[preparado]);
  __builtin_prefetch(&folhas[preparado].chave);
}

const ResumoDaFolha& resumo_de(const Tabuleiro& t, const ChaveDaFolha& chave,
                               ResumoDaFolha (*calcula)()) {
  Registro& r = folhas[indice_preparado(t)];
  return r.e_de(t, chave) && !r.resumo.estimado ? r.resumo : r.passa_a(t, chave, calcula());
}

const ResumoDaFolha& estimativa_de(const Tabuleiro& t, const ChaveDaFolha& chave,
                                   ResumoDaFolha (*estima)()) {
  Registro& r = folhas[indice_preparado(t)];
  return r.e_de(t, chave) ? r.resumo : r.passa_a(t, chave, estima());
}

}  // namespace korvu
