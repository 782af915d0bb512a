// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {

double calcLambertW(double x) {
  constexpr double kBranchPoint = -0.36787944117144233;  // -1/e
  if (std::abs(x - kBranchPoint) < kEpsilon) return -1;
  if (!(x >= kBranchPoint)) return kNaN;
  if (std::abs(x) < 0.001)
    return (((((((16807.0 / 720) * x - 10.8) * x + 5.208333333333333) * x - 2.6666666666666665) * x + 1.5) * x - 1) *
                x +
            1) *
           x;
  // Halley's iteration on w exp(w) = x. Steps that meet one of the last two values again find nothing new.
  // KEPT: 16 rounds from w = 1 do not reach large x; expected: convergence (kept.csv: LambertW_large)
  double w = 1, e = std::exp(w), f = e * w - x, best = w, least = std::abs(f), last = w, lastButOne = w;
  for (int round = 0; round < 16 && !(least <= 1e-15); ++round) {
    w -= f / ((w + 1) * e - ((w + 2) * f) / (2 * w + 2));
    if (round > 1 && (w == last || w == lastButOne)) break;
    lastButOne = last;
    last = w;
    e = std::exp(w);
    f = e * w - x;
    if (std::abs(f) < least) {
      least = std::abs(f);
      best = w;
    }
  }
  return best;
}

double calcWrightOmega(double x) {
  const auto g = [x](double w) { return std::log(w) + w - x; };
  double w = x > 1 ? x : 1, value = g(w);
  for (int round = 0; round < 16; ++round) {
    if (std::abs(value) < 1e-15) return w;
    w -= value / (1 / w + 1);
    if (w <= 0) w = 1.3322676295501878e-15;
    value = g(w);
  }
  double low = 0, high = w;
  if (value <= 0) {
    low = w;
    high = w + 10;
    while (g(high) < 0) {
      low = high;
      high *= 8;
    }
  }
  // KEPT: the absolute stop makes small w a fixed few 1e-16; expected: exp(x) (kept.csv: WrightOmega_left)
  double middle = 0;
  for (int round = 0; round < 64; ++round) {
    middle = (low + high) / 2;
    value = g(middle);
    if (std::abs(value) < 1e-15 || std::abs(low - high) < 1e-15) return middle;
    (value > 0 ? high : low) = middle;
  }
  return middle;
}

}  // namespace SpecialFunction
