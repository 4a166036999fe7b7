// Whole searches of positions that cost next to nothing.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "eval/knobs.h"
#include "root/caps.h"
#include "root/driver.h"
#include "root/root_lab.h"

namespace root_lab {

// Ready for a search of this depth with a limit to the deepening. In the locked position every root
// move is worth 0 at every depth from 3.
inline void prepare(std::string_view fen, int depth, int limit = 9) {
  at_root(fen);
  using namespace korvu;
  deep = depth;
  deepp = limit;
  EXTRA_EVAL = 1;  // deepening needs it; with no budget it changes no value
  piecesac = 0;
  Positive_filter = Negative_filter = 0;
}

// The passes as they were reported: "1" for a single-move pass, "T" for a rest pass, and the depth.
inline std::string passes() {
  std::string row, last;
  for (const Report& r : reports()) {
    const std::string pass = (r.single ? "1/" : "T/") + std::to_string(r.deep) + ' ';
    EXPECT_NE(r.single, r.rest);
    if (pass != last) row += pass;
    last = pass;
  }
  return row;
}

}  // namespace root_lab
