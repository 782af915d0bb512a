// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "frame/shared_value.h"

namespace Solver {

/// "No value yet": above everything that an objective returns in practice.
inline constexpr double kNoValue = 1.449459118e308;

/// An objective over `varSize` variables in a box. A smaller value is better. A NaN is never trapped: comparisons with
/// it fail and it is carried on.
class BaseOptimizeObject {
 public:
  explicit BaseOptimizeObject(int32_t variables)
      : varSize(variables), maxVar(count(variables), 100.0), minVar(count(variables), -100.0) {}
  BaseOptimizeObject(const BaseOptimizeObject&) = default;
  BaseOptimizeObject& operator=(const BaseOptimizeObject&) = default;
  virtual ~BaseOptimizeObject() = default;

  /// One range for all variables; swapped bounds are put right.
  virtual void setRange(double lo, double hi);
  /// Takes the sum of a list of errors as the last value.
  virtual void setErrorList(const std::vector<double>& values);
  virtual uint8_t isValid() { return 1; }
  virtual double calcValue(const std::vector<double>& x) = 0;
  /// Gradient at x into g, by differences of width h where no closed form is known, for the first `count` of `indexes`;
  /// the others get 0. `x` is changed on the way and put back.
  virtual void calcGradient(std::vector<double>& x, double h, std::vector<double>& g,
                            const std::vector<int32_t>& indexes, int32_t count);
  /// A new object of the same kind, owned by the caller.
  virtual std::unique_ptr<BaseOptimizeObject> clone() const = 0;

  int32_t varSize;
  SharedValue<double> lastValue = 0.0;  ///< the last value computed
  std::string name;                     ///< for log lines
  /// Lent by the solver: once it is not 0, work that takes many steps may end early; its result is not used then.
  const std::atomic<uint8_t>* stopFlag = nullptr;
  std::vector<double> maxVar;
  std::vector<double> minVar;

 protected:
  bool stopped() const { return stopFlag != nullptr && stopFlag->load(std::memory_order_relaxed) != 0; }

 private:
  static std::size_t count(int32_t variables) { return variables > 0 ? static_cast<std::size_t>(variables) : 0; }
};

}  // namespace Solver
