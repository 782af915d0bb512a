// SPDX-License-Identifier: Apache-2.0
#include "pdf/manager.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "frame/numbers.h"
#include "pdf/optimize_fun.h"
#include "pdf/table.h"
#include "solver/solver_factory.h"

namespace PDF {

namespace {

constexpr double kNoFit = 1e300;
constexpr int32_t kMinPopulation = 3;
constexpr std::chrono::milliseconds kStopRetry{1};

using Lock = std::lock_guard<std::recursive_mutex>;

}  // namespace

void PDFManger::setData(std::span<const double> sample) { takeSample(groupSample(sample)); }

bool PDFManger::setXYData(std::span<const double> pairs) {
  std::vector<SampleData_t> groups;
  if (!groupPairs(pairs, groups)) return false;
  takeSample(groups);
  return true;
}

void PDFManger::takeSample(std::span<const SampleData_t> groups) {
  EmpiricalSample sample = buildSample(groups);
  const std::lock_guard densityLock(densityMutex);
  const Lock lock(mutex);
  xs = std::move(sample.xs);
  cdf = std::move(sample.cdf);
  pdf.clear();
}

int32_t PDFManger::dataSize() const {
  const Lock lock(mutex);
  return static_cast<int32_t>(xs.size());
}

void PDFManger::getSrcData(double* out) const {
  const Lock lock(mutex);
  std::copy(xs.begin(), xs.end(), out);
}

void PDFManger::getCDFData(double* out) const {
  const Lock lock(mutex);
  std::copy(cdf.begin(), cdf.end(), out);
}

void PDFManger::getPDFData(double* out) const {
  // The sum takes long for many values: a fit and its readers must not wait for it.
  const std::lock_guard densityLock(densityMutex);
  if (pdf.empty()) {
    std::unique_lock lock(mutex);
    const std::vector<double> values = xs;
    lock.unlock();
    pdf = sampleDensity(values);
  }
  std::copy(pdf.begin(), pdf.end(), out);
}

/// Ends the fit however its block is left: with a solver still at work only when an exception passes.
struct PDFManger::RunningFit {
  explicit RunningFit(PDFManger& owner) : manager(owner) {}
  ~RunningFit() { manager.endFit(); }
  RunningFit(const RunningFit&) = delete;
  RunningFit& operator=(const RunningFit&) = delete;
  PDFManger& manager;
};

uint8_t PDFManger::optimizer(std::span<BasePDFFun* const> distributions, std::size_t planned,
                             const FitOptions& options) {
  {
    const Lock lock(mutex);  // a stop by someone who sees `running` comes after the clearing
    if (running.exchange(1)) return 1;
    stop = 0;
  }
  const auto self = shared_from_this();  // a host may release the handle meanwhile
  const RunningFit fit(*this);
  {
    const Lock lock(mutex);
    precision = options.precision;
    popSize = std::max(kMinPopulation, options.popSize);
    maxIter = std::max(1, options.maxIter);
    funIndex = 0;
    doneCount = 0;
    totalCount = static_cast<int64_t>(planned * options.solverCodes.size());
    takeDistributions(distributions);
  }
  for (uint8_t code : options.solverCodes) {
    if (stop) break;
    round(code, static_cast<std::size_t>(std::max(1, options.threads)));
  }
  return 1;
}

void PDFManger::takeDistributions(std::span<BasePDFFun* const> distributions) {
  funs.clear();
  tasks.clear();
  for (BasePDFFun* fun : distributions) {
    if (fun == nullptr || std::ranges::find(funs, fun) != funs.end()) continue;
    fun->fitError = kNoFit;
    funs.push_back(fun);
  }
  // Those whose value is cheap come first, so that a host that watches sees early results.
  auto next = funs.begin();
  for (const int32_t code : cheapCodes()) {
    const auto type = static_cast<uint32_t>(code);
    const auto found = std::find_if(next, funs.end(), [type](const BasePDFFun* fun) { return fun->pdfType == type; });
    if (found == funs.end()) continue;
    std::rotate(next, found, found + 1);
    ++next;
  }
}

void PDFManger::round(uint8_t solverCode, std::size_t threads) {
  if (Solver::makeSolver(solverCode) == nullptr) {
    doneCount += static_cast<int64_t>(funs.size());
    return;
  }
  for (funIndex = 0; funIndex < funs.size() && !stop; ++funIndex) {
    if (tasks.size() < threads)
      start(solverCode, *funs[funIndex]);
    else
      // KEPT: a turn that waits passes its distribution over; expected: it to start then (kept.csv: FitRound_skip)
      reap(threads - 1);
  }
  reap(0);
}

std::shared_ptr<Solver::BaseSolver> PDFManger::makeTaskSolver(uint8_t solverCode, BasePDFFun& fun) const {
  auto solver = Solver::makeSolver(solverCode);
  const Lock lock(mutex);
  const auto objective = std::make_shared<PDFOptimizeFun>(fun, xs, cdf);
  const std::size_t n = fun.optParamSize();
  std::vector<double> begin(n, 0.0);
  fun.initRange(xs, cdf, objective->minVar, objective->maxVar, begin);
  solver->printFlag = 0;
  solver->setObjective(objective);
  solver->minVar = objective->minVar;
  solver->maxVar = objective->maxVar;
  solver->setPopulation(popSize, static_cast<int32_t>(n));
  solver->randomise();
  Solver::OptVariable& first = *solver->population.front();
  for (std::size_t i = 0; i < n; ++i) {
    if (!std::isfinite(begin[i])) continue;  // no start known: the random one stays
    const auto [lower, upper] = std::minmax(objective->minVar[i], objective->maxVar[i]);
    first.trialVar[i] = first.curVar[i] = first.bestVar[i] = std::clamp(begin[i], lower, upper);
  }
  solver->maxIter = maxIter;
  solver->targetError = precision;
  return solver;
}

void PDFManger::start(uint8_t solverCode, BasePDFFun& fun) {
  const auto task = std::make_shared<Task>();
  task->fun = &fun;
  task->params.resize(fun.paramSize());
  fun.getParamsRaw(task->params.data());
  task->solver = makeTaskSolver(solverCode, fun);
  task->solver->prepareStart();
  std::list<std::shared_ptr<Task>> entry{task};
  const Lock lock(mutex);
  task->run = std::async(std::launch::async, [this, work = task.get()] {
    // A solver that refuses to start leaves its `running` set: what counts is that run() has returned or thrown.
    struct Signal {
      PDFManger& manager;
      Task& task;
      ~Signal() {
        const Lock ending(manager.mutex);
        task.finished = true;
        manager.changed.notify_all();
      }
    } const signal{*this, *work};
    work->solver->run();
  });
  tasks.splice(tasks.end(), entry);
}

void PDFManger::collect(const Task& task) {
  double value = kInfinity;
  const std::vector<double>* position = nullptr;
  for (const auto& member : task.solver->population) {
    if (!(member->bestValue < value)) continue;
    value = member->bestValue;
    position = &member->bestVar;
  }
  BasePDFFun& fun = *task.fun;
  fun.setParamsRaw(task.params.data());  // the solver has left its last candidate there
  if (position != nullptr && value < fun.fitError) {
    fun.fitError = value;
    fun.bestParams = *position;
  }
  if (!fun.bestParams.empty()) fun.setParams(fun.bestParams);
}

void PDFManger::awaitChange(std::unique_lock<std::recursive_mutex>& lock) {
  if (!stop) {
    changed.wait(lock);
    return;
  }
  // A run clears its stop flag when it begins, so a request may have come too early for it: ask until it has ended.
  for (const auto& task : tasks)
    if (!task->finished) task->solver->stop();
  changed.wait_for(lock, kStopRetry);
}

void PDFManger::reap(std::size_t limit) {
  std::unique_lock lock(mutex);
  while (tasks.size() > limit) {
    for (auto next = tasks.begin(); next != tasks.end();) {
      const auto at = next++;
      if (!(*at)->finished) continue;
      const std::shared_ptr<Task> task = *at;
      tasks.erase(at);
      ++doneCount;
      collect(*task);
      task->run.get();  // ended but for its last instructions; an exception of the run goes on from here
    }
    if (tasks.size() > limit) awaitChange(lock);
  }
}

void PDFManger::endFit() {
  std::unique_lock lock(mutex);
  if (!tasks.empty()) stop = 1;
  while (!std::ranges::all_of(tasks, [](const auto& task) { return task->finished; })) awaitChange(lock);
  for (const auto& task : tasks) collect(*task);
  tasks.clear();
  doneCount = totalCount.load();
  running = 0;
  stop = 0;
}

void PDFManger::stopFit() {
  const Lock lock(mutex);
  for (const auto& task : tasks) task->solver->stop();
  stop = 1;
  changed.notify_all();
}

int64_t PDFManger::process() const {
  const int64_t done = doneCount, total = totalCount;
  return done >= total ? 1000 : done * 1000 / total;
}

std::vector<PDFManger::Ranked> PDFManger::getSortPDF() const {
  const Lock lock(mutex);
  std::vector<Ranked> ranked;
  for (BasePDFFun* fun : funs) ranked.push_back({fun, fun->fitError});
  std::ranges::stable_sort(ranked, {}, &Ranked::error);
  return ranked;
}

}  // namespace PDF
