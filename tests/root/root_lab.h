// Setting the root up by hand and listening to what it reports. As below the root, tests are told
// with White at the root and mirrored for Black.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "board/root_move.h"
#include "memory/ply_tables.h"
#include "root/first_ply.h"
#include "tree/tree_lab.h"

namespace root_lab {

using korvu::Cor;
using tree_lab::each_colour;
using tree_lab::locked;
using tree_lab::move_of;
using tree_lab::told_for;

inline constexpr float no_best = -10000000;

// The position is the root's, nothing searched yet: open window, no best move, caps at the mate
// ladder, settings as tree_lab::stand leaves them, with narrowing of the caps off, and no reports
// heard.
void at_root(std::string_view fen);

// The same, for a pass of this depth.
void at_depth(std::string_view fen, int depth);

// All settings as a new process has them.
void default_settings();

// What stood in the slots when a root move was reported.
struct Report {
  std::string move;
  float score;
  int curr, rating, deep, DEEP;
  bool single, rest;  // the kind of the pass
  float alfa0, ALFA0, E, EP;
  int emp;
  std::uint8_t repetitions;  // pempatee
  int roque_b, roque_p;
};
const std::vector<Report>& reports();

// The coordinates of all reported moves, with blanks between.
std::string reported_moves();

// Runs the node of the first ply for a move of the root side, told as for White.
template <Cor root>
void first_ply(std::string_view move) {
  const korvu::Lance m = move_of<root>(move);
  korvu::init_tabuleiro2<root>(m.aa, m.bb, m.cc, m.dd);
  korvu::deep1<root>(m.aa, m.bb, m.cc, m.dd);
}

// A move as the reports write it, told as for White.
template <Cor root>
std::string written(std::string_view move) {
  const korvu::Lance m = move_of<root>(move);
  const korvu::Texto t = korvu::texto_do_lance(m.aa, m.bb, m.cc, m.dd);
  return {t.A, t.B, t.C, t.D};
}

struct Reading {
  int deep, tables, capped, second;
  float beta1, shallow;
  std::array<float, 24> caps;
};

// What readers of the clock at ply 7 saw of a root move's searches.
template <Cor root>
std::vector<Reading> readings(std::string_view move) {
  std::vector<Reading> seen;
  korvu::TC = 1;
  tree_lab::clock_says([&] {
    const Reading now{korvu::deep,  korvu::HASHf, korvu::PVSm,  korvu::LMRtest,
                      korvu::beta1, korvu::BETA1, korvu::MAXcut};
    const bool same = !seen.empty() && seen.back().deep == now.deep &&
                      seen.back().capped == now.capped && seen.back().second == now.second;
    if (!same) seen.push_back(now);
    return 0;
  });
  first_ply<root>(move);
  korvu::TC = 0;
  return seen;
}

// The best move of the search as text, or "none".
std::string best_move();

}  // namespace root_lab
