// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

/// Formulas of two operands that serve both a variable and a second input.
namespace NetWork {

struct Add {
  static double value(double x, double a) { return x + a; }
  static double byX(double, double, double) { return 1; }
  static double byA(double, double, double) { return 1; }
};

struct Subtract {
  static double value(double x, double a) { return x - a; }
  static double byX(double, double, double) { return 1; }
  static double byA(double, double, double) { return -1; }
};

struct Multiply {
  static double value(double x, double a) { return x * a; }
  static double byX(double, double a, double) { return a; }
  static double byA(double x, double, double) { return x; }
};

struct Divide {
  static double value(double x, double a) { return x / a; }
  static double byX(double, double a, double) { return 1 / a; }
  static double byA(double, double a, double y) { return -y / a; }
};

/// x^a. At x = 0 the derivative by the exponent is 0 where the power is finite: its limit, which log does not give.
struct Power {
  static double value(double x, double a) { return std::pow(x, a); }
  static double byX(double x, double a, double) { return a == 0 ? 0 : a * std::pow(x, a - 1); }
  static double byA(double x, double a, double y) { return x == 0 && a >= 0 ? 0 : y * std::log(x); }
};

/// F with its operands exchanged.
template <class F>
struct Exchanged {
  static double value(double x, double a) { return F::value(a, x); }
  static double byX(double x, double a, double y) { return F::byA(a, x, y); }
  static double byA(double x, double a, double y) { return F::byX(a, x, y); }
};

}  // namespace NetWork
