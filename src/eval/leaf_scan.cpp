#include "eval/leaf_scan.h"

namespace korvu {
namespace {

struct RegistroDePeoes {
  Bits b = 0, p = 0;
  Estruturas estruturas{};  // of a board without pawns: the start state is a valid record
};

constexpr std::size_t registros_de_peoes = 4096;
std::array<RegistroDePeoes, registros_de_peoes> registros;

std::size_t indice_de(Bits b, Bits p) {
  const Bits h = (b * 0x9e3779b97f4a7c15) ^ (p * 0xc2b2ae3d27d4eb4f);
  return static_cast<std::size_t>(h >> 32) % registros_de_peoes;
}

template <Cor cor>
std::int16_t soma_da_estrutura(const Tabuleiro& t, int s) {
  int total = 0;
  estrutura_do_peao<cor>(t, coluna(s), fila_de(s), [&total](int n) { total += n; });
  return static_cast<std::int16_t>(total);
}

}  // namespace

const Estruturas& estruturas_de(const Tabuleiro& t, Bits peoes_b, Bits peoes_p) {
  RegistroDePeoes& r = registros[indice_de(peoes_b, peoes_p)];
  if (r.b == peoes_b && r.p == peoes_p) return r.estruturas;
  r = {peoes_b, peoes_p, {}};
  std::size_t i = 0;
  cada_casa(peoes_b | peoes_p, [&](int s) {
    r.estruturas[i++] =
        (peoes_b & bit(s)) != 0 ? soma_da_estrutura<Cor::b>(t, s) : soma_da_estrutura<Cor::p>(t, s);
    return false;
  });
  return r.estruturas;
}

}  // namespace korvu
