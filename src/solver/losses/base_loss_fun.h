// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "frame/base_data.h"

namespace Solver {

/// A loss between a value y and its target t, with one scale k. NaN flows through.
class BaseLossFun : public BaseData {
 public:
  virtual double calc(double y, double t) const = 0;
  virtual void setParam(double scale) {
    k = std::max(std::abs(scale), 1e-15);
    k2 = k * k;
  }
  virtual double calcSum(const double* y, const double* t, int32_t n) const = 0;  ///< n below 1 is 0

  int32_t kind = 0;
  double k = 10.0;
  double k2 = 100.0;

 protected:
  BaseLossFun() { typeCode = 62; }
};

/// Makes calc and calcSum out of a class's formula `double loss(double y, double t) const`, inlined in the loop.
template <class Self>
class PlainLossFun : public BaseLossFun {
 public:
  double calc(double y, double t) const final { return self().loss(y, t); }

  double calcSum(const double* y, const double* t, int32_t n) const override {
    double sum = 0.0;
    for (int32_t i = 0; i < n; ++i) sum += self().loss(y[i], t[i]);
    return sum;
  }

 private:
  const Self& self() const { return static_cast<const Self&>(*this); }
};

/// The same for losses of the residual alone: `double of(double r) const`, r = t - y.
template <class Self>
class ResidualLossFun : public PlainLossFun<ResidualLossFun<Self>> {
 public:
  double loss(double y, double t) const { return static_cast<const Self&>(*this).of(t - y); }
};

/// Losses with a third number made of k. It starts at 0 and only setParam puts it in order.
template <class Self>
class ThirdParamLossFun : public ResidualLossFun<Self> {
 public:
  double k3 = 0.0;
};

}  // namespace Solver
