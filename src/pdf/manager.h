// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <future>
#include <list>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "frame/base_data.h"
#include "pdf/base_pdf_fun.h"
#include "pdf/sample.h"
#include "solver/base_solver.h"

namespace PDF {

/// A sample and the fits of distributions to it.
///
/// The caller of optimizer() is the only one that changes `tasks`; it does so under `mutex`, as it does with the
/// results in the distributions, so that stop() and getSortPDF() from other threads see complete ones. The atomics may
/// be read at any time.
class PDFManger final : public BaseData, public std::enable_shared_from_this<PDFManger> {
 public:
  /// Takes a raw sample; an empty one leaves no data.
  void setData(std::span<const double> sample);
  /// Takes couples (value, weight) in ascending order of value; false and no change when groupPairs refuses them.
  bool setXYData(std::span<const double> pairs);

  int32_t dataSize() const;
  void getSrcData(double* out) const;
  void getCDFData(double* out) const;
  void getPDFData(double* out) const;

  struct FitOptions {
    std::span<const uint8_t> solverCodes;
    int32_t popSize;
    int32_t maxIter;
    int32_t threads;
    double precision;
  };

  /// Fits the distributions (nulls and repetitions are left out; `planned` is how many the host gave) with each solver
  /// in turn and returns 1, or returns 1 at once while a fit is under way. Blocks until every solver has ended.
  uint8_t optimizer(std::span<BasePDFFun* const> distributions, std::size_t planned, const FitOptions& options);

  void stopFit();
  bool isRun() const { return running != 0; }
  int64_t process() const;

  /// One distribution of the last fit and its error.
  struct Ranked {
    BasePDFFun* fun;
    double error;
  };
  /// The last fit in ascending order of error; equal errors stay in the order of handing out.
  std::vector<Ranked> getSortPDF() const;

 private:
  // A running solver. `params` are the distribution's values before the run.
  struct Task {
    std::shared_ptr<Solver::BaseSolver> solver;
    BasePDFFun* fun;
    std::vector<double> params;
    bool finished = false;  // under `mutex`
    std::future<void> run;
  };
  struct RunningFit;

  void takeSample(std::span<const SampleData_t> groups);
  void takeDistributions(std::span<BasePDFFun* const> distributions);
  void round(uint8_t solverCode, std::size_t threads);
  std::shared_ptr<Solver::BaseSolver> makeTaskSolver(uint8_t solverCode, BasePDFFun& fun) const;
  void start(uint8_t solverCode, BasePDFFun& fun);
  void reap(std::size_t limit);
  void awaitChange(std::unique_lock<std::recursive_mutex>& lock);
  static void collect(const Task& task);
  void endFit();

  std::atomic<uint8_t> stop = 0;
  std::atomic<uint8_t> running = 0;
  std::size_t funIndex = 0;
  int32_t popSize = 90;
  int64_t maxIter = 10000;
  double precision = 1e-12;
  std::atomic<int64_t> doneCount = 0;
  std::atomic<int64_t> totalCount = 0;
  mutable std::recursive_mutex mutex;
  std::condition_variable_any changed;  // a solver has ended, or stop was asked
  std::vector<double> xs;
  std::vector<double> cdf;
  mutable std::mutex densityMutex;  // taken first where both are
  mutable std::vector<double> pdf;  // empty until someone asks for it; under `densityMutex`
  std::vector<BasePDFFun*> funs;
  std::list<std::shared_ptr<Task>> tasks;
};

}  // namespace PDF
