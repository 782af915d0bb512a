// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric/hypergeometric_series_gmp.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "special/hypergeometric/gmp_series.h"

namespace SpecialFunction {
namespace {

constexpr mp_bitcnt_t kBits = 128;
constexpr mp_bitcnt_t kSeriesBits = 1 << 15;
constexpr unsigned long kSeriesTerms = 200000;
constexpr long kSeriesWanted = 64;  // bits of the result

struct Parameters {
  const double* a;
  int32_t p;
  const double* b;
  int32_t q;
  double z;
};

template <class Arithmetic>
FloatSeries<Arithmetic> seriesOf(const Arithmetic& arithmetic, const Parameters& s) {
  return {arithmetic, s.a, s.p, s.b, s.q, s.z};
}

template <class Arithmetic>
std::optional<double> untilAbsoluteStop(const Arithmetic& arithmetic, const Parameters& parameters) {
  auto series = seriesOf(arithmetic, parameters);
  const auto limit = arithmetic.number(arithmetic.factor(kHypergeometricTermLimit));
  const auto huge = arithmetic.number(arithmetic.factor(std::numeric_limits<double>::max()));
  for (unsigned long n = 1;; ++n) {
    if (!series.add(n)) return std::nullopt;
    if (series.term.compareSize(limit) <= 0 || series.term.compareSize(huge) > 0 ||
        n + 1 >= static_cast<unsigned long>(kHypergeometricMaxTerms))
      return series.toDouble();
  }
}

struct Round {
  double value;
  long lost;  // bits of the largest term above the sum
};

template <class Arithmetic>
std::optional<Round> untilRelativeStop(const Arithmetic& arithmetic, const Parameters& parameters, long bits) {
  const double turn = lastTurn(parameters.b, parameters.q);
  auto series = seriesOf(arithmetic, parameters);
  const auto &sum = series.sum, &term = series.term;
  long largest = 1, last = 1;
  for (unsigned long n = 1; n < kSeriesTerms; ++n) {
    if (!series.add(n)) return std::nullopt;
    if (term.isZero()) break;
    const long size = term.binaryExponent();
    if (size > largest) largest = size;
    // Falling for good, and below the last bit that the sum can keep.
    if (static_cast<double>(n) > turn && size < last &&
        (size < sum.binaryExponent() - kSeriesWanted - 8 || size < largest - bits))
      break;
    last = size;
  }
  return Round{series.toDouble(), sum.isZero() ? bits : largest - sum.binaryExponent()};
}

}  // namespace

double calcHypergeometricPFQByGMP(const double* a, int32_t p, const double* b, int32_t q, double z) {
  // Setting and restoring the default precision is what the routine shows outside.
  const HP::DefaultPrecision precision(kBits);
  const Parameters parameters{a, p, b, q, z};
  return inFloats(kBits, [&](const auto& arithmetic) { return untilAbsoluteStop(arithmetic, parameters); });
}

double calcHypergeometricPFQByMoreBits(const double* a, int32_t p, const double* b, int32_t q, double z,
                                       unsigned long bits) {
  const Parameters parameters{a, p, b, q, z};
  for (;;) {
    const auto wanted = static_cast<long>(bits);
    const Round round =
        inFloats(bits, [&](const auto& arithmetic) { return untilRelativeStop(arithmetic, parameters, wanted); });
    if (wanted >= round.lost + kSeriesWanted || bits >= kSeriesBits) return round.value;
    bits = std::max(2 * bits, static_cast<mp_bitcnt_t>(round.lost) + 128);
  }
}

}  // namespace SpecialFunction
