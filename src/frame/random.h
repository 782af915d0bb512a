// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

/// Uniform on [0,1) from two 32-bit words: (w0 + w1*2^32)/2^64.
struct UniformDistribution {
  template <class Generator>
  double operator()(Generator& generator) const {
    if constexpr (requires { generator.unit(); }) {
      return generator.unit();
    } else {
      const double low = static_cast<uint32_t>(generator());  // 32 bits: a wider unsigned word takes a branch more
      const double high = static_cast<uint32_t>(generator());
      return ofWords(low, high);
    }
  }
  static double ofWords(double low, double high) {
    const double value = (low + high * 0x1p32) * 0x1p-64;
    return value < 1.0 ? value : 1.0 - 0x1p-53;  // words near the top round up to 1
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

  /// The next `count` values at once. The rounds are collected before anything is made of them, without a branch on a
  /// number that nobody can foresee.
  template <class Generator>
  void fill(Generator& generator, double* out, std::size_t count) {
    constexpr std::size_t kRounds = 16;
    double x[kRounds], y[kRounds], square[kRounds];
    std::size_t i = 0;
    if (cached && count > 0) out[i++] = (*this)(generator);
    while (i < count) {
      const std::size_t wanted = std::min(kRounds, (count - i + 1) / 2);
      for (std::size_t k = 0; k < wanted;) {
        const double a = 2.0 * uniform(generator) - 1.0, b = 2.0 * uniform(generator) - 1.0;
        x[k] = a, y[k] = b, square[k] = a * a + b * b;
        k += static_cast<std::size_t>((square[k] <= 1.0) & (square[k] != 0.0));
      }
      for (std::size_t k = 0; k < wanted; ++k) {
        const double factor = std::sqrt(-2.0 * std::log(square[k]) / square[k]);
        out[i++] = y[k] * factor;
        cached = i == count;
        if (cached)
          second = x[k] * factor;
        else
          out[i++] = x[k] * factor;
      }
    }
  }

 private:
  UniformDistribution uniform;
  double second = 0.0;
  bool cached = false;
};

/// The step of the generator: what two neighbours of the state add to a third word.
inline uint32_t mersenneTwist(uint32_t word, uint32_t next) {
  const uint32_t joined = (word & 0x80000000u) | (next & 0x7fffffffu);
  return (joined >> 1) ^ ((0u - (joined & 1u)) & 0x9908b0dfu);
}

inline uint32_t mersenneTemper(uint32_t word) {
  word ^= word >> 11;
  word ^= (word << 7) & 0x9d2c5680u;
  word ^= (word << 15) & 0xefc60000u;
  return word ^ (word >> 18);
}

/// std::mt19937, the same words from the same seed, made by the block in loops as wide as the processor's vectors. A
/// block holds the uniform numbers of its pairs of words, too.
class BlockMersenne {
 public:
  using result_type = std::mt19937::result_type;

  explicit BlockMersenne(uint32_t value = std::mt19937::default_seed) { seed(value); }
  void seed(uint32_t value);
  static constexpr result_type min() { return std::mt19937::min(); }
  static constexpr result_type max() { return std::mt19937::max(); }

  result_type operator()() {
    if (at == kSize) makeBlock();
    return words[at++];
  }
  /// The next two words as UniformDistribution takes them.
  double unit() {
    if (at == kSize) makeBlock();
    if (at % 2 != 0) return unitAcross();
    const double value = units[at / 2];
    at += 2;
    return value;
  }
  /// The next `count` uniform numbers at once.
  void fill(double* out, std::size_t count) {
    while (count > 0) {
      if (at == kSize) makeBlock();
      const std::size_t have = at % 2 != 0 ? 0 : std::min(count, (kSize - at) / 2);
      std::copy_n(units + at / 2, have, out);
      at += 2 * have, out += have, count -= have;
      if (have == 0) *out++ = unit(), --count;
    }
  }

 private:
  static constexpr std::size_t kSize = std::mt19937::state_size;

  void makeBlock();
  double unitAcross();

  uint32_t state[kSize], words[kSize];
  double units[kSize / 2];
  std::size_t at;
};

class LocalMersennes;
class ShuffleFronts;

/// std::mt19937 for a few words: the same numbers from the same seed, but the state is made as far as the words handed
/// out need it. The first word takes 398 words of state and one step, not 624 of each.
class LocalMersenne {
 public:
  using result_type = std::mt19937::result_type;

  static constexpr result_type min() { return std::mt19937::min(); }
  static constexpr result_type max() { return std::mt19937::max(); }
  inline result_type operator()();

 private:
  friend LocalMersennes;
  friend ShuffleFronts;
  LocalMersenne(LocalMersennes& from, std::size_t index) : batch(&from), lane(index) {}

  LocalMersennes* batch;
  std::size_t lane, at = 0;
};

/// Local generators in batches. Each word of a state needs the one before it, a chain that cannot be shortened; the
/// chains of a batch run side by side. Of the states only what the first words need is kept: few are asked for. A
/// generator that is asked for more begins anew as a whole one, and the next batch makes twice as many at once.
class LocalMersennes {
 public:
  static constexpr std::size_t kLanes = 32;

  /// The next generator; it is good until the one after it is taken. A new batch asks for its seeds at once: `ahead` of
  /// them, 1 to kLanes.
  LocalMersenne next(uint32_t (*seed)(), std::size_t ahead) {
    if (used == ready) start(seed, ahead);
    return {*this, used++};
  }

 protected:
  static constexpr std::size_t kMostFirst = std::mt19937::state_size - std::mt19937::shift_size;

  std::vector<uint32_t> words;      // [made*kLanes]: word i of all generators of the batch, then word i+1
  std::size_t wanted = 16;          // of the next batch, up to kMostFirst; a shuffle of thirty takes as many
  std::size_t made = 0, batch = 0;  // words of a generator; count of batches

 private:
  friend LocalMersenne;

  void start(uint32_t (*seed)(), std::size_t ahead);
  uint32_t later(std::size_t lane, std::size_t at);

  uint32_t seeds[kLanes] = {};
  std::vector<uint32_t> near;  // [(made+1)*kLanes] the beginning of the states
  std::mt19937 whole;          // the generator that was asked for more words
  std::size_t used = 0, ready = 0;
};

inline LocalMersenne::result_type LocalMersenne::operator()() {
  if (at >= batch->made) return batch->later(lane, at++);
  return batch->words[at++ * LocalMersennes::kLanes + lane];
}

/// A seed from the system's random device, which is asked for a block of words at a time. One block a thread; a process
/// that forks shares the rest of it with its child.
uint32_t deviceSeed();
