// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/exact_branching.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "prog/exact/whole_rows.h"

namespace LineProg {

namespace {

constexpr double kIntegral = 1e-9;
constexpr double kNoGain = 1e-10;           // relative to the best value
constexpr double kRounding = 1e-9;          // of values that differ by a step
constexpr double kGreatest = 900000000;     // value that branching knows

}  // namespace

ExactBranching::ExactBranching(const LineProblem& lineProblem, const BoundedProblem& boundedProblem,
                               RevisedSimplex<double>& relaxations)
    : problem(lineProblem),
      bounded(boundedProblem),
      simplex(relaxations),
      step(objectiveStep(problem.objective, problem.allVars) * bounded.costScale),
      limit(kInfinity) {
  for (const BaseVar& var : problem.allVars)
    if (var.varKind != kReal) whole.push_back(var.index);
}

void ExactBranching::setBounds(const Node& node) {
  for (std::size_t k = 0; k < whole.size(); ++k)
    simplex.setBounds(whole[k], node.lower[k], node.upper[k]);
}

void ExactBranching::readBounds(Node& node) const {
  for (const int var : whole) {
    node.lower.push_back(simplex.lower(var));
    node.upper.push_back(simplex.upper(var));
  }
}

// The place in `whole` of the variable that is farthest from an integer, and by more than the tolerance; -1 for none.
int ExactBranching::branching(double tolerance, double& value) const {
  int far = -1;
  double most = tolerance;
  for (std::size_t k = 0; k < whole.size(); ++k) {
    const int var = whole[k];
    if (simplex.basis().place[var] != Place::basic) continue;
    const double x = std::clamp(simplex.value(var), simplex.lower(var), simplex.upper(var));
    const double part = std::abs(x - std::round(x));
    if (!(part > most)) continue;
    most = part;
    value = x;
    far = static_cast<int>(k);
  }
  return far;
}

// Takes an integral point, whose integer variables are rounded, if the others let it stand.
bool ExactBranching::accept(const Node& node) {
  Node fixed = node;
  for (std::size_t k = 0; k < whole.size(); ++k) fixed.lower[k] = fixed.upper[k] = std::round(simplex.value(whole[k]));
  setBounds(fixed);
  simplex.setCutoff(kInfinity);
  const bool stands = simplex.solve() == Status::optimal;
  const double value = simplex.objective(), size = std::max(1.0, std::abs(value));
  if (stands && value < limit) {
    best = fixed.lower;
    bestBasis = simplex.basis();
    limit = step > 4 * kRounding * size ? value - step + 2 * kRounding * size : value - kNoGain * size;
  }
  simplex.setCutoff(limit);
  setBounds(node);
  return stands;
}

// A variable whose reduced cost takes the objective beyond the limit stays that near to its bound.
void ExactBranching::tighten() {
  const double gap = limit - simplex.objective();
  if (!(gap < kInfinity)) return;
  for (const int var : whole) {
    const double cost = std::abs(simplex.reducedCost(var)), low = simplex.lower(var), high = simplex.upper(var);
    const Place place = simplex.basis().place[var];
    if (place == Place::basic || cost == 0 || low == high) continue;
    const double moves = std::floor(gap / cost + kIntegral);
    if (!(moves < high - low)) continue;
    if (place == Place::lower)
      simplex.setBounds(var, low, low + moves);
    else
      simplex.setBounds(var, high - moves, high);
  }
}

void ExactBranching::explore() {
  std::vector<Node> waiting;
  for (bool solved = true;;) {
    double value = 0;
    int branch = -1;
    Node node;
    if (solved && simplex.objective() < limit) {
      tighten();
      readBounds(node);
      branch = branching(kIntegral, value);
      if (branch < 0) {
        const int doubtful = branching(0, value);
        if (!accept(node)) branch = doubtful;  // rounding takes the point out of the rows: not integral yet
      }
      if (anyPoint && !best.empty()) return;
    }
    if (branch >= 0) {
      node.basis = simplex.basis();
      const double floor = std::floor(value);
      const bool below = floor >= node.lower[branch];
      const bool above = floor + 1 <= std::min(node.upper[branch], kGreatest);
      const bool upFirst = above && (!below || value - floor > 0.5);
      Node other = node;
      (upFirst ? node.lower : other.lower)[branch] = floor + 1;
      (upFirst ? other.upper : node.upper)[branch] = std::min(floor, kGreatest);
      if (upFirst ? below : above) waiting.push_back(std::move(other));
      if (!below && !above) branch = -1;
    }
    if (branch < 0) {
      if (waiting.empty()) return;
      node = std::move(waiting.back());
      waiting.pop_back();
      simplex.load(node.basis);
    }
    setBounds(node);
    solved = simplex.solve() == Status::optimal;
  }
}

bool ExactBranching::search() {
  explore();
  return !best.empty();
}

bool ExactBranching::hasPoint() {
  simplex.setCost(std::vector<double>(bounded.cost.size(), 0));
  step = 0;
  anyPoint = true;
  return simplex.solve() == Status::optimal && search();
}

void ExactBranching::fixBest(RevisedSimplex<long double>& exact) const {
  for (std::size_t k = 0; k < whole.size(); ++k) exact.setBounds(whole[k], best[k], best[k]);
  exact.load(bestBasis);
}

}  // namespace LineProg
