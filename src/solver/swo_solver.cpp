// SPDX-License-Identifier: Apache-2.0
#include "solver/swo_solver.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "solver/weighted_mean.h"

namespace Solver {

SWOSolver::SWOSolver() : BaseNormSolver("SWO", 1) {
  initFun = [this] { return init(); };
  iterFun = [this] { return iterate(); };
}

bool SWOSolver::init() {
  if (population.size() < 3) return false;
  diff1.resize(varCount());
  diff2.resize(varCount());
  return true;
}

void SWOSolver::schedule() {
  const double t = iteration(), total = iterations();
  k = (total - t) / total;
  tr2 = 2.0 * k;
  a = -(t + total) / total;
  if (indexList.size() != population.size()) {
    indexList.resize(population.size());
    std::iota(indexList.begin(), indexList.end(), std::size_t{0});
  }
  auto local = localGenerator();
  std::shuffle(indexList.begin(), indexList.end(), local);
}

void SWOSolver::search(const Candidate& c, const std::vector<double>& q, double r1, double r2, double r4, double m,
                       double n) {
  const auto& x = c->curVar;
  auto& tr = c->trialVar;
  if (k > r4 && r2 > r1) {
    const auto &x0 = listed(0).curVar, &x1 = listed(1).curVar;
    const double s = std::abs(normal(rng)) * r1;
    for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = x[d] + s * (x0[d] - x1[d]);
  } else if (k > r4) {
    const double g = 1.0 / (std::exp(n + 1.0) + 1.0);
    const double f = std::cos((n + 1.0) * 2.0 * std::numbers::pi);
    for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = ((maxVar[d] - minVar[d]) * u() + minVar[d]) * (g * f) + q[d];
  } else if (r2 > r1) {
    const auto& x2 = listed(2).curVar;
    for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = x[d] + m * std::abs(2.0 * u() * x2[d] - tr[d]);
  } else {
    for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = x[d] + 2.0 * k * u() * m - k;
  }
}

void SWOSolver::follow(const Candidate& c, double r3) {
  const double l = u() * 0.03482872512788485;  // a Levy flight's step
  const double e = std::max(1e-12, std::pow(u(), 2.0 / 3.0));
  const double length = std::abs(l / e) * r3;
  const auto& x = c->curVar;
  auto& tr = c->trialVar;
  const auto &p = listed(0).curVar, &x1 = listed(1).curVar, &x2 = listed(2).curVar;
  for (std::size_t d = 0; d < tr.size(); ++d) {
    tr[d] = p[d] + (p[d] - x[d]) * length;
    if (u() > 0.5) tr[d] += (x2[d] - x1[d]) * (1.0 - r3);
  }
}

void SWOSolver::hunt() {
  const auto count = static_cast<int64_t>(static_cast<double>(population.size()) * k);
  int64_t j = 1;
  for (const Candidate& c : population) {
    if (stopped()) return;
    const double r1 = u(), r2 = u(), r3 = u(), r4 = u();
    const double m = (2.0 * r1 - 1.0) * tr2;
    const double n = (a - 1.0) * normal(rng);
    if (j < count) {
      search(c, listed(static_cast<std::size_t>(j)).curVar, r1, r2, r4, m, n);
    } else if (r2 > r1) {
      const double f = std::cos((n + 1.0 + n + 1.0) * std::numbers::pi);
      const auto& best = bestVar->bestVar;
      for (std::size_t d = 0; d < best.size(); ++d) c->trialVar[d] = best[d] + (best[d] - c->curVar[d]) * f;
    } else {
      follow(c, r3);
    }
    clip(c->trialVar);
    tryCandidate(c, false);  // the run ends through the continue test
    ++j;
  }
}

void SWOSolver::mate() {
  const OptVariable &first = listed(0), &p = listed(1), &q = listed(2);
  for (const Candidate& c : population) {
    if (stopped()) return;
    const auto& x = c->curVar;
    auto& tr = c->trialVar;
    const double e = std::exp((a - 1.0) * u() + 1.0);
    const double sign1 = c->bestValue > first.bestValue ? 1.0 : -1.0;
    const double sign2 = q.bestValue > p.bestValue ? 1.0 : -1.0;
    for (std::size_t d = 0; d < tr.size(); ++d) {
      diff1[d] = sign1 * (first.curVar[d] - x[d]);
      diff2[d] = sign2 * (p.curVar[d] - q.curVar[d]);
    }
    const double k1 = std::abs(normal(rng)) * e;
    const double k2 = std::abs(normal(rng)) * (1.0 - e);
    for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = u() < 0.2 ? x[d] + k1 * diff1[d] + k2 * diff2[d] : x[d];
    clip(tr);
    tryCandidate(c, false);
  }
}

bool SWOSolver::iterate() {
  schedule();
  if (u() < 0.3)
    hunt();
  else
    mate();
  return false;
}

ISWOSolver::ISWOSolver() {
  name = "ISWO";
  iterFun = [this] { return iterateCentroid(); };
}

bool ISWOSolver::iterateCentroid() {
  schedule();
  if (u() < 0.3)
    hunt();
  else if (u() < 0.8)
    mate();
  else
    centroid();
  return false;
}

void ISWOSolver::centroid() {
  Candidate last = population.front();
  for (const Candidate& c : population)
    if (c != bestVar) last = c;
  weightedMean(population, bestVar->bestValue, last->trialVar);
  clip(last->trialVar);
  if (!tryCandidate(last, true)) walk(last);
}

}  // namespace Solver
