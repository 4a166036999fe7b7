// The clock and the two time limits of a search.
#pragma once

#include <cstdint>

namespace korvu {

// Milliseconds of a monotonic clock, from an arbitrary start. Only differences count.
int relogio_monotonico();

// The reading that everything uses. Tests and tools replace it to make a run independent of time.
inline int (*relogio)() = relogio_monotonico;

inline int tempo = 0;        // coarse clock of this search, milliseconds
inline int inicio = 0;       // reading when the position line was taken in
inline int fim = 0;          // last reading
inline int CPU = 2;          // the option "CPU power level": 5 extreme, 1 high, 2 medium, 3 low
inline int Tu = 3;           // the option "Time usage"
inline std::uint8_t TC = 1;  // the option "Time control": the limits apply

// Reads the clock into fim; milliseconds since inicio, at most 2^31 - 1. A clock that has gone back
// counts as that much, so that the limits strike.
int decorrido();

// After this time no further depth is begun and no line is extended, milliseconds.
int limite_brando();
// After this time the pass is over, milliseconds.
int limite_duro();

}  // namespace korvu
