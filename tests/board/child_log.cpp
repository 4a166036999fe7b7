#include "child_log.h"

#include "board_kit.h"
#include "eval/knobs.h"
#include "ply_members.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace kit {
namespace {

std::vector<korvu::Tabuleiro> boards;
std::vector<int> marks;
int ply = 0;
bool mover_is_white = false;

bool children_read_the_clock(int n) {
  return n >= 6 && n % 2 == 0;
}

int note_child() {
  const korvu::Tabuleiro& board =
      children_read_the_clock(ply) ? korvu::tab2 : korvu::tabd[static_cast<std::size_t>(ply + 1)];
  if (boards.empty() || boards.back() != board) {
    boards.push_back(board);
    marks.push_back(mover_is_white ? korvu::roque_b : korvu::roque_p);
  }
  return 0;
}

}  // namespace

std::vector<korvu::Tabuleiro> children(int n, bool white, const korvu::Lance& stored_quiet,
                                       const korvu::Lance& stored_capture) {
  using namespace korvu;
  boards.clear();
  marks.clear();
  ply = n;
  mover_is_white = white;
  open_ply(n);
  guardado[static_cast<std::size_t>(n)] = stored_quiet;
  guardado_g[static_cast<std::size_t>(n)] = stored_capture;
  for (std::size_t k = static_cast<std::size_t>(n) + 1; k < MAXcut.size(); ++k) MAXcut[k] = -20000;
  LMR = PVS = VERTICAL_filt = SEARCH_E = EXTRA_EVAL = 0;
  NULL_MOVE = 0;
  pempatee = 0;
  // Deep enough for the first odd ply that reads the clock, and one more for its replies.
  const int reader = n <= 4 ? 7 : children_read_the_clock(n) ? n + 1 : n + 2;
  deep = reader + 2;
  relogio = note_child;
  members(n, white).phases();
  lab::clock_at(0);
  return boards;
}

const std::vector<int>& castling_marks() {
  return marks;
}

}  // namespace kit
