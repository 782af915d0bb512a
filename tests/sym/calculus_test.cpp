// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/orvane.h>

#include <cmath>

#include "support/numbers.h"
#include "sym/formula.h"

namespace {

using namespace host;

constexpr uint8_t kSqrt = 10, kLn = 11, kExp = 12, kAbs = 13, kSin = 20, kCos = 21, kZeta = 113;

/// Variables of one test; the store forgets them behind it.
class Calculus : public testing::Test {
 protected:
  ~Calculus() override { sym_clearTempVar(); }
  const Formula x{"x"}, t{"t"};
};
using Taylor = Calculus;
using Integrals = Calculus;
using Equations = Calculus;

std::string taylorText(Formula f, double centre, int32_t order) {
  return textOf(Matrix(sym_taylor(row({f}), "x", centre, order)));
}

TEST_F(Taylor, NormalForm) {
  EXPECT_EQ(taylorText(call(kExp, x), 0, 2), "1+x+0.5*x^2");
  EXPECT_EQ(taylorText((x ^ 3.0), 0, 5), "x^3");
  EXPECT_EQ(taylorText(Formula("w"), 0, 3), "0");  // the present value of another variable
  EXPECT_EQ(taylorText(call(kSin, x), 0, -1), "0");
  const Matrix other = Matrix(sym_taylor(row({call(kSin, x)}), "nobody", 0, 3));
  EXPECT_EQ(textOf(other), textOf(call(kSin, x)));
}

TEST_F(Taylor, HighOrders) {
  // exp(sin x) = 1 + x + x^2/2 - x^4/8 - x^5/15 - x^6/240 + x^7/90 + 31 x^8/5760 + x^9/5670 ...
  const Matrix f = Matrix(sym_taylor(row({call(kExp, call(kSin, x))}), "x", 0, 9));
  double c[10] = {};
  ASSERT_EQ(sym_getPolyParam(f, c, 10), 10);
  const double expected[] = {1, 1, 0.5, 0, -0.125, -1 / 15.0, -1 / 240.0, 1 / 90.0, 31 / 5760.0, 1 / 5670.0};
  for (int i = 0; i < 10; ++i) EXPECT_NEAR(c[i], expected[i], 1e-15) << i;
  // Two elements about 1: the value at 1.1 to the remainder.
  const Matrix two = Matrix(sym_taylor(row({call(kLn, x), call(kSqrt, x)}), "x", 1, 8));
  sym_setSymValue("x", 1.1);
  double value[2];
  sym_calcValue(two, value);
  EXPECT_NEAR(value[0], std::log(1.1), 2e-10);
  EXPECT_NEAR(value[1], std::sqrt(1.1), 1e-10);
}

TEST_F(Taylor, LeavesTheVariableAtTheCentre) {
  for (const Formula& f : {Formula(0.0), x * x, Formula("w")}) {
    sym_setSymValue("x", 5);
    Matrix(sym_taylor(row({f}), "x", 2, 3));
    EXPECT_EQ(valueOf(x), 2);
  }
}

TEST_F(Taylor, RefusedDerivative) {
  const Formula zeta = call(kZeta, x + 2.0);
  EXPECT_EQ(taylorText(zeta, 0, 0).substr(0, 8), "1.644934");  // no derivative is needed
  EXPECT_EQ(sym_taylor(row({x, zeta}), "x", 0, 1), nullptr);
}

TEST_F(Integrals, ClosedForms) {
  const Matrix finite = row({call(kSin, x), call(kExp, x), 1.0 / (x * x + 1.0), call(kAbs, x - 1.0)});
  double out[4];
  sym_integral1D(finite, "x", 0, kPi, out);
  EXPECT_NEAR(out[0], 2, 1e-14);
  EXPECT_NEAR(out[1], std::exp(kPi) - 1, 1e-13 * std::exp(kPi));
  EXPECT_NEAR(out[2], std::atan(kPi), 1e-14);
  EXPECT_NEAR(out[3], 0.5 + 0.5 * (kPi - 1) * (kPi - 1), 1e-7);  // a kink may hide beside the outer points of a panel
  sym_integral1D(finite, "x", kPi, 0, out);
  EXPECT_NEAR(out[0], -2, 1e-14);

  const Matrix infinite = row({call(kExp, x * x * -1.0), 1.0 / (x * x + 1.0)});
  sym_integral1D(infinite, "x", -kInf, kInf, out);
  EXPECT_NEAR(out[0], std::sqrt(kPi), 1e-11);
  EXPECT_NEAR(out[1], kPi, 1e-11);
  sym_integral1D(infinite, "x", 0, kInf, out);
  EXPECT_NEAR(out[0], 0.5 * std::sqrt(kPi), 1e-11);

  sym_setSymValue("x", 3);
  sym_integral1D(row({x}), "nobody", 1, 3, out);  // a constant
  EXPECT_NEAR(out[0], 6, 1e-14);
}

TEST_F(Equations, Oscillator) {
  // x'' = -x, both sides of the start, and the start itself
  const Matrix system = row({Formula("v"), x * -1.0});
  const double initial[] = {1, 0}, at[] = {2, -3, 0, 10};
  double out[8];
  sym_solveODE(system, "t,x,v", 0, initial, 2, at, out, 4, 0, 1e-12);
  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(out[2 * i], std::cos(at[i]), 1e-9) << at[i];
    EXPECT_NEAR(out[2 * i + 1], -std::sin(at[i]), 1e-9) << at[i];
  }
}

