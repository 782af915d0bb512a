// SPDX-License-Identifier: Apache-2.0
#include "orvane/integral_functions.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_expIntegral(double x) { return calcExpIntegral(x); }

double math_expIntegralP(double p, double x) { return calcExpIntegralP(p, x); }

double math_sineIntegral(double x) { return calcSineIntegral(x); }

double math_cosineIntegral(double x) { return calcCosineIntegral(x); }

double math_sinhIntegral(double x) { return calcSinhIntegral(x); }

double math_coshIntegral(double x) { return calcCoshIntegral(x); }

double math_logIntegral(double x) { return calcLogIntegral(x); }

double math_invSinhIntegral(double y) { return calcInvSinhIntegral(y); }

double math_invCoshIntegral(double y) { return calcInvCoshIntegral(y); }

double math_fresnelC(double x) { return calcFresnelC(x); }

double math_fresnelS(double x) { return calcFresnelS(x); }

double math_goodwinStaton(double x) { return calcGoodwinStaton(x); }
