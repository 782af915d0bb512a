// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/node/expr.h"

/// The kinds that derivatives are written in, as functions of expressions, with their codes in the table of kinds.
namespace Sym::Notation {

inline constexpr Function Pow{5}, Sign{6}, Sqrt{10}, Ln{11}, Exp{12}, Abs{13};
inline constexpr Function Sin{20}, Cos{21}, Tan{22}, Cot{23}, Sinh{30}, Cosh{31}, Tanh{32}, Coth{33};
inline constexpr Function Gamma{51}, LnGamma{53}, DiGamma{58}, PolyGamma{95}, BarnesG{69}, Hyperfactorial{78}, Beta{52};
inline constexpr Function Erfi{97}, Dawson{99}, GoodwinStaton{158}, LambertW{70}, WrightOmega{71};
inline constexpr Function VoigtDiffLX{164}, VoigtDiffLY{165}, VoigtDiffKY{166}, VoigtDiffKX{167};
inline constexpr Function BesselI{54}, BesselJ{55}, BesselK{56}, BesselY{57}, StruveH{65}, StruveL{66}, AngerJ{67};
inline constexpr Function WeberE{68}, WrightBessel{72}, AiryAiDiff{115}, AiryBiDiff{117}, AiryGiDiff{119};
inline constexpr Function AiryHiDiff{121};
inline constexpr Function AGM{96}, EllipticF{62}, EllipticK{63}, EllipticE{64}, EllipticPI{122}, EllipticRD{124};
inline constexpr Function EllipticRF{126}, JacobianAmp{141}, JacobianCn{142}, JacobianDn{143}, JacobianSn{144};
inline constexpr Function HypergeometricU{131}, Hypergeometric0F1{132}, Hypergeometric1F1{133}, Hypergeometric2F1{134};
inline constexpr Function WhittakerM{79}, WhittakerW{80}, ParabolicCylinderD{73}, ParabolicCylinderU{74};
inline constexpr Function ParabolicCylinderV{75}, ClausenC{76}, ClausenS{77}, HurwitzZeta{159}, PolyLog{168};
inline constexpr Function BoseEinstein{169}, FermiDirac{170}, ExpIntegral{105};
inline constexpr Function InverseErf{84}, InverseErfc{85}, InverseErfi{86}, InverseCoshIntegral{137};
inline constexpr Function InverseGamma{138}, InverseLnErfi{139}, InverseSinhIntegral{140}, ConSelect{157};

}  // namespace Sym::Notation
