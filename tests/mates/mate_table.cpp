// How many of the mates of mates.txt the engine finds with a short clock, as a table. Ends with 1
// when a mate in one is missed or a mate is announced that is none.
//
//   mate_table FILE
#include <array>
#include <iomanip>
#include <iostream>

#include "mates/positions.h"

namespace {

struct Row {
  int positions = 0, found = 0, announced = 0, wrong = 0;
};

using Table = std::array<Row, mates::reach + 1>;  // by distance, 0 for no mate

// To depth 6, 8 or 10 by the number of men, with the evaluation reduced to material.
constexpr std::string_view go = "go wtime 10000 btime 10000 winc 0 binc 0";

Table count(const std::vector<mates::Told>& all) {
  Table table;
  for (const mates::Told& t : all) {
    const mates::Answer a = mates::ask(t, go);
    Row& row = table.at(static_cast<std::size_t>(t.distance));
    ++row.positions;
    row.found += mates::finds(t, a);
    row.announced += a.moves > 0;
    if (mates::is_true(t, a)) continue;
    ++row.wrong;
    std::cout << "wrong: " << t.line << ' ' << a.best.text() << " mate in " << a.moves << '\n';
  }
  return table;
}

bool print(const Table& table) {
  bool good = table[1].found == table[1].positions;
  std::cout << "mate in  positions  found  announced  wrongly\n";
  for (std::size_t d = 1; d <= table.size(); ++d) {
    const Row& r = table[d % table.size()];
    std::cout << std::setw(7) << (d < table.size() ? std::to_string(d) : "none") << std::setw(11)
              << r.positions << std::setw(7) << r.found << std::setw(11) << r.announced
              << std::setw(9) << r.wrong << '\n';
    good = good && r.wrong == 0;
  }
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: mate_table FILE\n";
    return 2;
  }
  return print(count(mates::told(argv[1]))) ? 0 : 1;
}
