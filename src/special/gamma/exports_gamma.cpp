// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "orvane/gamma.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_gamma(double x) { return calcGamma(x); }

double math_lngamma(double x) { return calcLngamma(x); }

double math_invGamma(double y) { return calcInvGamma(y); }

double math_digamma(double x) { return calcDigamma(x); }

double math_polyGamma(double n, double x) { return calcPolyGamma(n, x); }

double math_beta(double a, double b) { return calcBeta(a, b); }

bool math_incompleteGamma(double a, double x, uint8_t lower, double* result) {
  *result = lower != 0 ? calcIncompleteGammaLower(a, x) : calcIGamma(a, x);
  return std::isnan(*result);
}

double math_igamma(double a, double x) { return calcIGamma(a, x); }

double math_RLowerIncompleteGamma(double a, double x) { return calcRLowerIncompleteGamma(a, x); }

double math_RUpperIncompleteGamma(double a, double x) { return calcRUpperIncompleteGamma(a, x); }

double math_InverseRUpperIncompleteGamma(double a, double q) { return calcInverseRUpperIncompleteGamma(a, q); }

double math_ibeta(double x, double a, double b) { return calcIBeta(x, a, b); }

double math_InverseBeta(double y, double a, double b) { return calcInverseBeta(y, a, b); }
