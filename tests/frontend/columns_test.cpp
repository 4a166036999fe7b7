// The line is looked at by column; what lies beyond its end matches nothing.
#include <gtest/gtest.h>

#include "frontend/line.h"

namespace korvu {
namespace {

TEST(Columns, ReadTheCharactersOfTheLine) {
  in = "go";
  EXPECT_EQ(coluna(0), 'g');
  EXPECT_EQ(coluna(1), 'o');
}

TEST(Columns, OneBehindTheEndIsNul) {
  in = "go";
  EXPECT_EQ(coluna(2), '\0');
  in.clear();
  EXPECT_EQ(coluna(0), '\0');
}

TEST(Columns, FurtherOutEqualsNoCharacter) {
  in = "go";
  for (int c = 0; c < 256; ++c) EXPECT_NE(coluna(3), c);
  for (int c = 0; c < 256; ++c) EXPECT_NE(coluna(1000000), c);
}

TEST(Columns, BytesAboveAsciiAreThemselves) {
  in = "\xff\x80";
  EXPECT_EQ(coluna(0), 0xff);
  EXPECT_EQ(coluna(1), 0x80);
}

}  // namespace
}  // namespace korvu
