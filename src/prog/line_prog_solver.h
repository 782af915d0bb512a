// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "frame/base_data.h"
#include "prog/base_var.h"
#include "prog/tableau.h"

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
  struct Node {
    Tableau tableau;
    std::map<int32_t, std::pair<int32_t, int32_t>> bounds;  ///< of integer and binary variables
    std::map<int32_t, int> upperRows;                       ///< by variable: the row of its upper bound
    std::vector<double> origin;                             ///< by structural variable: what its 0 stands for
    std::vector<double> solution;
    bool solved = false;
    Status status = kFailed;
  };

  bool prepare();
  void setUp();
  void addRows();
  bool phases(Node& node) const;
  bool phaseOne(Node& node) const;
  bool phaseTwo(Node& node) const;
  /// 0 or 2: no pivot, with that status; 1: optimal; 3: a pivot is chosen.
  int choose(const Node& node, Tableau::Pivot& pivot, std::vector<double>& column) const;
  bool holds(const Node& node, double tolerance) const;
  void readOut(Node& node) const;
  int32_t relax(Node& node, double limit) const;
  void branchAndBound(Node& node, double limit, bool keep) const;
  bool addBound(Node& node, int32_t var, bool upper, double bound) const;
  double objectiveOf(std::span<const double> x) const;

  bool solved = false;
  bool spoilt = false;
  Status status = kFailed;
  std::vector<double> objective, solution;
  std::vector<std::pair<double, int32_t>> sparseObjective;
  std::vector<BaseVar> allVars;
  std::vector<EquVar> constraints;
  std::size_t standing = 0;  ///< variables that stand in a row
  std::size_t entered = 0;   ///< constraints that stand in the tableau
  int32_t rowNumber = 0;     ///< number of the next row variable
  Node root;
};

}  // namespace LineProg
