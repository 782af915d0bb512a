// SPDX-License-Identifier: Apache-2.0
// The run of the social-contact solver and its passes; its four moves stand in social_moves.cpp.
#include "solver/social_contact.h"

#include <algorithm>
#include <cmath>

namespace Solver {

bool SocialContact::prepare() {
  if (!prepareBox()) return false;
  const std::size_t n = varCount();
  sorted = population;
  const auto elite = static_cast<int32_t>(std::lround(static_cast<double>(population.size()) * eliteRate));
  elitePick = std::uniform_int_distribution<int32_t>(0, std::max(0, elite - 1));
  // KEPT: centre and span keep the bounds of the first run; expected: those of this run (kept.csv: SC_centre)
  if (centre.size() != n) {
    centre.resize(n);
    for (std::size_t d = 0; d < n; ++d) centre[d] = (maxVar[d] + minVar[d]) * 0.5;
  }
  if (span.size() != n) {
    span.resize(n);
    for (std::size_t d = 0; d < n; ++d) span[d] = (maxVar[d] - minVar[d]) * 0.96;
  }
  stallCount = 0;
  prevBest = kNoValue;
  zeroPoint.resize(n);
  for (std::size_t d = 0; d < n; ++d) zeroPoint[d] = maxVar[d] < 0.0 ? maxVar[d] : std::max(minVar[d], 0.0);
  return true;
}

bool SocialContact::run() {
  clearStop();
  const auto start = std::chrono::steady_clock::now();
  if (!prepare()) return false;
  if (mode == 1) period = 6;
  running.store(1, std::memory_order_relaxed);
  iter = 0;
  for (const Candidate& c : population) {
    c->evaluate = 1;
    c->prevValue = c->curValue;
  }
  evaluateAll();
  pickBest();
  recordHistory();
  iter = 1;  // so a maxIter of 1 does nothing beyond the start
  while (continueTest()) {
    iterate();
    recordHistory();
    iter = iter + 1;
  }
  finish(start);
  return true;
}

void SocialContact::sortElite() {
  sortBy(sorted, &OptVariable::bestValue);
  bestVar = sorted.front();
  bestError = bestVar->bestValue;
}

void SocialContact::iterate() {
  restartCheck();
  sortElite();
  bool whole = true;
  for (const Candidate& c : population) {
    contact(c);
    if (stopped()) {
      whole = false;
      break;
    }
  }
  if (whole)
    for (const Candidate& c : population) c->accept();
  elitePass();
  stallPass();
  meanPass();
  walkPass();
  gradientStep();
  pickBest();
}

void SocialContact::elitePass() {
  sortElite();
  const auto elite = static_cast<std::size_t>(std::lround(static_cast<double>(population.size()) * eliteRate));
  auto local = localGenerator();
  std::shuffle(population.begin(), population.end(), local);
  for (std::size_t i = 0; i < elite && !stopped(); ++i) {
    const Candidate c = population[i];
    contact(c);
    if (c->curValue > c->trialValue) c->accept();
  }
}

void SocialContact::stallPass() {
  pickBest();
  const double before = prevBest, v = bestError;
  if (before > before * 0.001 + v || before > v + 1.0) {
    prevBest = v;
    stallCount = 0;
  } else {
    ++stallCount;
    if (stallCount % period == 0) replaceStalled();
  }
  replaceWorst();
}

void SocialContact::replaceStalled() {
  sortElite();
  const auto n = static_cast<double>(population.size());
  const auto m = static_cast<int32_t>((1.0 - replaceRate) * n);
  for (int32_t i = 1; i < m && !stopped(); ++i) {
    const Candidate w = sorted[static_cast<std::size_t>(i)];
    w->bestValue = w->curValue = kNoValue;  // so that it takes whatever the cone gives
    cone(w, *at(std::lround((n - 1.0) * u())));
    w->accept();
  }
}

void SocialContact::replaceWorst() {
  const auto m = std::lround(static_cast<double>(population.size()) * replaceRate);
  if (m == 0) return;
  sortElite();
  sortBy(population, &OptVariable::curValue);
  for (long i = 1; i <= m && !stopped(); ++i) {
    const Candidate w = population[population.size() - static_cast<std::size_t>(i)];
    const Candidate p = elitePartner(w);
    if (u() > 0.5)
      crossover(w, *p);
    else
      cone(w, *p);
    w->accept();
  }
}

void SocialContact::meanPass() {
  const int64_t t = iter;
  if (mode == 1 ? t < 666 || t % 66 != 0 : t % 16 != 0) return;
  auto& mean = workVar;
  mean.assign(varCount(), 0.0);
  for (const Candidate& c : population) {
    const auto& x = u() > 0.36 ? c->curVar : c->bestVar;
    for (std::size_t d = 0; d < mean.size(); ++d) mean[d] += x[d];
  }
  for (double& value : mean) value /= static_cast<double>(population.size());
  fold(mean, bestVar->bestVar);
  for (const Candidate& c : population) {
    const auto& own = u() > 0.36 ? c->curVar : c->bestVar;
    const bool current = u() > 0.36;
    const OptVariable& other = *population[uniformIndex()];
    const auto& o = current ? other.curVar : other.bestVar;
    for (std::size_t d = 0; d < mean.size(); ++d) {
      const double r1 = u(), r2 = u();
      c->trialVar[d] = own[d] + (own[d] - mean[d]) * (r2 - 0.5) + (own[d] - o[d]) * (r1 - 0.5);
    }
    fold(c->trialVar, own);
    if (tryCandidate(c, true)) return;
  }
}

void SocialContact::walkPass() {
  pickBest();
  const double k = (iterations() - iteration()) * 0.009 / iterations() + 0.001;
  if (mode == 1 && walkPairs(k)) return;
  walkBest(k);
}

// One step of c away from a position; true when the pass is to end.
bool SocialContact::offerPair(const Candidate& c, const std::vector<double>& from, double k) {
  if (stopped()) return true;
  const auto& x = c->curVar;
  for (std::size_t d = 0; d < x.size(); ++d) c->trialVar[d] = (x[d] - from[d]) * (u() * k) + x[d];
  fold(c->trialVar, x);
  const double v = objective->calcValue(c->trialVar);
  if (!(c->curValue > v)) return false;
  c->trialValue = v;
  c->accept();
  if (!(bestError > v)) return false;
  bestError = v;
  bestVar = c;
  return targetError > v || stopped();
}

bool SocialContact::walkPairs(double k) {
  for (const Candidate& c : population) {
    if (u() > 0.5) continue;
    for (const Candidate& o : population) {
      if (offerPair(c, o->bestVar, k)) return true;
      if (o != c && offerPair(c, o->curVar, k)) return true;
    }
  }
  return false;
}

void SocialContact::walkBest(double k) {
  const Candidate best = bestVar;
  const auto& b = best->bestVar;
  auto& tr = best->trialVar;
  for (int round = 0; round < 64; ++round) {
    const double old = bestError;
    for (const Candidate& o : population) {
      if (o == best) continue;
      if (stopped()) return;
      for (std::size_t d = 0; d < tr.size(); ++d) tr[d] = (b[d] - o->curVar[d]) * (u() * k) + b[d];
      fold(tr, b);
      const double v = objective->calcValue(tr);
      if (!(bestError > v)) continue;
      bestError = v;
      best->trialValue = v;
      best->accept();
      if (targetError > v || stopped()) return;
    }
    k *= 0.9;
    if (bestError * 1.001 > old) return;
  }
}

}  // namespace Solver
