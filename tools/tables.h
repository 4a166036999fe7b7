// The tables of the documents, printed from the code as Markdown.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tables {

using Row = std::vector<std::string>;

struct Table {
  Row head;
  std::vector<Row> rows;
};

// A table is made by running the engine's own functions; each run of the program makes one.
struct Entry {
  std::string_view name;
  std::function<Table()> make;
};

std::vector<Entry> of_options();
std::vector<Entry> of_the_dialogue();
std::vector<Entry> of_the_clock();
std::vector<Entry> of_the_board();
std::vector<Entry> of_the_search();

// A number without superfluous digits.
std::string text(double v);
std::string code(std::string_view name);  // `name`
std::string join(const Row& parts, std::string_view between);

// A variable of the engine.
struct Slot {
  std::string_view name;
  std::variant<float*, int*, std::uint32_t*, std::uint8_t*, char*> where;

  std::string value() const;
  void poison() const;  // a value that the engine never gives it
  bool poisoned() const;
};

}  // namespace tables
