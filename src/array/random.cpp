// SPDX-License-Identifier: Apache-2.0
// Random numbers and the shuffle. The generators are the standard's own, whose words are fixed; the distributions are
// written here, as those of a library differ from one to the next.
#include <cmath>
#include <numbers>
#include <random>
#include <utility>

#include "array/dispatch.h"
#include "frame/code_table.h"

namespace ArrayFun {
namespace {

/// Uniform numbers of [0, 1) with 53 bits, and Gaussian ones.
template <class Words>
class Draws {
 public:
  explicit Draws(Words start) : words(std::move(start)) {}

  double uniform() { return static_cast<double>(word() >> 11) * 0x1p-53; }

  /// Marsaglia's polar method; the second number of each pair is used by the next call.
  double gauss() {
    if (spareLeft) {
      spareLeft = false;
      return spare;
    }
    double u = 0, v = 0, square = 0;
    do {
      u = 2 * uniform() - 1;
      v = 2 * uniform() - 1;
      square = u * u + v * v;
    } while (square >= 1 || square == 0);
    const double factor = std::sqrt(-2 * std::log(square) / square);
    spare = v * factor;
    spareLeft = true;
    return u * factor;
  }

 private:
  uint64_t word() {
    if constexpr (Words::word_size == 64) {
      return words();
    } else {
      const uint64_t high = words();
      return high << 32 | words();
    }
  }

  Words words;
  double spare = 0;
  bool spareLeft = false;
};

Draws<std::mt19937> narrowDraws(uint64_t seed) {
  std::seed_seq halves{static_cast<uint32_t>(seed), static_cast<uint32_t>(seed >> 32)};
  return Draws(std::mt19937(halves));
}

struct Row {
  uint8_t code;
  void (*run)(double*, int32_t, bool, uint64_t);
};

template <class Transform>
constexpr Row row(uint8_t code, Transform) {
  return {code, [](double* destination, int32_t count, bool wide, uint64_t seed) {
            const auto fill = [&](auto draws) {
              for (int32_t i = 0; i < count; ++i) destination[i] = Transform{}(draws);
            };
            if (wide)
              fill(Draws(std::mt19937_64(seed)));
            else
              fill(narrowDraws(seed));
          }};
}

constexpr Row kRows[] = {
    row(200, [](auto& draws) { return draws.gauss(); }),
    row(201, [](auto& draws) { return std::tan((draws.uniform() - 0.5) * std::numbers::pi); }),
    row(202, [](auto& draws) { return -std::log1p(-draws.uniform()); }),
    row(203, [](auto& draws) { return std::exp(draws.gauss()); }),
    row(204, [](auto& draws) { return std::sqrt(-2 * std::log1p(-draws.uniform())); }),
};
using Functions = CodeTable<kRows>;

// Uniform from 0 to last: words are combined until they cover the range, those of the last part block are rejected.
uint32_t drawUpTo(std::mt19937& words, uint32_t last) {
  const uint64_t range = uint64_t{last} + 1, blocks = (uint64_t{1} << 32) / range * range;
  uint64_t word = words();
  while (word >= blocks) word = words();
  return static_cast<uint32_t>(word % range);
}

template <class Element>
void shuffle(Element* data, int32_t count) {
  std::mt19937 words(std::random_device{}());
  for (int32_t i = 1; i < count; ++i) {
    const uint32_t j = drawUpTo(words, static_cast<uint32_t>(i));
    if (j != static_cast<uint32_t>(i)) std::swap(data[i], data[j]);
  }
}

}  // namespace

void randFun(double* destination, int32_t count, bool wide, uint64_t seed, uint8_t code) {
  if (const Row* found = Functions::find(code)) found->run(destination, count, wide, seed);
}

void randomShuffle(void* data, int32_t count, int32_t type) {
  if (count < 2) return;
  if (type == 0) shuffle(static_cast<int32_t*>(data), count);
  if (type == 1) shuffle(static_cast<double*>(data), count);
  if (type == 2) shuffle(static_cast<unsigned char*>(data), count);
}

}  // namespace ArrayFun
