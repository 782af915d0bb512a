// SPDX-License-Identifier: Apache-2.0
#include <numbers>

#include "solver/replay.h"
#include "solver/social_contact.h"

namespace Replay {
namespace {

struct Social : Rule {
  Social(const Solver::SocialContact& s, Cost objective)
      : Rule(s, std::move(objective)), mode(s.mode), period(s.mode == 1 ? 6 : 80) {}

  int mode, period, stalls = 0;
  double prevBest = kUnset;
  Vec centre, span, zero;
  std::vector<Place*> sorted;
  std::size_t elite = 0;

  void run() {
    sorted = X;
    elite = static_cast<std::size_t>(std::lround(static_cast<double>(N) * 0.1));
    for (std::size_t d = 0; d < D; ++d) {
      centre.push_back((U[d] + Lo[d]) * 0.5);
      span.push_back((U[d] - Lo[d]) * 0.96);
      zero.push_back(U[d] < 0.0 ? U[d] : std::max(Lo[d], 0.0));
    }
    start();
    for (t = 1.0; goesOn(); ++t)
      if (iterate()) break;
    leave(false);
  }
  void sortElite() {
    std::sort(sorted.begin(), sorted.end(), [](Place* a, Place* b) { return a->bestValue < b->bestValue; });
    B = sorted[0];
    bestError = B->bestValue;
  }
  Place* drawElite() {
    const int top = elite > 0 ? static_cast<int>(elite) - 1 : 0;
    return sorted[static_cast<std::size_t>(std::uniform_int_distribution<int32_t>(0, top)(rng))];
  }
  Place* partner(Place* c) {
    Place* p = drawElite();
    for (int more = 0; p == c && more < 6; ++more) p = drawElite();
    return p;
  }
  void fold(Vec& tr, const Vec& ref) {
    for (std::size_t d = 0; d < D; ++d) {
      if (tr[d] > U[d])
        tr[d] = (U[d] - ref[d]) * u() + ref[d];
      else if (tr[d] < Lo[d])
        tr[d] = (Lo[d] - ref[d]) * u() + ref[d];
    }
    limit(tr);
  }
  void finish(Place* c) {
    fold(c->tr, c->x);
    c->trialValue = f(c->tr);
    if (bestError > c->trialValue) {
      bestError = c->trialValue;
      c->accept();
      B = c;
    }
  }
  void contact(Place* c) {
    Place* p = B;
    if (u() > 0.5) p = partner(c);
    const Vec x = c->x, b = c->b;
    if (u() > 0.5) {
      for (std::size_t d = 0; d < D; ++d) {
        const double r1 = u(), r2 = u();
        c->tr[d] = (b[d] - x[d]) * (r2 * 0.8 + 0.05) + x[d] + (p->b[d] - x[d]) * (r1 * 1.2);
      }
    } else {
      const double w = u() + 2.0;
      for (std::size_t d = 0; d < D; ++d) c->tr[d] = x[d] - (p->b[d] - x[d]) * (u() * w);
    }
    finish(c);
  }
  void crossover(Place* c, Place* p) {
    for (std::size_t d = 0; d < D; ++d) {
      const double s = u();
      double& tr = c->tr[d];
      if (s < 0.1) {
        tr = p->b[d];
      } else if (s < 0.2) {
        tr = c->b[d];
      } else if (s < 0.3) {
        tr = c->x[d];
      } else if (s < 0.4) {
        tr = centre[d] + u() * span[d];
      } else {
        tr = (p->b[d] - c->x[d]) * 2.0 * (u() - 0.5) + zero[d];
        if (tr > U[d])
          tr = (U[d] - zero[d]) * u() + zero[d];
        else if (tr < Lo[d])
          tr = (Lo[d] - zero[d]) * u() + zero[d];
      }
    }
    finish(c);
  }
  // The multiple r for which g + r h stands at an angle of 60 degrees to g.
  static double root60(double dot) {
    const double w = std::cos(60.0 * std::numbers::pi / 180.0);
    const double m = dot * dot - w * w, n = 2.0 * dot * (1.0 - w * w);
    if (std::abs(m) < 1e-15) return 0.0;
    const double disc = n * n - (1.0 - w * w) * 4.0 * m, s = disc < 0.0 ? 0.0 : std::sqrt(disc);
    const double r1 = (s - n) / (2.0 * m), r2 = (-n - s) / (2.0 * m);
    return r1 * dot + 1.0 > 0.0 ? r1 : r2;
  }
  void cone(Place* c, Place* p) {
    Vec g(D), h(D);
    double n1 = 0.0, n2 = 0.0, dot = 0.0;
    for (std::size_t d = 0; d < D; ++d) {
      g[d] = c->x[d] - B->b[d];
      h[d] = p->x[d] - B->b[d];
      n1 += g[d] * g[d];
      n2 += h[d] * h[d];
    }
    if (n1 < 0.001 || n2 < 0.001) return crossover(c, p);
    n1 = std::sqrt(n1);
    n2 = std::sqrt(n2);
    for (std::size_t d = 0; d < D; ++d) {
      g[d] = g[d] / n1;
      h[d] = h[d] / n2;
      dot += g[d] * h[d];
    }
    if (std::abs(dot) < 0.001) return crossover(c, p);
    const double a1 = root60(dot), a2 = -1.0 / dot, da = a2 - a1;
    const double w = std::pow(2.0 - t / T, 3.0) * std::max(n1, n2);
    for (std::size_t d = 0; d < D; ++d) {
      const double q = u() * da + a1;
      c->tr[d] = (q * h[d] + g[d]) * w + B->b[d];
    }
    finish(c);
  }
  bool iterate() {
    restartCheck();
    sortElite();
    for (Place* c : X) contact(c);
    for (Place* c : X) c->accept();
    // The elite learns once more, on condition of a gain.
    sortElite();
    auto g = local();
    std::shuffle(X.begin(), X.end(), g);
    for (std::size_t i = 0; i < elite; ++i) {
      contact(X[i]);
      if (X[i]->curValue > X[i]->trialValue) X[i]->accept();
    }
    stall();
    worst();
    if (mode == 1 ? t >= 666 && std::fmod(t, 66.0) == 0.0 : std::fmod(t, 16.0) == 0.0) means();
    walks();
    const bool met = gradientStep();
    pickBest();
    return met;
  }
  void stall() {
    pickBest();
    const double pv = prevBest, v = bestError;
    if (pv > pv * 0.001 + v || pv > v + 1.0) {
      prevBest = v;
      stalls = 0;
      return;
    }
    if (++stalls % period != 0) return;
    sortElite();
    const auto m = static_cast<std::size_t>(0.5 * static_cast<double>(N));
    for (std::size_t i = 1; i < m; ++i) {
      Place* w = sorted[i];
      w->bestValue = w->curValue = kUnset;
      cone(w, X[static_cast<std::size_t>(std::lround(static_cast<double>(N - 1) * u()))]);
      w->accept();
    }
  }
  void worst() {
    const auto m = static_cast<std::size_t>(std::lround(static_cast<double>(N) * 0.5));
    sortElite();
    std::sort(X.begin(), X.end(), [](Place* a, Place* b) { return a->curValue < b->curValue; });
    for (std::size_t i = N; i > N - m; --i) {
      Place* w = X[i - 1];
      Place* p = partner(w);
      if (u() > 0.5)
        crossover(w, p);
      else
        cone(w, p);
      w->accept();
    }
  }
  void means() {
    Vec M(D, 0.0);
    for (Place* c : X) {
      const bool current = u() > 0.36;
      for (std::size_t d = 0; d < D; ++d) M[d] += current ? c->x[d] : c->b[d];
    }
    for (double& v : M) v /= static_cast<double>(N);
    fold(M, B->b);
    for (Place* c : X) {
      const Vec A = u() > 0.36 ? c->x : c->b;
      const bool current = u() > 0.36;
      Place* j = X[anyOf(N)];
      const Vec O = current ? j->x : j->b;
      for (std::size_t d = 0; d < D; ++d) {
        const double r1 = u(), r2 = u();
        c->tr[d] = A[d] + (A[d] - M[d]) * (r2 - 0.5) + (A[d] - O[d]) * (r1 - 0.5);
      }
      fold(c->tr, A);
      if (attempt(c, true)) return;
    }
  }
  void walks() {
    pickBest();
    double k = (T - t) * 0.009 / T + 0.001;
    if (mode == 1) {
      for (Place* c : X) {
        if (u() > 0.5) continue;
        for (Place* o : X) {
          for (const bool own : {true, false}) {
            if (!own && o == c) continue;
            for (std::size_t d = 0; d < D; ++d) c->tr[d] = (c->x[d] - (own ? o->b[d] : o->x[d])) * (u() * k) + c->x[d];
            fold(c->tr, c->x);
            const double v = f(c->tr);
            if (!(c->curValue > v)) continue;
            c->trialValue = v;
            c->accept();
            if (!(bestError > v)) continue;
            bestError = v;
            B = c;
            if (target > bestError) return;
          }
        }
      }
    }
    Place* best = B;
    for (int round = 0; round < 64; ++round) {
      const double old = bestError;
      for (Place* o : X) {
        if (o == best) continue;
        for (std::size_t d = 0; d < D; ++d) best->tr[d] = (best->b[d] - o->x[d]) * (u() * k) + best->b[d];
        fold(best->tr, best->b);
        const double v = f(best->tr);
        if (!(bestError > v)) continue;
        bestError = v;
        best->trialValue = v;
        best->accept();
        if (target > v) return;
      }
      k = k * 0.9;
      if (bestError * 1.001 > old) return;
    }
  }
};

TEST(Replays, SocialContact) {
  const auto solver = [](int mode) { return std::make_shared<Solver::SocialContact>(static_cast<uint8_t>(mode)); };
  for (const int mode : {0, 1}) {
    for (const int32_t n : {1, 2, 4, 6}) holds<Social>(solver(mode), {2, n, 40, valley});
    holds<Social>(solver(mode), {2, 14, 40, slope, -1e300, wedge});
    holds<Social>(solver(mode), {3, 6, 60, valley3, 2.1});
    holds<Social>(solver(mode), {2, 6, 40, plain, -1e300, nullptr, 1});
    holds<Social>(solver(mode), {2, 6, 20, waves, -1e300, nullptr, 200, 1});
  }
  // Long enough for the replacement of a stalled population, the restart and the mean pass of mode 1.
  holds<Social>(solver(0), {2, 6, 320, valley});
  holds<Social>(solver(1), {2, 5, 800, slope});
}

}  // namespace
}  // namespace Replay
