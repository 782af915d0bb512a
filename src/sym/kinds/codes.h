// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "orvane/sym_kinds.h"

namespace Sym {

class Expr;

/// The code of a kind, and the kind as a function of expressions: `Code::Sin` is 20 where a code is wanted, and
/// `Code::Sin(u)` the normalised node of that kind on its arguments (expr.h).
struct KindCode {
  uint8_t code;

  constexpr operator uint8_t() const { return code; }

  template <class... Args>
  Expr operator()(Args&&... args) const;
};

/// All kinds by their names. Rules, rows and writers name kinds by these alone.
namespace Code {

inline constexpr KindCode Number{ORVANE_KIND_NUMBER}, Variable{ORVANE_KIND_VARIABLE}, Add{ORVANE_KIND_ADD},
    Mul{ORVANE_KIND_MUL}, Pow{ORVANE_KIND_POW}, Sign{ORVANE_KIND_SIGN}, Sqrt{ORVANE_KIND_SQRT}, Ln{ORVANE_KIND_LN},
    Exp{ORVANE_KIND_EXP}, Abs{ORVANE_KIND_ABS};
inline constexpr KindCode Sin{ORVANE_KIND_SIN}, Cos{ORVANE_KIND_COS}, Tan{ORVANE_KIND_TAN}, Cot{ORVANE_KIND_COT},
    Asin{ORVANE_KIND_ASIN}, Acos{ORVANE_KIND_ACOS}, Atan{ORVANE_KIND_ATAN}, Acot{ORVANE_KIND_ACOT},
    Sinh{ORVANE_KIND_SINH}, Cosh{ORVANE_KIND_COSH}, Tanh{ORVANE_KIND_TANH}, Coth{ORVANE_KIND_COTH},
    Asinh{ORVANE_KIND_ASINH}, Acosh{ORVANE_KIND_ACOSH}, Atanh{ORVANE_KIND_ATANH}, Acoth{ORVANE_KIND_ACOTH};
inline constexpr KindCode Erf{ORVANE_KIND_ERF}, Gamma{ORVANE_KIND_GAMMA}, Beta{ORVANE_KIND_BETA},
    LnGamma{ORVANE_KIND_LN_GAMMA}, BesselI{ORVANE_KIND_BESSEL_I}, BesselJ{ORVANE_KIND_BESSEL_J},
    BesselK{ORVANE_KIND_BESSEL_K}, BesselY{ORVANE_KIND_BESSEL_Y}, DiGamma{ORVANE_KIND_DIGAMMA};
inline constexpr KindCode EllipticF{ORVANE_KIND_ELLIPTIC_F}, EllipticK{ORVANE_KIND_ELLIPTIC_K},
    EllipticE{ORVANE_KIND_ELLIPTIC_E}, StruveH{ORVANE_KIND_STRUVE_H}, StruveL{ORVANE_KIND_STRUVE_L},
    AngerJ{ORVANE_KIND_ANGER_J}, WeberE{ORVANE_KIND_WEBER_E}, BarnesG{ORVANE_KIND_BARNES_G},
    LambertW{ORVANE_KIND_LAMBERT_W}, WrightOmega{ORVANE_KIND_WRIGHT_OMEGA}, WrightBessel{ORVANE_KIND_WRIGHT_BESSEL},
    ParabolicCylinderD{ORVANE_KIND_PARABOLIC_CYLINDER_D}, ParabolicCylinderU{ORVANE_KIND_PARABOLIC_CYLINDER_U},
    ParabolicCylinderV{ORVANE_KIND_PARABOLIC_CYLINDER_V}, ClausenC{ORVANE_KIND_CLAUSEN_C},
    ClausenS{ORVANE_KIND_CLAUSEN_S}, Hyperfactorial{ORVANE_KIND_HYPERFACTORIAL}, WhittakerM{ORVANE_KIND_WHITTAKER_M},
    WhittakerW{ORVANE_KIND_WHITTAKER_W}, JacobiZeta{ORVANE_KIND_JACOBI_ZETA},
    IncompleteGamma{ORVANE_KIND_INCOMPLETE_GAMMA}, InverseLambertW{ORVANE_KIND_INVERSE_LAMBERT_W},
    InverseErf{ORVANE_KIND_INVERSE_ERF}, InverseErfc{ORVANE_KIND_INVERSE_ERFC}, InverseErfi{ORVANE_KIND_INVERSE_ERFI};
inline constexpr KindCode SinIntegral{ORVANE_KIND_SIN_INTEGRAL}, CosIntegral{ORVANE_KIND_COS_INTEGRAL},
    SinhIntegral{ORVANE_KIND_SINH_INTEGRAL}, CoshIntegral{ORVANE_KIND_COSH_INTEGRAL}, PolyGamma{ORVANE_KIND_POLYGAMMA},
    AGM{ORVANE_KIND_AGM}, Erfi{ORVANE_KIND_ERFI}, Erfc{ORVANE_KIND_ERFC}, Dawson{ORVANE_KIND_DAWSON},
    PolyLogarithm2{ORVANE_KIND_POLY_LOGARITHM2}, LogSign{ORVANE_KIND_LOG_SIGN}, ExpSign{ORVANE_KIND_EXP_SIGN},
    FresnelC{ORVANE_KIND_FRESNEL_C}, FresnelS{ORVANE_KIND_FRESNEL_S}, ExpIntegral{ORVANE_KIND_EXP_INTEGRAL},
    LogIntegral{ORVANE_KIND_LOG_INTEGRAL};
inline constexpr KindCode StepFun{ORVANE_KIND_STEP_FUN}, Round{ORVANE_KIND_ROUND}, RoundDown{ORVANE_KIND_ROUND_DOWN},
    RoundUp{ORVANE_KIND_ROUND_UP}, Rounding{ORVANE_KIND_ROUNDING}, RoundZero{ORVANE_KIND_ROUND_ZERO};
inline constexpr KindCode Zeta{ORVANE_KIND_ZETA}, AiryAi{ORVANE_KIND_AIRY_AI}, AiryAiDiff{ORVANE_KIND_AIRY_AI_DIFF},
    AiryBi{ORVANE_KIND_AIRY_BI}, AiryBiDiff{ORVANE_KIND_AIRY_BI_DIFF}, AiryGi{ORVANE_KIND_AIRY_GI},
    AiryGiDiff{ORVANE_KIND_AIRY_GI_DIFF}, AiryHi{ORVANE_KIND_AIRY_HI}, AiryHiDiff{ORVANE_KIND_AIRY_HI_DIFF};
inline constexpr KindCode EllipticPI{ORVANE_KIND_ELLIPTIC_PI}, EllipticRC{ORVANE_KIND_ELLIPTIC_RC},
    EllipticRD{ORVANE_KIND_ELLIPTIC_RD}, EllipticRE{ORVANE_KIND_ELLIPTIC_RE}, EllipticRF{ORVANE_KIND_ELLIPTIC_RF},
    EllipticRG{ORVANE_KIND_ELLIPTIC_RG}, EllipticRJ{ORVANE_KIND_ELLIPTIC_RJ}, EllipticRK{ORVANE_KIND_ELLIPTIC_RK},
    EllipticRM{ORVANE_KIND_ELLIPTIC_RM};
inline constexpr KindCode HypergeometricU{ORVANE_KIND_HYPERGEOMETRIC_U},
    Hypergeometric0F1{ORVANE_KIND_HYPERGEOMETRIC_0F1}, Hypergeometric1F1{ORVANE_KIND_HYPERGEOMETRIC_1F1},
    Hypergeometric2F1{ORVANE_KIND_HYPERGEOMETRIC_2F1};
inline constexpr KindCode InverseZeta{ORVANE_KIND_INVERSE_ZETA}, InverseBeta{ORVANE_KIND_INVERSE_BETA},
    InverseCoshIntegral{ORVANE_KIND_INVERSE_COSH_INTEGRAL}, InverseGamma{ORVANE_KIND_INVERSE_GAMMA},
    InverseLnErfi{ORVANE_KIND_INVERSE_LN_ERFI}, InverseSinhIntegral{ORVANE_KIND_INVERSE_SINH_INTEGRAL};
inline constexpr KindCode JacobianAmp{ORVANE_KIND_JACOBIAN_AMP}, JacobianCn{ORVANE_KIND_JACOBIAN_CN},
    JacobianDn{ORVANE_KIND_JACOBIAN_DN}, JacobianSn{ORVANE_KIND_JACOBIAN_SN}, JacobiTheta1{ORVANE_KIND_JACOBI_THETA1},
    JacobiTheta2{ORVANE_KIND_JACOBI_THETA2}, JacobiTheta3{ORVANE_KIND_JACOBI_THETA3},
    JacobiTheta4{ORVANE_KIND_JACOBI_THETA4};
inline constexpr KindCode LnErfi{ORVANE_KIND_LN_ERFI}, LnBarnesG{ORVANE_KIND_LN_BARNES_G},
    EllipticBulirschCel{ORVANE_KIND_ELLIPTIC_BULIRSCH_CEL}, EllipticBulirschEl1{ORVANE_KIND_ELLIPTIC_BULIRSCH_EL1},
    EllipticBulirschEl2{ORVANE_KIND_ELLIPTIC_BULIRSCH_EL2}, EllipticBulirschEl3{ORVANE_KIND_ELLIPTIC_BULIRSCH_EL3},
    Truncate{ORVANE_KIND_TRUNCATE}, Frac{ORVANE_KIND_FRAC}, ConSelect{ORVANE_KIND_CON_SELECT},
    GoodwinStaton{ORVANE_KIND_GOODWIN_STATON}, HurwitzZeta{ORVANE_KIND_HURWITZ_ZETA},
    DirichletEta{ORVANE_KIND_DIRICHLET_ETA}, DirichletBeta{ORVANE_KIND_DIRICHLET_BETA},
    VoigtFunK{ORVANE_KIND_VOIGT_FUN_K}, VoigtFunL{ORVANE_KIND_VOIGT_FUN_L}, VoigtDiffLX{ORVANE_KIND_VOIGT_DIFF_LX},
    VoigtDiffLY{ORVANE_KIND_VOIGT_DIFF_LY}, VoigtDiffKY{ORVANE_KIND_VOIGT_DIFF_KY},
    VoigtDiffKX{ORVANE_KIND_VOIGT_DIFF_KX}, PolyLog{ORVANE_KIND_POLY_LOG}, BoseEinstein{ORVANE_KIND_BOSE_EINSTEIN},
    FermiDirac{ORVANE_KIND_FERMI_DIRAC}, Glasser{ORVANE_KIND_GLASSER};
/// Meanings at construction only.
inline constexpr KindCode Subtract{ORVANE_KIND_SUBTRACT}, Divide{ORVANE_KIND_DIVIDE};

}  // namespace Code
}  // namespace Sym
