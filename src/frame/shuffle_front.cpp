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
    uint32_t p[kLanes], q[kLanes], r[kLanes], refused[kLanes];
    for (std::size_t k = 0; k < kLanes; ++k) p[k] = 0, q[k] = 1, r[k] = 2, refused[k] = 0;
    // The draw of place j for the element i, which is still at its own place.
    const auto put = [&](std::size_t k, uint32_t i, uint32_t j) {
      p[k] = j == 0 ? i : p[k];
      q[k] = j == 1 ? i : q[k];
      r[k] = j == 2 ? i : r[k];
    };
    const auto putSecond = [&](std::size_t k, uint32_t j) {
      p[k] = j == 0 ? 1 : 0;
      q[k] = j == 0 ? 0 : 1;
    };
    const auto putThird = [&](std::size_t k, uint32_t j) {
      const uint32_t a = p[k], b = q[k];
      p[k] = j == 0 ? 2 : a;
      q[k] = j == 1 ? 2 : b;
      r[k] = j == 0 ? a : j == 1 ? b : 2;
    };
    // The places of the elements i and i+1, drawn together.
    const auto pair = [&](uint32_t i, const auto& first, const auto& second) {
      const uint32_t b = i + 2, range = (i + 1) * b;
      const auto reciprocal = static_cast<uint32_t>((uint64_t{1} << 32) / b + 1);  // exact for what is below 2^32/b
      for (std::size_t k = 0; k < kLanes; ++k) {
        const auto drawn = static_cast<uint32_t>(uint64_t{word[k]} * range >> 32);
        const auto j = static_cast<uint32_t>(uint64_t{drawn} * reciprocal >> 32);
        refused[k] |= word[k] * range < range ? 1u : 0u;
        first(k, i, j);
        second(k, i + 1, drawn - j * b);
      }
      word += kLanes;
    };
    const auto second = [&](std::size_t k, uint32_t, uint32_t j) { putSecond(k, j); };
    const auto third = [&](std::size_t k, uint32_t, uint32_t j) { putThird(k, j); };
    uint32_t i = 1;
    if (count % 2 == 0) {
      for (std::size_t k = 0; k < kLanes; ++k) {
        refused[k] = word[k] << 1 < 2 ? 1u : 0u;
        putSecond(k, word[k] >> 31);
      }
      word += kLanes;
      i = 2;
      if (i < count) pair(i, third, put), i += 2;
    } else if (i < count) {
      pair(i, second, third), i += 2;
    }
    for (; i < count; i += 2) pair(i, put, put);
    std::copy_n(p, kLanes, places[0]);
    std::copy_n(q, kLanes, places[1]);
    std::copy_n(r, kLanes, places[2]);
    std::copy_n(refused, kLanes, doubtful);
  });
}
