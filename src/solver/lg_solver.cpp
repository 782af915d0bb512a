// SPDX-License-Identifier: Apache-2.0
#include "solver/lg_solver.h"

namespace Solver {

LGSolver::LGSolver() : BaseNormSolver("LG", 1) {
  iterFun = [this] { return iterate(); };
}

// KEPT: a candidate is forced to move at age 64 exactly; expected: 64 and above (kept.csv: LG_age)
bool LGSolver::settle(const Candidate& c) {
  pullBack(c->trialVar, c->curVar, 0.5);
  return tryCandidate(c, c->age == 64);
}

bool LGSolver::mix2(const Candidate& c, const OptVariable& p, const OptVariable& q) {
  const double r1 = u();
  const double c1 = u() * r1 * 1.1;
  const double c2 = u() * (1.0 - r1) * 1.1;
  const double c0 = 1.0 - (c2 + c1);
  for (std::size_t d = 0; d < c->trialVar.size(); ++d)
    c->trialVar[d] = c0 * c->curVar[d] + c1 * p.curVar[d] + c2 * q.curVar[d];
  return settle(c);
}

bool LGSolver::mix3(const Candidate& c, const OptVariable& p, const OptVariable& q, const OptVariable& r) {
  const double r1 = u(), r2 = u();
  const double cp = u() * (r2 * 1.1) * r1;
  const double cq = u() * (1.0 - r1) * (r2 * 1.1);
  const double cr = u() * (1.0 - r2) * 1.1;
  const double c0 = 1.0 - (cq + cp + cr);
  for (std::size_t d = 0; d < c->trialVar.size(); ++d)
    c->trialVar[d] = c0 * c->curVar[d] + cp * p.curVar[d] + cq * q.curVar[d] + cr * r.curVar[d];
  return settle(c);
}

bool LGSolver::mix4(const Candidate& c, const OptVariable& p, const OptVariable& q, const OptVariable& r) {
  const double s = u() + 0.16;
  const double cp = u() * s, cq = u() * s, c1 = u() * s, c2 = u() * s;
  const double c0 = 1.0 - (cq + cp + c1 + c2);
  // KEPT: two of the five terms share one partner; expected: a fourth (kept.csv: LG_mix4)
  for (std::size_t d = 0; d < c->trialVar.size(); ++d)
    c->trialVar[d] = c0 * c->curVar[d] + cp * p.curVar[d] + cq * q.curVar[d] + (c1 + c2) * r.curVar[d];
  return settle(c);
}

bool LGSolver::towardsBest(const Candidate& c) {
  const double f = u();
  const auto &x = c->curVar, &best = bestVar->bestVar;
  for (std::size_t d = 0; d < x.size(); ++d) c->trialVar[d] = (best[d] - x[d] * u()) * f + x[d];
  return settle(c);
}

// Mixes with as many of the first candidates as there are, up to `leaders`.
bool LGSolver::mixLeaders(const Candidate& c, std::size_t leaders) {
  const std::size_t n = population.size();
  if (n == 1) return mix2(c, *c, *c);
  const OptVariable &p0 = *population[0], &p1 = *population[1];
  if (leaders == 2 || n == 2) return mix2(c, p0, p1);
  return leaders == 4 && n > 3 ? mix4(c, p0, p1, *population[2]) : mix3(c, p0, p1, *population[2]);
}

bool LGSolver::mutate(const Candidate& c) {
  if (c == bestVar) {
    const Candidate nb1 = randomNeighbour(c), nb2 = randomNeighbour(c);
    return mix2(c, *nb2, *nb1);
  }
  const auto& q = randomNeighbour(c)->curVar;
  const auto& x = c->curVar;
  auto& tr = c->trialVar;
  for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = (q[d] - x[d]) * (c->age + 1) * (u() - 0.5) + x[d];
  pullBack(tr, x, 0.5);
  if (u() > 0.1) {
    for (std::size_t d = 0; d < tr.size(); ++d) {
      const double s = u();
      if (s > 0.9)
        tr[d] = (maxVar[d] - tr[d]) * u() * 0.86 + tr[d];
      else if (s > 0.8)
        tr[d] = (minVar[d] - tr[d]) * u() * 0.86 + tr[d];
    }
  }
  return tryCandidate(c, c->age > 32);
}

bool LGSolver::move(const Candidate& c) {
  const double r = u();
  if (r > 0.9) return towardsBest(c);
  if (r > 0.8) return mixLeaders(c, 2);
  if (r > 0.7) return mixLeaders(c, 3);
  if (r > 0.6) return mixLeaders(c, 4);
  if (!(r > 0.1)) return mutate(c);
  // The neighbours are drawn in the order of their numbers, only as many as the row takes.
  const Candidate nb1 = randomNeighbour(c);
  if (r > 0.2 && !(r > 0.3)) return mix2(c, *bestVar, *nb1);
  const Candidate nb2 = randomNeighbour(c);
  if (r > 0.5) return mix2(c, *nb2, *nb1);
  if (!(r > 0.2)) return mix3(c, *bestVar, *nb2, *nb1);
  const Candidate nb3 = randomNeighbour(c);
  if (r > 0.4) return mix3(c, *nb3, *nb2, *nb1);
  // KEPT: the neighbour drawn first is not used; expected: three draws (kept.csv: LG_neighbour)
  const Candidate nb4 = randomNeighbour(c);
  return mix4(c, *nb4, *nb3, *nb2);
}

bool LGSolver::iterate() {
  sortBy(population, &OptVariable::curValue);
  restartCheck();
  for (const Candidate& c : population)
    if (move(c)) break;
  return false;
}

}  // namespace Solver
