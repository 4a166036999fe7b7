// Prints one of the tables that the documents hold, by its name; without a name, all names.
#include "tables.h"

#include <cmath>
#include <iostream>
#include <sstream>

namespace tables {
namespace {

constexpr int poison_value = 77;

}  // namespace

std::string text(double v) {
  std::ostringstream os;
  os.precision(9);
  os << v;
  return os.str();
}

std::string code(std::string_view name) {
  return "`" + std::string(name) + "`";
}

std::string join(const Row& parts, std::string_view between) {
  std::string joined;
  for (const std::string& part : parts) {
    if (!joined.empty()) joined += between;
    joined += part;
  }
  return joined;
}

std::string Slot::value() const {
  if (const auto* letter = std::get_if<char*>(&where)) return {'"', **letter, '"'};
  return std::visit([](auto* slot) { return text(*slot); }, where);
}

void Slot::poison() const {
  std::visit([](auto* slot) { *slot = poison_value; }, where);
}

bool Slot::poisoned() const {
  return std::visit([](auto* slot) { return *slot == poison_value; }, where);
}

}  // namespace tables

namespace {

std::vector<tables::Entry> all_tables() {
  std::vector<tables::Entry> all;
  for (const auto& family :
       {tables::of_options(), tables::of_the_dialogue(), tables::of_the_clock(),
        tables::of_the_board(), tables::of_the_search()})
    all.insert(all.end(), family.begin(), family.end());
  return all;
}

void print(const tables::Row& row) {
  std::cout << "| " << tables::join(row, " | ") << " |\n";
}

void print(const tables::Table& table) {
  print(table.head);
  std::cout << '|';
  for (std::size_t i = 0; i < table.head.size(); ++i) std::cout << "---|";
  std::cout << '\n';
  for (const tables::Row& row : table.rows) print(row);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view asked = argc > 1 ? argv[1] : "";
  for (const tables::Entry& entry : all_tables()) {
    if (asked.empty()) std::cout << entry.name << '\n';
    if (asked != entry.name) continue;
    print(entry.make());
    return 0;
  }
  return asked.empty() ? 0 : 1;
}
