#include "companion/go_limits.h"

#include <algorithm>

#include "companion/words.h"

namespace companion {
namespace {

template <class Number>
void take(std::string_view word, std::optional<Number>& into) {
  if (const auto n = number_of<Number>(word)) into = *n;
}

// Four months either way, so that a sum or a product of times is always a number.
constexpr std::int64_t longest = 10'000'000'000;

void take(std::string_view word, std::optional<Milliseconds>& into) {
  if (const auto n = number_of<std::int64_t>(word))
    into = Milliseconds(std::clamp(*n, -longest, longest));
}

void take(std::string_view word, Milliseconds& into) {
  std::optional<Milliseconds> read;
  take(word, read);
  if (read) into = *read;
}

void take_limit(std::string_view key, std::string_view value, GoLimits& go) {
  if (key == "wtime") take(value, go.white.left);
  if (key == "btime") take(value, go.black.left);
  if (key == "winc") take(value, go.white.increment);
  if (key == "binc") take(value, go.black.increment);
  if (key == "movestogo") take(value, go.moves_to_go);
  if (key == "movetime") take(value, go.move_time);
  if (key == "depth") take(value, go.depth);
  if (key == "nodes") take(value, go.nodes);
  if (key == "mate") take(value, go.mate);
}

}  // namespace

GoLimits read_go(std::span<const std::string> words) {
  GoLimits go;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "infinite") go.infinite = true;
    if (words[i] == "ponder") go.ponder = true;
    if (i + 1 < words.size()) take_limit(words[i], words[i + 1], go);
  }
  return go;
}

}  // namespace companion
