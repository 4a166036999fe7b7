// The best line so far of a search that has not ended.
#pragma once

#include <optional>
#include <vector>

#include "companion/info_line.h"

namespace companion {

// The engine reports every root move that it has searched, good or bad. Within a depth the best
// line is the one with the highest score. When a new depth begins the best move of the one before
// stays until it has a line of that depth itself, or another move has a better score.
class BestLine {
 public:
  // Lines that name no move in work close a search, and tell another kind of depth: they do not
  // count. True when the best line is another than before.
  bool hear(const InfoLine& info);

  // A search has ended with this move, or it is what to play before the first. Lines of a later one
  // are deeper.
  void conclude(const rules::Move& move);

  std::optional<rules::Move> move() const;
  const std::optional<InfoLine>& line() const { return best_; }  // that of the move, if it has one

 private:
  const InfoLine* best_of_the_depth() const;
  const InfoLine* of_the_depth(const rules::Move& move) const;

  int depth_ = 0;
  std::vector<InfoLine> lines_;  // of this depth
  std::optional<InfoLine> best_;
  std::optional<rules::Move> concluded_;
};

// A move for when nothing has been heard: mate at once, or the most material after the best capture
// in reply, and of such moves one toward the centre. Nothing when there is no legal move.
std::optional<rules::Move> plain_choice(const rules::Position& position);

}  // namespace companion
