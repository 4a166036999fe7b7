// The tables of plies 3 to 5 through the calls that the search makes.
#pragma once

#include <optional>

#include "memory/ply_tables.h"

namespace bench {

using korvu::Cor;

// All tables empty, the slots that make a key at fixed values.
inline void rest_tables() {
  korvu::limpa_tabelas<Cor::b>();
  korvu::limpa_tabelas<Cor::p>();
  korvu::FULL3 = korvu::FULL4 = korvu::FULL5 = 0;
  korvu::alfa.fill(-16500);
  korvu::beta.fill(16500);
  korvu::deep = 9;
  korvu::PVSm = korvu::PVSm2 = 0;
  korvu::HASHf = 1;
  for (std::size_t s = 0; s < 64; ++s) korvu::tab2[s] = s % 8 == 1 ? 10 : s % 8 == 6 ? 246 : 0;
}

template <int N>
float& slot() {
  return (N % 2 == 0 ? korvu::alfa : korvu::beta)[N];
}

// A record from its opening to its closing. The slot of the ply is left as it was: it is a bound of
// later plies.
template <int N, Cor cor>
void remember(float value) {
  korvu::hash_table_build<N, cor>();
  const float before = slot<N>();
  slot<N>() = value;
  korvu::hash_table_valor<N, cor>();
  slot<N>() = before;
}

// What a scan finds for the present slots, if anything. The flag and the slot are left as before.
template <int N, Cor cor>
std::optional<float> recall() {
  constexpr float untouched = -987654;
  const float before = slot<N>();
  korvu::HASHTABLE<N>() = 0;
  slot<N>() = untouched;
  korvu::hash_table_scan<N, cor>();
  const float found = slot<N>();
  slot<N>() = before;
  if (korvu::HASHTABLE<N>() == 0 && found == untouched) return std::nullopt;
  if (korvu::HASHTABLE<N>() == 0 || found == untouched) return untouched;  // flag and slot disagree
  korvu::HASHTABLE<N>() = 0;
  return found;
}

}  // namespace bench
