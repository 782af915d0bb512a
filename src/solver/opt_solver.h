// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "frame/base_data.h"
#include "solver/base_solver.h"
#include "solver/opt_function.h"

namespace Solver {

/// A host's optimisation: an objective, a solver, and `tryNum` runs in a row on worker threads.
///
/// Worker threads hold it weakly: when the host lets go of it during a run, the run is stopped and its end does
/// nothing.
class OptRuns : public std::enable_shared_from_this<OptRuns> {
 public:
  using CostFun = double (*)(const double*);
  using GradFun = void (*)(const double*, double*);
  using LimitFun = void (*)(double*);
  using DoneFun = void (*)(int32_t);

  explicit OptRuns(uint32_t tries) : tryNum(tries) {}

  void setFun(CostFun cost, GradFun gradient, LimitFun limit, bool noGradient, int32_t varSize);
  void setOptimizer(uint8_t kind, uint32_t gradCount, uint32_t population, int32_t stallLimit, int32_t stallLimit2,
                    int64_t maxIter, double target);
  void setDoneFun(DoneFun fun);
  void setInitValue(const double* values, int32_t count);
  void setBound(std::vector<double> BaseOptimizeObject::*bound, const double* values, int32_t count);
  bool solve();
  bool askStop();
  uint8_t state() const;
  bool randValue();
  bool getCurrentInfo(double* out);
  double getOptVar(double* out);

 private:
  bool isRunning() const;
  void refresh();
  void start(const std::shared_ptr<BaseSolver>& runner);
  void takeInitValue(BaseSolver& runner);
  void runDone(double value, const std::vector<double>& variables);
  static void worker(const std::weak_ptr<OptRuns>& owner, const std::shared_ptr<BaseSolver>& runner);

  std::atomic<uint8_t> stop{0};
  double targetError = -kNoValue;
  uint32_t popSize = 90;
  const uint32_t tryNum;
  std::atomic<uint32_t> tryCount{0};
  CostFun costFun = nullptr;
  LimitFun limitFun = nullptr;
  std::shared_ptr<OptFunction> function;
  std::shared_ptr<BaseSolver> solver;
  DoneFun doneFun = nullptr;
  std::vector<double> initValue;
  double bestValue = 1e300;
  std::vector<double> bestVar;

  // Workers that have begun and not yet ended. `running` of the solver falls between two runs of one solve; this does
  // not.
  std::atomic<int32_t> workers{0};
  bool finished = false;    // the last run has ended, the host is to be told
  mutable std::mutex lock;  // over solver, doneFun, initValue, bestValue, bestVar, finished
};

/// The handle's object; the workers' common part lives on its own.
class OptSolver final : public BaseData {
 public:
  explicit OptSolver(uint32_t tries) : runs(std::make_shared<OptRuns>(tries)) { typeCode = 88; }
  ~OptSolver() override { runs->askStop(); }
  OptSolver(const OptSolver&) = delete;
  OptSolver& operator=(const OptSolver&) = delete;

  const std::shared_ptr<OptRuns> runs;
};

}  // namespace Solver
