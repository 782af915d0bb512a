// SPDX-License-Identifier: Apache-2.0
#include "solver/ins_solver.h"

#include <algorithm>
#include <numeric>

#include "solver/weighted_mean.h"

namespace Solver {

INSSolver::INSSolver() : BaseNormSolver("INS", 1) {
  iterFun = [this] { return iterate(); };
}

void INSSolver::gather(const Candidate& c, LocalMersenne& local) {
  const int64_t n = populationSize();
  int64_t k = randomIndex(1, n + 1);
  if (k < 3) k = std::min<int64_t>(3, n);
  if (k > std::max<int64_t>(n, 3) && u() > 0.5) k = std::max<int64_t>(n, 3);
  std::shuffle(order.begin(), order.end(), local);
  neighbours.clear();
  for (int64_t i = k - 1; i >= 0; --i) neighbours.push_back(population[order[static_cast<std::size_t>(i)]]);
  neighbours.push_back(c);  // so it may occur twice
}

bool INSSolver::iterate() {
  if (order.size() != population.size()) {
    order.resize(population.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    neighbours.reserve(population.size() + 1);
  }
  auto local = localGenerator();
  for (const Candidate& c : population) {
    if (c == bestVar) continue;
    gather(c, local);
    weightedMean(neighbours, bestVar->bestValue, c->trialVar);
    if (stopped()) return true;
  }
  // The best candidate tries again what it had tried before it became the best.
  for (const Candidate& c : population) {
    clip(c->trialVar);
    if (tryCandidate(c, true)) return true;
    if (u() < 0.36 && walk(c)) return true;
  }
  return false;
}

}  // namespace Solver
