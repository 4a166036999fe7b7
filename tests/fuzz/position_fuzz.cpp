// Any text behind "position ": at most one bestmove comes of it, and the good position line that
// follows is answered as always.
#include "frontend/options.h"
#include "kit.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto asked = fuzz::lines("position " + std::string(fuzz::text(data, size)));
  asked.resize(1);
  asked = fuzz::short_searches(asked);
  asked.insert(asked.end(), {"go", "isready", "position startpos"});
  fuzz::answers(fuzz::defaults());
  const std::string said = fuzz::answers(asked);
  fuzz::demand(said.ends_with("readyok\nbestmove e2e4\n"), said);
  const std::string_view first = std::string_view(said).substr(0, said.find("readyok"));
  fuzz::demand(first.find("bestmove") == first.rfind("bestmove"), "two answers to one position");
  return 0;
}
