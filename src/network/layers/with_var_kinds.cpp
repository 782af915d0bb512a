// SPDX-License-Identifier: Apache-2.0
#include "network/layers/activation.h"
#include "network/layers/formula.h"
#include "network/layers/pair_formulas.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

struct SquaredDifference {
  static double value(double x, double a) { return (x - a) * (x - a); }
  static double byX(double x, double a, double) { return 2 * (x - a); }
  static double byA(double x, double a, double) { return -2 * (x - a); }
};

struct Swish {
  static double value(double x, double a) { return x * sigmoid(x * a); }
  static double byX(double x, double a, double) {
    const double t = x * a;
    return sigmoid(t) + t * sigmoidSlope(t);
  }
  static double byA(double x, double a, double) { return x * (x * sigmoidSlope(x * a)); }
};

struct ELU {
  static double value(double x, double a) {
    const double below = a * quickExpm1(x);
    return x >= 0 ? x : below;
  }
  static double byX(double x, double a, double) {
    const double below = a * quickExp(x);
    return x >= 0 ? 1 : below;
  }
  static double byA(double x, double, double) {
    const double below = quickExpm1(x);
    return x >= 0 ? 0 : below;
  }
};

struct ISRLU {
  /// sqrt(1 + t^2); beyond 1e8 it is |t|, whose square may overflow.
  static double root(double t) {
    const double size = std::abs(t), near = std::sqrt(1 + t * t);
    return size > 1e8 ? size : near;
  }
  static double value(double x, double a) {
    const double below = x / root(x * a);
    return x >= 0 ? x : below;
  }
  static double byX(double x, double a, double) {
    const double w = 1 / root(x * a), below = w * w * w;
    return x >= 0 ? 1 : below;
  }
  // -x (a x) x/root^3, each factor in range
  static double byA(double x, double a, double) {
    const double t = x * a, r = root(t), below = -(x / r) * (t / r) * (x / r);
    return x >= 0 ? 0 : below;
  }
};

struct PReLU {
  static double value(double x, double a) { return x >= 0 ? x : x * a; }
  static double byX(double x, double a, double) { return x >= 0 ? 1 : a; }
  static double byA(double x, double, double) { return x >= 0 ? 0 : x; }
};

/// Square non-linearity: two parabolas that meet at 0 and saturate at -c and c, c = |a|.
struct SQNL {
  static double value(double x, double a) {
    const double c = std::abs(a), v = x / c, inside = v * (2 - std::abs(v));
    return x >= c ? 1 : x <= -c ? -1 : inside;
  }
  static double byX(double x, double a, double) {
    const double c = std::abs(a), inside = 2 * (1 - std::abs(x) / c) / c;
    return std::abs(x) < c ? inside : 0;
  }
  static double byA(double x, double a, double) {
    const double c = std::abs(a), v = x / c, inside = -2 * v * (1 - std::abs(v)) / a;
    return std::abs(x) < c ? inside : 0;
  }
};

struct SLine {
  static double value(double x, double a) { return x * (std::abs(x) / (std::abs(x * a) + 1)); }
  static double byX(double x, double a, double) {
    const double t = std::abs(x * a), w = 1 / (t + 1);
    return std::abs(x) * w * (1 + w);
  }
  static double byA(double x, double a, double) {
    const double r = x / (std::abs(x * a) + 1);
    return -signOf(a) * std::abs(x) * r * std::abs(r);
  }
};

/// SQNL with the power p = |b| of the rise.
struct SQNL2 {
  static double value(double x, double a, double b) {
    const double c = std::abs(a), v = std::abs(x) / c;
    if (x >= c) return 1;
    if (x <= -c) return -1;
    return x == 0 ? 0 : withSign(std::pow(v, std::abs(b)) * (2 - v), x);
  }
  /// Derivative by v = |x|/c.
  static double slope(double v, double p) { return p * std::pow(v, p - 1) * (2 - v) - std::pow(v, p); }
  static double byX(double x, double a, double b, double) {
    const double c = std::abs(a), v = std::abs(x) / c;
    return v < 1 ? slope(v, std::abs(b)) / c : 0;
  }
  static double byA(double x, double a, double b, double) {
    const double v = std::abs(x) / std::abs(a);
    return v < 1 && v > 0 ? -withSign(v, x) / a * slope(v, std::abs(b)) : 0;
  }
  static double byB(double x, double a, double b, double y) {
    const double v = std::abs(x) / std::abs(a);
    return v < 1 && v > 0 ? signOf(b) * std::log(v) * y : 0;
  }
};

