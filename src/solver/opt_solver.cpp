// SPDX-License-Identifier: Apache-2.0
#include "solver/opt_solver.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "orvane/optimizer.h"
#include "solver/solver_factory.h"

namespace Solver {

void OptRuns::refresh() {
  if (!solver || !function) return;
  solver->setObjective(function);
  solver->limitFun = limitFun;
  solver->minVar = function->minVar;
  solver->maxVar = function->maxVar;
  solver->setPopulation(static_cast<int32_t>(popSize), function->varSize);
  solver->randomise();
}

void OptRuns::setFun(CostFun cost, GradFun gradient, LimitFun limit, bool noGradient, int32_t varSize) {
  if (varSize < 1 || varSize > 1000000) return;
  if (!function || function->varSize != varSize) function = std::make_shared<OptFunction>(varSize);
  if (cost != nullptr) {
    costFun = cost;
    function->valueFun = cost;
  }
  limitFun = limit;
  if (limit != nullptr)
    function->limitFun = [limit](double* x) {
      limit(x);
      return 0.0;
    };
  function->gradFun = noGradient ? nullptr : gradient;
  refresh();
}

void OptRuns::setOptimizer(uint8_t kind, uint32_t gradCount, uint32_t population, int32_t stallLimit,
                           int32_t stallLimit2, int64_t maxIter, double target) {
  targetError = target;
  popSize = population;
  if (auto made = makeSolver(kind)) {
    const std::lock_guard guard(lock);
    solver = std::move(made);
  }
  if (!solver) return;
  solver->gradCount = static_cast<int32_t>(std::min<uint32_t>(gradCount, 1000000));
  solver->printFlag = 0;
  solver->maxIter = maxIter;
  solver->targetError = target;
  solver->doneFun = [owner = weak_from_this()](int64_t, double value, const std::vector<double>& variables) {
    if (const auto runs = owner.lock()) runs->runDone(value, variables);
  };
  if (stallLimit > 0) solver->stallLimit = stallLimit;
  if (stallLimit2 > 0) solver->stallLimit2 = stallLimit2;
  refresh();
}

void OptRuns::setDoneFun(DoneFun fun) {
  const std::lock_guard guard(lock);
  doneFun = fun;
}

void OptRuns::setInitValue(const double* values, int32_t count) {
  const std::lock_guard guard(lock);
  initValue.assign(values, values + std::max(count, 0));
}

void OptRuns::setBound(std::vector<double> BaseOptimizeObject::*bound, const double* values, int32_t count) {
  if (!function) return;
  auto& own = (*function).*bound;
  if (count == 1)
    std::ranges::fill(own, *values);
  else if (count > 0 && static_cast<std::size_t>(count) == own.size())
    std::copy_n(values, own.size(), own.begin());
}

bool OptRuns::isRunning() const {
  return workers.load(std::memory_order_acquire) > 0 || solver->running.load(std::memory_order_acquire) != 0;
}

bool OptRuns::solve() {
  if (!solver || !function || isRunning()) return false;
  int32_t idle = 0;
  if (!workers.compare_exchange_strong(idle, 1, std::memory_order_acq_rel)) return false;
  solver->minVar = function->minVar;
  solver->maxVar = function->maxVar;
  solver->limitFun = limitFun;
  stop.store(0, std::memory_order_release);
  solver->prepareStart();
  start(solver);
  return true;
}

void OptRuns::takeInitValue(BaseSolver& runner) {
  std::vector<double> point;
  {
    const std::lock_guard guard(lock);
    if (initValue.empty() || runner.population.empty() || !runner.population.front()) return;
    point = std::exchange(initValue, {});
  }
  OptVariable& first = *runner.population.front();
  if (point.size() != first.trialVar.size()) return;  // not a point of this problem
  first.trialVar = std::move(point);
  runner.limit(first.trialVar);
  first.accept();  // the run's own start evaluates it
}

// One run on a thread of its own; `workers` counts it already and the solver is marked running.
void OptRuns::start(const std::shared_ptr<BaseSolver>& runner) {
  tryCount.fetch_add(1, std::memory_order_relaxed);
  takeInitValue(*runner);
  try {
    std::thread(worker, weak_from_this(), runner).detach();
  } catch (...) {
    runner->running.store(0, std::memory_order_release);
    workers.fetch_sub(1, std::memory_order_release);
    throw;
  }
}

// The host is told after run() has returned, so that its notification finds the solver at rest and may start it again
// or release the handle.
void OptRuns::worker(const std::weak_ptr<OptRuns>& owner, const std::shared_ptr<BaseSolver>& runner) {
  runner->run();
  const auto runs = owner.lock();
  if (!runs) return;
  DoneFun tell = nullptr;
  {
    const std::lock_guard guard(runs->lock);
    if (std::exchange(runs->finished, false)) tell = runs->doneFun;
  }
  runs->workers.fetch_sub(1, std::memory_order_release);
  if (tell != nullptr) tell(1);
}

// End of one run, on its worker: keeps the best, then starts the next run or leaves the notice for the host. The next
// start does not lower `stop`: it was clear a moment ago, and a stop that came since must reach the next run.
void OptRuns::runDone(double value, const std::vector<double>& variables) {
  std::shared_ptr<BaseSolver> next;
  {
    const std::lock_guard guard(lock);
    if (bestValue > value) {
      bestValue = value;
      bestVar = variables;
    }
    if (stop.load(std::memory_order_acquire) == 0 && tryCount.load(std::memory_order_relaxed) < tryNum)
      next = solver;
    else
      finished = true;
  }
  if (!next) return;
  next->running.store(1, std::memory_order_release);
  workers.fetch_add(1, std::memory_order_relaxed);
  start(next);
}

bool OptRuns::askStop() {
  stop.store(1, std::memory_order_release);
  const std::lock_guard guard(lock);
  if (!solver) return false;
  solver->stop();
  return true;
}

uint8_t OptRuns::state() const {
  if (!solver) return ORVANE_OPTIMIZER_NO_SOLVER;
  if (!function) return ORVANE_OPTIMIZER_NO_FUNCTION;
  return isRunning() ? ORVANE_OPTIMIZER_RUNNING : ORVANE_OPTIMIZER_READY;
}

bool OptRuns::randValue() {
  if (!solver || isRunning()) return false;
  solver->randomise();
  return true;
}

bool OptRuns::getCurrentInfo(double* out) {
  const std::lock_guard guard(lock);
  if (!solver) return false;
  out[0] = static_cast<double>(tryCount.load(std::memory_order_relaxed));
  solver->getCurrentInfo(out + 1);
  if (out[2] > bestValue) out[2] = bestValue;
  return true;
}

double OptRuns::getOptVar(double* out) {
  if (!solver || !function || isRunning()) return kNoValue;
  const std::lock_guard guard(lock);
  const Candidate best = solver->lowest();
  if (best && bestValue > best->bestValue) {
    bestValue = best->bestValue;
    bestVar = best->bestVar;
  }
  std::copy_n(bestVar.begin(), std::min(bestVar.size(), static_cast<std::size_t>(function->varSize)), out);
  return bestValue;
}

}  // namespace Solver
