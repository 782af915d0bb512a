// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "solver/losses/base_loss_fun.h"

/// Losses of classifiers: entropies of probabilities y, angles between vectors, signs.
namespace Solver {

/// Cross entropy of one probability: -(t ln y + (1-t) ln(1-y)), held finite at 0 and 1.
class LossFunByCross1 final : public PlainLossFun<LossFunByCross1> {
 public:
  double loss(double y, double t) const {
    return -(std::log(1.00000000000001 - y) * (1.0 - t) + std::log(y + 1e-32) * t);
  }
};

/// Cross entropy of one class among several: -t ln y
class LossFunByCross2 final : public PlainLossFun<LossFunByCross2> {
 public:
  double loss(double y, double t) const { return -t * std::log(y + 1e-32); }
};

/// Cosine between whole vectors; a single pair tells signs apart only.
template <class Self>
class CosineLossFun : public PlainLossFun<Self> {
 public:
  double loss(double y, double t) const { return y * t < -1e-32 ? 2.0 : 0.0; }

  double calcSum(const double* y, const double* t, int32_t n) const final {
    double dot = 0.0, yy = 0.0, tt = 0.0;
    for (int32_t i = 0; i < n; ++i) {
      dot += y[i] * t[i];
      yy += y[i] * y[i];
      tt += t[i] * t[i];
    }
    return yy * tt < 1e-32 ? 0.0 : Self::ofCosine(dot, yy * tt);
  }
};

/// 1 - |cos|
class LossFunByCos1 final : public CosineLossFun<LossFunByCos1> {
 public:
  static double ofCosine(double dot, double squares) { return 1.0 - std::abs(dot) / std::sqrt(squares); }
};

class LossFunByCos2 final : public CosineLossFun<LossFunByCos2> {
 public:
  // KEPT: 1 + cos^2 for vectors that agree, up to 2; expected: the least loss there (kept.csv: Loss_Cos2)
  static double ofCosine(double dot, double squares) {
    const double v = dot * dot / squares;
    return dot >= 0.0 ? 1.0 + v : 1.0 - v;
  }
};

class LossFunByHinge final : public PlainLossFun<LossFunByHinge> {
 public:
  double loss(double y, double t) const { return std::max(1.0 - y * t, 0.0); }
};

/// 0 where the signs agree, else 1. A target of 0 belongs to no class.
class LossFunByClass final : public PlainLossFun<LossFunByClass> {
 public:
  double loss(double y, double t) const { return (y >= 0.0 && t > 0.0) || (y < 0.0 && t < 0.0) ? 0.0 : 1.0; }

  // KEPT: the first pair is compared n times, so that the share is 0; expected: the share of misses (kept.csv:
  // Loss_Class)
  double calcSum(const double* y, const double* t, int32_t n) const override {
    double count = 0.0;
    if (n > 0) count = (y[0] > 0.0) == (t[0] > 0.0) ? n : -n;
    const double pairs = std::max(n, 0);
    return (pairs - std::abs(count)) / pairs;
  }
};

}  // namespace Solver
