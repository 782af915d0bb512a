// SPDX-License-Identifier: Apache-2.0
#include "solver/lg_solver.h"
#include "solver/lg_solver2.h"
#include "solver/replay.h"

namespace Replay {
namespace {

struct Lg : Rule {
  using Rule::Rule;

  void run() {
    start();
    loop([this] { return iterate(); });
  }
  bool iterate() {
    std::sort(X.begin(), X.end(), [](Place* a, Place* b) { return a->curValue < b->curValue; });
    restartCheck();
    for (Place* c : X)
      if (move(c)) break;
    return false;
  }
  Place* neighbour(Place* c) {
    for (int attempt = 0; attempt < 100; ++attempt) {
      const auto n = static_cast<long>(N);
      const long i = std::lround(static_cast<double>(n + 1) * u() - 0.5);
      Place* o = i < 1 ? X[0] : i + 1 < n ? X[static_cast<std::size_t>(i)] : X[N - 1];
      if (o != c) return o;
    }
    return c;
  }
  bool settle(Place* c) {
    pullBack(c);
    return attempt(c, c->age == 64);
  }
  void pullBack(Place* c) {
    for (std::size_t d = 0; d < D; ++d) {
      const double x = c->x[d];
      if (c->tr[d] > U[d]) {
        c->tr[d] = x + (U[d] - x) * (u() * 0.5 + 1.0 - 0.5);
      } else if (c->tr[d] < Lo[d]) {
        const double u1 = u(), u2 = u();
        c->tr[d] = x - (x - Lo[d]) * u2 * (u1 * 0.5 + 1.0 - 0.5);
      }
    }
    limit(c->tr);
  }
  bool mix2(Place* c, Place* P, Place* Q) {
    const double r1 = u(), c1 = u() * r1 * 1.1, c2 = u() * (1.0 - r1) * 1.1, c0 = 1.0 - (c2 + c1);
    for (std::size_t d = 0; d < D; ++d) c->tr[d] = c0 * c->x[d] + c1 * P->x[d] + c2 * Q->x[d];
    return settle(c);
  }
  bool mix3(Place* c, Place* P, Place* Q, Place* R) {
    const double r1 = u(), r2 = u();
    const double cp = u() * (r2 * 1.1) * r1, cq = u() * (1.0 - r1) * (r2 * 1.1), cr = u() * (1.0 - r2) * 1.1;
    const double c0 = 1.0 - (cq + cp + cr);
    for (std::size_t d = 0; d < D; ++d) c->tr[d] = c0 * c->x[d] + cp * P->x[d] + cq * Q->x[d] + cr * R->x[d];
    return settle(c);
  }
  // LG_mix4: the third partner has two weights.
  bool mix4(Place* c, Place* P, Place* Q, Place* R) {
    const double s = u() + 0.16, cp = u() * s, cq = u() * s, c1 = u() * s, c2 = u() * s;
    const double c0 = 1.0 - (cq + cp + c1 + c2);
    for (std::size_t d = 0; d < D; ++d) c->tr[d] = c0 * c->x[d] + cp * P->x[d] + cq * Q->x[d] + (c1 + c2) * R->x[d];
    return settle(c);
  }
  bool leaders(Place* c) {
    if (N == 1) return mix2(c, c, c);
    if (N == 2) return mix2(c, X[0], X[1]);
    return mix3(c, X[0], X[1], X[2]);
  }
  bool move(Place* c) {
    const double r = u();
    if (r > 0.9) {
      const double w = u();
      for (std::size_t d = 0; d < D; ++d) c->tr[d] = (B->b[d] - c->x[d] * u()) * w + c->x[d];
      return settle(c);
    }
    if (r > 0.8) return N == 1 ? mix2(c, c, c) : mix2(c, X[0], X[1]);
    if (r > 0.7) return leaders(c);
    if (r > 0.6) return N > 3 ? mix4(c, X[0], X[1], X[2]) : leaders(c);
    std::vector<Place*> nb;
    const auto draw = [&](int n) {
      for (int i = 0; i < n; ++i) nb.push_back(neighbour(c));
    };
    if (r > 0.5) {
      draw(2);
      return mix2(c, nb[1], nb[0]);
    }
    if (r > 0.4) {
      draw(3);
      return mix3(c, nb[2], nb[1], nb[0]);
    }
    if (r > 0.3) {
      draw(4);  // LG_neighbour
      return mix4(c, nb[3], nb[2], nb[1]);
    }
    if (r > 0.2) {
      draw(1);
      return mix2(c, B, nb[0]);
    }
    if (r > 0.1) {
      draw(2);
      return mix3(c, B, nb[1], nb[0]);
    }
    if (c == B) {
      draw(2);
      return mix2(c, nb[1], nb[0]);
    }
    draw(1);
    for (std::size_t d = 0; d < D; ++d) c->tr[d] = (nb[0]->x[d] - c->x[d]) * (c->age + 1) * (u() - 0.5) + c->x[d];
    pullBack(c);
    if (u() > 0.1) {
      for (std::size_t d = 0; d < D; ++d) {
        const double s = u();
        if (s > 0.9)
          c->tr[d] = (U[d] - c->tr[d]) * u() * 0.86 + c->tr[d];
        else if (s > 0.8)
          c->tr[d] = (Lo[d] - c->tr[d]) * u() * 0.86 + c->tr[d];
      }
    }
    return attempt(c, c->age > 32);
  }
};

TEST(Replays, LG) {
  for (const int32_t n : {1, 2, 3, 6}) holds<Lg>(std::make_shared<Solver::LGSolver>(), {2, n, 3000, valley});
  holds<Lg>(std::make_shared<Solver::LGSolver>(), {3, 6, 300, valley3, 2.1});
  holds<Lg>(std::make_shared<Solver::LGSolver>(), {2, 12, 1500, slope, -1e300, wedge});
  holds<Lg>(std::make_shared<Solver::LGSolver>(), {2, 6, 40, plain, -1e300, nullptr, 1});
}

// One mark for the restart check and the rate: LG2_mark.
struct Lg2 : Rule {
  using Rule::Rule;
  int stuck = 0;
  double rate = 0.68;
  std::size_t used = 0;
  Vec mean;
  std::vector<Vec*> archive;
  std::deque<Vec> store;

