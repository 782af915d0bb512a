// SPDX-License-Identifier: Apache-2.0
#include "frame/random.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

#include "frame/processor.h"

#if __has_include(<sys/random.h>)
#include <sys/random.h>
#endif

void BlockMersenne::seed(uint32_t value) {
  state[0] = value;
  for (std::size_t i = 1; i < kSize; ++i)
    state[i] = 1812433253u * (state[i - 1] ^ (state[i - 1] >> 30)) + static_cast<uint32_t>(i);
  at = kSize;
}

void BlockMersenne::makeBlock() {
  constexpr std::size_t kShift = std::mt19937::shift_size, kRest = kSize - kShift;
  vectorised([this] {
    for (std::size_t i = 0; i < kRest; ++i) state[i] = state[i + kShift] ^ mersenneTwist(state[i], state[i + 1]);
    for (std::size_t i = kRest; i + 1 < kSize; ++i) state[i] = state[i - kRest] ^ mersenneTwist(state[i], state[i + 1]);
    state[kSize - 1] = state[kShift - 1] ^ mersenneTwist(state[kSize - 1], state[0]);
    for (std::size_t i = 0; i < kSize; ++i) words[i] = mersenneTemper(state[i]);
    // UniformDistribution::ofWords, with each half of a pair put behind the leading one of a power of two.
    for (std::size_t i = 0; i < kSize / 2; ++i) {
      uint64_t pair;
      std::memcpy(&pair, words + 2 * i, sizeof pair);
      if constexpr (std::endian::native == std::endian::big) pair = std::rotl(pair, 32);
      const double upper = std::bit_cast<double>(pair >> 32 | 0x4530000000000000) - (0x1p84 + 0x1p52);
      const double value = (std::bit_cast<double>((pair & 0xffffffff) | 0x4330000000000000) + upper) * 0x1p-64;
      units[i] = value < 1.0 ? value : 1.0 - 0x1p-53;
    }
  });
  at = 0;
}

double BlockMersenne::unitAcross() {
  const double low = static_cast<uint32_t>((*this)()), high = static_cast<uint32_t>((*this)());
  return UniformDistribution::ofWords(low, high);
}

void LocalMersennes::start(uint32_t (*seed)(), std::size_t ahead) {
  constexpr std::size_t kShift = std::mt19937::shift_size;
  used = 0, ready = ahead, made = wanted;
  ++batch;
  for (std::size_t lane = 0; lane < ahead; ++lane) seeds[lane] = seed();
  near.resize((made + 1) * kLanes);
  words.resize(made * kLanes);
  vectorised([count = made, from = seeds, begin = near.data(), out = words.data()] {
    // Registers: as many lanes as their chains keep the multipliers busy.
    using Vector [[gnu::vector_size(32)]] = uint32_t;
    constexpr std::size_t kWidth = sizeof(Vector) / sizeof(uint32_t), kVectors = kLanes / kWidth;
    Vector last[kVectors];
    std::memcpy(last, from, sizeof last);
    const auto step = [&last](std::size_t i) {
      for (Vector& v : last) v = 1812433253u * (v ^ (v >> 30)) + static_cast<uint32_t>(i);
    };
    std::memcpy(begin, last, sizeof last);
    for (std::size_t i = 1; i <= count; ++i) {
      step(i);
      std::memcpy(begin + i * kLanes, last, sizeof last);
    }
    for (std::size_t i = count + 1; i < kShift; ++i) step(i);
    for (std::size_t i = 0; i < count; ++i) {
      step(i + kShift);
      std::memcpy(out + i * kLanes, last, sizeof last);
    }
    for (std::size_t i = 0; i < count * kLanes; ++i)
      out[i] = mersenneTemper(out[i] ^ mersenneTwist(begin[i], begin[i + kLanes]));
  });
}

uint32_t LocalMersennes::later(std::size_t lane, std::size_t at) {
  if (at == made) {
    whole.seed(seeds[lane]);
    whole.discard(at);
    wanted = std::min(2 * made, kMostFirst);
  }
  return static_cast<uint32_t>(whole());
}

uint32_t deviceSeed() {
  constexpr std::size_t kBlock = 64;  // the most that getentropy gives at once
  thread_local uint32_t words[kBlock];
  thread_local std::size_t left = 0;
  if (left == 0) {
#if __has_include(<sys/random.h>)
    const bool filled = getentropy(words, sizeof words) == 0;
#else
    const bool filled = false;
#endif
    if (!filled) std::generate(std::begin(words), std::end(words), std::random_device());
    left = kBlock;
  }
  return words[--left];
}
