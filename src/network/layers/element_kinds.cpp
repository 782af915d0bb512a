// SPDX-License-Identifier: Apache-2.0
#include <numbers>

#include "network/layers/activation.h"
#include "network/layers/formula.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

using std::numbers::inv_sqrtpi;

double zero(double, double) { return 0; }
double minusOrOne(double x) { return x < 0 ? -1.0 : 1.0; }

/// A NaN stays.
struct ReLU {
  static double value(double x) { return x < 0 ? 0 : x; }
  static double slope(double x, double) { return x > 0 ? 1 : 0; }
};

/// Linear beyond 20, where ln(1 + exp x) is x to 9 digits.
struct SoftPlus {
  static constexpr double kLinear = 20;
  static double value(double x) {
    const double soft = quickLog1p(quickExp(x));
    return x > kLinear ? x : soft;
  }
  static double slope(double x, double) { return x > kLinear ? 1 : sigmoid(x); }
};

/// Self-normalising unit (Klambauer et al. 2017).
struct SELU {
  static constexpr double kScale = 1.0507009873554805, kAlpha = 1.6732632423543772;
  static double value(double x) {
    const double below = kAlpha * quickExpm1(x);
    return kScale * (x >= 0 ? x : below);
  }
  static double slope(double x, double) {
    const double below = kAlpha * quickExp(x);
    return kScale * (x >= 0 ? 1 : below);
  }
};

// KEPT: twice the Gaussian error linear unit; expected: with the factor 1/2 (kept.csv: GELU_factor)
struct GELU {
  static constexpr double kRate = 0.797884560802866, kCube = 0.044715;
  static constexpr double kFlat = 100;  // both tails are reached, and no product overflows
  static double inner(double x) { return kRate * x * (1 + kCube * x * x); }
  // 1 + tanh u = 2 sigmoid(2u)
  static double value(double x) { return x * (2 * sigmoid(2 * inner(x))); }
  static double slope(double x, double) {
    const double c = std::clamp(x, -kFlat, kFlat), u = 2 * inner(c);
    return 2 * (sigmoid(u) + c * sigmoidSlope(u) * 2 * kRate * (1 + 3 * kCube * c * c));
  }
};

/// With e = exp x and n = e (e + 2): tanh(ln(1 + e)) = n/(n + 2) (Misra 2019).
struct Mish {
  static constexpr double kLinear = 40;  // the ratio is 1 long before
  static double value(double x) {
    const double e = quickExp(std::min(x, kLinear)), n = e * (e + 2);
    return x * (n / (n + 2));
  }
  static double slope(double x, double) {
    const double c = std::min(x, kLinear), e = quickExp(c), n = e * (e + 2), r = 1 / (n + 2);
    return n * r + c * 4 * e * (1 + e) * r * r;
  }
};

struct AntiSym {
  static double value(double x) { return 16 / (x + 64 / x); }
  static double slope(double x, double) {
    const double w = 1 / (x * x + 64);
    return 16 * w * (128 * w - 1);
  }
};

struct TanhExp {
  static constexpr double kLinear = 2.9;
  static double value(double x) {
    const double bent = x * tanhOf(quickExp(x));
    return x > kLinear ? x : bent;
  }
  static double slope(double x, double) {
    const double e = quickExp(std::min(x, kLinear)), bent = tanhOf(e) + x * tanhSlope(e) * e;
    return x > kLinear ? 1 : bent;
  }
};

// KEPT: erf runs over 0.168 x; expected: erf(x) (kept.csv: Erf_factor)
struct Erf {
  static constexpr double kRate = 0.168;
  static double value(double x) { return std::erf(x * kRate); }
  static double slope(double x, double) {
    const double u = x * kRate;
    return 2 * inv_sqrtpi * kRate * std::exp(-(u * u));
  }
};

/// Derivatives of asin and -acos.
double arcSlope(double x) { return 1 / std::sqrt((1 - x) * (1 + x)); }

constexpr double kLeak = 0.01;

