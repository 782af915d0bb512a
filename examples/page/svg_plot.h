// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

/// A value range of a plot and what stands beside it.
struct Axis {
  double low, high;
  std::string label;
};

/// Round values inside [low, high], about `wanted` of them, at steps of 1, 2 or 5 times a power of ten.
std::vector<double> ticks(double low, double high, int wanted);

/// Short decimal text of a value for people.
std::string shortNumber(double value, int digits = 6);

/// Text with the characters that mean something in HTML written as entities.
std::string escaped(const std::string& text);

/// One plot as an inline SVG element. Marks carry CSS classes (`bars`, `line s1`, `steps`, `dots s1`), so that the page
/// gives the colours in its light and its dark form. Points that are not finite break a line and leave out a dot.
class SvgPlot {
 public:
  SvgPlot(std::string title, Axis x, Axis y);

  void bars(const std::vector<double>& edges, const std::vector<double>& heights);
  void line(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style);
  void steps(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style);
  void dots(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style);

  /// A rectangle from (x1, y1) to (x2, y2).
  void block(double x1, double y1, double x2, double y2, const std::string& style);

  /// The finished element.
  std::string svg() const;

 private:
  double left(double x) const;
  double top(double y) const;
  std::string at(double x, double y) const;

  std::string title;
  Axis x, y;
  std::string marks;
};
