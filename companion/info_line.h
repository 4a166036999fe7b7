// The engine's `info` lines.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rules/position.h"

namespace companion {

struct Score {
  bool mate = false;
  int value = 0;  // centipawns, or moves to mate: negative when the side to move is mated

  // Of two scores the greater is the better for the side to move.
  friend bool operator<(const Score& a, const Score& b) { return a.rank() < b.rank(); }
  friend bool operator==(const Score&, const Score&) = default;

 private:
  int rank() const;
};

struct InfoLine {
  std::vector<std::pair<std::string, std::string>> fields;  // all but the moves, in their order
  std::optional<Score> score;
  std::optional<int> depth;
  std::optional<std::uint64_t> nodes;
  std::vector<rules::Move> pv;

  bool has(std::string_view key) const;
  // Gives the field a value, in its place, or behind the others when it is not there.
  void put(std::string_view key, const std::string& value);
  void drop(std::string_view key);
  // What it tells of the work alone, without the score and the moves.
  InfoLine progress() const;
  std::string text() const;
};

// Reads an `info` line of a search of `root`; nothing when it is no such line. The moves end at the
// first that is not legal where it stands, and get the letter of a promotion, which the engine
// leaves out. A move in work that is not legal is left out with its number.
std::optional<InfoLine> read_info(std::string_view line, const rules::Position& root);

}  // namespace companion
