// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/base_data.h"
#include "frame/data_stream.h"

namespace NetWork {

/// A rule that makes a step out of a gradient. It keeps moments of the gradients it has seen, one entry a variable.
class NetBaseSolver_c : public BaseData {
 public:
  /// Forgets what was seen: a try begins.
  virtual void init(int32_t varCount);
  /// Replaces the gradient by the step dx, which the caller subtracts from the variables.
  virtual void step(std::span<double> grad) = 0;
  virtual void write(DataStream& stream) const;
  virtual void read(DataStream& stream);

  /// Rates of the moments and the ramp of the learning rate from `start` to `end` in `steps` steps; 0 for none.
  void setVar(double b1, double b2, double third, double start, double end, int64_t steps);

  uint8_t needVar = 0;  ///< 1: `vars` must be set before a step
  double lr = 1.0;
  double beta1 = 0.0, beta2 = 0.0, extra = 0.0;
  double pow1 = 1.0, pow2 = 1.0;  ///< beta1^t and beta2^t
  double lrStart = 1.0, lrEnd = 1.0, lrSlope = 0.0;
  int64_t lrSteps = kNoRamp, lrCount = 0;  ///< lrCount: steps made
  std::vector<double> m, v;
  const double* vars = nullptr;  ///< the flat variables

 protected:
  NetBaseSolver_c() { typeCode = 22; }

  double c1() const { return 1.0 - pow1; }
  double c2() const { return 1.0 - pow2; }
  double stepNumber() const { return static_cast<double>(lrCount + 1); }  ///< t of the step under way, from 1
  void advanceRate();

 private:
  static constexpr int64_t kNoRamp = 999999999999;
};

/// What a rule starts with.
struct StepperStart {
  uint8_t typeCode;
  double beta1 = 0.0, beta2 = 0.0, extra = 0.0;
};

/// What a rule reads besides gradient, first and second moment.
enum class StepperNeeds { nothing, thirdMoment, variables };

/// Makes the loop out of a class's `auto rule() const`: a formula for one entry, with the step's constants inside, that
/// takes the gradient and its moments and gives the step. The formulas stand inlined in the loop.
template <class Self, StepperNeeds kNeeds = StepperNeeds::nothing>
class PlainStepper : public NetBaseSolver_c {
 public:
  explicit PlainStepper(const StepperStart& start) {
    typeCode = start.typeCode;
    needVar = kNeeds == StepperNeeds::variables;
    beta1 = start.beta1;
    beta2 = start.beta2;
    extra = start.extra;
  }

  void init(int32_t varCount) final {
    NetBaseSolver_c::init(varCount);
    if constexpr (kNeeds == StepperNeeds::thirdMoment) third.assign(m.size(), 0.0);
  }

  void step(std::span<double> grad) final {
    Self& self = static_cast<Self&>(*this);
    self.prepare();
    pow1 *= beta1;
    pow2 *= beta2;
    apply(self.rule(), grad.size(), grad.data(), m.data(), v.data());
    advanceRate();
  }

  void write(DataStream& stream) const override {
    NetBaseSolver_c::write(stream);
    for (const double x : third) stream.put(x);
  }

  void read(DataStream& stream) override {
    NetBaseSolver_c::read(stream);
    if constexpr (kNeeds == StepperNeeds::thirdMoment) {
      third.resize(m.size());
      for (double& x : third) x = stream.take<double>();
    }
  }

  void prepare() {}  ///< a rule whose rates change hides it

  std::vector<double> third;

 private:
  template <class Rule>
  void apply(const Rule rule, std::size_t n, double* __restrict g, double* __restrict first,
             double* __restrict second) {
    [[maybe_unused]] double* __restrict other = third.data();
    [[maybe_unused]] const double* __restrict w = vars;
    for (std::size_t i = 0; i < n; ++i) {
      if constexpr (kNeeds == StepperNeeds::thirdMoment)
        g[i] = rule(g[i], first[i], second[i], other[i]);
      else if constexpr (kNeeds == StepperNeeds::variables)
        g[i] = rule(g[i], first[i], second[i], w[i]);
      else
        g[i] = rule(g[i], first[i], second[i]);
    }
  }
};

}  // namespace NetWork
