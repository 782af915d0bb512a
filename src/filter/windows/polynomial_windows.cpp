// SPDX-License-Identifier: Apache-2.0
#include "filter/windows/polynomial_windows.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "filter/angles.h"

namespace Filter {

namespace {

using std::numbers::pi;

/// I0 by its power series: sum of ((x/2)^k/k!)^2.
double besselI0(double x) {
  double term = 1.0, sum = 1.0;
  for (int k = 1; k < 255; ++k) {
    term *= x / 2.0 / k;
    sum += term * term;
    if (term < 1e-15) break;
  }
  return sum;
}

/// C(n, mu, x) by k C(k) = 2 (k+mu-1) x C(k-1) - (k+2mu-2) C(k-2).
double gegenbauer(int32_t n, double mu, double x) {
  if (n < 1) return 1.0;
  double before = 1.0, value = 2.0 * mu * x;
  for (int32_t k = 2; k <= n; ++k) {
    const double next = ((k + mu - 1.0) * 2.0 * x * value - (k + 2.0 * mu - 2.0) * before) / k;
    before = value;
    value = next;
  }
  return value;
}

}  // namespace

std::vector<double> DolphChebyshevWindow::getWindow(int32_t n) const {
  std::vector<double> w = ones(n);
  const double middle = (n - 1.0) / 2.0, gain = param(1), cosF = cosOf(2.0 * pi * param(2));
  std::vector<double> samples(w.size());
  double sum = 0.0;
  for (std::size_t j = 0; j < w.size(); ++j) {
    const double theta = 2.0 * pi * (static_cast<double>(j) - middle) / n;
    const double y = std::clamp((2.0 * std::cos(theta) - cosF + 1.0) / (cosF + 1.0), -1.0, 1.0);
    samples[j] = std::cos(std::acos(y) * middle) * gain;
    sum += samples[j];
  }
  if (std::abs(sum) < 1e-15) return w;
  for (std::size_t i = 0; i < w.size(); ++i) {
    double value = 0.0;
    for (std::size_t j = 0; j < w.size(); ++j)
      value += samples[j] / sum *
               std::cos(2.0 * pi * (static_cast<double>(j) - middle) * (static_cast<double>(i) - middle) / n);
    w[i] = value;
  }
  return w;
}

std::vector<double> KaiserWindow::getWindow(int32_t n) const {
  const double scale = pi * param(1), peak = besselI0(scale);
  return stepped(n, 0.0, [=](double i, double) {
    const double x = 1.0 - 2.0 * i / (n - 1.0);
    return besselI0(scale * std::sqrt(std::abs(1.0 - x * x))) / peak;
  });
}

std::vector<double> UltrasphericalWindow::getWindow(int32_t n) const {
  const double x0 = param(1), mu = param(2);
  std::vector<double> samples;
  for (int32_t k = 0; k <= (n - 1) / 2; ++k) samples.push_back(gegenbauer(n - 1, mu, x0 * std::cos(k * pi / n)));
  return stepped(n, 0.0, [&](double i, double) {
    double sum = samples[0];
    for (std::size_t k = 1; k < samples.size(); ++k)
      sum += samples[k] * std::cos(2.0 * i * static_cast<double>(k) * pi / n);
    return sum / n;
  });
}

}  // namespace Filter
