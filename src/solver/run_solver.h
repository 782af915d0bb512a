// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "solver/moving_solver.h"

namespace Solver {

/// "RUN", a Runge-Kutta optimiser (after Ahmadianfar et al. 2021): the four slopes of the classical method, taken
/// between a better and a worse candidate, give the direction of a move.
class RUNSolver final : public BaseNormSolver {
 public:
  RUNSolver();

  // Members of the population; pickBest is the one of lowest curValue, the first on equal values.
  const OptVariable *pickA = nullptr, *pickB = nullptr, *pickC = nullptr, *pickBest = nullptr;
  const std::vector<double>* better = nullptr;
  const std::vector<double>* worse = nullptr;
  NormalDistribution normal2;
  std::vector<double> mean, delta, rk, v1, wList;
  std::vector<double> sf;

 private:
  double narrowing = 1;       // exp(-4 t/T) of the iteration
  std::vector<double> drawn;  // uniform numbers of one loop over the variables, in the order of their draws

  bool init();
  bool iterate();
  bool step(const Candidate& c, double s);
  const double* draws(std::size_t rows, std::size_t more);
  void spread(const Candidate& c);
  void pickThree(const Candidate& c);
  void slopes();
  void move(const Candidate& c, double s);
  void enhance(const Candidate& c);
  void refine(const Candidate& c, double s);
  void settle(const Candidate& c);
  bool improve(const Candidate& c);
};

}  // namespace Solver
