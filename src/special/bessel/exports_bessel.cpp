// SPDX-License-Identifier: Apache-2.0
#include "orvane/bessel.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_BesselJ(double nu, double x) { return calcBesselJ(nu, x); }

double math_BesselY(double nu, double x) { return calcBesselY(nu, x); }

double math_BesselI(double nu, double x) { return calcBesselI(nu, x); }

double math_BesselK(double nu, double x) { return calcBesselK(nu, x); }

double math_SphericalBesselJ(double n, double x) { return calcSphericalBesselJ(n, x); }

double math_SphericalBesselY(double n, double x) { return calcSphericalBesselY(n, x); }

double math_StruveH(double nu, double x) { return calcStruveH(nu, x); }

double math_StruveL(double nu, double x) { return calcStruveL(nu, x); }

double math_angerJ(double nu, double x) { return calcAngerJ(nu, x); }

double math_weberE(double nu, double x) { return calcWeberE(nu, x); }

double math_ParabolicCylinderD(double nu, double x) { return calcParabolicCylinderD(nu, x); }

double math_ParabolicCylinderU(double a, double x) { return calcParabolicCylinderU(a, x); }

double math_ParabolicCylinderV(double a, double x) { return calcParabolicCylinderV(a, x); }

double math_AiryAi(double x) { return calcAiryAi(x); }

double math_AiryBi(double x) { return calcAiryBi(x); }

double math_DiffAiryAi(double x) { return calcDiffAiryAi(x); }

double math_DiffAiryBi(double x) { return calcDiffAiryBi(x); }

double math_AiryGi(double x) { return calcAiryGi(x); }

double math_AiryHi(double x) { return calcAiryHi(x); }

double math_DiffAiryGi(double x) { return calcDiffAiryGi(x); }

double math_DiffAiryHi(double x) { return calcDiffAiryHi(x); }

double math_AiryAiZero(double n) { return calcAiryAiZero(n); }

double math_AiryBiZero(double n) { return calcAiryBiZero(n); }

double math_DiffAiryAiZero(double n) { return calcDiffAiryAiZero(n); }

double math_DiffAiryBiZero(double n) { return calcDiffAiryBiZero(n); }
