// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <numeric>
#include <sstream>

#include "prog/drawn_problem.h"
#include "support/csv.h"
#include "support/numbers.h"

namespace {

struct Reference {
  std::string family;
  int seed, status;
  double optimum;
};

/// A programme built call by call.
struct Builder {
  explicit Builder(std::vector<uint8_t> kinds) {
    lineProg_SetVarCount(solver, kinds.data(), static_cast<int32_t>(kinds.size()));
  }
  ~Builder() { api_FreeHandle(solver); }
  Builder(const Builder&) = delete;

  Builder& maximise(std::vector<int32_t> at, std::vector<double> coefs) {
    lineProg_SetMaxExpress(solver, at.data(), coefs.data(), static_cast<int32_t>(at.size()));
    return *this;
  }
  Builder& row(std::vector<int32_t> at, std::vector<double> coefs, uint8_t relation, double rhs) {
    lineProg_AddConstraint(solver, at.data(), coefs.data(), static_cast<int32_t>(at.size()), relation, rhs);
    return *this;
  }
  Builder& exact(bool flag = true) {
    lineProg_setExact(solver, flag);
    return *this;
  }
  int solve() { return lineProg_Solve(solver); }
  double value() { return lineProg_GetMaxValue(solver); }
  std::vector<double> x(std::size_t n) {
    std::vector<double> out(n, -7);
    lineProg_GetVar(solver, out.data());
    return out;
  }

