// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>

/// Uniform on [0,1) from two 32-bit words: (w0 + w1*2^32)/2^64.
struct UniformDistribution {
  template <class Generator>
  double operator()(Generator& generator) const {
    const double low = static_cast<uint32_t>(generator());  // 32 bits: a wider unsigned word takes a branch more
    const double high = static_cast<uint32_t>(generator());
    const double value = (low + high * 0x1p32) * 0x1p-64;
    return value < 1.0 ? value : std::nextafter(1.0, 0.0);  // words near the top round up to 1
  }
};

/// Standard normal by the polar method (Marsaglia and Bray 1964): two values a round, the second one is kept.
class NormalDistribution {
 public:
  template <class Generator>
  double operator()(Generator& generator) {
    if (cached) {
      cached = false;
      return second;
    }
    double x, y, square;
    do {
      x = 2.0 * uniform(generator) - 1.0;
      y = 2.0 * uniform(generator) - 1.0;
      square = x * x + y * y;
    } while (square > 1.0 || square == 0.0);
    const double factor = std::sqrt(-2.0 * std::log(square) / square);
    second = x * factor;
    cached = true;
    return y * factor;
  }

 private:
  UniformDistribution uniform;
  double second = 0.0;
  bool cached = false;
};

/// std::mt19937 for a few words: the same numbers from the same seed, but the state is made as far as the words handed
/// out need it. The first word takes 398 words of state and one step, not 624 of each.
class LocalMersenne {
 public:
  using result_type = std::mt19937::result_type;

  explicit LocalMersenne(uint32_t seed) { state[0] = seed; }
  static constexpr result_type min() { return std::mt19937::min(); }
  static constexpr result_type max() { return std::mt19937::max(); }

  result_type operator()() {
    const std::size_t next = at + 1 < kSize ? at + 1 : 0;
    const std::size_t far = at < kSize - kShift ? at + kShift : at + kShift - kSize;
    while (seeded <= far && seeded < kSize) seedNext();
    const uint32_t joined = (state[at] & 0x80000000u) | (state[next] & 0x7fffffffu);
    uint32_t word = state[at] = state[far] ^ (joined >> 1) ^ ((joined & 1u) != 0 ? 0x9908b0dfu : 0u);
    at = next;
    word ^= word >> 11;
    word ^= (word << 7) & 0x9d2c5680u;
    word ^= (word << 15) & 0xefc60000u;
    return word ^ (word >> 18);
  }

 private:
  static constexpr std::size_t kSize = 624, kShift = 397;

  void seedNext() {
    const uint32_t last = state[seeded - 1];
    state[seeded] = 1812433253u * (last ^ (last >> 30)) + static_cast<uint32_t>(seeded);
    ++seeded;
  }

  uint32_t state[kSize];  // from `seeded` on not set yet
  std::size_t seeded = 1, at = 0;
};

/// A seed from the system's random device, which is asked for a block of words at a time. One block a thread; a process
/// that forks shares the rest of it with its child.
uint32_t deviceSeed();
