// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Values of the incomplete gamma integrals in doubles, right to a few ulps times the condition number. They stand for
/// the 128-bit series wherever that series gives the same value.
namespace SpecialFunction::Kernel {

/// P(a, x) = LG(a, x)/gamma(a) and Q = 1 - P for a > 0, x >= 0; the smaller of the two keeps all its digits.
struct Regularised {
  double p, q;
};
Regularised regularisedGamma(double a, double x);

/// Lower integral x^a exp(-x)/a (1 + x/(a+1) + ...) for a > 0, x >= 0 in the order of x <= a, or small.
double lowerGammaByPower(double a, double x);

/// Upper integral UG(a, x) for any a (not a non-positive integer when x <= 1), x > 0.
double upperGamma(double a, double x);

/// Lower integral by its power series x^a sum (-x)^k/(k! (a+k)), for small x.
double lowerGammaSeries(double a, double x);

}  // namespace SpecialFunction::Kernel