  LineProgramme* solver = lineProg_CreateSolver();
};

using Values = std::vector<double>;

bool idleGain(const Problem& problem) {
  for (std::size_t j = 0; j < problem.c.size(); ++j) {
    const bool stands =
        std::any_of(problem.rows.begin(), problem.rows.end(), [j](const Row& row) { return row.coefs[j] != 0; });
    if (problem.c[j] > 0 && problem.kinds[j] != 2 && !stands) return true;
  }
  return false;
}

TEST(LineProgramme, AgreesWithHighs) {
  std::map<std::string, int> wrong, lower, count;
  for (const auto& cells : readCsv("prog/line_programmes.csv")) {
    const std::string& family = cells[0];
    const Problem problem = drawnProblem(family, std::stoi(cells[1]));
    // A variable in no row that would be worth having fails before the simplex, where HiGHS says unbounded.
    const int status = idleGain(problem) ? 0 : std::stoi(cells[2]);
    const double optimum = std::stod(cells[3]), tolerance = 1e-9 * std::max(1.0, std::abs(optimum));
    const Answer answer = solved(problem);
    ++count[family];
    EXPECT_EQ(answer.status, status) << family << " " << cells[1];
    const Answer exact = solved(problem, true);
    EXPECT_EQ(exact.status, std::stoi(cells[2])) << family << " " << cells[1];
    if (exact.status == 1) {
      EXPECT_NEAR(exact.value, optimum, tolerance) << family << " " << cells[1];
      EXPECT_LE(violation(problem, exact.x), 1e-9) << family << " " << cells[1];
    }
    if (answer.status != 1 || status != 1) continue;
    EXPECT_LE(violation(problem, answer.x), 1e-9) << family << " " << cells[1];
    EXPECT_LE(answer.value, optimum + tolerance) << family << " " << cells[1];
    for (std::size_t j = 0; j < answer.x.size(); ++j) {
      if (problem.kinds[j] != 0) {
        EXPECT_EQ(answer.x[j], std::round(answer.x[j])) << family << " " << cells[1];
      }
    }
    // KEPT row Bound_rounded: this problem's best point, 79, is lost.
    if (family == "integer" && cells[1] == "291") {
      EXPECT_EQ(optimum, 79);
      EXPECT_NEAR(answer.value, 78, 1e-9);
    }
    if (answer.value < optimum - tolerance) ++lower[family];
  }
  for (const char* family : {"real", "degenerate", "equality"}) EXPECT_EQ(lower[family], 0) << family;
  // The bound of a branch is the value of its rounded point: now and then the best point is lost with it.
  for (const char* family : {"integer", "binary"}) {
    EXPECT_LE(lower[family], count[family] / 50) << family;
    std::cout << family << ": " << lower[family] << " of " << count[family] << " below the optimum\n";
  }
}

TEST(LineProgramme, NetlibProblems) {
  for (const auto& cells : readCsv("prog/netlib.csv")) {
    std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/prog/netlib/" + cells[0] + ".mps");
    std::map<std::string, int32_t> columns;
    std::map<std::string, std::map<int32_t, double>> rows;
    std::map<std::string, double> rhs;
    std::vector<std::pair<char, std::string>> kinds;
    std::string objective, section;
    for (std::string line; std::getline(file, line);) {
      std::istringstream words(line);
      std::string first, name, value;
      if (line.empty() || line[0] == '*' || !(words >> first)) continue;
      if (line[0] != ' ') {
        section = first;
      } else if (section == "ROWS") {
        words >> name;
        if (first == "N")
          objective = name;
        else
          kinds.push_back({first[0], name});
      } else {
        while (words >> name >> value) {
          if (section == "RHS")
            rhs[name] = std::stod(value);
          else
            rows[name][columns.try_emplace(first, static_cast<int32_t>(columns.size())).first->second] =
                std::stod(value);
        }
      }
    }
    Builder problem(std::vector<uint8_t>(columns.size(), 0));
    const auto terms = [](const std::map<int32_t, double>& row, double sign) {
      std::pair<std::vector<int32_t>, Values> split;
      for (const auto& [at, coef] : row) split.first.push_back(at), split.second.push_back(sign * coef);
      return split;
    };
    const auto [at, coefs] = terms(rows[objective], -1);
    problem.maximise(at, coefs);
    for (const auto& [kind, name] : kinds) {
      const auto [places, values] = terms(rows[name], 1);
      problem.row(places, values, kind == 'L' ? 0 : kind == 'G' ? 1 : 2, rhs[name]);
    }
    const double optimum = std::stod(cells[1]);
    EXPECT_EQ(problem.solve(), 1) << cells[0];
    // One runs into the cap on the pivots: the point in hand is feasible, not the best.
    const bool capped = cells[0] == "e226";
    EXPECT_GE(-problem.value(), optimum - 1e-9 * std::abs(optimum)) << cells[0];
    EXPECT_LE(-problem.value(), optimum + (capped ? 0.3 : 1e-9) * std::abs(optimum)) << cells[0];
    for (int more = 0; capped && more < 5; ++more) EXPECT_EQ(problem.solve(), 1) << cells[0];  // goes on from there
    EXPECT_NEAR(-problem.value(), optimum, 1e-9 * std::abs(optimum)) << cells[0];
    problem.exact();
    EXPECT_EQ(problem.solve(), 1) << cells[0];
    EXPECT_NEAR(-problem.value(), optimum, 1e-12 * std::abs(optimum)) << cells[0];
  }
}

TEST(LineProgramme, StepByStep) {
  Builder problem({0, 0});
  EXPECT_EQ(problem.value(), -1e300);
  EXPECT_EQ(problem.x(2), (Values{-7, -7}));                        // nothing is written before a solve
  problem.maximise({0, 1}, {1, 1}).maximise({0, 1, 0}, {2, 5, 1});  // the later one counts, terms add up
  problem.row({0, 1}, {1, 2}, 0, 14).row({0, 1}, {3, -1}, 1, 0).row({0, 1}, {1, -1}, 0, 2).row({0}, {1e-16}, 1, 9);
  EXPECT_EQ(problem.solve(), 1);
  EXPECT_NEAR(problem.value(), 38, 1e-12);
  EXPECT_NEAR(problem.x(2)[0], 6, 1e-12);
  EXPECT_NEAR(problem.x(2)[1], 4, 1e-12);
  EXPECT_EQ(problem.solve(), 1);  // goes on from the basis of the first
  EXPECT_NEAR(problem.value(), 38, 1e-12);
  problem.row({0}, {1}, 0, 5);
  EXPECT_EQ(problem.solve(), 1);
  EXPECT_NEAR(problem.value(), 37.5, 1e-12);
  problem.maximise({1}, {1});
  EXPECT_NEAR(problem.value(), 37.5, 1e-12);  // a new objective counts from the next solve
  EXPECT_EQ(problem.solve(), 1);
  EXPECT_NEAR(problem.value(), 6, 1e-12);  // x = 2, y = 6
  const std::vector<uint8_t> kinds{0};
  lineProg_SetVarCount(problem.solver, kinds.data(), 1);
  EXPECT_EQ(problem.value(), -1e300);
  EXPECT_EQ(problem.solve(), 0);  // no objective any more
}

TEST(LineProgramme, VariablesInNoRow) {
  // KEPT rows: Solve_noRow.
  EXPECT_EQ(Builder({0}).maximise({0}, {1}).solve(), 0);
  EXPECT_EQ(Builder({0, 0}).maximise({0, 1}, {1, 1}).row({1}, {1}, 0, 3).solve(), 0);
  Builder kinds({2, 2, 1, 0});
  kinds.maximise({0, 1, 2, 3}, {3, -1, -1, -2});
  EXPECT_EQ(kinds.solve(), 1);
  EXPECT_EQ(kinds.x(4), (Values{1, 0, 0, 0}));
  EXPECT_EQ(kinds.value(), 3);
  Builder part({2, 0});
  part.maximise({0, 1}, {4, 1}).row({1}, {2}, 0, 3);
  EXPECT_EQ(part.solve(), 1);
  EXPECT_EQ(part.x(2), (Values{1, 1.5}));
}

TEST(LineProgramme, RefusedInput) {
  EXPECT_EQ(Builder({}).maximise({0}, {1}).solve(), 0);
  EXPECT_EQ(Builder({0}).row({0}, {1}, 0, 1).solve(), 0);                         // no objective
  EXPECT_EQ(Builder({0}).maximise({0}, {1e-16}).row({0}, {1}, 0, 1).solve(), 0);  // none that counts
  EXPECT_EQ(Builder({3}).maximise({0}, {1}).row({0}, {1}, 0, 1).solve(), 0);
  for (int32_t at : {-1, 1, 2147483647}) {
    EXPECT_EQ(Builder({0}).maximise({at}, {1}).row({0}, {1}, 0, 1).solve(), 0) << at;
    EXPECT_EQ(Builder({0}).maximise({0}, {1}).row({0, at}, {1, 1}, 0, 1).solve(), 0) << at;
  }
  for (double bad : {kNaN, kInf, -kInf}) {
    EXPECT_EQ(Builder({0}).maximise({0}, {bad}).row({0}, {1}, 0, 1).solve(), 0) << bad;
    EXPECT_EQ(Builder({0}).maximise({0}, {1}).row({0}, {bad}, 0, 1).solve(), 0) << bad;
    EXPECT_EQ(Builder({0}).maximise({0}, {1}).row({0}, {1}, 0, bad).solve(), 0) << bad;
  }
  EXPECT_EQ(Builder({0}).maximise({0}, {1}).row({0}, {1}, 3, 1).solve(), 0);
  // Coefficients that add up to more than a double holds.
  EXPECT_EQ(Builder({0}).maximise({0, 0}, {1e308, 1e308}).row({0}, {1}, 0, 1).solve(), 0);
  EXPECT_EQ(Builder({0, 0}).maximise({1}, {1}).row({0, 0, 1}, {-1e308, -1e308, 1}, 0, 1).solve(), 0);
  Builder huge({0, 0});
  huge.maximise({0, 1}, {1e300, 1e300}).row({0, 1}, {1e-10, 1e300}, 0, 1e300).row({0, 1}, {1e300, 1e-10}, 0, 1e300);
  const int status = huge.solve();
  EXPECT_TRUE(status == 1 ? std::isfinite(huge.x(2)[0]) && std::isfinite(huge.x(2)[1]) : huge.value() == -1e300);
}

TEST(LineProgramme, UnboundedAndInfeasible) {
  EXPECT_EQ(Builder({0, 0}).maximise({0, 1}, {1, 0.5}).row({0, 1}, {1, -1}, 0, 1).solve(), 2);
  EXPECT_EQ(Builder({0}).maximise({0}, {1}).row({0}, {1}, 1, 2).row({0}, {1}, 0, 1).solve(), 0);
  EXPECT_EQ(Builder({0}).maximise({0}, {-1}).row({0}, {1}, 2, -1).solve(), 0);  // variables are not negative
  Builder again({0});                                                           // it stays infeasible
  again.maximise({0}, {1}).row({0}, {1}, 1, 2).row({0}, {1}, 0, 1);
  EXPECT_EQ(again.solve(), 0);
  EXPECT_EQ(again.solve(), 0);
  EXPECT_EQ(again.row({0}, {1}, 0, 7).solve(), 0);
  EXPECT_EQ(Builder({1}).maximise({0}, {1}).row({0}, {2}, 2, 3).solve(), 0);  // no whole number
  EXPECT_EQ(Builder({2}).maximise({0}, {1}).row({0}, {1}, 1, 2).solve(), 0);
}

TEST(LineProgramme, WholeNumbers) {
  Builder problem({1, 1});
  problem.maximise({0, 1}, {5, 4}).row({0, 1}, {6, 4}, 0, 24).row({0, 1}, {1, 2}, 0, 6);
  EXPECT_EQ(problem.solve(), 1);
  EXPECT_EQ(problem.value(), 20);  // the relaxation has 21 at (3, 1.5)
  EXPECT_EQ(problem.x(2), (Values{4, 0}));

  // KEPT row Bounds_integer: branching knows values up to 900000000, not 90000000.
  for (const auto& [rhs, status] : {std::pair{90000000.5, 1}, {899999999.5, 1}, {900000000.5, 0}}) {
    Builder wide({1});
    wide.maximise({0}, {1}).row({0}, {1}, 0, rhs);
    EXPECT_EQ(wide.solve(), status) << rhs;
    EXPECT_EQ(wide.value(), status == 1 ? std::floor(rhs) : -1e300);
  }
}

TEST(LineProgramme, ManyBranches) {
  // 2x - 2y = 1 has no whole solution; every value of x up to 20000 is tried, from below or from above, without a deep
  // stack.
  for (double objective : {-1, 1}) {
    Builder none({1, 1});
    none.maximise({0}, {objective}).row({0, 1}, {2, -2}, 2, 1).row({0}, {1}, 0, 20000);
    EXPECT_EQ(none.solve(), 0);
  }
  // Bounds that tighten again and again on the same variables: the fewest coins of 7, 11, 13 for 998.
  Builder sum({1, 1, 1});
  sum.maximise({0, 1, 2}, {-1, -1, -1}).row({0, 1, 2}, {7, 11, 13}, 2, 998);
  EXPECT_EQ(sum.solve(), 1);
  int least = 1000;
  for (int z = 0; 13 * z <= 998; ++z)
    for (int y = 0; 13 * z + 11 * y <= 998; ++y)
      if ((998 - 13 * z - 11 * y) % 7 == 0) least = std::min(least, z + y + (998 - 13 * z - 11 * y) / 7);
  EXPECT_EQ(sum.value(), -least);
}

TEST(LineProgramme, NoiseIsNoPivot) {
  // Degenerate equalities: sums that should vanish leave 1e-15 in rows of value 0, and a pivot there ruins the tableau.
  // The optimum is that of HiGHS.
  const Values c{7, -4, -2, 5, 5, 2, 8, 9, -4, 9, 5, 7}, b{9, -9, 0, 20, 6, 29, 42, 18, 56, 51, 21};
  const std::vector<uint8_t> relation{2, 0, 0, 2, 0, 2, 0, 2, 0, 2, 2};
  const std::vector<Values> A{{0, -5, 0, 1, 0, 0, -3, 4, -3, 0, 9, 0}, {-5, 0, -4, 0, 0, 9, 0, 0, -4, 2, 0, 0},
                              {-4, 7, 1, 0, 6, 0, 3, -4, -2, 0, 1, 4}, {0, 0, 0, 0, -5, 0, 2, 4, 0, 0, 0, 7},
                              {0, 0, 0, 5, -3, 0, 0, 1, 0, 0, 2, 0},   {1, 0, 2, 0, 6, 0, 0, 1, 2, 0, -4, 9},
                              {3, 7, 9, 0, -4, 0, 4, -1, 0, 0, 0, -3}, {0, 0, -1, 1, 3, 0, -4, -1, 8, 7, -3, -2},
                              {0, -2, 8, 0, 0, 0, 5, -4, 7, 8, 7, 5},  {0, 6, 4, 4, -1, 6, 0, 1, 3, 4, -3, 0},
                              {0, 9, 0, 2, 5, 0, 0, 0, 7, -1, 0, 9}};
  Builder problem(std::vector<uint8_t>(c.size(), 0));
  std::vector<int32_t> at(c.size());
  std::iota(at.begin(), at.end(), 0);
  problem.maximise(at, c);
  for (std::size_t r = 0; r < b.size(); ++r) problem.row(at, A[r], relation[r], b[r]);
  EXPECT_EQ(problem.solve(), 1);
  EXPECT_NEAR(problem.value(), 242.47834527812336, 1e-7);
}

TEST(LineProgramme, CapOnPivots) {
  // Klee and Minty's cube in d dimensions lets the rule of the greatest coefficient visit all 2^d corners. KEPT row
  // PhaseTwo_cap: after 2d pivots the corner in hand counts as the optimum.
  const int d = 6;
  Builder cube(std::vector<uint8_t>(d, 0));
  std::vector<int32_t> at;
  Values objective;
  for (int i = 0; i < d; ++i) {
    at.push_back(i);
    objective.push_back(std::pow(2, d - 1 - i));
  }
  cube.maximise(at, objective);
  for (int i = 0; i < d; ++i) {
    Values row;
    for (int j = 0; j < i; ++j) row.push_back(std::pow(2, i - j + 1));
    row.push_back(1);
    cube.row(std::vector<int32_t>(at.begin(), at.begin() + i + 1), row, 0, std::pow(5, i + 1));
  }
  EXPECT_EQ(cube.solve(), 1);
  EXPECT_LT(cube.value(), std::pow(5, d));
  EXPECT_EQ(cube.exact().solve(), 1);
  EXPECT_NEAR(cube.value(), std::pow(5, d), 1e-6);
  EXPECT_EQ(cube.exact(false).solve(), 1);  // from the start again
  EXPECT_LT(cube.value(), std::pow(5, d));
  // Going on from there reaches it.
  for (int k = 0; k < 10; ++k) cube.solve();
  EXPECT_NEAR(cube.value(), std::pow(5, d), 1e-6);
}

TEST(LineProgramme, ExactRun) {
  // A variable in no row, alone and beside rows that contradict each other.
  EXPECT_EQ(Builder({0}).exact().maximise({0}, {1}).solve(), 2);
  EXPECT_EQ(Builder({0, 0}).exact().maximise({0, 1}, {1, 1}).row({1}, {1}, 0, 3).solve(), 2);
  EXPECT_EQ(Builder({0, 0}).exact().maximise({0}, {1}).row({1}, {1}, 0, 3).row({1}, {1}, 1, 4).solve(), 0);
  Builder kinds({2, 2, 1, 0});
  EXPECT_EQ(kinds.exact().maximise({0, 1, 2, 3}, {3, -1, -1, -2}).solve(), 1);
  EXPECT_EQ(kinds.x(4), (Values{1, 0, 0, 0}));
  // An unbounded relaxation, with an integer point and without one: 2x - 2y = 1, and -5z + 8x - 40y = 30 with z 0 or 1.
  EXPECT_EQ(Builder({1, 1}).exact().maximise({0}, {1}).row({0, 1}, {2, -2}, 2, 4).solve(), 2);
  EXPECT_EQ(Builder({1, 1}).exact().maximise({0}, {1}).row({0, 1}, {2, -2}, 2, 1).solve(), 0);
  EXPECT_EQ(Builder({1, 1}).exact().maximise({0}, {1}).row({0, 1}, {0.2, -0.2}, 2, 0.1).solve(), 0);
  EXPECT_EQ(Builder({1, 1, 2}).exact().maximise({0}, {1}).row({0, 1, 2}, {8, -40, -5}, 2, 30).solve(), 0);
  EXPECT_EQ(Builder({1, 1, 2}).exact().maximise({0}, {1}).row({0, 1, 2}, {8, -40, -5}, 2, 27).solve(), 2);
  EXPECT_EQ(
      Builder({1, 1}).exact().maximise({0}, {1}).row({0, 1}, {2, -2}, 1, 0.5).row({0, 1}, {2, -2}, 0, 1.5).solve(), 0);
  // The test of an unbounded problem is relative to the terms, which are 3e9 here.
  for (const bool exact : {true, false}) {
    Builder large({0, 0, 0, 0});
    large.exact(exact).maximise({2}, {1}).row({0, 1}, {0.3, 0.7}, 2, 1e10 / 3).row({0, 1}, {0.1, -0.2}, 2, 1e10 / 70);
    EXPECT_EQ(large.row({2, 3}, {1, -1}, 0, 5).solve(), exact ? 2 : 0);
  }
  // Coefficients of 1e-3 to 1e4 in doubles: a pivot on what is left of 0 loses 177 for -3. The optimum is HiGHS's.
  Builder mixed({2, 0, 1, 2, 0, 0});
  mixed.exact().maximise({0, 1, 2, 3, 4}, {3, -3, 9, -3, -5});
  mixed.row({0, 1, 2, 4, 5}, {-3000, -1000, 9000, -1000, 4}, 1, 7).row({2, 3}, {-3, 6000}, 1, 12);
  mixed.row({0, 1, 2}, {9000, 7, -2000}, 0, 2).row({1, 5}, {1000, 4}, 0, 25);
  mixed.row({0, 1, 2, 3, 4, 5}, {1, 1, 1, 1, 1, 1}, 0, 21);
  EXPECT_EQ(mixed.solve(), 1);
  EXPECT_NEAR(mixed.value(), 177, 1e-9);
  // A bound that x1 just misses 20 by, at a slope of 1e-8: doubles within their tolerance would take x1 = 20 beside
  // x0 = 1.2e-4, worth 102.4.
  Builder slope({0, 1});
  slope.exact().maximise({0, 1}, {2e4, 5}).row({0}, {1}, 0, 1.2e-4).row({0, 1}, {1e-4, 1}, 0, 20);
  EXPECT_EQ(slope.solve(), 1);
  EXPECT_NEAR(slope.value(), 100, 1e-9);
}

// The optimum of a sparse programme is proved by duality: with the multipliers y of the dual programme, which is solved
// as one of its own, b.y = c.x. Its basis fills, is exchanged more than a hundred times, and is factored again on the
// way.
TEST(LineProgramme, SparseAgainstItsDual) {
  const int32_t m = 150;
  for (const double spread : {1.0, 1e5}) {  // the rows and columns of the second are badly scaled
    Draw draw(7);
    std::vector<std::map<int32_t, double>> rows(m), columns(m);
    Values b, c, rowScale, columnScale;
    for (int32_t i = 0; i < m; ++i) {
      rowScale.push_back(std::pow(spread, 2 * draw.unit() - 1));
      columnScale.push_back(std::pow(spread, 2 * draw.unit() - 1));
    }
    for (int32_t i = 0; i < m; ++i) {
      for (int k = 0; k < 5; ++k) rows[i][draw.below(m)] = draw.unit() - 0.2;
      rows[i][i] = 1 + draw.unit();
      for (auto& [j, a] : rows[i]) columns[j][i] = a *= rowScale[i] * columnScale[j];
      b.push_back(rowScale[i] * (0.5 + draw.unit()));
      c.push_back(columnScale[i] * (0.5 + draw.unit()));
    }
    const auto optimum = [&](const auto& matrix, const Values& right, Values gain, int sign) {
      Builder problem(std::vector<uint8_t>(m, 0));
      std::vector<int32_t> at(m);
      std::iota(at.begin(), at.end(), 0);
      for (double& g : gain) g *= sign;
      problem.exact().maximise(at, gain);
      for (int32_t i = 0; i < m; ++i) {
        std::vector<int32_t> places;
        Values coefs;
        for (const auto& [j, a] : matrix[i]) places.push_back(j), coefs.push_back(a);
        problem.row(places, coefs, sign > 0 ? 0 : 1, right[i]);
      }
      EXPECT_EQ(problem.solve(), 1);
      return sign * problem.value();
    };
    const double primal = optimum(rows, b, c, 1);
    EXPECT_NEAR(optimum(columns, c, b, -1), primal, 1e-11 * primal) << spread;
  }
}

TEST(LineProgramme, DenseForm) {
  const Values c{3, 5}, A{1, 0, 0, 2, 3, 2}, b{4, 12, 18};
  Values x{-7, -7};
  EXPECT_NEAR(lineProg_solve2(c.data(), A.data(), b.data(), nullptr, nullptr, 2, 3, 0, x.data()), 36, 1e-12);
  EXPECT_NEAR(x[0], 2, 1e-12);
  EXPECT_NEAR(x[1], 6, 1e-12);
  const Values equal{1, 1}, five{5};
  EXPECT_NEAR(lineProg_solve2(c.data(), A.data(), b.data(), equal.data(), five.data(), 2, 3, 1, x.data()), 25, 1e-12);
  EXPECT_NEAR(x[0], 0, 1e-12);
  const Values tight{-1};
  x = {-7, -7};
  EXPECT_TRUE(std::isnan(lineProg_solve2(c.data(), A.data(), b.data(), equal.data(), tight.data(), 2, 3, 1, x.data())));
  EXPECT_EQ(x, (Values{-7, -7}));
  EXPECT_TRUE(std::isnan(lineProg_solve2(c.data(), A.data(), b.data(), nullptr, nullptr, 0, 3, 0, x.data())));
  EXPECT_TRUE(std::isnan(lineProg_solve2(nullptr, nullptr, nullptr, nullptr, nullptr, 2, 0, 0, x.data())));

  // KEPT row Solve2_leastSquares: no inequality that counts, or no objective. x - y = 3, x + y = 1 has a negative y.
  const Values equations{1, -1, 1, 1}, right{3, 1}, none{1e-16, 0};
  for (const auto& [objective, matrix] : {std::pair<const double*, const double*>{c.data(), nullptr},
                                          {c.data(), none.data()},
                                          {nullptr, A.data()},
                                          {none.data(), A.data()}}) {
    const double value =
        lineProg_solve2(objective, matrix, b.data(), equations.data(), right.data(), 2, 1, 2, x.data());
    EXPECT_NEAR(x[0], 2, 1e-14);
    EXPECT_NEAR(x[1], -1, 1e-14);
    EXPECT_NEAR(value, objective == c.data() ? 1 : 0, 1e-13);
  }
}

TEST(LineProgramme, TightenedBounds) {
  const auto tighten = [](Values upper, Values lower, Values coefs, std::vector<int32_t> at, std::vector<uint8_t> kinds,
                          double rhs) {
    const int changed = lineProg_ResetMaxMin(upper.data(), lower.data(), coefs.data(), at.data(), kinds.data(), rhs,
                                             static_cast<int32_t>(at.size()));
    return std::tuple{changed, upper, lower};
  };
  // 2x + 3y <= 12 with x >= 0, y >= 1: x <= 4.5, y <= 4.
  EXPECT_EQ(tighten({1e300, 1e300}, {0, 1}, {2, 3}, {0, 1}, {0, 0}, 12), (std::tuple{1, Values{4.5, 4}, Values{0, 1}}));
  EXPECT_EQ(tighten({1e300, 1e300}, {0, 1}, {2, 3}, {1, 0}, {0, 1}, 12),
            (std::tuple{1, Values{10.0 / 3, 6}, Values{0, 1}}));
  // Whole numbers: down for upper bounds, up for lower ones; 0 or 1 for binary variables.
  EXPECT_EQ(tighten({9, 9}, {0, 1}, {2, 3}, {0, 1}, {1, 1}, 12), (std::tuple{1, Values{4, 4}, Values{0, 1}}));
  EXPECT_EQ(tighten({9}, {0}, {-2}, {0}, {1}, -5), (std::tuple{1, Values{9}, Values{3}}));
  EXPECT_EQ(tighten({1}, {0}, {-2}, {0}, {2}, -1), (std::tuple{1, Values{1}, Values{1}}));
  EXPECT_EQ(tighten({1}, {0}, {2}, {0}, {2}, 1), (std::tuple{1, Values{0}, Values{0}}));
  EXPECT_EQ(tighten({9}, {0}, {3}, {0}, {1}, 3 * (4 + 1e-15)), (std::tuple{1, Values{4}, Values{0}}));
  // Nothing changes: a gain of up to 0.001, no limit on the others, no coefficient.
  EXPECT_EQ(std::get<0>(tighten({4.001, 0}, {0, 0}, {1, 1}, {0, 1}, {0, 0}, 4)), 0);
  EXPECT_EQ(std::get<0>(tighten({1e300, 1e300}, {-1e300, -1e300}, {1, 1}, {0, 1}, {0, 0}, 4)), 0);
  EXPECT_EQ(std::get<0>(tighten({5}, {0}, {1e-17}, {0}, {0}, 1e-20)), 0);
  EXPECT_EQ(std::get<0>(tighten({5}, {0}, {1}, {-1}, {0}, 1)), 0);
  for (int32_t n : {0, -1, -2147483647 - 1})
    EXPECT_EQ(lineProg_ResetMaxMin(nullptr, nullptr, nullptr, nullptr, nullptr, 1, n), 0) << n;
  // NaN, here or as 0 times infinity, tells nothing of a variable.
  EXPECT_EQ(tighten({1}, {0}, {-1}, {0}, {2}, kNaN), (std::tuple{0, Values{1}, Values{0}}));
  EXPECT_EQ(tighten({1, kInf}, {0, 0}, {1, 0}, {0, 1}, {2, 2}, 0.5), (std::tuple{0, Values{1, kInf}, Values{0, 0}}));
  // x <= y/2 and y <= x/2 as one sum each would creep for ever: one constraint's sweeps settle.
  EXPECT_EQ(tighten({8, 8}, {0, 0}, {1, -0.5}, {0, 1}, {0, 0}, 0), (std::tuple{1, Values{4, 8}, Values{0, 0}}));
}

}  // namespace