/// Multi-parameter exponential linear unit (Li et al. 2018).
struct MPELU {
  static double value(double x, double a, double b) {
    const double below = a * quickExpm1(std::abs(b) * x);
    return x < 0 ? below : x;
  }
  static double byX(double x, double a, double b, double) {
    const double rate = std::abs(b), below = a * rate * quickExp(rate * x);
    return x < 0 ? below : 1;
  }
  static double byA(double x, double, double b, double) {
    const double below = quickExpm1(std::abs(b) * x);
    return x < 0 ? below : 0;
  }
  static double byB(double x, double a, double b, double) {
    const double below = a * x * signOf(b) * quickExp(std::abs(b) * x);
    return x < 0 ? below : 0;
  }
};

/// x (a f(x) + b), given f and its derivative.
template <auto f, auto slope>
struct Wave {
  static double value(double x, double a, double b) { return x * (a * f(x) + b); }
  static double byX(double x, double a, double b, double) { return a * f(x) + b + x * a * slope(x); }
  static double byA(double x, double, double, double) { return x * f(x); }
  static double byB(double x, double, double, double) { return x; }
};

using XSin = Wave<[](double x) { return std::sin(x); }, [](double x) { return std::cos(x); }>;
using XCos = Wave<[](double x) { return std::cos(x); }, [](double x) { return -std::sin(x); }>;
using XSin2 = Wave<[](double x) { return std::sin(x) * std::sin(x); }, [](double x) { return std::sin(2 * x); }>;
using XCos2 = Wave<[](double x) { return std::cos(x) * std::cos(x); }, [](double x) { return -std::sin(2 * x); }>;

/// Density of Weibull's distribution with rate a and shape b, continued as an odd function; with z = a |x|
/// f = a b z^(b-1) exp(-z^b). At 0 the value is 0 and so is what has no finite limit.
struct Weibull {
  /// term(z, z^b) exp(-z^b); 0 where the decay is, whatever the powers.
  template <class Term>
  static double decaying(double x, double a, double b, const Term& term) {
    const double z = std::abs(x) * a, q = std::pow(z, b), decay = std::exp(-q);
    return x == 0 || decay == 0 ? 0 : term(z, q) * decay;
  }
  static double value(double x, double a, double b) {
    return withOdd(x, decaying(x, a, b, [=](double z, double) { return a * b * std::pow(z, b - 1); }));
  }
  static double byX(double x, double a, double b, double) {
    if (x == 0) return b == 2 ? 2 * a * a : 0;
    return decaying(x, a, b, [=](double z, double q) { return a * a * b * std::pow(z, b - 2) * (b - 1 - b * q); });
  }
  static double byA(double x, double a, double b, double) {
    return withOdd(x, decaying(x, a, b, [=](double z, double q) { return b * b * std::pow(z, b - 1) * (1 - q); }));
  }
  static double byB(double x, double a, double b, double) {
    return withOdd(x, decaying(x, a, b, [=](double z, double q) {
                     return a * std::pow(z, b - 1) * (1 + b * std::log(z) * (1 - q));
                   }));
  }
  static double withOdd(double x, double size) { return x < 0 ? -size : size; }
};

struct AMulXB {
  static double value(double x, double a, double b) { return a * std::pow(x, b); }
  static double byX(double x, double a, double b, double) { return a * Power::byX(x, b, 0); }
  static double byA(double x, double, double b, double) { return std::pow(x, b); }
  static double byB(double x, double, double b, double y) { return Power::byA(x, b, y); }
};

