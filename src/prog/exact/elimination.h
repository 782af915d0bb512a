// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "prog/exact/bounded_problem.h"

namespace LineProg {

/// Numbers in lists by a count, so that those of a given count are found at once.
class CountLists {
 public:
  void clear(int items, int mostCount) {
    head.assign(static_cast<std::size_t>(mostCount) + 1, -1);
    links.assign(static_cast<std::size_t>(items), {});
  }
  int first(int count) const { return head[count]; }
  int after(int item) const { return links[item].next; }
  void put(int item, int count);
  void take(int item);

 private:
  struct Link {
    int next = -1, before = -1, count = -1;
  };
  std::vector<int> head;
  std::vector<Link> links;
};

/// Gaussian elimination of a sparse matrix, the pivots chosen by Markowitz (1957): the product of the other entries in
/// row and column, which bounds the fill, is least among a few candidates (Suhl and Suhl 1990). A pivot is at least a
/// tenth of its row's greatest entry.
template <class Real>
class Elimination {
 public:
  using Term = std::pair<int, Real>;  ///< (column, value)
  struct Pivot {
    int row = -1, column = -1;
    Real value = 0;
  };

  /// A matrix of at most `size` rows and columns, empty yet.
  void start(int size);
  void add(int row, int column, Real value);
  /// All entries are in.
  void ready();
  /// Next pivot; row -1 when what is left is singular.
  Pivot choose();
  /// Eliminates the pivot's column. `multipliers` gets (row, pivot's row, factor) for every row that factor times the
  /// pivot's row is taken from. That row, without the pivot, is `row(pivot.row)` from then on.
  void eliminate(const Pivot& pivot, std::vector<Triple<Real>>& multipliers);

  const std::vector<Term>& row(int i) const { return rows[i]; }

 private:
  Real greatest(int row);
  Real takeOut(int row, int column);
  void subtract(int row, Real factor, const std::vector<Term>& pivotRow);

  std::vector<std::vector<Term>> rows;
  std::vector<std::vector<int>> columns;  ///< the active rows that stand in each
  std::vector<Real> rowGreatest;          ///< negative when it is not known
  std::vector<int> place;                 ///< by column: its place in the row at hand, -1 outside
  CountLists byRowCount, byColumnCount;
  int size = 0;
};

extern template class Elimination<double>;
extern template class Elimination<long double>;

}  // namespace LineProg
