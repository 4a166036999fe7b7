// The words of a `go` line.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

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
};

// Reads the words behind `go`, in any order. Unknown words are passed over, and so are limits
// without a number. The moves behind `searchmoves` are passed over too: the engine cannot be kept
// to some moves.
GoLimits read_go(std::span<const std::string> words);

}  // namespace companion
