// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/results.h"

#include <algorithm>

namespace Search {
namespace {

constexpr std::size_t kMostResults = 512;
constexpr double kNoResult = 255.0;
constexpr double kEndMark = 1e300;
constexpr uint8_t kFirstSurface = 60;

template <class From, class To>
To* copyOut(const std::vector<From>& from, To* to) {
  return to == nullptr ? nullptr : std::copy(from.begin(), from.end(), to);
}

void endList(double* end, std::initializer_list<double> tail) {
  if (end != nullptr) std::copy(tail.begin(), tail.end(), end);
}

}  // namespace

void SearchResult_c::info(double* out) const {
  const double values[] = {double(kind), double(transform), double(termCount), yOffset, yScale, error, fit};
  std::copy(std::begin(values), std::end(values), out);
}

int32_t SearchResultByTwoIndex_c::lists(double* coef, int32_t* idx, double* coef2, int32_t* denominators) const {
  double* coefEnd = copyOut(numCoef, coef);
  double* coef2End = copyOut(denCoef, coef2);
  copyOut(numIdx, idx);
  if (kind >= kFirstSurface) {  // one index at most
    endList(coefEnd, {kEndMark});
    endList(coef2End, {kEndMark});
  } else {
    endList(coefEnd, {c0, kEndMark});
    endList(coef2End, {d0, kEndMark});
    copyOut(denIdx, denominators);
  }
  return static_cast<int32_t>(denIdx.empty() ? denCoef.size() : denIdx.size());
}

const Result* noResult(double* out) {
  if (out != nullptr) *out = kNoResult;
  return nullptr;
}

double ResultStore::errorBound(const Limits& limits) const {
  return bestResult == nullptr ? kInfinity : std::max(limits.error, bestResult->error);
}

ResultStore::Verdict ResultStore::verdict(const Judgement& judgement, const Limits& limits) const {
  if (limits.error >= judgement.error && judgement.fit >= limits.fit) return Verdict::Accepted;
  const bool better = bestResult == nullptr || bestResult->error > judgement.error;
  return better ? Verdict::BestOnly : Verdict::Forgotten;
}

bool ResultStore::keep(Verdict verdict, std::unique_ptr<Result> result) {
  const Held held = std::move(result);
  const std::lock_guard guard(lock);
  if (verdict != Verdict::Accepted) {  // it does not join the list, be that full or not
    if (verdict == Verdict::BestOnly) bestResult = held;
    return true;
  }
  if (results.empty() || bestResult == nullptr || held->error < bestResult->error) bestResult = held;
  results.push_back(held);
  return results.size() <= kMostResults;
}

void ResultStore::clear() {
  const std::lock_guard guard(lock);
  results.clear();
  bestResult = nullptr;
  searchNum = 0;
}

std::size_t ResultStore::size() const {
  const std::lock_guard guard(lock);
  return results.size();
}

std::shared_ptr<const Result> ResultStore::best() const {
  const std::lock_guard guard(lock);
  return bestResult;
}

const Result* ResultStore::best(double* out) {
  const std::lock_guard guard(lock);
  return handOut(bestResult, out);
}

const Result* ResultStore::at(int64_t i, double* out) {
  const std::lock_guard guard(lock);
  const bool inside = i >= 0 && i < static_cast<int64_t>(results.size());
  return handOut(inside ? results[static_cast<std::size_t>(i)] : nullptr, out);
}

const Result* ResultStore::handOut(const Held& result, double* out) {
  if (result == nullptr) return noResult(out);
  if (out != nullptr) result->info(out);
  handedOut.insert(result);
  return result.get();
}

}  // namespace Search
