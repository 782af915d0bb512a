// SPDX-License-Identifier: Apache-2.0
#include "solver/replay.h"

#include <numbers>
#include <numeric>

#include "solver/gto_solver.h"
#include "solver/ins_solver.h"
#include "solver/run_solver.h"
#include "solver/swo_solver.h"

namespace Replay {
namespace {

struct RungeKutta : Rule {
  using Rule::Rule;
  Vec mean, delta, rk, v1, v2, v3, w;
  std::vector<double> kept2;
  Place *A = nullptr, *Bp = nullptr, *C = nullptr;

  void run() {
    start();
    start();  // its own beginning evaluates once more
    for (Vec* v : {&mean, &delta, &rk, &v1, &v2, &v3, &w}) v->assign(D, 0.0);
    loop([this] { return iterate(); });
  }
  bool iterate() {
    for (std::size_t d = 0; d < D; ++d) {
      mean[d] = 0.0;
      for (Place* c : X) mean[d] += c->x[d];
      mean[d] /= static_cast<double>(N);
    }
    Vec sf(N);
    fill(sf);
    const double factor = 40.0 * std::exp(-12.0 * t / T);
    for (double& s : sf) s = (0.5 - s) * factor;
    for (std::size_t i = 0; i < N; ++i)
      if (!step(i, sf[i])) break;
    return gradientStep();
  }
  void three(std::size_t i) {
    A = Bp = C = X[i];
    if (N == 1) return;
    std::vector<std::size_t> picks(N);
    std::iota(picks.begin(), picks.end(), std::size_t{0});
    picks[i] = N - 1;
    auto g = local();
    std::shuffle(picks.begin(), picks.begin() + static_cast<int64_t>(N) - 1, g);
    A = X[picks[0]];
    Bp = N >= 3 ? X[picks[1]] : A;
    C = N > 3 ? X[picks[2]] : A;
  }
  void slopes(const Vec& Xb, const Vec& Xw) {
    double g;
    if (u() > 0.5)
      g = 1.0 - u();
    else
      g = 2.0 * (1.0 - u());
    const double q1 = u(), q2 = u(), q3 = u(), q4 = u();
    fill(v1);
    fill(v2);
    for (std::size_t d = 0; d < D; ++d) {
      const double a = v2[d] * delta[d], c = v1[d] * delta[d], h = g * Xb[d], ww = Xw[d];
      const double k1 = ww * q1 - h;
      const double k2 = (k1 * a * 0.5 + ww) * q2 - (k1 * c * 0.5 + h);
      const double k3 = (k2 * a * 0.5 + ww) * q3 - (k2 * c * 0.5 + h);
      const double k4 = (k3 * a + ww) * q4 - (k3 * c + h);
      rk[d] = (k4 + 2.0 * k2 + k1 + 2.0 * k3) * 0.5 / 6.0;
    }
  }
  bool take(Place* c) {  // RUN_lag
    c->accept();
    if (c != B && B->bestValue > c->bestValue) {
      B = c;
      bestError = c->bestValue;
    }
    return bestError > target;
  }
  void judge(Place* c) {
    clip(c->tr);
    c->trialValue = f(c->tr);
  }
  bool step(std::size_t i, double s) {
    Place* c = X[i];
    fill(v1);
    fill(v2);
    fill(v3);
    const double r1 = u(), e = std::exp(-4.0 * t / T) * u();
    for (std::size_t d = 0; d < D; ++d)
      delta[d] = std::abs(((c->x[d] - (U[d] - Lo[d]) * v1[d]) * e + (B->b[d] - r1 * mean[d])) * v2[d]) * 2.0 * v3[d];
    three(i);
    Place* W = A;
    if (Bp->curValue < W->curValue) W = Bp;
    if (C->curValue <= W->curValue) W = C;
    if (W->curValue > c->curValue)
      slopes(c->x, W->x);
    else
      slopes(W->x, c->x);
    Place* lead = X[0];
    for (Place* o : X)
      if (o->curValue < lead->curValue) lead = o;
    const double r = u(), twice = 2.0 * u();
    for (double& v : v1) v = polar(kept2);
    const double r3 = u();
    const double g = (r > 0.5 ? 1.0 : -1.0) * s * twice;
    for (std::size_t d = 0; d < D; ++d) {
      if (r3 < 0.5) {
        const double p = u() > 0.5 ? c->x[d] : A->x[d];
        const double q = u() > 0.5 ? B->b[d] : lead->x[d];
        c->tr[d] = s * rk[d] + (g * p + p) + (v1[d] * 0.1 + 0.5) * (q - p);
      } else {
        u();  // RUN_draw
        const double p = u() > 0.5 ? B->b[d] : lead->x[d];
        c->tr[d] = (A->x[d] - Bp->x[d]) * (v1[d] * 0.1 + 0.5) + (g * p + p + s * rk[d]);
      }
    }
    judge(c);
    if (c->curValue > c->trialValue && !take(c)) return false;
    if (u() >= 0.5) return true;
    enhance(c, i);
    judge(c);
    if (c->curValue > c->trialValue) return take(c);
    const double q1 = u(), q2 = u();
    if (w[static_cast<std::size_t>(std::floor((static_cast<double>(D) - 0.0001) * q2))] > q1) {
      const Vec old = c->tr;
      slopes(c->x, old);
      fill(v1);
      const double rr = u();
      for (std::size_t d = 0; d < D; ++d)
        c->tr[d] = (2.0 * v1[d] * B->b[d] + rk[d] - old[d]) * s + (old[d] - old[d] * rr);
      judge(c);
      if (c->curValue > c->trialValue) return take(c);
    }
    return true;
  }
  void enhance(Place* c, std::size_t i) {
    three(i);
    const double y = (2.0 * u() - 1.0) * 1.5 + 0.5, yf = std::floor(y);
    const double e = std::exp(t * (u() * -5.0) / T);
    for (double& v : v1) v = (2.0 * u() - 1.0) * 1.0 + 1.0;
    fill(v2);
    fill(v3);
    const double n1 = polar(kept2), n2 = polar(kept2);
    for (std::size_t d = 0; d < D; ++d) {
      w[d] = e * v1[d];
      const double xa = (A->x[d] + Bp->x[d] + C->x[d]) / 3.0;
      const double xn = v2[d] * B->b[d] + (1.0 - v2[d]) * xa;
      if (w[d] < 1.0)
        c->tr[d] = std::abs(xn - xa + n1) * (w[d] * yf) + xn;
      else
        c->tr[d] = xn - xa + std::abs(2.0 * v3[d] * xn - xa + n2) * (w[d] * yf);
    }
  }
};

TEST(Replays, RUN) {
  for (const int32_t n : {1, 2, 3, 4, 6}) holds<RungeKutta>(std::make_shared<Solver::RUNSolver>(), {2, n, 60, valley});
  holds<RungeKutta>(std::make_shared<Solver::RUNSolver>(), {3, 6, 60, valley3, 2.2});
  holds<RungeKutta>(std::make_shared<Solver::RUNSolver>(), {2, 5, 60, slope, -1e300, wedge});
  holds<RungeKutta>(std::make_shared<Solver::RUNSolver>(), {2, 6, 40, plain, -1e300, nullptr, 1});
  holds<RungeKutta>(std::make_shared<Solver::RUNSolver>(), {2, 5, 30, waves, -1e300, nullptr, 200, 1});
  holds<RungeKutta>(std::make_shared<Solver::RUNSolver>(), {3, 5, 30, valley3, -1e300, nullptr, 200, 9});
}

struct Swo : Rule {
  using Rule::Rule;
  double k = 0.0, tr2 = 0.0, a = 0.0;
  std::vector<std::size_t> list;
  bool third = false;

