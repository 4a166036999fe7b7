#include "memory/ply_tables.h"

#include <bit>
#include <cstring>

#include "board/imprint.h"

namespace korvu {
namespace {

// A byte made of key and board. Keys that compare equal share it: the two zeros are made one.
std::uint8_t digital_de(const ChaveDeBusca& c, const Tabuleiro& t) {
  std::uint64_t soma = impressao_de(t);
  for (const float f : {c.inferior, c.superior, c.deep})
    soma = (soma ^ std::bit_cast<std::uint32_t>(f + 0.0F)) * 0x9e3779b97f4a7c15;
  return static_cast<std::uint8_t>(soma >> 56);
}

}  // namespace

const float* TabelaDeLance::procura(const ChaveDeBusca& chave) const {
  const std::uint8_t digital = digital_de(chave, tab2);
  const std::uint8_t *const inicio = digitais.data(), *const fim = inicio + usados;
  const auto proxima = [=](const std::uint8_t* p) {
    return static_cast<const std::uint8_t*>(
        std::memchr(p, digital, static_cast<std::size_t>(fim - p)));
  };
  for (const std::uint8_t* p = proxima(inicio); p != nullptr; p = proxima(p + 1)) {
    const auto i = static_cast<std::size_t>(p - inicio);
    if (chaves[i] == chave && tabuleiros[i] == tab2) return &valores[i];
  }
  return nullptr;
}

void TabelaDeLance::abre(const ChaveDeBusca& chave) {
  const auto i = static_cast<std::size_t>(inc);
  digitais[i] = digital_de(chave, tab2);
  chaves[i] = chave;
  tabuleiros[i] = tab2;
  if (inc < usados) return;
  valores[i] = 1;  // until it is closed, a new record has the value of an empty one
  usados = inc + 1;
}

bool TabelaDeLance::fecha(float valor) {
  valores[static_cast<std::size_t>(inc)] = valor;
  if (++inc < registros_por_tabela - 1) return false;
  inc = 0;
  return true;
}

}  // namespace korvu
