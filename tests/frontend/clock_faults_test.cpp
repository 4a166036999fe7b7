// A clock that goes as no clock should: searches end, and no time that is told is negative.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "frontend/dialogue.h"
#include "support/lab.h"
#include "tree/clock.h"

namespace {

std::uint32_t reading = 0, start = 0;
std::uint32_t (*course)(std::uint32_t) = nullptr;  // from the number of a reading to the clock

constexpr std::uint32_t hour = 3600000;

// The times told in a search of a game's third move, with this course of the clock from `begin` on.
struct Told {
  std::vector<int> times;
  std::string bestmove;
  long nodes = 0;
};

const std::string opening = "startpos moves a2a3 a7a6";
const std::string ending = "fen 8/pp3k2/8/8/8/8/PP3K2/8 w - - 0 1 moves f2e3 f7e6";

Told search(std::uint32_t begin, std::uint32_t (*way)(std::uint32_t), const std::string& deep,
            const std::string& position = opening) {
  reading = 0;
  start = begin;
  course = way;
  korvu::relogio = [] { return static_cast<int>(start + course(reading++)); };
  std::stringstream asked("setoption name Memory value false\nsetoption name Deep value " + deep +
                          "\nposition startpos\nposition " + position + "\ngo\n");
  std::ostringstream said;
  korvu::dialogo(asked, said);
  Told told;
  const std::string text = said.str();
  static const std::regex time(" nodes [0-9]+ time (-?[0-9]+)"),
      end(" nodes ([0-9]+) pv ....\nbestmove (....)");
  for (std::sregex_iterator i(text.begin(), text.end(), time), none; i != none; ++i)
    told.times.push_back(std::stoi((*i)[1]));
  std::smatch last;
  if (std::regex_search(text, last, end)) {
    told.nodes = std::stol(last[1]);
    told.bestmove = last[2];
  }
  return told;
}

std::uint32_t stands(std::uint32_t) {
  return 0;
}
std::uint32_t goes_on(std::uint32_t n) {
  return n;
}
std::uint32_t leaps_back(std::uint32_t n) {
  return n < 10 ? n : n - hour;
}
std::uint32_t leaps_ahead(std::uint32_t n) {
  return n < 10 ? n : n + hour;
}

}  // namespace

// To this depth the clock decides nothing, whatever it shows.
TEST(ClockFaults, NeitherWayChangesASearchThatTheClockDoesNotEnd) {
  const Told steady = search(2 * hour, stands, "3");
  ASSERT_FALSE(steady.times.empty());
  for (const auto way : {goes_on, leaps_back, leaps_ahead}) {
    const Told told = search(2 * hour, way, "3");
    EXPECT_EQ(told.bestmove, steady.bestmove);
    EXPECT_EQ(told.nodes, steady.nodes);
    EXPECT_EQ(told.times.size(), steady.times.size());
  }
}

TEST(ClockFaults, ALeapBackTellsNoNegativeTime) {
  const Told told = search(2 * hour, leaps_back, "3");
  ASSERT_GT(told.times.size(), 10U);
  EXPECT_GE(*std::ranges::min_element(told.times), 0);
}

// How long the search has run is then unknown, and too long is the safe answer.
TEST(ClockFaults, ALeapAheadOrBackEndsTheSearch) {
  const Told steady = search(2 * hour, stands, "7", ending);
  for (const auto way : {leaps_ahead, leaps_back}) {
    const Told told = search(2 * hour, way, "7", ending);
    EXPECT_EQ(told.bestmove.size(), 4U);
    // The pass is left at the next reading, and of three depths the deeper two are not begun.
    EXPECT_GT(told.nodes, 0);
    EXPECT_LT(told.nodes, steady.nodes / 2);
  }
}

// The reading is a number of 32 bits. When it wraps, and when it turns from the greatest positive
// number to the smallest negative one, the time goes on.
TEST(ClockFaults, AClockThatWrapsGoesOn) {
  for (const std::uint32_t begin : {UINT32_MAX - 5, static_cast<std::uint32_t>(INT_MAX) - 5}) {
    const Told told = search(begin, goes_on, "3");
    ASSERT_GT(told.times.size(), 10U);
    EXPECT_TRUE(std::ranges::is_sorted(told.times));
    EXPECT_GT(told.times.front(), 0);
    EXPECT_LE(told.times.back(), static_cast<int>(reading));
  }
}
