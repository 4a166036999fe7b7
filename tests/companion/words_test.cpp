#include "companion/words.h"

#include <gtest/gtest.h>

using companion::Words;
using companion::words_of;

TEST(Words, ArePartedByAnyGap) {
  EXPECT_EQ(words_of("  go \t wtime  100\r"), (Words{"go", "wtime", "100"}));
  EXPECT_EQ(words_of("isready"), Words{"isready"});
  EXPECT_EQ(words_of(""), Words{});
  EXPECT_EQ(words_of(" \t\r"), Words{});
}

TEST(Words, AreJoinedByOneBlank) {
  EXPECT_EQ(companion::joined(Words{"Own", "book"}), "Own book");
  EXPECT_EQ(companion::joined(Words{}), "");
}

TEST(Words, NumbersFillTheirWord) {
  using companion::number_of;
  EXPECT_EQ(number_of<int>("-15"), -15);
  for (const char* none : {"", "12a", "1.5", "+3", "99999999999"})
    EXPECT_EQ(number_of<int>(none), std::nullopt) << none;
}
