// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "orvane/orvane.h"

struct Row {
  std::vector<double> coefs;
  uint8_t relation;
  double rhs;
};

/// Maximise c.x under the rows, x >= 0.
struct Problem {
  std::vector<double> c;
  std::vector<Row> rows;
  std::vector<uint8_t> kinds;
};

/// The generator of tests/reference/make/programmes.py.
class Draw {
 public:
  explicit Draw(uint64_t seed) : state(seed * 2654435761u + 12345) {}

  int below(int k) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<int>((state >> 33) % static_cast<uint64_t>(k));
  }
  double unit() { return below(1 << 30) / static_cast<double>(1 << 30); }

 private:
  uint64_t state;
};

inline Problem drawnProblem(const std::string& family, int seed) {
  Draw d(static_cast<uint64_t>(seed));
  const int n = 1 + d.below(11), m = 1 + d.below(11), density = 3 + d.below(8);
  Problem problem;
  for (int i = 0; i < m; ++i) {
    std::vector<double> row(n, 0.0);
    for (double& a : row) {
      if (d.below(10) >= density) continue;
      a = d.below(15) - 5;
      if (family == "real") a += d.below(8) / 8.0;
    }
    if (std::all_of(row.begin(), row.end(), [](double a) { return a == 0; })) row[d.below(n)] = 1;
    uint8_t relation = d.below(10) > 8 ? 1 : 0;
    if (family == "equality" && d.below(3) == 0) relation = 2;
    double rhs = d.below(25) - 3.0;
    if (family == "degenerate" && d.below(2) == 0) rhs = 0;
    problem.rows.push_back({row, relation, rhs});
  }
  for (int j = 0; j < n; ++j) problem.c.push_back(d.below(15) - 5);
  if (std::all_of(problem.c.begin(), problem.c.end(), [](double a) { return a == 0; })) problem.c[0] = 1;
  problem.kinds.assign(n, family == "binary" ? 2 : 0);
  if (family == "integer")
    for (uint8_t& kind : problem.kinds) kind = static_cast<uint8_t>(d.below(3) % 2);
  if (family == "integer" || family == "binary" || d.below(2) == 0)
    problem.rows.push_back({std::vector<double>(n, 1.0), 0, 20.0});
  return problem;
}

struct Answer {
  int status;
  double value;
  std::vector<double> x;
};

inline Answer solved(const Problem& problem, bool exact = false) {
  LineProgramme* solver = lineProg_CreateSolver();
  lineProg_setExact(solver, exact);
  const auto n = static_cast<int32_t>(problem.c.size());
  lineProg_SetVarCount(solver, problem.kinds.data(), n);
  std::vector<int32_t> at(n);
  for (int32_t j = 0; j < n; ++j) at[j] = j;
  lineProg_SetMaxExpress(solver, at.data(), problem.c.data(), n);
  for (const Row& row : problem.rows) {
    std::vector<int32_t> places;
    std::vector<double> coefs;
    for (int32_t j = 0; j < n; ++j) {
      if (row.coefs[j] == 0) continue;
      places.push_back(j);
      coefs.push_back(row.coefs[j]);
    }
    lineProg_AddConstraint(solver, places.data(), coefs.data(), static_cast<int32_t>(coefs.size()), row.relation,
                           row.rhs);
  }
  Answer answer{lineProg_Solve(solver), lineProg_GetMaxValue(solver), {}};
  if (answer.status == 1) {
    answer.x.resize(n);
    lineProg_GetVar(solver, answer.x.data());
  }
  api_FreeHandle(solver);
  return answer;
}

/// Greatest violation of a row, a sign, or a 0-1 bound.
inline double violation(const Problem& problem, const std::vector<double>& x) {
  double worst = 0;
  for (const Row& row : problem.rows) {
    double sum = -row.rhs;
    for (std::size_t j = 0; j < x.size(); ++j) sum += row.coefs[j] * x[j];
    if (row.relation != 1) worst = std::max(worst, sum);
    if (row.relation != 0) worst = std::max(worst, -sum);
  }
  for (std::size_t j = 0; j < x.size(); ++j) {
    worst = std::max(worst, -x[j]);
    if (problem.kinds[j] == 2) worst = std::max(worst, x[j] - 1);
  }
  return worst;
}
