// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "prog/exact/revised_simplex.h"
#include "prog/exact/tolerances.h"

namespace LineProg {

namespace {

constexpr double kShift = 1e-5;

}  // namespace

/// The place whose variable is farthest out of bounds by its weight; -1 when none is.
template <class Real>
int RevisedSimplex<Real>::farthest() const {
  return steepest<Real>(
      rows, [this](int i) { return distance(standing.basic[i]); },
      [this](int i) { return dualWeight[standing.basic[i]]; });
}

/// The variable whose reduced cost is the first to vanish when the row's variable moves up (sign 1) or down (-1); -1
/// when none can make it move.
template <class Real>
int RevisedSimplex<Real>::dualLimit(Real sign) const {
  Real greatest = 1;
  for (int var = 0; var < total; ++var)
    if (standing.place[var] != Place::basic) greatest = std::max(greatest, std::abs(row[var]));
  Real least = kPivot<Real> * greatest;
  const auto moves = [&](int var) {
    if (standing.place[var] == Place::basic || lo[var] == up[var] || !(std::abs(row[var]) > least)) return false;
    return (sign * row[var] < 0) == (standing.place[var] == Place::lower);
  };
  const auto longestStep = [&] {
    Real longest = static_cast<Real>(kInfinity);
    for (int var = 0; var < total; ++var)
      if (moves(var)) longest = std::min(longest, (std::abs(d[var]) + kTolerance<Real>) / std::abs(row[var]));
    return longest;
  };
  Real longest = longestStep();
  if (std::isinf(longest)) {
    least = kNoise<Real>;
    longest = longestStep();
  }
  int best = -1;
  for (int var = 0; var < total; ++var) {
    if (!moves(var) || !(std::abs(d[var]) <= longest * std::abs(row[var]))) continue;
    if (best < 0 || std::abs(row[var]) > std::abs(row[best])) best = var;
  }
  return best;
}

// Moves the costs so that no reduced cost is wrong, or, against steps of length 0, that none vanishes; by shares that
// no two have in common.
template <class Real>
void RevisedSimplex<Real>::shiftCosts(bool all) {
  for (int var = 0; var < total; ++var) {
    if (standing.place[var] == Place::basic || lo[var] == up[var]) continue;
    const bool wrong = wrongCost(var) != 0;
    if (!wrong && !all) continue;
    const Real size = static_cast<Real>(kShift * shareOf(var)) * std::max<Real>(1, std::abs(cost[var]));
    const Real to = (standing.place[var] == Place::lower ? size : -size) + (wrong ? 0 : d[var]);
    cost[var] += to - d[var];
    d[var] = to;
    perturbed = shifted = true;
  }
}

/// With true costs the objective of a dual run grows towards the optimum from below.
template <class Real>
bool RevisedSimplex<Real>::beyondCutoff() const {
  return !shifted && !std::isinf(cutoff) && objective() > cutoff;
}

/// Dual method, from costs without gain or shifted so.
template <class Real>
auto RevisedSimplex<Real>::dual() -> Turn {
  shiftCosts(false);
  int stalled = 0;
  for (long turn = 0; turn < kMostTurns * (total + 10); ++turn) {
    if (factors.worn()) {
      refactor();
      computeValues();
      computeCosts();
      shiftCosts(false);
    }
    const int place = farthest();
    if (place < 0) return Turn::done;
    if (beyondCutoff()) return Turn::none;
    makeRow(place);
    const int leaving = standing.basic[place];
    const Real beyond = distance(leaving);
    const int entering = dualLimit(beyond < 0 ? 1 : -1);
    if (entering < 0) {
      if (factors.fresh()) return Turn::none;
      return Turn::stuck;
    }
    makeColumn(entering);
    const Real pivot = column[place];
    const bool differs = !(std::abs(pivot - row[entering]) <= 1e-7 * std::max<Real>(1, std::abs(pivot)));
    if ((std::abs(pivot) < kDoubtful || differs) && !factors.fresh()) return Turn::stuck;
    if (pivot == 0) return Turn::stuck;

    const Real step = beyond / pivot, factor = d[entering] / pivot, reference = dualWeight[leaving];
    stalled = d[entering] == 0 ? stalled + 1 : 0;
    for (int i = 0; i < rows; ++i) {
      if (column[i] == 0) continue;
      const int var = standing.basic[i];
      x[var] -= step * column[i];
      const Real part = column[i] / pivot;
      dualWeight[var] = std::max(dualWeight[var], part * part * reference);
    }
    dualWeight[entering] = std::max<Real>(1, reference / (pivot * pivot));
    x[entering] += step;
    exchange(place, entering, beyond > 0);
    updateCosts(leaving, entering, factor);
    // What the step took beyond 0 by the tolerance is a shift of the cost.
    for (int var = 0; var < total; ++var) {
      if (row[var] == 0 || standing.place[var] == Place::basic || lo[var] == up[var]) continue;
      if (d[var] == 0 || (d[var] < 0) != (standing.place[var] == Place::lower)) continue;
      cost[var] -= d[var];
      d[var] = 0;
      perturbed = true;
    }
    if (stalled == kStalled) {
      shiftCosts(true);
      stalled = 0;
    }
  }
  return Turn::stuck;
}

template class RevisedSimplex<double>;
template class RevisedSimplex<long double>;

}  // namespace LineProg
