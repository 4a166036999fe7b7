// The per-ply members of the board and of the move loops, picked by run-time numbers.
#pragma once

#include <array>

#include "board/types.h"

namespace kit {

using Loop = void (*)(int x, int y);
using Step = void (*)(int x1, int y1, int x2, int y2);

// The members of one ply for one mover. A member that the ply does not have is null.
struct PlyMembers {
  Step make = nullptr;           // init_tabuleiroN
  Step trial = nullptr;          // init_tabuleiro2_deepN
  Loop check_at = nullptr;       // verifica_xequemate..., the mover's king on the square
  void (*castle_a)() = nullptr;  // verifica_roque0...
  void (*castle_h)() = nullptr;  // verifica_roque8...
  bool (*free_a)() = nullptr;    // the castling's conditions but for attacks
  bool (*free_h)() = nullptr;    //
  void (*phases)() = nullptr;    // all moves of the ply
  Loop gerador = nullptr;        // plies 2 to 23: captures of the man on a square
  Loop geradortest = nullptr;    //
  Loop positive_peao = nullptr;  // odd plies from 7
  std::array<Loop, 6> livre{};   // analiselivre_..., by kind of man
  std::array<Loop, 6> livretest{};
  void (*stored_capture)() = nullptr;  // the phases of the stored moves
  void (*stored_quiet)() = nullptr;
};

// Plies 0 to 23. Ply 0, the game's own board, has only the tests of attack and castling.
const PlyMembers& members(int ply, bool white);

inline Loop livre(const PlyMembers& m, korvu::Peca p) {
  return m.livre[static_cast<std::size_t>(p)];
}
inline Loop livretest(const PlyMembers& m, korvu::Peca p) {
  return m.livretest[static_cast<std::size_t>(p)];
}

}  // namespace kit
