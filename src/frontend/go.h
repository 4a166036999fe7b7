// The preparation of a search and the time budget of a `go` line.
#pragma once

#include "board/types.h"

namespace korvu {

// Readies the search of `raiz` for the go line to come: counters, draw value, tables, filters, a
// depth of 9 at most and the clock of a line that names none.
template <Cor raiz>
void prepara_busca();

// Reads the clock out of the go line `in`, by columns: sets tempo by its length and first digit,
// and on short clocks lowers deep and switches extension, deepening and extra evaluation off. The
// first clock on the line counts, whatever colour the engine plays. A line without one changes
// nothing.
void le_relogio();

extern template void prepara_busca<Cor::b>();
extern template void prepara_busca<Cor::p>();

}  // namespace korvu
