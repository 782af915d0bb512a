// SPDX-License-Identifier: Apache-2.0
#include "statistics/goodness.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include "frame/numbers.h"
#include "frame/wide_registers.h"

namespace Statistics {
namespace {

constexpr std::size_t kLeast = 3;
constexpr double kLarge = 1e140;
constexpr double kManyValues = 20000;

/// A matrix of m columns whose entries stand for entry * 10^exponent.
struct ScaledMatrix {
  std::size_t m;
  std::vector<double> entries;
  int exponent = 0;

  void keepInRange() {
    if (*std::max_element(entries.begin(), entries.end()) <= kLarge) return;
    for (double& entry : entries) entry *= 1e-140;
    exponent += 140;
  }
};

// c = a b, row by row; four rows of b at a time, so that c is read and written a quarter as often.
ScaledMatrix product(const ScaledMatrix& a, const ScaledMatrix& b) {
  const std::size_t m = b.m, rows = a.entries.size() / m;
  ScaledMatrix c{m, std::vector<double>(rows * m), a.exponent + b.exponent};
  onWidest([&]() __attribute__((always_inline)) {
    for (std::size_t i = 0; i < rows; ++i) {
      const double* const factors = a.entries.data() + i * m;
      double* __restrict const sums = c.entries.data() + i * m;
      std::size_t k = 0;
      for (; k + 4 <= m; k += 4) {
        const double* __restrict const row = b.entries.data() + k * m;
        const double f0 = factors[k], f1 = factors[k + 1], f2 = factors[k + 2], f3 = factors[k + 3];
        for (std::size_t j = 0; j < m; ++j)
          sums[j] += (f0 * row[j] + f1 * row[m + j]) + (f2 * row[2 * m + j] + f3 * row[3 * m + j]);
      }
      for (; k < m; ++k)
        for (std::size_t j = 0; j < m; ++j) sums[j] += factors[k] * b.entries[k * m + j];
    }
  });
  c.keepInRange();
  return c;
}

// Row `which` of the n-th power: the squares in turn, and the row times those whose bit is in n. The last square is
// never formed: the row goes twice through the one before.
ScaledMatrix rowOfPower(ScaledMatrix square, std::size_t which, int64_t n) {
  ScaledMatrix row{square.m, std::vector<double>(square.m)};
  row.entries[which] = 1;
  for (; n > 3; n /= 2) {
    if (n % 2 != 0) row = product(row, square);
    square = product(square, square);
  }
  for (; n > 0; --n) row = product(row, square);
  return row;
}

// The matrix of the recursion, of order 2k - 1, with h = k - n d.
ScaledMatrix recursion(std::size_t k, double h) {
  const std::size_t m = 2 * k - 1;
  ScaledMatrix matrix{m, std::vector<double>(m * m)};
  const auto at = [&](std::size_t i, std::size_t j) -> double& { return matrix.entries[i * m + j]; };
  for (std::size_t i = 0; i < m; ++i)
    for (std::size_t j = 0; j < std::min(i + 2, m); ++j) at(i, j) = 1;
  double hPower = 1;
  for (std::size_t i = 0; i < m; ++i) {
    hPower *= h;
    at(i, 0) -= hPower;
    at(m - 1, m - 1 - i) -= hPower;
  }
  at(m - 1, 0) += 2 * h > 1 ? std::pow(2 * h - 1, static_cast<double>(m)) : 0;
  for (std::size_t i = 0; i < m; ++i) {
    double factorial = 1;  // (i - j + 1)!
    for (std::size_t j = i + 1; j-- > 0;) {
      factorial *= static_cast<double>(i - j + 1);
      at(i, j) /= factorial;
    }
  }
  return matrix;
}

// P(D < d) to the order n^-3/2: Pelz and Good, Journal of the Royal Statistical Society B 38 (1976) 152.
double asymptoticShare(double n, double d) {
  constexpr double pi = std::numbers::pi;
  const double z2 = n * d * d, z = std::sqrt(z2), z4 = z2 * z2, z6 = z4 * z2, z8 = z4 * z4;
  double k0 = 0, k1 = 0, k2 = 0, k3 = 0;
  for (int i = 0; i < 40; ++i) {
    const double h = pi * pi * (i + 0.5) * (i + 0.5), h2 = h * h;  // odd multiples of pi/2, squared
    const double w = 2 * std::exp(-h / (2 * z2));
    k0 += w;
    k1 += w * (h - z2);
    k2 += w * (6 * z6 + 2 * z4 + h * (2 * z4 - 5 * z2) + h2 * (1 - 2 * z2));
    k3 += w * (h2 * h * (5 - 30 * z2) + h2 * (212 * z4 - 60 * z2) + h * (135 * z4 - 96 * z6) - (30 * z6 + 90 * z8));
  }
  double even2 = 0, even3 = 0;
  for (int i = 1; i < 40; ++i) {
    const double e = pi * pi * i * i;
    const double w = 2 * std::exp(-e / (2 * z2));
    even2 += w * e;
    even3 += w * (3 * e * z2 - e * e);
  }
  const double root = std::sqrt(n);
  return std::sqrt(pi / 2) * (k0 / z + k1 / (6 * z4 * root) + (k2 / (72 * z6 * z) - even2 / (36 * z2 * z)) / n +
                              (k3 / (6480 * z8 * z2) + even3 / (216 * z6)) / (n * root));
}

}  // namespace

// Marsaglia, Tsang, Wang, Journal of Statistical Software 8 (2003) 18: n!/n^n times the middle entry of a power.
double kolmogorovTail(double n, double d) {
  if (std::isnan(d)) return kNaN;
  const double s = n * d * d;
  if (s > 7.24 || (s > 3.76 && n > 99)) return 2 * std::exp(-(2.000071 + 0.331 / std::sqrt(n) + 1.409 / n) * s);
  if (n > kManyValues) return 1 - asymptoticShare(n, d);  // within 1e-10; the power would take minutes
  const auto k = static_cast<std::size_t>(n * d) + 1;
  const auto count = static_cast<int64_t>(n);
  const ScaledMatrix last = rowOfPower(recursion(k, static_cast<double>(k) - n * d), k - 1, count);
  double share = last.entries[k - 1];
  int exponent = last.exponent;
  for (int64_t i = 1; i <= count; ++i) {
    share *= static_cast<double>(i) / n;
    if (share < 1e-140) {
      share *= 1e140;
      exponent -= 140;
    }
  }
  return 1 - share * std::pow(10.0, exponent);
}

double kolmogorovSmirnov(std::span<const double> z) {
  if (z.size() < kLeast) return 0;
  const auto n = static_cast<double>(z.size());
  double below = 0, distance = 0;
  for (const double value : z) {
    if (std::isnan(value)) return kNaN;
    const double above = below + 1 / n;
    distance = std::max({distance, std::abs(value - below), std::abs(value - above)});
    below = above;
  }
  return kolmogorovTail(n, distance);
}

// The p values are those of D'Agostino and Stephens, Goodness-of-Fit Techniques, 1986, table 4.9, with the factor for
// an estimated mean and deviation.
double andersonDarling(std::span<const double> z) {
  if (z.size() < kLeast) return 0;
  const std::size_t count = z.size();
  const auto n = static_cast<double>(count);
  double sum = 0;
  for (std::size_t i = 0; i < count; ++i)
    sum += (std::log(z[i]) + std::log1p(-z[count - 1 - i])) * static_cast<double>(2 * i + 1) / n;
  const double a = (1 + 0.75 / n + 2.25 / (n * n)) * (-n - sum);
  if (a < 0) return 1;
  if (a < 0.2) return 1 - std::exp(-13.436 + 101.14 * a - 223.73 * a * a);
  if (a < 0.34) return 1 - std::exp(-8.318 + 42.796 * a - 59.938 * a * a);
  if (a < 0.6) return std::exp(0.9177 - 4.279 * a - 1.38 * a * a);
  if (a < 13) return std::exp(1.2937 - 5.709 * a + 0.0186 * a * a);
  return 0;  // and where a value has no probability
}

}  // namespace Statistics
