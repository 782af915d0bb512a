// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>

#include "solver/moving_solver.h"

namespace Solver {

/// "Auto": a fixed schedule of the other solvers over nested boxes; keeps the best point. It has a run of its own.
class AutoSolver final : public BaseSolver {
 public:
  AutoSolver() : BaseSolver("Auto", 1) {}

  bool run() override;
  void stop() override;
  /// As in the base, with the iterations scaled so that they run towards maxIter.
  void getCurrentInfo(double* out) override;
  /// Iterations of all stages that a run of `maxIter` may take.
  static int64_t iterationBudget(int64_t maxIter);

  std::shared_ptr<MovingSolver> inner;  ///< solver of the current stage; changes under `lock`
  uint8_t firstRun = 1;
  SharedValue<int64_t> budget = int64_t{0};
  std::recursive_mutex lock;

 private:
  using Point = std::vector<double>;

  void schedule();
  bool all(const Point& lo, const Point& hi, int64_t extra);
  void enter(std::shared_ptr<MovingSolver> stage);
  void configure(const Point& lo, const Point& hi, int64_t stageLimit);
  void setBox(const Point& lo, const Point& hi);
  bool runInner();
  void narrow();
};

}  // namespace Solver