  void run() {
    start();
    list.resize(N);
    std::iota(list.begin(), list.end(), std::size_t{0});
    loop([this] { return iterate(); });
  }
  bool iterate() {
    k = (T - t) / T;
    tr2 = 2.0 * k;
    a = -(t + T) / T;
    auto g = local();
    std::shuffle(list.begin(), list.end(), g);
    if (u() < 0.3)
      hunt();
    else if (!third || u() < 0.8)
      mate();
    else
      centroid();
    return false;
  }
  void hunt() {
    const auto cnt = static_cast<int64_t>(static_cast<double>(N) * k);
    int64_t j = 1;
    const Vec &x0 = X[list[0]]->x, &x1 = X[list[1]]->x, &x2 = X[list[2]]->x;
    for (Place* c : X) {
      const double r1 = u(), r2 = u(), r3 = u(), r4 = u();
      const double m = (2.0 * r1 - 1.0) * tr2;
      const double n = (a - 1.0) * normal();
      const Vec& x = c->x;
      Vec& tr = c->tr;
      if (j < cnt) {
        if (k > r4 && r2 > r1) {
          const double s = std::abs(normal()) * r1;
          for (std::size_t d = 0; d < D; ++d) tr[d] = x[d] + s * (x0[d] - x1[d]);
        } else if (k > r4) {
          const double g = 1.0 / (std::exp(n + 1.0) + 1.0);
          const double w = std::cos((n + 1.0) * 2.0 * std::numbers::pi);
          const Vec& q = X[list[static_cast<std::size_t>(j)]]->x;
          for (std::size_t d = 0; d < D; ++d) tr[d] = ((U[d] - Lo[d]) * u() + Lo[d]) * (g * w) + q[d];
        } else if (r2 > r1) {
          for (std::size_t d = 0; d < D; ++d) tr[d] = x[d] + m * std::abs(2.0 * u() * x2[d] - tr[d]);
        } else {
          for (std::size_t d = 0; d < D; ++d) tr[d] = x[d] + 2.0 * k * u() * m - k;
        }
      } else if (r2 > r1) {
        const double w = std::cos((n + 1.0 + n + 1.0) * std::numbers::pi);
        for (std::size_t d = 0; d < D; ++d) tr[d] = B->b[d] + (B->b[d] - x[d]) * w;
      } else {
        double l = u() * 0.03482872512788485;
        const double e = std::max(1e-12, std::pow(u(), 2.0 / 3.0));
        l = std::abs(l / e) * r3;
        for (std::size_t d = 0; d < D; ++d) {
          tr[d] = x0[d] + (x0[d] - x[d]) * l;
          if (u() > 0.5) tr[d] += (x2[d] - x1[d]) * (1.0 - r3);
        }
      }
      clip(tr);
      attempt(c, false);
      ++j;
    }
  }
  void mate() {
    Place *A = X[list[0]], *P = X[list[1]], *Q = X[list[2]];
    for (Place* c : X) {
      const double e = std::exp((a - 1.0) * u() + 1.0);
      Vec diff1(D), diff2(D);
      for (std::size_t d = 0; d < D; ++d) {
        diff1[d] = c->bestValue > A->bestValue ? A->x[d] - c->x[d] : c->x[d] - A->x[d];
        diff2[d] = Q->bestValue > P->bestValue ? P->x[d] - Q->x[d] : Q->x[d] - P->x[d];
      }
      const double k1 = std::abs(normal()) * e;
      const double k2 = std::abs(normal()) * (1.0 - e);
      for (std::size_t d = 0; d < D; ++d) {
        c->tr[d] = c->x[d];
        if (u() < 0.2) c->tr[d] = c->x[d] + k1 * diff1[d] + k2 * diff2[d];
      }
      clip(c->tr);
      attempt(c, false);
    }
  }
  void centroid() {
    Place* W = X[0];
    for (Place* c : X)
      if (c != B) W = c;
    weigh(X, W->tr);
    clip(W->tr);
    if (!attempt(W, true)) walk(W);
  }
};

struct Iswo : Swo {
  Iswo(const Solver::BaseSolver& s, Cost objective) : Swo(s, std::move(objective)) { third = true; }
};

TEST(Replays, SWO) {
  for (const int32_t n : {3, 4, 6}) holds<Swo>(std::make_shared<Solver::SWOSolver>(), {2, n, 200, valley});
  holds<Swo>(std::make_shared<Solver::SWOSolver>(), {3, 6, 100, valley3, 2.5});
  holds<Swo>(std::make_shared<Solver::SWOSolver>(), {2, 5, 100, slope, -1e300, wedge});
  holds<Swo>(std::make_shared<Solver::SWOSolver>(), {2, 6, 40, plain, -1e300, nullptr, 1});
}

TEST(Kept, Kind_8) {
  const auto flagged = std::dynamic_pointer_cast<Solver::SWOSolver>(Solver::makeSolver(8));
  ASSERT_EQ(flagged->swoFlag, 1);
  holds<Swo>(flagged, {2, 6, 100, valley});
}

TEST(Replays, ISWO) {
  for (const auto& cost : {valley, below, slope})
    holds<Iswo>(std::make_shared<Solver::ISWOSolver>(), {2, 5, 150, cost, -1e300, wedge});
  holds<Iswo>(std::make_shared<Solver::ISWOSolver>(), {2, 6, 40, plain, -1e300, nullptr, 1});
}

struct Ins : Rule {
  using Rule::Rule;
  std::vector<std::size_t> order;

