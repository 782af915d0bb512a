// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "prog/drawn_problem.h"
#include "support/numbers.h"

namespace {

using Values = std::vector<double>;

/// Least x'Qx + c.x under A x <= b, x >= 0, with a positive definite Q of size n.
struct Dense {
  int32_t n = 0, m = 0;
  Values Q, c, A, b;

  double at(const Values& x, double quadratic = 1) const {
    double sum = 0;
    for (int32_t i = 0; i < n; ++i) {
      sum += c[i] * x[i];
      for (int32_t j = 0; j < n; ++j) sum += quadratic * Q[i * n + j] * x[i] * x[j];
    }
    return sum;
  }
};

Dense drawn(uint64_t seed, int32_t n, int32_t m) {
  Draw d(seed);
  const auto centred = [&d] { return d.unit() * 2 - 1; };
  Dense p{n, m, Values(n * n), Values(n), Values(m * n), Values(m)};
  Values B(n * n);
  for (double& v : B) v = centred();
  for (int32_t i = 0; i < n; ++i)
    for (int32_t j = 0; j < n; ++j) {
      for (int32_t k = 0; k < n; ++k) p.Q[i * n + j] += B[i * n + k] * B[j * n + k];
      if (i == j) p.Q[i * n + j] += 0.1;
    }
  for (double& v : p.c) v = 4 * centred();
  for (double& v : p.A) v = centred();
  for (double& v : p.b) v = 0.2 + d.unit();
  return p;
}

double solveDense(const Dense& p, Values& x) {
  x.assign(p.n, -7);
  return quadProg_solve(p.Q.data(), p.c.data(), p.A.data(), p.b.data(), nullptr, nullptr, p.n, p.m, 0, x.data());
}

/// A programme built term by term, to be minimised.
struct Stepwise {
  explicit Stepwise(int32_t n) { quadProg_initTempVar(solver, n); }
  ~Stepwise() { api_FreeHandle(solver); }
  Stepwise(const Stepwise&) = delete;

  void minimise(std::vector<int32_t> i, std::vector<int32_t> j, Values quad, std::vector<int32_t> k, Values linear,
                double constant = 0) {
    for (Values* list : {&quad, &linear})
      for (double& v : *list) v = -v;
    quadProg_setMaxExpress(solver, i.data(), j.data(), quad.data(), static_cast<int32_t>(quad.size()), k.data(),
                           linear.data(), static_cast<int32_t>(linear.size()), -constant);
  }
  void row(std::vector<int32_t> at, Values coefs, double rhs, uint8_t relation) {
    quadProg_addConstraint(solver, at.data(), coefs.data(), static_cast<int32_t>(at.size()), rhs, relation);
  }
  void kinds(std::vector<uint8_t> k) { quadProg_setVarKind(solver, k.data(), static_cast<int32_t>(k.size())); }
  int solve() { return quadProg_solveTemp(solver); }
  double result(Values& x) { return quadProg_getTempResult(solver, x.data()); }

