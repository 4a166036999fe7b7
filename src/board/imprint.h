// A board made into one number, for whoever keeps records of boards: leaves and ply tables.
#pragma once

#include <cstring>

#include "board/types.h"

namespace korvu {

// The number is a sum over the squares, so that a move changes it by the squares it touches. Boards
// that differ may share it.
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

}  // namespace korvu
