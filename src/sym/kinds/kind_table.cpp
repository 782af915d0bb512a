// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "special/special_function.h"
#include "sym/diff/rules/rules.h"
#include "sym/kinds/kind.h"
#include "sym/kinds/values.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

namespace SF = SpecialFunction;
using namespace Property;
using namespace Rules;

// Sign and StepFun have values of their own, without coef.
// KEPT: Sign and StepFun ignore their coefficient; one would expect a multiple (kept.csv: Sign_coef, StepFun_coef)
// KEPT: BarnesG is lower case in LaTeX alone; one would expect its name (kept.csv: BarnesG_latex)
// KEPT: BesselK evaluates as J; one would expect K (kept.csv: BesselK_value)
// VoigtDiffLY is VoigtDiffKX by the Cauchy-Riemann equations: one routine serves both.
// clang-format off
constexpr Kind kKinds[] = {
    // code, name, fewest and most arguments, properties, kind that it undoes, value, update, text, LaTeX, derivative
    {0, "Number", 0, 0, none, 0, numberValue, updateNumber, textNumber, texBy(latexNumber), &dNumber},
    {1, "Variable", 0, 0, none, 0, variableValue, updateVariable, textVariable, texBy(latexVariable), &dVariable},
    {2, "Add", 0, kAnyArgs, none, 0, addValue, updateAdd, textAdd, texBy(latexAdd), &dAdd},
    {3, "Mul", 0, kAnyArgs, none, 0, mulValue, updateMul, textMul, texBy(latexMul), &dMul},
    {5, "Pow", 2, 2, none, 0, value2<Plain::power>, updatePow, textPow, texBy(latexPow), &dPow},
    {6, "Sign", 1, 1, bare, 0, valueBare<SF::calcSign>, updateCommon, textCall, texName, &flat},
    {10, "Sqrt", 1, 1, none, 0, value1<Plain::squareRoot>, updateSqrt, textCall, tex("\\sqrt{", "}"), &dSqrt},
    {11, "Ln", 1, 1, none, 0, value1<Plain::ln>, updateLn, textCall, tex("\\ln("), &dLn},
    {12, "Exp", 1, 1, none, 0, value1<Plain::exponential>, updateExp, textCall, tex("\\exp("), &dExp},
    {13, "Abs", 1, 1, none, 0, value1<Plain::absolute>, updateCommon, textCall, tex("|", "|"), &dAbs},
    {20, "Sin", 1, 1, odd, 0, value1<Plain::sine>, updateSin, textCall, tex("\\sin("), &dSin},
    {21, "Cos", 1, 1, even, 0, value1<Plain::cosine>, updateCos, textCall, tex("\\cos("), &dCos},
    {22, "Tan", 1, 1, odd, 0, value1<Plain::tangent>, updateTan, textCall, tex("\\tan("), &dTan},
    {23, "Cot", 1, 1, odd, 0, value1<Plain::cotangent>, updateCot, textCall, tex("\\cot("), &dCot},
    {24, "Asin", 1, 1, odd, 0, value1<Plain::asine>, updateCommon, textCall, tex("\\arcsin("), &dAsin},
    {25, "Acos", 1, 1, none, 0, value1<Plain::acosine>, updateCommon, textCall, tex("\\arccos("), &dAcos},
    {26, "Atan", 1, 1, odd, 0, value1<Plain::atangent>, updateCommon, textCall, tex("\\arctan("), &dAtan},
    {27, "Acot", 1, 1, odd, 0, value1<Plain::acotangent>, updateCommon, textCall, tex("\\mathbf{arccot}("), &dAcot},
    {30, "Sinh", 1, 1, odd, 0, value1<Plain::sinh>, updateHyperbolic, textCall, tex("\\sinh("), &dSinh},
    {31, "Cosh", 1, 1, even, 0, value1<Plain::cosh>, updateHyperbolic, textCall, tex("\\cosh("), &dCosh},
    {32, "Tanh", 1, 1, odd, 0, value1<Plain::tanh>, updateHyperbolic, textCall, tex("\\tanh("), &dTanh},
    {33, "Coth", 1, 1, odd, 0, value1<Plain::coth>, updateHyperbolic, textCall, tex("\\coth("), &dCoth},
    {34, "Asinh", 1, 1, odd, 0, value1<Plain::asinh>, updateCommon, textCall, tex("\\mathbf{arcsinh}("), &dAsinh},
    {35, "Acosh", 1, 1, none, 0, value1<Plain::acosh>, updateCommon, textCall, tex("\\mathbf{arccosh}("), &dAcosh},
    {36, "Atanh", 1, 1, odd, 0, value1<Plain::atanh>, updateCommon, textCall, tex("\\mathbf{arctanh}("), &dAtanh},
    {37, "Acoth", 1, 1, odd, 0, value1<Plain::acoth>, updateCommon, textCall, tex("\\mathbf{arccoth}("), &dAtanh},
    {50, "Erf", 1, 1, odd, 84, value1<Plain::erf>, updateCommon, textCall, texName, &dErf},
    {51, "Gamma", 1, 1, none, 138, value1<Plain::gamma>, updateCommon, textCall, tex("\\Gamma("), &dGamma},
    {52, "Beta", 2, 2, none, 0, value2<Plain::beta>, updateCommon, textCall, texName, &dBeta},
    {53, "LnGamma", 1, 1, none, 0, value1<Plain::lnGamma>, updateCommon, textCall, tex("\\ln(\\Gamma(", "))"), &dLnGamma},
    {54, "BesselI", 2, 2, none, 0, value2<SF::calcBesselI>, updateCommon, textCall, texIndexed, &dBesselI},
    {55, "BesselJ", 2, 2, none, 0, value2<SF::calcBesselJ>, updateCommon, textCall, texIndexed, &dBesselJ},
    {56, "BesselK", 2, 2, none, 0, value2<SF::calcBesselJ>, updateCommon, textCall, texIndexed, &dBesselK},
    {57, "BesselY", 2, 2, none, 0, value2<SF::calcBesselY>, updateCommon, textCall, texIndexed, &dBesselY},
    {58, "DiGamma", 1, 1, none, 0, value1<SF::calcDigamma>, updateCommon, textCall, tex("\\Gamma'("), &dDiGamma},
    {62, "EllipticF", 2, 2, none, 0, value2<SF::calcEllipticF>, updateCommon, textCall, texIndexed, &dEllipticF},
    {63, "EllipticK", 1, 1, none, 0, value1<SF::calcEllipticK>, updateCommon, textCall, texName, &dEllipticK},
    {64, "EllipticE", 1, 2, none, 0, value1or2<SF::calcEllipticE, SF::calcEllipticE2>, updateCommon, textCall, texIndexed, &dEllipticE},
    {65, "StruveH", 2, 2, none, 0, value2<SF::calcStruveH>, updateCommon, textCall, texIndexed, &dStruveH},
    {66, "StruveL", 2, 2, none, 0, value2<SF::calcStruveL>, updateCommon, textCall, texIndexed, &dStruveL},
    {67, "AngerJ", 2, 2, none, 0, value2<SF::calcAngerJ>, updateCommon, textCall, texIndexed, &dAngerJ},
    {68, "WeberE", 2, 2, none, 0, value2<SF::calcWeberE>, updateCommon, textCall, texIndexed, &dWeberE},
    {69, "BarnesG", 1, 1, none, 0, value1<SF::calcBarnesG>, updateCommon, textCall, tex("\\mathbf{barnesG}("), &dBarnesG},
    {70, "LambertW", 1, 1, none, 83, value1<SF::calcLambertW>, updateCommon, textCall, texName, &dLambertW},
    {71, "WrightOmega", 1, 1, none, 0, value1<SF::calcWrightOmega>, updateCommon, textCall, texName, &dWrightOmega},
    {72, "WrightBessel", 3, 3, none, 0, value3<SF::calcWrightBessel>, updateCommon, textCall, texName, &dWrightBessel},
    {73, "ParabolicCylinderD", 2, 2, none, 0, value2<SF::calcParabolicCylinderD>, updateCommon, textCall, texName, &dParabolicCylinderD},
    {74, "ParabolicCylinderU", 2, 2, none, 0, value2<SF::calcParabolicCylinderU>, updateCommon, textCall, texName, &dParabolicCylinderU},
    {75, "ParabolicCylinderV", 2, 2, none, 0, value2<SF::calcParabolicCylinderV>, updateCommon, textCall, texName, &dParabolicCylinderV},
    {76, "ClausenC", 2, 2, none, 0, value2<SF::calcClausenC>, updateCommon, textCall, texName, &dClausenC},
    {77, "ClausenS", 2, 2, none, 0, value2<SF::calcClausenS>, updateCommon, textCall, texName, &dClausenS},
    {78, "Hyperfactorial", 1, 1, none, 0, value1<SF::calcHyperfactorial>, updateCommon, textCall, texName, &dHyperfactorial},
    {79, "WhittakerM", 3, 3, none, 0, value3<SF::calcWhittakerM>, updateCommon, textCall, texName, &dWhittakerM},
    {80, "WhittakerW", 3, 3, none, 0, value3<SF::calcWhittakerW>, updateCommon, textCall, texName, &dWhittakerW},
    {81, "JacobiZeta", 2, 2, none, 0, value2<SF::calcJacobiZeta>, updateCommon, textCall, texName, &dJacobiZeta},
    {82, "Gamma", 2, 2, none, 0, value2<SF::calcIGamma>, updateCommon, textCall, tex("\\Gamma("), &dIncompleteGamma},
    {83, "InverseLambertW", 1, 1, none, 70, value1<Plain::inverseLambertW>, updateCommon, textCall, texName, &dInverseLambertW},
    {84, "InverseErf", 1, 1, none, 50, value1<SF::calcInvErf>, updateCommon, textCall, texName, &dInverseErf},
    {85, "InverseErfc", 1, 1, none, 98, value1<SF::calcInvErfc>, updateCommon, textCall, texName, &dInverseErfc},
    {86, "InverseErfi", 1, 1, odd, 97, value1<SF::calcInvErfi>, updateCommon, textCall, texName, &dInverseErfi},
    {91, "SinIntegral", 1, 1, odd, 0, value1<SF::calcSineIntegral>, updateCommon, textCall, texName, &dSinIntegral},
    {92, "CosIntegral", 1, 1, none, 0, value1<SF::calcCosineIntegral>, updateCommon, textCall, texName, &dCosIntegral},
    {93, "SinhIntegral", 1, 1, odd, 140, value1<SF::calcSinhIntegral>, updateCommon, textCall, texName, &dSinhIntegral},
    {94, "CoshIntegral", 1, 1, none, 137, value1<SF::calcCoshIntegral>, updateCommon, textCall, texName, &dCoshIntegral},
    {95, "PolyGamma", 2, 2, none, 0, value2<SF::calcPolyGamma>, updateCommon, textCall, texIndexed, &dPolyGamma},
    {96, "AGM", 2, 2, none, 0, value2<SF::calcAGM>, updateCommon, textCall, texName, &dAGM},
    {97, "Erfi", 1, 1, none, 86, value1<SF::calcErfi>, updateCommon, textCall, texName, &dErfi},
    {98, "Erfc", 1, 1, none, 85, value1<Plain::erfc>, updateCommon, textCall, texName, &dErfc},
    {99, "Dawson", 1, 1, odd, 0, value1<SF::calcDrawson>, updateCommon, textCall, texName, &dDawson},
    {100, "PolyLogarithm2", 1, 1, none, 0, value1<SF::calcPolyLogarithm2>, updateCommon, textCall, texName, &dPolyLogarithm2},
    {101, "LogSign", 1, 1, odd, 0, value1<SF::calcLogSign>, updateCommon, textCall, texName, &dLogSign},
    {102, "ExpSign", 1, 1, odd, 0, value1<SF::calcExpSign>, updateCommon, textCall, texName, &dExpSign},
    {103, "FresnelC", 1, 1, none, 0, value1<SF::calcFresnelC>, updateCommon, textCall, texName, &dFresnelC},
    {104, "FresnelS", 1, 1, none, 0, value1<SF::calcFresnelS>, updateCommon, textCall, texName, &dFresnelS},
    {105, "ExpIntegral", 1, 2, none, 0, value1or2<SF::calcExpIntegral, SF::calcExpIntegralP>, updateCommon, textCall, texName, &dExpIntegral},
    {106, "LogIntegral", 1, 1, none, 0, value1<SF::calcLogIntegral>, updateCommon, textCall, texName, &dLogIntegral},
    {107, "StepFun", 1, 1, bare, 0, valueBare<SF::calcStepFun>, updateCommon, textCall, texName, &flat},
    {108, "Round", 1, 1, none, 0, value1<Plain::round>, updateCommon, textCall, texName, &flat},
    {109, "RoundDown", 1, 1, none, 0, value1<Plain::floor>, updateCommon, textCall, texName, &flat},
    {110, "RoundUp", 1, 1, none, 0, value1<Plain::ceil>, updateCommon, textCall, texName, &flat},
    {111, "Rounding", 1, 1, none, 0, value1<Plain::rounding>, updateCommon, textCall, texName, &flat},
    {112, "RoundZero", 1, 1, none, 0, value1<Plain::roundZero>, updateCommon, textCall, texName, &flat},
    {113, "Zeta", 1, 1, none, 135, value1<SF::calcZeta>, updateCommon, textCall, texName, &refused},
    {114, "AiryAi", 1, 1, none, 0, value1<SF::calcAiryAi>, updateCommon, textCall, texName, &dAiryAi},
    {115, "AiryAiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryAi>, updateCommon, textCall, texName, &refused},
    {116, "AiryBi", 1, 1, none, 0, value1<SF::calcAiryBi>, updateCommon, textCall, texName, &dAiryBi},
    {117, "AiryBiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryBi>, updateCommon, textCall, texName, &refused},
    {118, "AiryGi", 1, 1, none, 0, value1<SF::calcAiryGi>, updateCommon, textCall, texName, &dAiryGi},
    {119, "AiryGiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryGi>, updateCommon, textCall, texName, &refused},
    {120, "AiryHi", 1, 1, none, 0, value1<SF::calcAiryHi>, updateCommon, textCall, texName, &dAiryHi},
    {121, "AiryHiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryHi>, updateCommon, textCall, texName, &refused},
    {122, "EllipticPI", 2, 3, none, 0, value2or3<SF::calcEllipticPI2, SF::calcEllipticPI>, updateCommon, textCall, texName, &dEllipticPI},
    {123, "EllipticRC", 2, 2, none, 0, value2<SF::calcEllipticRC>, updateCommon, textCall, texName, &refused},
    {124, "EllipticRD", 3, 3, none, 0, value3<SF::calcEllipticRD>, updateCommon, textCall, texName, &refused},
    {125, "EllipticRE", 2, 2, none, 0, value2<SF::calcEllipticRE>, updateCommon, textCall, texName, &refused},
    {126, "EllipticRF", 3, 3, none, 0, value3<SF::calcEllipticRF>, updateCommon, textCall, texName, &dEllipticRF},
    {127, "EllipticRG", 3, 3, none, 0, value3<SF::calcEllipticRG>, updateCommon, textCall, texName, &dEllipticRG},
    {128, "EllipticRJ", 4, 4, none, 0, value4<SF::calcEllipticRJ>, updateCommon, textCall, texName, &refused},
    {129, "EllipticRK", 2, 2, none, 0, value2<SF::calcEllipticRK>, updateCommon, textCall, texName, &dEllipticRK},
    {130, "EllipticRM", 3, 3, none, 0, value3<SF::calcEllipticRM>, updateCommon, textCall, texName, &refused},
    {131, "HypergeometricU", 3, 3, none, 0, value3<SF::calcHypergeometricU>, updateCommon, textCall, texName, &dHypergeometricU},
    {132, "Hypergeometric0F1", 2, 2, none, 0, value2<SF::calcHypergeometric0F1>, updateCommon, textCall, texName, &dHypergeometric0F1},
    {133, "Hypergeometric1F1", 3, 3, none, 0, value3<SF::calcHypergeometric1F1>, updateCommon, textCall, texName, &dHypergeometric1F1},
    {134, "Hypergeometric2F1", 4, 4, none, 0, value4<SF::calcHypergeometric2F1>, updateCommon, textCall, texName, &dHypergeometric2F1},
    {135, "InverseZeta", 1, 1, none, 113, value1<SF::calcInvZeta>, updateCommon, textCall, texName, &refused},
    {136, "InverseBeta", 3, 3, none, 0, value3<SF::calcInverseBeta>, updateCommon, textCall, texName, &refused},
    {137, "InverseCoshIntegral", 1, 1, none, 0, value1<SF::calcInvCoshIntegral>, updateCommon, textCall, texName, &dInverseCoshIntegral},
    {138, "InverseGamma", 1, 1, none, 51, value1<SF::calcInvGamma>, updateCommon, textCall, texName, &dInverseGamma},
    {139, "InverseLnErfi", 1, 1, none, 149, value1<SF::calcInvLnErfi>, updateCommon, textCall, texName, &dInverseLnErfi},
    {140, "InverseSinhIntegral", 1, 1, none, 0, value1<SF::calcInvSinhIntegral>, updateCommon, textCall, texName, &dInverseSinhIntegral},
    {141, "JacobianAmp", 2, 2, none, 0, value2<SF::calcJacobiEllipticAm>, updateCommon, textCall, texName, &dJacobianAmp},
    {142, "JacobianCn", 2, 2, none, 0, value2<SF::calcJacobiEllipticCn>, updateCommon, textCall, texName, &dJacobianCn},
    {143, "JacobianDn", 2, 2, none, 0, value2<SF::calcJacobiEllipticDn>, updateCommon, textCall, texName, &dJacobianDn},
    {144, "JacobianSn", 2, 2, none, 0, value2<SF::calcJacobiEllipticSn>, updateCommon, textCall, texName, &dJacobianSn},
    {145, "JacobiTheta1", 2, 2, none, 0, value2<SF::calcJacobiTheta1>, updateCommon, textCall, texName, &refused},
    {146, "JacobiTheta2", 2, 2, none, 0, value2<SF::calcJacobiTheta2>, updateCommon, textCall, texName, &refused},
    {147, "JacobiTheta3", 2, 2, none, 0, value2<SF::calcJacobiTheta3>, updateCommon, textCall, texName, &refused},
    {148, "JacobiTheta4", 2, 2, none, 0, value2<SF::calcJacobiTheta4>, updateCommon, textCall, texName, &refused},
    {149, "LnErfi", 1, 1, none, 139, value1<SF::calcLnErfi>, updateCommon, textCall, texName, &dLnErfi},
    {150, "LnBarnesG", 1, 1, none, 0, value1<SF::calcLnBarnesG>, updateCommon, textCall, texName, &dLnBarnesG},
    {151, "EllipticBulirschCel", 4, 4, none, 0, value4<SF::calcBulirschCel>, updateCommon, textCall, texName, &refused},
    {152, "EllipticBulirschEl1", 2, 2, none, 0, value2<SF::calcBulirschEl1>, updateCommon, textCall, texName, &refused},
    {153, "EllipticBulirschEl2", 4, 4, none, 0, value4<SF::calcBulirschEl2>, updateCommon, textCall, texName, &refused},
    {154, "EllipticBulirschEl3", 3, 3, none, 0, value3<SF::calcBulirschEl3>, updateCommon, textCall, texName, &refused},
    {155, "Truncate", 1, 1, none, 0, value1<Plain::truncate>, updateCommon, textCall, texName, &flat},
    {156, "Frac", 1, 1, none, 0, value1<Plain::fraction>, updateCommon, textCall, texName, &flat},
    {157, "ConSelect", 3, 3, none, 0, value3<Plain::select>, updateCommon, textCall, texName, &dConSelect},
    {158, "GoodwinStaton", 1, 1, none, 0, value1<SF::calcGoodwinStaton>, updateCommon, textCall, texName, &dGoodwinStaton},
    {159, "HurwitzZeta", 2, 2, none, 0, value2<SF::calcHurwitzZeta>, updateCommon, textCall, texName, &dHurwitzZeta},
    {160, "DirichletEta", 1, 1, none, 0, value1<SF::calcDirichletEta>, updateCommon, textCall, texName, &refused},
    {161, "DirichletBeta", 1, 1, none, 0, value1<SF::calcDirichletBeta>, updateCommon, textCall, texName, &refused},
    {162, "VoigtFunK", 2, 2, none, 0, value2<SF::calcVoigtFunK>, updateCommon, textCall, texName, &dVoigtFunK},
    {163, "VoigtFunL", 2, 2, none, 0, value2<SF::calcVoigtFunL>, updateCommon, textCall, texName, &dVoigtFunL},
    {164, "VoigtDiffLX", 2, 2, none, 0, value2<SF::calcVoigtDiffLX>, updateCommon, textCall, texName, &refused},
    {165, "VoigtDiffLY", 2, 2, none, 0, value2<SF::calcVoigtDiffKX>, updateCommon, textCall, texName, &refused},
    {166, "VoigtDiffKY", 2, 2, none, 0, value2<SF::calcVoigtDiffKY>, updateCommon, textCall, texName, &refused},
    {167, "VoigtDiffKX", 2, 2, none, 0, value2<SF::calcVoigtDiffKX>, updateCommon, textCall, texName, &refused},
    {168, "PolyLog", 2, 2, none, 0, value2<SF::calcPolyLog>, updateCommon, textCall, texName, &dPolyLog},
    {169, "BoseEinstein", 2, 2, none, 0, value2<SF::calcBoseEinstein>, updateCommon, textCall, texName, &dBoseEinstein},
    {170, "FermiDirac", 2, 2, none, 0, value2<SF::calcFermiDirac>, updateCommon, textCall, texName, &dFermiDirac},
    {171, "Glasser", 1, 1, none, 0, value1<SF::calcGlasser>, updateCommon, textCall, texName, &dGlasser},
};
// clang-format on

consteval bool wellFormed() {
  int last = -1;
  for (const Kind& row : kKinds) {
    if (row.code <= last || row.name == nullptr || row.minArgs > row.maxArgs) return false;
    // No test for null functions: g++ does not fold it under the sanitizers, and the tests call those of every row.
    last = row.code;
  }
  return std::size(kKinds) == 141;
}
static_assert(wellFormed());

// Row of each code, from the rows themselves.
constexpr std::array<const Kind*, 256> kByCode = [] {
  std::array<const Kind*, 256> byCode{};
  for (const Kind& row : kKinds) byCode[row.code] = &row;
  return byCode;
}();

}  // namespace

const Kind* findKind(uint8_t code) { return kByCode[code]; }

}  // namespace Sym
