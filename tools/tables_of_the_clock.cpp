// What a clock on the go line makes of the search, found by reading go lines.
#include <array>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/go.h"
#include "frontend/line.h"
#include "root/driver.h"
#include "tables.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace tables {
namespace {

constexpr int most_men = 30;
constexpr int prepared_depth = 9;
constexpr int prepared_clock = 300000;

struct Level {
  int cpu;
  std::string_view name;
};
constexpr std::array<Level, 4> levels = {{{5, "extreme"}, {1, "high"}, {2, "medium"}, {3, "low"}}};

// Reads a go line with so many men on the board, as after the preparation.
void read(const std::string& line, int men) {
  using namespace korvu;
  npecasb = men / 2;
  npecasp = men - npecasb;
  deep = prepared_depth;
  tempo = prepared_clock;
  SEARCH_E = IIDS = EXTRA_EVAL = 1;
  in = line;
  le_relogio();
}

bool extras() {
  return korvu::SEARCH_E && korvu::IIDS && korvu::EXTRA_EVAL;
}

// The depths by S, the number of men without kings: "7, S <= 11: 9".
std::string depths(const std::string& line) {
  Row all;
  int last = -1;
  for (int men = most_men; men >= 0; --men) {
    read(line, men);
    if (korvu::deep == last) continue;
    last = korvu::deep;
    all.push_back((men == most_men ? "" : "S <= " + text(men) + ": ") + text(last));
  }
  return join(all, ", ") + (extras() ? "" : "; no extras");
}

std::string go(std::string_view clock) {
  return "go wtime " + std::string(clock) + " btime 1";
}

Table short_clocks() {
  Table t{{"Columns of the clock", "Example", "Depth"}, {}};
  for (const std::string clock : {"9", "99", "999", "9999"})
    t.rows.push_back({text(static_cast<double>(clock.size())), code(go(clock)), depths(go(clock))});
  return t;
}

Table level_ladder() {
  Table t{{"Coarse clock"}, {}};
  for (const Level& level : levels) t.head.emplace_back(level.name);
  for (int clock = 10000; clock <= 100000; clock += 10000) {
    Row row = {text(clock)};
    for (const Level& level : levels) {
      korvu::CPU = level.cpu;
      row.push_back(depths(go(std::to_string(clock))));
    }
    t.rows.push_back(row);
  }
  return t;
}

Table forms() {
  Table t{{"Line", "Coarse clock", "Depth", "Extras"}, {}};
  for (const std::string line :
       {"go wtime 300000 btime 5000 winc 0 binc 0", "go wtime 299999 btime 5000",
        "go btime 450000 wtime 9000", "go wtime 99999 btime 99999",
        "go movestogo 9 wtime 200000 btime 1", "go movestogo 40 wtime 200000 btime 1",
        "go movestogo 100 wtime 200000 btime 1", "go wtime 200000", "go wtime 5000", "go wtime",
        "go wtime -20000 btime 1", "go", "go infinite", "go movetime 1000", "go depth 5",
        "go ponder wtime 9000 btime 1", "gone fishing"}) {
    korvu::CPU = 2;
    read(line, most_men);
    t.rows.push_back({code(line), text(korvu::tempo), text(korvu::deep), extras() ? "yes" : "no"});
  }
  return t;
}

Table limits() {
  Table t{{"Men", "Time usage", "Soft limit", "Hard limit"}, {}};
  korvu::tempo = prepared_clock;
  for (const int men : {30, 20, 10, 2})
    for (const int usage : {1, 3, 10}) {
      korvu::npecasb = men / 2;
      korvu::npecasp = men - korvu::npecasb;
      korvu::Tu = usage;
      t.rows.push_back({text(men), text(usage), text(korvu::limite_brando()) + " ms",
                        text(korvu::limite_duro()) + " ms"});
    }
  return t;
}

}  // namespace

std::vector<Entry> of_the_clock() {
  return {{"go-lines", forms},
          {"short-clocks", short_clocks},
          {"level-ladder", level_ladder},
          {"time-limits", limits}};
}

}  // namespace tables
