#include "companion/options.h"

#include <gtest/gtest.h>

#include "companion/words.h"
#include "frontend/options.h"

namespace {

using companion::Options;

// As the engine of this build has them.
Options options_of_the_engine() {
  Options options;
  for (const korvu::Opcao& o : korvu::opcoes()) options.learn(korvu::linha_da_opcao(o));
  return options;
}

Options::Answer set(Options& options, std::string_view line) {
  return options.set(companion::words_of(line));
}

bool offers(const std::vector<std::string>& lines, const std::string& line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

}  // namespace

TEST(CompanionOptions, TheEnginesAreOfferedWordForWordButOne) {
  const auto lines = options_of_the_engine().offers();
  int offered = 0;
  for (const korvu::Opcao& o : korvu::opcoes()) {
    const bool served = o.nome != "UCI_Chess960";
    EXPECT_EQ(offers(lines, korvu::linha_da_opcao(o)), served) << o.nome;
    offered += served;
  }
  EXPECT_EQ(offered, 32);
}

TEST(CompanionOptions, ItsOwnComeBehind) {
  const auto lines = options_of_the_engine().offers();
  ASSERT_EQ(lines.size(), 37U);
  EXPECT_EQ(lines[32], "option name OwnBook type check default true");
  EXPECT_EQ(lines[33], "option name Threads type spin default 1 min 1 max 1");
  EXPECT_TRUE(lines[34].starts_with("option name Hash type spin default "));
  EXPECT_TRUE(lines[35].starts_with("option name Move Overhead type spin default "));
  EXPECT_EQ(lines[36], "option name Ponder type check default false");
}

TEST(CompanionOptions, NamesAndSettingsCountInAnyCase) {
  Options options = options_of_the_engine();
  EXPECT_EQ(set(options, "name null MOVE filter value Off").what, Options::Answer::kept);
  EXPECT_EQ(options.chosen().at("Null move filter"), "off");
  EXPECT_EQ(set(options, "name PVS value FALSE").what, Options::Answer::kept);
  EXPECT_EQ(options.chosen().at("PVS"), "false");
}

TEST(CompanionOptions, TheBookHasTwoNames) {
  Options options = options_of_the_engine();
  set(options, "name OwnBook value false");
  EXPECT_EQ(options.chosen().at("Own book"), "false");
  set(options, "name Own book value true");
  EXPECT_EQ(options.chosen().at("Own book"), "true");
}

// The engine would read the first character alone: 12 as 1, "fast" as "full".
TEST(CompanionOptions, WhatIsNoSettingIsRefused) {
  Options options = options_of_the_engine();
  for (const char* line :
       {"name Castle value value 12", "name Castle value value -1", "name Castle value value",
        "name Castle value value x", "name Positive float filter value fast", "name PVS value 1"})
    EXPECT_EQ(set(options, line).what, Options::Answer::refused) << line;
  EXPECT_EQ(options.chosen(), options.defaults());
  EXPECT_EQ(set(options, "name Threads value 2").what, Options::Answer::refused);
}

TEST(CompanionOptions, WhatIsNotOfferedIsUnknown) {
  Options options = options_of_the_engine();
  for (const char* line : {"name UCI_Chess960 value true", "name MultiPV value 2", "name", ""})
    EXPECT_EQ(set(options, line).what, Options::Answer::unknown) << line;
  EXPECT_EQ(options.chosen(), options.defaults());
}

TEST(CompanionOptions, ButtonsArePassedOnByName) {
  Options options = options_of_the_engine();
  const auto answer = set(options, "name clear memory");
  EXPECT_EQ(answer.what, Options::Answer::pressed);
  EXPECT_EQ(companion::setoption(answer.name), "setoption name Clear memory");
}

TEST(CompanionOptions, ItsOwnSettingsAreKept) {
  Options options = options_of_the_engine();
  EXPECT_EQ(options.deep_setting(), 9);
  EXPECT_FALSE(options.ponders());
  set(options, "name Deep value 4");
  set(options, "name Move Overhead value 120");
  set(options, "name Ponder value true");
  EXPECT_EQ(options.deep_setting(), 4);
  EXPECT_EQ(options.overhead_ms(), 120);
  EXPECT_TRUE(options.ponders());
  EXPECT_FALSE(options.chosen().contains("Ponder"));
}

// "Castle value" has the word that ends a name in its own.
TEST(CompanionOptions, ANameMayHoldTheWordValue) {
  Options options = options_of_the_engine();
  EXPECT_EQ(set(options, "name Castle value value 7").what, Options::Answer::kept);
  EXPECT_EQ(options.chosen().at("Castle value"), "7");
}
