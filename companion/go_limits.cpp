#include "companion/go_limits.h"

#include <algorithm>
#include <limits>

#include "companion/words.h"

namespace companion {
namespace {

// Whole numbers that may not be less than this; false for any other word.
template <class Number>
bool take(std::string_view word, std::int64_t least, std::optional<Number>& into) {
  constexpr auto most = static_cast<std::int64_t>(
      std::min<std::uint64_t>(std::numeric_limits<Number>::max(), INT64_MAX));
  const auto n = number_of<std::int64_t>(word);
  if (!n || *n < least) return false;
  into = static_cast<Number>(std::min(*n, most));
  return true;
}

// Four months either way, so that a sum or a product of times is always a number.
constexpr std::int64_t longest = 10'000'000'000;

bool take(std::string_view word, std::int64_t least, std::optional<Milliseconds>& into) {
  std::optional<std::int64_t> read;
  if (!take(word, least, read)) return false;
  into = Milliseconds(std::clamp(*read, -longest, longest));
  return true;
}

bool take(std::string_view word, std::int64_t least, Milliseconds& into) {
  std::optional<Milliseconds> read = into;
  const bool taken = take(word, least, read);
  into = *read;
  return taken;
}

// False when the key's value is no number for it. A clock may have run out. No moves to go are what
// some clients call a game without a control.
bool take_limit(std::string_view key, std::string_view value, GoLimits& go) {
  if (key == "wtime") return take(value, INT64_MIN, go.white.left);
  if (key == "btime") return take(value, INT64_MIN, go.black.left);
  if (key == "winc") return take(value, 0, go.white.increment);
  if (key == "binc") return take(value, 0, go.black.increment);
  if (key == "movestogo") return take(value, 0, go.moves_to_go);
  if (key == "movetime") return take(value, 0, go.move_time);
  if (key == "depth") return take(value, 1, go.depth);
  if (key == "nodes") return take(value, 1, go.nodes);
  if (key == "mate") return take(value, 1, go.mate);
  return true;
}

}  // namespace

GoLimits read_go(std::span<const std::string> words) {
  GoLimits go;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "infinite") go.infinite = true;
    if (words[i] == "ponder") go.ponder = true;
    if (words[i] == "searchmoves")
      go.complaints.emplace_back("go searchmoves: all moves are searched");
    const std::string value = i + 1 < words.size() ? words[i + 1] : "";
    if (take_limit(words[i], value, go)) continue;
    const std::string gap = value.empty() ? "" : " ";
    go.complaints.push_back("go " + words[i] + gap + value + ": no limit, it does not count");
  }
  return go;
}

}  // namespace companion
