// SPDX-License-Identifier: Apache-2.0
#include "frame/shuffle_front.h"

#include <algorithm>
#include <numeric>

#include "frame/processor.h"

// The words of std::shuffle as libstdc++ spends them: the second element alone where n is even, then two elements for
// each word. A word w is brought to 0..r-1 by w r/2^32 (Lemire 2019); where the rest of the product is below r the word
// may be refused, which is left to std::shuffle itself, as is everything where another library is used.
#if defined(__GLIBCXX__)
constexpr bool kKnownShuffle = true;
#else
constexpr bool kKnownShuffle = false;
#endif

ShuffleFronts::Front ShuffleFronts::nextFront(uint32_t (*seed)(), std::size_t ahead, std::size_t n) {
  const bool known = kKnownShuffle && n <= kMostElements;
  if (known) wanted = std::max(wanted, n / 2);
  const LocalMersenne local = next(seed, ahead);
  if (!known || n / 2 > made) return whole(local, n);
  if (drawnBatch != batch || drawnElements != n) draw(n);
  if (doubtful[local.lane] != 0) return whole(local, n);
  return {places[0][local.lane], places[1][local.lane], places[2][local.lane]};
}

ShuffleFronts::Front ShuffleFronts::whole(LocalMersenne local, std::size_t n) {
  list.resize(std::max<std::size_t>(n, 3));
  std::iota(list.begin(), list.end(), 0u);
  std::shuffle(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(n), local);
  return {list[0], list[1], list[2]};
}

void ShuffleFronts::draw(std::size_t n) {
  drawnBatch = batch, drawnElements = n;
  vectorised([this, count = static_cast<uint32_t>(n)] {
    const uint32_t* word = words.data();
    const auto high = [](uint32_t a, uint32_t b) { return static_cast<uint32_t>(uint64_t{a} * b >> 32); };
    uint32_t* const p = places[0];
    uint32_t* const q = places[1];
    uint32_t* const r = places[2];
    for (std::size_t k = 0; k < kLanes; ++k) p[k] = 0, q[k] = 1, r[k] = 2, doubtful[k] = 0;
    // What the draw of place j for the element i does to the first three: element i is still at its own place.
    const auto put = [&](std::size_t k, uint32_t i, uint32_t j) {
      const uint32_t a = p[k], b = q[k], c = r[k], own = i == 1 ? b : i == 2 ? c : i;
      const uint32_t there = j == 0 ? a : j == 1 ? b : c;
      p[k] = j == 0 ? own : a;
      q[k] = i == 1 ? there : j == 1 ? own : b;
      r[k] = i == 2 ? there : j == 2 ? own : c;
    };
    uint32_t i = 1;
    if (count % 2 == 0) {
      for (std::size_t k = 0; k < kLanes; ++k) {
        doubtful[k] |= static_cast<uint32_t>(word[k] << 1 < 2u);
        put(k, 1, word[k] >> 31);
      }
      i = 2, word += kLanes;
    }
    for (; i < count; i += 2, word += kLanes) {
      const uint32_t second = i + 2, range = (i + 1) * second;
      const uint32_t reciprocal = static_cast<uint32_t>((uint64_t{1} << 32) / second) + 1;  // exact below 2^32/second
      for (std::size_t k = 0; k < kLanes; ++k) {
        const uint32_t drawn = high(word[k], range), j = high(drawn, reciprocal);
        doubtful[k] |= static_cast<uint32_t>(word[k] * range < range);
        put(k, i, j);
        put(k, i + 1, drawn - j * second);
      }
    }
  });
}
