// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "highprecision/binary/float_ops.h"

namespace HP {

/// One complex number of two GMP floats with the default precision of the moment, both 0 at first. Always held through
/// a shared pointer.
class HPPlural {
 public:
  std::shared_ptr<HPByGMP> real = std::make_shared<HPByGMP>();
  std::shared_ptr<HPByGMP> imaginary = std::make_shared<HPByGMP>();
};

/// A value of the machine; null is an undefined one, which every function hands on.
using PluralValue = std::shared_ptr<HPPlural>;

// Each part of a result is the exact value cut to the default precision. What is undefined is null: a division by 0,
// the logarithm of 0, a pole, a size beyond 2^(+-2^54), a circular function of a real part from 2^(2^20) on (an
// imaginary part, for the hyperbolic ones). Results closer to 0 than that are 0.

PluralValue add(const HPPlural& a, const HPPlural& b);
PluralValue subtract(const HPPlural& a, const HPPlural& b);
PluralValue multiply(const HPPlural& a, const HPPlural& b);
PluralValue divide(const HPPlural& a, const HPPlural& b);
/// exp(b ln a); an integer b by products; 1 for b = 0.
PluralValue power(const HPPlural& a, const HPPlural& b);

PluralValue exponential(const HPPlural& z);
PluralValue logarithm(const HPPlural& z);
PluralValue squareRoot(const HPPlural& z);
PluralValue sine(const HPPlural& z);
PluralValue cosine(const HPPlural& z);
PluralValue tangent(const HPPlural& z);
PluralValue cotangent(const HPPlural& z);
PluralValue hyperbolicSine(const HPPlural& z);
PluralValue hyperbolicCosine(const HPPlural& z);
PluralValue hyperbolicTangent(const HPPlural& z);
PluralValue hyperbolicCotangent(const HPPlural& z);
/// -i ln(iz + sqrt(1 - z^2))
PluralValue arcSine(const HPPlural& z);
/// (i/2) (ln(1 - iz) - ln(1 + iz))
PluralValue arcTangent(const HPPlural& z);
/// ln(z + sqrt(z^2 + 1))
PluralValue inverseHyperbolicSine(const HPPlural& z);
/// (ln(1 + z) - ln(1 - z))/2
PluralValue inverseHyperbolicTangent(const HPPlural& z);

}  // namespace HP