TEST_F(Equations, ToleranceOfASystem) {
  // A looser tolerance costs digits, and gives what it promises.
  const Matrix growth = row({x});
  const double one = 1, five = 5;
  double loose, tight;
  sym_solveODE(growth, "t,x", 0, &one, 1, &five, &loose, 1, 0, 1e-3);
  sym_solveODE(growth, "t,x", 0, &one, 1, &five, &tight, 1, 0, 0);
  EXPECT_NEAR(tight, std::exp(5), 1e-9);
  EXPECT_GT(std::abs(loose - std::exp(5)), std::abs(tight - std::exp(5)));
  EXPECT_NEAR(loose, std::exp(5), 1);
}

// The names as the list of variables hands them out, with what is too much; and too few.
TEST_F(Equations, NamesOfASystem) {
  const Matrix growth = row({x * t});
  const double one = 1, two = 2;
  double out = 0;
  for (const char* names : {"t,x", "t,x,", "t,x,y", "t,x,y,", "t,x,,"}) {
    sym_solveODE(growth, names, 0, &one, 1, &two, &out, 1, 0, 0);
    EXPECT_NEAR(out, std::exp(2), 1e-9) << names;
  }
  EXPECT_EQ(growth.names(), "t,x,");
  for (const char* names : {"", "t", "t,"}) {
    sym_solveODE(growth, names, 0, &one, 1, &two, &out, 1, 0, 0);
    EXPECT_TRUE(std::isnan(out)) << names;
  }
  sym_solveODE(row({x, x}), "t,x", 0, &one, 1, &two, &out, 1, 0, 0);
  EXPECT_TRUE(std::isnan(out));
}

TEST_F(Equations, Volterra) {
  const double at[] = {-1, 0, 0.3, 1, 3};
  double y[5];
  // y = 1 + int (x - t) y: cosh x.  y = x + int sin(t - x) y... : x - x^3/6 + ... = closed form below
  sym_integralEquByVolterra(row({x - t}), row({1.0}), 0, at, y, 5);
  for (int i = 0; i < 5; ++i) EXPECT_NEAR(y[i], std::cosh(at[i]), 1e-11 * std::cosh(at[i]));
  // y = e^x + int e^(x-t) y: e^(2x), by the resolvent of a convolution
  sym_integralEquByVolterra(row({call(kExp, x - t)}), row({call(kExp, x)}), 0, at, y, 5);
  for (int i = 0; i < 5; ++i) EXPECT_NEAR(y[i], std::exp(2 * at[i]), 1e-11 * std::exp(2 * at[i]));
  sym_integralEquByVolterra(row({0.0}), row({call(kSin, x)}), 2, at, y, 5);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(y[i], std::sin(at[i]));
  // What is not finite costs nothing: the kernel is not asked for a value.
  const double beyond[] = {kInf, -kInf, NAN, 0};
  sym_setSymValue("t", 7);
  sym_integralEquByVolterra(row({x - t}), row({1.0}), 0, beyond, y, 3);
  sym_integralEquByVolterra(row({x - t}), row({1.0}), kInf, beyond + 3, y + 3, 1);
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(std::isnan(y[i])) << i;
  EXPECT_EQ(valueOf(t), 7);
}

TEST_F(Equations, Fredholm) {
  const double at[] = {0, 0.25, 0.5, 1};
  double y[4];
  // y = x + int_0^1 x t y: 3x/2
  sym_integralEquByFredholm(row({x * t}), row({x}), 0, 1, at, y, 4);
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(y[i], 1.5 * at[i], 1e-14);
  // A kink on the diagonal: y = 1 + int_0^1 e^(-|x-t|) y, so y'' = -y - 1 and y = A cos(x - 1/2) - 1
  const double a = 2 / (std::cos(0.5) - std::sin(0.5));
  sym_integralEquByFredholm(row({call(kExp, call(kAbs, x - t) * -1.0)}), row({1.0}), 0, 1, at, y, 4);
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(y[i], a * std::cos(at[i] - 0.5) - 1, 1e-12);
  // No solution: 1 is an eigenvalue of K = 1 on [0, 1]
  sym_integralEquByFredholm(row({1.0}), row({1.0}), 0, 1, at, y, 4);
  EXPECT_FALSE(std::abs(y[0]) < 1e10);
}

}  // namespace
