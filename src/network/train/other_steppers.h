// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>

#include "network/train/adam_steppers.h"

/// Rules that bound the step, measure it by other norms, or keep a moment of another kind.
namespace NetWork {

/// Steps as long as the root mean square of the steps before (Zeiler 2012); m holds their mean square.
class NetSolveByAdadelta_c final : public PlainStepper<NetSolveByAdadelta_c> {
 public:
  NetSolveByAdadelta_c() : PlainStepper({27, 0.8, 0.6}) {}
  auto rule() const {
    return [gradients = Moments{0.0, beta1}, steps = Moments{0.0, beta2}, rate = lr](double g, double& d, double& v) {
      gradients.second(g, v);
      const double dx = std::sqrt((d + 1e-16) / (v + 1e-16)) * rate * g;
      steps.second(dx, d);
      return dx;
    };
  }
};

/// Adam with the largest of the last gradients instead of the second moment (Kingma and Ba 2015, section 7.1).
class NetSolveByAdaMax_c final : public PlainStepper<NetSolveByAdaMax_c> {
 public:
  NetSolveByAdaMax_c() : PlainStepper({34, 0.8, 0.6}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, b2 = beta2, rate = lr / c1()](double g, double& m, double& u) {
      moments.first(g, m);
      u = std::max(b2 * u, std::abs(g));
      return rate * m / (u > 0.0 ? u : 1.0);
    };
  }
};

/// Adam whose rate of an entry stays below its mean so far (Ding et al. 2019); extra is the rate of that mean. An entry
/// that has seen no gradient has no rate yet.
class NetSolveByAdaMod_c final : public PlainStepper<NetSolveByAdaMod_c, StepperNeeds::thirdMoment> {
 public:
  NetSolveByAdaMod_c() : PlainStepper({29, 0.8, 0.6, 0.98}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, rates = Moments{extra, 0.0}, rate = lr, c1 = c1(), c2 = c2()](
               double g, double& m, double& v, double& mean) {
      moments.both(g, m, v);
      if (v == 0.0) return 0.0;
      const double s = rate / std::sqrt(v / c2);
      rates.first(s, mean);
      return std::min(mean, s) * m / c1;
    };
  }
};

/// Bounds of the rate that close in on 1 as t grows (Luo et al. 2019); extra is the speed.
struct RateBounds {
  explicit RateBounds(double q) : lower(1.0 - 1.0 / (q + 1.0)), upper(1.0 / q + 1.0) {}
  double held(double rate) const { return std::min(std::max(rate, lower), upper); }
  double lower, upper;
};

/// Adam with a bounded rate, which becomes gradient descent with momentum.
class NetSolveByAdaBound_c final : public PlainStepper<NetSolveByAdaBound_c> {
 public:
  NetSolveByAdaBound_c() : PlainStepper({31, 0.8, 0.6, 0.001}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, bounds = RateBounds(extra * stepNumber()), rate = lr](double g, double& m,
                                                                                                   double& v) {
      moments.both(g, m, v);
      return rate * m * bounds.held(1.0 / std::sqrt(v));
    };
  }
};

/// The same over the largest second moment so far.
class NetSolveByAMSBound_c final : public PlainStepper<NetSolveByAMSBound_c, StepperNeeds::thirdMoment> {
 public:
  NetSolveByAMSBound_c() : PlainStepper({32, 0.8, 0.6, 0.001}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, bounds = RateBounds(extra * stepNumber()), rate = lr](
               double g, double& m, double& v, double& largest) {
      moments.both(g, m, v);
      largest = std::max(largest, v);
      return rate * m * bounds.held(1.0 / std::sqrt(largest));
    };
  }
};

/// The sign of the momentum, found by a search over programmes (Chen et al. 2023); extra is the decay of the variables.
class NetSolveByLion_c final : public PlainStepper<NetSolveByLion_c, StepperNeeds::variables> {
 public:
  NetSolveByLion_c() : PlainStepper({67, 0.8, 0.6, 0.01}) {}
  auto rule() const {
    return [b1 = beta1, b2 = beta2, rest1 = std::abs(1.0 - beta1), rest2 = std::abs(1.0 - beta2), rate = lr,
            decay = extra](double g, double& m, double&, double w) {
      const double u = b1 * m + rest1 * g;
      m = b2 * m + rest2 * g;
      const double sign = u < -1e-6 ? -1.0 : u > 1e-6 ? 1.0 : 0.0;
      return rate * (decay * w + sign);
    };
  }
};

/// Adam with a second, slow first moment (Pagliardini, Ablin and Grangier 2024); extra is its rate. Its weight grows
/// with the steps up to `alpha`.
class NetSolveByAdEMAMix_c final : public PlainStepper<NetSolveByAdEMAMix_c, StepperNeeds::thirdMoment> {
 public:
  NetSolveByAdEMAMix_c() : PlainStepper({68, 0.8, 0.6, 0.9968}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, slow = Moments{extra, 0.0},
            weight = alpha * std::min(1.0, ramp * stepNumber()), rate = lr, c1 = c1(),
            c2 = c2()](double g, double& m, double& v, double& m2) {
      moments.both(g, m, v);
      slow.first(g, m2);
      return (m / c1 + weight * m2) * rate / (std::sqrt(v / c2) + 1e-16);
    };
  }

  double alpha = 6.0;
  double ramp = 0.00016;
};

}  // namespace NetWork