  QuadProgramme* solver = quadProg_createSolver();
};

void enter(Stepwise& steps, const Dense& p) {
  std::vector<int32_t> i, j, k;
  Values quad;
  for (int32_t a = 0; a < p.n; ++a) {
    k.push_back(a);
    for (int32_t b = 0; b < p.n; ++b) i.push_back(b), j.push_back(a), quad.push_back(p.Q[a * p.n + b]);
  }
  steps.minimise(i, j, quad, k, p.c);
  for (int32_t r = 0; r < p.m; ++r)
    steps.row(k, Values(p.A.begin() + r * p.n, p.A.begin() + (r + 1) * p.n), p.b[r], r % 2 == 0 ? 0 : 3);
}

// The least of 1/4 x'Qx + c.x: with every set of active rows and bounds the conditions of Karush, Kuhn and Tucker are
// a linear system; of the feasible solutions the best one counts.
double leastByEnumeration(const Dense& p) {
  const int32_t n = p.n, rows = p.m + n;
  double best = kInf;
  for (int32_t active = 0; active < 1 << rows; ++active) {
    if (__builtin_popcount(active) > n) continue;
    // Stationarity 1/2 Q x + c + sum of multipliers * normals = 0 and the active rows as equalities.
    const int32_t size = n + __builtin_popcount(active);
    std::vector<Values> system(size, Values(size + 1, 0.0));
    for (int32_t i = 0; i < n; ++i) {
      for (int32_t j = 0; j < n; ++j) system[i][j] = 0.5 * p.Q[i * n + j];
      system[i][size] = -p.c[i];
    }
    int32_t at = n;
    for (int32_t r = 0; r < rows; ++r) {
      if (!(active >> r & 1)) continue;
      for (int32_t j = 0; j < n; ++j)
        system[at][j] = system[j][at] = r < p.m ? p.A[r * n + j] : (r - p.m == j ? -1.0 : 0.0);
      system[at++][size] = r < p.m ? p.b[r] : 0;
    }
    bool singular = false;
    for (int32_t k = 0; k < size && !singular; ++k) {
      int32_t pivot = k;
      for (int32_t i = k + 1; i < size; ++i)
        if (std::abs(system[i][k]) > std::abs(system[pivot][k])) pivot = i;
      std::swap(system[k], system[pivot]);
      singular = std::abs(system[k][k]) < 1e-11;
      for (int32_t i = 0; i < size && !singular; ++i) {
        if (i == k) continue;
        const double factor = system[i][k] / system[k][k];
        for (int32_t j = k; j <= size; ++j) system[i][j] -= factor * system[k][j];
      }
    }
    if (singular) continue;
    Values x(n);
    bool feasible = true;
    for (int32_t j = 0; j < n; ++j) {
      x[j] = system[j][size] / system[j][j];
      feasible = feasible && x[j] >= -1e-10;
    }
    for (int32_t r = 0; r < p.m; ++r) {
      double sum = -p.b[r];
      for (int32_t j = 0; j < n; ++j) sum += p.A[r * n + j] * x[j];
      feasible = feasible && sum <= 1e-10;
    }
    if (feasible) best = std::min(best, p.at(x, 0.25));
  }
  return best;
}

TEST(QuadraticProgramme, FactorsOfTheRelaxation) {
  // KEPT row Osqp_factors: x^2 - x alone has its minimum at 1/2; with a fourth of the square it is at 2.
  const Values Q{1}, c{-1};
  Values x{-7};
  EXPECT_NEAR(quadProg_solve(Q.data(), c.data(), nullptr, nullptr, nullptr, nullptr, 1, 0, 0, x.data()), 2, 1e-9);
  EXPECT_NEAR(x[0], 2, 1e-9);
  // The pair x y has the same factor as the squares: 1/4 (x^2 + x y + y^2) - x - y is least at 4/3, 4/3.
  const Values pair{1, 1, 0, 1}, both{-1, -1};
  x = {-7, -7};
  const double value = quadProg_solve(pair.data(), both.data(), nullptr, nullptr, nullptr, nullptr, 2, 0, 0, x.data());
  EXPECT_NEAR(x[0], 4.0 / 3, 1e-8);
  EXPECT_NEAR(x[1], 4.0 / 3, 1e-8);
  EXPECT_NEAR(value, 3 * 16.0 / 9 - 8.0 / 3, 1e-8);
  for (uint64_t seed = 0; seed < 60; ++seed) {
    const Dense p = drawn(seed, 2 + static_cast<int32_t>(seed % 3), 1 + static_cast<int32_t>(seed % 4));
    solveDense(p, x);
    const double least = leastByEnumeration(p);
    EXPECT_NEAR(p.at(x, 0.25), least, 1e-8 * std::max(1.0, std::abs(least))) << seed;
  }
}

TEST(QuadraticProgramme, FormsAgree) {
  for (uint64_t seed = 100; seed < 130; ++seed) {
    const Dense p = drawn(seed, 3 + static_cast<int32_t>(seed % 4), 2);
    Values dense, x(p.n);
    const double value = solveDense(p, dense);
    EXPECT_NEAR(value, p.at(dense), 1e-9);
    Stepwise steps(p.n);
    enter(steps, p);
    ASSERT_EQ(steps.solve(), 1);
    EXPECT_NEAR(steps.result(x), value, 1e-9 * std::max(1.0, std::abs(value)));
    for (int32_t j = 0; j < p.n; ++j) EXPECT_NEAR(x[j], dense[j], 1e-9);

    // The same by expressions: -(x'Qx + c.x) to be maximised, A x - b at most 0.
    std::vector<SymObject*> vars, terms;
    for (int32_t j = 0; j < p.n; ++j) vars.push_back(sym_createBaseSymVar(("quad_x" + std::to_string(j)).c_str()));
    const auto times = [](double factor, SymObject* node) {
      return sym_funTwoParam(sym_createDouble(factor), node, 3);
    };
    for (int32_t i = 0; i < p.n; ++i) {
      terms.push_back(times(-p.c[i], vars[i]));
      for (int32_t j = 0; j < p.n; ++j) terms.push_back(times(-p.Q[i * p.n + j], sym_funTwoParam(vars[i], vars[j], 3)));
    }
    SymMatrix2d* stated = sym_createSymMatrix(1 + p.m, 1);
    sym_setSymMatrixData(stated, 0, 0, sym_funMulParam(terms.data(), static_cast<int32_t>(terms.size()), 2));
    for (int32_t r = 0; r < p.m; ++r) {
      terms.assign(1, sym_createDouble(-p.b[r]));
      for (int32_t j = 0; j < p.n; ++j) terms.push_back(times(p.A[r * p.n + j], vars[j]));
      sym_setSymMatrixData(stated, 1 + r, 0, sym_funMulParam(terms.data(), static_cast<int32_t>(terms.size()), 2));
    }
    std::vector<BaseSym*> symbols(p.n);
    ASSERT_EQ(sym_getAllBaseSym(stated, 0, 0, symbols.data(), p.n), p.n);
    ASSERT_EQ(quadProg_solveSym(symbols.data(), stated, p.n, x.data()), 1);
    for (int32_t j = 0; j < p.n; ++j) {
      char name[16] = {};
      sym_getBaseSymName(symbols[j], name, 15);
      EXPECT_NEAR(x[j], dense[std::stoi(name + 6)], 1e-7) << seed;
      EXPECT_EQ(sym_getBaseSymValue(symbols[j]), x[j]);
    }
    EXPECT_EQ(quadProg_solveSym(symbols.data(), stated, p.n - 1, x.data()), 6);  // a symbol is missing
    sym_freeMatrix2d(stated);
  }
  sym_clearTempVar();
}

TEST(QuadraticProgramme, ExpressionsTellTheirRelation) {
  SymObject *x = sym_createBaseSymVar("quad_a"), *y = sym_createBaseSymVar("quad_b");
  const auto plus = [](SymObject* a, SymObject* b) { return sym_funTwoParam(a, b, 2); };
  const auto times = [](double factor, SymObject* node) { return sym_funTwoParam(sym_createDouble(factor), node, 3); };
  SymMatrix2d* stated = sym_createSymMatrix(1, 3);
  // Maximise x + 2y, x + y = 3, y <= 1 (a line: the simplex takes it).
  sym_setSymMatrixData(stated, 0, 0, plus(x, times(2, y)));
  sym_setSymMatrixData(stated, 0, 1, sym_funOneParam(plus(plus(x, y), sym_createDouble(-3)), 13));
  sym_setSymMatrixData(stated, 0, 2, plus(y, sym_createDouble(-1)));
  BaseSym* symbols[2];
  ASSERT_EQ(sym_getAllBaseSym(stated, 0, 0, symbols, 2), 2);
  double result[2] = {-7, -7};
  EXPECT_EQ(quadProg_solveSym(symbols, stated, 2, result), 1);
  EXPECT_NEAR(result[0] + result[1], 3, 1e-9);
  EXPECT_NEAR(result[0] * result[1], 2, 1e-9);
  // A symbol that is listed twice has its one value at both places; a null is refused.
  BaseSym *twice[] = {symbols[0], symbols[1], symbols[0]}, *missing[] = {symbols[0], symbols[1], nullptr};
  double three[3] = {-7, -7, -7};
  EXPECT_EQ(quadProg_solveSym(twice, stated, 3, three), 1);
  EXPECT_EQ(three[2], three[0]);
  EXPECT_NEAR(sym_getBaseSymValue(symbols[0]), result[0], 1e-9);
  EXPECT_EQ(quadProg_solveSym(missing, stated, 3, three), 6);
  // Neither a line nor a quad, or a quad as a constraint.
  sym_setSymMatrixData(stated, 0, 2, sym_funOneParam(y, 20));
  result[0] = -7;
  EXPECT_EQ(quadProg_solveSym(symbols, stated, 2, result), 6);
  sym_setSymMatrixData(stated, 0, 2, sym_funTwoParam(x, y, 3));
  EXPECT_EQ(quadProg_solveSym(symbols, stated, 2, result), 6);
  EXPECT_EQ(result[0], -7);
  sym_freeMatrix2d(stated);
  SymMatrix2d* empty = sym_createSymMatrix(0, 0);
  EXPECT_EQ(quadProg_solveSym(symbols, empty, 2, result), 5);
  sym_freeMatrix2d(empty);
  sym_clearTempVar();
}

TEST(QuadraticProgramme, WithoutQuadraticTerm) {
  const Values c{-3, -5}, A{1, 0, 0, 2, 3, 2}, b{4, 12, 18}, zero{1e-16, 0, 0, 1e-15};
  Values x{-7, -7}, y{-7, -7};
  const Values maximised{3, 5};
  const double most = lineProg_solve2(maximised.data(), A.data(), b.data(), nullptr, nullptr, 2, 3, 0, y.data());
  for (const double* Q : {static_cast<const double*>(nullptr), zero.data()}) {
    EXPECT_EQ(quadProg_solve(Q, c.data(), A.data(), b.data(), nullptr, nullptr, 2, 3, 0, x.data()), -most);
    EXPECT_EQ(x, y);
  }
  Stepwise steps(3);
  steps.kinds({1, 0, 2});
  steps.minimise({0}, {1}, {1e-17}, {0, 2}, {-1, -1}, 10);
  steps.row({0, 2}, {2, 1}, 5.5, 3);
  ASSERT_EQ(steps.solve(), 1);
  Values z(3, -7);
  EXPECT_NEAR(steps.result(z), 10 - 3, 1e-12);
  EXPECT_EQ(z, (Values{2, 0, 1}));  // the second takes no part
  steps.row({0}, {1}, 9, 4);
  EXPECT_EQ(steps.solve(), 7);
  EXPECT_NEAR(steps.result(z), 7, 1e-12);  // as they were
}

TEST(QuadraticProgramme, ResultCodes) {
  Stepwise none(1);
  Values x{-7};
  EXPECT_EQ(none.solve(), 5);
  EXPECT_TRUE(std::isnan(none.result(x)));
  EXPECT_EQ(x[0], 0);
  const auto code = [](double quad, double linear, std::vector<int32_t> at, Values coefs, double rhs, uint8_t relation,
                       uint8_t kind = 0) {
    Stepwise steps(1);
    steps.kinds({kind});
    steps.minimise({0}, {0}, {quad}, {0}, {linear});
    steps.row(at, coefs, rhs, relation);
    return steps.solve();
  };
  EXPECT_EQ(code(1, -1, {0, 0}, {0.5, 0.5}, 1, 2), 1);  // coefficients on one variable add up
  EXPECT_EQ(code(1, -1, {0}, {1}, -1, 0), 7);           // infeasible: variables are not negative
  EXPECT_EQ(code(-1, -1, {0}, {1}, 1, 0), 6);           // not convex
  EXPECT_EQ(code(1, -1, {1}, {1}, 1, 0), 6);
  EXPECT_EQ(code(1, -1, {-1}, {1}, 1, 0), 6);
  EXPECT_EQ(code(1, -1, {0, 0}, {1e308, 1e308}, 1, 0), 6);  // beyond the range of doubles
  EXPECT_EQ(code(1, -1, {0}, {1}, 1, 5), 6);
  EXPECT_EQ(code(1, -1, {0}, {1}, 1, 0, 3), 6);
  for (double bad : {kNaN, kInf}) {
    EXPECT_EQ(code(bad, -1, {0}, {1}, 1, 0), 6);
    EXPECT_EQ(code(1, bad, {0}, {1}, 1, 0), 6);
    EXPECT_EQ(code(1, -1, {0}, {bad}, 1, 0), 6);
    EXPECT_EQ(code(1, -1, {0}, {1}, bad, 0), 6);
  }
  Stepwise range(1);
  range.minimise({0}, {1}, {1}, {}, {});
  EXPECT_EQ(range.solve(), 5);
  EXPECT_EQ(code(1, 0, {0}, {2}, 1, 2, 1), 8);  // 2x = 1 in whole numbers
  Values y{-7};
  const Values Q{1}, A{1}, b{-1};
  EXPECT_TRUE(std::isnan(quadProg_solve(Q.data(), nullptr, A.data(), b.data(), nullptr, nullptr, 1, 1, 0, y.data())));
  EXPECT_EQ(y[0], -7);
  EXPECT_TRUE(std::isnan(quadProg_solve(Q.data(), nullptr, A.data(), b.data(), nullptr, nullptr, 0, 1, 0, y.data())));
}

TEST(QuadraticProgramme, WholeNumbers) {
  // Without a linear part the factors do not matter: the least variance of lots whose sum is given.
  for (uint64_t seed = 200; seed < 240; ++seed) {
    const int32_t n = 2 + static_cast<int32_t>(seed % 3), total = 5;
    const Dense p = drawn(seed, n, 0);
    const bool binary = seed % 5 == 0;
    Stepwise steps(n);
    std::vector<int32_t> i, j, all;
    for (int32_t a = 0; a < n; ++a) {
      all.push_back(a);
      for (int32_t b = 0; b < n; ++b) i.push_back(a), j.push_back(b);
    }
    steps.minimise(i, j, p.Q, {}, {});
    steps.row(all, Values(n, 1), binary ? 1 : total, 2);
    steps.kinds(std::vector<uint8_t>(n, binary ? 2 : 1));
    ASSERT_EQ(steps.solve(), 1) << seed;
    Values x(n), trial(n), least;
    const double value = steps.result(x);
    double best = kInf, sum = 0;
    const std::function<void(int32_t, int32_t)> all_points = [&](int32_t at, int32_t left) {
      if (at + 1 == n) {
        trial[at] = left;
        if (Dense{n, 0, p.Q, Values(n, 0), {}, {}}.at(trial) < best) {
          best = Dense{n, 0, p.Q, Values(n, 0), {}, {}}.at(trial);
          least = trial;
        }
        return;
      }
      for (int32_t v = 0; v <= left; ++v) trial[at] = v, all_points(at + 1, left - v);
    };
    all_points(0, binary ? 1 : total);
    EXPECT_NEAR(value, best, 1e-9) << seed;
    for (double v : x) {
      EXPECT_NEAR(v, std::round(v), 2.3e-16) << seed;
      sum += v;
    }
    EXPECT_NEAR(sum, binary ? 1 : total, 1e-14);
  }
  // A whole point beside a row is none: (1, 1) breaks x + 2y >= 3.005 by less than OSQP's tolerance.
  for (const double excess : {0.005, 1e-5, 2e-6, 0.0}) {
    Stepwise near(2);
    near.minimise({0, 1}, {0, 1}, {1, 1}, {}, {});
    near.kinds({1, 1});
    near.row({0, 1}, {1, 2}, 3 + excess, 1);
    ASSERT_EQ(near.solve(), 1);
    Values point(2);
    EXPECT_NEAR(near.result(point), excess > 1e-6 * 3 ? 4 : 2, 1e-12) << excess;
    EXPECT_EQ(point, excess > 1e-6 * 3 ? (Values{0, 2}) : (Values{1, 1})) << excess;
  }
  // KEPT row IntProg_bound: with a linear part the values that are compared are not what OSQP minimised. x^2 - 3.2 x is
  // least at 2 in whole numbers; the relaxation of 1/4 x^2 - 3.2 x lies at 6.4, and its children at 6 and 7.
  Stepwise steps(1);
  steps.minimise({0}, {0}, {1}, {0}, {-3.2});
  steps.kinds({1});
  ASSERT_EQ(steps.solve(), 1);
  Values x(1);
  EXPECT_NEAR(steps.result(x), 36 - 19.2, 1e-9);
  EXPECT_EQ(x[0], 6);
}

// The branches of an even sum next to an odd side would go through all pairs.
TEST(QuadraticProgramme, SumsThatIntegersDoNotReach) {
  const auto solve = [](double low, double high) {
    Stepwise steps(2);
    steps.minimise({0, 1}, {0, 1}, {1, 1}, {}, {});
    steps.kinds({1, 1});
    steps.row({0, 1}, {2, -2}, low, low == high ? 2 : 1);
    if (low != high) steps.row({0, 1}, {2, -2}, high, 0);
    const int code = steps.solve();
    Values x(2);
    return code == 1 ? steps.result(x) : -code;
  };
  EXPECT_EQ(solve(1, 1), -8);
  EXPECT_EQ(solve(0.5, 1.5), -8);
  EXPECT_EQ(solve(0.5, 2.5), 1);  // (1, 0)
  // Each row alone has integer points, both meet in (1/2, 1/2) only.
  Stepwise steps(2);
  steps.minimise({0, 1}, {0, 1}, {1, 1}, {}, {});
  steps.kinds({1, 1});
  steps.row({0, 1}, {1, 1}, 1, 2);
  steps.row({0, 1}, {1, -1}, 0, 2);
  EXPECT_EQ(steps.solve(), 8);
}

}  // namespace
