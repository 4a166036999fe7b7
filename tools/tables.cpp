// Prints one of the tables that the documents hold, by its name, in Markdown or for manual pages;
// without a name, all names.
#include "tables.h"

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "about.h"

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

void print_as_markdown(const tables::Table& table) {
  print(table.head);
  std::cout << '|';
  for (std::size_t i = 0; i < table.head.size(); ++i) std::cout << "---|";
  std::cout << '\n';
  for (const tables::Row& row : table.rows) print(row);
}

// As text lines of a manual page, which are kept short, must not begin with a point or an
// apostrophe, and take a backslash for an escape.
std::string in_roff(const std::string& text) {
  constexpr std::size_t longest_line = 78;
  std::istringstream words(text);
  std::string lines, line;
  for (std::string word; words >> word;) {
    if (!line.empty() && line.size() + 1 + word.size() > longest_line) {
      lines += line + '\n';
      line.clear();
    }
    if (!line.empty()) line += ' ';
    if (line.empty() && (word[0] == '.' || word[0] == '\'')) line = "\\&";
    for (const char c : word) line += c == '\\' ? "\\e" : std::string(1, c);
  }
  return lines + line;
}

// The cells between the first and the last that hold something, with their heads.
std::string middle_cells(const tables::Row& head, const tables::Row& row) {
  tables::Row told;
  for (std::size_t i = 1; i + 1 < row.size(); ++i)
    if (!row[i].empty()) told.push_back(head[i] + ": " + row[i]);
  return tables::join(told, "; ");
}

// The items of a tagged list: the first cell is the tag, the last one tells about it. Quoted, so
// that no word of the tag is taken for a macro.
void print_as_mdoc(const tables::Table& table) {
  for (const tables::Row& row : table.rows) {
    std::cout << ".It Cm \"" << in_roff(row.front()) << "\"\n";
    std::cout << in_roff(row.back()) << '\n';
    std::cout << in_roff('(' + middle_cells(table.head, row) + ')') << '\n';
  }
}

constexpr std::string_view usage =
    "usage: korvu-tables [--mdoc] [TABLE]\n"
    "Prints one of the tables that the documents hold, as Markdown or as the items of a list in a\n"
    "manual page; without a name, the names of all tables.\n";

int print_table(std::string_view asked, void (*print)(const tables::Table&)) {
  for (const tables::Entry& entry : all_tables()) {
    if (asked != entry.name) continue;
    print(entry.make());
    return EXIT_SUCCESS;
  }
  std::cerr << "korvu-tables: no table is called " << asked << '\n';
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  if (tools::tells_about_itself(argc, argv, "korvu-tables", usage)) return EXIT_SUCCESS;
  const bool mdoc = argc > 1 && argv[1] == std::string_view("--mdoc");
  const int name = mdoc ? 2 : 1;
  if (argc > name) return print_table(argv[name], mdoc ? print_as_mdoc : print_as_markdown);
  for (const tables::Entry& entry : all_tables()) std::cout << entry.name << '\n';
}
