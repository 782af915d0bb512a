// SPDX-License-Identifier: Apache-2.0
#include "numeric/sampled_integral.h"

#include <algorithm>

#include "numeric/line_equation.h"

namespace Integral {
namespace {

// Interval i is the one from sample i to sample i+1; part(i) is its integral for step 1.
template <class Part>
std::vector<double> running(std::size_t count, double step, Part&& part) {
  std::vector<double> out(count, 0.0);
  double sum = 0.0;
  for (std::size_t i = 0; i + 1 < count; ++i) {
    sum += part(i);
    out[i + 1] = step * sum;
  }
  return out;
}

// Natural spline: step^2 times its second derivatives m at the samples, m[i-1] + 4 m[i] + m[i+1] = 6 times the second
// difference, 0 at both ends.
std::vector<double> splineCurvature(std::span<const double> f) {
  const std::size_t n = f.size();
  std::vector<double> m(n, 0.0);
  if (n < 3) return m;
  const std::vector<double> ones(n, 1.0), fours(n, 4.0);
  std::vector<double> d(n);
  for (std::size_t i = 1; i + 1 < n; ++i) d[i - 1] = 6 * (f[i + 1] - 2 * f[i] + f[i - 1]);
  const auto inner = static_cast<std::ptrdiff_t>(n) - 2;
  const std::vector<double> x = LineEqu::solveTridiagonal({ones.data(), fours.data(), ones.data(), inner}, d.data());
  std::copy(x.begin(), x.end(), m.begin() + 1);
  return m;
}

}  // namespace

std::vector<double> runningTrapezoid(std::span<const double> f, double step) {
  return running(f.size(), step, [&](std::size_t i) { return (f[i] + f[i + 1]) / 2; });
}

std::vector<double> runningSimpson(std::span<const double> f, double step) {
  if (f.size() < 3) return runningTrapezoid(f, step);
  return running(f.size(), step, [&](std::size_t i) {
    const bool forward = i % 2 == 0 && i + 2 < f.size();
    return forward ? (5 * f[i] + 8 * f[i + 1] - f[i + 2]) / 12 : (5 * f[i + 1] + 8 * f[i] - f[i - 1]) / 12;
  });
}

std::vector<double> runningSpline(std::span<const double> f, double step) {
  const std::vector<double> m = splineCurvature(f);
  return running(f.size(), step, [&](std::size_t i) { return (f[i] + f[i + 1]) / 2 - (m[i] + m[i + 1]) / 24; });
}

std::vector<double> runningIntegral(std::span<const double> f, double step, int rule) {
  return rule == 0 ? runningTrapezoid(f, step) : rule == 1 ? runningSimpson(f, step) : runningSpline(f, step);
}

}  // namespace Integral
