// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "prog/exact/revised_simplex.h"
#include "prog/exact/tolerances.h"

namespace LineProg {

namespace {

constexpr double kPerturbation = 1e-6;  // of a bound, relative

}  // namespace

/// The variable whose gain is greatest by its weight; -1 at the optimum.
template <class Real>
int RevisedSimplex<Real>::priced() const {
  return steepest<Real>(
      total, [this](int var) { return wrongCost(var); }, [this](int var) { return weight[var]; });
}

/// The place whose variable ends the step in a direction; -1 for none. `step` comes as the longest step.
template <class Real>
int RevisedSimplex<Real>::primalLimit(Real direction, Real& step) const {
  Real greatest = 1;
  for (const Real coefficient : column) greatest = std::max(greatest, std::abs(coefficient));
  Real least = kPivot<Real> * greatest;
  // The room of a basic variable on the side that it moves to.
  const auto room = [&](int i) {
    const int var = standing.basic[i];
    return direction * column[i] > 0 ? x[var] - lo[var] : up[var] - x[var];
  };
  const auto longestStep = [&] {
    Real longest = step;
    for (int i = 0; i < rows; ++i)
      if (std::abs(column[i]) > least) longest = std::min(longest, (room(i) + kTolerance<Real>) / std::abs(column[i]));
    return longest;
  };
  Real longest = longestStep();
  if (std::isinf(longest)) {
    least = kNoise<Real>;
    longest = longestStep();
  }
  if (longest == step) return -1;
  int best = -1;
  for (int i = 0; i < rows; ++i) {
    const Real size = std::abs(column[i]);
    if (size > least && room(i) <= longest * size && (best < 0 || size > std::abs(column[best]))) best = i;
  }
  step = std::max<Real>(0, room(best) / std::abs(column[best]));
  return best;
}

// Widens the bounds of the basic variables, by shares that no two have in common.
template <class Real>
void RevisedSimplex<Real>::perturbBounds() {
  for (const int var : standing.basic) {
    const Real share = static_cast<Real>(kPerturbation * shareOf(var));
    if (!std::isinf(lo[var])) lo[var] -= share * std::max<Real>(1, std::abs(lo[var]));
    if (!std::isinf(up[var])) up[var] += share * std::max<Real>(1, std::abs(up[var]));
  }
  perturbed = true;
}

/// Primal method from a feasible point.
template <class Real>
auto RevisedSimplex<Real>::primal() -> Turn {
  weight.assign(total, 1);
  int stalled = 0;
  for (long turn = 0; turn < kMostTurns * (total + 10); ++turn) {
    if (factors.worn()) {
      refactor();
      computeValues();
      computeCosts();
      if (!primalFeasible()) return Turn::stuck;
    }
    const int entering = priced();
    if (entering < 0) return Turn::done;
    makeColumn(entering);
    const Real direction = d[entering] < 0 ? 1 : -1;
    Real step = up[entering] - lo[entering];
    const int place = primalLimit(direction, step);
    const bool doubtful = place < 0 ? std::isinf(step) : std::abs(column[place]) < kDoubtful;
    if (doubtful && !factors.fresh()) return Turn::stuck;
    if (place < 0 && std::isinf(step)) return Turn::none;

    for (int i = 0; i < rows; ++i)
      if (column[i] != 0) x[standing.basic[i]] -= direction * step * column[i];
    if (place < 0) {
      rest(entering, direction > 0);
      continue;
    }
    makeRow(place);
    const int leaving = standing.basic[place];
    const Real pivot = column[place], factor = d[entering] / pivot, reference = weight[entering];
    x[entering] += direction * step;
    exchange(place, entering, direction * pivot < 0);
    updateCosts(leaving, entering, factor);
    for (int var = 0; var < total; ++var) {
      if (row[var] == 0 || standing.place[var] == Place::basic) continue;
      const Real part = row[var] / pivot;
      weight[var] = std::max(weight[var], part * part * reference);
    }
    weight[leaving] = std::max<Real>(1, reference / (pivot * pivot));
    stalled = step > 0 ? 0 : stalled + 1;
    if (stalled == kStalled) {
      perturbBounds();
      stalled = 0;
    }
  }
  return Turn::stuck;
}

template class RevisedSimplex<double>;
template class RevisedSimplex<long double>;

}  // namespace LineProg
