// SPDX-License-Identifier: Apache-2.0
#include "prog/quad/quad_prog_solver.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "frame/numbers.h"
#include "prog/line/line_prog_solver.h"

namespace QuadProg {

namespace {

constexpr double kSmall = 1e-15;
constexpr double kUnbounded = 1e30;  // OSQP's infinity
constexpr double kIntegerUpper = 900000000;

}  // namespace

void QuadProgSolver::initTempVar(std::size_t n) {
  *this = QuadProgSolver();
  for (std::size_t i = 0; i < n; ++i) {
    tempVars.push_back(std::make_shared<BaseVar>());
    tempVars.back()->index = static_cast<int32_t>(i);
  }
}

void QuadProgSolver::setVarKind(std::span<const uint8_t> kinds) {
  for (std::size_t i = 0; i < std::min(kinds.size(), tempVars.size()); ++i) {
    tempVars[i]->varKind = kinds[i];
    if (kinds[i] > kBinary) spoilt = true;
  }
}

void QuadProgSolver::setObjective(std::shared_ptr<QuadExpress> express) { objective = std::move(express); }

std::shared_ptr<QuadExpress> QuadProgSolver::turned(const Terms& terms) const {
  auto express = std::make_shared<QuadExpress>();
  express->constTerm = -terms.constant;
  const std::size_t nq = std::min({terms.i.size(), terms.j.size(), terms.quad.size()});
  for (std::size_t t = 0; t < nq; ++t) {
    if (std::abs(terms.quad[t]) < kEpsilon) continue;
    if (!inRange(terms.i[t]) || !inRange(terms.j[t])) return nullptr;
    express->addQuad(terms.i[t], terms.j[t], -terms.quad[t]);
  }
  for (std::size_t t = 0; t < std::min(terms.k.size(), terms.linear.size()); ++t) {
    if (std::abs(terms.linear[t]) < kEpsilon) continue;
    if (!inRange(terms.k[t])) return nullptr;
    express->linearTerms.add(terms.k[t], -terms.linear[t]);
  }
  return express;
}

void QuadProgSolver::addConstraint(std::span<const int32_t> indices, std::span<const double> coefs, double rhs,
                                   uint8_t relation) {
  TermMap<int32_t> terms;
  if (!std::isfinite(rhs) || relation > 4) spoilt = true;
  for (std::size_t k = 0; k < std::min(indices.size(), coefs.size()); ++k) {
    if (!inRange(indices[k]) || !std::isfinite(coefs[k])) spoilt = true;
    terms.add(indices[k], coefs[k]);
  }
  for (const auto& term : terms.sorted())
    if (!std::isfinite(term.second)) spoilt = true;  // a sum may leave the range of doubles, too
  if (spoilt) return;
  auto row = std::make_shared<EquVar>();
  row->coefs = terms.sorted();
  std::erase_if(row->coefs, [](const auto& term) { return term.second == 0; });
  row->constCoef = rhs;
  row->relation = relation == kEqual ? kEqual : relation == 1 || relation == 4 ? kAtLeast : kAtMost;
  auto& list = row->relation == kEqual    ? equalConstraints
               : row->relation == kAtMost ? upperConstraints
                                          : lowerConstraints;
  list.push_back(row.get());
  constraints.push_back(std::move(row));
}

std::vector<double> QuadProgSolver::values() const {
  std::vector<double> all;
  for (const auto& var : tempVars) all.push_back(var->value);
  return all;
}

double QuadProgSolver::objectiveValue() const { return objective ? objective->evaluate(values()) : kNaN; }

// The variables that take part, numbered 0.. in the order of tempVars.
void QuadProgSolver::collect() {
  variables.clear();
  std::vector<uint8_t> seen(tempVars.size(), 0);
  for (const auto& term : objective->linearTerms.sorted()) seen[term.first] = 1;
  for (const auto& term : objective->quadTerms.sorted()) seen[term.first.first] = seen[term.first.second] = 1;
  for (const auto& row : constraints)
    for (const auto& term : row->coefs) seen[term.first] = 1;
  order.clear();
  place.assign(tempVars.size(), -1);
  for (std::size_t i = 0; i < tempVars.size(); ++i) {
    if (!seen[i]) continue;
    variables.insert(variables.end(), static_cast<int32_t>(i));
    place[i] = static_cast<int32_t>(order.size());
    order.push_back(static_cast<int32_t>(i));
  }
  objective->simplify(kSmall);
}

ResType_E QuadProgSolver::solve() {
  if (!objective) return kNoObjective;
  if (spoilt || !std::isfinite(objective->constTerm)) return kSetupFailed;
  for (const auto& term : objective->linearTerms.sorted())
    if (!std::isfinite(term.second)) return kSetupFailed;
  for (const auto& term : objective->quadTerms.sorted())
    if (!std::isfinite(term.second)) return kSetupFailed;
  collect();
  if (objective->quadTerms.sorted().empty()) return solveLinear();

  BoxedProblem problem = boxed();
  std::vector<double> x;
  ResType_E result = solveByOsqp(problem, x);
  if (result == kSolved && !acceptable(problem, x)) result = solveIntProg(problem, x);
  if (result == kSolved)
    for (std::size_t p = 0; p < order.size(); ++p) tempVars[order[p]]->value = x[p];
  return result;
}

ResType_E QuadProgSolver::solveLinear() {
  std::vector<uint8_t> kinds;
  for (int32_t i : order) kinds.push_back(tempVars[i]->varKind);
  LineProg::LineProgSolver solver;
  solver.setVarCount(kinds);
  std::vector<int32_t> at;
  std::vector<double> coefs;
  const auto fill = [&](const std::vector<std::pair<int32_t, double>>& terms) {
    at.clear();
    coefs.clear();
    for (const auto& [i, coefficient] : terms) {
      at.push_back(place[i]);
      coefs.push_back(coefficient);
    }
  };
  for (const auto* list : {&upperConstraints, &equalConstraints, &lowerConstraints}) {
    for (const EquVar* row : *list) {
      fill(row->coefs);
      solver.addConstraint(at, coefs, row->relation, row->constCoef);
    }
  }
  // The simplex seeks a maximum.
  objective->scale(-1);
  fill(objective->linearTerms.sorted());
  solver.setMaxExpress(at, coefs);
  const bool solved = solver.solve();
  objective->scale(-1);
  if (!solved) return kSolveFailed;
  for (std::size_t p = 0; p < order.size(); ++p) tempVars[order[p]]->value = solver.values()[p];
  return kSolved;
}

BoxedProblem QuadProgSolver::boxed() const {
  const std::size_t n = order.size(), m = constraints.size();
  BoxedProblem problem;
  // KEPT: 1/2 x'Px with these coefficients counts a fourth of the quadratic part; expected: factors 1 and 2, the
  // expression itself (kept.csv: Osqp_factors)
  std::vector<std::vector<std::pair<int64_t, double>>> columns(n);
  for (const auto& [pair, coefficient] : objective->quadTerms.sorted()) {
    const int64_t low = place[pair.first], high = place[pair.second];
    columns[high].push_back({low, (low == high ? 0.5 : 0.25) * coefficient});
  }
  const auto fill = [n](Sparse::CSCSparse& matrix, std::size_t rows, auto& entries) {
    matrix.rows = static_cast<int64_t>(rows);
    matrix.cols = static_cast<int64_t>(n);
    for (std::size_t j = 0; j < n; ++j)
      for (const auto& [row, value] : entries[j]) matrix.set(value, row, static_cast<int64_t>(j));
    matrix.finalize();
  };
  fill(problem.P, n, columns);
  problem.q.assign(n, 0.0);
  for (const auto& [i, coefficient] : objective->linearTerms.sorted()) problem.q[place[i]] = coefficient;

  // Rows: equal, upper, lower constraints, then one a variable for its bounds.
  for (auto& column : columns) column.clear();
  int64_t row = 0;
  for (const auto* list : {&equalConstraints, &upperConstraints, &lowerConstraints}) {
    for (const EquVar* constraint : *list) {
      for (const auto& [i, coefficient] : constraint->coefs) columns[place[i]].push_back({row, coefficient});
      problem.l.push_back(constraint->relation == kAtMost ? -kUnbounded : constraint->constCoef);
      problem.u.push_back(constraint->relation == kAtLeast ? kUnbounded : constraint->constCoef);
      ++row;
    }
  }
  for (std::size_t p = 0; p < n; ++p) {
    columns[p].push_back({row++, 1.0});
    const uint8_t kind = tempVars[order[p]]->varKind;
    problem.l.push_back(0);
    problem.u.push_back(kind == kBinary ? 1 : kind == kInteger ? kIntegerUpper : kUnbounded);
  }
  fill(problem.A, m + n, columns);
  return problem;
}

bool QuadProgSolver::acceptable(const BoxedProblem& problem, std::span<const double> x) const {
  bool whole = false;
  for (std::size_t p = 0; p < order.size(); ++p) {
    const uint8_t kind = tempVars[order[p]]->varKind;
    if (kind == kBinary && std::abs(x[p]) > kEpsilon && std::abs(x[p] - 1) > kEpsilon) return false;
    if (kind == kInteger && std::abs(x[p] - std::round(x[p])) > kEpsilon) return false;
    whole = whole || kind != kReal;
  }
  return !whole || keepsRows(problem, x);
}

double QuadProgSolver::evaluate(std::span<const double> x) const {
  std::vector<double> all(tempVars.size(), 0.0);
  for (std::size_t p = 0; p < order.size(); ++p) all[order[p]] = x[p];
  return objective->evaluate(all);
}

double solveDense(std::span<const double> Q, const LineProg::DenseProblem& problem, std::span<double> x) {
  const std::size_t n = problem.n;
  if (LineProg::allSmall(Q)) {
    std::vector<double> negated(problem.c.begin(), problem.c.end());
    for (double& c : negated) c = -c;
    LineProg::DenseProblem turned = problem;
    turned.c = negated;
    return -LineProg::solveDense(turned, x);
  }
  QuadProgSolver solver;
  solver.initTempVar(n);
  auto express = std::make_shared<QuadExpress>();
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = i; j < n; ++j) {
      const double coefficient = i == j ? Q[i * n + j] : Q[i * n + j] + Q[j * n + i];
      if (coefficient != 0) express->addQuad(static_cast<int32_t>(i), static_cast<int32_t>(j), coefficient);
    }
  for (std::size_t i = 0; i < problem.c.size(); ++i) express->linearTerms.add(static_cast<int32_t>(i), problem.c[i]);
  solver.setObjective(std::move(express));
  std::vector<int32_t> at;
  std::vector<double> coefs;
  const auto add = [&](std::span<const double> matrix, std::span<const double> rhs, uint8_t relation) {
    for (std::size_t r = 0; r < rhs.size(); ++r) {
      at.clear();
      coefs.clear();
      for (std::size_t j = 0; j < n; ++j) {
        if (std::abs(matrix[r * n + j]) <= kSmall) continue;
        at.push_back(static_cast<int32_t>(j));
        coefs.push_back(matrix[r * n + j]);
      }
      solver.addConstraint(at, coefs, rhs[r], relation);
    }
  };
  add(problem.A, problem.b, kAtMost);
  add(problem.Aeq, problem.beq, kEqual);
  if (solver.solve() != kSolved) return kNaN;
  const std::vector<double> found = solver.values();
  std::copy_n(found.begin(), x.size(), x.begin());
  return solver.objectiveValue();
}

}  // namespace QuadProg
