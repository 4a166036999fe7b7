// Chance for what has to be the same in every run and on every platform, which the distributions of
// the standard library are not.
#pragma once

#include <cstddef>
#include <cstdint>

namespace referee {

// A 64-bit linear congruential generator, of which the upper half is used.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}

  std::size_t below(std::size_t n) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::size_t>((state_ >> 33) % n);
  }

 private:
  std::uint64_t state_;
};

}  // namespace referee
