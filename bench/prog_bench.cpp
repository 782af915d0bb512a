// SPDX-License-Identifier: Apache-2.0
// Linear, quadratic and integer programmes and shortest paths beside GLPK, OSQP called directly and Boost.Graph. The
// counter `gap` is how far the optimum is from the peer's, relative to it.
#include <benchmark/benchmark.h>
#ifdef ORVANE_BENCH_GLPK
#include <glpk.h>
#endif
#ifdef ORVANE_BENCH_OSQP
#include <osqp.h>
#endif
#ifdef ORVANE_BENCH_BOOST
#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <boost/graph/dijkstra_shortest_paths.hpp>
#endif

#include <cmath>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "orvane/frame.h"
#include "orvane/line_programme.h"
#include "orvane/paths.h"
#include "orvane/quadratic_programme.h"

namespace {

struct Row {
  std::vector<int32_t> at;
  std::vector<double> coefs;
  double rhs = 0;
};

/// Maximise c.x, rows at most their right sides, x >= 0.
struct Problem {
  std::vector<double> c;
  std::vector<Row> rows;
  bool binary = false;
};

double unit(std::mt19937& random) { return static_cast<double>(random()) / 4294967296.0; }

Problem sparse(int m) {
  std::mt19937 random(static_cast<unsigned>(m));
  Problem p;
  for (int j = 0; j < m; ++j) p.c.push_back(0.5 + unit(random));
  for (int i = 0; i < m; ++i) {
    std::map<int32_t, double> row;
    for (int k = 0; k < 5; ++k) row[static_cast<int32_t>(random() % static_cast<unsigned>(m))] = 0.5 + unit(random);
    row[i] = 1 + unit(random);  // each variable is bounded
    Row& kept = p.rows.emplace_back();
    for (const auto& [at, coef] : row) kept.at.push_back(at), kept.coefs.push_back(coef);
    kept.rhs = 1 + unit(random);
  }
  return p;
}

Problem knapsack(int n) {
  std::mt19937 random(static_cast<unsigned>(n));
  Problem p;
  p.binary = true;
  Row row;
  for (int j = 0; j < n; ++j) {
    p.c.push_back(static_cast<double>(10 + random() % 90));
    row.at.push_back(j);
    row.coefs.push_back(static_cast<double>(10 + random() % 90));
    row.rhs += row.coefs.back() / 3;
  }
  row.rhs = std::floor(row.rhs);
  p.rows.push_back(row);
  return p;
}

// Each of n workers does at most one of n jobs, each job is done at most once.
Problem assignment(int n) {
  std::mt19937 random(static_cast<unsigned>(n));
  Problem p;
  p.binary = true;
  for (int k = 0; k < n * n; ++k) p.c.push_back(static_cast<double>(1 + random() % 100));
  for (int side = 0; side < 2; ++side)
    for (int i = 0; i < n; ++i) {
      Row row;
      row.coefs.assign(static_cast<std::size_t>(n), 1.0);
      row.rhs = 1;
      for (int j = 0; j < n; ++j) row.at.push_back(side == 0 ? i * n + j : j * n + i);
      p.rows.push_back(row);
    }
  return p;
}

double byOrvane(const Problem& p) {
  LineProgramme* solver = lineProg_CreateSolver();
  const auto n = static_cast<int32_t>(p.c.size());
  const std::vector<uint8_t> kinds(p.c.size(), p.binary ? 2 : 0);
  lineProg_setExact(solver, 1);
  lineProg_SetVarCount(solver, kinds.data(), n);
  std::vector<int32_t> all;
  for (int32_t j = 0; j < n; ++j) all.push_back(j);
  lineProg_SetMaxExpress(solver, all.data(), p.c.data(), n);
  for (const Row& row : p.rows)
    lineProg_AddConstraint(solver, row.at.data(), row.coefs.data(), static_cast<int32_t>(row.at.size()), 0, row.rhs);
  lineProg_Solve(solver);
  const double value = lineProg_GetMaxValue(solver);
  api_FreeHandle(solver);
  return value;
}

#ifdef ORVANE_BENCH_GLPK
double byGlpk(const Problem& p) {
  glp_term_out(GLP_OFF);
  glp_prob* lp = glp_create_prob();
  glp_set_obj_dir(lp, GLP_MAX);
  glp_add_rows(lp, static_cast<int>(p.rows.size()));
  glp_add_cols(lp, static_cast<int>(p.c.size()));
  for (std::size_t j = 0; j < p.c.size(); ++j) {
    const int col = static_cast<int>(j) + 1;
    glp_set_obj_coef(lp, col, p.c[j]);
    glp_set_col_bnds(lp, col, p.binary ? GLP_DB : GLP_LO, 0, 1);
    if (p.binary) glp_set_col_kind(lp, col, GLP_IV);
  }
  for (std::size_t i = 0; i < p.rows.size(); ++i) {
    std::vector<int> at{0};
    std::vector<double> coefs{0};
    for (int32_t j : p.rows[i].at) at.push_back(j + 1);
    coefs.insert(coefs.end(), p.rows[i].coefs.begin(), p.rows[i].coefs.end());
    glp_set_row_bnds(lp, static_cast<int>(i) + 1, GLP_UP, 0, p.rows[i].rhs);
    glp_set_mat_row(lp, static_cast<int>(i) + 1, static_cast<int>(at.size()) - 1, at.data(), coefs.data());
  }
  glp_simplex(lp, nullptr);
  if (p.binary) glp_intopt(lp, nullptr);
  const double value = p.binary ? glp_mip_obj_val(lp) : glp_get_obj_val(lp);
  glp_delete_prob(lp);
  return value;
}
#endif

using Solver = double (*)(const Problem&);

void runProgramme(benchmark::State& state, const Problem& p, Solver solver, Solver peer) {
  double value = 0;
  for (auto _ : state) value = solver(p);
  if (peer != nullptr && peer != solver) {
    const double other = peer(p);
    state.counters["gap"] = std::abs(value - other) / std::max(1.0, std::abs(other));
  }
}

void registerProgramme(const std::string& name, const Problem& p) {
  Solver peer = nullptr;
#ifdef ORVANE_BENCH_GLPK
  peer = byGlpk;
  benchmark::RegisterBenchmark((name + "/glpk").c_str(), [p](benchmark::State& s) {
    runProgramme(s, p, byGlpk, byGlpk);
  })->Unit(benchmark::kMillisecond);
#endif
  benchmark::RegisterBenchmark((name + "/orvane").c_str(), [p, peer](benchmark::State& s) {
    runProgramme(s, p, byOrvane, peer);
  })->Unit(benchmark::kMillisecond);
}

/// Least 1/4 x'Qx + c.x under A x <= b, x >= 0 with dense arrays.
struct Quadratic {
  int32_t n, m;
  std::vector<double> Q, c, A, b;
};

Quadratic quadratic(int32_t n) {
  std::mt19937 random(static_cast<unsigned>(n));
  Quadratic p{n,
              n / 4,
              std::vector<double>(n * n),
              std::vector<double>(n),
              std::vector<double>(n * (n / 4)),
              std::vector<double>(n / 4)};
  std::vector<double> factor(n * 10);
  for (double& v : factor) v = unit(random) - 0.5;
  for (int32_t i = 0; i < n; ++i)
    for (int32_t j = 0; j < n; ++j) {
      for (int32_t k = 0; k < 10; ++k) p.Q[i * n + j] += factor[i * 10 + k] * factor[j * 10 + k];
      if (i == j) p.Q[i * n + j] += 0.5 + 0.001 * i;
    }
  for (double& v : p.c) v = unit(random) - 0.7;
  for (double& v : p.A) v = unit(random) < 0.1 ? unit(random) : 0;
  for (double& v : p.b) v = 0.5 + unit(random);
  return p;
}

double quadByOrvane(const Quadratic& p) {
  std::vector<double> x(p.n);
  return quadProg_solve(p.Q.data(), p.c.data(), p.A.data(), p.b.data(), nullptr, nullptr, p.n, p.m, 0, x.data());
}

#ifdef ORVANE_BENCH_OSQP
// The same matrices, the same settings, straight into OSQP.
double quadByOsqp(const Quadratic& p) {
  const int32_t n = p.n, m = p.m;
  std::vector<OSQPFloat> pv, av, l, u;
  std::vector<OSQPInt> pi, pp{0}, ai, ap{0};
  for (int32_t j = 0; j < n; ++j) {
    for (int32_t i = 0; i <= j; ++i) pv.push_back(0.5 * p.Q[i * n + j]), pi.push_back(i);
    pp.push_back(static_cast<OSQPInt>(pv.size()));
    for (int32_t i = 0; i < m; ++i)
      if (p.A[i * n + j] != 0) av.push_back(p.A[i * n + j]), ai.push_back(i);
    av.push_back(1), ai.push_back(m + j);
    ap.push_back(static_cast<OSQPInt>(av.size()));
  }
  for (int32_t i = 0; i < m; ++i) l.push_back(-1e30), u.push_back(p.b[i]);
  for (int32_t j = 0; j < n; ++j) l.push_back(0), u.push_back(1e30);
  OSQPCscMatrix P, A;
  OSQPCscMatrix_set_data(&P, n, n, static_cast<OSQPInt>(pv.size()), pv.data(), pi.data(), pp.data());
  OSQPCscMatrix_set_data(&A, m + n, n, static_cast<OSQPInt>(av.size()), av.data(), ai.data(), ap.data());
  OSQPSettings settings;
  osqp_set_default_settings(&settings);
  settings.polishing = 1;
  OSQPSolver* solver = nullptr;
  double value = NAN;
  if (osqp_setup(&solver, &P, p.c.data(), &A, l.data(), u.data(), m + n, n, &settings) == 0 &&
      osqp_solve(solver) == 0) {
    const OSQPFloat* x = solver->solution->x;
    value = 0;
    for (int32_t i = 0; i < n; ++i) {
      value += p.c[i] * x[i];
      for (int32_t j = 0; j < n; ++j) value += p.Q[i * n + j] * x[i] * x[j];
    }
  }
  osqp_cleanup(solver);
  return value;
}
#endif

void registerQuadratic(int32_t n) {
  const Quadratic p = quadratic(n);
  const std::string name = "qp_" + std::to_string(n);
  double (*peer)(const Quadratic&) = nullptr;
#ifdef ORVANE_BENCH_OSQP
  peer = quadByOsqp;
  benchmark::RegisterBenchmark((name + "/osqp").c_str(), [p](benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(quadByOsqp(p));
  })->Unit(benchmark::kMillisecond);
#endif
  benchmark::RegisterBenchmark((name + "/orvane").c_str(), [p, peer](benchmark::State& s) {
    double value = 0;
    for (auto _ : s) value = quadByOrvane(p);
    if (peer != nullptr) s.counters["gap"] = std::abs(value - peer(p)) / std::max(1.0, std::abs(value));
  })->Unit(benchmark::kMillisecond);
}

/// A grid of side * side nodes, edges both ways between neighbours.
struct Grid {
  std::vector<uint32_t> from, to;
  std::vector<double> weight;
  uint32_t nodes;
};

const Grid& grid() {
  static const Grid made = [] {
    constexpr uint32_t side = 1000;
    std::mt19937 random(7);
    Grid g;
    g.nodes = side * side;
    const auto join = [&](uint32_t a, uint32_t b) {
      for (const auto& [from, to] : {std::pair{a, b}, {b, a}}) {
        g.from.push_back(from);
        g.to.push_back(to);
        g.weight.push_back(1 + unit(random));
      }
    };
    for (uint32_t i = 0; i < side; ++i)
      for (uint32_t j = 0; j < side; ++j) {
        if (j + 1 < side) join(i * side + j, i * side + j + 1);
        if (i + 1 < side) join(i * side + j, (i + 1) * side + j);
      }
    return g;
  }();
  return made;
}

void gridByOrvane(benchmark::State& state) {
  const Grid& g = grid();
  std::vector<uint32_t> path(g.nodes);
  uint32_t length = 0;
  double cost = 0;
  for (auto _ : state)
    progMinimumDistance1(g.from.data(), g.to.data(), g.weight.data(), static_cast<int32_t>(g.from.size()), 0,
                         g.nodes - 1, path.data(), &length, &cost);
  state.counters["cost"] = cost;
}

#ifdef ORVANE_BENCH_BOOST
void gridByBoost(benchmark::State& state) {
  struct Weight {
    double weight;
  };
  using Graph = boost::compressed_sparse_row_graph<boost::directedS, boost::no_property, Weight>;
  const Grid& g = grid();
  double cost = 0;
  for (auto _ : state) {
    std::vector<std::pair<uint32_t, uint32_t>> edges;
    std::vector<Weight> weights;
    for (std::size_t e = 0; e < g.from.size(); ++e) {
      edges.push_back({g.from[e], g.to[e]});
      weights.push_back({g.weight[e]});
    }
    const Graph graph(boost::edges_are_unsorted_multi_pass, edges.begin(), edges.end(), weights.begin(), g.nodes);
    std::vector<double> distance(g.nodes);
    std::vector<Graph::vertex_descriptor> previous(g.nodes);
    boost::dijkstra_shortest_paths(
        graph, 0,
        boost::weight_map(boost::get(&Weight::weight, graph))
            .distance_map(boost::make_iterator_property_map(distance.begin(), boost::get(boost::vertex_index, graph)))
            .predecessor_map(
                boost::make_iterator_property_map(previous.begin(), boost::get(boost::vertex_index, graph))));
    cost = distance[g.nodes - 1];
  }
  state.counters["cost"] = cost;
}
#endif

}  // namespace

int main(int argc, char** argv) {
  for (int m : {100, 200, 500, 1000, 2000}) registerProgramme("lp_" + std::to_string(m), sparse(m));
  for (int n : {20, 35}) registerProgramme("knapsack_" + std::to_string(n), knapsack(n));
  for (int n : {8, 15}) registerProgramme("assignment_" + std::to_string(n), assignment(n));
  for (int32_t n : {50, 200, 500}) registerQuadratic(n);
#ifdef ORVANE_BENCH_BOOST
  benchmark::RegisterBenchmark("grid_1000000/boost", gridByBoost)->Unit(benchmark::kMillisecond);
#endif
  benchmark::RegisterBenchmark("grid_1000000/orvane", gridByOrvane)->Unit(benchmark::kMillisecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
