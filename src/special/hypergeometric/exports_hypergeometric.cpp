// SPDX-License-Identifier: Apache-2.0
#include "orvane/hypergeometric.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_Hypergeometric0F1(double b, double z) { return calcHypergeometric0F1(b, z); }

double math_Hypergeometric1F1(double a, double b, double z) { return calcHypergeometric1F1(a, b, z); }

double math_Hypergeometric2F1(double a, double b, double c, double z) { return calcHypergeometric2F1(a, b, c, z); }

double math_Hypergeometric_mFn(const double* a, int32_t p, const double* b, int32_t q, double z) {
  return calcHypergeometricPFQ(a, p, b, q, z);
}

double math_hypergeometricU(double a, double b, double x) { return calcHypergeometricU(a, b, x); }

double math_whittakerM(double k, double m, double x) { return calcWhittakerM(k, m, x); }

double math_whittakerW(double k, double m, double x) { return calcWhittakerW(k, m, x); }

double math_wrightBessel(double a, double b, double x) { return calcWrightBessel(a, b, x); }

double math_mittagLeffler(double a, double b, double x) { return calcMittagLeffler(a, b, x); }
