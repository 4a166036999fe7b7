// The words of a `go` line.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace companion {

using Milliseconds = std::chrono::milliseconds;

struct Clock {
  std::optional<Milliseconds> left;  // may be negative: the time is over
  Milliseconds increment{0};
};

struct GoLimits {
  Clock white, black;
  std::optional<int> moves_to_go, depth, mate;
  std::optional<std::uint64_t> nodes;
  std::optional<Milliseconds> move_time;
  bool infinite = false, ponder = false;
  std::vector<std::string> complaints;  // of what could not be taken
};

// Reads the words behind `go`, in any order. Unknown words are passed over without a word. A limit
// whose number is missing, cannot be read or is too small is complained of and does not count; one
// that is too large counts as the largest. `searchmoves` is complained of as well, and its moves
// are passed over: the engine cannot be kept to some moves.
GoLimits read_go(std::span<const std::string> words);

}  // namespace companion
