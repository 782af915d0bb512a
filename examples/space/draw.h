// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "svg_plot.h"

/// Points that a plot joins by one line; a gap breaks it.
struct Strokes {
  std::vector<double> xs, ys;

  void add(double x, double y);
  void gap();
  void segment(double x1, double y1, double x2, double y2);
};

/// The axes of a map of this extent: wider where it must be, so that a unit is `aspect` times as long along y as along
/// x.
std::pair<Axis, Axis> mapAxes(Axis x, Axis y, double aspect);

/// A legend of (style, text) pairs.
std::string legend(std::initializer_list<std::pair<const char*, const char*>> entries);

/// A card with a table: titles, then rows of cells; all columns but the first hold numbers. Texts are plain.
std::string table(const std::vector<std::string>& titles, const std::vector<std::vector<std::string>>& rows);
