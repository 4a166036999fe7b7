#include "companion/options.h"

#include <algorithm>
#include <array>

#include "companion/words.h"

namespace companion {
namespace {

constexpr std::array<std::string_view, 4> kinds = {"check", "spin", "combo", "button"};

constexpr const char* not_served = "UCI_Chess960";
constexpr const char* alias_of_own_book = "OwnBook";
constexpr const char* overhead = "Move Overhead";
constexpr const char* ponder = "Ponder";

bool same_name(std::string_view a, std::string_view b) {
  return lower(a) == lower(b);
}

// Reads the words behind the type into the option.
void read_details(std::span<const std::string> words, Option& option) {
  for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
    const std::string &key = words[i], &value = words[i + 1];
    if (key == "default") option.fallback = value;
    if (key == "min") option.min = number_of<int>(value).value_or(0);
    if (key == "max") option.max = number_of<int>(value).value_or(0);
    if (key == "var") option.settings.push_back(value);
  }
}

}  // namespace

std::optional<Option> read_option(std::string_view line) {
  const Words words = words_of(line);
  const auto type = std::find(words.begin(), words.end(), "type");
  if (words.size() < 3 || words[0] != "option" || words[1] != "name") return std::nullopt;
  if (words.end() - type < 2 || type - words.begin() < 3) return std::nullopt;
  const auto kind = std::find(kinds.begin(), kinds.end(), *(type + 1));
  if (kind == kinds.end()) return std::nullopt;
  Option option;
  option.name = joined({words.begin() + 2, type});
  option.kind = static_cast<Kind>(kind - kinds.begin());
  read_details({type + 2, words.end()}, option);
  return option;
}

std::string offer(const Option& option) {
  std::string text = "option name " + option.name + " type " +
                     std::string(kinds[static_cast<std::size_t>(option.kind)]);
  if (option.kind != Kind::button) text += " default " + option.fallback;
  if (option.kind == Kind::spin)
    text += " min " + std::to_string(option.min) + " max " + std::to_string(option.max);
  for (const std::string& setting : option.settings) text += " var " + setting;
  return text;
}

std::optional<std::string> setting_of(const Option& option, std::string_view text) {
  const auto among = [&](const std::vector<std::string>& settings) -> std::optional<std::string> {
    for (const std::string& setting : settings)
      if (same_name(setting, text)) return setting;
    return std::nullopt;
  };
  switch (option.kind) {
    case Kind::check:
      return among({"true", "false"});
    case Kind::combo:
      return among(option.settings);
    case Kind::spin:
      if (const auto n = number_of<int>(text); n && *n >= option.min && *n <= option.max)
        return std::to_string(*n);
      break;
    case Kind::button:
      break;
  }
  return std::nullopt;
}

std::string setoption(const std::string& name, const std::string& value) {
  return setoption(name) + " value " + value;
}
std::string setoption(const std::string& button) {
  return "setoption name " + button;
}

// Threads and Hash are what match frameworks set in every engine: the engine has one thread, and
// memory of a fixed size.
Options::Options() {
  own_ = {{alias_of_own_book, Kind::check, "true", 0, 0, {}},
          {"Threads", Kind::spin, "1", 1, 1, {}},
          {"Hash", Kind::spin, "128", 1, 1048576, {}},
          {overhead, Kind::spin, "50", 0, 5000, {}},
          {ponder, Kind::check, "false", 0, 0, {}}};
  for (const Option& option : own_) own_chosen_[option.name] = option.fallback;
}

void Options::learn(std::string_view line) {
  auto option = read_option(line);
  if (!option) return;
  if (option->kind != Kind::button) chosen_[option->name] = option->fallback;
  engine_.push_back(std::move(*option));
}

std::vector<std::string> Options::offers() const {
  std::vector<std::string> lines;
  for (const Option& option : engine_)
    if (option.name != not_served) lines.push_back(offer(option));
  for (const Option& option : own_)
    if (option.name != alias_of_own_book || engine_has(own_book)) lines.push_back(offer(option));
  return lines;
}

const Option* Options::find(std::string_view name) const {
  if (same_name(name, not_served)) return nullptr;
  for (const std::vector<Option>* options : {&engine_, &own_})
    for (const Option& option : *options)
      if (same_name(option.name, name)) return &option;
  return nullptr;
}

Options::Answer Options::set(std::span<const std::string> words) {
  const auto name = std::find(words.begin(), words.end(), "name");
  if (name == words.end()) return {};
  // The last one: "Castle value" is a name.
  const std::string separator[] = {"value"};
  const auto value = std::find_end(name, words.end(), std::begin(separator), std::end(separator));
  const Option* option = find(joined({name + 1, value}));
  if (option && option->name == alias_of_own_book) option = find(own_book);
  if (!option) return {};
  if (option->kind == Kind::button) return {Answer::pressed, option->name};
  const auto setting =
      setting_of(*option, value == words.end() ? "" : joined({value + 1, words.end()}));
  if (!setting) return {Answer::refused, option->name};
  (engine_has(option->name) ? chosen_ : own_chosen_)[option->name] = *setting;
  return {Answer::kept, option->name};
}

Settings Options::defaults() const {
  Settings all;
  for (const Option& option : engine_)
    if (option.kind != Kind::button) all[option.name] = option.fallback;
  return all;
}

bool Options::engine_has_button(std::string_view name) const {
  return std::ranges::any_of(engine_, [&](const Option& option) {
    return option.kind == Kind::button && option.name == name;
  });
}

int Options::deep_setting() const {
  const auto setting = chosen_.find(deep);
  return setting == chosen_.end() ? 9 : number_of<int>(setting->second).value_or(9);
}

int Options::overhead_ms() const {
  return number_of<int>(own_chosen_.at(overhead)).value_or(0);
}

bool Options::ponders() const {
  return own_chosen_.at(ponder) == "true";
}

}  // namespace companion
