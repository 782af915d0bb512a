// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace SpecialFunction {

/// pFq(a; b; z) by its Taylor series in 128-bit floats: a[p] upper, b[q] lower parameters. Ends at an absolute term of
/// 1e-17, beyond the double range, or after 1,000,000 terms, with the sum reached (cut, not rounded, to a double). NaN
/// when a lower parameter is a non-positive integer or an argument is NaN or infinite. p = 1, q = 0, |z| < 1 is
/// (1-z)^-a[0]. Most values come from a narrower arithmetic whose error bound proves them to be the same doubles; only
/// the rest run the GMP series, and with it change the GMP default precision for the length of the call.
double calcHypergeometricPFQ(const double* a, int32_t p, const double* b, int32_t q, double z);

/// The same sum where its terms may cancel: the value above while it keeps about 12 digits, else one with a stop
/// relative to the sum and as many bits as the terms cancel. p <= q, |z| < 1, or an upper parameter that ends the
/// series.
double calcHypergeometricPFQKeepingDigits(const double* a, int32_t p, const double* b, int32_t q, double z);

/// The last of these at once, for sums that are known to cancel.
double calcHypergeometricPFQInFullDigits(const double* a, int32_t p, const double* b, int32_t q, double z);

}  // namespace SpecialFunction
