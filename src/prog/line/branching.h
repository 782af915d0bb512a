// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "prog/line/simplex.h"

namespace LineProg {

/// Branch and bound over the integer variables, depth first on copies of the simplex's state.
template <class Real>
class Branching {
 public:
  explicit Branching(const Simplex<Real>& relaxations) : simplex(relaxations), problem(relaxations.problem) {}

  /// Solves from the root, which keeps the tableau that its relaxation left.
  void run(Node<Real>& root);

 private:
  static constexpr int32_t kNone = -1;

  void addBound(Node<Real>& node, int32_t var, bool upper, double bound) const;
  int32_t relax(Node<Real>& node) const;
  int32_t visit(Node<Real>& node);
  void search(const Node<Real>& root, int32_t branch);

  const Simplex<Real>& simplex;
  const LineProblem& problem;
  double limit = -1e300;     ///< the best value found
  std::vector<double> best;  ///< its point; empty while there is none
};

extern template class Branching<double>;
extern template class Branching<long double>;

}  // namespace LineProg
