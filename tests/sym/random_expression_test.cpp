// SPDX-License-Identifier: Apache-2.0
// Random expressions, built by calls, against plain arithmetic of the same calls: values, derivatives, texts.
#include "sym/random_expression.h"

#include <array>
#include <functional>
#include <iostream>

#include "sym/text_reader.h"

namespace {

using namespace host;

/// What plain arithmetic says of a plan at a point: the result, and how far it moves when every step is disturbed.
struct Expected {
  Expected(const Plan& plan, const double* point, Random& random) : exact(plan.at(point, random, 0)) {
    constexpr double kNoise = 1e-12;
    for (int i = 0; i < 6; ++i) {
      const Jet jet = plan.at(point, random, kNoise);
      spread = {std::max(spread.v, std::abs(jet.v - exact.v)), std::max(spread.d, std::abs(jet.d - exact.d)),
                std::max(spread.dd, std::abs(jet.dd - exact.dd))};
      sound = sound && std::isfinite(jet.v);
      smooth = smooth && jet.isFinite();
    }
    sound = sound && std::isfinite(exact.v) && determined(exact.v, spread.v);
    smooth = smooth && sound && exact.isFinite() && determined(exact.d, spread.d) && determined(exact.dd, spread.dd);
  }

  static bool determined(double value, double spread) { return spread <= 1e-4 * (1 + std::abs(value)); }
  static double bound(double value, double spread) { return 20 * spread + 1e-11 * (1 + std::abs(value)); }

  Jet exact, spread{0, 0, 0};
  bool sound = true, smooth = true;  ///< the value is determined; the derivatives, too
};

void setPoint(const std::array<double, 3>& point) {
  for (std::size_t i = 0; i < 3; ++i) {
    sym_createBaseSymVar(kNames[i]);
    sym_setSymValue(kNames[i], point[i]);
  }
}

std::array<double, 3> randomPoint(Random& random, double low, double high) {
  return {random.between(low, high), random.between(low, high), random.between(low, high)};
}

TEST(RandomExpression, NormalFormKeepsTheValue) {
  Random random(20240611);
  int compared = 0, undefined = 0;
  for (int round = 0; round < 20000; ++round) {
    const Plan plan = randomPlan(random, 1 + round % 5);
    const Formula node = plan.build();
    for (int at = 0; at < 3; ++at) {
      const auto point = at == 0 ? randomPoint(random, 0.05, 0.95) : randomPoint(random, -2.5, 2.5);
      const Expected expected(plan, point.data(), random);
      if (!expected.sound) {
        ++undefined;
        continue;
      }
      setPoint(point);
      ++compared;
      ASSERT_NEAR(valueOf(node), expected.exact.v, Expected::bound(expected.exact.v, expected.spread.v))
          << textOf(node) << " at " << point[0] << " " << point[1] << " " << point[2];
    }
    sym_clearTempVar();
  }
  std::cout << compared << " values compared, " << undefined << " undefined or undetermined\n";
  EXPECT_GT(compared, 20000);
}

TEST(RandomExpression, FirstAndSecondDerivatives) {
  Random random(7);
  int compared = 0;
  for (int round = 0; round < 8000; ++round) {
    const Plan plan = randomPlan(random, 1 + round % 4);
    const auto point = randomPoint(random, 0.05, 1.9);
    const Expected expected(plan, point.data(), random);
    if (!expected.smooth || (expected.exact.d == 0 && round % 8 != 0)) continue;
    setPoint(point);
    const Formula f = plan.build();
    EXPECT_NEAR(Derivative(f, "rx").value(), expected.exact.d, Expected::bound(expected.exact.d, expected.spread.d))
        << textOf(f) << " at " << point[0] << " " << point[1] << " " << point[2];
    EXPECT_NEAR(Derivative(f, "rx", 2).value(), expected.exact.dd,
                Expected::bound(expected.exact.dd, expected.spread.dd))
        << textOf(f) << " at " << point[0] << " " << point[1] << " " << point[2];
    sym_clearTempVar();
    ++compared;
  }
  EXPECT_GT(compared, 1500);
}

/// Brackets nest and close, no sign follows another, no group is empty.
std::string faultOf(const std::string& latex) {
  std::string open;
  for (std::size_t i = 0; i < latex.size(); ++i) {
    const char c = latex[i], next = i + 1 < latex.size() ? latex[i + 1] : '\0';
    if (c == '{' || c == '(') {
      open += c;
      if (next == '}' || next == ')') return "an empty group";
    }
    if (c == '}' || c == ')') {
      if (open.empty() || open.back() != (c == '}' ? '{' : '(')) return "brackets that do not match";
      open.pop_back();
    }
    if ((c == '+' || c == '-') && (next == '+' || next == '-')) return "two signs";
  }
  return open.empty() ? "" : "an open bracket";
}

// What is written means what it was written from, and so do the texts of derivatives.
TEST(RandomExpression, TextsReadBack) {
  Random random(11);
  int checked = 0;
  for (int round = 0; round < 4000; ++round) {
    const Plan plan = randomPlan(random, 1 + round % 4);
    const auto point = randomPoint(random, 0.05, 1.9);
    const Expected expected(plan, point.data(), random);
    if (!expected.smooth) continue;
    const Formula f = plan.build();
    setPoint(point);
    const Derivative derivative(f, "rx");
    const Matrix itself = row({f});
    for (const auto& [written, spread] :
         {std::pair{&itself, expected.spread.v}, {&derivative.matrix, expected.spread.d}}) {
      const double value = written->value();
      const std::string text = textOf(*written), latex = handedOut(sym_getLatexStr, *written, 0, 0);
      EXPECT_EQ(faultOf(latex), "") << latex;
      EXPECT_NEAR(valueOf(TextReader(text).whole()), value, Expected::bound(value, spread)) << text;
      ++checked;
    }
    sym_clearTempVar();
  }
  EXPECT_GT(checked, 3000);
}

// Like terms of a long sum meet; the order in which terms came does not matter.
TEST(RandomExpression, LongSums) {
  Random random(7);
  const double x = 0.7;
  std::vector<Formula> terms;
  Jet sum{0}, at{x, 1};
  for (int i = 0; i < 200; ++i) {
    const double c = random.below(9) - 4, n = random.below(5);
    terms.push_back(c * (Formula("x") ^ n) * call(Sin, "x"));
    sum = sum + Jet{c} * pow(at, Jet{n}) * plain::sin(at);
  }
  sym_setSymValue("x", x);
  const Derivative d(call(Add, terms), "x");
  EXPECT_NEAR(d.value(), sum.d, 1e-10);
  EXPECT_LE(d.text().size(), 200u);
  sym_clearTempVar();
}

}  // namespace