  void run() {
    start();
    order.resize(N);
    std::iota(order.begin(), order.end(), std::size_t{0});
    loop([this] { return iterate(); });
  }
  bool iterate() {
    auto g = local();
    const auto n = static_cast<int64_t>(N);
    for (Place* c : X) {
      if (c == B) continue;
      int64_t k = index(1, n + 1);
      if (k < 3) k = std::min<int64_t>(3, n);
      if (k > std::max<int64_t>(n, 3) && u() > 0.5) k = std::max<int64_t>(n, 3);
      std::shuffle(order.begin(), order.end(), g);
      std::vector<Place*> neighbours;
      for (int64_t i = k; i-- > 0;) neighbours.push_back(X[order[static_cast<std::size_t>(i)]]);
      neighbours.push_back(c);
      weigh(neighbours, c->tr);
    }
    for (Place* c : X) {
      clip(c->tr);
      if (attempt(c, true)) return true;
      if (u() < 0.36 && walk(c)) return true;
    }
    return false;
  }
};

TEST(Replays, INS) {
  for (const int32_t n : {1, 2, 3, 6}) holds<Ins>(std::make_shared<Solver::INSSolver>(), {2, n, 40, valley});
  holds<Ins>(std::make_shared<Solver::INSSolver>(), {2, 5, 40, below, -4.7});
  holds<Ins>(std::make_shared<Solver::INSSolver>(), {2, 5, 40, slope, -1e300, wedge});
  holds<Ins>(std::make_shared<Solver::INSSolver>(), {2, 6, 40, plain, -1e300, nullptr, 1});
}

struct Gto : Rule {
  using Rule::Rule;
  double C = 0.0, Lc = 0.0;

