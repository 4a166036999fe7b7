// From the limits of a `go` line to what the engine is asked, and when it is answered for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "companion/go_limits.h"

namespace companion {

// One search of the engine. A setting that is not named is the client's own.
struct Stage {
  std::optional<int> deep;  // the option "Deep"
  bool untimed = false;     // without "Time control"
  std::string go;           // the line for the engine

  friend bool operator==(const Stage&, const Stage&) = default;
};

struct SearchPlan {
  // Run one after the other. The engine reports no line of a deep search before its first pass of
  // nine plies is through, which can take seconds; shallow searches go before, so that there is a
  // good move at any moment.
  std::vector<Stage> stages;
  std::optional<Milliseconds> patience;  // the move is due after so much time
  std::optional<Milliseconds> enough;    // after so much no further search is begun
  std::optional<std::uint64_t> nodes;    // ... or when so many are reported
  std::optional<int> mate;               // ... or a mate in so many moves
  std::optional<int> depth;              // ... or a line deeper than this
};

// `deep` is the client's setting of "Deep", `overhead` the time that a move may lose on its way.
SearchPlan plan_search(const GoLimits& go, bool white_moves, int deep, Milliseconds overhead);

}  // namespace companion
