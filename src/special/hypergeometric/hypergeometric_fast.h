// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

namespace SpecialFunction {

/// The double that the GMP series gives, got in double-double arithmetic; nothing when its error bound cannot tell it
/// or the arguments are outside its range. Finite arguments, lower parameters that are no poles. useFma false: products
/// without the fused instruction, as on processors that lack it. cancellation, when given, becomes the sum of the sizes
/// of the terms over the size of their sum, where the series came to its end.
std::optional<double> calcHypergeometricPFQByDoubleDouble(const double* a, int32_t p, const double* b, int32_t q,
                                                          double z, bool useFma = true, double* cancellation = nullptr);

/// The same in floats of 128 bits: slower, and decides up to a cancellation of about kWideCancellation.
std::optional<double> calcHypergeometricPFQByWide(const double* a, int32_t p, const double* b, int32_t q, double z);

/// The double that calcHypergeometricPFQByMoreBits gives when it begins with `bits`, in floats of a fixed count of
/// limbs; nothing when its error bound cannot tell it, a stop is too near to call, or more than 768 bits are needed.
/// largest: the binary exponent of the largest term, about. rest, when given, becomes a bound of the sum of the sizes
/// of the terms from the first one near kHypergeometricTermLimit on.
std::optional<double> calcHypergeometricPFQByLimbs(const double* a, int32_t p, const double* b, int32_t q, double z,
                                                   unsigned long bits, double largest, double* rest = nullptr);

constexpr double kWideCancellation = 0x1p62;
constexpr int kMaxParameters = 3;  ///< above or below that both roads take

}  // namespace SpecialFunction