  void run() {
    start();
    loop([this] { return first() || second(); });
  }
  bool first() {
    C = (std::cos(2.0 * u()) + 1.0) * (1.0 - t / (T + 1.0));
    Lc = (2.0 * u() - 1.0) * C;
    for (Place* c : X) {
      if (u() < 0.03) {
        for (std::size_t d = 0; d < D; ++d) c->tr[d] = (U[d] - Lo[d]) * u() + Lo[d];
      } else if (u() > 0.5) {
        const double g = u() - C;
        Place* j = X[anyOf(N)];
        for (std::size_t d = 0; d < D; ++d) c->tr[d] = 2.0 * C * Lc * c->b[d] * (u() - 0.5) + g * j->b[d];
        clip(c->tr);
      } else {
        Place* P = X[anyOf(N)];
        Place* Q = X[anyOf(N)];
        for (std::size_t d = 0; d < D; ++d)
          c->tr[d] = c->b[d] - ((c->b[d] - Q->x[d]) * u() + (c->b[d] - P->x[d]) * Lc) * Lc;
        clip(c->tr);
      }
      if (attempt(c, true)) return true;
    }
    return false;
  }
  bool second() {
    Vec M(D, 0.0);
    for (Place* c : X)
      for (std::size_t d = 0; d < D; ++d) M[d] += c->x[d];
    for (std::size_t i = 0; i < N; ++i) {
      Place* c = X[i];
      if (C > 0.8) {
        for (std::size_t d = 0; d < D; ++d)  // GTO_divisor
          c->tr[d] = std::abs(M[d] / static_cast<double>(D)) * Lc * (c->b[d] - B->b[d]) + c->b[d];
      } else {
        const double g = (2.0 * u() - 1.0) * 3.0;
        if (u() > 0.5) {
          for (std::size_t d = 0; d < D; ++d) c->tr[d] = B->b[d] - normal() * ((B->b[d] - c->b[d]) * g);
        } else {
          const double w = normal() * g;
          for (std::size_t d = 0; d < D; ++d) c->tr[d] = B->b[d] - (B->b[d] - c->b[d]) * w;
        }
      }
      clip(c->tr);
      if (i + 1 < N)
        for (std::size_t d = 0; d < D; ++d) M[d] = M[d] + c->tr[d] - X[i + 1]->x[d];
      if (attempt(c, true)) return true;
    }
    return false;
  }
};

TEST(Replays, GTO) {
  for (const int32_t n : {1, 2, 6}) holds<Gto>(std::make_shared<Solver::GTOSolver>(), {2, n, 100, valley});
  holds<Gto>(std::make_shared<Solver::GTOSolver>(), {3, 5, 100, valley3, 2.1});
  holds<Gto>(std::make_shared<Solver::GTOSolver>(), {2, 6, 40, plain, -1e300, nullptr, 1});
}

}  // namespace
}  // namespace Replay
