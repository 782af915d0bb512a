// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "sym/diff/rules/rules.h"
#include "sym/kinds/kind.h"
#include "sym/kinds/values.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

using namespace Property;
using namespace Rules;

// Sign and StepFun have values of their own, without coef.
// KEPT: Sign and StepFun ignore their coefficient; one would expect a multiple (kept.csv: Sign_coef, StepFun_coef)
// KEPT: BarnesG is lower case in LaTeX alone; one would expect its name (kept.csv: BarnesG_latex)
// clang-format off
constexpr Kind kKinds[] = {
    // code, name, fewest and most arguments, properties, kind that it undoes, value, update, text, LaTeX, derivative
    {0, "Number", 0, 0, none, 0, numberValue, updateNumber, textNumber, texBy(latexNumber), &dNumber},
    {1, "Variable", 0, 0, none, 0, variableValue, updateVariable, textVariable, texBy(latexVariable), &dVariable},
    {2, "Add", 0, kAnyArgs, none, 0, addValue, updateAdd, textAdd, texBy(latexAdd), &dAdd},
    {3, "Mul", 0, kAnyArgs, none, 0, mulValue, updateMul, textMul, texBy(latexMul), &dMul},
    {5, "Pow", 2, 2, none, 0, routine<5>, updatePow, textPow, texBy(latexPow), &dPow},
    {6, "Sign", 1, 1, bare, 0, routineBare<6>, updateCommon, textCall, texName, &flat},
    {10, "Sqrt", 1, 1, none, 0, routine<10>, updateSqrt, textCall, tex("\\sqrt{", "}"), &dSqrt},
    {11, "Ln", 1, 1, none, 0, routine<11>, updateLn, textCall, tex("\\ln("), &dLn},
    {12, "Exp", 1, 1, none, 0, routine<12>, updateExp, textCall, tex("\\exp("), &dExp},
    {13, "Abs", 1, 1, none, 0, routine<13>, updateCommon, textCall, tex("|", "|"), &dAbs},
    {20, "Sin", 1, 1, odd, 0, routine<20>, updateSin, textCall, tex("\\sin("), &dSin},
    {21, "Cos", 1, 1, even, 0, routine<21>, updateCos, textCall, tex("\\cos("), &dCos},
    {22, "Tan", 1, 1, odd, 0, routine<22>, updateTan, textCall, tex("\\tan("), &dTan},
    {23, "Cot", 1, 1, odd, 0, routine<23>, updateCot, textCall, tex("\\cot("), &dCot},
    {24, "Asin", 1, 1, odd, 0, routine<24>, updateCommon, textCall, tex("\\arcsin("), &dAsin},
    {25, "Acos", 1, 1, none, 0, routine<25>, updateCommon, textCall, tex("\\arccos("), &dAcos},
    {26, "Atan", 1, 1, odd, 0, routine<26>, updateCommon, textCall, tex("\\arctan("), &dAtan},
    {27, "Acot", 1, 1, odd, 0, routine<27>, updateCommon, textCall, tex("\\mathbf{arccot}("), &dAcot},
    {30, "Sinh", 1, 1, odd, 0, routine<30>, updateHyperbolic, textCall, tex("\\sinh("), &dSinh},
    {31, "Cosh", 1, 1, even, 0, routine<31>, updateHyperbolic, textCall, tex("\\cosh("), &dCosh},
    {32, "Tanh", 1, 1, odd, 0, routine<32>, updateHyperbolic, textCall, tex("\\tanh("), &dTanh},
    {33, "Coth", 1, 1, odd, 0, routine<33>, updateHyperbolic, textCall, tex("\\coth("), &dCoth},
    {34, "Asinh", 1, 1, odd, 0, routine<34>, updateCommon, textCall, tex("\\mathbf{arcsinh}("), &dAsinh},
    {35, "Acosh", 1, 1, none, 0, routine<35>, updateCommon, textCall, tex("\\mathbf{arccosh}("), &dAcosh},
    {36, "Atanh", 1, 1, odd, 0, routine<36>, updateCommon, textCall, tex("\\mathbf{arctanh}("), &dAtanh},
    {37, "Acoth", 1, 1, odd, 0, routine<37>, updateCommon, textCall, tex("\\mathbf{arccoth}("), &dAtanh},
    {50, "Erf", 1, 1, odd, 84, routine<50>, updateCommon, textCall, texName, &dErf},
    {51, "Gamma", 1, 1, none, 138, routine<51>, updateCommon, textCall, tex("\\Gamma("), &dGamma},
    {52, "Beta", 2, 2, none, 0, routine<52>, updateCommon, textCall, texName, &dBeta},
    {53, "LnGamma", 1, 1, none, 0, routine<53>, updateCommon, textCall, tex("\\ln(\\Gamma(", "))"), &dLnGamma},
    {54, "BesselI", 2, 2, none, 0, routine<54>, updateCommon, textCall, texIndexed, &dBesselI},
    {55, "BesselJ", 2, 2, none, 0, routine<55>, updateCommon, textCall, texIndexed, &dBesselJ},
    {56, "BesselK", 2, 2, none, 0, routine<56>, updateCommon, textCall, texIndexed, &dBesselK},
    {57, "BesselY", 2, 2, none, 0, routine<57>, updateCommon, textCall, texIndexed, &dBesselY},
    {58, "DiGamma", 1, 1, none, 0, routine<58>, updateCommon, textCall, tex("\\Gamma'("), &dDiGamma},
    {62, "EllipticF", 2, 2, none, 0, routine<62>, updateCommon, textCall, texIndexed, &dEllipticF},
    {63, "EllipticK", 1, 1, none, 0, routine<63>, updateCommon, textCall, texName, &dEllipticK},
    {64, "EllipticE", 1, 2, none, 0, routine<64>, updateCommon, textCall, texIndexed, &dEllipticE},
    {65, "StruveH", 2, 2, none, 0, routine<65>, updateCommon, textCall, texIndexed, &dStruveH},
    {66, "StruveL", 2, 2, none, 0, routine<66>, updateCommon, textCall, texIndexed, &dStruveL},
    {67, "AngerJ", 2, 2, none, 0, routine<67>, updateCommon, textCall, texIndexed, &dAngerJ},
    {68, "WeberE", 2, 2, none, 0, routine<68>, updateCommon, textCall, texIndexed, &dWeberE},
    {69, "BarnesG", 1, 1, none, 0, routine<69>, updateCommon, textCall, tex("\\mathbf{barnesG}("), &dBarnesG},
    {70, "LambertW", 1, 1, none, 83, routine<70>, updateCommon, textCall, texName, &dLambertW},
    {71, "WrightOmega", 1, 1, none, 0, routine<71>, updateCommon, textCall, texName, &dWrightOmega},
    {72, "WrightBessel", 3, 3, none, 0, routine<72>, updateCommon, textCall, texName, &dWrightBessel},
    {73, "ParabolicCylinderD", 2, 2, none, 0, routine<73>, updateCommon, textCall, texName, &dParabolicCylinderD},
    {74, "ParabolicCylinderU", 2, 2, none, 0, routine<74>, updateCommon, textCall, texName, &dParabolicCylinderU},
    {75, "ParabolicCylinderV", 2, 2, none, 0, routine<75>, updateCommon, textCall, texName, &dParabolicCylinderV},
    {76, "ClausenC", 2, 2, none, 0, routine<76>, updateCommon, textCall, texName, &dClausenC},
    {77, "ClausenS", 2, 2, none, 0, routine<77>, updateCommon, textCall, texName, &dClausenS},
    {78, "Hyperfactorial", 1, 1, none, 0, routine<78>, updateCommon, textCall, texName, &dHyperfactorial},
    {79, "WhittakerM", 3, 3, none, 0, routine<79>, updateCommon, textCall, texName, &dWhittakerM},
    {80, "WhittakerW", 3, 3, none, 0, routine<80>, updateCommon, textCall, texName, &dWhittakerW},
    {81, "JacobiZeta", 2, 2, none, 0, routine<81>, updateCommon, textCall, texName, &dJacobiZeta},
    {82, "Gamma", 2, 2, none, 0, routine<82>, updateCommon, textCall, tex("\\Gamma("), &dIncompleteGamma},
    {83, "InverseLambertW", 1, 1, none, 70, routine<83>, updateCommon, textCall, texName, &dInverseLambertW},
    {84, "InverseErf", 1, 1, none, 50, routine<84>, updateCommon, textCall, texName, &dInverseErf},
    {85, "InverseErfc", 1, 1, none, 98, routine<85>, updateCommon, textCall, texName, &dInverseErfc},
    {86, "InverseErfi", 1, 1, odd, 97, routine<86>, updateCommon, textCall, texName, &dInverseErfi},
    {91, "SinIntegral", 1, 1, odd, 0, routine<91>, updateCommon, textCall, texName, &dSinIntegral},
    {92, "CosIntegral", 1, 1, none, 0, routine<92>, updateCommon, textCall, texName, &dCosIntegral},
    {93, "SinhIntegral", 1, 1, odd, 140, routine<93>, updateCommon, textCall, texName, &dSinhIntegral},
    {94, "CoshIntegral", 1, 1, none, 137, routine<94>, updateCommon, textCall, texName, &dCoshIntegral},
    {95, "PolyGamma", 2, 2, none, 0, routine<95>, updateCommon, textCall, texIndexed, &dPolyGamma},
    {96, "AGM", 2, 2, none, 0, routine<96>, updateCommon, textCall, texName, &dAGM},
    {97, "Erfi", 1, 1, none, 86, routine<97>, updateCommon, textCall, texName, &dErfi},
    {98, "Erfc", 1, 1, none, 85, routine<98>, updateCommon, textCall, texName, &dErfc},
    {99, "Dawson", 1, 1, odd, 0, routine<99>, updateCommon, textCall, texName, &dDawson},
    {100, "PolyLogarithm2", 1, 1, none, 0, routine<100>, updateCommon, textCall, texName, &dPolyLogarithm2},
    {101, "LogSign", 1, 1, odd, 0, routine<101>, updateCommon, textCall, texName, &dLogSign},
    {102, "ExpSign", 1, 1, odd, 0, routine<102>, updateCommon, textCall, texName, &dExpSign},
    {103, "FresnelC", 1, 1, none, 0, routine<103>, updateCommon, textCall, texName, &dFresnelC},
    {104, "FresnelS", 1, 1, none, 0, routine<104>, updateCommon, textCall, texName, &dFresnelS},
    {105, "ExpIntegral", 1, 2, none, 0, routine<105>, updateCommon, textCall, texName, &dExpIntegral},
    {106, "LogIntegral", 1, 1, none, 0, routine<106>, updateCommon, textCall, texName, &dLogIntegral},
    {107, "StepFun", 1, 1, bare, 0, routineBare<107>, updateCommon, textCall, texName, &flat},
    {108, "Round", 1, 1, none, 0, routine<108>, updateCommon, textCall, texName, &flat},
    {109, "RoundDown", 1, 1, none, 0, routine<109>, updateCommon, textCall, texName, &flat},
    {110, "RoundUp", 1, 1, none, 0, routine<110>, updateCommon, textCall, texName, &flat},
    {111, "Rounding", 1, 1, none, 0, routine<111>, updateCommon, textCall, texName, &flat},
    {112, "RoundZero", 1, 1, none, 0, routine<112>, updateCommon, textCall, texName, &flat},
    {113, "Zeta", 1, 1, none, 135, routine<113>, updateCommon, textCall, texName, &refused},
    {114, "AiryAi", 1, 1, none, 0, routine<114>, updateCommon, textCall, texName, &dAiryAi},
    {115, "AiryAiDiff", 1, 1, none, 0, routine<115>, updateCommon, textCall, texName, &refused},
    {116, "AiryBi", 1, 1, none, 0, routine<116>, updateCommon, textCall, texName, &dAiryBi},
    {117, "AiryBiDiff", 1, 1, none, 0, routine<117>, updateCommon, textCall, texName, &refused},
    {118, "AiryGi", 1, 1, none, 0, routine<118>, updateCommon, textCall, texName, &dAiryGi},
    {119, "AiryGiDiff", 1, 1, none, 0, routine<119>, updateCommon, textCall, texName, &refused},
    {120, "AiryHi", 1, 1, none, 0, routine<120>, updateCommon, textCall, texName, &dAiryHi},
    {121, "AiryHiDiff", 1, 1, none, 0, routine<121>, updateCommon, textCall, texName, &refused},
    {122, "EllipticPI", 2, 3, none, 0, routine<122>, updateCommon, textCall, texName, &dEllipticPI},
    {123, "EllipticRC", 2, 2, none, 0, routine<123>, updateCommon, textCall, texName, &refused},
    {124, "EllipticRD", 3, 3, none, 0, routine<124>, updateCommon, textCall, texName, &refused},
    {125, "EllipticRE", 2, 2, none, 0, routine<125>, updateCommon, textCall, texName, &refused},
    {126, "EllipticRF", 3, 3, none, 0, routine<126>, updateCommon, textCall, texName, &dEllipticRF},
    {127, "EllipticRG", 3, 3, none, 0, routine<127>, updateCommon, textCall, texName, &dEllipticRG},
    {128, "EllipticRJ", 4, 4, none, 0, routine<128>, updateCommon, textCall, texName, &refused},
    {129, "EllipticRK", 2, 2, none, 0, routine<129>, updateCommon, textCall, texName, &dEllipticRK},
    {130, "EllipticRM", 3, 3, none, 0, routine<130>, updateCommon, textCall, texName, &refused},
    {131, "HypergeometricU", 3, 3, none, 0, routine<131>, updateCommon, textCall, texName, &dHypergeometricU},
    {132, "Hypergeometric0F1", 2, 2, none, 0, routine<132>, updateCommon, textCall, texName, &dHypergeometric0F1},
    {133, "Hypergeometric1F1", 3, 3, none, 0, routine<133>, updateCommon, textCall, texName, &dHypergeometric1F1},
    {134, "Hypergeometric2F1", 4, 4, none, 0, routine<134>, updateCommon, textCall, texName, &dHypergeometric2F1},
    {135, "InverseZeta", 1, 1, none, 113, routine<135>, updateCommon, textCall, texName, &refused},
    {136, "InverseBeta", 3, 3, none, 0, routine<136>, updateCommon, textCall, texName, &refused},
    {137, "InverseCoshIntegral", 1, 1, none, 0, routine<137>, updateCommon, textCall, texName, &dInverseCoshIntegral},
    {138, "InverseGamma", 1, 1, none, 51, routine<138>, updateCommon, textCall, texName, &dInverseGamma},
    {139, "InverseLnErfi", 1, 1, none, 149, routine<139>, updateCommon, textCall, texName, &dInverseLnErfi},
    {140, "InverseSinhIntegral", 1, 1, none, 0, routine<140>, updateCommon, textCall, texName, &dInverseSinhIntegral},
    {141, "JacobianAmp", 2, 2, none, 0, routine<141>, updateCommon, textCall, texName, &dJacobianAmp},
    {142, "JacobianCn", 2, 2, none, 0, routine<142>, updateCommon, textCall, texName, &dJacobianCn},
    {143, "JacobianDn", 2, 2, none, 0, routine<143>, updateCommon, textCall, texName, &dJacobianDn},
    {144, "JacobianSn", 2, 2, none, 0, routine<144>, updateCommon, textCall, texName, &dJacobianSn},
    {145, "JacobiTheta1", 2, 2, none, 0, routine<145>, updateCommon, textCall, texName, &refused},
    {146, "JacobiTheta2", 2, 2, none, 0, routine<146>, updateCommon, textCall, texName, &refused},
    {147, "JacobiTheta3", 2, 2, none, 0, routine<147>, updateCommon, textCall, texName, &refused},
    {148, "JacobiTheta4", 2, 2, none, 0, routine<148>, updateCommon, textCall, texName, &refused},
    {149, "LnErfi", 1, 1, none, 139, routine<149>, updateCommon, textCall, texName, &dLnErfi},
    {150, "LnBarnesG", 1, 1, none, 0, routine<150>, updateCommon, textCall, texName, &dLnBarnesG},
    {151, "EllipticBulirschCel", 4, 4, none, 0, routine<151>, updateCommon, textCall, texName, &refused},
    {152, "EllipticBulirschEl1", 2, 2, none, 0, routine<152>, updateCommon, textCall, texName, &refused},
    {153, "EllipticBulirschEl2", 4, 4, none, 0, routine<153>, updateCommon, textCall, texName, &refused},
    {154, "EllipticBulirschEl3", 3, 3, none, 0, routine<154>, updateCommon, textCall, texName, &refused},
    {155, "Truncate", 1, 1, none, 0, routine<155>, updateCommon, textCall, texName, &flat},
    {156, "Frac", 1, 1, none, 0, routine<156>, updateCommon, textCall, texName, &flat},
    {157, "ConSelect", 3, 3, none, 0, routine<157>, updateCommon, textCall, texName, &dConSelect},
    {158, "GoodwinStaton", 1, 1, none, 0, routine<158>, updateCommon, textCall, texName, &dGoodwinStaton},
    {159, "HurwitzZeta", 2, 2, none, 0, routine<159>, updateCommon, textCall, texName, &dHurwitzZeta},
    {160, "DirichletEta", 1, 1, none, 0, routine<160>, updateCommon, textCall, texName, &refused},
    {161, "DirichletBeta", 1, 1, none, 0, routine<161>, updateCommon, textCall, texName, &refused},
    {162, "VoigtFunK", 2, 2, none, 0, routine<162>, updateCommon, textCall, texName, &dVoigtFunK},
    {163, "VoigtFunL", 2, 2, none, 0, routine<163>, updateCommon, textCall, texName, &dVoigtFunL},
    {164, "VoigtDiffLX", 2, 2, none, 0, routine<164>, updateCommon, textCall, texName, &refused},
    {165, "VoigtDiffLY", 2, 2, none, 0, routine<165>, updateCommon, textCall, texName, &refused},
    {166, "VoigtDiffKY", 2, 2, none, 0, routine<166>, updateCommon, textCall, texName, &refused},
    {167, "VoigtDiffKX", 2, 2, none, 0, routine<167>, updateCommon, textCall, texName, &refused},
    {168, "PolyLog", 2, 2, none, 0, routine<168>, updateCommon, textCall, texName, &dPolyLog},
    {169, "BoseEinstein", 2, 2, none, 0, routine<169>, updateCommon, textCall, texName, &dBoseEinstein},
    {170, "FermiDirac", 2, 2, none, 0, routine<170>, updateCommon, textCall, texName, &dFermiDirac},
    {171, "Glasser", 1, 1, none, 0, routine<171>, updateCommon, textCall, texName, &dGlasser},
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
