// What the fuzz targets share: dialogues in this process that cannot wait or search for long.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// The bytes as text, and the lines of a text.
std::string_view text(const std::uint8_t* data, std::size_t size);
std::vector<std::string> lines(std::string_view text);

// Lines that put every option to its printed default and empty the memories.
std::vector<std::string> defaults();

// The same lines, made harmless for a fuzzer, which has to try thousands: depths and time limits
// are switched on again before each, so that no option line makes a search long, and go lines whose
// clock would order a depth of its own are left out.
std::vector<std::string> short_searches(const std::vector<std::string>& lines);

// Runs the lines through the engine's dialogue and gives what it said. The clock starts at 0 and
// goes on by 7 ms with each reading. Whatever was asked, every line said must be one that the
// dialogue knows.
std::string answers(const std::vector<std::string>& lines);

// Ends the process with a report when `holds` is false.
void demand(bool holds, std::string_view what);

}  // namespace fuzz
