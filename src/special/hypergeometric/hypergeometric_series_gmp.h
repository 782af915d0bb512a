// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace SpecialFunction {

constexpr double kHypergeometricTermLimit = 1e-17;  ///< absolute: the series ends at the first term not above it
constexpr int32_t kHypergeometricMaxTerms = 1000000;

/// The series in GMP floats of 128 bits: the values that every faster way must reproduce bit for bit. Finite arguments,
/// lower parameters that are no poles.
double calcHypergeometricPFQByGMP(const double* a, int32_t p, const double* b, int32_t q, double z);

/// The same series with a stop relative to its sum and as many bits as its cancellation asks for, `bits` at first. p <=
/// q or |z| < 1 or a series that ends; |z| so small that the largest term stays below exp(5000) or so.
double calcHypergeometricPFQByMoreBits(const double* a, int32_t p, const double* b, int32_t q, double z,
                                       unsigned long bits = 256);

}  // namespace SpecialFunction
