// SPDX-License-Identifier: Apache-2.0
#include "frame/random.h"

#include <algorithm>
#include <iterator>

#include "frame/processor.h"

#if __has_include(<sys/random.h>)
#include <sys/random.h>
#endif

namespace {

uint32_t nextOfState(uint32_t last, std::size_t index) {
  return 1812433253u * (last ^ (last >> 30)) + static_cast<uint32_t>(index);
}

}  // namespace

void BlockMersenne::seed(uint32_t value) {
  state[0] = value;
  for (std::size_t i = 1; i < kSize; ++i) state[i] = nextOfState(state[i - 1], i);
  at = kSize;
}

void BlockMersenne::makeBlock() {
  constexpr std::size_t kShift = std::mt19937::shift_size, kRest = kSize - kShift;
  vectorised([this] {
    for (std::size_t i = 0; i < kRest; ++i) state[i] = state[i + kShift] ^ mersenneTwist(state[i], state[i + 1]);
    for (std::size_t i = kRest; i + 1 < kSize; ++i) state[i] = state[i - kRest] ^ mersenneTwist(state[i], state[i + 1]);
    state[kSize - 1] = state[kShift - 1] ^ mersenneTwist(state[kSize - 1], state[0]);
    for (std::size_t i = 0; i < kSize; ++i) words[i] = mersenneTemper(state[i]);
    for (std::size_t i = 0; i < kSize / 2; ++i) units[i] = UniformDistribution::ofWords(words[2 * i], words[2 * i + 1]);
  });
  at = 0;
}

double BlockMersenne::unitAcross() {
  const double low = static_cast<uint32_t>((*this)()), high = static_cast<uint32_t>((*this)());
  return UniformDistribution::ofWords(low, high);
}

void LocalMersennes::start(uint32_t (*seed)(), std::size_t ahead) {
  state.resize(kSize * kLanes);
  used = 0, ready = ahead;
  for (std::size_t lane = 0; lane < ahead; ++lane) state[lane] = seed();
  seeded = 1;
  seedRows(kShift + 2 * kFirst);
  vectorised([rows = state.data(), words = first] {
    for (std::size_t i = 0; i < kFirst * kLanes; ++i) {
      rows[i] = rows[i + kShift * kLanes] ^ mersenneTwist(rows[i], rows[i + kLanes]);
      words[i] = mersenneTemper(rows[i]);
    }
  });
}

void LocalMersennes::seedRows(std::size_t count) {
  const std::size_t end = std::min(kSize, seeded + count);
  vectorised([from = seeded, end, rows = state.data()] {
    uint32_t last[kLanes];
    std::copy_n(rows + (from - 1) * kLanes, kLanes, last);
    for (std::size_t i = from; i < end; ++i)
      for (std::size_t lane = 0; lane < kLanes; ++lane)
        rows[i * kLanes + lane] = last[lane] = nextOfState(last[lane], i);
  });
  seeded = end;
}

uint32_t deviceSeed() {
  constexpr std::size_t kBlock = 32;
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
