// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "frame/base_data.h"
#include "prog/line/base_var.h"
#include "prog/line/tableau.h"

namespace LineProg {

/// Maximises a linear expression over non-negative real, integer and 0-1 variables: a primal simplex with the greatest
/// coefficient rule on a condensed tableau, and depth-first branching on copies of it.
class LineProgSolver final : public BaseData {
 public:
  enum Status : uint8_t { kFailed = 0, kOptimal = 1, kUnbounded = 2 };

  LineProgSolver() { typeCode = 58; }

  /// Starts afresh with new variables of those kinds.
  void setVarCount(std::span<const uint8_t> kinds);
  /// The objective, to be maximised, as terms; replaces the earlier one.
  void setMaxExpress(std::span<const int32_t> indices, std::span<const double> coefs);
  /// Adds sum <relation> rhs. A number out of range, a value that is not finite or an unknown relation spoils the
  /// problem: its solve fails.
  void addConstraint(std::span<const int32_t> indices, std::span<const double> coefs, uint8_t relation, double rhs);

  bool solve();

  bool isSolved() const { return solved; }
  Status getStatus() const { return status; }
  double maxValue() const;
  /// Of each variable; empty unless solved.
  std::span<const double> values() const {
    return solved ? std::span<const double>(solution) : std::span<const double>();
  }

 private:
  /// Everything that a node of the branching has of its own.
  template <class Real>
  struct Node {
    Tableau<Real> tableau;
    std::map<int32_t, std::pair<int32_t, int32_t>> bounds;  ///< of integer and binary variables
    std::map<int32_t, int> upperRows;                       ///< by variable: the row of its upper bound
    std::vector<double> origin;                             ///< by structural variable: what its 0 stands for
    std::vector<double> solution;
    bool solved = false;
    Status status = kFailed;
    std::size_t entered = 0;      ///< constraints that stand in the tableau
    std::vector<int32_t> slacks;  ///< by constraint: its row variable, the first of an equality's two
    int32_t rowNumber = 0;        ///< number of the next row variable
  };

  bool prepareObjective();
  template <class Real>
  void run(Node<Real>& root);
  template <class Real>
  bool prepare(Node<Real>& root);
  template <class Real>
  void addRows(Node<Real>& root) const;
  template <class Real>
  void setUp(Node<Real>& root) const;
  template <class Real>
  bool hasWhole(const Node<Real>& root) const;
  bool trusted(const Node<double>& root) const;
  bool reducedCostsHold(const Node<double>& root) const;
  static double reducedCost(const Node<double>& root, int32_t var);
  template <class Real>
  bool phases(Node<Real>& node) const;
  template <class Real>
  bool phaseOne(Node<Real>& node) const;
  template <class Real>
  bool phaseTwo(Node<Real>& node) const;
  /// 0 or 2: no pivot, with that status; 1: optimal; 3: a pivot is chosen.
  template <class Real>
  int choose(const Node<Real>& node, typename Tableau<Real>::Pivot& pivot, std::vector<Real>& column) const;
  template <class Real>
  bool holds(const Node<Real>& node, double tolerance) const;
  template <class Real>
  void readOut(Node<Real>& node) const;
  template <class Real>
  int32_t relax(Node<Real>& node, double limit) const;
  template <class Real>
  void branchAndBound(Node<Real>& root) const;
  template <class Real>
  void addBound(Node<Real>& node, int32_t var, bool upper, double bound) const;
  double objectiveOf(std::span<const double> x) const;

  bool solved = false;
  bool spoilt = false;
  Status status = kFailed;
  std::vector<double> objective, solution;  ///< of the last solve
  std::vector<std::pair<double, int32_t>> sparseObjective;
  std::vector<BaseVar> allVars;
  std::vector<EquVar> constraints;
  std::size_t standing = 0;  ///< variables that stand in a row
  Node<double> fast;
  Node<long double> exact;
  bool isExact = false;  ///< the run in doubles has failed, and exact's tableau is the one that counts
};

}  // namespace LineProg
