// SPDX-License-Identifier: Apache-2.0
// Routines that are declared but not built yet: NaN, so that nothing returns a made-up value.
#include <limits>

#include "special/special_function.h"

namespace SpecialFunction {

double calcHypergeometric0F1(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcHypergeometric1F1(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcHypergeometric2F1(double, double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcHypergeometricU(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcWhittakerM(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcWhittakerW(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcWrightBessel(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcMittagLeffler(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcZeta(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcInvZeta(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDirichletEta(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDirichletBeta(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcPolyLog(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBoseEinstein(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcFermiDirac(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcPolyLogarithm2(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcClausen(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcClausenS(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcClausenC(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcLnBarnesG(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBarnesG(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcHyperfactorial(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcExpIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcExpIntegralP(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcSineIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcCosineIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcSinhIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcCoshIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcLogIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcInvSinhIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcInvCoshIntegral(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcFresnelC(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcFresnelS(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcGoodwinStaton(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcGlasser(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcPolyLegendre(int32_t, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcPolyLaguerre(int32_t, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcPolyHermite(int32_t, double) { return std::numeric_limits<double>::quiet_NaN(); }

}  // namespace SpecialFunction
