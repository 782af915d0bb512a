// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "special/hypergeometric.h"

/// The routines behind the math_ functions, called alike by the exports, by distributions and by expressions. A routine
/// is named calc and the function's name; what each computes stands at its export in orvane/special.h.
namespace SpecialFunction {

inline constexpr double kEps = 2.220446049250313e-16;
inline constexpr double kPi = 3.141592653589793;

// Angles
double reduceBigAngle(double x);
/// The argument as every sine, cosine and tangent of the library takes it: reduced from 1e22 on.
inline double guardAngle(double x) { return 1e22 > (x < 0 ? -x : x) ? x : reduceBigAngle(x); }

// Elementary functions, steps and signs
double calcAcoth(double x);
double calcSign(double x);
double calcStepFun(double x);
double calcLogSign(double x);
double calcExpSign(double x);
double calcPolyValue(const double* coefficients, int32_t count, double x);
double calcUnsymSin(double amplitude, double centre, double leftWidth, double rightWidth, double x);

// Gamma family
double calcGamma(double x);
double calcLngamma(double x);
double calcInvGamma(double y);
double calcDigamma(double x);
double calcPolyGamma(double n, double x);
double calcBeta(double a, double b);

// Incomplete gamma functions
double calcIncompleteGammaLower(double a, double x);  ///< LG(a, x), not divided by gamma(a)
double calcIGamma(double a, double x);                ///< UG(a, x)
double calcRLowerIncompleteGamma(double a, double x);
double calcRUpperIncompleteGamma(double a, double x);
double calcInverseRUpperIncompleteGamma(double a, double q);

// Incomplete beta functions
double calcIBeta(double x, double a, double b);
double calcInverseBeta(double y, double a, double b);

// Error functions
double calcDrawson(double x);
double calcErfi(double x);
double calcLnErfi(double x);
double calcInvErf(double y);
double calcInvErfc(double y);
double calcInvErfi(double y);
double calcInvLnErfi(double y);
void calcErfz(double re, double im, double& outRe, double& outIm);
double calcVoigtFunK(double x, double y);
double calcVoigtFunL(double x, double y);
double calcVoigtDiffKX(double x, double y);
double calcVoigtDiffKY(double x, double y);
double calcVoigtDiffLX(double x, double y);

// Lambert W and Wright omega
double calcLambertW(double x);
double calcWrightOmega(double x);

// Zeta and exponential integral
double calcHurwitzZeta(double s, double a);
double calcExpIntegralN(long long n, double x);  ///< E_n(x) of integer order

}  // namespace SpecialFunction

/// Helpers of statistics and fitting.
namespace BaseFunction {

double incompleteBeta(double a, double b, double x);  ///< regularised

}  // namespace BaseFunction
