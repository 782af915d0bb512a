// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/base_data.h"
#include "prog/exact/exact_solver.h"
#include "prog/line/problem.h"
#include "prog/line/simplex.h"

namespace LineProg {

/// Maximises a linear expression over non-negative real, integer and 0-1 variables: a primal simplex with the greatest
/// coefficient rule on a condensed tableau, and depth-first branching on copies of it; or, when it is to be exact, by
/// the revised simplex of ExactSolver.
class LineProgSolver final : public BaseData {
 public:
  LineProgSolver() { typeCode = 58; }

  /// Starts afresh with new variables of those kinds.
  void setVarCount(std::span<const uint8_t> kinds);
  void setMaxExpress(std::span<const int32_t> indices, std::span<const double> coefs) {
    problem.setMaxExpress(indices, coefs);
  }
  void addConstraint(std::span<const int32_t> indices, std::span<const double> coefs, uint8_t relation, double rhs) {
    problem.addConstraint(indices, coefs, relation, rhs);
  }
  /// Runs to the true optimum; a change forgets the basis of the last solve.
  void setExact(bool flag);

  bool solve();

  bool isSolved() const { return solved; }
  Status getStatus() const { return status; }
  double maxValue() const;
  /// Of each variable; empty unless solved.
  std::span<const double> values() const {
    return solved ? std::span<const double>(solution) : std::span<const double>();
  }

 private:
  template <class Real>
  bool run(Node<Real>& root) const;
  template <class Real>
  void take(const Node<Real>& root);

  LineProblem problem;
  bool solved = false;
  Status status = Status::failed;
  std::vector<double> solution;  ///< of the last solve
  Node<double> fast;
  Node<long double> careful;
  bool isCareful = false;  ///< the run in doubles has failed, and careful's tableau is the one that counts
  bool isExact = false;
  ExactSolver exact;
};

}  // namespace LineProg
