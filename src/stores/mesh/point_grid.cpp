// SPDX-License-Identifier: Apache-2.0
#include "stores/mesh/point_grid.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"

namespace Simulation {
namespace {

constexpr double kPointsPerCell = 2;

/// The slack of a distance to a cell's edge, in widths: far above the rounding of an edge, far below a cell.
constexpr double kSlack = 1e-9;

}  // namespace

int64_t PointGrid::Axis::cellOf(double v) const {
  return static_cast<int64_t>(std::clamp((v - start) / width, 0.0, static_cast<double>(count - 1)));
}

double PointGrid::Axis::outside(double v) const {
  const double u = v - start;
  return std::max({0.0, -u, u - static_cast<double>(count) * width}) * (1 - kSlack);
}

double PointGrid::Axis::beyond(double v, int64_t first, int64_t last) const {
  const double u = v - start;
  double least = kInfinity;
  if (first > 0) least = u - static_cast<double>(first) * width;
  if (last < count - 1) least = std::min(least, static_cast<double>(last + 1) * width - u);
  return std::max(0.0, least - kSlack * width);
}

PointGrid::PointGrid(std::vector<Point> all) {
  std::erase_if(all, [](const Point& p) { return !std::isfinite(p.x) || !std::isfinite(p.y); });
  if (all.empty()) return;

  const auto [left, right] = std::minmax_element(all.begin(), all.end(), [](auto& a, auto& b) { return a.x < b.x; });
  const auto [low, high] = std::minmax_element(all.begin(), all.end(), [](auto& a, auto& b) { return a.y < b.y; });
  const double width = right->x - left->x, height = high->y - low->y;
  const double cells = std::max(1.0, static_cast<double>(all.size()) / kPointsPerCell);
  columns.start = left->x;
  rows.start = low->y;
  // One cell holds everything where the extent is no finite number.
  if (std::isfinite(width) && std::isfinite(height)) {
    const double side = std::max({std::sqrt(width / cells) * std::sqrt(height), width / cells, height / cells});
    const auto fit = [side](Axis& axis, double extent) {
      if (!(extent > 0) || !(side > 0)) return;
      axis.count = static_cast<int64_t>(extent / side) + 1;
      axis.width = side;
    };
    fit(columns, width);
    fit(rows, height);
  }

  const auto cellOf = [this](const Point& p) {
    return static_cast<std::size_t>(rows.cellOf(p.y) * columns.count + columns.cellOf(p.x));
  };
  starts.assign(static_cast<std::size_t>(columns.count * rows.count) + 1, 0);
  for (const Point& p : all) ++starts[cellOf(p) + 1];
  for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
  points.resize(all.size());
  std::vector<uint32_t> next(starts.begin(), starts.end() - 1);
  for (const Point& p : all) points[next[cellOf(p)]++] = p;
}

void PointGrid::look(int64_t column, int64_t row, double x, double y, Nearest& best) const {
  const auto cell = static_cast<std::size_t>(row * columns.count + column);
  for (uint32_t i = starts[cell]; i < starts[cell + 1]; ++i) {
    const double dx = points[i].x - x, dy = points[i].y - y;
    const double square = dx * dx + dy * dy;
    if (square < best.square || (square == best.square && best.index != kNone && points[i].index < best.index))
      best = {square, points[i].index};
  }
}

// Rings of cells around the place, until no cell further out can hold a nearer point.
PointGrid::Nearest PointGrid::nearest(double x, double y, double limit) const {
  Nearest best{limit, kNone};
  if (points.empty() || !std::isfinite(x) || !std::isfinite(y)) return best;
  const int64_t column = columns.cellOf(x), row = rows.cellOf(y);
  const double outX = columns.outside(x), outY = rows.outside(y);
  for (int64_t ring = 0; ring < std::max(columns.count, rows.count); ++ring) {
    const int64_t left = column - ring, right = column + ring, low = row - ring, high = row + ring;
    const int64_t from = std::max<int64_t>(left, 0), to = std::min(right, columns.count - 1);
    for (int64_t r = std::max<int64_t>(low, 0); r <= std::min(high, rows.count - 1); ++r) {
      const bool whole = r == low || r == high;
      if (whole) {
        for (int64_t c = from; c <= to; ++c) look(c, r, x, y, best);
      } else {
        if (left >= 0) look(left, r, x, y, best);
        if (right < columns.count) look(right, r, x, y, best);
      }
    }
    const double besideX = columns.beyond(x, left, right), besideY = rows.beyond(y, low, high);
    const double rest = std::min(besideX * besideX + outY * outY, besideY * besideY + outX * outX);
    if (rest * (1 - kSlack) > best.square) break;
  }
  return best;
}

}  // namespace Simulation
