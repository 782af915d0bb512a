// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/express_search.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "expresssearch/kinds.h"
#include "expresssearch/run_mark.h"
#include "frame/random.h"

namespace Search {
namespace {

std::vector<double> copyOf(std::span<const double> data) { return {data.begin(), data.end()}; }

double leastOf(std::span<const double> data) {
  return data.empty() ? 0.0 : *std::min_element(data.begin(), data.end());
}

}  // namespace

std::unique_ptr<ExpressSearch_c> ExpressSearch_c::clone() const {
  auto copy = std::make_unique<ExpressSearch_c>();
  static_cast<SearchSettings&>(*copy) = *this;
  return copy;
}

void ExpressSearch_c::addX(std::span<const double> data) {
  terms.push_back(copyOf(data));
  termMask.push_back(std::ranges::all_of(data, [](double x) { return x >= 0.0; }));
}

void ExpressSearch_c::setY(std::span<const double> data) {
  y = originalY = copyOf(data);
  const Target all = targetOf(originalY);
  yMean = all.mean;
  yVar = all.variance;
}

void ExpressSearch_c::addOriginalData(std::span<const double> data) {
  const double least = leastOf(data);
  columns.push_back(copyOf(data));
  columnShift.push_back(least < 0.01 ? 1.0 - least : 0.0);
}

void ExpressSearch_c::search(int32_t newMaxTerms, uint8_t newKind, uint8_t newTransform) {
  const KindRow* row = findKind(newKind);
  run(newMaxTerms, newKind, newTransform, row);
}

void ExpressSearch_c::searchStage(int32_t newMaxTerms, uint8_t newTransform, const SharedValue<bool>& outerStop) {
  static constexpr KindRow kStage{0, true, searchRationalStage, nullptr};
  outer = &outerStop;
  run(newMaxTerms, 0, newTransform, &kStage);
  outer = nullptr;
}

void ExpressSearch_c::run(int32_t newMaxTerms, uint8_t newKind, uint8_t newTransform, const KindRow* row) {
  const RunMark mark(running);
  if (!mark.first) return;
  stop = false;
  maxTerms = newMaxTerms;
  kind = newKind;
  yTransform = newTransform;
  // KEPT: the generator of rand() starts anew for the whole process; expected: left alone (kept.csv: Rand_restart)
  std::srand(20200923);
  if (row == nullptr || !sameLengths(row->ofTerms)) return;
  if (row->ofTerms) {
    transformY();
    shuffleTerms();
  }
  row->search(*this);
}

/// Whether every vector that a search reads has the length of the first.
bool ExpressSearch_c::sameLengths(bool ofTerms) const {
  const Vectors& all = ofTerms ? terms : columns;
  const std::size_t n = ofTerms ? originalY.size() : (columns.empty() ? 0 : columns.front().size());
  return n > 0 && std::ranges::all_of(all, [n](const auto& vector) { return vector.size() == n; });
}

void ExpressSearch_c::transformY() {
  const Transformation* row = Transformations::find(yTransform);
  if (row == nullptr) return;
  yScaling = row->fit(originalY);
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double scaled = originalY[i] * yScaling.scale + yScaling.offset;
    y[i] = row->forward == nullptr ? scaled : row->forward(scaled);
  }
}

void ExpressSearch_c::shuffleTerms() {
  termIdx.resize(terms.size());
  std::iota(termIdx.begin(), termIdx.end(), 0u);
  std::mt19937 order(deviceSeed());
  std::ranges::shuffle(termIdx, order);
  if (limitCount > 0 && static_cast<std::size_t>(limitCount) < termIdx.size())
    termIdx.resize(static_cast<std::size_t>(limitCount));
}

std::unique_ptr<Result> ExpressSearch_c::newResult(const Judgement& judged) const {
  auto result = std::make_unique<Result>();
  result->kind = kind;
  result->transform = yTransform;
  result->termCount = maxTerms;
  result->error = judged.error;
  result->fit = judged.fit;
  const KindRow* row = findKind(kind);
  if (row != nullptr && row->ofTerms) {
    result->yOffset = yScaling.offset;
    result->yScale = yScaling.scale;
  }
  return result;
}

void ExpressSearch_c::judgeAndKeep(const Target& target, std::span<const double> fitted,
                                   FunctionRef<void(Result&)> fill) {
  store.countCandidate();
  keep(judge(target, fitted), fill);
}

void ExpressSearch_c::keep(const Judgement& judged, FunctionRef<void(Result&)> fill) {
  const ResultStore::Verdict verdict = store.verdict(judged, limits);
  if (verdict == ResultStore::Verdict::Forgotten) return;
  std::unique_ptr<Result> result = newResult(judged);
  fill(*result);
  if (!store.keep(verdict, std::move(result))) stop = true;
}

Solver::SolverByDogLeg_c& ExpressSearch_c::makeSolver(int32_t varCount, int32_t resCount) {
  auto made = std::make_unique<Solver::SolverByDogLeg_c>();
  made->rng = &rng;
  made->iterLimit = solver.iter;
  made->noImproveLimit = solver.noImprove;
  made->targetError = solver.target;
  made->tol = solver.tol;
  made->init(varCount, resCount);
  const std::lock_guard guard(solverLock);
  denseSolver = std::move(made);
  if (stopped()) denseSolver->stop = 1;
  return *denseSolver;
}

void ExpressSearch_c::askStop() {
  stop = true;
  const std::lock_guard guard(solverLock);
  if (denseSolver != nullptr) denseSolver->stop = 1;
}

}  // namespace Search
