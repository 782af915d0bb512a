// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "special/special_function.h"
#include "sym/kind.h"
#include "sym/update.h"
#include "sym/values.h"

namespace Sym {
namespace {

namespace SF = SpecialFunction;
using namespace Property;

// Forms and derivatives stand here until their columns are written.
void writeText(SymObject&) {}
std::string writeLatex(SymObject&) { return {}; }
NodePtr noDerivative(const SymObject&, const VarPtr&, std::string&) { return nullptr; }

// Sign and StepFun have values of their own, without coef.
// KEPT: Sign and StepFun ignore their coefficient; one would expect a multiple (kept.csv: Sign_coef, StepFun_coef)
// KEPT: BesselK evaluates as J; one would expect K (kept.csv: BesselK_value)
// VoigtDiffLY is VoigtDiffKX by the Cauchy-Riemann equations: one routine serves both.
// clang-format off
constexpr Kind kKinds[] = {
    // code, name, fewest and most arguments, properties, kind that it undoes, value, update, text, LaTeX, derivative
    {0, "Number", 0, 0, none, 0, numberValue, updateNothing, writeText, writeLatex, noDerivative},
    {1, "Variable", 0, 0, none, 0, variableValue, updateNothing, writeText, writeLatex, noDerivative},
    {2, "Add", 0, kAnyArgs, none, 0, addValue, updateAdd, writeText, writeLatex, noDerivative},
    {3, "Mul", 0, kAnyArgs, none, 0, mulValue, updateMul, writeText, writeLatex, noDerivative},
    {5, "Pow", 2, 2, none, 0, value2<Plain::power>, updatePow, writeText, writeLatex, noDerivative},
    {6, "Sign", 1, 1, bare, 0, valueBare<SF::calcSign>, updateCommon, writeText, writeLatex, noDerivative},
    {10, "Sqrt", 1, 1, none, 0, value1<Plain::squareRoot>, updateSqrt, writeText, writeLatex, noDerivative},
    {11, "Ln", 1, 1, none, 0, value1<Plain::ln>, updateLn, writeText, writeLatex, noDerivative},
    {12, "Exp", 1, 1, none, 0, value1<Plain::exponential>, updateExp, writeText, writeLatex, noDerivative},
    {13, "Abs", 1, 1, none, 0, value1<Plain::absolute>, updateCommon, writeText, writeLatex, noDerivative},
    {20, "Sin", 1, 1, odd, 0, value1<Plain::sine>, updateSin, writeText, writeLatex, noDerivative},
    {21, "Cos", 1, 1, even, 0, value1<Plain::cosine>, updateCos, writeText, writeLatex, noDerivative},
    {22, "Tan", 1, 1, odd, 0, value1<Plain::tangent>, updateTan, writeText, writeLatex, noDerivative},
    {23, "Cot", 1, 1, odd, 0, value1<Plain::cotangent>, updateCot, writeText, writeLatex, noDerivative},
    {24, "Asin", 1, 1, odd, 0, value1<Plain::asine>, updateCommon, writeText, writeLatex, noDerivative},
    {25, "Acos", 1, 1, none, 0, value1<Plain::acosine>, updateCommon, writeText, writeLatex, noDerivative},
    {26, "Atan", 1, 1, odd, 0, value1<Plain::atangent>, updateCommon, writeText, writeLatex, noDerivative},
    {27, "Acot", 1, 1, odd, 0, value1<Plain::acotangent>, updateCommon, writeText, writeLatex, noDerivative},
    {30, "Sinh", 1, 1, odd, 0, value1<Plain::sinh>, updateHyperbolic, writeText, writeLatex, noDerivative},
    {31, "Cosh", 1, 1, even, 0, value1<Plain::cosh>, updateHyperbolic, writeText, writeLatex, noDerivative},
    {32, "Tanh", 1, 1, odd, 0, value1<Plain::tanh>, updateHyperbolic, writeText, writeLatex, noDerivative},
    {33, "Coth", 1, 1, odd, 0, value1<Plain::coth>, updateHyperbolic, writeText, writeLatex, noDerivative},
    {34, "Asinh", 1, 1, odd, 0, value1<Plain::asinh>, updateCommon, writeText, writeLatex, noDerivative},
    {35, "Acosh", 1, 1, none, 0, value1<Plain::acosh>, updateCommon, writeText, writeLatex, noDerivative},
    {36, "Atanh", 1, 1, odd, 0, value1<Plain::atanh>, updateCommon, writeText, writeLatex, noDerivative},
    {37, "Acoth", 1, 1, odd, 0, value1<Plain::acoth>, updateCommon, writeText, writeLatex, noDerivative},
    {50, "Erf", 1, 1, odd, 84, value1<Plain::erf>, updateCommon, writeText, writeLatex, noDerivative},
    {51, "Gamma", 1, 1, none, 138, value1<Plain::gamma>, updateCommon, writeText, writeLatex, noDerivative},
    {52, "Beta", 2, 2, none, 0, value2<Plain::beta>, updateCommon, writeText, writeLatex, noDerivative},
    {53, "LnGamma", 1, 1, none, 0, value1<Plain::lnGamma>, updateCommon, writeText, writeLatex, noDerivative},
    {54, "BesselI", 2, 2, none, 0, value2<SF::calcBesselI>, updateCommon, writeText, writeLatex, noDerivative},
    {55, "BesselJ", 2, 2, none, 0, value2<SF::calcBesselJ>, updateCommon, writeText, writeLatex, noDerivative},
    {56, "BesselK", 2, 2, none, 0, value2<SF::calcBesselJ>, updateCommon, writeText, writeLatex, noDerivative},
    {57, "BesselY", 2, 2, none, 0, value2<SF::calcBesselY>, updateCommon, writeText, writeLatex, noDerivative},
    {58, "DiGamma", 1, 1, none, 0, value1<SF::calcDigamma>, updateCommon, writeText, writeLatex, noDerivative},
    {62, "EllipticF", 2, 2, none, 0, value2<SF::calcEllipticF>, updateCommon, writeText, writeLatex, noDerivative},
    {63, "EllipticK", 1, 1, none, 0, value1<SF::calcEllipticK>, updateCommon, writeText, writeLatex, noDerivative},
    {64, "EllipticE", 1, 2, none, 0, value1or2<SF::calcEllipticE, SF::calcEllipticE2>, updateCommon, writeText, writeLatex, noDerivative},
    {65, "StruveH", 2, 2, none, 0, value2<SF::calcStruveH>, updateCommon, writeText, writeLatex, noDerivative},
    {66, "StruveL", 2, 2, none, 0, value2<SF::calcStruveL>, updateCommon, writeText, writeLatex, noDerivative},
    {67, "AngerJ", 2, 2, none, 0, value2<SF::calcAngerJ>, updateCommon, writeText, writeLatex, noDerivative},
    {68, "WeberE", 2, 2, none, 0, value2<SF::calcWeberE>, updateCommon, writeText, writeLatex, noDerivative},
    {69, "BarnesG", 1, 1, none, 0, value1<SF::calcBarnesG>, updateCommon, writeText, writeLatex, noDerivative},
    {70, "LambertW", 1, 1, none, 83, value1<SF::calcLambertW>, updateCommon, writeText, writeLatex, noDerivative},
    {71, "WrightOmega", 1, 1, none, 0, value1<SF::calcWrightOmega>, updateCommon, writeText, writeLatex, noDerivative},
    {72, "WrightBessel", 3, 3, none, 0, value3<SF::calcWrightBessel>, updateCommon, writeText, writeLatex, noDerivative},
    {73, "ParabolicCylinderD", 2, 2, none, 0, value2<SF::calcParabolicCylinderD>, updateCommon, writeText, writeLatex, noDerivative},
    {74, "ParabolicCylinderU", 2, 2, none, 0, value2<SF::calcParabolicCylinderU>, updateCommon, writeText, writeLatex, noDerivative},
    {75, "ParabolicCylinderV", 2, 2, none, 0, value2<SF::calcParabolicCylinderV>, updateCommon, writeText, writeLatex, noDerivative},
    {76, "ClausenC", 2, 2, none, 0, value2<SF::calcClausenC>, updateCommon, writeText, writeLatex, noDerivative},
    {77, "ClausenS", 2, 2, none, 0, value2<SF::calcClausenS>, updateCommon, writeText, writeLatex, noDerivative},
    {78, "Hyperfactorial", 1, 1, none, 0, value1<SF::calcHyperfactorial>, updateCommon, writeText, writeLatex, noDerivative},
    {79, "WhittakerM", 3, 3, none, 0, value3<SF::calcWhittakerM>, updateCommon, writeText, writeLatex, noDerivative},
    {80, "WhittakerW", 3, 3, none, 0, value3<SF::calcWhittakerW>, updateCommon, writeText, writeLatex, noDerivative},
    {81, "JacobiZeta", 2, 2, none, 0, value2<SF::calcJacobiZeta>, updateCommon, writeText, writeLatex, noDerivative},
    {82, "Gamma", 2, 2, none, 0, value2<SF::calcIGamma>, updateCommon, writeText, writeLatex, noDerivative},
    {83, "InverseLambertW", 1, 1, none, 70, value1<Plain::inverseLambertW>, updateCommon, writeText, writeLatex, noDerivative},
    {84, "InverseErf", 1, 1, none, 50, value1<SF::calcInvErf>, updateCommon, writeText, writeLatex, noDerivative},
    {85, "InverseErfc", 1, 1, none, 98, value1<SF::calcInvErfc>, updateCommon, writeText, writeLatex, noDerivative},
    {86, "InverseErfi", 1, 1, odd, 97, value1<SF::calcInvErfi>, updateCommon, writeText, writeLatex, noDerivative},
    {91, "SinIntegral", 1, 1, odd, 0, value1<SF::calcSineIntegral>, updateCommon, writeText, writeLatex, noDerivative},
    {92, "CosIntegral", 1, 1, none, 0, value1<SF::calcCosineIntegral>, updateCommon, writeText, writeLatex, noDerivative},
    {93, "SinhIntegral", 1, 1, odd, 140, value1<SF::calcSinhIntegral>, updateCommon, writeText, writeLatex, noDerivative},
    {94, "CoshIntegral", 1, 1, none, 137, value1<SF::calcCoshIntegral>, updateCommon, writeText, writeLatex, noDerivative},
    {95, "PolyGamma", 2, 2, none, 0, value2<SF::calcPolyGamma>, updateCommon, writeText, writeLatex, noDerivative},
    {96, "AGM", 2, 2, none, 0, value2<SF::calcAGM>, updateCommon, writeText, writeLatex, noDerivative},
    {97, "Erfi", 1, 1, none, 86, value1<SF::calcErfi>, updateCommon, writeText, writeLatex, noDerivative},
    {98, "Erfc", 1, 1, none, 85, value1<Plain::erfc>, updateCommon, writeText, writeLatex, noDerivative},
    {99, "Dawson", 1, 1, odd, 0, value1<SF::calcDrawson>, updateCommon, writeText, writeLatex, noDerivative},
    {100, "PolyLogarithm2", 1, 1, none, 0, value1<SF::calcPolyLogarithm2>, updateCommon, writeText, writeLatex, noDerivative},
    {101, "LogSign", 1, 1, odd, 0, value1<SF::calcLogSign>, updateCommon, writeText, writeLatex, noDerivative},
    {102, "ExpSign", 1, 1, odd, 0, value1<SF::calcExpSign>, updateCommon, writeText, writeLatex, noDerivative},
    {103, "FresnelC", 1, 1, none, 0, value1<SF::calcFresnelC>, updateCommon, writeText, writeLatex, noDerivative},
    {104, "FresnelS", 1, 1, none, 0, value1<SF::calcFresnelS>, updateCommon, writeText, writeLatex, noDerivative},
    {105, "ExpIntegral", 1, 2, none, 0, value1or2<SF::calcExpIntegral, SF::calcExpIntegralP>, updateCommon, writeText, writeLatex, noDerivative},
    {106, "LogIntegral", 1, 1, none, 0, value1<SF::calcLogIntegral>, updateCommon, writeText, writeLatex, noDerivative},
    {107, "StepFun", 1, 1, bare, 0, valueBare<SF::calcStepFun>, updateCommon, writeText, writeLatex, noDerivative},
    {108, "Round", 1, 1, none, 0, value1<Plain::round>, updateCommon, writeText, writeLatex, noDerivative},
    {109, "RoundDown", 1, 1, none, 0, value1<Plain::floor>, updateCommon, writeText, writeLatex, noDerivative},
    {110, "RoundUp", 1, 1, none, 0, value1<Plain::ceil>, updateCommon, writeText, writeLatex, noDerivative},
    {111, "Rounding", 1, 1, none, 0, value1<Plain::rounding>, updateCommon, writeText, writeLatex, noDerivative},
    {112, "RoundZero", 1, 1, none, 0, value1<Plain::roundZero>, updateCommon, writeText, writeLatex, noDerivative},
    {113, "Zeta", 1, 1, none, 135, value1<SF::calcZeta>, updateCommon, writeText, writeLatex, noDerivative},
    {114, "AiryAi", 1, 1, none, 0, value1<SF::calcAiryAi>, updateCommon, writeText, writeLatex, noDerivative},
    {115, "AiryAiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryAi>, updateCommon, writeText, writeLatex, noDerivative},
    {116, "AiryBi", 1, 1, none, 0, value1<SF::calcAiryBi>, updateCommon, writeText, writeLatex, noDerivative},
    {117, "AiryBiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryBi>, updateCommon, writeText, writeLatex, noDerivative},
    {118, "AiryGi", 1, 1, none, 0, value1<SF::calcAiryGi>, updateCommon, writeText, writeLatex, noDerivative},
    {119, "AiryGiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryGi>, updateCommon, writeText, writeLatex, noDerivative},
    {120, "AiryHi", 1, 1, none, 0, value1<SF::calcAiryHi>, updateCommon, writeText, writeLatex, noDerivative},
    {121, "AiryHiDiff", 1, 1, none, 0, value1<SF::calcDiffAiryHi>, updateCommon, writeText, writeLatex, noDerivative},
    {122, "EllipticPI", 2, 3, none, 0, value2or3<SF::calcEllipticPI2, SF::calcEllipticPI>, updateCommon, writeText, writeLatex, noDerivative},
    {123, "EllipticRC", 2, 2, none, 0, value2<SF::calcEllipticRC>, updateCommon, writeText, writeLatex, noDerivative},
    {124, "EllipticRD", 3, 3, none, 0, value3<SF::calcEllipticRD>, updateCommon, writeText, writeLatex, noDerivative},
    {125, "EllipticRE", 2, 2, none, 0, value2<SF::calcEllipticRE>, updateCommon, writeText, writeLatex, noDerivative},
    {126, "EllipticRF", 3, 3, none, 0, value3<SF::calcEllipticRF>, updateCommon, writeText, writeLatex, noDerivative},
    {127, "EllipticRG", 3, 3, none, 0, value3<SF::calcEllipticRG>, updateCommon, writeText, writeLatex, noDerivative},
    {128, "EllipticRJ", 4, 4, none, 0, value4<SF::calcEllipticRJ>, updateCommon, writeText, writeLatex, noDerivative},
    {129, "EllipticRK", 2, 2, none, 0, value2<SF::calcEllipticRK>, updateCommon, writeText, writeLatex, noDerivative},
    {130, "EllipticRM", 3, 3, none, 0, value3<SF::calcEllipticRM>, updateCommon, writeText, writeLatex, noDerivative},
    {131, "HypergeometricU", 3, 3, none, 0, value3<SF::calcHypergeometricU>, updateCommon, writeText, writeLatex, noDerivative},
    {132, "Hypergeometric0F1", 2, 2, none, 0, value2<SF::calcHypergeometric0F1>, updateCommon, writeText, writeLatex, noDerivative},
    {133, "Hypergeometric1F1", 3, 3, none, 0, value3<SF::calcHypergeometric1F1>, updateCommon, writeText, writeLatex, noDerivative},
    {134, "Hypergeometric2F1", 4, 4, none, 0, value4<SF::calcHypergeometric2F1>, updateCommon, writeText, writeLatex, noDerivative},
    {135, "InverseZeta", 1, 1, none, 113, value1<SF::calcInvZeta>, updateCommon, writeText, writeLatex, noDerivative},
    {136, "InverseBeta", 3, 3, none, 0, value3<SF::calcInverseBeta>, updateCommon, writeText, writeLatex, noDerivative},
    {137, "InverseCoshIntegral", 1, 1, none, 0, value1<SF::calcInvCoshIntegral>, updateCommon, writeText, writeLatex, noDerivative},
    {138, "InverseGamma", 1, 1, none, 51, value1<SF::calcInvGamma>, updateCommon, writeText, writeLatex, noDerivative},
    {139, "InverseLnErfi", 1, 1, none, 149, value1<SF::calcInvLnErfi>, updateCommon, writeText, writeLatex, noDerivative},
    {140, "InverseSinhIntegral", 1, 1, none, 0, value1<SF::calcInvSinhIntegral>, updateCommon, writeText, writeLatex, noDerivative},
    {141, "JacobianAmp", 2, 2, none, 0, value2<SF::calcJacobiEllipticAm>, updateCommon, writeText, writeLatex, noDerivative},
    {142, "JacobianCn", 2, 2, none, 0, value2<SF::calcJacobiEllipticCn>, updateCommon, writeText, writeLatex, noDerivative},
    {143, "JacobianDn", 2, 2, none, 0, value2<SF::calcJacobiEllipticDn>, updateCommon, writeText, writeLatex, noDerivative},
    {144, "JacobianSn", 2, 2, none, 0, value2<SF::calcJacobiEllipticSn>, updateCommon, writeText, writeLatex, noDerivative},
    {145, "JacobiTheta1", 2, 2, none, 0, value2<SF::calcJacobiTheta1>, updateCommon, writeText, writeLatex, noDerivative},
    {146, "JacobiTheta2", 2, 2, none, 0, value2<SF::calcJacobiTheta2>, updateCommon, writeText, writeLatex, noDerivative},
    {147, "JacobiTheta3", 2, 2, none, 0, value2<SF::calcJacobiTheta3>, updateCommon, writeText, writeLatex, noDerivative},
    {148, "JacobiTheta4", 2, 2, none, 0, value2<SF::calcJacobiTheta4>, updateCommon, writeText, writeLatex, noDerivative},
    {149, "LnErfi", 1, 1, none, 139, value1<SF::calcLnErfi>, updateCommon, writeText, writeLatex, noDerivative},
    {150, "LnBarnesG", 1, 1, none, 0, value1<SF::calcLnBarnesG>, updateCommon, writeText, writeLatex, noDerivative},
    {151, "EllipticBulirschCel", 4, 4, none, 0, value4<SF::calcBulirschCel>, updateCommon, writeText, writeLatex, noDerivative},
    {152, "EllipticBulirschEl1", 2, 2, none, 0, value2<SF::calcBulirschEl1>, updateCommon, writeText, writeLatex, noDerivative},
    {153, "EllipticBulirschEl2", 4, 4, none, 0, value4<SF::calcBulirschEl2>, updateCommon, writeText, writeLatex, noDerivative},
    {154, "EllipticBulirschEl3", 3, 3, none, 0, value3<SF::calcBulirschEl3>, updateCommon, writeText, writeLatex, noDerivative},
    {155, "Truncate", 1, 1, none, 0, value1<Plain::truncate>, updateCommon, writeText, writeLatex, noDerivative},
    {156, "Frac", 1, 1, none, 0, value1<Plain::fraction>, updateCommon, writeText, writeLatex, noDerivative},
    {157, "ConSelect", 3, 3, none, 0, value3<Plain::select>, updateCommon, writeText, writeLatex, noDerivative},
    {158, "GoodwinStaton", 1, 1, none, 0, value1<SF::calcGoodwinStaton>, updateCommon, writeText, writeLatex, noDerivative},
    {159, "HurwitzZeta", 2, 2, none, 0, value2<SF::calcHurwitzZeta>, updateCommon, writeText, writeLatex, noDerivative},
    {160, "DirichletEta", 1, 1, none, 0, value1<SF::calcDirichletEta>, updateCommon, writeText, writeLatex, noDerivative},
    {161, "DirichletBeta", 1, 1, none, 0, value1<SF::calcDirichletBeta>, updateCommon, writeText, writeLatex, noDerivative},
    {162, "VoigtFunK", 2, 2, none, 0, value2<SF::calcVoigtFunK>, updateCommon, writeText, writeLatex, noDerivative},
    {163, "VoigtFunL", 2, 2, none, 0, value2<SF::calcVoigtFunL>, updateCommon, writeText, writeLatex, noDerivative},
    {164, "VoigtDiffLX", 2, 2, none, 0, value2<SF::calcVoigtDiffLX>, updateCommon, writeText, writeLatex, noDerivative},
    {165, "VoigtDiffLY", 2, 2, none, 0, value2<SF::calcVoigtDiffKX>, updateCommon, writeText, writeLatex, noDerivative},
    {166, "VoigtDiffKY", 2, 2, none, 0, value2<SF::calcVoigtDiffKY>, updateCommon, writeText, writeLatex, noDerivative},
    {167, "VoigtDiffKX", 2, 2, none, 0, value2<SF::calcVoigtDiffKX>, updateCommon, writeText, writeLatex, noDerivative},
    {168, "PolyLog", 2, 2, none, 0, value2<SF::calcPolyLog>, updateCommon, writeText, writeLatex, noDerivative},
    {169, "BoseEinstein", 2, 2, none, 0, value2<SF::calcBoseEinstein>, updateCommon, writeText, writeLatex, noDerivative},
    {170, "FermiDirac", 2, 2, none, 0, value2<SF::calcFermiDirac>, updateCommon, writeText, writeLatex, noDerivative},
    {171, "Glasser", 1, 1, none, 0, value1<SF::calcGlasser>, updateCommon, writeText, writeLatex, noDerivative},
};
// clang-format on

consteval bool wellFormed() {
  int last = -1;
  for (const Kind& row : kKinds) {
    if (row.code <= last || row.name == nullptr || row.minArgs > row.maxArgs) return false;
    if (row.value == nullptr || row.update == nullptr || row.text == nullptr || row.latex == nullptr ||
        row.diff == nullptr)
      return false;
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
