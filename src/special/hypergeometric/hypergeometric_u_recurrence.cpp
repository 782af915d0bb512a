// SPDX-License-Identifier: Apache-2.0
// Tricomi's U as the minimal solution of its recurrence in a (Temme, Numer. Math. 41, 1983).
#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "special/hypergeometric/hypergeometric_u_parts.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr int kMostSteps = 2000000;
constexpr double kMostDown = 20000, kQuickSteps = 8000;

/// U(a, b, x) and U(a+1, b, x), times exp(-logarithm).
struct Neighbours {
  double here, next, logarithm;
};

// a > 0, a-b+1 > 0, backwards from index `start`. With w_n = (a)_n U(a+n, b, x):
// w_(n-1) = ((2a+2n+x-b) w_n - (a+n-b+1) w_(n+1))/(a+n-1), and sum of (a-b+1)_n/n! w_n = x^-a. In long double: w
// changes slowly, and each rounding counts n times.
Neighbours backward(double a, double b, double x, int start) {
  long double next = 0, now = 1e-250L, weight = 1, sum = now;
  for (int n = start; n > 0; --n) {
    const long double before =
        ((static_cast<long double>(2 * a + 2.0 * n) + x - b) * now - (static_cast<long double>(a) + n - b + 1) * next) /
        (static_cast<long double>(a) + n - 1);
    next = now;
    now = before;
    weight *= n / (static_cast<long double>(a) - b + n);
    sum += weight * now;
    if (now > 1e200 || sum > 1e200) {
      next *= 1e-200;
      now *= 1e-200;
      sum *= 1e-200;
    }
    if (weight > 1e100) {
      weight *= 1e-100;
      sum *= 1e-100;
    } else if (weight < 1e-100) {
      weight *= 1e100;
      sum *= 1e100;
    }
  }
  const long double scale = weight / sum;
  return {static_cast<double>(now * scale), static_cast<double>(next * scale / a), -a * std::log(x)};
}

// The weights above grow like n^(a-b), and with a large a-b their sum ends late. The same for the smaller of a and
// a-b+1, by U(a, b, x) = x^(1-b) U(a-b+1, 2-b, x), and from a base k below where that one, `rest`, lies in (0, 1]:
// weights (rest)_n/n!, and U at the wanted place is w_k/(base)_k.
Neighbours backwardFromBase(double a, double b, double x, int start) {
  const double smaller = std::min(a, a - b + 1), k = std::ceil(smaller) - 1;
  const double rest = smaller - k, base = std::max(a, a - b + 1) - k;
  long double next = 0, now = 1e-250L, weight = 1, sum = now, here = 0, after = 0;
  for (int n = start; n > 0; --n) {
    if (n == static_cast<int>(k)) {
      here = now;
      after = next;
    }
    const long double before = ((static_cast<long double>(base) + rest - 1 + 2.0L * n + x) * now -
                                (static_cast<long double>(rest) + n) * next) /
                               (static_cast<long double>(base) + n - 1);
    next = now;
    now = before;
    weight *= n / (static_cast<long double>(rest) + n - 1);
    sum += weight * now;
    if (now > 1e200) {
      next *= 1e-200;
      now *= 1e-200;
      sum *= 1e-200;
      here *= 1e-200;
      after *= 1e-200;
    }
  }
  if (k == 0) {
    here = now;
    after = next;
  }
  // x^-base is that of the base, x^(1-b) of the exchange.
  double logarithm = (k - a) * std::log(x);
  here *= weight / sum;
  after *= weight / (sum * (static_cast<long double>(base) + k));
  for (double n = 0; n < k; n += 1) {
    here /= base + n;
    after /= base + n;
    if (here < 1e-200L) {
      here *= 1e200L;
      after *= 1e200L;
      logarithm -= 200 * std::log(10.0);
    }
  }
  return {static_cast<double>(here), static_cast<double>(after), logarithm};
}

template <class Backward>
std::optional<Neighbours> converged(Backward backwardFrom, int start) {
  auto value = backwardFrom(start);
  for (;;) {
    start *= 2;
    if (start > kMostSteps) return std::nullopt;
    const auto finer = backwardFrom(start);
    const bool same = std::abs(finer.here - value.here) <= 64 * kEpsilon * std::abs(finer.here);
    value = finer;
    if (same || std::isnan(finer.here)) return value;
  }
}

std::optional<Neighbours> startAt(double a, double b, double x) {
  const double growth = a - b, order = std::abs(b - 1);
  const bool fromBase = growth > 8 && growth * growth > 200 * x;
  // w_n is about a K_(b-1)(2 sqrt((n+q) x)), q the larger parameter: level up to 2 sqrt(n x) = |b-1|, then falling.
  const double q = std::max(a, a - b + 1), product = q * x, root = std::sqrt(product) + order / 2 + 11;
  const double steps = root * root / x - q + std::min(a, a - b + 1);
  // The two series, which b = 1 does not have, are quicker in the end.
  if ((fromBase || order > 20) && steps > kQuickSteps && product < 100 && order > 1e-15) return std::nullopt;
  if (!fromBase) return converged([=](int start) { return backward(a, b, x, start); }, 40 + static_cast<int>(130 / x));
  if (!(2 * steps < kMostSteps)) return std::nullopt;
  return converged([=](int start) { return backwardFromBase(a, b, x, start); }, 40 + static_cast<int>(steps));
}

}  // namespace

std::optional<Scaled> hypergeometricUByRecurrence(double a, double b, double x) {
  double down = std::max(0.0, std::ceil(std::max(-a, b - a - 1) + 0.25));
  if (!(down <= kMostDown) || 200 / x > kMostSteps) return std::nullopt;
  const double top = a + down;
  const auto start = startAt(top, b, x);
  if (!start) return std::nullopt;
  Scaled result{start->here, start->logarithm};
  double above = start->next;
  // U(a-1) = (2a+x-b) U(a) - a(a-b+1) U(a+1).
  for (double order = top; down > 0; --down, order -= 1) {
    const double below = (2 * order + x - b) * result.value - order * (order - b + 1) * above;
    above = result.value;
    result.value = below;
    const double size = std::abs(below);
    if (size > 1e100) {
      result.value *= 1e-100;
      above *= 1e-100;
      result.logarithm += 100 * std::log(10.0);
    }
  }
  return result;
}

}  // namespace SpecialFunction
