// SPDX-License-Identifier: Apache-2.0
// The four moves of the social-contact solver: each fills the trial point, folds it into the box and settles.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "solver/social_contact.h"

namespace Solver {

Candidate SocialContact::elitePartner(const Candidate& c) {
  const auto draw = [this] { return sorted[static_cast<std::size_t>(elitePick(rng))]; };
  Candidate p = draw();
  for (int more = 0; more < 6 && p == c; ++more) p = draw();
  return p;
}

void SocialContact::fold(std::vector<double>& trial, const std::vector<double>& ref) {
  for (std::size_t d = 0; d < trial.size(); ++d) {
    if (trial[d] > maxVar[d])
      trial[d] = (maxVar[d] - ref[d]) * u() + ref[d];
    else if (trial[d] < minVar[d])
      trial[d] = (minVar[d] - ref[d]) * u() + ref[d];
  }
  limit(trial);
}

bool SocialContact::settle(const Candidate& c) {
  fold(c->trialVar, c->curVar);
  c->trialValue = evaluate(c->trialVar);
  if (bestError > c->trialValue) {
    bestError = c->trialValue;
    c->accept();
    bestVar = c;
    return true;
  }
  return c->bestValue > c->trialValue;
}

void SocialContact::contact(const Candidate& c) {
  const Candidate p = u() > 0.5 ? elitePartner(c) : bestVar;
  if (u() > 0.5)
    pull(c, *p);
  else
    push(c, *p);
}

bool SocialContact::push(const Candidate& c, const OptVariable& p) {
  const auto& x = c->curVar;
  const double f = u() + 2.0;
  for (std::size_t d = 0; d < x.size(); ++d) c->trialVar[d] = x[d] - (p.bestVar[d] - x[d]) * (u() * f);
  return settle(c);
}

bool SocialContact::pull(const Candidate& c, const OptVariable& p) {
  const auto &x = c->curVar, &b = c->bestVar;
  for (std::size_t d = 0; d < x.size(); ++d) {
    const double r1 = u(), r2 = u();
    c->trialVar[d] = (b[d] - x[d]) * (r2 * 0.8 + 0.05) + x[d] + (p.bestVar[d] - x[d]) * (r1 * 1.2);
  }
  return settle(c);
}

bool SocialContact::crossover(const Candidate& c, const OptVariable& p) {
  const auto &x = c->curVar, &b = c->bestVar;
  auto& tr = c->trialVar;
  for (std::size_t d = 0; d < tr.size(); ++d) {
    const double s = u(), zero = zeroPoint[d];
    if (s < 0.1) {
      tr[d] = p.bestVar[d];
    } else if (s < 0.2) {
      tr[d] = b[d];
    } else if (s < 0.3) {
      tr[d] = x[d];
    } else if (s < 0.4) {
      tr[d] = centre[d] + u() * span[d];
    } else {
      const double q = (p.bestVar[d] - x[d]) * 2.0 * (u() - 0.5) + zero;
      if (q > maxVar[d])
        tr[d] = (maxVar[d] - zero) * u() + zero;
      else if (q < minVar[d])
        tr[d] = (minVar[d] - zero) * u() + zero;
      else
        tr[d] = q;
    }
  }
  return settle(c);
}

double SocialContact::coneRoot(double dot, double deg) {
  const double f = std::cos(deg * std::numbers::pi / 180.0);
  // KEPT: angles above 90 degrees take the root of the right angle; expected: their own (kept.csv: ConeRoot_120)
  if (f < 1e-15) return -1.0 / dot;
  const double m = dot * dot - f * f;
  const double n = 2.0 * dot * (1.0 - f * f);
  if (std::abs(m) < 1e-15) return 0.0;
  const double disc = n * n - (1.0 - f * f) * 4.0 * m;
  const double s = disc < 0.0 ? 0.0 : std::sqrt(disc);
  const double r1 = (s - n) / (2.0 * m), r2 = (-n - s) / (2.0 * m);
  const double e = r1 * dot + 1.0;
  return (f < 0.0 ? 0.0 : e) > (f < 0.0 ? e : 0.0) ? r1 : r2;
}

bool SocialContact::cone(const Candidate& c, const OptVariable& p) {
  const auto &x = c->curVar, &best = bestVar->bestVar;
  const std::size_t size = x.size();
  g.resize(size);
  h.resize(size);
  double square1 = 0.0, square2 = 0.0;
  for (std::size_t d = 0; d < size; ++d) {
    g[d] = x[d] - best[d];
    square1 += g[d] * g[d];
    h[d] = p.curVar[d] - best[d];
    square2 += h[d] * h[d];
  }
  if (square1 < 0.001 || square2 < 0.001) return crossover(c, p);
  const double n1 = std::sqrt(square1), n2 = std::sqrt(square2);
  double dot = 0.0;
  for (std::size_t d = 0; d < size; ++d) {
    g[d] /= n1;
    h[d] /= n2;
    dot += g[d] * h[d];
  }
  if (std::abs(dot) < 0.001) return crossover(c, p);
  const double a1 = coneRoot(dot, 60.0), a2 = coneRoot(dot, 120.0);
  const double width = a2 - a1;
  const double f = std::pow(2.0 - iteration() / iterations(), 3.0) * std::max(n1, n2);
  for (std::size_t d = 0; d < size; ++d) {
    const double q = u() * width + a1;
    c->trialVar[d] = (q * h[d] + g[d]) * f + best[d];
  }
  return settle(c);
}

}  // namespace Solver
