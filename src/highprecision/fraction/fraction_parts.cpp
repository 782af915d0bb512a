// SPDX-License-Identifier: Apache-2.0
#include "highprecision/fraction/fraction_parts.h"

#include <utility>

#include "highprecision/decimal/integer.h"

namespace HighPrecision {

FractionParts::FractionParts(LimbVector numerator, LimbVector denominator, bool lowest)
    : isZero(numerator.size() == 1 && numerator[0] == 0),
      isLowest(lowest),
      hasLimbs(true),
      up(std::move(numerator)),
      down(std::move(denominator)) {}

FractionParts::FractionParts(HP::Rational&& x)
    : isZero(mpq_sgn(x.get()) == 0), isLowest(true), hasLimbs(false), number(std::move(x)) {
  mpq_abs(number->get(), number->get());
}

void FractionParts::makeLimbs() const {
  if (hasLimbs) return;
  once.run([this] {
    up = HP::limbsOfInteger(number->up());
    if (up.empty()) up.push_back(0);
    down = HP::limbsOfInteger(number->down());
  });
}

void FractionParts::makeValue() const {
  if (!hasLimbs) return;
  once.run([this] {
    number.emplace();
    HP::setToLimbs(number->up(), up);
    HP::setToLimbs(number->down(), down);
    if (!isLowest) mpq_canonicalize(number->get());
  });
}

}  // namespace HighPrecision
