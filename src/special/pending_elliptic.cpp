// SPDX-License-Identifier: Apache-2.0
// Routines that are declared but not built yet: NaN, so that nothing returns a made-up value.
#include <limits>

#include "special/special_function.h"

namespace SpecialFunction {

double calcAGM(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRF(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRD(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRG(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRJ(double, double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRC(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRK(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRE(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticRM(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticK(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticE(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticPI2(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticF(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticE2(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcEllipticPI(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBulirschCel(double, double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBulirschEl1(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBulirschEl2(double, double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBulirschEl3(double, double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcHeumannLambda(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiZeta(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiEllipticAm(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiEllipticSn(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiEllipticCn(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiEllipticDn(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiTheta1(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiTheta2(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiTheta3(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcJacobiTheta4(double, double) { return std::numeric_limits<double>::quiet_NaN(); }

}  // namespace SpecialFunction
