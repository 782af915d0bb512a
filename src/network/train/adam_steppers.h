// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>

#include "network/train/net_base_solver.h"

/// Adam and the rules that change its moments, its numerator or its correction of the start.
namespace NetWork {

/// The moments m = b1 m + (1-b1) g and v = b2 v + (1-b2) g^2.
struct Moments {
  double b1, b2;
  void first(double g, double& m) const { m = b1 * m + (1.0 - b1) * g; }
  void second(double g, double& v) const { v = b2 * v + (1.0 - b2) * (g * g); }
  void both(double g, double& m, double& v) const {
    first(g, m);
    second(g, v);
  }
};

/// x/sqrt(q); q below 1e-12 does not divide.
inline double overRoot(double x, double q) { return x / (q < 1e-12 ? 1.0 : std::sqrt(q)); }

/// x/root; a root below 1e-12 does not divide.
inline double overSize(double x, double root) { return x / (root < 1e-12 ? 1.0 : root); }

/// Plain gradient descent.
class NetSolveBySGD_c final : public NetBaseSolver_c {
 public:
  NetSolveBySGD_c() { typeCode = 23; }
  void init(int32_t) override { NetBaseSolver_c::init(0); }
  void step(std::span<double> grad) override {
    for (double& g : grad) g *= lr;
    advanceRate();
  }
};

/// Adam (Kingma and Ba 2015).
class NetSolveByAdma_c final : public PlainStepper<NetSolveByAdma_c> {
 public:
  NetSolveByAdma_c() : PlainStepper({24, 0.96, 0.98}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, rate = lr / c1(), c2 = c2()](double g, double& m, double& v) {
      moments.both(g, m, v);
      return overRoot(rate * m, v / c2);
    };
  }
};

/// Adam with one more step of the first moment in the numerator (after Dozat 2016).
class NetSolveByNadam_c final : public PlainStepper<NetSolveByNadam_c> {
 public:
  NetSolveByNadam_c() : PlainStepper({25, 0.8, 0.6}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, rate = lr / c1(), c2 = c2()](double g, double& m, double& v) {
      moments.both(g, m, v);
      double ahead = m;
      moments.first(g, ahead);
      return rate * ahead / (std::sqrt(v / c2) + 1e-16);
    };
  }
};

/// Adam with Nesterov's momentum (Dozat 2016): both terms of the numerator have the correction of their own step.
class NetSolveByNAdma_c final : public PlainStepper<NetSolveByNAdma_c> {
 public:
  NetSolveByNAdma_c() : PlainStepper({63, 0.8, 0.6}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, ahead = beta1 / (1.0 - beta1 * pow1), now = (1.0 - beta1) / c1(),
            rate = lr, c2 = c2()](double g, double& m, double& v) {
      moments.both(g, m, v);
      return overSize((ahead * m + now * g) * rate, std::sqrt(v / c2));
    };
  }
};

/// Adam over the largest second moment so far (Reddi, Kale and Kumar 2018).
class NetSolveByAMSGrad_c final : public PlainStepper<NetSolveByAMSGrad_c, StepperNeeds::thirdMoment> {
 public:
  NetSolveByAMSGrad_c() : PlainStepper({26, 0.8, 0.6}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, rate = lr * (std::sqrt(c2()) / c1())](double g, double& m, double& v,
                                                                                   double& largest) {
      moments.both(g, m, v);
      largest = std::max(largest, v);
      return m * rate / (largest > 0.0 ? std::sqrt(largest) : 1.0);
    };
  }
};

/// Rectified Adam (Liu et al. 2020): the step leaves the second moment out while its variance has no bound.
class NetSolveByRAdma_c final : public PlainStepper<NetSolveByRAdma_c> {
 public:
  NetSolveByRAdma_c() : PlainStepper({28, 0.8, 0.6}) {}
  auto rule() const {
    const double most = 2.0 / (1.0 - beta2 + 1e-16) - 1.0;
    const double p = most - 2.0 * stepNumber() * pow2 / (1.0 - pow2);
    const bool rectified = p > 4.0;
    const double r = rectified ? std::sqrt((p - 4.0) * (p - 2.0) * most / ((most - 4.0) * (most - 2.0) * p)) : 1.0;
    return
        [moments = Moments{beta1, beta2}, rate = lr / c1(), c2 = c2(), r, rectified](double g, double& m, double& v) {
          moments.both(g, m, v);
          return overSize(rate * m * r, rectified ? std::sqrt(v / c2) : 1.0);
        };
  }
};

/// Nostalgic Adam (Huang, Wang and Dong 2019): the second moment is a mean with weights t^-extra, so that its rate is
/// B(t-1)/B(t), B the sum of the weights, and its start needs no correction.
class NetSolveByNosAdma_c final : public PlainStepper<NetSolveByNosAdma_c> {
 public:
  NetSolveByNosAdma_c() : PlainStepper({30, 0.8, 0.6, 0.001}) {}
  void prepare() {
    if (lrCount == 0) weights = 0.0;
    const double before = weights;
    weights += std::pow(stepNumber(), -extra);
    beta2 = before / weights;
  }
  auto rule() const {
    return [moments = Moments{beta1, beta2}, rate = lr / c1(), c2 = c2()](double g, double& m, double& v) {
      moments.both(g, m, v);
      return overRoot(rate * m, v / c2);
    };
  }
  void write(DataStream& stream) const override {
    PlainStepper::write(stream);
    stream.put(weights);
  }
  void read(DataStream& stream) override {
    PlainStepper::read(stream);
    weights = stream.take<double>();
  }

 private:
  double weights = 0.0;
};

/// Adam with the variance about the first moment (Zhuang et al. 2020).
class NetSolveByAdaBelief_c final : public PlainStepper<NetSolveByAdaBelief_c> {
 public:
  NetSolveByAdaBelief_c() : PlainStepper({33, 0.8, 0.6}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, rate = lr / c1(), c2 = c2()](double g, double& m, double& v) {
      moments.first(g, m);
      moments.second(g - m, v);
      return overRoot(rate * m, v / c2);
    };
  }
};

/// Adam with decay of the variables apart from the gradient (Loshchilov and Hutter 2019); extra is the decay.
class NetSolveByAdamW_c final : public PlainStepper<NetSolveByAdamW_c, StepperNeeds::variables> {
 public:
  NetSolveByAdamW_c() : PlainStepper({66, 0.8, 0.6, 0.01}) {}
  auto rule() const {
    return [moments = Moments{beta1, beta2}, rate = lr, decay = extra, c1 = c1(), c2 = c2()](double g, double& m,
                                                                                             double& v, double w) {
      moments.both(g, m, v);
      return (m / ((std::sqrt(v / c2) + 1e-16) * c1) + decay * w) * rate;
    };
  }
};

}  // namespace NetWork
