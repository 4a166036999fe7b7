#include "memory/ply_tables.h"

namespace korvu {

const float* TabelaDeLance::procura(const ChaveDeBusca& chave) const {
  for (std::size_t i = 0; i < static_cast<std::size_t>(usados); ++i)
    if (chaves[i] == chave && tabuleiros[i] == tab2) return &valores[i];
  return nullptr;
}

void TabelaDeLance::abre(const ChaveDeBusca& chave) {
  const auto i = static_cast<std::size_t>(inc);
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
