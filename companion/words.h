// Lines of the protocol as words.
#pragma once

#include <charconv>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

using Words = std::vector<std::string>;

// The words of a line, parted by any run of blanks, tabs and carriage returns.
Words words_of(std::string_view line);

// The words with one blank between them.
std::string joined(std::span<const std::string> words);

std::string lower(std::string_view text);

// A whole number that fills the word; nothing for any other text, or one out of range.
template <class Number>
std::optional<Number> number_of(std::string_view word) {
  Number value{};
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

}  // namespace companion
