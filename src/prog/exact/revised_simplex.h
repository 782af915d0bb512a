// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "prog/exact/basis_factor.h"
#include "prog/exact/bounded_problem.h"
#include "prog/line/simplex.h"

namespace LineProg {

/// Where a variable stands.
enum class Place : uint8_t { basic, lower, upper };

/// A basis, to go on from.
struct Basis {
  std::vector<int> basic;    ///< by row
  std::vector<Place> place;  ///< by variable
};

/// A simplex with bounds over factors of the basis matrix. A point out of bounds is brought back by the dual method,
/// with costs shifted where it needs them to begin with, and the primal method does the rest with the true costs; so
/// neither needs a first phase. Prices are by reference frameworks (Harris 1973, Forrest and Goldfarb 1992); a step may
/// pass a bound by the tolerance for the sake of a greater pivot (Harris). Where steps of length 0 pile up, bounds or
/// costs are perturbed, and restored afterwards.
template <class Real>
class RevisedSimplex {
 public:
  explicit RevisedSimplex(const BoundedProblem& boundedProblem);

  /// Goes on from there.
  void load(const Basis& start);
  const Basis& basis() const { return standing; }
  void setBounds(int var, double least, double most);
  void setCost(const std::vector<double>& costs);
  /// Gives up, as infeasible, what cannot stay below.
  void setCutoff(double value) { cutoff = static_cast<Real>(value); }

  Status solve();

  Real value(int var) const { return x[var]; }
  Real reducedCost(int var) const { return d[var]; }
  Real objective() const;
  double lower(int var) const { return static_cast<double>(trueLower[var]); }
  double upper(int var) const { return static_cast<double>(trueUpper[var]); }

 private:
  enum class Turn { done, none, stuck };  ///< none: no optimum in this direction, unbounded or infeasible

  // simplex_primal.cpp
  Turn primal();
  int priced() const;
  int primalLimit(Real direction, Real& step) const;
  void perturbBounds();

  // simplex_dual.cpp
  Turn dual();
  int farthest() const;
  int dualLimit(Real sign) const;
  void shiftCosts(bool all);
  bool beyondCutoff() const;

  void refactor();
  void computeValues();
  void computeCosts();
  void makeColumn(int var);
  void makeRow(int place);
  void rest(int var, bool atUpper);
  void exchange(int place, int entering, bool leavesAtUpper);
  void updateCosts(int leaving, int entering, Real factor);
  void restore();
  bool primalFeasible() const;
  bool dualFeasible() const;
  Real wrongCost(int var) const;
  Real distance(int var) const;
  bool settled() const;

  const BoundedProblem& problem;
  const int rows, total;
  BasisFactor<Real> factors;
  Basis standing;
  std::vector<Real> x, d;  ///< values and reduced costs
  std::vector<Real> lo, up, cost, trueLower, trueUpper, trueCost;
  std::vector<Real> column;              ///< B^-1 a of the entering variable
  std::vector<Real> multiplier;          ///< a row of B^-1
  std::vector<Real> row;                 ///< that row times (A, I), by variable
  std::vector<Real> weight, dualWeight;  ///< by variable: of nonbasic ones, of basic ones
  Real cutoff = 0;
  bool perturbed = false;  ///< bounds or costs are not the true ones
  bool shifted = false;    ///< costs are not, and by more than the tolerance
};

/// The index whose excess is greatest by its weight, excess^2/weight; -1 when none has one.
template <class Real, class Excess, class Weight>
int steepest(int count, const Excess& excess, const Weight& weight) {
  int best = -1;
  Real most = 0;
  for (int i = 0; i < count; ++i) {
    const Real size = excess(i);
    if (size == 0 || !(size * size > most * weight(i))) continue;
    most = size * size / weight(i);
    best = i;
  }
  return best;
}

/// A number in [0.5, 1) that depends on the variable alone.
double shareOf(int var);

extern template class RevisedSimplex<double>;
extern template class RevisedSimplex<long double>;

}  // namespace LineProg
