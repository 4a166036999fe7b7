#include "memory/game_memory.h"

#include <algorithm>

namespace korvu {
namespace {

struct RegistroDeJogo {
  LinhaDeJogo mem;       // the line
  float tempo, deep, E;  // mem_param
  Jogada lance;          // mem_parammove
  char PR;               // mem_paramch
};

// 100 MB of zero pages: the system hands them out as records are written, so that a process that
// never searches pays nothing. Empty records are those from `usados` on.
std::array<RegistroDeJogo, registros_de_jogo> memoria;
int inc1 = 0;
int usados = 0;

}  // namespace

void guarda_linha(std::string_view posicao) {
  inn.fill('9');
  const std::size_t n = std::min(posicao.size(), tamanho_da_linha);
  std::copy_n(posicao.begin(), n, inn.begin());
  HASH_MEM = n < tamanho_da_linha;
}

void hash_mem_scan(int tempo) {
  const auto t = static_cast<float>(tempo), profundidade = static_cast<float>(deep);
  mem_TEST = 0;
  const auto fim = memoria.begin() + usados;
  const auto r = std::find_if(memoria.begin(), fim, [&](const RegistroDeJogo& registro) {
    return t <= registro.tempo && profundidade <= registro.deep && registro.mem == inn;
  });
  if (r == fim) return;
  mem_TEST = 1;
  E = r->E;
  jogada = r->lance;
  PR = r->PR;
}

void hash_mem_build(int tempo) {
  memoria[static_cast<std::size_t>(inc1)] = {
      inn, static_cast<float>(tempo), static_cast<float>(deep), E, jogada, PR};
  usados = std::max(usados, inc1 + 1);
  if (++inc1 == registros_de_jogo - 1) inc1 = 0;
}

void limpa_memoria() {
  inc1 = usados = 0;
}

int indice_da_memoria() {
  return inc1;
}

}  // namespace korvu
