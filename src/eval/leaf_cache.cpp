#include "eval/leaf_cache.h"

#include <cstring>

namespace korvu {
namespace {

struct alignas(64) Registro {
  Tabuleiro tabuleiro{};
  ChaveDaFolha chave{};  // revision 0: empty
  ResumoDaFolha resumo{};
};

constexpr std::size_t registros_de_folhas = 1 << 15;
std::array<Registro, registros_de_folhas> folhas;

struct ConstantesDaRaiz {
  float agres, agresprxrei, MOB, PM, shashinn;
  int roque_v, npecasb, npecasp;
  bool rei_b_ativo, rei_p_ativo;
  friend bool operator==(const ConstantesDaRaiz&, const ConstantesDaRaiz&) = default;
};

std::size_t indice_de(const Tabuleiro& t) {
  constexpr std::uint64_t primo = 0x9e3779b97f4a7c15;
  std::array<std::uint64_t, 8> palavras;
  std::memcpy(palavras.data(), t.data(), sizeof t);
  std::uint64_t h = 0, g = 0;
  for (std::size_t i = 0; i < palavras.size(); i += 2) {
    h = (h ^ palavras[i]) * primo;
    g = (g ^ palavras[i + 1]) * primo;
    h ^= h >> 32;
    g ^= g >> 32;
  }
  return static_cast<std::size_t>((h ^ (g * primo)) >> 20) % registros_de_folhas;
}

// Where prepara_resumo has looked last; too large when it has been used.
std::size_t preparado = registros_de_folhas;

std::size_t indice_preparado(const Tabuleiro& t) {
  const std::size_t i = preparado < registros_de_folhas ? preparado : indice_de(t);
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

void prepara_resumo() {
  preparado = indice_de(tab2);
  __builtin_prefetch(&folhas[preparado]);
  __builtin_prefetch(&folhas[preparado].chave);
}

const ResumoDaFolha& resumo_de(const Tabuleiro& t, const ChaveDaFolha& chave,
                               ResumoDaFolha (*calcula)()) {
  Registro& r = folhas[indice_preparado(t)];
  if (r.chave == chave && r.tabuleiro == t) return r.resumo;
  r.resumo = calcula();
  r.chave = chave;
  r.tabuleiro = t;
  return r.resumo;
}

}  // namespace korvu
