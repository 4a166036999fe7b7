// The ladders of the root, told plainly: which expanders share a loop over the ratings, in which
// order.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

namespace plain_ladder {

// An expander: target class '5' queen, '4' rook, '3' knight, '2' bishop, '1' pawn, '0' empty; with
// check or without; the man's letter.
struct Rung {
  char target;
  bool check;
  char man;
};
using Loop = std::vector<Rung>;  // expanders that share a loop over the ratings
using Ladder = std::vector<Loop>;

// "5+ PNB" stands for three expanders, "5- PNB" for those without check.
inline Loop loop(std::initializer_list<std::string_view> groups) {
  Loop rungs;
  for (const std::string_view g : groups)
    for (const char man : g.substr(3)) rungs.push_back({g[0], g[1] == '+', man});
  return rungs;
}

inline void one_loop_each(Ladder& ladder, std::initializer_list<std::string_view> groups) {
  for (const Rung& r : loop(groups)) ladder.push_back({r});
}

inline Loop put_off() {
  return loop({"3+ R", "2+ R", "4+ Q",      "1+ B", "1+ N", "1+ R",     "3+ Q",
               "2+ Q", "1+ Q", "0+ PNBRQK", "3- R", "2- R", "4- Q",     "1- B",
               "1- N", "1- R", "3- Q",      "2- Q", "1- Q", "0- PNBRQK"});
}

inline Ladder dynamic() {
  Ladder l;
  one_loop_each(l, {"5+ PNBRQK", "5- PNBRQK", "4+ PNBRQK", "4- PNBRQK", "3+ PNBRQK", "3- PNBRQK",
                    "2+ PNBRQK", "2- PNBRQK", "1+ PNBRQK", "1- PNBRQK"});
  l.push_back(loop({"0+ PNBRQK", "0- PNBRQK"}));
  return l;
}

inline Ladder consistent() {
  Ladder l;
  one_loop_each(l, {"5+ PNBRQK", "5- PNBRQK", "4+ PNBRK", "4- PNBRK", "3+ PNBK", "3- PNBK",
                    "2+ PNBK", "2- PNBK", "1+ PK", "1- PK"});
  l.push_back(put_off());
  return l;
}

inline Ladder positional() {
  return {loop({"5+ PNBRQK", "5- PNBRQK"}), loop({"4+ PNBRK", "4- PNBRK"}),
          loop({"3+ PNBK", "3- PNBK"}),     loop({"2+ PNBK", "2- PNBK"}),
          loop({"1+ PK", "1- PK"}),         put_off()};
}

inline Ladder against_a_bare_king() {
  return {loop({"0+ P", "0- P"}), loop({"0+ NBRQ", "0- NBRQK", "0+ K"}), loop({"1+ K", "1- K"})};
}

}  // namespace plain_ladder
