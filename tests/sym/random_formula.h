// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <random>

#include "sym/formula.h"

namespace host {

/// Value, first and second derivative along x, by the rules of truncated power series.
struct Jet {
  double v, d = 0, dd = 0;

  /// f(this), of which f, f' and f'' at v are given.
  Jet through(double f, double df, double ddf) const { return {f, df * d, ddf * d * d + df * dd}; }
};

inline Jet operator+(Jet a, Jet b) { return {a.v + b.v, a.d + b.d, a.dd + b.dd}; }
inline Jet operator*(Jet a, Jet b) {
  return {a.v * b.v, a.d * b.v + a.v * b.d, a.dd * b.v + 2 * a.d * b.d + a.v * b.dd};
}
inline Jet inverse(Jet a) { return a.through(1 / a.v, -1 / (a.v * a.v), 2 / (a.v * a.v * a.v)); }

/// An expression and what it must give.
struct Pair {
  Formula formula;
  Jet jet;
};

/// Random expressions in x and y over arithmetic and elementary functions, smooth and of moderate size where they are
/// built; the same seed gives the same expressions.
class RandomFormula {
 public:
  RandomFormula(unsigned seed, double xValue, double yValue) : engine(seed), x(xValue), y(yValue) {}

  Pair make(int depth) {
    if (depth == 0) return leaf();
    switch (pick(9)) {
      case 0:
      case 1: {
        const Pair a = make(depth - 1), b = make(depth - 1);
        return {a.formula + b.formula, a.jet + b.jet};
      }
      case 2: {
        const Pair a = make(depth - 1), b = make(depth - 1);
        return {a.formula - b.formula, a.jet + Jet{-1} * b.jet};
      }
      case 3:
      case 4: {
        const Pair a = make(depth - 1), b = make(depth - 1);
        return {a.formula * b.formula, a.jet * b.jet};
      }
      case 5: {
        const Pair a = make(depth - 1), b = atLeastOne(depth - 1);
        return {a.formula / b.formula, a.jet * inverse(b.jet)};
      }
      case 6: {
        const Pair a = make(depth - 1);
        return {a.formula ^ 3.0, a.jet * a.jet * a.jet};
      }
      case 7: {  // base to a varying power
        const Pair a = atLeastOne(depth - 1), b = function(depth - 1);
        const double l = std::log(a.jet.v);
        const Jet exponent = b.jet * a.jet.through(l, 1 / a.jet.v, -1 / (a.jet.v * a.jet.v));
        const double p = std::exp(exponent.v);
        return {a.formula ^ b.formula, exponent.through(p, p, p)};
      }
      default:
        return function(depth - 1);
    }
  }

 private:
  int pick(int n) { return static_cast<int>(engine() % static_cast<unsigned>(n)); }

  Pair leaf() {
    switch (pick(5)) {
      case 0:
        return {"y", {y}};
      case 1: {
        const double number = (pick(17) - 8) / 4.0;
        return {number, {number}};
      }
      case 2: {
        const double factor = 1 + pick(7);
        return {factor * Formula("x"), Jet{factor} * Jet{x, 1}};
      }
      default:
        return {"x", {x, 1}};
    }
  }

  // 1 + u^2
  Pair atLeastOne(int depth) {
    const Pair u = depth > 0 ? function(depth - 1) : leaf();
    return {1.0 + (u.formula ^ 2.0), Jet{1} + u.jet * u.jet};
  }

  // Functions that stay small.
  Pair function(int depth) {
    const int which = pick(8);
    if (which >= 6) {
      const Pair a = atLeastOne(depth);
      const double v = a.jet.v, r = std::sqrt(v);
      if (which == 6) return {call(10, a.formula), a.jet.through(r, 0.5 / r, -0.25 / (r * v))};
      return {call(11, a.formula), a.jet.through(std::log(v), 1 / v, -1 / (v * v))};
    }
    Pair a = depth > 0 ? make(depth - 1) : leaf();
    if (std::abs(a.jet.v) > 30) a = leaf();  // where the hyperbolic functions are still far from overflow
    const double v = a.jet.v, s = std::sin(v), c = std::cos(v), t = std::tanh(v), q = 1 + v * v;
    switch (which) {
      case 0:
        return {call(20, a.formula), a.jet.through(s, c, -s)};
      case 1:
        return {call(21, a.formula), a.jet.through(c, -s, -c)};
      case 2:
        return {call(26, a.formula), a.jet.through(std::atan(v), 1 / q, -2 * v / (q * q))};
      case 3:
        return {call(32, a.formula), a.jet.through(t, 1 - t * t, -2 * t * (1 - t * t))};
      case 4:
        return {call(34, a.formula), a.jet.through(std::asinh(v), 1 / std::sqrt(q), -v / (q * std::sqrt(q)))};
      default: {  // exp of a sine
        const Jet sine = a.jet.through(s, c, -s);
        const double e = std::exp(s);
        return {call(12, call(20, a.formula)), sine.through(e, e, e)};
      }
    }
  }

  std::mt19937 engine;
  double x, y;
};

}  // namespace host
