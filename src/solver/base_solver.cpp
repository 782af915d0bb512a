// SPDX-License-Identifier: Apache-2.0
#include "solver/base_solver.h"

#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <utility>

namespace Solver {

using Clock = std::chrono::steady_clock;

BaseSolver::BaseSolver(std::string solverName, int32_t varSize)
    : name(std::move(solverName)),
      rng(static_cast<uint32_t>(std::time(nullptr))),
      workVar(static_cast<std::size_t>(varSize)) {}

// A stop is noted twice. `stopFlag` ends the run under way, but run() lowers it at its start; `asked` outlives that, so
// that a stop between the start of the thread and the first iteration is not lost: clearStop() reads the flag that it
// lowers, and so sees the note of whoever had raised it.
void BaseSolver::stop() {
  askStop();
  stopFlag.store(1, std::memory_order_release);
}

void BaseSolver::prepareStart() {
  asked.store(false, std::memory_order_relaxed);
  running.store(1, std::memory_order_release);
}

void BaseSolver::clearStop() {
  stopFlag.exchange(0, std::memory_order_acq_rel);
  if (stopAsked()) stopFlag.store(1, std::memory_order_release);
}

void BaseSolver::getCurrentInfo(double* out) {
  // `objective` changes hands with the anchor during a run; the anchor's inner objective is the same one and stands
  // still.
  double last = 0.0;
  if (anchor->active)
    last = anchor->innerValue;
  else if (anchor->inner)
    last = anchor->inner->lastValue;
  const double best = anchor->active ? anchor->anchorBest : bestError;
  out[0] = static_cast<double>(iter.get());
  out[1] = last < best ? last : best;
  out[2] = last;
}

void BaseSolver::setObjective(std::shared_ptr<BaseOptimizeObject> function) {
  anchor->inner = function;
  objective = std::move(function);
}

void BaseSolver::setPopulation(int32_t count, int32_t varSize) {
  population.clear();
  bestVar = nullptr;
  for (int32_t i = 0; i < count; ++i)
    population.push_back(std::make_shared<OptVariable>(static_cast<std::size_t>(varSize)));
}

void BaseSolver::randomise() {
  for (const Candidate& c : population) {
    c->bestValue = c->curValue = c->trialValue = kNoValue;
    for (std::size_t i = 0; i < c->curVar.size(); ++i) c->curVar[i] = (maxVar[i] - minVar[i]) * u() + minVar[i];
    limit(c->curVar);
    c->bestVar = c->curVar;
    c->trialVar = c->curVar;
  }
  history.clear();
}

bool BaseSolver::prepareBox() {
  if (maxVar.empty() || maxVar.size() != minVar.size() || population.empty()) return false;
  if (!objective || static_cast<std::size_t>(objective->varSize) != maxVar.size()) return false;
  for (std::size_t i = 0; i < maxVar.size(); ++i)
    if (minVar[i] > maxVar[i]) std::swap(minVar[i], maxVar[i]);
  for (std::size_t i = 0; i < population.size(); ++i) population[i]->index = static_cast<int32_t>(i);
  restartCount = 0;
  restartMark = 1e300;
  return true;
}

void BaseSolver::evaluateAll() {
  for (const Candidate& c : population) {
    if (stopped()) break;  // the rest keeps its values
    if (c->evaluate != 0) c->trialValue = objective->calcValue(c->trialVar);
  }
  for (const Candidate& c : population) c->accept();
}

Candidate BaseSolver::lowest() const {
  if (population.empty()) return nullptr;
  const Candidate* best = &population.front();
  for (const Candidate& c : population)
    if (c->bestValue < (*best)->bestValue) best = &c;
  return *best;
}

void BaseSolver::pickBest() {
  bestVar = lowest();
  bestVar->age = 0;
  bestError = anchoredBest(*bestVar);
}

bool BaseSolver::continueTest() {
  if (stopped() || iter >= maxIter) return false;
  const double value = anchor->anchorValue;
  const double tunnelled = anchor->anchorBest;
  if (anchor->active && (value > tunnelled + 1.0 || value > tunnelled + (std::abs(value) + 1e-6) * 0.01)) {
    leaveAnchor(true);
    if (targetError > bestError) return false;
  }
  const double v = anchor->active ? anchor->anchorBest : bestError;
  if (!anchor->active && targetError > v) return false;
  if (stallBest > v + 1.0) {
    stallBest = v;
    stallCount = 0;
    return true;
  }
  // KEPT: the value is compared with the counter; expected: |v - stallBest| (kept.csv: Continue_counter)
  if (!((std::abs(v) + 1e-6) * 0.001 > std::abs(v - stallCount))) return true;
  ++stallCount;
  if (stallCount == stallLimit) {
    if (anchor->active) return stallCount != stallLimit2;
    enterAnchor();
    return true;
  }
  // KEPT: the counter is set to the second limit; expected: a comparison (kept.csv: Continue_assignment)
  stallCount = stallLimit2;
  return stallCount == 0 || !anchor->active;
}

void BaseSolver::enterAnchor() {
  anchor->active = uint8_t{1};
  const auto second = static_cast<uint8_t>(u() * 6.99);
  const auto first = static_cast<uint8_t>(u() * 6.99);
  anchor->setModes(first, second);
  stallCount = 0;
  stallBest = kInfinity;
  restartMark = kInfinity;
  restartCount = 0;
  bestVar = lowest();
  bestVar->age = 0;
  anchor->anchorValue = bestVar->bestValue;
  anchor->anchorVar = bestVar->bestVar;
  anchor->anchorBestVar = bestVar->bestVar;
  anchor->anchorBest = anchor->anchorValue;
  objective = anchor;
  for (const Candidate& c : population) {
    c->bestValue = kInfinity;
    c->trialValue = evaluate(c->trialVar);
    c->curValue = c->trialValue;
    c->accept();
  }
  bestVar = lowest();
  bestVar->age = 0;
  bestError = bestVar->bestValue;
}

void BaseSolver::leaveAnchor(bool all) {
  if (!anchor->active) return;
  anchor->active = uint8_t{0};
  stallBest = restartMark = kInfinity;
  stallCount = restartCount = 0;
  bestError = anchor->anchorBest;
  bestVar->bestValue = 1e300;
  bestVar->trialValue = bestVar->curValue = bestError;
  bestVar->trialVar = anchor->anchorBestVar;
  bestVar->accept();
  objective = anchor->inner;
  if (!all) return;
  for (const Candidate& c : population) {
    if (c == bestVar) continue;
    c->trialValue = evaluate(c->trialVar);
    c->bestValue = 1e300;
    c->curValue = c->trialValue;
    c->accept();
  }
}

void BaseSolver::recordHistory() {
  if (!history.empty() && history.back()->iter == iter.get()) return;
  const double v = bestError;
  history.push_back(std::make_shared<OptResult>(OptResult{static_cast<int32_t>(iter.get()), v}));
  if (printFlag == 0) return;
  std::printf("%s, Function: %s, VarSize: %d, Iter: %lld, MinError: %.16g, log10(Error):%.16g\n", name.c_str(),
              objective->name.c_str(), objective->varSize, static_cast<long long>(iter.get()), v,
              v < 0.0 ? -std::log10(-v) : std::log10(v));
}

void BaseSolver::writeLog() const {
  if (logDir.size() < 2) return;
  std::ofstream file(logDir + name + ".txt");
  if (!file) return;
  file << "Optimizer: " << name << "\nFunction: " << objective->name << "\nVarSize: " << objective->varSize
       << "\nCost Time: " << costTime << " ms\nIter, MinError\n"
       << std::setprecision(18);
  for (const auto& line : history) file << line->iter << ", " << line->minError << "\n";
}

// `running` falls last, with release order: whoever reads it as 0 sees the whole result, and the worker touches nothing
// of the solver afterwards. What doneFun needs is taken before.
void BaseSolver::finish(Clock::time_point start, bool timed) {
  if (timed) {
    const std::chrono::nanoseconds spent = Clock::now() - start;
    costTime = static_cast<float>(spent.count()) / 1000000.0f;
  }
  leaveAnchor(false);
  writeLog();
  const auto done = doneFun;
  const Candidate best = done ? lowest() : nullptr;
  const std::vector<double> variables = best ? best->bestVar : std::vector<double>();
  const double value = best ? best->bestValue : kNoValue;
  const int64_t iterations = iter;
  running.store(0, std::memory_order_release);
  if (done) done(iterations, value, variables);
}

}  // namespace Solver
