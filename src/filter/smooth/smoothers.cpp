// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/smoothers.h"

#include <algorithm>
#include <cmath>

#include "filter/apply/convolution.h"
#include "filter/smooth/kernels.h"
#include "frame/numbers.h"

namespace Filter {

namespace {
/// Whether a kernel of this size would copy; kernels are not made for nothing.
bool tooWide(std::span<const double> in, int64_t width) {
  return width < 1 || width >= static_cast<int64_t>(in.size());
}
}  // namespace

void shaped(std::span<const double> in, double* out, int32_t width, double (*shape)(double)) {
  const auto size = static_cast<std::size_t>(width);
  convolve(in, out, tooWide(in, width) ? std::vector<double>() : shapedKernel(size, shape), true);
}

void radial(std::span<const double> in, double* out, int32_t half, double delta, int32_t kind) {
  if (!isRadialKind(kind)) return;
  if (half < 0 || tooWide(in, 2 * static_cast<int64_t>(half) + 1)) return convolve(in, out, {}, true);
  const double reach = delta < 0.0 ? half - delta : half + delta;
  convolve(in, out, radialKernel(static_cast<std::size_t>(half), reach, kind), true);
}

void savitzkyGolay(std::span<const double> in, double* out, double dt, int32_t degree, int32_t width) {
  if (width < 1 || tooWide(in, 2 * static_cast<int64_t>(width / 2) + 1)) return convolve(in, out, {}, false);
  // Over abscissae that all coincide only the constant is left of the polynomial.
  const auto wanted = static_cast<std::size_t>(dt == 0.0 ? 0 : std::max(degree, 0));
  std::vector<double> kernel = savitzkyGolayKernel(static_cast<std::size_t>(width / 2), wanted);
  if (!std::isfinite(dt)) std::ranges::fill(kernel, kNaN);
  convolve(in, out, kernel, false);
}

}  // namespace Filter