/// One arch of a sine between two straight lines.
struct XSin3 {
  static constexpr double kRate = 0.09817477042468103;  // pi/32
  static constexpr double kEdge = 16;
  static double value(double x, double a, double b) {
    if (x < -kEdge) return (x + kEdge) * a - 1;
    return x > kEdge ? (x - kEdge) * b + 1 : std::sin(x * kRate);
  }
  static double byX(double x, double a, double b, double) {
    if (x < -kEdge) return a;
    return x > kEdge ? b : kRate * std::cos(x * kRate);
  }
  static double byA(double x, double, double, double) { return x < -kEdge ? x + kEdge : 0; }
  static double byB(double x, double, double, double) { return x > kEdge ? x - kEdge : 0; }
};

struct XSin4 {
  static double value(double x, double a, double b) { return std::abs(x) * XSin3::value(x, a, b); }
  static double byX(double x, double a, double b, double) {
    return signOf(x) * XSin3::value(x, a, b) + std::abs(x) * XSin3::byX(x, a, b, 0);
  }
  static double byA(double x, double a, double b, double) { return std::abs(x) * XSin3::byA(x, a, b, 0); }
  static double byB(double x, double a, double b, double) { return std::abs(x) * XSin3::byB(x, a, b, 0); }
};

constexpr LayerKind kWithVarKinds[] = {
    withVar<Add>(ORVANE_LAYER_X_ADD_A, "x_add_a"),
    withVar<Subtract>(ORVANE_LAYER_X_SUB_A, "x_sub_a"),
    withVar<SquaredDifference>(ORVANE_LAYER_X_SUB_A_SQUARED, "x_sub_a_squared"),
    withVar<Exchanged<Subtract>>(ORVANE_LAYER_A_SUB_X, "a_sub_x"),
    withVar<Multiply>(ORVANE_LAYER_X_MUL_A, "x_mul_a"),
    withVar<Divide>(ORVANE_LAYER_X_DIV_A, "x_div_a"),
    withVar<Exchanged<Divide>>(ORVANE_LAYER_A_DIV_X, "a_div_x"),
    withVar<Power>(ORVANE_LAYER_X_POW_A, "x_pow_a"),
    withVar<Exchanged<Power>>(ORVANE_LAYER_A_POW_X, "a_pow_x"),
    withVar<Swish>(ORVANE_LAYER_SWISH, "Swish"),
    withVar<ELU>(ORVANE_LAYER_ELU, "ELU"),
    withVar<ISRLU>(ORVANE_LAYER_ISRLU, "ISRLU"),
    withVar<PReLU>(ORVANE_LAYER_PRELU, "PReLu"),
    withVar<SQNL>(ORVANE_LAYER_SQNL, "SQNL"),
    withVar<SLine>(ORVANE_LAYER_S_LINE, "SLine"),
    withTwoVars<SQNL2>(ORVANE_LAYER_SQNL2, "SQNL2"),
    withTwoVars<MPELU>(ORVANE_LAYER_MPELU, "MPELU"),
    withTwoVars<XSin>(ORVANE_LAYER_X_SIN, "XSin"),
    withTwoVars<XCos>(ORVANE_LAYER_X_COS, "XCos"),
    withTwoVars<Weibull>(ORVANE_LAYER_WEIBULL, "Weibull"),
    withTwoVars<AMulXB>(ORVANE_LAYER_A_MUL_XB, "AMulXB"),
    withTwoVars<XSin2>(ORVANE_LAYER_X_SIN2, "XSin2"),
    withTwoVars<XCos2>(ORVANE_LAYER_X_COS2, "XCos2"),
    withTwoVars<XSin3>(ORVANE_LAYER_X_SIN3, "XSin3"),
    withTwoVars<XSin4>(ORVANE_LAYER_X_SIN4, "XSin4"),
};

}  // namespace

std::span<const LayerKind> withVarKinds() { return kWithVarKinds; }

}  // namespace NetWork
