// A process that never searches must stay small: the game memory holds 100000 lines, but only the
// written ones may cost pages.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "support/lab.h"

namespace {

// Peak resident memory of this process in kB, from the system's own accounting.
long peak_resident_kb() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;)
    if (word == "VmHWM:") {
      long kb = 0;
      status >> kb;
      return kb;
    }
  return -1;
}

TEST(MemoryFootprint, StaysUnderThirtyMegabytesUntilRecordsAreWritten) {
#if defined(__SANITIZE_ADDRESS__) || defined(KORVU_SANITIZED)
  GTEST_SKIP() << "the sanitizers' own memory counts too";
#endif
  lab::dialogue({"uci", "isready", "setoption name Clear memory", "position startpos"});
  const long kb = peak_resident_kb();
  ASSERT_GT(kb, 0);
  EXPECT_LT(kb, 30 * 1024);
}

}  // namespace
