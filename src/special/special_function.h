// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "special/hypergeometric.h"

/// The routines behind the math_ functions, called alike by the exports, by distributions and by expressions. A routine
/// is named calc and the function's name.
namespace SpecialFunction {

double reduceBigAngle(double x);

double calcGamma(double x);
double calcDigamma(double x);
double calcIncompleteGammaLower(double a, double x);  ///< LG(a, x), not divided by gamma(a)
double calcIGamma(double a, double x);                ///< UG(a, x)
double calcRLowerIncompleteGamma(double a, double x);
double calcBeta(double a, double b);
double calcIBeta(double x, double a, double b);
double calcInvErf(double y);
double calcHurwitzZeta(double s, double a);
double calcExpIntegralN(long long n, double x);  ///< E_n(x) of integer order

}  // namespace SpecialFunction

/// Helpers of statistics and fitting.
namespace BaseFunction {

double incompleteBeta(double a, double b, double x);  ///< regularised

}  // namespace BaseFunction
