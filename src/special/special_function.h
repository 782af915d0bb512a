// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <numbers>

#include "special/elementary/elementary.h"
#include "special/hypergeometric/hypergeometric.h"

/// The routines behind the math_ functions, called alike by the exports, by distributions and by expressions. A routine
/// is named calc and the function's name; what each computes stands at its export in the header of its room.
namespace SpecialFunction {

using std::numbers::egamma;
using std::numbers::pi;
inline constexpr double kSqrtPi = 1.772453850905516;
inline constexpr double kTwoOverSqrtPi = 1.1283791670955126;

// Gamma family
double calcGamma(double x);
/// The standard library's tgamma. At the integers and halves, which are asked for again, it is kept.
double standardGamma(double x);
double calcLngamma(double x);
double calcInvGamma(double y);
double calcDigamma(double x);
double calcPolyGamma(double n, double x);
double calcBeta(double a, double b);
/// As the standard library has it, NaN at the negative integers; expressions take this form.
inline double calcTgamma(double x) { return std::tgamma(x); }
double calcBetaByLogs(double a, double b);  ///< expressions take this form

// Incomplete gamma functions
double calcIncompleteGammaLower(double a, double x);                 ///< LG(a, x), not divided by gamma(a)
double calcIncompleteGammaLower(double a, double x, double gammaA);  ///< the same with gamma(a) at hand
double calcIGamma(double a, double x);                               ///< UG(a, x)
double calcRLowerIncompleteGamma(double a, double x);
double calcRUpperIncompleteGamma(double a, double x);
double calcInverseRUpperIncompleteGamma(double a, double q);

// Incomplete beta functions
double calcIBeta(double x, double a, double b);
double calcInverseBeta(double y, double a, double b);

// Error functions
inline double calcErf(double x) { return std::erf(x); }
inline double calcErfc(double x) { return std::erfc(x); }
double calcDrawson(double x);
double calcDiffDrawson(double x);
double calcDiffDiffDrawson(double x);
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
inline double calcInvLambertW(double x) { return x * std::exp(x); }
double calcWrightOmega(double x);

// Zeta and exponential integral
double calcHurwitzZeta(double s, double a);
double calcExpIntegralN(long long n, double x);  ///< E_n(x) of integer order

// Bessel, Airy and relatives
double calcBesselJ(double nu, double x);
double calcBesselY(double nu, double x);
double calcBesselI(double nu, double x);
double calcBesselK(double nu, double x);
double calcSphericalBesselJ(double n, double x);
double calcSphericalBesselY(double n, double x);
double calcAiryAi(double x);
double calcAiryBi(double x);
double calcAiryGi(double x);
double calcAiryHi(double x);
double calcDiffAiryAi(double x);
double calcDiffAiryBi(double x);
double calcDiffAiryGi(double x);
double calcDiffAiryHi(double x);
double calcAiryAiZero(double n);
double calcAiryBiZero(double n);
double calcDiffAiryAiZero(double n);
double calcDiffAiryBiZero(double n);
double calcStruveH(double nu, double x);
double calcStruveL(double nu, double x);
double calcAngerJ(double nu, double x);
double calcWeberE(double nu, double x);
double calcParabolicCylinderD(double nu, double x);
double calcParabolicCylinderU(double a, double x);
double calcParabolicCylinderV(double a, double x);

// Elliptic integrals, Jacobi functions, theta functions
double calcAGM(double a, double b);
double calcEllipticRF(double x, double y, double z);
double calcEllipticRD(double x, double y, double z);
double calcEllipticRG(double x, double y, double z);
double calcEllipticRJ(double x, double y, double z, double p);
double calcEllipticRC(double x, double y);
double calcEllipticRK(double x, double y);
double calcEllipticRE(double x, double y);
double calcEllipticRM(double x, double y, double p);
double calcEllipticK(double m);
inline double calcComplementaryEllipticK(double m) { return calcEllipticK(1 - m); }
double calcEllipticE(double m);
double calcEllipticPI2(double n, double m);  ///< complete
double calcEllipticF(double phi, double m);
double calcEllipticE2(double phi, double m);
double calcEllipticPI(double n, double phi, double m);
double calcBulirschCel(double kc, double p, double a, double b);
double calcBulirschEl1(double x, double kc);
double calcBulirschEl2(double x, double kc, double a, double b);
double calcBulirschEl3(double x, double kc, double p);
double calcHeumannLambda(double phi, double m);
double calcJacobiZeta(double phi, double m);
double calcJacobiEllipticAm(double u, double m);
double calcJacobiEllipticSn(double u, double m);
double calcJacobiEllipticCn(double u, double m);
double calcJacobiEllipticDn(double u, double m);
double calcJacobiTheta1(double z, double q);
double calcJacobiTheta2(double z, double q);
double calcJacobiTheta3(double z, double q);
double calcJacobiTheta4(double z, double q);

// Hypergeometric family
double calcHypergeometric0F1(double b, double z);
double calcHypergeometric1F1(double a, double b, double z);
double calcHypergeometric2F1(double a, double b, double c, double z);
double calcHypergeometricU(double a, double b, double x);
double calcWhittakerM(double k, double m, double x);
double calcWhittakerW(double k, double m, double x);
double calcWrightBessel(double a, double b, double x);
double calcMittagLeffler(double a, double b, double x);

// Zeta family and polylogarithms
double calcZeta(double s);
double calcInvZeta(double y);
double calcDirichletEta(double s);
double calcDirichletBeta(double s);
double calcPolyLog(double s, double z);
double calcBoseEinstein(double s, double x);
double calcFermiDirac(double s, double x);
double calcPolyLogarithm2(double x);
double calcClausen(double n, double x);
double calcClausenS(double n, double x);
double calcClausenC(double n, double x);
double calcLnBarnesG(double x);
double calcBarnesG(double x);
double calcHyperfactorial(double x);

// Integrals of elementary functions
double calcExpIntegral(double x);
double calcExpIntegralP(double p, double x);
double calcSineIntegral(double x);
double calcCosineIntegral(double x);
double calcSinhIntegral(double x);
double calcCoshIntegral(double x);
double calcLogIntegral(double x);
double calcInvSinhIntegral(double y);
double calcInvCoshIntegral(double y);
double calcFresnelC(double x);
double calcFresnelS(double x);
double calcGoodwinStaton(double x);
double calcGlasser(double x);  ///< integral of sin(t sin t) from 0 to x

// Polynomials of integer order
double calcPolyByBernoulli(int32_t n, double x);  ///< NaN for n < 0, 0 beyond the table (n > 258)
double calcPolyLegendre(int32_t n, double x);
double calcDiffPolyLegendre(int32_t n, double x);
inline double calcShiftedPolyLegendre(int32_t n, double x) { return calcPolyLegendre(n, 2 * x - 1); }
double calcPolyLaguerre(int32_t n, double x);
double calcPolyHermite(int32_t n, double x);

}  // namespace SpecialFunction

/// Helpers of statistics and fitting.
namespace BaseFunction {

double incompleteBeta(double a, double b, double x);  ///< regularised

}  // namespace BaseFunction
