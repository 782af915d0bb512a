// SPDX-License-Identifier: Apache-2.0
#include "orvane/elementary.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_sin(double x) { return calcSin(x); }

double math_cos(double x) { return calcCos(x); }

double math_tan(double x) { return calcTan(x); }

double math_csc(double x) { return calcCsc(x); }

double math_sec(double x) { return calcSec(x); }

double math_cot(double x) { return calcCot(x); }

double math_acsc(double x) { return calcAcsc(x); }

double math_asec(double x) { return calcAsec(x); }

double math_acot(double x) { return calcAcot(x); }

double math_csch(double x) { return calcCsch(x); }

double math_sech(double x) { return calcSech(x); }

double math_coth(double x) { return calcCoth(x); }

double math_acsch(double x) { return calcAcsch(x); }

double math_asech(double x) { return calcAsech(x); }

double math_asinh(double x) { return calcAsinh(x); }

double math_acosh(double x) { return calcAcosh(x); }

double math_atanh(double x) { return calcAtanh(x); }

double math_acoth(double x) { return calcAcoth(x); }

double math_log10(double x) { return calcLog10(x); }

double math_log2(double x) { return calcLog2(x); }

double math_pow(double base, double exponent) { return calcPow(base, exponent); }

double math_sign(double x) { return calcSign(x); }

double math_stepFun(double x) { return calcStepFun(x); }

double math_logSign(double x) { return calcLogSign(x); }

double math_expSign(double x) { return calcExpSign(x); }

double math_ConSelect(double c, double a, double b) { return calcConSelect(c, a, b); }

void math_polyValue(const double* coefficients, const double* xs, double* out, int32_t coefficientCount,
                    int32_t pointCount) {
  for (int32_t i = 0; i < pointCount; ++i) out[i] = calcPolyValue(coefficients, coefficientCount, xs[i]);
}

void math_calcUnsymSin(double amplitude, double centre, double leftWidth, double rightWidth, const double* xs,
                       double* out, int32_t count) {
  for (int32_t i = 0; i < count; ++i) out[i] = calcUnsymSin(amplitude, centre, leftWidth, rightWidth, xs[i]);
}

double math_lambertW(double x) { return calcLambertW(x); }

double math_invLambertW(double x) { return calcInvLambertW(x); }

double math_wrightOmega(double x) { return calcWrightOmega(x); }