// clang-format off
constexpr LayerKind kElementKinds[] = {
    element<[](double x) { return std::sin(x); }, [](double x, double) { return std::cos(x); }>(ORVANE_LAYER_SIN, "Sin"),
    element<[](double x) { return std::cos(x); }, [](double x, double) { return -std::sin(x); }>(ORVANE_LAYER_COS, "Cos"),
    element<[](double x) { return std::tan(x); }, [](double, double y) { return 1 + y * y; }>(ORVANE_LAYER_TAN, "Tan"),
    element<[](double x) { return std::sinh(x); }, [](double x, double) { return std::cosh(x); }>(ORVANE_LAYER_SINH, "Sinh"),
    element<[](double x) { return std::cosh(x); }, [](double x, double) { return std::sinh(x); }>(ORVANE_LAYER_COSH, "Cosh"),
    element<tanhOf, [](double, double y) { return (1 - y) * (1 + y); }>(ORVANE_LAYER_TANH, "Tanh"),
    element<[](double x) { return std::asin(x); }, [](double x, double) { return arcSlope(x); }>(ORVANE_LAYER_ASIN, "aSin"),
    element<[](double x) { return std::acos(x); }, [](double x, double) { return -arcSlope(x); }>(ORVANE_LAYER_ACOS, "aCos"),
    element<[](double x) { return std::atan(x); }, [](double x, double) { return 1 / (1 + x * x); }>(ORVANE_LAYER_ATAN, "aTan"),
    element<[](double x) { return std::log(x); }, [](double x, double) { return 1 / x; }>(ORVANE_LAYER_LOG, "Log"),
    element<quickExp, [](double, double y) { return y; }>(ORVANE_LAYER_EXP, "Exp"),
    element<[](double x) { return std::sqrt(x); }, [](double, double y) { return 0.5 / y; }>(ORVANE_LAYER_SQRT, "Sqrt"),
    element<[](double x) { return std::abs(x); }, [](double x, double) { return signOf(x); }>(ORVANE_LAYER_ABS, "Abs"),
    element<minusOrOne, zero>(ORVANE_LAYER_SIGN, "Sign"),
    element<sigmoid, [](double, double y) { return y * (1 - y); }>(ORVANE_LAYER_SIGMOD, "Sigmod"),
    element<ReLU::value, ReLU::slope>(ORVANE_LAYER_RELU, "ReLU"),
    element<[](double x) { return x / (std::abs(x) + 1); },
            [](double x, double) { const double w = 1 / (std::abs(x) + 1); return w * w; }>(ORVANE_LAYER_SOFT_SIGN, "SoftSign"),
    element<SoftPlus::value, SoftPlus::slope>(ORVANE_LAYER_SOFT_PLUS, "SoftPlus"),
    element<[](double x) { return quickExp(-(x * x)); }, [](double x, double y) { return -2 * x * y; }>(ORVANE_LAYER_GAUSS, "Gauss"),
    element<[](double x) { return x; }, [](double, double) { return 1.0; }>(ORVANE_LAYER_COPY, "Copy"),
    element<[](double x) { return x < 0 ? 0.0 : 1.0; }, zero>(ORVANE_LAYER_UNIT_STEP, "UnitSetp"),
    element<[](double x) { return -x; }, [](double, double) { return -1.0; }>(ORVANE_LAYER_NEGATE, "Negate"),
    element<SELU::value, SELU::slope>(ORVANE_LAYER_SELU, "SELU"),
    element<GELU::value, GELU::slope>(ORVANE_LAYER_GELU, "GELU"),
    element<Erf::value, Erf::slope>(ORVANE_LAYER_ERF, "Erf"),
    element<Mish::value, Mish::slope>(ORVANE_LAYER_MISH, "Mish"),
    element<[](double x) { return x >= 0 ? x : kLeak * x; }, [](double x, double) { return x >= 0 ? 1 : kLeak; }>(ORVANE_LAYER_L_LINE, "LLine"),
    element<[](double x) { return x * tanhOf(x); },
            [](double x, double) { return tanhOf(x) + x * tanhSlope(x); }>(ORVANE_LAYER_LISHT, "LiSHT"),
    element<AntiSym::value, AntiSym::slope>(ORVANE_LAYER_ANTI_SYM, "AntiSym"),
    element<TanhExp::value, TanhExp::slope>(ORVANE_LAYER_X_TANH_EXP, "XTanhExp"),
    element<[](double x) { return withSign(quickLog1p(std::abs(x)), x); },
            [](double x, double) { return 1 / (1 + std::abs(x)); }>(ORVANE_LAYER_LOG_SIGN, "LogSign"),
    element<[](double x) { return withSign(quickExpm1(std::abs(x)), x); },
            [](double x, double) { return quickExp(std::abs(x)); }>(ORVANE_LAYER_EXP_SIGN, "ExpSign"),
    element<minusOrOne, zero>(ORVANE_LAYER_STEP_FUN, "StepFun"),
};
// clang-format on

}  // namespace

std::span<const LayerKind> elementKinds() { return kElementKinds; }

}  // namespace NetWork
