// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <span>
#include <vector>

#include "expresssearch/judge.h"
#include "expresssearch/transformations.h"
#include "frame/base_data.h"
#include "frame/shared_value.h"

namespace Search {

/// What every result has. Not changed once it is kept.
class SearchResult_c : public BaseData {
 public:
  SearchResult_c() { typeCode = 7; }
  Scaling scaling() const { return {yOffset, yScale}; }
  /// kind, transform, termCount, yOffset, yScale, error, fit into out[7].
  void info(double* out) const;

  uint8_t kind = 255, transform = 255;
  int32_t termCount = 0;
  double yOffset = 0.0, yScale = 1.0;
  double error = kNoError, fit = 0.0;
};

/// A result with two lists, as all that the search makes. What the lists hold is told at api_ES_GetResultForTwoIndex.
class SearchResultByTwoIndex_c final : public SearchResult_c {
 public:
  SearchResultByTwoIndex_c() { typeCode = 8; }
  /// Copies the lists out, each with its constant and the end mark; null arrays are passed over.
  int32_t lists(double* coef, int32_t* idx, double* coef2, int32_t* denIdx) const;

  std::vector<double> numCoef, denCoef;
  std::vector<int32_t> numIdx, denIdx;
  double c0 = 0.0, d0 = 0.0;
};
using Result = SearchResultByTwoIndex_c;

/// Limits that a fit must keep to be accepted.
struct Limits {
  double error = 0.0, fit = 0.0;
};

/// The answer where there is no result: null, and out[0] = 255.
const Result* noResult(double* out);

/// The accepted results and the best one. One thread writes; others may read at any time. A result that was handed out
/// stays alive as long as this object.
class ResultStore {
 public:
  enum class Verdict { Forgotten = 0, Accepted = 1, BestOnly = 2 };

  /// A candidate with an error above this, below kNoError, is forgotten whatever else it is. For the writing thread.
  double errorBound(const Limits& limits) const;

  /// Whether an error is no worse than the best one. For the writing thread.
  bool reaches(double error) const { return bestResult == nullptr || error <= bestResult->error; }

  void countCandidate() { searchNum = searchNum.get() + 1; }
  Verdict verdict(const Judgement& judgement, const Limits& limits) const;
  /// False when an accepted result has filled the list.
  bool keep(Verdict verdict, std::unique_ptr<Result> result);
  void clear();

  int64_t candidates() const { return searchNum; }
  std::size_t size() const;
  /// Null when there is none; otherwise its information goes into out[7], or out[0] = 255.
  const Result* best(double* out);
  const Result* at(int64_t i, double* out);
  std::shared_ptr<const Result> best() const;

 private:
  using Held = std::shared_ptr<const Result>;
  const Result* handOut(const Held& result, double* out);

  mutable std::mutex lock;
  SharedValue<int64_t> searchNum{0};
  std::vector<Held> results;
  Held bestResult;
  std::set<Held> handedOut;
};

}  // namespace Search
