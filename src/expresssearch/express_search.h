// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <random>
#include <span>
#include <vector>

#include "expresssearch/flock.h"
#include "expresssearch/results.h"
#include "expresssearch/transformations.h"
#include "frame/base_data.h"
#include "frame/function_ref.h"
#include "frame/shared_value.h"
#include "solver/least_squares/dog_leg.h"

namespace Search {

struct KindRow;
using Vectors = std::vector<std::vector<double>>;

/// Data and settings: what a clone takes over.
struct SearchSettings {
  uint8_t kind = 255, yTransform = 255;
  int32_t maxTerms = 0;
  Limits limits;
  int32_t limitCount = 0;  ///< above 0 and below the number of terms: only so many, drawn at random, are searched

  Vectors terms;
  std::vector<bool> termMask;  ///< no value below 0: powers are defined
  std::vector<double> y, originalY;
  double yMean = 0.0, yVar = 0.0;
  Scaling yScaling;

  Vectors columns;  ///< raw data of peaks and surfaces
  std::vector<double> columnShift;

  OptimizerByNbird_c::Settings bird;
  struct LeastSquares {
    int32_t iter = 512, noImprove = 16;
    double tol = 1e-6, target = 0.001;
  } solver;  ///< of denseSolver
};

/// The search for a formula. Search, and all that changes settings, on one thread; stop and the getters on any.
class ExpressSearch_c final : public BaseData, public SearchSettings {
 public:
  ExpressSearch_c() { typeCode = 9; }
  std::unique_ptr<ExpressSearch_c> clone() const;

  void addX(std::span<const double> data);
  void setY(std::span<const double> data);
  void addOriginalData(std::span<const double> data);

  void search(int32_t maxTerms, uint8_t kind, uint8_t transform);
  /// One run of kind 0 with the denominators of the automatic search; another flag stops it, too.
  void searchStage(int32_t maxTerms, uint8_t transform, const SharedValue<bool>& outerStop);
  void askStop();
  bool stopped() const { return stop || (outer != nullptr && *outer); }

  Target target() const { return {originalY, yMean, yVar}; }
  /// A result for this search's data, without lists; `judged` is what the search found for it.
  std::unique_ptr<Result> newResult(const Judgement& judged) const;
  /// Judges a candidate's fitted values, and keeps what fill(result) completes if that is worth it.
  void judgeAndKeep(const Target& target, std::span<const double> fitted, FunctionRef<void(Result&)> fill);
  void keep(const Judgement& judged, FunctionRef<void(Result&)> fill);

  /// A solver with this search's settings, for `varCount` variables; held here for askStop.
  Solver::SolverByDogLeg_c& makeSolver(int32_t varCount, int32_t resCount);

  ResultStore store;
  std::vector<uint32_t> termIdx;  ///< term indices in the order of the walk
  std::mt19937 rng;               ///< of the solver and the flock

 private:
  void run(int32_t maxTerms, uint8_t kind, uint8_t transform, const KindRow* row);
  bool sameLengths(bool ofTerms) const;
  void transformY();
  void shuffleTerms();

  SharedValue<bool> stop{false};
  std::atomic<bool> running{false};
  const SharedValue<bool>* outer = nullptr;
  std::mutex solverLock;  ///< beside denseSolver, for askStop
  std::unique_ptr<Solver::SolverByDogLeg_c> denseSolver;
};

}  // namespace Search