  void run() {
    start();
    mean.resize(D);
    loop([this] { return iterate(); });
  }
  bool iterate() {
    std::sort(X.begin(), X.end(), [](Place* a, Place* b) { return a->bestValue < b->bestValue; });
    B = X[0];
    used = std::min(archive.size(), N);
    auto g = local();
    std::shuffle(archive.begin(), archive.end(), g);
    for (std::size_t d = 0; d < D; ++d) {
      mean[d] = 0.0;
      for (Place* c : X) mean[d] += c->x[d];
      mean[d] /= static_cast<double>(N);
    }
    restartCheck();
    const std::size_t m = u() < 0.86 ? 1 : std::min<std::size_t>(3, N);
    for (std::size_t i = 0; i < m; ++i) {
      if (walk(X[i])) return true;
      if (u() > 0.8 && descend(X[i])) return true;
    }
    const double mk = restartMark, sc = std::abs(mk) + 1e-12, dv = mk - bestError;
    if (dv > sc * 0.01) {
      ++stuck;
      rate = (668 - stuck) * 0.36 / 666.0;
      if (std::abs(dv) < sc * 0.001) rate = (668 - stuck) * 0.36 * u() / 666.0;
      if (stuck > 666) stuck = 0;
    } else {
      restartMark = bestError;
      rate = 0.36;
      stuck = 0;
    }
    for (Place* c : X) {
      if (c == B) continue;
      const double r = u();
      const int n = r < 0.36 ? 16 : r < 0.5 ? 6 : 1;
      for (int i = 0; i < n; ++i)
        if (move(c, n < 2)) return true;
      if (u() > 0.96) descend(c);
    }
    for (Place* c : X) {
      if (c == B) continue;
      if (used < archive.size()) {
        *archive[used++] = c->x;
      } else {
        store.push_back(c->x);
        archive.push_back(&store.back());
      }
    }
    return false;
  }
  const Vec& pick() {
    const bool flag = u() < 0.5;
    const auto i = static_cast<std::size_t>(index(0, static_cast<int64_t>(flag ? N + archive.size() : N)));
    return i < N ? X[i]->x : *archive[i - N];
  }
  bool move(Place* c, bool force) {
    double w = u();
    const Vec P1 = pick(), P2 = pick(), P3 = pick(), P4 = pick(), P5 = pick();
    const Vec x = c->x, b = B->b;
    Vec& tr = c->tr;
    const auto towards = [&](const Vec& to) {
      const double one = u();
      for (std::size_t d = 0; d < D; ++d) tr[d] = x[d] + one * (to[d] - x[d]);
    };
    const auto both = [&] {
      for (std::size_t d = 0; d < D; ++d) {
        const double u2 = u(), u1 = u();
        tr[d] = x[d] + (b[d] - x[d]) * u1 + (x[d] - P1[d]) * u2;
      }
    };
    if (rate > w) {
      w = w / rate;
      if (w < 0.38)
        towards(b);
      else if (w < 0.68)
        both();
      else if (w < 0.9)
        towards(mean);
      else
        towards(P1);
    } else {
      w = (w - rate) / (1.0 - rate);
      if (w < 0.2) {
        const double f2 = u() * 0.4, f1 = u() * 0.6;
        for (std::size_t d = 0; d < D; ++d) tr[d] = (b[d] - x[d]) * f1 + x[d] + (b[d] - mean[d]) * f2;
      } else if (w < 0.4) {
        const double f2 = u() * 0.14, f1 = u() * 0.86;
        for (std::size_t d = 0; d < D; ++d) tr[d] = (b[d] - x[d]) * f1 + x[d] + (P1[d] - x[d]) * f2;
      } else if (w < 0.6) {
        const double f1 = u(), f2 = u(), f3 = u() * 0.36;
        for (std::size_t d = 0; d < D; ++d)
          tr[d] = (b[d] - P1[d]) * f1 + x[d] + (mean[d] - P2[d]) * f2 + (P4[d] - P3[d]) * f3;
      } else if (w < 0.8) {
        both();
      } else {
        const Vec from[] = {x, x, b, mean, P1, P2, P3, P4, P5};  // one a tenth
        for (std::size_t d = 0; d < D; ++d) {
          const double s = u();
          const double edges[] = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9};
          const auto k = static_cast<std::size_t>(std::upper_bound(edges, edges + 9, s) - edges);
          tr[d] = k < 9 ? from[k][d] : box(Lo[d], U[d]);
        }
      }
    }
    clip(tr);
    return attempt(c, force);
  }
  bool descend(Place* c) {
    Vec g(D), x = c->x;
    for (std::size_t i = 0; i < D; ++i) {
      const double h = std::abs(x[i]) > 1.0 ? std::abs(x[i]) * 1e-9 : 1e-9;
      x[i] = c->x[i] + h;
      const double f1 = f(x);
      x[i] = c->x[i] - h;
      const double f2 = f(x);
      x[i] = c->x[i];
      g[i] = (f1 - f2) / (2.0 * h);
    }
    double step = 8.0;
    for (int k = 0; k < 12; ++k, step *= 0.5) {
      for (std::size_t d = 0; d < D; ++d) {
        c->tr[d] = x[d] - step * g[d];
        if (c->tr[d] < Lo[d])
          c->tr[d] = (x[d] - Lo[d]) * (u() * 0.5 + 0.5) + Lo[d];
        else if (c->tr[d] > U[d])
          c->tr[d] = (U[d] - x[d]) * (u() * 0.5 + 0.5) + x[d];
      }
      c->trialValue = f(c->tr);
      if (!(c->curValue > c->trialValue)) continue;
      c->curValue = c->trialValue;
      c->x = c->tr;
      if (c->bestValue > c->trialValue) {
        c->bestValue = c->trialValue;
        c->b = c->tr;
      }
      const double v = anchored ? anchorBest : c->bestValue;
      if (!(bestError > v)) return false;
      bestError = v;
      return target > bestError;
    }
    return false;
  }
};

TEST(Replays, LG2) {
  for (const int32_t n : {2, 3, 6}) holds<Lg2>(std::make_shared<Solver::LGSolver2>(), {2, n, 300, valley});
  for (const double target : {2.1, 2.5, 4.0})
    holds<Lg2>(std::make_shared<Solver::LGSolver2>(), {3, 6, 60, valley3, target});
  holds<Lg2>(std::make_shared<Solver::LGSolver2>(), {2, 5, 40, slope, -1e300, wedge});
  holds<Lg2>(std::make_shared<Solver::LGSolver2>(), {2, 6, 40, plain, -1e300, nullptr, 1});
}

}  // namespace
}  // namespace Replay
