// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

namespace SpecialFunction {

/// The sum of the sizes of the terms over the size of their sum, and their number; 0 when not known.
struct Cancellation {
  double factor = 0, terms = 0;
};

/// (high + low +- error) 2^kExponent.
struct DoubleDoubleSum {
  static constexpr int kExponent = 300;
  double high, low, error;
};

/// The double that the GMP series gives, got in double-double arithmetic; nothing when its error bound cannot tell it
/// or the arguments are outside its range. Finite arguments, lower parameters that are no poles. useFma false: products
/// without the fused instruction, as on processors that lack it. cancellation, when given, is set where the series came
/// to its end.
std::optional<double> calcHypergeometricPFQByDoubleDouble(const double* a, int32_t p, const double* b, int32_t q,
                                                          double z, bool useFma = true,
                                                          Cancellation* cancellation = nullptr);

/// The same in floats of 128 bits: slower, and decides seldom where factor terms of the cancellation is above
/// kWideCancellation.
std::optional<double> calcHypergeometricPFQByWide(const double* a, int32_t p, const double* b, int32_t q, double z);

constexpr double kWideCancellation = 0x1p65;

/// The infinite series with its error, in double-double arithmetic; aTails and zTail are added to a and z. Nothing
/// where it ends too late or leaves the range.
std::optional<DoubleDoubleSum> wholeHypergeometricSum(const double* a, const double* aTails, int32_t p, const double* b,
                                                      int32_t q, double z, double zTail);

/// The double that calcHypergeometricPFQByMoreBits gives when it begins with `bits`, for 1F1 and 2F1 left of 0: by the
/// transformations of Kummer, Pfaff and Euler in double-double arithmetic, where these do not cancel. Nothing when the
/// error bound cannot tell it. largest, rest: as below.
std::optional<double> calcHypergeometricPFQByTransformation(const double* a, int32_t p, const double* b, int32_t q,
                                                            double z, unsigned long bits, double largest,
                                                            double* rest = nullptr);

/// The double that calcHypergeometricPFQByMoreBits gives when it begins with `bits`, in floats of a fixed count of
/// limbs; nothing when its error bound cannot tell it, a stop is too near to call, or more than 768 bits are needed.
/// largest: the binary exponent of the largest term, about. rest, when given, becomes a bound of the sum of the sizes
/// of the terms from the first one near kHypergeometricTermLimit on.
std::optional<double> calcHypergeometricPFQByLimbs(const double* a, int32_t p, const double* b, int32_t q, double z,
                                                   unsigned long bits, double largest, double* rest = nullptr);

constexpr int kMaxParameters = 3;  ///< above or below that both roads take

}  // namespace SpecialFunction
