// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace SpecialFunction {

/// pFq(a; b; z) by its Taylor series in 128-bit floats: a[p] upper, b[q] lower parameters. Ends at an absolute term of
/// 1e-17, beyond the double range, or after 1,000,000 terms, with the sum reached; NaN when a lower parameter is a
/// non-positive integer. p = 1, q = 0, |z| < 1 is (1-z)^-a[0].
double calcHypergeometricPFQ(const double* a, int32_t p, const double* b, int32_t q, double z);

}  // namespace SpecialFunction
