// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "frame/shuffle_front.h"
#include "solver/base_solver.h"

namespace Solver {

/// The moves that several solvers share, on the frame's population.
class MovingSolver : public BaseSolver {
 public:
  using BaseSolver::BaseSolver;

  int64_t randomIndex(int64_t lo, int64_t hi);
  std::size_t uniformIndex();  ///< unbiased over the population
  /// A new Mersenne twister for shuffles and picks, which shall not draw on `rng`; good until the next call.
  LocalMersenne localGenerator() { return locals.next(localSeed, seedsAhead()); }
  /// The first three of 0, 1, ..., n-1 after a shuffle by such a generator.
  ShuffleFronts::Front firstThree(std::size_t n) { return locals.nextFront(localSeed, seedsAhead(), n); }

  bool tryCandidate(const Candidate& c, bool force);
  void clip(std::vector<double>& trial);
  void pullBack(std::vector<double>& trial, const std::vector<double>& x, double p);
  void widenBounds(std::size_t size);
  void gradientStep();
  double probe(std::vector<double>& x, std::vector<double>& trial, double limit);
  void restartCheck();
  void scatter(std::vector<double>& trial);
  Candidate randomNeighbour(const Candidate& c);
  bool away(const Candidate& c, double s);
  bool walk(const Candidate& c);

 private:
  bool offerAway(const Candidate& c, double v);

  std::size_t seedsAhead() const { return localSeed == deviceSeed ? LocalMersennes::kLanes : 1; }

  ShuffleFronts locals;
};

/// Sorts candidates by one of their values, ascending; a NaN stands behind every number. Ties have no defined order.
void sortBy(std::vector<Candidate>& candidates, double OptVariable::*value);

/// A solver whose run is the common loop around one function an iteration.
class BaseNormSolver : public MovingSolver {
 public:
  using MovingSolver::MovingSolver;
  bool run() override;

  std::function<bool()> initFun;  ///< once at a run's start, may be empty; false refuses the run
  std::function<bool()> iterFun;  ///< one iteration; true ends the run
};

}  // namespace Solver
