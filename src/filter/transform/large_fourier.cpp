// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/large_fourier.h"

#include <algorithm>
#include <cmath>

#include "filter/transform/roots_of_unity.h"
#include "filter/transform/scratch.h"
#include "frame/wide_registers.h"

namespace Filter {

namespace {
constexpr std::size_t kCached = 1 << 14;  // complex values; the arrays of a transform take 32 bytes a value
}

LargeFourier::Factors LargeFourier::factorsOf(std::size_t n) {
  if (n <= kCached) return {};
  for (auto rows = static_cast<std::size_t>(std::sqrt(static_cast<double>(n))); 64 * rows * rows >= n; --rows)
    if (n % rows == 0) return {rows, n / rows};
  return {};
}

LargeFourier::LargeFourier(Factors factors)
    : rows(factors.rows), columns(factors.columns), down(factors.rows), along(factors.columns) {
  const RootsOfUnity roots(rows * columns);
  const auto add = [](Complex w, std::vector<double>& re, std::vector<double>& im) {
    re.push_back(w.re);
    im.push_back(w.im);
  };
  for (std::size_t r = 0; r < rows; ++r)
    for (std::size_t q = 0; q < kLanes; ++q) add(roots(r * q % (rows * columns)), stepRe, stepIm);
  for (std::size_t first = 0; first < columns; first += kLanes)
    for (std::size_t r = 0; r < rows; ++r) add(roots(r * first), blockRe, blockIm);
}

std::size_t LargeFourier::tableSize() const {
  return down.tableSize() + along.tableSize() + 2 * (stepRe.size() + blockRe.size());
}

/// Columns first.. of the matrix: transform, twiddle factor, into the same place of middle.
void LargeFourier::columnBlock(ConstSplit in, Split middle, Split a, Split b, std::size_t first) const {
  const std::size_t lanes = std::min(kLanes, columns - first);
  for (std::size_t r = 0; r < rows; ++r) {
    std::copy_n(in.re + r * columns + first, lanes, a.re + r * lanes);
    std::copy_n(in.im + r * columns + first, lanes, a.im + r * lanes);
  }
  down.run(a, a, b, lanes);
  const double* const baseRe = blockRe.data() + first / kLanes * rows;
  const double* const baseIm = blockIm.data() + first / kLanes * rows;
  for (std::size_t r = 0; r < rows; ++r)
    for (std::size_t q = 0; q < lanes; ++q) {
      const double c = baseRe[r] * stepRe[r * kLanes + q] - baseIm[r] * stepIm[r * kLanes + q];
      const double s = baseRe[r] * stepIm[r * kLanes + q] + baseIm[r] * stepRe[r * kLanes + q];
      const double re = a.re[r * lanes + q], im = a.im[r * lanes + q];
      middle.re[r * columns + first + q] = re * c - im * s;
      middle.im[r * columns + first + q] = re * s + im * c;
    }
}

/// Rows first.. of middle: transform; output k of row r is X[r + rows k].
void LargeFourier::rowBlock(Split middle, Split out, Split a, Split b, std::size_t first) const {
  const std::size_t lanes = std::min(kLanes, rows - first);
  // By tiles: the rows lie a power of two apart as a rule, and more of them at once than the cache has ways for.
  for (std::size_t start = 0; start < columns; start += kLanes) {
    const std::size_t end = std::min(start + kLanes, columns);
    for (std::size_t q = 0; q < lanes; ++q)
      for (std::size_t c = start; c < end; ++c) {
        a.re[c * lanes + q] = middle.re[(first + q) * columns + c];
        a.im[c * lanes + q] = middle.im[(first + q) * columns + c];
      }
  }
  along.run(a, a, b, lanes);
  for (std::size_t k = 0; k < columns; ++k) {
    std::copy_n(a.re + k * lanes, lanes, out.re + k * rows + first);
    std::copy_n(a.im + k * lanes, lanes, out.im + k * rows + first);
  }
}

void LargeFourier::run(ConstSplit in, Split out) const {
  const std::size_t longer = std::max(rows, columns) * kLanes;
  Scratch room(rows * columns), from(longer, 1), to(longer, 2);
  const Split middle = room.split(), a = from.split(), b = to.split();
  for (std::size_t first = 0; first < columns; first += kLanes) columnBlock(in, middle, a, b, first);
  for (std::size_t first = 0; first < rows; first += kLanes) rowBlock(middle, out, a, b, first);
}

}  // namespace Filter
