// Who attacks a square, by walks from it over the board: as plainly as it can be told, for boards
// of any kind.
#pragma once

#include <cstdlib>

#include "board/types.h"

namespace plain_attack {

// Codes as signed numbers, White's positive.
inline int at(const korvu::Tabuleiro& t, int x, int y) {
  const int code = t[static_cast<std::size_t>(8 * x + y)];
  return code < 128 ? code : code - 256;
}

inline bool on_board(int x, int y) {
  return x >= 0 && x < 8 && y >= 0 && y < 8;
}

// What the first man seen from (x, y) in this direction is; 0 when there is none.
inline int seen(const korvu::Tabuleiro& t, int x, int y, int dx, int dy) {
  for (x += dx, y += dy; on_board(x, y); x += dx, y += dy)
    if (at(t, x, y) != 0) return at(t, x, y);
  return 0;
}

// Does a man of this side (+1 White, -1 Black) attack (x, y)?
inline bool attacked(const korvu::Tabuleiro& t, int x, int y, int side) {
  for (int dx = -2; dx <= 2; ++dx)
    for (int dy = -2; dy <= 2; ++dy) {
      if ((dx == 0 && dy == 0) || !on_board(x + dx, y + dy)) continue;
      const int man = side * at(t, x + dx, y + dy);
      if (std::abs(dx * dy) == 2 && man == 32) return true;
      if (std::abs(dx) == 2 || std::abs(dy) == 2) continue;
      if (man == 110) return true;
      if (man == 10 && dy == -side && dx != 0) return true;
      const int far = side * seen(t, x, y, dx, dy);
      if (far == 90 || far == (dx * dy == 0 ? 50 : 33)) return true;
    }
  return false;
}

}  // namespace plain_attack
