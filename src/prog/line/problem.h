// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "prog/line/base_var.h"

namespace LineProg {

/// A linear programme as its host enters it: variables, constraints, an objective to be maximised.
class LineProblem {
 public:
  explicit LineProblem(std::span<const uint8_t> kinds = {});

  /// The objective as terms; replaces the earlier one.
  void setMaxExpress(std::span<const int32_t> indices, std::span<const double> coefs);
  /// Adds sum <relation> rhs. A number out of range, a value that is not finite or an unknown relation spoils the
  /// problem: its solve fails.
  void addConstraint(std::span<const int32_t> indices, std::span<const double> coefs, uint8_t relation, double rhs);

  /// Writes `objective`; false for a problem that cannot be solved: refused input, no objective or no variables.
  bool prepareObjective();
  double objectiveOf(std::span<const double> x) const;
  /// By variable: whether a constraint names it.
  std::vector<uint8_t> standing() const;

  std::vector<BaseVar> allVars;
  std::vector<EquVar> constraints;  ///< at most or equal; "at least" with its signs turned
  std::vector<double> objective;    ///< by variable, from prepareObjective()

 private:
  std::vector<std::pair<double, int32_t>> sparseObjective;
  bool spoilt = false;
};

}  // namespace LineProg
