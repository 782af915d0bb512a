// SPDX-License-Identifier: Apache-2.0
// Normalisation keeps the value: random expressions, built by calls, against a plain evaluation of the same calls.
#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>
#include <random>

#include "sym/formula.h"

namespace {

using namespace host;

// What the host asked for, without any normal form.
struct Plan {
  uint8_t code;
  double number = 0;
  int variable = 0;
  std::vector<Plan> args;
};

constexpr const char* kNames[] = {"rx", "ry", "rz"};
double point[3];

double rounding(double x) {
  const double lower = std::floor(x);
  return x < 0 ? (x > lower + 0.5 ? lower + 1 : lower) : (lower + 0.5 > x ? lower : lower + 1);
}

struct Unary {
  uint8_t code;
  double (*f)(double);
};
const Unary kUnary[] = {
    {6, [](double x) { return x > 0   ? 1.0
                              : x < 0 ? -1.0
                                      : 0.0; }},
    {10, [](double x) { return std::sqrt(x); }},
    {11, [](double x) { return std::log(x); }},
    {12, [](double x) { return std::exp(x); }},
    {13, [](double x) { return std::abs(x); }},
    {20, [](double x) { return std::sin(x); }},
    {21, [](double x) { return std::cos(x); }},
    {22, [](double x) { return std::tan(x); }},
    {23, [](double x) { return 1 / std::tan(x); }},
    {24, [](double x) { return std::asin(x); }},
    {25, [](double x) { return std::acos(x); }},
    {26, [](double x) { return std::atan(x); }},
    {27, [](double x) { return std::atan(1 / x); }},
    {30, [](double x) { return std::sinh(x); }},
    {31, [](double x) { return std::cosh(x); }},
    {32, [](double x) { return std::tanh(x); }},
    {33, [](double x) { return 1 / std::tanh(x); }},
    {34, [](double x) { return std::asinh(x); }},
    {35, [](double x) { return std::acosh(x); }},
    {36, [](double x) { return std::atanh(x); }},
    {37, [](double x) { return std::atanh(1 / x); }},
    {38, [](double x) { return 1 / std::sin(x); }},
    {39, [](double x) { return 1 / std::cos(x); }},
    {40, [](double x) { return 1 / std::sinh(x); }},
    {41, [](double x) { return 1 / std::cosh(x); }},
    {42, [](double x) { return std::asin(1 / x); }},
    {43, [](double x) { return std::acos(1 / x); }},
    {44, [](double x) { return std::asinh(1 / x); }},
    {45, [](double x) { return std::acosh(1 / x); }},
    {50, [](double x) { return std::erf(x); }},
    {98, [](double x) { return std::erfc(x); }},
    {101, [](double x) { return x < 0 ? -std::log1p(-x) : std::log1p(x); }},
    {102, [](double x) { return x < 0 ? -std::expm1(-x) : std::expm1(x); }},
    {107, [](double x) { return x < 0 ? -1.0 : 1.0; }},
    {108, [](double x) { return std::round(x); }},
    {109, [](double x) { return std::floor(x); }},
    {110, [](double x) { return std::ceil(x); }},
    {111, rounding},
    {112, [](double x) { return x > 0 ? std::floor(x) : std::ceil(x); }},
    {155, [](double x) { return std::trunc(x); }},
    {156, [](double x) { return x - std::trunc(x); }},
};

class Random {
 public:
  explicit Random(uint32_t seed) : engine(seed) {}
  int below(int n) { return static_cast<int>(engine() % static_cast<uint32_t>(n)); }
  double between(double a, double b) { return a + (b - a) * (engine() * 0x1p-32); }

 private:
  std::mt19937 engine;
};

Plan randomPlan(Random& random, int depth) {
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
    if (random.below(4) == 0) return {Number, kNumbers[random.below(std::size(kNumbers))], 0, {}};
    return {Variable, 0, random.below(3), {}};
  }
  const int choice = random.below(20);
  if (choice < 10) {
    // Half of the time one of the kinds that have rules of their own.
    static const uint8_t kRuled[] = {Sin, Cos, Tan, Cot, Sinh, Cosh, Tanh, Coth, Sqrt, Ln, Exp};
    const uint8_t code =
        random.below(2) ? kRuled[random.below(std::size(kRuled))] : kUnary[random.below(std::size(kUnary))].code;
    Plan plan{code, 0, 0, {}};
    plan.args.push_back(randomPlan(random, depth - 1));
    return plan;
  }
  static const uint8_t kBinary[] = {Add, Mul, Pow, Subtract, Divide, Pow, Mul, Add, ConSelect};
  Plan plan{kBinary[random.below(std::size(kBinary))], 0, 0, {}};
  const int count = plan.code == ConSelect ? 3 : plan.code == Add || plan.code == Mul ? 2 + random.below(3) : 2;
  for (int i = 0; i < count; ++i) {
    // Equal parts, so that terms and factors meet their like.
    if (i > 0 && random.below(3) == 0)
      plan.args.push_back(plan.args[0]);
    else
      plan.args.push_back(randomPlan(random, depth - 1));
  }
  if (plan.code == Pow && random.below(3) != 0) plan.args[1] = {Number, kNumbers[random.below(11)], 0, {}};
  return plan;
}

