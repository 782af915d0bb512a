// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <span>
#include <vector>

#include "frame/base_data.h"
#include "prog/line/base_var.h"
#include "prog/line/line_prog_dense.h"
#include "prog/quad/osqp_solve.h"
#include "prog/quad/quad_express.h"

namespace QuadProg {

/// Minimises a quadratic expression over non-negative real, integer and 0-1 variables under linear constraints: OSQP
/// for the relaxations, branch and bound for the integers, the simplex for an expression without quadratic term.
class QuadProgSolver final : public BaseData {
 public:
  QuadProgSolver() { typeCode = 61; }

  /// Starts afresh with n real variables.
  void initTempVar(std::size_t n);
  void setVarKind(std::span<const uint8_t> kinds);

  /// Takes over an objective, to be minimised.
  void setObjective(std::shared_ptr<QuadExpress> express);
  /// sum of coefs <relation> rhs; coefficients on one number add up.
  void addConstraint(std::span<const int32_t> indices, std::span<const double> coefs, double rhs, uint8_t relation);

  ResType_E solve();

  std::vector<double> values() const;
  /// The objective at the variables' values; NaN without one.
  double objectiveValue() const;

  /// The expression that a host names to be maximised, with its signs turned. Null when a number is out of range.
  struct Terms {
    std::span<const int32_t> i, j;
    std::span<const double> quad;
    std::span<const int32_t> k;
    std::span<const double> linear;
    double constant;
  };
  std::shared_ptr<QuadExpress> turned(const Terms& terms) const;

 private:
  struct WorkData_t;

  bool inRange(int32_t index) const { return index >= 0 && static_cast<std::size_t>(index) < tempVars.size(); }
  void collect();
  ResType_E solveLinear();
  BoxedProblem boxed() const;
  /// Whether a relaxation's point needs no branching.
  bool acceptable(const BoxedProblem& problem, std::span<const double> x) const;
  bool tightenWholeRows(BoxedProblem& problem) const;
  bool keepsRows(const BoxedProblem& problem, std::span<const double> x) const;
  double evaluate(std::span<const double> x) const;
  ResType_E solveIntProg(BoxedProblem& problem, std::vector<double>& x) const;
  std::vector<std::size_t>::const_iterator branchAt(const BoxedProblem& problem, const WorkData_t& work,
                                                    std::span<const double> x, bool whole) const;
  void visit(BoxedProblem& problem, WorkData_t& work, std::vector<double> x) const;

  std::shared_ptr<QuadExpress> objective;
  std::vector<EquVar*> equalConstraints, upperConstraints, lowerConstraints;
  std::set<int32_t> variables;  ///< those that take part
  std::vector<std::shared_ptr<BaseVar>> tempVars;
  std::vector<std::shared_ptr<EquVar>> constraints;
  std::vector<int32_t> order, place;  ///< variable of each unknown; unknown of each variable
  bool spoilt = false;
};

/// The dense problem of least x'Qx + c.x; NaN on failure. Without a quadratic term it goes to the simplex.
double solveDense(std::span<const double> Q, const LineProg::DenseProblem& problem, std::span<double> x);

}  // namespace QuadProg
