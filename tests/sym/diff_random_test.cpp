// SPDX-License-Identifier: Apache-2.0
// First and second derivatives of random expressions against the same calls in arithmetic of truncated power series.
#include <gtest/gtest.h>

#include "sym/random_formula.h"

namespace {

using namespace host;

TEST(DiffRandom, FirstAndSecondDerivatives) {
  int checked = 0;
  for (unsigned seed = 1; seed <= 1500; ++seed) {
    const double x = 0.2 + 0.001 * seed, y = 1.7 - 0.0005 * seed;
    const Pair pair = RandomFormula(seed, x, y).make(1 + static_cast<int>(seed % 4));
    sym_createBaseSymVar("x");
    sym_createBaseSymVar("y");
    sym_setSymValue("x", x);
    sym_setSymValue("y", y);
    const Jet& jet = pair.jet;
    // Beyond this size digits cancel between terms of no fault.
    if (!(std::abs(jet.v) < 1e4 && std::abs(jet.d) < 1e5 && std::abs(jet.dd) < 1e6)) continue;
    const double bound = 1e-9 * (1 + std::abs(jet.v) + std::abs(jet.d) + std::abs(jet.dd));
    EXPECT_NEAR(valueOf(pair.formula), jet.v, bound) << seed;
    EXPECT_NEAR(Derivative(pair.formula, "x").value(), jet.d, bound) << seed << "  " << textOf(pair.formula);
    EXPECT_NEAR(Derivative(pair.formula, "x", 2).value(), jet.dd, bound) << seed << "  " << textOf(pair.formula);
    sym_clearTempVar();
    ++checked;
  }
  EXPECT_GE(checked, 1300);
}

// Like terms of a long sum meet; the order in which terms came does not matter.
TEST(DiffRandom, LongSums) {
  std::mt19937 engine(7);
  const double x = 0.7;
  std::vector<Formula> terms;
  Jet sum{0};
  for (int i = 0; i < 200; ++i) {
    const double c = static_cast<double>(engine() % 9) - 4, n = static_cast<double>(engine() % 5);
    const double p = std::pow(x, n), s = std::sin(x), k = std::cos(x);
    terms.push_back(c * (Formula("x") ^ n) * call(20, "x"));
    sum = sum + Jet{c * p * s, c * (n * p / x * s + p * k), 0};
  }
  sym_setSymValue("x", x);
  const Derivative d(call(2, terms), "x");
  EXPECT_NEAR(d.value(), sum.d, 1e-10);
  EXPECT_LE(d.text().size(), 200u);
  sym_clearTempVar();
}

}  // namespace
