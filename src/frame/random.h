// SPDX-License-Identifier: Apache-2.0
#pragma once

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

 private:
  static constexpr std::size_t kSize = std::mt19937::state_size;

  void makeBlock();
  double unitAcross();

  uint32_t state[kSize], words[kSize];
  double units[kSize / 2];
  std::size_t at;
};

class LocalMersennes;

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
  LocalMersenne(LocalMersennes& from, std::size_t index) : batch(&from), lane(index) {}

  LocalMersennes* batch;
  std::size_t lane, at = 0;
};

/// Local generators in batches. Each word of a state needs the one before it, a chain that cannot be shortened; the
/// chains of a batch run side by side.
class LocalMersennes {
 public:
  static constexpr std::size_t kLanes = 16;

  /// The next generator; it is good until the one after it is taken. A new batch asks for its seeds at once: `ahead` of
  /// them, 1 to kLanes.
  LocalMersenne next(uint32_t (*seed)(), std::size_t ahead) {
    if (used == ready) start(seed, ahead);
    return {*this, used++};
  }

 private:
  friend LocalMersenne;
  static constexpr std::size_t kSize = std::mt19937::state_size, kShift = std::mt19937::shift_size;
  static constexpr std::size_t kFirst = 16;  // a shuffle of thirty takes as many words

  void start(uint32_t (*seed)(), std::size_t ahead);
  void seedRows(std::size_t count);  // `count` more words of every state, as far as there are any

  std::vector<uint32_t> state;      // [kSize*kLanes]; the rows from `seeded` on are not set yet
  uint32_t first[kFirst * kLanes];  // the first words, made for all
  std::size_t seeded = 0, used = 0, ready = 0;
};

inline LocalMersenne::result_type LocalMersenne::operator()() {
  constexpr std::size_t kSize = LocalMersennes::kSize, kShift = LocalMersennes::kShift;
  if (at < LocalMersennes::kFirst) return batch->first[at++ * LocalMersennes::kLanes + lane];
  const std::size_t here = at < kSize ? at : at - kSize, next = here + 1 < kSize ? here + 1 : 0;
  const std::size_t far = here < kSize - kShift ? here + kShift : here + kShift - kSize;
  if (batch->seeded <= far && batch->seeded < kSize) batch->seedRows(32);
  uint32_t* column = batch->state.data() + lane;
  const auto row = [column](std::size_t i) -> uint32_t& { return column[i * LocalMersennes::kLanes]; };
  const uint32_t word = row(here) = row(far) ^ mersenneTwist(row(here), row(next));
  at = at + 1 < 2 * kSize ? at + 1 : kSize;  // later rounds stay apart from the first one, whose words begin in `first`
  return mersenneTemper(word);
}

/// A seed from the system's random device, which is asked for a block of words at a time. One block a thread; a process
/// that forks shares the rest of it with its child.
uint32_t deviceSeed();
