// The leaves scanned lately. A search meets the same position again and again: by other orders of
// moves, in searches at other depths and with other windows. A record holds all that the scan's
// result depends on and is compared whole, so that a hit is exact.
#pragma once

#include <cstdint>

#include "board/imprint.h"
#include "board/state.h"
#include "eval/knobs.h"

namespace korvu {

// What a leaf's scan gives. `soma` is the correction without the root move's own part
// (extraevalll), which differs from one root move to the next; no number where it must be summed
// exactly.
struct ResumoDaFolha {
  struct Lados {
    float kattack, kdefend, cen;
  };
  double soma;
  Lados branco, preto;
  bool falta_material;
  bool estimado = false;  // `soma` is an estimate, and the sides' sums are not known
};

// All that the result depends on besides the board. `revisao` stands for the settings and the
// counts of the root: it grows whenever one of them has changed since the last leaf.
struct ChaveDaFolha {
  std::uint32_t revisao;
  std::int32_t membro;  // which of the four extra_evals
  std::uint8_t x_Rb, y_Rb, x_Rp, y_Rp;
  std::int16_t roque_b, roque_p;
  friend bool operator==(const ChaveDaFolha&, const ChaveDaFolha&) = default;
};

std::uint32_t revisao_da_raiz();

template <Cor raiz, Cor ataca>
ChaveDaFolha chave_da_folha() {
  return {revisao_da_raiz(),
          2 * static_cast<int>(raiz) + static_cast<int>(ataca),
          static_cast<std::uint8_t>(p_x_Rb),
          static_cast<std::uint8_t>(p_y_Rb),
          static_cast<std::uint8_t>(p_x_Rp),
          static_cast<std::uint8_t>(p_y_Rp),
          static_cast<std::int16_t>(roque_b),
          static_cast<std::int16_t>(roque_p)};
}

// Begins to fetch the record that the next leaf will ask for: memory is slow, and there is other
// work to do before. With another number than the leaf's own the record is looked for, and kept, at
// that number's place.
void prepara_resumo(std::uint64_t impressao);

// The result for the board t under this key; `calcula` gives it when it is not known. The reference
// holds until the next call.
const ResumoDaFolha& resumo_de(const Tabuleiro& t, const ChaveDaFolha& chave,
                               ResumoDaFolha (*calcula)());
// The same where an estimate will do.
const ResumoDaFolha& estimativa_de(const Tabuleiro& t, const ChaveDaFolha& chave,
                                   ResumoDaFolha (*estima)());

}  // namespace korvu
