// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/revised_simplex.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "prog/exact/tolerances.h"

namespace LineProg {

namespace {

constexpr int kRounds = 60;  // of dual and primal runs, each ending nearer to the optimum

}  // namespace

double shareOf(int var) {
  // Multiplicative hashing (Knuth, The Art of Computer Programming 3, 6.4).
  return 0.5 + 0.5 * static_cast<double>((static_cast<uint32_t>(var) + 1) * 2654435769u) / 4294967296.0;
}

template <class Real>
RevisedSimplex<Real>::RevisedSimplex(const BoundedProblem& boundedProblem)
    : problem(boundedProblem),
      rows(problem.rows),
      total(problem.total()),
      x(total),
      d(total),
      trueLower(problem.lower.begin(), problem.lower.end()),
      trueUpper(problem.upper.begin(), problem.upper.end()),
      trueCost(problem.cost.begin(), problem.cost.end()),
      column(rows),
      multiplier(rows),
      row(total),
      cutoff(static_cast<Real>(kInfinity)) {
  Basis slack{std::vector<int>(rows), std::vector<Place>(total, Place::lower)};
  for (int i = 0; i < rows; ++i) {
    slack.basic[i] = problem.columns + i;
    slack.place[slack.basic[i]] = Place::basic;
  }
  lo = trueLower;
  up = trueUpper;
  cost = trueCost;
  load(slack);
}

template <class Real>
void RevisedSimplex<Real>::load(const Basis& start) {
  standing = start;
  dualWeight.assign(total, 1);
  refactor();
}

template <class Real>
void RevisedSimplex<Real>::setBounds(int var, double least, double most) {
  trueLower[var] = lo[var] = least;
  trueUpper[var] = up[var] = most;
}

template <class Real>
void RevisedSimplex<Real>::setCost(const std::vector<double>& costs) {
  trueCost.assign(costs.begin(), costs.end());
  cost = trueCost;
}

template <class Real>
Real RevisedSimplex<Real>::objective() const {
  Real sum = 0;
  for (int j = 0; j < problem.columns; ++j) sum += trueCost[j] * x[j];
  return sum;
}

// Nonbasic: on one of its bounds.
template <class Real>
void RevisedSimplex<Real>::rest(int var, bool atUpper) {
  if (atUpper ? std::isinf(up[var]) : std::isinf(lo[var])) atUpper = !atUpper;
  standing.place[var] = atUpper ? Place::upper : Place::lower;
  x[var] = atUpper ? up[var] : lo[var];
}

template <class Real>
void RevisedSimplex<Real>::refactor() {
  const std::vector<int> before = standing.basic;
  factors.factor(problem, standing.basic);
  for (const int var : before) standing.place[var] = Place::lower;  // unless it stays
  for (const int var : standing.basic) standing.place[var] = Place::basic;
  for (const int var : before)
    if (standing.place[var] != Place::basic) rest(var, std::abs(x[var] - up[var]) < std::abs(x[var] - lo[var]));
}

template <class Real>
void RevisedSimplex<Real>::computeValues() {
  std::ranges::fill(column, 0);
  for (int var = 0; var < total; ++var) {
    if (standing.place[var] == Place::basic) continue;
    rest(var, standing.place[var] == Place::upper);
    if (x[var] == 0) continue;
    if (var >= problem.columns)
      column[var - problem.columns] -= x[var];
    else
      for (const auto& [at, value] : problem.byColumn[var]) column[at] -= value * x[var];
  }
  factors.forward(column);
  for (int i = 0; i < rows; ++i) x[standing.basic[i]] = column[i];
}

template <class Real>
void RevisedSimplex<Real>::computeCosts() {
  for (int i = 0; i < rows; ++i) multiplier[i] = cost[standing.basic[i]];
  factors.backward(multiplier);
  d = cost;
  for (int i = 0; i < rows; ++i) {
    if (multiplier[i] == 0) continue;
    d[problem.columns + i] -= multiplier[i];
    for (const auto& [at, value] : problem.byRow[i]) d[at] -= multiplier[i] * value;
  }
  for (const int var : standing.basic) d[var] = 0;
}

template <class Real>
void RevisedSimplex<Real>::makeColumn(int var) {
  std::ranges::fill(column, 0);
  if (var >= problem.columns)
    column[var - problem.columns] = 1;
  else
    for (const auto& [at, value] : problem.byColumn[var]) column[at] = value;
  factors.forward(column);
}

template <class Real>
void RevisedSimplex<Real>::makeRow(int place) {
  std::ranges::fill(multiplier, 0);
  multiplier[place] = 1;
  factors.backward(multiplier);
  std::ranges::fill(row, 0);
  for (int i = 0; i < rows; ++i) {
    const Real factor = multiplier[i];
    if (factor == 0) continue;
    row[problem.columns + i] = factor;
    for (const auto& [at, value] : problem.byRow[i]) row[at] += factor * value;
  }
}

template <class Real>
void RevisedSimplex<Real>::exchange(int place, int entering, bool leavesAtUpper) {
  rest(standing.basic[place], leavesAtUpper);
  standing.basic[place] = entering;
  standing.place[entering] = Place::basic;
  factors.replace(place, column);
}

// The reduced costs after an exchange that takes factor times the row at hand.
template <class Real>
void RevisedSimplex<Real>::updateCosts(int leaving, int entering, Real factor) {
  for (int var = 0; var < total; ++var)
    if (row[var] != 0 && standing.place[var] != Place::basic) d[var] -= factor * row[var];
  d[leaving] = -factor;
  d[entering] = 0;
}

template <class Real>
void RevisedSimplex<Real>::restore() {
  if (perturbed) {
    lo = trueLower;
    up = trueUpper;
    cost = trueCost;
  }
  perturbed = shifted = false;
}

// How far the value lies out of bounds: negative below.
template <class Real>
Real RevisedSimplex<Real>::distance(int var) const {
  const Real beyond = x[var] < lo[var] ? x[var] - lo[var] : x[var] > up[var] ? x[var] - up[var] : 0;
  return std::abs(beyond) > kTolerance<Real> ? beyond : 0;
}

// The reduced cost where its sign promises a gain.
template <class Real>
Real RevisedSimplex<Real>::wrongCost(int var) const {
  if (standing.place[var] == Place::basic || lo[var] == up[var] || std::abs(d[var]) <= kTolerance<Real>) return 0;
  return (d[var] < 0) == (standing.place[var] == Place::lower) ? d[var] : 0;
}

template <class Real>
bool RevisedSimplex<Real>::primalFeasible() const {
  return std::ranges::all_of(standing.basic, [this](int var) { return distance(var) == 0; });
}

template <class Real>
bool RevisedSimplex<Real>::dualFeasible() const {
  for (int var = 0; var < total; ++var)
    if (wrongCost(var) != 0) return false;
  return true;
}

// Whether the values that many exchanges have led to still meet the rows.
template <class Real>
bool RevisedSimplex<Real>::settled() const {
  if (factors.fresh()) return true;
  for (int i = 0; i < rows; ++i) {
    Real sum = x[problem.columns + i], size = 1;
    for (const auto& [at, value] : problem.byRow[i]) {
      sum += value * x[at];
      size = std::max(size, std::abs(value * x[at]));
    }
    if (!(std::abs(sum) <= kTolerance<Real> / 16 * size)) return false;
  }
  return true;
}

template <class Real>
Status RevisedSimplex<Real>::solve() {
  Turn turn = Turn::done;
  for (int round = 0; round < kRounds; ++round) {
    if (turn == Turn::stuck || (round > 0 && !settled())) refactor();
    restore();
    computeValues();
    computeCosts();
    if (!primalFeasible()) {
      if (turn = dual(); turn == Turn::none) return Status::failed;
    } else if (!dualFeasible()) {
      if (turn = primal(); turn == Turn::none) return Status::unbounded;
    } else {
      return Status::optimal;
    }
  }
  return Status::failed;
}

template class RevisedSimplex<double>;
template class RevisedSimplex<long double>;

}  // namespace LineProg
