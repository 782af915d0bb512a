// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "frame/function_ref.h"
#include "solver/least_squares/dog_leg.h"

namespace Search {

/// A small flock over a least-squares solver: every bird is a local minimum, and moves are jumps along the line to the
/// best bird, each followed by a solve. For fits with many local minima and few parameters.
class OptimizerByNbird_c {
 public:
  /// A flock of `pop` birds, `iter` rounds; it ends early after `flag` rounds without a better best (0: never).
  struct Settings {
    int32_t pop = 32, iter = 8;
    uint8_t flag = 4;
  };

  OptimizerByNbird_c(Solver::SolverByDogLeg_c& denseSolver, std::mt19937& generator, const Settings& flock)
      : solver(denseSolver), rng(generator), settings(flock) {}

  /// Solves from `start` and from points that draw(point) gives, then moves the birds, until one is at or below
  /// `target`.
  void search(std::span<const double> start, FunctionRef<void(std::span<double>)> draw, double target,
              FunctionRef<bool()> stopped);

  double bestError() const { return birds.empty() ? 1e300 : birds[best].error; }
  std::span<const double> bestPoint() const { return birds[best].point; }

 private:
  struct Bird {
    double error;
    std::vector<double> point;
  };

  void hatch(std::span<const double> point);
  void move(std::size_t i, FunctionRef<bool()> stopped);
  void setStep(int attempt, const std::vector<double>& point);

  Solver::SolverByDogLeg_c& solver;
  std::mt19937& rng;
  Settings settings;
  UniformDistribution uniform;
  std::vector<Bird> birds;
  std::size_t best = 0;
  std::vector<double> step, place;
};

}  // namespace Search
