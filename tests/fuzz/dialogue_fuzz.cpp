// Any lines at all: nothing breaks, nothing unknown is said, and the engine hears the lines that
// follow.
#include "kit.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto asked = fuzz::short_searches(fuzz::lines(fuzz::text(data, size)));
  fuzz::answers(fuzz::defaults());
  fuzz::answers(asked);
  fuzz::demand(fuzz::answers({"isready"}) == "readyok\n", "deaf after the dialogue");
  return 0;
}
