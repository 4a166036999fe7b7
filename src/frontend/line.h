// The input line, looked at by column.
#pragma once

#include <string>

namespace korvu {

inline std::string in;  // the line read last; every reader stores into this one

inline constexpr int alem_da_linha = -1;

// The character of column k, counted from 0. The column just past the end reads as NUL, one further
// out as `alem_da_linha`, which equals no character.
inline int coluna(std::size_t k) {
  if (k < in.size()) return static_cast<unsigned char>(in[k]);
  return k == in.size() ? '\0' : alem_da_linha;
}

}  // namespace korvu
