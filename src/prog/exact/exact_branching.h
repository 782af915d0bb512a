// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "prog/exact/revised_simplex.h"
#include "prog/line/problem.h"

namespace LineProg {

/// Branch and bound over the integer variables: depth first, the nearer side first, each node from the basis of its
/// parent by the dual method. Once a point is known, reduced costs fix variables that a better one cannot move.
class ExactBranching {
 public:
  /// `relaxations` holds the optimum of the relaxation, or has found it unbounded.
  ExactBranching(const LineProblem& lineProblem, const BoundedProblem& boundedProblem,
                 RevisedSimplex<double>& relaxations);

  /// False without an integer point; else `careful` holds the best one.
  bool search(RevisedSimplex<long double>& careful);
  /// Whether there is any integer point.
  bool hasPoint();

 private:
  struct Node {
    Basis basis;
    std::vector<double> lower, upper;  ///< by integer variable
  };

  template <class Real>
  void setBounds(RevisedSimplex<Real>& target, const Node& node) const;
  void readBounds(Node& node) const;
  int branching(double& value) const;
  int unfixed(double& value) const;
  bool accept();
  void tighten();
  void explore();

  const BoundedProblem& bounded;
  RevisedSimplex<double>& simplex;
  std::vector<int> whole;  ///< the integer and binary variables
  double step;             ///< by which values of the objective differ, 0 where it is not known
  bool anyPoint = false;   ///< the first point ends the search
  Node best;               ///< fixes each integer variable at its value in the best point; empty while there is none
  double limit;            ///< what a better point stays below
};

}  // namespace LineProg