Formula build(const Plan& plan) {
  if (plan.code == Number) return num(plan.number);
  if (plan.code == Variable) return var(kNames[plan.variable]);
  std::vector<Formula> args;
  for (const Plan& arg : plan.args) args.push_back(build(arg));
  if (plan.code == Subtract || plan.code == Divide) return call(plan.code, args[0], args[1]);
  return args.size() == 1 ? call(plan.code, args[0]) : call(plan.code, args);
}

// Plain value; every step is disturbed by about `noise`, so that several runs show how well the value is determined.
double evaluate(const Plan& plan, Random& random, double noise) {
  std::vector<double> v;
  for (const Plan& arg : plan.args) v.push_back(evaluate(arg, random, noise));
  double value = 0;
  switch (plan.code) {
    case Number:
      return plan.number;
    case Variable:
      return point[plan.variable];
    case Add:
      for (const double x : v) value += x;
      break;
    case Mul:
      value = 1;
      for (const double x : v) value *= x;
      break;
    case Subtract:
      value = v[0] - v[1];
      break;
    case Divide:
      value = v[0] / v[1];
      break;
    case Pow:
      value = std::pow(v[0], v[1]);
      break;
    case ConSelect:
      value = v[0] < 0 ? v[1] : v[2];
      break;
    default:
      value = std::find_if(std::begin(kUnary), std::end(kUnary), [&](const Unary& u) {
                return u.code == plan.code;
              })->f(v[0]);
  }
  return noise == 0 ? value : value * (1 + noise * random.between(-1, 1)) + noise * noise * random.between(-1, 1);
}

bool allFinite(const Plan& plan, Random& random) {
  if (!std::isfinite(evaluate(plan, random, 0))) return false;
  return std::all_of(plan.args.begin(), plan.args.end(), [&](const Plan& arg) { return allFinite(arg, random); });
}

std::string describe(const Plan& plan) {
  if (plan.code == Number) return std::to_string(plan.number);
  if (plan.code == Variable) return kNames[plan.variable];
  std::string text = std::to_string(plan.code) + "(";
  for (const Plan& arg : plan.args) text += describe(arg) + " ";
  return text + ")";
}

TEST(RandomExpression, NormalFormKeepsTheValue) {
  Random random(20240611);
  int compared = 0, undefined = 0;
  for (int round = 0; round < 20000; ++round) {
    const Plan plan = randomPlan(random, 1 + round % 5);
    const Formula node = build(plan);
    for (int at = 0; at < 3; ++at) {
      for (int i = 0; i < 3; ++i) {
        point[i] = random.between(at == 0 ? 0.05 : -2.5, at == 0 ? 0.95 : 2.5);
        sym_setSymValue(kNames[i], point[i]);
      }
      if (!allFinite(plan, random)) {
        ++undefined;
        continue;
      }
      constexpr double kNoise = 1e-12;
      double least = evaluate(plan, random, kNoise), most = least;
      bool sound = std::isfinite(least);
      for (int i = 0; i < 5 && sound; ++i) {
        const double value = evaluate(plan, random, kNoise);
        sound = std::isfinite(value);
        least = std::min(least, value);
        most = std::max(most, value);
      }
      if (!sound || most - least > 1e-4 * (1 + std::abs(least))) {
        ++undefined;
        continue;
      }
      const double expected = evaluate(plan, random, 0), value = valueOf(node);
      ++compared;
      ASSERT_LE(std::abs(value - expected), 20 * (most - least) + 1e-11 * (1 + std::abs(expected)))
          << describe(plan) << " at " << point[0] << " " << point[1] << " " << point[2] << ": " << value << " for "
          << expected;
    }
    sym_clearTempVar();
  }
  std::cout << compared << " values compared, " << undefined << " undefined or undetermined\n";
  EXPECT_GT(compared, 20000);
}

}  // namespace
