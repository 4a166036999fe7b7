// The options: those that the engine names in its reply to `uci`, and a few of the companion's own.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

enum class Kind { check, spin, combo, button };

struct Option {
  std::string name;
  Kind kind = Kind::check;
  std::string fallback;               // the default
  int min = 0, max = 0;               // spin
  std::vector<std::string> settings;  // combo
};

// Reads a line "option name ..."; nothing when it is no such line.
std::optional<Option> read_option(std::string_view line);

// The line that offers the option.
std::string offer(const Option& option);

// The text as the option writes its settings, whatever its case; nothing when it has no such
// setting.
std::optional<std::string> setting_of(const Option& option, std::string_view text);

// Settings of the engine's options, by name; buttons are not among them.
using Settings = std::map<std::string, std::string>;

// What the options of the engine are called that the companion sets by itself.
inline constexpr const char* deep = "Deep";
inline constexpr const char* time_control = "Time control";
inline constexpr const char* own_book = "Own book";
inline constexpr const char* memory = "Memory";
inline constexpr const char* clear_memory = "Clear memory";

// The line that gives an option of the engine a setting, or presses a button.
std::string setoption(const std::string& name, const std::string& value);
std::string setoption(const std::string& button);

class Options {
 public:
  Options();

  // Takes a line of the engine's reply to `uci`.
  void learn(std::string_view line);

  // The lines offered to the client: the engine's options but the one for Chess960, which the
  // companion cannot serve, then its own.
  std::vector<std::string> offers() const;

  struct Answer {
    enum { kept, pressed, refused, unknown } what = unknown;
    std::string name;  // of the engine's button, when it was pressed
  };
  // Takes the words of a setoption line. Names and settings count in any case.
  Answer set(std::span<const std::string> words);

  Settings defaults() const;                          // the engine's
  const Settings& chosen() const { return chosen_; }  // the engine's, as the client wants them
  bool engine_has(const std::string& name) const { return chosen_.contains(name); }
  bool engine_has_button(std::string_view name) const;
  int deep_setting() const;  // of "Deep", 9 when the engine has no such option
  int overhead_ms() const;
  bool ponders() const;

 private:
  const Option* find(std::string_view name) const;

  std::vector<Option> engine_, own_;
  Settings chosen_, own_chosen_;
};

}  // namespace companion
