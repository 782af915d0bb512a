// SPDX-License-Identifier: Apache-2.0
// A second account of the solvers' rules: plain and slow, sharing no code with the library. Fed with the same words of
// the generator it must evaluate the same points in the same order.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <deque>
#include <functional>
#include <random>
#include <utility>
#include <vector>

#include "solver/solver_stand.h"

namespace Replay {

using Vec = std::vector<double>;
constexpr double kUnset = 1.449459118e308;

struct Place {
  double bestValue = kUnset, curValue = kUnset, trialValue = kUnset;
  Vec b, x, tr;
  int age = 1;

  void accept() {
    curValue = trialValue;
    x = tr;
    age = 0;
    if (bestValue > curValue) {
      bestValue = curValue;
      b = tr;
    }
  }
};

/// The state of a run and the moves that all rules share. Lo and U are the box, X the population, B the best of it.
struct Rule {
  using Cost = std::function<double(const double*)>;

  Rule(const Solver::BaseSolver& s, Cost objective)
      : N(s.population.size()),
        T(static_cast<double>(s.maxIter)),
        target(s.targetError),
        Lo(s.minVar),
        U(s.maxVar),
        D(U.size()),
        rng(s.rng),
        limitFun(s.limitFun),
        cost(std::move(objective)),
        stallLimit(s.stallLimit),
        stallLimit2(s.stallLimit2) {
    for (const auto& c : s.population) {
      places.emplace_back();
      Place& p = places.back();
      p.b = c->bestVar;
      p.x = c->curVar;
      p.tr = c->trialVar;
      X.push_back(&p);
    }
  }

  double word() { return static_cast<double>(rng()); }
  double u() {
    const double w0 = word(), w1 = word();
    return (w0 + w1 * 4294967296.0) / 18446744073709551616.0;
  }
  double polar(std::vector<double>& kept) {
    if (!kept.empty()) {
      const double z = kept.back();
      kept.clear();
      return z;
    }
    for (;;) {
      const double a = 2.0 * u() - 1.0, b = 2.0 * u() - 1.0, s = a * a + b * b;
      if (s > 1.0 || s == 0.0) continue;
      const double m = std::sqrt(-2.0 * std::log(s) / s);
      kept.push_back(a * m);
      return b * m;
    }
  }
  double normal() { return polar(kept1); }
  void fill(Vec& v) {
    for (double& one : v) one = u();
  }
  int64_t index(int64_t lo, int64_t hi) {
    return lo + static_cast<int64_t>(std::floor(static_cast<double>(hi - lo) * u() * 0.99));
  }
  std::size_t anyOf(std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng); }
  std::mt19937 local() { return std::mt19937(++seeds); }

