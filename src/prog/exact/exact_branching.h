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
  ExactBranching(const LineProblem& lineProblem, const BoundedProblem& boundedProblem,
                 RevisedSimplex<double>& relaxations);

  /// Searches from the basis in hand, which is the optimum of the relaxation; false without an integer point.
  bool search();
  /// Whether there is any integer point.
  bool hasPoint();

  /// The bounds that hold each integer variable at its value in the best point, and a basis of that point.
  void fixBest(RevisedSimplex<long double>& simplex) const;

 private:
  struct Node {
    Basis basis;
    std::vector<double> lower, upper;  ///< by integer variable
  };

  void setBounds(const Node& node);
  void readBounds(Node& node) const;
  int branching(double tolerance, double& value) const;
  bool accept(const Node& node);
  void tighten();
  void explore();

  const LineProblem& problem;
  const BoundedProblem& bounded;
  RevisedSimplex<double>& simplex;
  std::vector<int> whole;  ///< the integer and binary variables
  double step;             ///< by which values of the objective differ, 0 where it is not known
  std::vector<double> best;  ///< values of the integer variables; empty while there is no point
  Basis bestBasis;
  double limit;  ///< what a better point stays below
  bool anyPoint = false;
};

}  // namespace LineProg
