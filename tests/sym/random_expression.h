// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <map>
#include <numbers>
#include <random>
#include <vector>

#include "support/functions.h"
#include "sym/formula.h"

/// Random expressions: what a host asks for, as calls of the library and in plain arithmetic.
namespace host {

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

/// The functions behind the kinds that random expressions take, by the list of functions.
inline const std::map<uint8_t, functions::Call>& plainFunctions() {
  static const std::map<uint8_t, functions::Call> table = [] {
    std::map<uint8_t, functions::Call> calls;
    for (const functions::Function& f : functions::all())
      if (f.kindCode != functions::kNone && (f.family == "elementary" || f.family == "error"))
        calls[static_cast<uint8_t>(f.kindCode)] = functions::callOf(f);
    calls[Subtract] = [](const double* v) { return v[0] - v[1]; };
    calls[Divide] = [](const double* v) { return v[0] / v[1]; };
    // Codes that stand for the reciprocal of a kind, and for a kind of the reciprocal.
    for (const auto& [code, kind] :
         {std::pair{ORVANE_KIND_CSC, Sin}, {ORVANE_KIND_SEC, Cos}, {ORVANE_KIND_CSCH, Sinh}, {ORVANE_KIND_SECH, Cosh}})
      calls[static_cast<uint8_t>(code)] = [f = calls.at(kind)](const double* v) { return 1 / f(v); };
    for (const auto& [code, kind] : {std::pair{ORVANE_KIND_ACSC, Asin},
                                     {ORVANE_KIND_ASEC, Acos},
                                     {ORVANE_KIND_ACSCH, Asinh},
                                     {ORVANE_KIND_ASECH, Acosh}})
      calls[static_cast<uint8_t>(code)] = [f = calls.at(kind)](const double* v) {
        const double inverse = 1 / v[0];
        return f(&inverse);
      };
    return calls;
  }();
  return table;
}

inline constexpr uint8_t kUnary[] = {
    ORVANE_KIND_SIGN,       ORVANE_KIND_SQRT,     ORVANE_KIND_LN,       ORVANE_KIND_EXP,        ORVANE_KIND_ABS,
    ORVANE_KIND_SIN,        ORVANE_KIND_COS,      ORVANE_KIND_TAN,      ORVANE_KIND_COT,        ORVANE_KIND_ASIN,
    ORVANE_KIND_ACOS,       ORVANE_KIND_ATAN,     ORVANE_KIND_ACOT,     ORVANE_KIND_SINH,       ORVANE_KIND_COSH,
    ORVANE_KIND_TANH,       ORVANE_KIND_COTH,     ORVANE_KIND_ASINH,    ORVANE_KIND_ACOSH,      ORVANE_KIND_ATANH,
    ORVANE_KIND_ACOTH,      ORVANE_KIND_CSC,      ORVANE_KIND_SEC,      ORVANE_KIND_CSCH,       ORVANE_KIND_SECH,
    ORVANE_KIND_ACSC,       ORVANE_KIND_ASEC,     ORVANE_KIND_ACSCH,    ORVANE_KIND_ASECH,      ORVANE_KIND_ERF,
    ORVANE_KIND_ERFC,       ORVANE_KIND_LOG_SIGN, ORVANE_KIND_EXP_SIGN, ORVANE_KIND_STEP_FUN,   ORVANE_KIND_ROUND,
    ORVANE_KIND_ROUND_DOWN, ORVANE_KIND_ROUND_UP, ORVANE_KIND_ROUNDING, ORVANE_KIND_ROUND_ZERO, ORVANE_KIND_TRUNCATE,
    ORVANE_KIND_FRAC,
};

/// What the host asked for, without any normal form.
struct Plan {
  uint8_t code;
  double number = 0;
  std::size_t variable = 0;
  std::vector<Plan> args{};

  bool has(uint8_t kind) const {
    return code == kind || std::ranges::any_of(args, [kind](const Plan& arg) { return arg.has(kind); });
  }

  Formula build() const {
    if (code == Number) return number;
    if (code == Variable) return kNames[variable];
    std::vector<Formula> built;
    for (const Plan& arg : args) built.push_back(arg.build());
    if (code == Subtract || code == Divide) return call(code, built[0], built[1]);
    return built.size() == 1 ? call(code, built[0]) : call(code, built);
  }

  /// Plain value at a point; every step is disturbed by about `noise`, so that several runs show how well the value is
  /// determined. NaN where a part is not finite.
  double at(const double* point, Random& random, double noise) const {
    if (code == Number) return number;
    if (code == Variable) return point[variable];
    std::vector<double> v;
    for (const Plan& arg : args) {
      v.push_back(arg.at(point, random, noise));
      if (!std::isfinite(v.back())) return NAN;
    }
    double result = v[0];
    if (code == Add || code == Mul)
      for (std::size_t i = 1; i < v.size(); ++i) result = code == Add ? result + v[i] : result * v[i];
    else
      result = plainFunctions().at(code)(v.data());
    if (noise == 0) return result;
    return result * (1 + noise * random.between(-1, 1)) + noise * noise * random.between(-1, 1);
  }
};

inline Plan randomPlan(Random& random, int depth) {
  constexpr double kPi = std::numbers::pi;
  static const auto kNumbers = std::to_array(
      {0.0, 1.0, -1.0, 2.0, -2.0, 3.0, 0.5, -0.5, 1.5, -3.0, 4.0, 0.3, -0.7, kPi / 2, kPi, -kPi / 2, 3 * kPi / 2});
  if (depth == 0 || random.below(12) == 0) {
    if (random.below(4) == 0) return {Number, random.of(kNumbers)};
    return {Variable, 0, static_cast<std::size_t>(random.below(3))};
  }
  if (random.below(20) < 10) {
    // Half of the time one of the kinds that have rules of their own.
    static const uint8_t kRuled[] = {Sin, Cos, Tan, Cot, Sinh, Cosh, Tanh, Coth, Sqrt, Ln, Exp};
    const uint8_t code = random.below(2) ? random.of(kRuled) : random.of(kUnary);
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
