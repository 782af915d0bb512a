// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Simulation {

/// Points in square cells of a grid, for the nearest one to a place. Points that are not finite are never nearest.
class PointGrid {
 public:
  struct Point {
    double x, y;
    uint32_t index;  ///< of equally near points the one of the smallest index is nearest
  };
  struct Nearest {
    double square;
    uint32_t index;
  };

  PointGrid() = default;
  explicit PointGrid(std::vector<Point> points);

  /// The point of the least (dx^2 + dy^2) below `limit`; {limit, kNone} when there is none.
  Nearest nearest(double x, double y, double limit) const;

  static constexpr uint32_t kNone = UINT32_MAX;

 private:
  /// One direction of the grid: `count` cells of width `width` from `start` on.
  struct Axis {
    double start = 0, width = 1;
    int64_t count = 1;

    int64_t cellOf(double v) const;
    double outside(double v) const;                              ///< from v to the grid; 0 inside
    double beyond(double v, int64_t first, int64_t last) const;  ///< from v to the next cell outside first..last
  };

  void look(int64_t column, int64_t row, double x, double y, Nearest& best) const;

  Axis columns, rows;
  std::vector<uint32_t> starts;  // of each cell in points, row by row, and the end
  std::vector<Point> points;     // cell by cell
};

}  // namespace Simulation
