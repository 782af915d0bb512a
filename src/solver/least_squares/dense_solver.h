// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <span>
#include <vector>

#include "frame/base_data.h"
#include "frame/random.h"
#include "frame/shared_value.h"

namespace Solver {

/// Least squares: minimises the sum of squares of resCount residuals over varCount variables. A user sets the limits,
/// calls init, binds `resFun` and `jacFun`, calls solve and reads `var` and `error`. A callable that is missing raises
/// std::bad_function_call out of solve; NaN or infinite residuals end it with the best point so far.
class BaseSolver_c : public BaseData {
 public:
  using Residuals = std::function<void(std::span<const double> x, std::span<double> r)>;
  using Jacobian = std::function<void(std::span<const double> x, std::span<double> rows)>;  ///< row-major, a row an r
  using Projection = std::function<void(std::span<double> x)>;

  virtual void init(int32_t varCount, int32_t resCount) = 0;
  virtual void solve(std::span<const double> x) = 0;

  SharedValue<uint8_t> stop0 = 0, stop = 0;  ///< `stop` ends the iteration, from any thread; nothing here clears it
  int32_t varCount = 0, resCount = 0;
  int32_t iterCount = 0;       ///< outer iterations of this solve
  int32_t noImproveLimit = 0;  ///< iterations in a row that may end above the one before; below 1: none are made
  int32_t iterLimit = 0;
  double targetError = 0.0;            ///< enough at or below this sum of squares
  double tol = 1e-12;                  ///< of the largest entry of gradient and step
  std::vector<double> var;             ///< best point so far
  std::vector<double> maxVar, minVar;  ///< bounds; both empty means none
  double error = 1e300;                ///< best sum of squares so far
  Residuals gradResFun;                ///< residuals of the Jacobian products, where `sameRes` is 0
  Residuals resFun;
  Jacobian jacFun;
  Projection limitFun;  ///< may change a new point
  uint8_t sameRes = 1;
  std::vector<int32_t> fixedIndex;  ///< coordinates that never move
  UniformDistribution uniform;
  std::mt19937* rng = nullptr;  ///< the caller's; needed where bounds are set

 protected:
  BaseSolver_c() { typeCode = 40; }
};

/// The part that dense methods share: their working memory and the step into the box.
class DenseSolver_c : public BaseSolver_c {
 public:
  void init(int32_t varCount, int32_t resCount) override;
  /// out = x + step. A coordinate beyond a bound stops at random within the last 40 % of the way to the bound.
  void moveTo(std::span<const double> x, std::span<const double> move, std::span<double> out);

  double det = 0.0;  ///< of the last normal matrix
  std::vector<double> curVar, newVar, res, rhs, step, grad;
  std::vector<double> jac, inverse, normal;  ///< row-major
};

}  // namespace Solver
