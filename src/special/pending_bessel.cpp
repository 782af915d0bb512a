// SPDX-License-Identifier: Apache-2.0
// Routines that are declared but not built yet: NaN, so that nothing returns a made-up value.
#include <limits>

#include "special/special_function.h"

namespace SpecialFunction {

double calcBesselJ(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBesselY(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBesselI(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcBesselK(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcSphericalBesselJ(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcSphericalBesselY(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcAiryAi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcAiryBi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcAiryGi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcAiryHi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDiffAiryAi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDiffAiryBi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDiffAiryGi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDiffAiryHi(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcAiryAiZero(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcAiryBiZero(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDiffAiryAiZero(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcDiffAiryBiZero(double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcStruveH(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcStruveL(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcAngerJ(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcWeberE(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcParabolicCylinderD(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcParabolicCylinderU(double, double) { return std::numeric_limits<double>::quiet_NaN(); }
double calcParabolicCylinderV(double, double) { return std::numeric_limits<double>::quiet_NaN(); }

}  // namespace SpecialFunction
