// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>
#include <vector>

#include "sym/formula.h"

/// Random expressions: what a host asks for, as calls of the library and in plain arithmetic.
namespace host {

/// Value, first and second derivative along the first variable, by the rules of truncated power series.
struct Jet {
  double v, d = 0, dd = 0;

  /// f(this), of which f, f' and f'' at v are given.
  Jet through(double f, double df, double ddf) const { return {f, df * d, ddf * d * d + df * dd}; }
  bool isFinite() const { return std::isfinite(v) && std::isfinite(d) && std::isfinite(dd); }
};

inline Jet operator+(Jet a, Jet b) { return {a.v + b.v, a.d + b.d, a.dd + b.dd}; }
inline Jet operator-(Jet a) { return {-a.v, -a.d, -a.dd}; }
inline Jet operator*(Jet a, Jet b) {
  return {a.v * b.v, a.d * b.v + a.v * b.d, a.dd * b.v + 2 * a.d * b.d + a.v * b.dd};
}
inline Jet inverse(Jet a) { return a.through(1 / a.v, -1 / (a.v * a.v), 2 / (a.v * a.v * a.v)); }
inline Jet pow(Jet a, Jet e) {
  const double p = std::pow(a.v, e.v);
  if (e.d == 0 && e.dd == 0) {
    const double slope = e.v == 0 ? 0 : e.v * std::pow(a.v, e.v - 1);
    return a.through(p, slope, e.v == 0 || e.v == 1 ? 0 : e.v * (e.v - 1) * std::pow(a.v, e.v - 2));
  }
  const Jet exponent = e * a.through(std::log(a.v), 1 / a.v, -1 / (a.v * a.v));
  return exponent.through(p, p, p);
}

/// The kinds of one argument that have a plain formula, and the codes that stand for their reciprocals.
struct Unary {
  uint8_t code;
  Jet (*f)(Jet);
};

namespace plain {
template <double (*f)(double)>
Jet steps(Jet u) {
  return {f(u.v)};
}
template <Jet (*f)(Jet)>
Jet reciprocal(Jet u) {
  return inverse(f(u));
}
template <Jet (*f)(Jet)>
Jet ofReciprocal(Jet u) {
  return f(inverse(u));
}

inline double sign(double x) { return x > 0 ? 1.0 : x < 0 ? -1.0 : 0.0; }
inline double step(double x) { return x < 0 ? -1 : 1; }
inline double toZero(double x) { return x > 0 ? std::floor(x) : std::ceil(x); }
inline double fraction(double x) { return x - std::trunc(x); }
inline double rounding(double x) {
  const double lower = std::floor(x);
  return x < 0 ? (x > lower + 0.5 ? lower + 1 : lower) : (lower + 0.5 > x ? lower : lower + 1);
}

inline Jet abs(Jet u) { return u.v < 0 ? -u : u; }
inline Jet sqrt(Jet u) { return u.through(std::sqrt(u.v), 0.5 / std::sqrt(u.v), -0.25 / (u.v * std::sqrt(u.v))); }
inline Jet ln(Jet u) { return u.through(std::log(u.v), 1 / u.v, -1 / (u.v * u.v)); }
inline Jet exp(Jet u) { return u.through(std::exp(u.v), std::exp(u.v), std::exp(u.v)); }
inline Jet sin(Jet u) { return u.through(std::sin(u.v), std::cos(u.v), -std::sin(u.v)); }
inline Jet cos(Jet u) { return u.through(std::cos(u.v), -std::sin(u.v), -std::cos(u.v)); }
inline Jet tan(Jet u) {
  const double t = std::tan(u.v), q = 1 + t * t;
  return u.through(t, q, 2 * t * q);
}
inline Jet asin(Jet u) {
  const double q = 1 - u.v * u.v, r = std::sqrt(q);
  return u.through(std::asin(u.v), 1 / r, u.v / (q * r));
}
inline Jet acos(Jet u) {
  const double q = 1 - u.v * u.v, r = std::sqrt(q);
  return u.through(std::acos(u.v), -1 / r, -u.v / (q * r));
}
inline Jet atan(Jet u) {
  const double q = 1 + u.v * u.v;
  return u.through(std::atan(u.v), 1 / q, -2 * u.v / (q * q));
}
inline Jet sinh(Jet u) { return u.through(std::sinh(u.v), std::cosh(u.v), std::sinh(u.v)); }
inline Jet cosh(Jet u) { return u.through(std::cosh(u.v), std::sinh(u.v), std::cosh(u.v)); }
inline Jet tanh(Jet u) {
  const double t = std::tanh(u.v), q = 1 / (std::cosh(u.v) * std::cosh(u.v));
  return u.through(t, q, -2 * t * q);
}
inline Jet asinh(Jet u) {
  const double q = 1 + u.v * u.v, r = std::sqrt(q);
  return u.through(std::asinh(u.v), 1 / r, -u.v / (q * r));
}
inline Jet acosh(Jet u) {
  const double q = u.v * u.v - 1, r = std::sqrt(q);
  return u.through(std::acosh(u.v), 1 / r, -u.v / (q * r));
}
inline Jet atanh(Jet u) {
  const double q = 1 - u.v * u.v;
  return u.through(std::atanh(u.v), 1 / q, 2 * u.v / (q * q));
}
inline Jet erf(Jet u) {
  const double g = 1.1283791670955126 * std::exp(-u.v * u.v);
  return u.through(std::erf(u.v), g, -2 * u.v * g);
}
inline Jet erfc(Jet u) { return {std::erfc(u.v), -erf(u).d, -erf(u).dd}; }
inline Jet logSign(Jet u) {
  const double q = 1 + std::abs(u.v), s = step(u.v);
  return u.through(s * std::log1p(std::abs(u.v)), 1 / q, -s / (q * q));
}
inline Jet expSign(Jet u) {
  const double e = std::exp(std::abs(u.v)), s = step(u.v);
  return u.through(s * std::expm1(std::abs(u.v)), e, s * e);
}
}  // namespace plain

inline constexpr Unary kUnary[] = {
    {ORVANE_KIND_SIGN, plain::steps<plain::sign>},
    {ORVANE_KIND_SQRT, plain::sqrt},
    {ORVANE_KIND_LN, plain::ln},
    {ORVANE_KIND_EXP, plain::exp},
    {ORVANE_KIND_ABS, plain::abs},
    {ORVANE_KIND_SIN, plain::sin},
    {ORVANE_KIND_COS, plain::cos},
    {ORVANE_KIND_TAN, plain::tan},
    {ORVANE_KIND_COT, plain::reciprocal<plain::tan>},
    {ORVANE_KIND_ASIN, plain::asin},
    {ORVANE_KIND_ACOS, plain::acos},
    {ORVANE_KIND_ATAN, plain::atan},
    {ORVANE_KIND_ACOT, plain::ofReciprocal<plain::atan>},
    {ORVANE_KIND_SINH, plain::sinh},
    {ORVANE_KIND_COSH, plain::cosh},
    {ORVANE_KIND_TANH, plain::tanh},
    {ORVANE_KIND_COTH, plain::reciprocal<plain::tanh>},
    {ORVANE_KIND_ASINH, plain::asinh},
    {ORVANE_KIND_ACOSH, plain::acosh},
    {ORVANE_KIND_ATANH, plain::atanh},
    {ORVANE_KIND_ACOTH, plain::ofReciprocal<plain::atanh>},
    {ORVANE_KIND_CSC, plain::reciprocal<plain::sin>},
    {ORVANE_KIND_SEC, plain::reciprocal<plain::cos>},
    {ORVANE_KIND_CSCH, plain::reciprocal<plain::sinh>},
    {ORVANE_KIND_SECH, plain::reciprocal<plain::cosh>},
    {ORVANE_KIND_ACSC, plain::ofReciprocal<plain::asin>},
    {ORVANE_KIND_ASEC, plain::ofReciprocal<plain::acos>},
    {ORVANE_KIND_ACSCH, plain::ofReciprocal<plain::asinh>},
    {ORVANE_KIND_ASECH, plain::ofReciprocal<plain::acosh>},
    {ORVANE_KIND_ERF, plain::erf},
    {ORVANE_KIND_ERFC, plain::erfc},
    {ORVANE_KIND_LOG_SIGN, plain::logSign},
    {ORVANE_KIND_EXP_SIGN, plain::expSign},
    {ORVANE_KIND_STEP_FUN, plain::steps<plain::step>},
    {ORVANE_KIND_ROUND, plain::steps<std::round>},
    {ORVANE_KIND_ROUND_DOWN, plain::steps<std::floor>},
    {ORVANE_KIND_ROUND_UP, plain::steps<std::ceil>},
    {ORVANE_KIND_ROUNDING, plain::steps<plain::rounding>},
    {ORVANE_KIND_ROUND_ZERO, plain::steps<plain::toZero>},
    {ORVANE_KIND_TRUNCATE, plain::steps<std::trunc>},
    {ORVANE_KIND_FRAC, plain::steps<plain::fraction>},
};

class Random {
 public:
  explicit Random(uint32_t seed) : engine(seed) {}
  int below(int n) { return static_cast<int>(engine() % static_cast<uint32_t>(n)); }
  double between(double a, double b) { return a + (b - a) * (engine() * 0x1p-32); }
  template <class List>
  auto of(const List& list) {
    return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
  }

