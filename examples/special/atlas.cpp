// SPDX-License-Identifier: Apache-2.0
#include "atlas.h"

#include <orvane/orvane.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "page.h"
#include "svg_plot.h"

namespace {

constexpr int kPoints = 1501;

std::string style(size_t curve) { return "s" + std::to_string(curve + 1); }

std::vector<double> grid(const Plate& plate) {
  std::vector<double> xs(kPoints);
  for (int i = 0; i < kPoints; ++i) xs[i] = plate.left + (plate.right - plate.left) * i / (kPoints - 1);
  return xs;
}

/// The curve without the strokes that would join the two sides of a pole.
std::vector<double> broken(const Plate& plate, const std::vector<double>& xs, std::vector<double> ys) {
  for (size_t i = 0; i + 1 < xs.size(); ++i)
    for (const double pole : plate.poles)
      if (xs[i] <= pole && pole < xs[i + 1] && std::abs(ys[i]) + std::abs(ys[i + 1]) > plate.high - plate.low)
        ys[i] = std::numeric_limits<double>::quiet_NaN();
  return ys;
}

std::string draw(const Plate& plate) {
  SvgPlot plot(plate.title, {plate.left, plate.right, "x"}, {plate.low, plate.high, ""});
  const std::vector<double> xs = grid(plate);
  for (const double pole : plate.poles) plot.line({pole, pole}, {plate.low, plate.high}, "ideal", "pole");
  for (const double limit : plate.limits) plot.line({plate.left, plate.right}, {limit, limit}, "ideal", "limit");
  std::string legend = "<ul class=\"legend\">";
  for (size_t c = 0; c < plate.curves.size(); ++c) {
    plot.line(xs, broken(plate, xs, plate.curves[c].values(xs)), style(c), plate.curves[c].name);
    legend += "<li class=\"" + style(c) + "\" data-series=\"" + style(c) + "\"><span class=\"swatch\"></span>" +
              escaped(plate.curves[c].name) + "</li>";
  }
  std::vector<double> markX, markY;
  for (const Mark& mark : plate.marks) {
    markX.push_back(mark.x);
    markY.push_back(mark.y);
  }
  plot.dots(markX, markY, "mark");
  return figure(plate.id, legend + "</ul>\n", plot.svg(),
                "<strong>" + escaped(plate.title) + "</strong>. " + plate.caption);
}

}  // namespace

std::vector<double> Curve::values(const std::vector<double>& xs) const {
  std::vector<double> ys(xs.size());
  const auto n = static_cast<int32_t>(xs.size());
  const auto order = static_cast<int32_t>(parameter);
  switch (call) {
    case One:
      apiFun_calcFun(xs.data(), n, ys.data(), code);
      break;
    case Two:
      apiFun_calcFun2(&parameter, 1, xs.data(), n, ys.data(), code);
      break;
    case TwoSwapped:
      apiFun_calcFun2(xs.data(), n, &parameter, 1, ys.data(), code);
      break;
    case Poly:
      apiFun_calcPoly(xs.data(), n, &order, 1, ys.data(), code);
      break;
  }
  return ys;
}

std::vector<std::string> missedMarks(const std::vector<Plate>& plates) {
  std::vector<std::string> missed;
  for (const Plate& plate : plates)
    for (const Mark& mark : plate.marks) {
      const Curve& curve = plate.curves[mark.curve];
      const double value = curve.values({mark.x})[0];
      if (!(std::abs(value - mark.y) <= 1e-12 * std::max(1.0, std::abs(mark.y))))
        missed.push_back(plate.title + ": " + curve.name + " at " + shortNumber(mark.x, 17) + " is " +
                         shortNumber(value, 17) + ", not " + shortNumber(mark.y, 17));
    }
  return missed;
}

std::string atlasPage(const std::vector<Plate>& plates) {
  std::string html =
      "<h1>An atlas of special functions</h1>\n<p class=\"soft\">Each curve is one call of an array export. Dots mark "
      "values that mathematics knows, dashed lines are asymptotes. " +
      today() + "</p>\n";
  std::string family;
  for (const Plate& plate : plates) {
    if (plate.family != family) html += "<h2>" + escaped(plate.family) + "</h2>\n";
    family = plate.family;
    html += draw(plate);
  }
  return htmlPage("An atlas of special functions", html);
}
