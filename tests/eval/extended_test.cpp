// Rounding quads to 64 bits gives what the processor's own extended precision gives. Runs where the
// compiler has both.
#include "eval/extended.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#if defined(__SIZEOF_FLOAT128__) && defined(__x86_64__)
namespace {

__extension__ typedef __float128 Quad;
using Rounded = korvu::Arredondado<Quad>;

static_assert(std::numeric_limits<long double>::digits == 64);

// A number with all 64 bits in use, of a size that scores have.
long double any(std::mt19937_64& dice) {
  const auto digits = static_cast<long double>(dice() | 1);
  const long double v = std::ldexp(digits, -64 + static_cast<int>(dice() % 40) - 20);
  return dice() % 2 == 0 ? v : -v;
}

Rounded rounded(long double v) {
  return Rounded::de(static_cast<Quad>(v));
}

bool equal(Rounded a, long double b) {
  return static_cast<Quad>(a) == static_cast<Quad>(b);
}

TEST(Extended, OperationsRoundAsTheProcessor) {
  std::mt19937_64 dice(1);
  for (int k = 0; k < 300000; ++k) {
    const long double a = any(dice), b = any(dice);
    const Rounded ra = rounded(a), rb = rounded(b);
    ASSERT_TRUE(equal(ra, a)) << "64 bits are kept";
    ASSERT_TRUE(equal(ra + rb, a + b)) << k;
    ASSERT_TRUE(equal(ra - rb, a - b)) << k;
    ASSERT_TRUE(equal(ra * rb, a * b)) << k;
    ASSERT_TRUE(equal(ra / rb, a / b)) << k;
    ASSERT_TRUE(equal(-ra, -a)) << k;
    ASSERT_EQ(static_cast<float>(ra), static_cast<float>(a)) << k;
    ASSERT_EQ(ra < rb, a < b) << k;
  }
}

// 1 + 2^-63 is the next number behind 1.
TEST(Extended, TiesGoToEven) {
  const Quad step = std::ldexp(1.0, -63), half = step / 2;
  const auto of = [](Quad v) { return static_cast<Quad>(Rounded::de(v)); };
  EXPECT_TRUE(of(1 + half) == 1);
  EXPECT_TRUE(of(1 + step + half) == 1 + 2 * step);
  EXPECT_TRUE(of(1 + half * 1.0625) == 1 + step);
  EXPECT_TRUE(of(1 + step + half * 0.9375) == 1 + step);
  EXPECT_TRUE(of(-1 - half) == -1);
  EXPECT_TRUE(of(2 - half / 4) == 2) << "the carry runs into the exponent";
}

TEST(Extended, WhatIsNoNumberStaysSo) {
  const Rounded zero(0), one(1);
  EXPECT_TRUE(isnan(zero / zero));
  EXPECT_FALSE(isfinite(zero / zero));
  EXPECT_FALSE(isfinite(one / zero));
  EXPECT_FALSE(isnan(one / zero));
  EXPECT_TRUE(isfinite(one));
}

#ifndef __clang__  // has no logarithm of quads
// The quotients of counts that the evaluation knows. The units differ in a few of them, the nearest
// numbers to the true logarithms would in every fifth.
TEST(Extended, LogarithmsAreMostlyTheProcessors) {
  const Quad ln_2 = logf128(2);
  int cases = 0, differ = 0;
  for (int a = 1; a < 250; ++a)
    for (int b = 1; b < 250; ++b) {
      const long double x = static_cast<long double>(a) / b, log_x = std::log(x);
      const auto twin = static_cast<long double>(
          static_cast<Quad>(Rounded::log_do_x87(logf128(static_cast<Quad>(x)), ln_2)));
      ++cases;
      differ += twin != log_x;
      ASSERT_LE(std::fabs(twin - log_x), std::fabs(log_x) * std::ldexp(1.0L, -63)) << a << '/' << b;
    }
  EXPECT_EQ(cases, 249 * 249);
  EXPECT_LT(differ, cases / 10);
}
#endif

TEST(Extended, NumbersOfOtherKindsTakePart) {
  const Rounded tenth = Rounded(1) / 10;
  EXPECT_TRUE(equal(0.1 * tenth + 3, 0.1 * (1.0L / 10) + 3));
  Rounded total(0.5F);
  total += 0.1;
  EXPECT_TRUE(equal(total, 0.5L + 0.1));
  EXPECT_EQ(static_cast<int>(Rounded(-7) / 2), -3);
  EXPECT_TRUE(tenth < 1);
}

}  // namespace
#endif
