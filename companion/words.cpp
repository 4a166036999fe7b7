#include "companion/words.h"

#include <algorithm>

namespace companion {

Words words_of(std::string_view line) {
  constexpr std::string_view gaps = " \t\r\n\v\f";
  Words words;
  for (std::size_t at = line.find_first_not_of(gaps); at != std::string_view::npos;) {
    const std::size_t end = std::min(line.find_first_of(gaps, at), line.size());
    words.emplace_back(line.substr(at, end - at));
    at = line.find_first_not_of(gaps, end);
  }
  return words;
}

std::string joined(std::span<const std::string> words) {
  std::string text;
  for (const std::string& word : words) {
    if (!text.empty()) text += ' ';
    text += word;
  }
  return text;
}

std::string lower(std::string_view text) {
  std::string low(text);
  for (char& c : low)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return low;
}

}  // namespace companion
