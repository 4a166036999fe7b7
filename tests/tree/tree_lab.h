// Setting one node or loop up by hand: a position on the board of a ply, the bounds above it, the
// depth of the line. Tests are told with White making the incoming move or moving in the loop; for
// the other colour the whole story is mirrored.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "board/move.h"
#include "board/state.h"
#include "eval/knobs.h"
#include "support/ply_names.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace tree_lab {

using korvu::Cor;
using korvu::Lance;

inline constexpr float start_alfa = -16500, start_beta = 16500;

// Nobody can ever take anything or move a pawn: each king walks on its own first rank with two
// moves at most. Every leaf is worth the same, 0 where the logarithm is added.
inline constexpr std::string_view locked =
    "3k4/p1p1p1p1/P1P1P1P1/8/8/p1p1p1p1/P1P1P1P1/3K4 w - - 0 1";

// The same position with the colours exchanged.
std::string mirrored(std::string_view fen);

template <Cor cor>
std::string told_for(std::string_view fen) {
  return cor == Cor::b ? std::string(fen) : mirrored(fen);
}

// "e2e4", with the ranks mirrored for Black.
template <Cor cor>
constexpr Lance move_of(std::string_view text) {
  constexpr auto rank = [](char c) { return cor == Cor::b ? c - '1' : '8' - c; };
  return {text[0] - 'a', rank(text[1]), text[2] - 'a', rank(text[3])};
}

// Square index of "e4", mirrored for Black.
template <Cor cor>
std::size_t square_of(std::string_view name) {
  return korvu::casa(name[0] - 'a', cor == Cor::b ? name[1] - '1' : '8' - name[1]);
}

// The position stands on the board of this ply, with its totals and flags, as if a line had led
// there. Bounds are open, no move is stored, caps are out of reach, and every selective step, the
// tables, the limits and the extra evaluation are off; the clock stands at 0.
void stand(int ply, std::string_view fen);

// Totals after this ply, in place of what stands on the board.
template <Cor cor>
void totals(int ply, float mover, float other) {
  korvu::material<cor>(ply) = mover;
  korvu::material<korvu::outra(cor)>(ply) = other;
}

// Calls the node of ply N with a move of `cor` that has just been tried at ply N - 1.
template <int N, Cor cor>
void enter(std::string_view text) {
  const Lance m = move_of<cor>(text);
  korvu::init_tabuleiro2_deep<N - 1, cor>(m.aa, m.bb, m.cc, m.dd);
  if constexpr (cor == Cor::b)
    korvu::deep_b<N>(m.aa, m.bb, m.cc, m.dd);
  else
    korvu::deep_p<N>(m.aa, m.bb, m.cc, m.dd);
}

// The value slot of ply N: alfa at even plies, beta at odd ones.
inline float& value(int n) {
  return n % 2 == 0 ? korvu::alfa[static_cast<std::size_t>(n)]
                    : korvu::beta[static_cast<std::size_t>(n)];
}

// The cut flag of the node at ply N bears its parent's number.
inline std::uint8_t& cut_flag(int n) {
  return n % 2 == 0 ? korvu::corte_beta[static_cast<std::size_t>(n - 1)]
                    : korvu::corte_alfa[static_cast<std::size_t>(n - 1)];
}

// The board of ply N bears a mark that no move could leave: has the node made its move there since?
void mark_board(int ply);
bool board_is_marked(int ply);

// From now on every reading of the clock is what this function says.
void clock_says(std::function<int()> reading);
int clock_reads();  // since the last clock_says or stand

// f.template operator()<N, cor>() for every ply from From to To by steps of Step, both colours.
template <int From, int To, int Step = 1, class F>
void each_node(F f) {
  if constexpr (From <= To) {
    f.template operator()<From, Cor::b>();
    f.template operator()<From, Cor::p>();
    each_node<From + Step, To, Step>(f);
  }
}

template <class F>
void each_colour(F f) {
  f.template operator()<Cor::b>();
  f.template operator()<Cor::p>();
}

// What a failure inside each_node or each_colour should say.
template <Cor cor>
std::string at(int n) {
  return (cor == Cor::b ? "deep_b" : "deep_p") + std::to_string(n);
}

}  // namespace tree_lab
