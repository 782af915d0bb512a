// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "expresssearch/express_search.h"
#include "expresssearch/run_mark.h"

namespace Search {

/// Search in stages: each one looks for a rational formula, under five transformations in turn, for what the stages
/// before it leave unexplained.
class AutoExpressSearch_c final : public BaseData {
 public:
  AutoExpressSearch_c();

  void addX(std::span<const double> data) { current->addX(data); }
  void setY(std::span<const double> data) { current->setY(data); }
  void setLimits(const Limits& limits, int32_t count);

  void search(int32_t maxTerms, int32_t stageLimit);
  void askStop();

  /// Sum of the stages' formulas on the terms.
  void calExpress(double* out);
  /// Best result of a stage; null, with out[0] = 255, beyond the last one that lowered the error.
  const Result* stageResult(int32_t stage, double* out);
  double error() const { return bestError; }
  int64_t candidates() const { return total; }

 private:
  using Stage = std::shared_ptr<ExpressSearch_c>;

  void restart();
  bool searchStage();
  static std::unique_ptr<ExpressSearch_c> residualSearch(const ExpressSearch_c& stage);
  std::vector<Stage> countedStages();
  void setCurrent(Stage stage);

  SharedValue<double> bestError{kNoError};
  SharedValue<int64_t> total{0};
  SharedValue<bool> stop{false};
  std::atomic<bool> running{false};
  int32_t maxTerms = 0, limitCount = 0;
  double errorLimit = 0.0;

  std::mutex lock;  ///< of what follows; the searching thread alone writes it
  Stage current;
  std::vector<Stage> stages;
  std::size_t counted = 0;  ///< stages that lowered the error
};

}  // namespace Search
