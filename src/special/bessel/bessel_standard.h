// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "special/bessel/bessel_expansion.h"

/// The cylindrical Bessel functions as the C++ standard library of GCC computes them: the same operations in the same
/// order, hence its doubles. Here only what a value needs is computed, fractions that do not wait for each other run
/// side by side, and what belongs to an order is kept. Order nu >= 0, 0 < x, both finite.
namespace SpecialFunction {

double besselJStandard(double nu, double x);
double besselYStandard(double nu, double x);

/// Both by Steed's two continued fractions, which serve for x > 2 without an upper end.
BesselPair besselJYSteed(double nu, double x);

/// Up to x = 700, where exp(x) is in range.
double besselIStandard(double nu, double x);
double besselKStandard(double nu, double x);
BesselPair besselIKStandard(double nu, double x);

}  // namespace SpecialFunction
