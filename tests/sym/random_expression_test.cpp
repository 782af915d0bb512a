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
    for (int i = 0; i < 6; ++i) {
      const double moved = plan.at(point, random, 1e-12);
      sound = sound && std::isfinite(moved);
      spread = std::max(spread, std::abs(moved - exact));
    }
    sound = sound && std::isfinite(exact) && spread <= 1e-4 * (1 + std::abs(exact));
  }
  double bound() const { return 20 * spread + 1e-11 * (1 + std::abs(exact)); }

  double exact, spread = 0;
  bool sound = true;  ///< the value is determined
};

/// The derivative along the first variable by Richardson's extrapolation of central differences of the plain value; NaN
/// where the differences of two widths do not agree.
double slopeOf(const Plan& plan, std::array<double, 3> point, Random& random, double& error) {
  const double x = point[0];
  const auto difference = [&](double h) {
    point[0] = x + h;
    const double above = plan.at(point.data(), random, 0);
    point[0] = x - h;
    return (above - plan.at(point.data(), random, 0)) / (2 * h);
  };
  const auto extrapolated = [&](double h) { return (4 * difference(h / 2) - difference(h)) / 3; };
  const double coarse = extrapolated(2e-3), fine = extrapolated(1e-3);
  error = std::abs(coarse - fine) + 1e-9 * (1 + std::abs(fine));
  return error < 1e-5 * (1 + std::abs(fine)) ? fine : NAN;
}

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
      ASSERT_NEAR(valueOf(node), expected.exact, expected.bound())
          << textOf(node) << " at " << point[0] << " " << point[1] << " " << point[2];
    }
    sym_clearTempVar();
  }
  std::cout << compared << " values compared, " << undefined << " undefined or undetermined\n";
  EXPECT_GT(compared, 20000);
}

TEST(RandomExpression, DerivativesAreDifferences) {
  Random random(7);
  int compared = 0;
  for (int round = 0; round < 8000; ++round) {
    const Plan plan = randomPlan(random, 1 + round % 4);
    const auto point = randomPoint(random, 0.05, 1.9);
    if (plan.has(ORVANE_KIND_FRAC)) continue;  // its derivative is that of a step, 0
    double error = 0;
    const double slope = slopeOf(plan, point, random, error);
    if (!Expected(plan, point.data(), random).sound || std::isnan(slope) || (slope == 0 && round % 8 != 0)) continue;
    setPoint(point);
    const Formula f = plan.build();
    const Derivative first(f, "rx");
    EXPECT_NEAR(first.value(), slope, 4 * error)
        << textOf(f) << " at " << point[0] << " " << point[1] << " " << point[2];
    // The second derivative is that of the first.
    const double second = Derivative(f, "rx", 2).value(), h = 1e-4;
    double differences[2];
    for (const int side : {0, 1}) {
      sym_setSymValue("rx", point[0] + (side == 0 ? -h : h));
      differences[side] = first.value();
    }
    const double expected = (differences[1] - differences[0]) / (2 * h);
    EXPECT_NEAR(second, expected, 1e-4 * (1 + std::abs(expected) + std::abs(second)))
        << textOf(f) << " at " << point[0];
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
    if (!expected.sound) continue;
    const Formula f = plan.build();
    setPoint(point);
    const Derivative derivative(f, "rx");
    const Matrix itself = row({f});
    for (const Matrix* written : {&itself, &derivative.matrix}) {
      const double value = *written == nullptr ? NAN : written->value();
      if (!(std::abs(value) < 1e8)) continue;
      const std::string text = textOf(*written), latex = handedOut(sym_getLatexStr, *written, 0, 0);
      EXPECT_EQ(faultOf(latex), "") << latex;
      EXPECT_NEAR(valueOf(TextReader(text).whole()), value, expected.bound() + 1e-9 * (1 + std::abs(value))) << text;
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
  double slope = 0;
  for (int i = 0; i < 200; ++i) {
    const double c = random.below(9) - 4, n = random.below(5);
    terms.push_back(c * (Formula("x") ^ n) * call(Sin, "x"));
    slope += c * ((n > 0 ? n * std::pow(x, n - 1) * std::sin(x) : 0) + std::pow(x, n) * std::cos(x));
  }
  sym_setSymValue("x", x);
  const Derivative d(call(Add, terms), "x");
  EXPECT_NEAR(d.value(), slope, 1e-10);
  EXPECT_LE(d.text().size(), 200u);
  sym_clearTempVar();
}

}  // namespace
