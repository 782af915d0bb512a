// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/kernels.h"

#include <cstring>

#include "frame/processor.h"

namespace Search {
namespace {

namespace Narrow {
using Vector [[gnu::vector_size(16)]] = double;
#include "expresssearch/kernels.inc"
}  // namespace Narrow

// Vectors are lowered before functions are inlined: the wide loops need their target from the beginning.
#if ORVANE_DISPATCH_AVX2 && !defined(__clang__)
#pragma GCC push_options
#pragma GCC target("avx2")
namespace Wide {
using Vector [[gnu::vector_size(32)]] = double;
#include "expresssearch/kernels.inc"
}  // namespace Wide
#pragma GCC pop_options
#else
namespace Wide = Narrow;
bool hasAvx2() { return false; }
#endif

}  // namespace

double total(const LaneSums& sums) {
  return ((sums[0] + sums[4]) + (sums[2] + sums[6])) + ((sums[1] + sums[5]) + (sums[3] + sums[7]));
}

double sum(std::span<const double> x) {
  LaneSums sums{};
  (hasAvx2() ? Wide::sum : Narrow::sum)(x, sums);
  return total(sums);
}

double dot(std::span<const double> x, std::span<const double> y) {
  LaneSums sums{};
  (hasAvx2() ? Wide::dot : Narrow::dot)(x, y, sums);
  return total(sums);
}

void addSquaredError(std::span<const double> x, std::span<const double> y, LaneSums& sums) {
  (hasAvx2() ? Wide::addSquaredError : Narrow::addSquaredError)(x, y, sums);
}

CentredSums centredSums(std::span<const double> x, double mx, std::span<const double> y, double my) {
  LaneSums xy{}, yy{};
  (hasAvx2() ? Wide::centredSums : Narrow::centredSums)(x, mx, y, my, xy, yy);
  return {total(xy), total(yy)};
}

void rationalValues(const LinearForm& top, const LinearForm& bottom, std::size_t from, std::span<double> out) {
  (hasAvx2() ? Wide::rationalValues : Narrow::rationalValues)(top, bottom, from, out);
}

}  // namespace Search
