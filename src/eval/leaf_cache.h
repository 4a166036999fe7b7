// The leaves scanned lately. A search meets the same position again and again: by other orders of
// moves, in searches at other depths and with other windows. A record holds all that the scan's
// result depends on and is compared whole, so that a hit is exact.
#pragma once

#include <cstdint>
#include <cstring>

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

// A number that tells where a board's record stands. It is a sum over the squares, so that a move
// changes it by the squares it touches.
inline constexpr std::array<std::uint64_t, 8> fatores_da_impressao = {
    0x9e3779b97f4a7c15, 0xc2b2ae3d27d4eb4f, 0x165667b19e3779f9, 0xd6e8feb86659fd93,
    0xa0761d6478bd642f, 0xe7037ed1a0b428db, 0x8ebc6af09c88c6e3, 0x589965cc75374cc3};

inline std::uint64_t impressao_de(const Tabuleiro& t) {
  std::array<std::uint64_t, 8> colunas;
  std::memcpy(colunas.data(), t.data(), sizeof t);
  std::uint64_t soma = 0;
  for (std::size_t x = 0; x < 8; ++x) soma += colunas[x] * fatores_da_impressao[x];
  return soma;
}

// What the sum grows by when square s changes from one code to another.
inline std::uint64_t mudanca_da_impressao(std::size_t s, std::uint8_t de, std::uint8_t para) {
  return ((static_cast<std::uint64_t>(para) - static_cast<std::uint64_t>(de)) << (8 * (s & 7))) *
         fatores_da_impressao[s >> 3];
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
