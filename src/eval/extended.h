// Extended precision: floating point with a significand of 64 bits. Sums of logarithms are made in
// it, and each operation rounds to it.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <compare>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace korvu {

// An IEEE quad rounded to a significand of 64 bits, ties to even.
template <typename Quad>
Quad com_64_bits(Quad v) {
  static_assert(sizeof(Quad) == 16 && std::endian::native == std::endian::little);
  constexpr int sobra = 113 - 64;
  constexpr std::uint64_t um = std::uint64_t{1} << sobra;
  if (v - v != 0) return v;  // NOLINT(misc-redundant-expression): infinite or no number
  auto [baixo, alto] = std::bit_cast<std::array<std::uint64_t, 2>>(v);
  const std::uint64_t soma = baixo + (um / 2 - 1) + ((baixo & um) != 0);
  if (soma < baixo) ++alto;  // carried, into the exponent where all bits were ones
  return std::bit_cast<Quad>(std::array{soma & ~(um - 1), alto});
}

// Extended precision on a processor that has quads only: the quad's result, rounded. The first
// rounding can spoil the second where the 49 bits between lie within the quad's own error of a tie:
// one operation in some 10^14.
template <typename Quad>
class Arredondado {
 public:
  template <typename T>
  requires std::is_integral_v<T> || std::is_same_v<T, float> || std::is_same_v<T, double>
  Arredondado(T v) : v_(v) {}  // not explicit: numbers take part in sums as they are

  static Arredondado de(Quad v) {
    Arredondado a(0);
    a.v_ = com_64_bits(v);
    return a;
  }

  template <typename T>
  requires std::is_arithmetic_v<T> || std::is_same_v<T, Quad>
  explicit operator T() const { return static_cast<T>(v_); }

  friend Arredondado operator+(Arredondado a, Arredondado b) { return de(a.v_ + b.v_); }
  friend Arredondado operator-(Arredondado a, Arredondado b) { return de(a.v_ - b.v_); }
  friend Arredondado operator*(Arredondado a, Arredondado b) { return de(a.v_ * b.v_); }
  friend Arredondado operator/(Arredondado a, Arredondado b) { return de(a.v_ / b.v_); }
  friend Arredondado operator-(Arredondado a) { return de(-a.v_); }
  Arredondado& operator+=(Arredondado b) { return *this = *this + b; }

  friend auto operator<=>(Arredondado, Arredondado) = default;

  friend bool isnan(Arredondado a) { return a.v_ != a.v_; }
  friend bool isfinite(Arredondado a) { return a.v_ - a.v_ == 0; }
  friend Arredondado log(Arredondado a) {
    static const Quad ln_2 = std::log(Quad{2});
    return log_do_x87(std::log(a.v_), ln_2);
  }

  // From quads of ln x and ln 2. The x87 knows logarithms to the base 2 alone and multiplies by an
  // ln 2 of 64 bits, too large by 1 in 2^66: 22 of 100 logarithms end one unit off the nearest. Its
  // own error takes 2 of 100 another way, not the same ones in every make of processor. That shows
  // only where all terms of a sum cancel, and the unit decides between 0 and 1e-19.
  static Arredondado log_do_x87(Quad ln_x, Quad ln_2) {
    return de(ln_x * (com_64_bits(ln_2) / ln_2));
  }

 private:
  Quad v_;
};

constexpr bool estendido_nativo = std::numeric_limits<long double>::digits == 64;
static_assert(estendido_nativo || std::numeric_limits<long double>::digits == 113,
              "scores need extended precision");

using Estendido = std::conditional_t<estendido_nativo, long double, Arredondado<long double>>;

}  // namespace korvu
