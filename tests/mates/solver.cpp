#include "mates/solver.h"

#include <algorithm>

namespace mates {
namespace {

using referee::Move;
using referee::Position;

bool mated(const Position& p) {
  return p.in_check() && p.legal_moves().empty();
}

// The side to move is mated by `moves` moves of the other, whatever it plays.
bool lost_within(const Position& p, int moves) {
  const std::vector<Move> replies = p.legal_moves();
  if (replies.empty()) return p.in_check();
  return moves > 0 && std::all_of(replies.begin(), replies.end(),
                                  [&](const Move& m) { return forced_within(p.after(m), moves); });
}

}  // namespace

bool forced_within(const Position& p, int moves) {
  const std::vector<Move> all = p.legal_moves();
  return std::any_of(all.begin(), all.end(),
                     [&](const Move& m) { return keeps_mate_within(p, m, moves - 1); });
}

bool keeps_mate_within(const Position& p, const Move& m, int moves) {
  const Position q = p.after(m);
  return moves == 0 ? mated(q) : lost_within(q, moves);
}

std::optional<int> distance(const Position& p, int most) {
  for (int n = 1; n <= most; ++n)
    if (forced_within(p, n)) return n;
  return std::nullopt;
}

}  // namespace mates
