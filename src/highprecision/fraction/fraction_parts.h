// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "frame/made_once.h"
#include "highprecision/decimal/limb_vector.h"
#include "highprecision/fraction/rational.h"

namespace HighPrecision {

/// Numerator and denominator of a fraction without its sign, as limbs and as GMP's number. One of the two is given, the
/// other is made by the first who asks: a chain of operations never changes the radix. Fractions that differ by their
/// sign share them; any number of threads may read.
class FractionParts {
 public:
  /// Integers in base 10^7, at least one limb each; `lowest`: known to be in lowest terms.
  FractionParts(LimbVector numerator, LimbVector denominator, bool lowest);
  /// In lowest terms; the sign does not count.
  explicit FractionParts(HP::Rational&& x);

  const LimbVector& numerator() const { return makeLimbs(), up; }
  const LimbVector& denominator() const { return makeLimbs(), down; }
  const HP::Rational& value() const { return makeValue(), *number; }  ///< in lowest terms

  const bool isZero;
  const bool isLowest;

 private:
  void makeLimbs() const;
  void makeValue() const;

  const bool hasLimbs;
  mutable MadeOnce once;  // of what was not given
  mutable LimbVector up, down;
  mutable std::optional<HP::Rational> number;
};

}  // namespace HighPrecision
