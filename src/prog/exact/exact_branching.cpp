// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/exact_branching.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "prog/exact/whole_rows.h"

namespace LineProg {

namespace {

constexpr double kIntegral = 1e-9;
constexpr double kNoGain = 1e-10;        // relative to the best value
constexpr double kRounding = 1e-9;       // relative, of values that differ by a step
constexpr double kGreatest = 900000000;  // value that branching knows

}  // namespace

ExactBranching::ExactBranching(const LineProblem& lineProblem, const BoundedProblem& boundedProblem,
                               RevisedSimplex<double>& relaxations)
    : bounded(boundedProblem),
      simplex(relaxations),
      step(objectiveStep(lineProblem.objective, lineProblem.allVars) * bounded.costScale),
      limit(kInfinity) {
  for (const BaseVar& var : lineProblem.allVars)
    if (var.varKind != kReal) whole.push_back(var.index);
}

template <class Real>
void ExactBranching::setBounds(RevisedSimplex<Real>& target, const Node& node) const {
  for (std::size_t k = 0; k < whole.size(); ++k) target.setBounds(whole[k], node.lower[k], node.upper[k]);
}

void ExactBranching::readBounds(Node& node) const {
  for (const int var : whole) {
    node.lower.push_back(simplex.lower(var));
    node.upper.push_back(simplex.upper(var));
  }
}

// The place in `whole` of the variable that is farthest from an integer; -1 for an integral point.
int ExactBranching::branching(double& value) const {
  int far = -1;
  double most = kIntegral;
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

// The place in `whole` of a variable that is not fixed yet, to be cut off beside its value; -1 for none.
int ExactBranching::unfixed(double& value) const {
  for (std::size_t k = 0; k < whole.size(); ++k) {
    const double low = simplex.lower(whole[k]), high = simplex.upper(whole[k]);
    if (low == high) continue;
    const double x = std::clamp(std::round(simplex.value(whole[k])), low, high);
    value = x < high ? x + 0.5 : x - 0.5;
    return static_cast<int>(k);
  }
  return -1;
}

// Takes an integral point if it stands with its integer variables rounded, within the tolerance of long doubles: what
// doubles let pass may be worth much where coefficients are of very different size.
bool ExactBranching::accept() {
  Node fixed;
  for (const int var : whole) fixed.lower.push_back(std::round(simplex.value(var)));
  fixed.upper = fixed.lower;
  fixed.basis = simplex.basis();
  RevisedSimplex<long double> careful(bounded);
  if (anyPoint) careful.setCost(std::vector<double>(bounded.cost.size(), 0));
  setBounds(careful, fixed);
  careful.load(fixed.basis);
  if (careful.solve() != Status::optimal) return false;
  const auto value = static_cast<double>(careful.objective());
  const double rounding = kRounding * std::max(bounded.costScale, std::abs(value));
  if (value < limit) {
    best = std::move(fixed);
    best.basis = careful.basis();
    limit = step > 4 * rounding ? value - step + 2 * rounding : value - kNoGain / kRounding * rounding;
    simplex.setCutoff(limit);
  }
  return value <= simplex.objective() + 2 * rounding;
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
      branch = branching(value);
      if (branch < 0 && !accept()) branch = unfixed(value);
      if (anyPoint && !best.lower.empty()) return;
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
    setBounds(simplex, node);
    solved = simplex.solve() == Status::optimal;
  }
}

bool ExactBranching::search(RevisedSimplex<long double>& careful) {
  explore();
  if (best.lower.empty()) return false;
  setBounds(careful, best);
  careful.load(best.basis);
  return true;
}

bool ExactBranching::hasPoint() {
  simplex.setCost(std::vector<double>(bounded.cost.size(), 0));
  step = 0;
  anyPoint = true;
  if (simplex.solve() == Status::optimal) explore();
  return !best.lower.empty();
}

}  // namespace LineProg
