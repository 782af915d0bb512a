// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "report.h"
#include "svg_plot.h"

namespace {

std::string fixed(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

/// A rectangle in a colour of the page, as strong as `strength`, 0 to 1.
std::string cell(double x, double y, double width, double height, const char* colour, double strength) {
  return "<rect class=\"cell\" x=\"" + fixed(x) + "\" y=\"" + fixed(y) + "\" width=\"" + fixed(width) + "\" height=\"" +
         fixed(height) + "\" style=\"fill:var(--" + colour + ")\" fill-opacity=\"" + fixed(strength) + "\"/>";
}

std::string text(double x, double y, const std::string& words, const char* style = "name") {
  return "<text class=\"" + std::string(style) + "\" text-anchor=\"middle\" x=\"" + fixed(x) + "\" y=\"" + fixed(y) +
         "\">" + escaped(words) + "</text>\n";
}

std::string element(double width, double height, const std::string& title, const std::string& marks,
                    const std::string& style = "") {
  return "<svg class=\"plot\" viewBox=\"0 0 " + fixed(width) + " " + fixed(height) + "\" role=\"img\" aria-label=\"" +
         escaped(title) + "\"" + (style.empty() ? "" : " style=\"" + style + "\"") + ">\n" + marks + "</svg>\n";
}

}  // namespace

std::string drawnConfusion(const std::vector<std::vector<int>>& counts) {
  constexpr double kCell = 42, kEdge = 46;
  const double side = kEdge + kCell * kClasses;
  std::string marks = text(kEdge + kCell * kClasses / 2, 14, "read as", "axis-name");
  marks += "<text text-anchor=\"middle\" transform=\"translate(12 " + fixed(kEdge + kCell * kClasses / 2) +
           ") rotate(-90)\">is</text>\n";
  for (int r = 0; r < kClasses; ++r) {
    marks += text(kEdge + kCell * (r + 0.5), kEdge - 10, std::to_string(r));
    marks += text(kEdge - 14, kEdge + kCell * (r + 0.5) + 5, std::to_string(r));
    const auto& row = counts[static_cast<size_t>(r)];
    int sum = 0;
    for (const int n : row) sum += n;
    for (int c = 0; c < kClasses; ++c) {
      const int n = row[static_cast<size_t>(c)];
      const double share = sum > 0 ? static_cast<double>(n) / sum : 0;
      marks += cell(kEdge + kCell * c + 1, kEdge + kCell * r + 1, kCell - 2, kCell - 2, r == c ? "s1" : "s2",
                    n == 0   ? 0.04
                    : r == c ? 0.12 + 0.5 * share
                             : std::min(0.25 + 4 * share, 0.8));
      if (n > 0) marks += text(kEdge + kCell * (c + 0.5), kEdge + kCell * (r + 0.5) + 5, std::to_string(n));
    }
  }
  return element(side, side, "How often each digit was read as each", marks, "max-width:560px;margin:0 auto");
}

std::string drawnDigit(const double* picture) {
  constexpr double kCell = 10;
  std::string marks;
  for (int k = 0; k < kPixels; ++k)
    marks += cell(kCell * (k % kSide), kCell * (k / kSide), kCell, kCell, "ink", 0.03 + 0.97 * picture[k]);
  return element(kCell * kSide, kCell * kSide, "The picture", marks, "width:84px");
}

std::string drawnModels(const std::vector<const Model*>& models) {
  constexpr double kWidth = 146, kHeight = 50, kGap = 24, kRow = 92;
  size_t longest = 1;
  std::string marks;
  double top = 6;
  for (const Model* model : models) {
    longest = std::max(longest, model->boxes.size());
    marks += "<text class=\"name\" x=\"2\" y=\"" + fixed(top + 10) + "\">" + escaped(model->name) + "</text>\n";
    double left = 2;
    for (const Box& box : model->boxes) {
      const double middle = top + 18 + kHeight / 2;
      marks += "<rect class=\"box\" rx=\"6\" x=\"" + fixed(left) + "\" y=\"" + fixed(top + 18) + "\" width=\"" +
               fixed(kWidth) + "\" height=\"" + fixed(kHeight) + "\" style=\"fill:var(--grid);stroke:var(--edge)\"/>";
      marks += text(left + kWidth / 2, middle - 3, box.what) + text(left + kWidth / 2, middle + 15, box.size, "size");
      if (&box != &model->boxes.back())
        marks += "<path class=\"axis\" d=\"M" + fixed(left + kWidth + 3) + " " + fixed(middle) + "H" +
                 fixed(left + kWidth + kGap - 3) + "m-6 -4l6 4l-6 4\"/>\n";
      left += kWidth + kGap;
    }
    top += kRow;
  }
  return element(4 + static_cast<double>(longest) * (kWidth + kGap) - kGap, top, "The networks, layer by layer", marks);
}