 private:
  std::mt19937 engine;
};

inline constexpr const char* kNames[] = {"rx", "ry", "rz"};

/// What the host asked for, without any normal form.
struct Plan {
  uint8_t code;
  double number = 0;
  std::size_t variable = 0;
  std::vector<Plan> args{};

  Formula build() const {
    if (code == Number) return number;
    if (code == Variable) return kNames[variable];
    std::vector<Formula> built;
    for (const Plan& arg : args) built.push_back(arg.build());
    if (code == Subtract || code == Divide) return call(code, built[0], built[1]);
    return built.size() == 1 ? call(code, built[0]) : call(code, built);
  }

  /// Plain value at a point; every step is disturbed by about `noise`, so that several runs show how well the value is
  /// determined. Not finite where a part is not.
  Jet at(const double* point, Random& random, double noise) const {
    if (code == Number) return {number};
    if (code == Variable) return {point[variable], variable == 0 ? 1.0 : 0.0};
    std::vector<Jet> v;
    for (const Plan& arg : args) {
      v.push_back(arg.at(point, random, noise));
      if (!std::isfinite(v.back().v)) return {NAN};
    }
    Jet result = v[0];
    if (code == Add || code == Mul)
      for (std::size_t i = 1; i < v.size(); ++i) result = code == Add ? result + v[i] : result * v[i];
    else if (code == Subtract)
      result = v[0] + -v[1];
    else if (code == Divide)
      result = v[0] * inverse(v[1]);
    else if (code == Pow)
      result = pow(v[0], v[1]);
    else if (code == ConSelect)
      result = v[0].v < 0 ? v[1] : v[2];
    else
      result = std::ranges::find(kUnary, code, &Unary::code)->f(v[0]);
    for (double* part : {&result.v, &result.d, &result.dd})
      if (noise != 0) *part = *part * (1 + noise * random.between(-1, 1)) + noise * noise * random.between(-1, 1);
    return result;
  }
};

inline Plan randomPlan(Random& random, int depth) {
  static const double kNumbers[] = {0,
                                    1,
                                    -1,
                                    2,
                                    -2,
                                    3,
                                    0.5,
                                    -0.5,
                                    1.5,
                                    -3,
                                    4,
                                    0.3,
                                    -0.7,
                                    1.5707963267948966,
                                    3.141592653589793,
                                    -1.5707963267948966,
                                    4.71238898038469};
  if (depth == 0 || random.below(12) == 0) {
    if (random.below(4) == 0) return {Number, random.of(kNumbers)};
    return {Variable, 0, static_cast<std::size_t>(random.below(3))};
  }
  if (random.below(20) < 10) {
    // Half of the time one of the kinds that have rules of their own.
    static const uint8_t kRuled[] = {Sin, Cos, Tan, Cot, Sinh, Cosh, Tanh, Coth, Sqrt, Ln, Exp};
    const uint8_t code = random.below(2) ? random.of(kRuled) : random.of(kUnary).code;
    return {code, 0, 0, {randomPlan(random, depth - 1)}};
  }
  static const uint8_t kSeveral[] = {Add, Mul, Pow, Subtract, Divide, Pow, Mul, Add, ConSelect};
  Plan plan{random.of(kSeveral)};
  const int count = plan.code == ConSelect ? 3 : plan.code == Add || plan.code == Mul ? 2 + random.below(3) : 2;
  // Equal parts, so that terms and factors meet their like.
  for (int i = 0; i < count; ++i)
    plan.args.push_back(i > 0 && random.below(3) == 0 ? plan.args[0] : randomPlan(random, depth - 1));
  if (plan.code == Pow && random.below(3) != 0) plan.args[1] = {Number, kNumbers[random.below(11)]};
  return plan;
}

}  // namespace host
