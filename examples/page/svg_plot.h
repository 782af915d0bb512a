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
/// gives the colours in its light and its dark form. Points that are not finite break a line and leave out a dot. What
/// is drawn is there as CSV, too, with the columns series, x and y; a series is called by its name, else by its style.
class SvgPlot {
 public:
  SvgPlot(std::string title, Axis x, Axis y);

  void bars(const std::vector<double>& edges, const std::vector<double>& heights);
  void line(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style,
            const std::string& name = "");
  void steps(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style,
             const std::string& name = "");
  void dots(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style,
            const std::string& name = "");

  /// A rectangle from (x1, y1) to (x2, y2).
  void block(double x1, double y1, double x2, double y2, const std::string& style);

  /// The finished element and behind it the link to its data.
  std::string svg() const;

 private:
  double left(double x) const;
  double top(double y) const;
  std::string at(double x, double y) const;
  void keep(const std::string& series, const std::vector<double>& xs, const std::vector<double>& ys);

  std::string title;
  Axis x, y;
  std::string marks, data;
};
