// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <span>
#include <vector>

namespace NetWork {

/// Rows of the symmetric table K(x_i, x_j) of the samples, made when they are first asked for. Rows are kept up to
/// `kBytes`; then the one that was not asked for the longest makes room.
class KernelRows {
 public:
  static constexpr std::size_t kBytes = std::size_t{256} << 20;

  /// `fill(i, row)` writes row i.
  KernelRows(std::size_t count, std::function<void(std::size_t, std::span<double>)> fill);

  std::size_t size() const { return diagonal.size(); }
  double own(std::size_t i) const { return diagonal[i]; }  ///< K(x_i, x_i)
  std::span<const double> owns() const { return diagonal; }
  void setOwn(std::size_t i, double value) { diagonal[i] = value; }

  /// Valid until the second next call.
  std::span<const double> row(std::size_t i);

 private:
  struct Kept {
    std::vector<double> values;
    std::list<std::size_t>::iterator turn;
  };

  std::vector<double> diagonal;
  std::function<void(std::size_t, std::span<double>)> fill;
  std::size_t most;  // rows
  std::vector<Kept> kept;
  std::list<std::size_t> turns;  // the row that was asked for last stands first
};

}  // namespace NetWork