  double f(const Vec& x) {
    log.push_back(x);
    const double v = cost(x.data());
    if (!anchored) return v;
    if (anchorBest > v) {
      anchorBest = v;
      anchorBestVar = x;
    }
    const double d = v - anchorValue;
    double s = 0.0;
    for (std::size_t i = 0; i < D; ++i) s += (x[i] - anchorVar[i]) * (x[i] - anchorVar[i]);
    if (d < -1.0 || (d < -0.001 && s >= 0.1)) return d;
    double a = std::abs(d), L = std::log(s / static_cast<double>(D) + 1.0);
    if (a >= 10.0) a = std::abs(fold1(a));
    if (L >= 10.0) L = std::abs(fold2(L)) + 0.001;
    return 1.0 / ((a + 0.001) * (L + 1e-12));
  }
  void start() {
    for (Place* c : X) c->trialValue = f(c->tr);
    for (Place* c : X) c->accept();
    pickBest();
  }
  void pickBest() {
    B = X[0];
    for (Place* c : X)
      if (c->bestValue < B->bestValue) B = c;
    B->age = 0;
    bestError = anchored ? anchorBest : B->bestValue;
  }
  void limit(Vec& tr) {
    if (limitFun) limitFun(tr.data());
  }
  void clip(Vec& tr) {
    for (std::size_t d = 0; d < D; ++d) tr[d] = tr[d] > U[d] ? U[d] : tr[d] < Lo[d] ? Lo[d] : tr[d];
    limit(tr);
  }
  bool attempt(Place* c, bool force) {
    ++c->age;
    c->trialValue = f(c->tr);
    const double offer = anchored ? anchorBest : c->trialValue;
    if (bestError > offer) {
      bestError = offer;
      c->accept();
      B = c;
      return target > bestError;
    }
    if (force || c->trialValue <= c->curValue) c->accept();
    return false;
  }
  bool away(Place* c, double s) {
    double step = (T - t) * (s - 0.001) / T + 0.001, cur = c->curValue;
    for (int round = 0; round < 64; ++round) {
      const double old = cur;
      for (Place* o : X) {
        if (o == c) continue;
        for (std::size_t d = 0; d < D; ++d) c->tr[d] = c->x[d] + (c->x[d] - o->x[d]) * (u() * step);
        clip(c->tr);
        const double v = f(c->tr);
        if (anchored) {
          if (bestError > anchorBest) {
            bestError = anchorBest;
            if (target > anchorBest) return true;
          }
        } else if (bestError > v) {
          c->trialValue = v;
          c->accept();
          bestError = v;
          B = c;
          if (target > bestError) return true;
        }
        if (cur > v) {
          cur = v;
          c->trialValue = v;
          c->accept();
          if (B->bestValue > v) B = c;
        }
      }
      if (cur * 1.001 > old) return false;
      step *= 0.9;
    }
    return false;
  }
  bool walk(Place* c) {
    if (u() > 0.8 && away(c, 1.0)) return true;
    if (u() > 0.5 && away(c, 0.1)) return true;
    return away(c, 0.01);
  }
  double box(double lo, double hi) { return (hi - lo) * (u() - 0.5) * 0.89 + (lo + hi) * 0.5; }
  void scatter(Vec& tr) {
    if (u() > 0.5) {
      for (std::size_t d = 0; d < D; ++d) tr[d] = box(Lo[d], U[d]);
      return;
    }
    const auto n = static_cast<int64_t>(N);
    const Vec p = X[static_cast<std::size_t>(index(0, n))]->x;
    const Vec q = X[static_cast<std::size_t>(index(0, n))]->b;
    const Vec r = X[static_cast<std::size_t>(index(0, n))]->tr;
    for (std::size_t d = 0; d < D; ++d) {
      const double s = u();
      if (s < 0.2) tr[d] = box(Lo[d], U[d]);
      if (s >= 0.2 && s < 0.5) {
        const double u3 = u(), u2 = u(), u1 = u();
        tr[d] = tr[d] + (u1 - 0.5) * p[d] + (u2 - 0.5) * q[d] + (u3 - 0.5) * r[d];
        if (tr[d] < Lo[d])
          tr[d] = (p[d] - Lo[d]) * u() + Lo[d];
        else if (tr[d] > U[d])
          tr[d] = (U[d] - p[d]) * u() + p[d];
      }
      if (s >= 0.5 && s < 0.7) tr[d] = box(Lo[d], p[d]);
      if (s >= 0.7 && s < 0.9) tr[d] = box(p[d], U[d]);
      if (s >= 0.9 && s < 0.95) tr[d] = (p[d] - Lo[d]) * u() + Lo[d];
      if (s >= 0.95) tr[d] = (U[d] - p[d]) * u() + p[d];
    }
  }
  void restartCheck() {
    if (B->bestValue > restartMark) {
      if (++restartCount != 236) return;
      for (Place* c : X) {
        if (c == B) continue;
        c->bestValue = 1e300;
        scatter(c->tr);
        c->trialValue = f(c->tr);
        c->accept();
      }
      pickBest();
    }
    restartCount = 0;
    restartMark = B->bestValue > 0.0 ? B->bestValue * 0.99 : B->bestValue * 1.01;
  }
  /// Weights that grow with the value; shifted when the best value is below 0.
  void weigh(const std::vector<Place*>& who, Vec& tr) {
    double S = 0.0;
    for (Place* n : who) S += n->curValue;
    std::fill(tr.begin(), tr.end(), 0.0);
    const double v = B->bestValue, sh = (v - 1.0) * 1.1;
    if (v < 0.0) S = S - static_cast<double>(who.size()) * sh;
    for (Place* n : who)
      for (std::size_t d = 0; d < D; ++d) tr[d] += (v < 0.0 ? (n->curValue - sh) / S : n->curValue / S) * n->x[d];
  }
  /// Sixteen equal steps uphill, along the differences in some of the coordinates.
  double probe(Vec& x, Vec& trial, double most) {
    auto g = local();
    std::shuffle(some.begin(), some.end(), g);
    Vec grad(D, 0.0);
    if (!anchored) {
      const double h = 1e-8, scale = 1.0 / (2.0 * h);
      for (std::size_t k = 0; k < gradients; ++k) {
        const std::size_t i = some[k];
        const double here = x[i];
        x[i] = here + h;
        const double f1 = f(x);
        x[i] = here - h;
        const double f2 = f(x);
        grad[i] = (f1 - f2) * scale;
        x[i] = here;
      }
    }
    for (int round = 0; round < 16; ++round) {
      for (std::size_t i = 0; i < D; ++i) trial[i] = x[i] + 16.0 * grad[i];
      const double v = f(trial);
      if (v < most) return v;
    }
    return 2.0 * most;
  }
  /// True when the target is met, which ends the run.
  bool gradientStep() {
    if (gradients == 0) return false;
    if (some.empty())
      for (std::size_t i = 0; i < D; ++i) some.push_back(i);
    gradients = std::min(gradients, D);
    for (Place* c : X) {
      const double v = probe(c->x, c->tr, c->curValue);
      if (!(c->curValue > v)) continue;
      c->trialValue = v;
      c->accept();
      if (!(bestError > v)) continue;
      bestError = v;
      B = c;
      if (target > v) return true;
    }
    const double v = probe(B->b, B->tr, B->bestValue);
    if (!(bestError > v)) return false;
    bestError = v;
    B->trialValue = v;
    B->accept();
    return target > v;
  }
  /// Whether the run goes on after `t` iterations.
  bool goesOn() {
    if (t >= T) return false;
    if (anchored &&
        (anchorValue > anchorBest + 1.0 || anchorValue > anchorBest + (std::abs(anchorValue) + 1e-6) * 0.01)) {
      leave(true);
      if (target > bestError) return false;
    }
    const double v = anchored ? anchorBest : bestError;
    if (!anchored && target > v) return false;
    if (stallBest > v + 1.0) {
      stallBest = v;
      stallCount = 0;
      return true;
    }
    if ((std::abs(v) + 1e-6) * 0.001 <= std::abs(v - stallCount)) return true;
    ++stallCount;
    if (stallCount == stallLimit) {
      if (anchored) return stallCount != stallLimit2;
      enter();
      return true;
    }
    stallCount = stallLimit2;
    return stallLimit2 == 0 || !anchored;
  }
  void enter() {
    anchored = true;
    const int modes[] = {static_cast<int>(u() * 6.99), static_cast<int>(u() * 6.99)};
    fold1 = [=](double a) { return Solver::AnchorFun::transform(static_cast<uint8_t>(modes[1]), a); };
    fold2 = [=](double a) { return Solver::AnchorFun::transform(static_cast<uint8_t>(modes[0]), a); };
    stallCount = restartCount = 0;
    stallBest = restartMark = HUGE_VAL;
    pickBest();
    anchorValue = anchorBest = B->bestValue;
    anchorVar = anchorBestVar = B->b;
    for (Place* c : X) {
      c->bestValue = HUGE_VAL;
      c->trialValue = c->curValue = f(c->tr);
      c->accept();
    }
    pickBest();
    bestError = B->bestValue;
    ++entered;
  }
  void leave(bool all) {
    if (!anchored) return;
    anchored = false;
    stallCount = restartCount = 0;
    stallBest = restartMark = HUGE_VAL;
    bestError = anchorBest;
    B->bestValue = 1e300;
    B->trialValue = B->curValue = bestError;
    B->tr = anchorBestVar;
    B->accept();
    if (!all) return;
    for (Place* c : X) {
      if (c == B) continue;
      c->trialValue = c->curValue = f(c->tr);
      c->bestValue = 1e300;
      c->accept();
    }
  }
  template <class Iterate>
  void loop(Iterate iterate) {
    for (t = 0.0; goesOn();) {
      ++t;
      if (iterate()) break;
    }
    leave(false);
  }

