// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "frame/numbers.h"
#include "frame/random.h"
#include "solver/anchor_fun.h"
#include "solver/opt_variable.h"

namespace Solver {

/// The frame of a run, which every population solver shares: the population, the box, evaluation and stop, the end
/// test, the anchor for a stalled run, history and log. Every solver minimises.
///
/// One thread runs it. Other threads may call stop() and getCurrentInfo() and read `running`; the rest may be touched
/// only while `running`, read with acquire order, is 0. A run that is refused (no box, no objective, too few
/// candidates) leaves `running` as its starter set it and makes no doneFun call; run() then returns false.
class BaseSolver {
 public:
  BaseSolver(std::string solverName, int32_t varSize);
  virtual ~BaseSolver() = default;
  BaseSolver(const BaseSolver&) = delete;
  BaseSolver& operator=(const BaseSolver&) = delete;

  /// One whole run in the calling thread; false when the run was refused.
  virtual bool run() = 0;
  /// Asks the run under way, or the one that its starter has announced by prepareStart(), to end.
  virtual void stop();
  /// out[0] iterations done, out[1] best value, out[2] last value.
  virtual void getCurrentInfo(double* out);

  // --- for whoever sets a run up
  void setObjective(std::shared_ptr<BaseOptimizeObject> function);  ///< the anchor's inner objective too
  void setPopulation(int32_t count, int32_t varSize);
  void randomise();     ///< spreads the population over the box; clears the history
  void prepareStart();  ///< marks the solver running and forgets stops that were asked before

  // --- the frame of a run
  bool prepareBox();  ///< tests what a run needs and puts swapped bounds right
  void evaluateAll();
  /// The objective at x. Once a stop is asked it is not called any more: infinity, which improves on nothing.
  double evaluate(const std::vector<double>& x) { return stopped() ? kInfinity : objective->calcValue(x); }
  void pickBest();
  Candidate lowest() const;  ///< candidate of lowest bestValue, the first on equal values; null without a population
  bool continueTest();
  void recordHistory();
  void clearStop();  ///< start of run(): lowers stopFlag, unless a stop was asked since prepareStart()
  void finish(std::chrono::steady_clock::time_point start, bool timed = true);
  void enterAnchor();
  void leaveAnchor(bool all);
  void limit(std::vector<double>& trial) {
    if (limitFun != nullptr) limitFun(trial.data());
  }
  bool stopped() const { return stopFlag.load(std::memory_order_relaxed) != 0; }

  double u() { return uniform(rng); }
  double anchoredBest(const OptVariable& c) const { return anchor->active ? anchor->anchorBest.get() : c.bestValue; }

  std::shared_ptr<AnchorFun> anchor = std::make_shared<AnchorFun>();
  double stallBest = kInfinity;
  int32_t stallCount = 0;
  int32_t stallLimit = 200;   ///< entering the anchor
  int32_t stallLimit2 = 800;  ///< ending the run inside the anchor
  double restartMark = 1e300;
  int32_t restartCount = 0;
  std::string name;
  std::atomic<uint8_t> stopFlag{0};
  std::atomic<uint8_t> running{0};
  uint8_t printFlag = 1;  ///< a console line an iteration
  float costTime = 0;     ///< milliseconds of the last run
  std::string logDir;     ///< prefix of the log file's path; none below 2 characters
  int32_t gradCount = 0;  ///< coordinates of a gradient step; 0 turns it off
  SharedValue<int64_t> iter = 0;
  int64_t maxIter = 10000;
  SharedValue<double> bestError = kNoValue;
  double targetError = 1e-16;
  void (*limitFun)(double*) = nullptr;
  NormalDistribution normal;
  Candidate bestVar;
  std::shared_ptr<BaseOptimizeObject> objective;
  std::function<void(int64_t, double, const std::vector<double>&)> doneFun;
  UniformDistribution uniform;
  BlockMersenne rng;
  uint32_t (*localSeed)() = deviceSeed;  ///< of each local generator; a replay puts known seeds in
  std::vector<double> workVar;
  std::vector<double> maxVar, minVar;
  std::vector<double> gradVar;
  std::vector<int32_t> gradIndex;
  std::vector<Candidate> population;
  std::vector<std::shared_ptr<OptResult>> history;

 protected:
  void askStop() { asked.store(true, std::memory_order_release); }
  bool stopAsked() const { return asked.load(std::memory_order_acquire); }
  int64_t populationSize() const { return static_cast<int64_t>(population.size()); }
  std::size_t varCount() const { return minVar.size(); }
  double iteration() const { return static_cast<double>(iter.get()); }
  double iterations() const { return static_cast<double>(maxIter); }
  Candidate at(int64_t i) const { return population[static_cast<std::size_t>(i)]; }

 private:
  void writeLog() const;

  std::atomic<bool> asked{false};  // a stop since prepareStart(); survives the lowering of stopFlag in run()
};

}  // namespace Solver
