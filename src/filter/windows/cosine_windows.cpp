// SPDX-License-Identifier: Apache-2.0
#include "filter/windows/cosine_windows.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "filter/angles.h"

namespace Filter {

namespace {
using std::numbers::pi;

double turnStep(int32_t n) { return 2.0 * pi / (n - 1.0); }
}  // namespace

std::vector<double> HammingWindow::getWindow(int32_t n) const {
  const double a = param(1);
  return stepped(n, turnStep(n), [a](double, double t) { return a - (1.0 - a) * cosOf(t); });
}

std::vector<double> BlackmanWindow::getWindow(int32_t n) const {
  const double alpha = param(1);
  return stepped(n, turnStep(n), [alpha](double, double t) {
    return (1.0 - alpha) / 2.0 - 0.5 * cosOf(t) + alpha / 2.0 * cosOf(2.0 * t);
  });
}

std::vector<double> CosineSumWindow::getWindow(int32_t n) const {
  const auto count = static_cast<int32_t>(windowParams.size());
  if (count == 0) return ones(n);
  return stepped(n, turnStep(n), [this, count](double, double t) {
    double sum = 0.0;
    for (int32_t k = 0; k < count; ++k) sum += (k % 2 == 0 ? 1.0 : -1.0) * param(k + 1) * cosOf(k * t);
    return sum;
  });
}

std::vector<double> BartlettHannWindow::getWindow(int32_t n) const {
  return stepped(n, turnStep(n), [n](double i, double t) {
    // KEPT: i/(n-1) is an integer division, 0 but for the last point; expected: the fraction, for a triangle under the
    // cosine (kept.csv: BartlettHann_integer)
    const int32_t q = n > 1 ? static_cast<int32_t>(i) / (n - 1) : 0;
    return 0.62 - 0.48 * std::abs(q - 0.5) - 0.38 * cosOf(t);
  });
}

std::vector<double> HannPoissonWindow::getWindow(int32_t n) const {
  const double alpha = param(1);
  const double last = n - 1.0;
  return stepped(n, turnStep(n), [alpha, last](double i, double t) {
    return std::exp(-alpha * std::abs(last - 2.0 * i) / last) * (1.0 - cosOf(t)) / 2.0;
  });
}

std::vector<double> PowerSineWindow::getWindow(int32_t n) const {
  const double k = std::trunc(param(1));
  return stepped(n, pi / (n - 1.0), [k](double, double t) { return std::pow(sinOf(t), k); });
}

std::vector<double> TukeyWindow::getWindow(int32_t n) const {
  std::vector<double> w = ones(n);
  const double width = (n - 1.0) * param(1);
  const double flank = std::trunc(width / 2.0);
  for (std::size_t i = 0; i < w.size() && static_cast<double>(i) < flank; ++i)
    w[i] = w[w.size() - 1 - i] = (1.0 - cosOf(2.0 * pi * static_cast<double>(i) / width)) / 2.0;
  return w;
}

}  // namespace Filter
