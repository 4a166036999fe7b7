// The game memory: which answer the engine gave to a position line, for the life of the process.
// The key is the raw text of the line; the memory knows nothing of chess.
#pragma once

#include <string_view>

#include "board/state.h"

namespace korvu {

inline constexpr int registros_de_jogo = 100000;
inline constexpr std::size_t tamanho_da_linha = 1000;

using LinhaDeJogo = std::array<char, tamanho_da_linha>;

inline LinhaDeJogo inn{};          // the present line, padded with '9'
inline std::uint8_t HASH1 = 1;     // the option "Memory"
inline std::uint8_t HASH_MEM = 0;  // the present line fits
inline std::uint8_t mem_TEST = 0;  // the present position was answered from the memory

// Copies a position line to inn. One of 1000 characters or more takes no part in the memory:
// HASH_MEM becomes 0.
void guarda_linha(std::string_view posicao);

// hash_mem_scan: looks for the first record of inn that was made with at least this clock (in
// milliseconds, coarse) and the present deep. On a hit loads E, a to d and PR and sets mem_TEST.
void hash_mem_scan(int tempo);

// hash_mem_build: writes inn, the clock, deep, E, a to d and PR as the next record; the oldest goes
// when the ring is full. The last record is never written.
void hash_mem_build(int tempo);

// Puts all records back to the empty state.
void limpa_memoria();

// Index of the next record to write (inc1).
int indice_da_memoria();

}  // namespace korvu
