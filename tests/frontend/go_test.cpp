// The budget of a go line: by the columns of its first clock, the men on the board and the level.
#include "frontend/go.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/line.h"
#include "root/caps.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "support/lab.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace korvu {
namespace {

struct Budget {
  int tempo, deep;
  bool extras;
  friend bool operator==(const Budget&, const Budget&) = default;
  friend std::ostream& operator<<(std::ostream& os, const Budget& b) {
    return os << "tempo " << b.tempo << " deep " << b.deep << (b.extras ? " with" : " without")
              << " extras";
  }
};

// The budget of a go line with so many men in all, from the preparation of a default search.
Budget budget(const std::string& go, int men = 30, int level = 2) {
  CPU = level;
  npecasb = men / 2;
  npecasp = men - men / 2;
  deep = 17;
  SEARCH_E = IIDS = EXTRA_EVALL = 1;
  materialba = materialpa = 510;
  prepara_busca<Cor::b>();
  in = go;
  le_relogio();
  EXPECT_EQ(SEARCH_E, IIDS);
  EXPECT_EQ(SEARCH_E, EXTRA_EVAL);
  return {tempo, deep, SEARCH_E != 0};
}

constexpr int untouched = 300000;

TEST(Go, LinesWithoutAClockSearchAtTheDefaults) {
  for (const char* go : {"go", "go infinite", "go movetime 1000", "go depth 5", "go nodes 100",
                         "go ponder", "go searchmoves e2e4", "good morning", "go winc 5 wtime 1"})
    EXPECT_EQ(budget(go), (Budget{untouched, 9, true})) << go;
}

TEST(Go, TheDefaultClockChangesNothing) {
  EXPECT_EQ(budget("go wtime 300000 btime 300000 winc 0 binc 0"), (Budget{300000, 9, true}));
}

TEST(Go, ShortClocksSetTheDepthAndSwitchTheExtrasOff) {
  EXPECT_EQ(budget("go wtime 9 btime 9"), (Budget{untouched, 0, false}));
  EXPECT_EQ(budget("go wtime 99 btime 9"), (Budget{untouched, 0, false}));
  EXPECT_EQ(budget("go wtime 999 btime 9"), (Budget{untouched, 1, false}));
  EXPECT_EQ(budget("go wtime 9000 btime 9000"), (Budget{untouched, 3, false}));
}

TEST(Go, ShortClocksGoDeeperWithFewMen) {
  EXPECT_EQ(budget("go wtime 9 b", 1).deep, 0);
  EXPECT_EQ(budget("go wtime 99 b", 1).deep, 1);
  EXPECT_EQ(budget("go wtime 99 b", 2).deep, 0);
  EXPECT_EQ(budget("go wtime 999 b", 3).deep, 3);
  EXPECT_EQ(budget("go wtime 999 b", 4).deep, 1);
  EXPECT_EQ(budget("go wtime 9999 b", 5).deep, 5);
  EXPECT_EQ(budget("go wtime 9999 b", 6).deep, 3);
}

TEST(Go, OnlyTheFirstDigitAndTheLengthCount) {
  EXPECT_EQ(budget("go wtime 299999 b").tempo, 200000);
  EXPECT_EQ(budget("go wtime 45000 btime 300000"), (Budget{40000, 7, true}));
  EXPECT_EQ(budget("go wtime 1999999 b").tempo, 1000000);
  EXPECT_EQ(budget("go wtime 99999999 b").tempo, 10000000);
  EXPECT_EQ(budget("go wtime 9999999999999 b").tempo, 10000000);
}

TEST(Go, AnOddFirstCharacterLeavesTheClock) {
  EXPECT_EQ(budget("go wtime 04000 b"), (Budget{untouched, 9, true}));
  EXPECT_EQ(budget("go wtime -40000 b"), (Budget{untouched, 9, true}));
  EXPECT_EQ(budget("go wtime -4 b"), (Budget{untouched, 0, false}));  // two columns
  EXPECT_EQ(budget("go wtime -4000000 b").tempo, 10000000);           // eight
}

TEST(Go, ABlankWhereTheClockShouldStartIsNoClock) {
  EXPECT_EQ(budget("go wtime  9 btime 9"), (Budget{untouched, 9, true}));
}

TEST(Go, AClockThatEndsTheLineCountsAsALongOne) {
  EXPECT_EQ(budget("go wtime 100000").tempo, 10000000);
  EXPECT_EQ(budget("go wtime 9").tempo, 10000000);
  EXPECT_EQ(budget("go wtime ").tempo, 10000000);
  EXPECT_EQ(budget("go wtime").tempo, 10000000);
}

TEST(Go, TheFirstClockCountsWhateverItsColour) {
  EXPECT_EQ(budget("go btime 5000 wtime 900000"), (Budget{untouched, 3, false}));
  EXPECT_EQ(budget("go wtime 100000 btime 5000 winc 0 binc 0").tempo, 100000);
}

TEST(Go, AMovesToGoOfOneToThreeDigitsOnlyShiftsTheColumns) {
  EXPECT_EQ(budget("go movestogo 5 wtime 200000 b").tempo, 200000);
  EXPECT_EQ(budget("go movestogo 40 wtime 200000 b").tempo, 200000);
  EXPECT_EQ(budget("go movestogo 100 wtime 200000 b").tempo, 200000);
  EXPECT_EQ(budget("go movestogo 1000 wtime 200000 b").tempo, untouched);
}

TEST(Go, AConfiguredDepthOfEightOrLessStays) {
  deepp = 17;
  materialba = materialpa = 510;
  for (const int configured : {0, 1, 3, 5, 7}) {
    deep = configured;
    prepara_busca<Cor::p>();
    EXPECT_EQ(deep, configured);
  }
  for (const int configured : {9, 11, 17}) {
    deep = configured;
    prepara_busca<Cor::p>();
    EXPECT_EQ(deep, 9);
  }
}

// At each level: the clocks at which the extras go, and the men at or below which the depth of each
// rung is the greater one.
struct Level {
  int cpu, no_extras_at, men_90, men_60, men_30, men_30_deeper, men_10;
};
constexpr Level levels[] = {
    {5, 10000, 15, 11, 17, 7, 9},
    {1, 20000, 13, 9, 15, 5, 7},
    {2, 30000, 11, 7, 13, 3, 5},
    {3, 50000, 9, 5, 11, 1, 3},
};

std::string clock_of(int ms) {
  return "go wtime " + std::to_string(ms) + " b";
}

TEST(GoLevels, SwitchTheExtrasOffAtTheirClock) {
  for (const Level& l : levels) {
    EXPECT_FALSE(budget(clock_of(l.no_extras_at), 30, l.cpu).extras);
    EXPECT_TRUE(budget(clock_of(l.no_extras_at + 10000), 30, l.cpu).extras);
  }
}

TEST(GoLevels, LeaveTheDepthFromAHundredSecondsOn) {
  for (const Level& l : levels) EXPECT_EQ(budget(clock_of(100000), 30, l.cpu).deep, 9);
}

TEST(GoLevels, LowerTheDepthByClockAndMen) {
  for (const Level& l : levels) {
    EXPECT_EQ(budget(clock_of(90000), l.men_90, l.cpu).deep, 9);
    EXPECT_EQ(budget(clock_of(90000), l.men_90 + 1, l.cpu).deep, 7);
    EXPECT_EQ(budget(clock_of(60000), l.men_60, l.cpu).deep, 9);
    EXPECT_EQ(budget(clock_of(60000), l.men_60 + 1, l.cpu).deep, 7);
    EXPECT_EQ(budget(clock_of(30000), l.men_30_deeper, l.cpu).deep, 9);
    EXPECT_EQ(budget(clock_of(30000), l.men_30_deeper + 1, l.cpu).deep, 7);
    EXPECT_EQ(budget(clock_of(30000), l.men_30, l.cpu).deep, 7);
    EXPECT_EQ(budget(clock_of(30000), l.men_30 + 1, l.cpu).deep, 5);
    EXPECT_EQ(budget(clock_of(10000), l.men_10, l.cpu).deep, 7);
    EXPECT_EQ(budget(clock_of(10000), l.men_10 + 1, l.cpu).deep, 5);
  }
}

TEST(GoLevels, AnUnknownLevelSkipsTheLadder) {
  EXPECT_EQ(budget(clock_of(10000), 30, 4), (Budget{10000, 9, true}));
}

// --- Against the rules told once more, on lines of all sorts ---

// The columns of the first clock, or nothing.
std::string clock_in(const std::string& line) {
  const auto is = [&](std::size_t k, char c) { return k < line.size() && line[k] == c; };
  const std::size_t first = is(4, 't')    ? 9
                            : !is(3, 'm') ? 0
                            : is(16, 't') ? 21
                            : is(17, 't') ? 22
                            : is(18, 't') ? 23
                                          : 0;
  if (first == 0) return "";
  if (first >= line.size()) return "endless";
  const std::size_t blank = line.find(' ', first);
  if (blank == std::string::npos) return "endless" + line.substr(first);
  return line.substr(first, blank - first);
}

Budget told(const std::string& line, int men, int level) {
  Budget b{untouched, 9, true};
  const std::string clock = clock_in(line);
  const std::size_t n = clock.size();
  if (n == 0) return b;
  if (n <= 4) {
    const int usual[] = {0, 0, 1, 3}, with_few[] = {0, 1, 3, 5}, few[] = {-1, 1, 3, 5};
    return {untouched, men <= few[n - 1] ? with_few[n - 1] : usual[n - 1], false};
  }
  if (n >= 8 || clock.starts_with("endless"))
    b.tempo = 10000000;
  else if (clock[0] >= '1' && clock[0] <= '9')
    b.tempo = (clock[0] - '0') * (n == 5 ? 10000 : n == 6 ? 100000 : 1000000);
  const Level* l = std::find_if(std::begin(levels), std::end(levels),
                                [=](const Level& row) { return row.cpu == level; });
  if (l == std::end(levels)) return b;
  b.extras = b.tempo > l->no_extras_at;
  // The lowest rung that the clock reaches decides.
  if (b.tempo <= 10000)
    b.deep = men <= l->men_10 ? 7 : 5;
  else if (b.tempo <= 30000)
    b.deep = men <= l->men_30_deeper ? 9 : men <= l->men_30 ? 7 : 5;
  else if (b.tempo <= 60000)
    b.deep = men <= l->men_60 ? 9 : 7;
  else if (b.tempo <= 90000)
    b.deep = men <= l->men_90 ? 9 : 7;
  return b;
}

std::string some_go_line(std::mt19937& dice) {
  const auto one_of = [&](std::initializer_list<const char*> words) {
    return std::string(words.begin()[dice() % words.size()]);
  };
  const auto figures = [&](std::size_t most) {
    std::string text = one_of({"", "", "", "", "0", "-", "x"});
    for (std::size_t n = 1 + dice() % most; n > 0; --n)
      text += static_cast<char>('0' + dice() % 10);
    return text;
  };
  std::string line = "go ";
  if (dice() % 3 == 0) line += one_of({"movestogo ", "moves ", "m "}) + figures(4) + ' ';
  line += one_of({"wtime ", "btime ", "wtime ", "btime ", "infinite", "depth ", "winc ", "wtime"});
  line += figures(9) + one_of({" ", "", " btime 5000", " winc 0 binc 0", "  "});
  if (dice() % 8 == 0) line.insert(2 + dice() % (line.size() - 2), 1, ' ');
  return line;
}

TEST(GoTwin, AgreesOnManyLinesMenAndLevels) {
  std::mt19937 dice(5);
  int short_clocks = 0, long_clocks = 0, lowered = 0;
  for (int k = 0; k < 40000; ++k) {
    const std::string line = some_go_line(dice);
    const int men = static_cast<int>(dice() % 31);
    const int level = static_cast<int>(dice() % 6);
    const Budget should = told(line, men, level);
    ASSERT_EQ(budget(line, men, level), should) << line << ", " << men << " men, level " << level;
    short_clocks += should.deep < 5;
    long_clocks += should.tempo > 1000000;
    lowered += should.deep == 7;
  }
  EXPECT_GT(short_clocks, 1000);
  EXPECT_GT(long_clocks, 1000);
  EXPECT_GT(lowered, 300);
  CPU = 2;
}

TEST(GoLimits, DivideTheCoarseClock) {
  npecasb = npecasp = 15;
  tempo = 300000;
  Tu = 3;
  EXPECT_EQ(limite_brando(), 2000);
  EXPECT_EQ(limite_duro(), 20000);
  Tu = 10;  // 30 / 10 = 3
  EXPECT_EQ(limite_brando(), 300000 / 80);
  EXPECT_EQ(limite_duro(), 300000 / 8);
  npecasb = npecasp = 4;  // 8 / 10 = 0
  EXPECT_EQ(limite_brando(), 300000 / 50);
  EXPECT_EQ(limite_duro(), 300000 / 5);
  Tu = 3;
}

TEST(GoPreparation, DrawValueFollowsTheMaterialQuotient) {
  empp = -5;
  MQ = 5;
  materialba = materialpa = 510;
  prepara_busca<Cor::b>();
  EXPECT_EQ(emp, -15);
  materialba = 600;
  materialpa = 300;  // 5 ln 2 = 3.47: -11.53 and -18.47, cut toward zero
  prepara_busca<Cor::b>();
  EXPECT_EQ(emp, -11);
  EXPECT_EQ(emppp, -11);
  prepara_busca<Cor::p>();
  EXPECT_EQ(emp, -18);
}

TEST(GoPreparation, BringsTheSettingsBackAndLeavesTheStartOfTheClock) {
  const auto prepared = [](auto prepare) {
    lab::clock_at(9000);
    inicio = 1234;
    nodes = 77;
    tempo = 5;
    prepare();
    EXPECT_EQ(inicio, 1234) << "time counts from the position line";
    EXPECT_EQ(nodes, 0U);
    EXPECT_EQ(tempo, 300000);
  };
  for (const bool white : {true, false})
    for (const int scheme : {0, 1, 2, 3}) {
      Positive_filterp = scheme;
      Negative_filterp = 3 - scheme;
      EXTRA_EVALL = scheme % 2;
      Positive_filter = Negative_filter = 9;
      EXTRA_EVAL = 9;
      prepared([=] { white ? prepara_busca<Cor::b>() : prepara_busca<Cor::p>(); });
      EXPECT_EQ(Positive_filter, scheme);
      EXPECT_EQ(Negative_filter, 3 - scheme);
      EXPECT_EQ(EXTRA_EVAL, scheme % 2);
    }
  Positive_filterp = Negative_filterp = 2;
  EXTRA_EVALL = 1;
}

TEST(GoPreparation, TheGoLineLeavesTheStartOfTheClock) {
  for (const char* go : {"go", "go wtime 9 btime 9", "go wtime 45000 btime 1"}) {
    lab::clock_at(9000);
    inicio = 1234;
    budget(go);
    EXPECT_EQ(inicio, 1234) << go;
  }
}

TEST(GoPreparation, TotalsOfZeroGiveSomeDrawValue) {
  materialba = materialpa = 0;
  prepara_busca<Cor::b>();
  EXPECT_LE(std::abs(emp), 1000);
}

TEST(GoPreparation, ManyMenAreMoreThanTwentyFive) {
  materialba = materialpa = 510;
  npecasb = 13;
  npecasp = 12;
  prepara_busca<Cor::b>();
  EXPECT_EQ(DEEP9, 0);
  npecasp = 13;
  prepara_busca<Cor::b>();
  EXPECT_EQ(DEEP9, 1);
}

}  // namespace
}  // namespace korvu
