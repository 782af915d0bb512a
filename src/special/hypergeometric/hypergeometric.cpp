// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric/hypergeometric.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "frame/numbers.h"
#include "special/hypergeometric/hypergeometric_fast.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"

namespace SpecialFunction {
namespace {

bool hasPole(const double* b, int32_t q) {
  for (int32_t j = 0; j < q; ++j)
    if (b[j] < 0.1 && std::abs(b[j] - std::round(b[j])) < 1e-15) return true;
  return false;
}

bool allFinite(const double* values, int32_t count) {
  return count <= 0 || std::all_of(values, values + count, [](double v) { return std::isfinite(v); });
}

constexpr double kEnough = 1e-3;                       // above it the absolute stop at 1e-17 leaves 13 digits
constexpr double kSurelyLost = 100, kMostBits = 7200;  // binary exponents of a largest term
constexpr double kCut = 1e300;                         // a sum above it may have been cut at a term beyond the doubles
constexpr double kKeptByGMP = 0x1p77;                  // of a cancellation: up to it 128 bits leave 13 digits
constexpr double kDip = -8;  // of a lower parameter: below it terms may fall under the stop and rise again

struct Terms {
  double largest;  // its binary exponent
  bool recover;    // the terms rise far above the stop again
};

// The sizes of the terms, in doubles with their scale taken out.
Terms sizesOfTerms(const double* a, int32_t p, const double* b, int32_t q, double z) {
  double turn = 0, term = 1, scale = 0, largest = 1, largestScale = 0;
  for (int32_t j = 0; j < q; ++j) turn = std::fmax(turn, -b[j]);
  bool under = false, recover = false;
  for (double n = 0; n < 200000; n += 1) {
    double ratio = z / (n + 1);
    for (int32_t i = 0; i < p; ++i) ratio *= a[i] + n;
    for (int32_t j = 0; j < q; ++j) ratio /= b[j] + n;
    term *= std::abs(ratio);
    if (term == 0) break;
    if (term > 0x1p500 || term < 0x1p-500) {
      int exponent = 0;
      term = std::frexp(term, &exponent);
      scale += exponent;
    }
    const double level = scale == 0 ? term : std::ldexp(term, static_cast<int>(std::fmin(scale, 2000)));
    if (under && level > 1e-15) recover = true;
    if (level <= kHypergeometricTermLimit) under = true;
    if (scale > largestScale || (scale == largestScale && term > largest)) {
      largest = term;
      largestScale = scale;
    } else if (n > turn && std::abs(ratio) < 1 && std::log2(term / largest) + scale - largestScale < -10) {
      break;
    }
  }
  return {std::log2(largest) + largestScale, recover};
}

bool hasOneSign(const double* a, int32_t p, const double* b, int32_t q, double z) {
  const auto positive = [](double v) { return v >= 0; };
  return z >= 0 && std::all_of(a, a + p, positive) && std::all_of(b, b + q, positive);
}

bool mayDip(const double* b, int32_t q) {
  return std::any_of(b, b + q, [](double v) { return v < kDip; });
}

// As many as a sum of the order of 1 takes; it asks for more itself.
unsigned long firstBits(const Terms& terms) {
  return static_cast<unsigned long>(std::clamp(terms.largest, 64.0, kMostBits) + 192);
}

double byBits(const Terms& terms, const double* a, int32_t p, const double* b, int32_t q, double z) {
  const unsigned long bits = firstBits(terms);
  auto value = calcHypergeometricPFQByTransformation(a, p, b, q, z, bits, terms.largest);
  if (!value) value = calcHypergeometricPFQByLimbs(a, p, b, q, z, bits, terms.largest);
  return value ? *value : calcHypergeometricPFQByMoreBits(a, p, b, q, z, bits);
}

}  // namespace

double calcHypergeometricPFQ(const double* a, int32_t p, const double* b, int32_t q, double z) {
  if (p == 1 && q == 0 && std::abs(z) < 1.0) return std::pow(1.0 - z, -a[0]);
  if (hasPole(b, q) || !std::isfinite(z) || !allFinite(a, p) || !allFinite(b, q)) return kNaN;
  Cancellation cancellation;
  if (const auto value = calcHypergeometricPFQByDoubleDouble(a, p, b, q, z, true, &cancellation)) return *value;
  if (cancellation.factor * cancellation.terms < kWideCancellation)
    if (const auto value = calcHypergeometricPFQByWide(a, p, b, q, z)) return *value;
  return calcHypergeometricPFQByGMP(a, p, b, q, z);
}

double calcHypergeometricPFQKeepingDigits(const double* a, int32_t p, const double* b, int32_t q, double z) {
  if (hasPole(b, q) || !std::isfinite(z) || !allFinite(a, p) || !allFinite(b, q)) return kNaN;
  Cancellation cancellation;
  auto value = calcHypergeometricPFQByDoubleDouble(a, p, b, q, z, true, &cancellation);
  if (!value && cancellation.factor * cancellation.terms < kWideCancellation)
    value = calcHypergeometricPFQByWide(a, p, b, q, z);
  const bool fits = value && std::abs(*value) > kEnough && (std::abs(*value) < kCut || hasOneSign(a, p, b, q, z));
  if (fits && !mayDip(b, q)) return *value;
  const Terms terms = sizesOfTerms(a, p, b, q, z);
  if (fits && !terms.recover) return *value;
  if (!(terms.largest < kMostBits)) return value ? *value : calcHypergeometricPFQByGMP(a, p, b, q, z);
  if (!value && !terms.recover && terms.largest < kSurelyLost) {
    // 2^-120 of the largest term is noise.
    const double noise = std::ldexp(1.0, static_cast<int>(terms.largest) - 120);
    // The sum with an absolute stop differs from the other by the terms that it leaves out and, as there are less than
    // 2^16, by at most 2^30 of that noise (hypergeometric_fast.cpp, 6.), 2^-13 of what it must exceed.
    double rest = kInfinity;
    std::optional<double> other;
    other = calcHypergeometricPFQByTransformation(a, p, b, q, z, firstBits(terms), terms.largest, &rest);
    if (!other && !(cancellation.factor > 0 && cancellation.factor < kKeptByGMP))
      other = calcHypergeometricPFQByLimbs(a, p, b, q, z, firstBits(terms), terms.largest, &rest);
    if (other && std::abs(*other) + rest < 0.9 * std::max(kEnough, noise / 1e-13)) return *other;
    value = calcHypergeometricPFQByGMP(a, p, b, q, z);
    if (std::abs(*value) > kEnough && noise <= 1e-13 * std::abs(*value)) return *value;
    if (other) return *other;
  }
  return byBits(terms, a, p, b, q, z);
}

double calcHypergeometricPFQInFullDigits(const double* a, int32_t p, const double* b, int32_t q, double z) {
  const Terms terms = sizesOfTerms(a, p, b, q, z);
  return terms.largest < kMostBits ? byBits(terms, a, p, b, q, z) : calcHypergeometricPFQ(a, p, b, q, z);
}

}  // namespace SpecialFunction
