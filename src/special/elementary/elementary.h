// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>

/// The elementary functions, in the one form that exports, arrays and expressions share. One line each, inline, so that
/// loops over arrays keep none of the calls.
namespace SpecialFunction {

double reduceBigAngle(double x);
/// The argument as every sine, cosine and tangent of the library takes it: reduced from 1e22 on.
inline double guardAngle(double x) { return 1e22 > (x < 0 ? -x : x) ? x : reduceBigAngle(x); }

// Trigonometric functions and their inverses
inline double calcSin(double x) { return std::sin(guardAngle(x)); }
inline double calcCos(double x) { return std::cos(guardAngle(x)); }
inline double calcTan(double x) { return std::tan(guardAngle(x)); }
inline double calcCsc(double x) { return 1 / calcSin(x); }
inline double calcSec(double x) { return 1 / calcCos(x); }
inline double calcCot(double x) { return 1 / calcTan(x); }
inline double calcAsin(double x) { return std::asin(x); }
inline double calcAcos(double x) { return std::acos(x); }
inline double calcAtan(double x) { return std::atan(x); }
inline double calcAcsc(double x) { return std::asin(1 / x); }
inline double calcAsec(double x) { return std::acos(1 / x); }
inline double calcAcot(double x) { return std::atan(1 / x); }
inline double calcAtan2(double y, double x) { return std::atan2(y, x); }

// Hyperbolic functions and their inverses
inline double calcSinh(double x) { return std::sinh(x); }
inline double calcCosh(double x) { return std::cosh(x); }
inline double calcTanh(double x) { return std::tanh(x); }
inline double calcCsch(double x) { return 1 / std::sinh(x); }
inline double calcSech(double x) { return 1 / std::cosh(x); }
inline double calcCoth(double x) { return 1 / std::tanh(x); }
double calcClampedCoth(double x);  ///< 1 for x > 18, as the arrays have it
inline double calcAsinh(double x) { return std::asinh(x); }
inline double calcAcosh(double x) { return std::acosh(x); }
inline double calcAtanh(double x) { return std::atanh(x); }
inline double calcAcsch(double x) { return std::asinh(1 / x); }
inline double calcAsech(double x) { return std::acosh(1 / x); }
double calcAcoth(double x);  ///< by one logarithm, as the export has it
inline double calcAcothByAtanh(double x) { return std::atanh(1 / x); }

// Powers and logarithms
inline double calcExp(double x) { return std::exp(x); }
inline double calcLn(double x) { return std::log(x); }
inline double calcLog10(double x) { return std::log10(x); }
inline double calcLog2(double x) { return std::log2(x); }
inline double calcSqrt(double x) { return std::sqrt(x); }
inline double calcPow(double base, double exponent) { return std::pow(base, exponent); }
/// Squares and reciprocals, the most common powers of expressions, need no logarithm.
inline double calcShortPow(double x, double e) { return e == 2 ? x * x : e == -1 ? 1 / x : std::pow(x, e); }
double calcTolerantLn(double x);  ///< log of the larger of |x| and 1e-32
double calcLogSign(double x);
double calcExpSign(double x);

// Sums, products, choices
inline double calcSum(double a, double b) { return a + b; }
inline double calcDifference(double a, double b) { return a - b; }
inline double calcProduct(double a, double b) { return a * b; }
inline double calcQuotient(double a, double b) { return a / b; }
inline double calcHypot(double a, double b) { return std::hypot(a, b); }
inline double calcMax(double a, double b) { return std::fmax(a, b); }
inline double calcMin(double a, double b) { return std::fmin(a, b); }
inline double calcConSelect(double c, double a, double b) { return 0 > c ? a : b; }

// Signs and roundings
inline double calcAbs(double x) { return std::abs(x); }
double calcSign(double x);
double calcStepFun(double x);
inline double calcFloor(double x) { return std::floor(x); }
inline double calcCeil(double x) { return std::ceil(x); }
inline double calcTrunc(double x) { return std::trunc(x); }
inline double calcFrac(double x) { return x - std::trunc(x); }
inline double calcRound(double x) { return std::round(x); }  ///< ties away from 0
inline double calcRoundZero(double x) { return x > 0 ? std::floor(x) : std::ceil(x); }

/// Ties to the even neighbour, by the rounding that takes them away from 0.
inline double calcRoundToEven(double x) {
  const double nearest = std::round(x);
  return std::abs(nearest - x) == 0.5 ? 2 * std::round(x / 2) : nearest;
}

/// Ties away from 0, by the floor: up for x >= 0, down for negative x (-2.5 to -3).
inline double calcRounding(double x) {
  const double down = std::floor(x);
  if (x < 0) return x > down + 0.5 ? down + 1 : down;
  return down + 0.5 > x ? down : down + 1;
}

// Over given coefficients and widths
double calcPolyValue(const double* coefficients, int32_t count, double x);
double calcUnsymSin(double amplitude, double centre, double leftWidth, double rightWidth, double x);

}  // namespace SpecialFunction
