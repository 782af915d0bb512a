// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "orvane/special.h"
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

double math_erf(double x) { return calcErf(x); }

double math_erfc(double x) { return calcErfc(x); }

double math_erfi(double x) { return calcErfi(x); }

double math_drawson(double x) { return calcDrawson(x); }

double math_lnErfi(double x) { return calcLnErfi(x); }

double math_invErf(double y) { return calcInvErf(y); }

double math_invErfc(double y) { return calcInvErfc(y); }

double math_invErfi(double y) { return calcInvErfi(y); }

double math_invLnErfi(double y) { return calcInvLnErfi(y); }

void math_erfz(double re, double im, double* outRe, double* outIm) { calcErfz(re, im, *outRe, *outIm); }

double math_voigtFunK(double x, double y) { return calcVoigtFunK(x, y); }

double math_voigtFunL(double x, double y) { return calcVoigtFunL(x, y); }

double math_voigtDiffKX(double x, double y) { return calcVoigtDiffKX(x, y); }

double math_voigtDiffKY(double x, double y) { return calcVoigtDiffKY(x, y); }

double math_voigtDiffLX(double x, double y) { return calcVoigtDiffLX(x, y); }

double math_voigtDiffLY(double x, double y) { return calcVoigtDiffKX(x, y); }

double math_lambertW(double x) { return calcLambertW(x); }

double math_invLambertW(double x) { return calcInvLambertW(x); }

double math_wrightOmega(double x) { return calcWrightOmega(x); }
