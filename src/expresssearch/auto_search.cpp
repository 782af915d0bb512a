// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/auto_search.h"

#include <algorithm>

#include "expresssearch/kinds.h"

namespace Search {

AutoExpressSearch_c::AutoExpressSearch_c() : current(std::make_shared<ExpressSearch_c>()) { typeCode = 10; }

void AutoExpressSearch_c::setLimits(const Limits& limits, int32_t count) {
  errorLimit = limits.error;
  limitCount = count;
  current->limits = limits;
  current->limitCount = count;
}

void AutoExpressSearch_c::search(int32_t newMaxTerms, int32_t stageLimit) {
  const RunMark mark(running);
  if (!mark.first) return;
  stop = false;
  maxTerms = newMaxTerms;
  restart();
  for (int32_t stage = 0; stage < stageLimit; ++stage) {
    if (!searchStage() || stop || errorLimit >= bestError) break;
    if (stage + 1 < stageLimit) setCurrent(residualSearch(*current));
  }
  const std::lock_guard guard(lock);
  if (!stages.empty()) current = stages.front();
}

/// Back to the data that the host gave, without stages and results.
void AutoExpressSearch_c::restart() {
  Stage first = stages.empty() ? current : Stage(stages.front()->clone());
  first->store.clear();
  first->limits = {errorLimit, 1.0};
  first->limitCount = limitCount;
  const std::lock_guard guard(lock);
  current = std::move(first);
  stages.clear();
  counted = 0;
  total = 0;
  bestError = kNoError;
}

/// One stage under every transformation; false when it does not lower the error.
bool AutoExpressSearch_c::searchStage() {
  static constexpr uint8_t kTransforms[] = {0, 3, 1, 102, 100};
  for (const uint8_t transform : kTransforms)
    if (!stop) current->searchStage(maxTerms, transform, stop);
  total = total + current->store.candidates();
  const auto best = current->store.best();
  const bool better = best != nullptr && best->error < bestError;
  const std::lock_guard guard(lock);
  stages.push_back(current);
  if (!better) return false;
  bestError = best->error;
  ++counted;
  return true;
}

/// A search for what the best result of a stage leaves.
std::unique_ptr<ExpressSearch_c> AutoExpressSearch_c::residualSearch(const ExpressSearch_c& stage) {
  auto next = stage.clone();
  std::vector<double> rest(stage.originalY.size());
  Search::calExpress(stage, *stage.store.best(), rest);
  std::ranges::transform(stage.originalY, rest, rest.begin(), std::minus<>());
  next->setY(rest);
  return next;
}

void AutoExpressSearch_c::setCurrent(Stage stage) {
  const std::lock_guard guard(lock);
  current = std::move(stage);
}

void AutoExpressSearch_c::askStop() {
  stop = true;
  const std::lock_guard guard(lock);
  current->askStop();
}

std::vector<AutoExpressSearch_c::Stage> AutoExpressSearch_c::countedStages() {
  const std::lock_guard guard(lock);
  return {stages.begin(), stages.begin() + static_cast<std::ptrdiff_t>(counted)};
}

void AutoExpressSearch_c::calExpress(double* out) {
  const std::span<double> sum{out, rowsOf(*current, true)};
  std::vector<double> part(sum.size());
  std::ranges::fill(sum, 0.0);
  for (const Stage& stage : countedStages()) {
    Search::calExpress(*current, *stage->store.best(), part);
    std::ranges::transform(sum, part, sum.begin(), std::plus<>());
  }
}

const Result* AutoExpressSearch_c::stageResult(int32_t stage, double* out) {
  const std::vector<Stage> all = countedStages();
  if (stage >= 0 && static_cast<std::size_t>(stage) < all.size())
    return all[static_cast<std::size_t>(stage)]->store.best(out);
  return noResult(out);
}

}  // namespace Search
