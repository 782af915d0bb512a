// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "prog/line/problem.h"
#include "prog/line/tableau.h"

namespace LineProg {

enum class Status : uint8_t { failed = 0, optimal = 1, unbounded = 2 };

/// What a turn of the simplex comes to.
enum class PivotChoice { failed, optimal, unbounded, pivot };

/// The state of a run in one type of number; branching copies it.
template <class Real>
struct Node {
  Tableau<Real> tableau;
  std::map<int32_t, std::pair<int32_t, int32_t>> bounds;  ///< of integer and binary variables
  std::map<int32_t, int> upperRows;                       ///< by variable: the row of its upper bound
  std::vector<double> origin;                             ///< by structural variable: what its 0 stands for
  std::vector<double> solution;
  bool solved = false;
  Status status = Status::failed;
  std::size_t standing = 0;     ///< variables that stand in a row
  std::size_t entered = 0;      ///< constraints that stand in the tableau
  std::vector<int32_t> slacks;  ///< by constraint: its row variable, the first of an equality's two
  int32_t rowNumber = 0;        ///< number of the next row variable
};

/// The primal simplex in two phases over a problem, in one type of number.
template <class Real>
class Simplex {
 public:
  explicit Simplex(const LineProblem& lineProblem) : problem(lineProblem) {}

  /// Enters what the root does not hold yet, in terms of the basis that an earlier run left; false for a variable in no
  /// row that grows without bound.
  bool setUp(Node<Real>& root) const;
  /// The integer variables that stand in the tableau ask for branching.
  bool hasWhole(const Node<Real>& root) const;
  bool phases(Node<Real>& node) const;
  void readOut(Node<Real>& node) const;

  const LineProblem& problem;

 private:
  bool prepare(Node<Real>& root) const;
  void addRows(Node<Real>& root) const;
  void addBounds(Node<Real>& root) const;
  bool phaseOne(Node<Real>& node) const;
  bool phaseTwo(Node<Real>& node) const;
  PivotChoice choose(const Node<Real>& node, typename Tableau<Real>::Pivot& pivot, std::vector<Real>& column) const;
  bool holds(const Node<Real>& node) const;
};

extern template class Simplex<double>;
extern template class Simplex<long double>;

}  // namespace LineProg