  std::size_t N;
  double t = 0.0, T, target;
  Vec Lo, U;
  std::size_t D;
  std::mt19937 rng;
  void (*limitFun)(double*);
  Cost cost;
  std::deque<Place> places;
  std::vector<Place*> X;
  Place* B = nullptr;
  double bestError = kUnset, restartMark = 1e300;
  int restartCount = 0;
  double stallBest = HUGE_VAL;
  int stallCount = 0, stallLimit, stallLimit2;
  bool anchored = false;
  int entered = 0;
  double anchorValue = 0.0, anchorBest = 0.0;
  Vec anchorVar, anchorBestVar;
  std::function<double(double)> fold1, fold2;
  std::size_t gradients = 0;
  std::vector<std::size_t> some;
  uint32_t seeds = 0;
  std::vector<double> kept1;
  std::vector<Vec> log;
};

struct Case {
  int32_t variables, candidates;
  int64_t iterations;
  Rule::Cost cost;
  double target = -1e300;
  void (*limit)(double*) = nullptr;
  int32_t stallLimit = 200;
  int32_t gradCount = 0;
};

/// Runs a solver and a rule side by side on one generator stream.
template <class R, class S>
void holds(std::shared_ptr<S> solver, const Case& c) {
  static uint32_t seeds;
  seeds = 0;
  std::vector<Vec> log;
  const auto n = static_cast<std::size_t>(c.variables);
  solver->rng.seed(20260 + c.candidates);
  stand(solver, c.variables, c.candidates, -5.0, 4.0, [&](const double* x) {
    log.emplace_back(x, x + n);
    return c.cost(x);
  });
  solver->localSeed = [] { return ++seeds; };
  solver->maxIter = c.iterations;
  solver->targetError = c.target;
  solver->limitFun = c.limit;
  solver->stallLimit = c.stallLimit;
  solver->gradCount = c.gradCount;
  R rule(*solver, c.cost);
  rule.gradients = static_cast<std::size_t>(c.gradCount);
  rule.run();
  ASSERT_TRUE(solver->run());
  const std::string at = std::to_string(c.candidates) + " candidates";
  for (std::size_t i = 0; i < std::min(log.size(), rule.log.size()); ++i)
    ASSERT_EQ(log[i], rule.log[i]) << at << ", evaluation " << i << " of " << log.size();
  EXPECT_EQ(log.size(), rule.log.size()) << at;
  EXPECT_GT(log.size(), 2 * rule.N) << at;
  EXPECT_EQ(rule.entered > 0, c.stallLimit < 200) << at;
  EXPECT_EQ(solver->rng, rule.rng) << at;
  EXPECT_EQ(seeds, rule.seeds) << at;
  EXPECT_EQ(solver->bestError, rule.bestError) << at;
  EXPECT_EQ(solver->bestVar->bestVar, rule.B->b) << at;
  for (std::size_t i = 0; i < rule.N; ++i) {
    EXPECT_EQ(solver->population[i]->curVar, rule.X[i]->x) << at;
    EXPECT_EQ(solver->population[i]->bestValue, rule.X[i]->bestValue) << at;
  }
}

// A valley with waves; the same below zero; a slope whose minimum lies in a corner of the box.
inline double valley(const double* x) {
  return 3.0 + (x[0] - 1.0) * (x[0] - 1.0) + 2.0 * (x[1] + 0.5 * x[0]) * (x[1] + 0.5 * x[0]) + std::cos(3.0 * x[1]);
}
inline double below(const double* x) { return valley(x) - 7.0; }
inline double slope(const double* x) { return 20.0 + x[0] - x[1] + 0.1 * std::sin(5.0 * x[0] * x[1]); }
inline double valley3(const double* x) { return valley(x) + (x[2] - x[1]) * (x[2] - x[1]); }
inline double waves(const double* x) { return 4.0 + std::sin(x[0]) + std::cos(2.0 * x[1]) * std::sin(x[0] + x[1]); }
/// A floor of 0 on which a run stalls, with a narrow hole.
inline double plain(const double* x) {
  const double hole = std::hypot(x[0] + 4.0, x[1] - 3.0);
  return hole < 0.4 ? 10.0 * (hole - 0.4) : std::max(0.0, 40.0 * (valley(x) - 12.0));
}
inline void wedge(double* x) { x[1] = std::max(x[1], x[0] - 3.0); }

}  // namespace Replay
