#include "companion/info_line.h"

#include <algorithm>
#include <span>

#include "companion/game.h"
#include "companion/words.h"

namespace companion {
namespace {

constexpr std::string_view keys_with_one_word[] = {
    "depth", "seldepth", "currmove", "currmovenumber", "nodes", "time", "hashfull", "nps"};

std::optional<Score> read_score(const std::string& kind, const std::string& value) {
  const auto n = number_of<int>(value);
  if (!n || (kind != "cp" && kind != "mate")) return std::nullopt;
  return Score{kind == "mate", *n};
}

// Reads the field at word i; gives the number of its words, 0 when it is none.
std::size_t read_field(const Words& words, std::size_t i, InfoLine& info) {
  const std::string& key = words[i];
  if (key == "score" && i + 2 < words.size()) {
    info.score = read_score(words[i + 1], words[i + 2]);
    if (info.score) info.fields.emplace_back(key, words[i + 1] + ' ' + words[i + 2]);
    return 3;
  }
  if (i + 1 >= words.size() ||
      std::ranges::find(keys_with_one_word, key) == std::end(keys_with_one_word))
    return 0;
  const std::string& value = words[i + 1];
  if (key == "depth") info.depth = number_of<int>(value);
  if (key == "nodes") info.nodes = number_of<std::uint64_t>(value);
  info.fields.emplace_back(key, value);
  return 2;
}

void set_move_in_work_right(InfoLine& info, const rules::Position& root) {
  const auto field =
      std::ranges::find(info.fields, "currmove", [](const auto& f) { return f.first; });
  if (field == info.fields.end()) return;
  if (const auto move = legal_move(root, field->second)) {
    field->second = move->text();
    return;
  }
  info.drop("currmove");
  info.drop("currmovenumber");
}

}  // namespace

int Score::rank() const {
  constexpr int beyond_all = 1'000'000'000;
  if (!mate) return value;
  return value > 0 ? beyond_all - value : -beyond_all - value;
}

bool InfoLine::has(std::string_view key) const {
  return std::ranges::any_of(fields, [&](const auto& field) { return field.first == key; });
}

void InfoLine::put(std::string_view key, const std::string& value) {
  const auto field =
      std::ranges::find(fields, key, [](const auto& f) { return std::string_view(f.first); });
  if (field != fields.end())
    field->second = value;
  else
    fields.emplace_back(key, value);
}

void InfoLine::drop(std::string_view key) {
  std::erase_if(fields, [&](const auto& field) { return field.first == key; });
}

InfoLine InfoLine::progress() const {
  InfoLine rest = *this;
  rest.drop("score");
  rest.score.reset();
  rest.pv.clear();
  return rest;
}

std::string InfoLine::text() const {
  std::string line = "info";
  for (const auto& [key, value] : fields) line += ' ' + key + ' ' + value;
  if (!pv.empty()) line += " pv";
  for (const rules::Move& move : pv) line += ' ' + move.text();
  return line;
}

std::optional<InfoLine> read_info(std::string_view line, const rules::Position& root) {
  const Words words = words_of(line);
  if (words.empty() || words[0] != "info") return std::nullopt;
  InfoLine info;
  for (std::size_t i = 1; i < words.size();) {
    if (words[i] == "pv") {
      info.pv = legal_start(root, std::span(words).subspan(i + 1));
      break;
    }
    i += std::max<std::size_t>(read_field(words, i, info), 1);
  }
  set_move_in_work_right(info, root);
  return info;
}

}  // namespace companion
