// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/diff/diff.h"

/// The derivatives of all kinds, each named d and the kind. The table of kinds points at them; a file a family defines
/// them.
namespace Sym::Rules {

extern const Rule refused;  ///< of no argument
extern const Rule flat;     ///< constant between its steps: 0

extern const Rule dNumber, dVariable, dAdd, dMul, dPow, dConSelect;
extern const Rule dSqrt, dLn, dExp, dAbs, dLogSign, dExpSign, dLambertW, dWrightOmega, dInverseLambertW;
extern const Rule dSin, dCos, dTan, dCot, dAsin, dAcos, dAtan, dAcot;
extern const Rule dSinh, dCosh, dTanh, dCoth, dAsinh, dAcosh, dAtanh;
extern const Rule dGamma, dBeta, dLnGamma, dDiGamma, dPolyGamma, dIncompleteGamma, dBarnesG, dLnBarnesG;
extern const Rule dHyperfactorial;
extern const Rule dErf, dErfc, dErfi, dLnErfi, dDawson, dGoodwinStaton, dVoigtFunK, dVoigtFunL;
extern const Rule dInverseErf, dInverseErfc, dInverseErfi, dInverseLnErfi, dInverseGamma, dInverseCoshIntegral;
extern const Rule dInverseSinhIntegral;
extern const Rule dBesselI, dBesselJ, dBesselK, dBesselY, dStruveH, dStruveL, dAngerJ, dWeberE, dWrightBessel;
extern const Rule dAiryAi, dAiryBi, dAiryGi, dAiryHi;
extern const Rule dEllipticF, dEllipticK, dEllipticE, dEllipticPI, dEllipticRF, dEllipticRG, dEllipticRK, dAGM;
extern const Rule dJacobiZeta, dJacobianAmp, dJacobianCn, dJacobianDn, dJacobianSn;
extern const Rule dHypergeometricU, dHypergeometric0F1, dHypergeometric1F1, dHypergeometric2F1;
extern const Rule dWhittakerM, dWhittakerW, dParabolicCylinderD, dParabolicCylinderU, dParabolicCylinderV;
extern const Rule dSinIntegral, dCosIntegral, dSinhIntegral, dCoshIntegral, dExpIntegral, dLogIntegral;
extern const Rule dFresnelC, dFresnelS, dGlasser;
extern const Rule dHurwitzZeta, dPolyLog, dPolyLogarithm2, dBoseEinstein, dFermiDirac, dClausenC, dClausenS;

}  // namespace Sym::Rules
