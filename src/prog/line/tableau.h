// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "prog/line/tableau_row.h"

namespace LineProg {

/// The condensed tableau of a simplex, every variable non-negative. Variables have numbers; a nonbasic one stands in a
/// column, a basic one in a row. Ties are settled by the variables' numbers, never by places. Real is double, or long
/// double where the rounding of doubles would be taken for coefficients.
template <class Real>
class Tableau {
 public:
  static constexpr int kNone = -1;
  using Row = TableauRow<Real>;
  using Terms = std::vector<std::pair<int, Real>>;  ///< (variable, coefficient)

  struct Pivot {
    int column = kNone;
    int row = kNone;
  };

  /// A nonbasic variable in a column of its own; its coefficient is 0 in every row.
  void addColumn(int var);

  /// Row `var` = constant + sum of terms, the terms over any variables of the tableau.
  void addRow(int var, Real constant, const Terms& terms);

  /// Sets the objective constant + sum of terms; it is kept in terms of the nonbasic variables.
  void setObjective(Real constant, const Terms& terms);

  /// The column of greatest objective entry, among those that are not struck; kNone if there is none.
  int entering(const std::vector<uint8_t>& struck) const;

  /// The row that limits the column's growth most; kNone if none does. `column` receives the column's coefficients.
  /// A degenerate step takes the row of most negative coefficient.
  int leaving(int slot, std::vector<Real>& column) const;

  /// Exchanges the variables of a row and a column.
  void pivot(int row, int slot, const std::vector<Real>& column);

  /// A column of coefficient 1 in every row.
  int addArtificial(int var);
  /// Takes the variable out of the tableau, pivoting it out of its row first where it stands in one.
  void removeArtificial(int var);

  /// Moves the origin of a basic variable: its value falls by `step`.
  void shift(int var, Real step) { rows[place(var)].value -= step; }

  double valueOf(int var) const { return isBasic(var) ? static_cast<double>(rows[place(var)].value) : 0; }
  int variableCount() const { return static_cast<int>(places.size()); }
  int columnCount() const { return static_cast<int>(columnVar.size()); }
  int columnOf(int var) const { return var < variableCount() && places[var] < 0 ? ~places[var] : kNone; }
  bool isBasic(int var) const { return var < variableCount() && places[var] >= 0 && places[var] != kAbsent; }
  bool has(int var) const { return var < variableCount() && places[var] != kAbsent; }

  std::vector<Row> rows;
  std::vector<int> columnVar;      ///< variable of each column, kNone for a free one
  std::vector<Real> objectiveRow;  ///< by variable: reduced costs
  Real objectiveValue = 0;

 private:
  static constexpr int kAbsent = 0x7fffffff;

  int place(int var) const { return places[var]; }
  void enter(int var, int where);
  void forget(int var);
  void gather(int slot, std::vector<Real>& column) const;
  bool pivotOut(int var);
  void addToObjective(Real factor, int var);

  std::vector<int> places;  ///< by variable: row, or ~column, or kAbsent
  typename Row::Spare spare;
};

extern template class Tableau<double>;
extern template class Tableau<long double>;

}  // namespace LineProg
