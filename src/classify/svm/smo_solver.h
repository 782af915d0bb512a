// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

#include "classify/svm/kernel_rows.h"
#include "frame/base_data.h"
#include "frame/shared_value.h"

namespace Solver {

/// Sequential minimal optimisation (Platt 1998): the multipliers of a support vector machine, two at a time. The
/// conditions of Karush, Kuhn and Tucker are tested by the largest gap between the errors of samples that may move up
/// and down (Keerthi, Shevade, Bhattacharyya, Murthy 2001), which needs no offset.
class SolverBySMO_c final : public BaseData {
 public:
  SolverBySMO_c() { typeCode = 52; }

  struct Limits {
    double rate;     ///< share of samples with the right sign that ends the training
    int64_t steps;   ///< joint steps; 0 for no limit
    int64_t passes;  ///< tests of the conditions
  };

  /// `y` holds 1 and -1; `a` comes in as the start and goes out as the multipliers.
  /// @return true when the conditions hold or the rate is reached
  bool solve(NetWork::KernelRows& kernel, std::span<const double> y, double C, const Limits& limits,
             std::vector<double>& a);

  double offset() const { return b; }

  std::atomic<bool> stop{false};
  SharedValue<double> score = 0.0;  ///< share of samples with the right sign

 private:
  void start();
  bool conditionsHold();
  bool examine(std::size_t i2);
  bool step(std::size_t i1, std::size_t i2);
  bool violates(std::size_t i) const;
  double snapped(double multiplier) const;
  bool isFree(std::size_t i) const { return (*a)[i] > 0 && (*a)[i] < C; }
  void measureScore();
  void noteBounds(std::size_t i);

  NetWork::KernelRows* kernel = nullptr;
  std::span<const double> y;
  std::vector<double>* a = nullptr;
  double C = 0, b = 0;
  std::size_t worst = 0;               // the sample that wants to move up the most
  std::vector<double> errors;          // f(x_i) - y_i without the offset
  std::vector<double> notUp, notDown;  // infinite for a sample that may not move there, otherwise 0
};

}  // namespace Solver
