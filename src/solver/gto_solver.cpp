// SPDX-License-Identifier: Apache-2.0
#include "solver/gto_solver.h"

#include <cmath>

namespace Solver {

GTOSolver::GTOSolver() : BaseNormSolver("GTO", 1) {
  iterFun = [this] { return explore() || exploit(); };
}

bool GTOSolver::explore() {
  C = (std::cos(2.0 * u()) + 1.0) * (1.0 - iteration() / (iterations() + 1.0));
  Lc = (2.0 * u() - 1.0) * C;
  for (const Candidate& c : population) {
    const auto& b = c->bestVar;
    auto& tr = c->trialVar;
    if (u() < p) {
      for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = (maxVar[d] - minVar[d]) * u() + minVar[d];
    } else if (u() > 0.5) {
      const double g = u() - C;
      const auto& other = population[uniformIndex()]->bestVar;
      for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = 2.0 * C * Lc * b[d] * (u() - 0.5) + g * other[d];
      clip(tr);
    } else {
      const auto& first = population[uniformIndex()]->curVar;
      const auto& second = population[uniformIndex()]->curVar;
      for (std::size_t d = 0; d < tr.size(); ++d)
        tr[d] = b[d] - ((b[d] - second[d]) * u() + (b[d] - first[d]) * Lc) * Lc;
      clip(tr);
    }
    if (tryCandidate(c, true)) return true;
  }
  return false;
}

bool GTOSolver::exploit() { return C > w ? followSum() : followBest(); }

bool GTOSolver::followBest() {
  for (const Candidate& c : population) {
    const auto &b = c->bestVar, &best = bestVar->bestVar;
    auto& tr = c->trialVar;
    const double g = (2.0 * u() - 1.0) * beta;
    if (u() > 0.5) {
      for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = best[d] - normal(rng) * ((best[d] - b[d]) * g);
    } else {
      const double f = normal(rng) * g;
      for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = best[d] - (best[d] - b[d]) * f;
    }
    clip(tr);
    if (tryCandidate(c, true)) return true;
  }
  return false;
}

bool GTOSolver::followSum() {
  auto& sum = workVar;
  sum.assign(varCount(), 0.0);
  for (const Candidate& c : population)
    for (std::size_t d = 0; d < sum.size(); ++d) sum[d] += c->curVar[d];
  const auto variables = static_cast<double>(sum.size());
  for (std::size_t i = 0; i < population.size(); ++i) {
    const Candidate& c = population[i];
    const auto &b = c->bestVar, &best = bestVar->bestVar;
    auto& tr = c->trialVar;
    // KEPT: the population's sum is divided by the variable count; expected: its size (kept.csv: GTO_divisor)
    for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = std::abs(sum[d] / variables) * Lc * (b[d] - best[d]) + b[d];
    clip(tr);
    if (i + 1 < population.size())
      for (std::size_t d = 0; d < tr.size(); ++d) sum[d] = sum[d] + tr[d] - population[i + 1]->curVar[d];
    if (tryCandidate(c, true)) return true;
  }
  return false;
}

}  // namespace Solver
