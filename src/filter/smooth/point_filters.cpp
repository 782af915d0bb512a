// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/point_filters.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "filter/apply/convolution.h"
#include "filter/smooth/local_polynomial.h"

namespace Filter {

void hardLimit(std::span<const double> in, double* out, double limit, double centre) {
  for (std::size_t i = 0; i < in.size(); ++i) out[i] = std::abs(in[i] - centre) < limit ? centre : in[i];
}

void limitAmp(std::span<const double> in, double* out, double limit) {
  for (std::size_t i = 0; i < in.size(); ++i)
    out[i] = i > 0 && std::abs(in[i] - out[i - 1]) > limit ? out[i - 1] : in[i];
}

void kalman(std::span<const double> in, double* out, const ScalarKalman& m) {
  double x = 0.0, variance = 0.0;
  for (std::size_t i = 0; i < in.size(); ++i) {
    const double z = in[i];
    x = z * m.b + x * m.a;
    variance = variance * (m.a * m.a) + m.q;
    const double gain = variance * m.h / (m.h * m.h * variance + m.r);
    x += (z - x * m.h) * gain;
    out[i] = x;
    variance *= 1.0 - gain * m.h;
  }
}

void lineBetween(LineEnd left, LineEnd right, std::span<const double> x, double* y) {
  if (left.x > right.x) std::swap(left, right);
  const double width = right.x - left.x;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double t = (x[i] - left.x) / width, s = 1.0 - t;
    if (x[i] <= left.x)
      y[i] = left.y + left.slope * (x[i] - left.x);
    else if (x[i] >= right.x)
      y[i] = right.y + right.slope * (x[i] - right.x);
    else
      y[i] = s * s * ((1.0 + 2.0 * t) * left.y + t * width * left.slope) +
             t * t * ((1.0 + 2.0 * s) * right.y - s * width * right.slope);
  }
}

void localFits(std::span<const double> in, double* out, int32_t width, int32_t degree, int32_t step) {
  const std::size_t n = in.size(), stride = static_cast<std::size_t>(std::max(step, 1));
  if (width < 1 || static_cast<std::size_t>(width) >= n) return void(std::ranges::copy(in, out));
  const auto size = static_cast<std::size_t>(width);
  const std::vector<double> padded = clampedBorder(in, size);
  const OrthogonalPolynomials polynomials(integers(-static_cast<double>(size / 2), size),
                                          static_cast<std::size_t>(std::max(degree, 0)));
  std::vector<std::vector<double>> ahead;  // the polynomials at 0, 1, ... steps from the window's point
  for (std::size_t j = 0; j < std::min(stride, n); ++j) ahead.push_back(polynomials.values(static_cast<double>(j)));
  for (std::size_t start = 0; start < n; start += stride) {
    const std::vector<double> fit = polynomials.fit(padded.data() + start);
    for (std::size_t j = 0; j < stride && start + j < n; ++j)
      out[start + j] = std::inner_product(fit.begin(), fit.end(), ahead[j].begin(), 0.0);
  }
}

}  // namespace Filter
