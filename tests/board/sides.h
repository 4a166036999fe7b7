// Tests told once, from White's point of view, and run for both colours.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "board_kit.h"

namespace kit {

// The side that a test is told for. For Black every board, move and square is the mirror image.
struct Seen {
  bool white;

  std::string fen(std::string_view told) const {
    return white ? std::string(told) : mirrored(told);
  }
  std::string move(std::string_view told) const {
    std::string m(told);
    if (!white)
      for (const std::size_t i : {1U, 3U}) m[i] = static_cast<char>('1' + '8' - m[i]);
    return m;
  }
  Squares squares(std::string_view told) const { return squares_of(move(told)); }
  int rank(int told) const { return white ? told : 7 - told; }
  std::size_t square(std::string_view told) const {
    return static_cast<std::size_t>(8 * (told[0] - 'a') + rank(told[1] - '1'));
  }
  // A capital letter is a man of this side.
  std::uint8_t code(char told) const {
    const std::uint8_t c = code_of(told);
    return white ? c : static_cast<std::uint8_t>(256 - c);
  }
  korvu::Tabuleiro board(std::string_view told) const { return board_of(fen(told)); }

  // The castling bytes of a ply: king, a-file, h-file.
  std::array<int, 3> own_rights_lost(int n) const { return rights_lost(n, white); }
  std::array<int, 3> other_rights_lost(int n) const { return rights_lost(n, !white); }

  const std::array<std::uint8_t, 8>& own_double_steps(int n) const {
    const korvu::Duplos& d = korvu::duplos_D[static_cast<std::size_t>(n)];
    return white ? d.pb : d.pp;
  }
  const std::array<std::uint8_t, 8>& other_double_steps(int n) const {
    return Seen{!white}.own_double_steps(n);
  }

 private:
  static std::array<int, 3> rights_lost(int n, bool of_white) {
    const korvu::Movidos& m = korvu::jm_D[static_cast<std::size_t>(n)];
    if (of_white) return {m.R_b_jm, m.T_b_a_jm, m.T_b_h_jm};
    return {m.R_p_jm, m.T_p_a_jm, m.T_p_h_jm};
  }
};

inline constexpr std::array<Seen, 2> both_sides = {{{true}, {false}}};

// Runs f(seen) for both colours.
template <class F>
void for_both_sides(F f) {
  for (const Seen seen : both_sides) {
    SCOPED_TRACE(seen.white ? "White" : "Black");
    f(seen);
  }
}

// Runs f(ply, seen) for every ply and both colours.
template <class F>
void on_every_ply(F f) {
  for (int n = first_ply; n <= last_ply; ++n) {
    SCOPED_TRACE("ply " + std::to_string(n));
    for_both_sides([&](Seen seen) { f(n, seen); });
  }
}

}  // namespace kit
