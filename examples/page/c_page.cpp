// SPDX-License-Identifier: Apache-2.0
#include "c_page.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "complaint.h"
#include "page.h"
#include "svg_plot.h"

namespace {

char* handOut(const std::string& text) { return strdup(text.c_str()); }

/// The range of the finite values with a little room, or [0, 1] when there are none.
Axis axisOf(const PageCurve* curves, size_t count, const double* PageCurve::*values, double room, const char* label) {
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  for (size_t c = 0; c < count; ++c)
    for (size_t i = 0; i < curves[c].count; ++i)
      if (const double v = (curves[c].*values)[i]; std::isfinite(v)) {
        low = std::min(low, v);
        high = std::max(high, v);
      }
  if (low > high) return {0, 1, label};
  const double margin = high > low ? room * (high - low) : 1;
  return {low - margin, high + margin, label};
}

}  // namespace

char* page_figure(const char* id, const char* title, const char* xLabel, const char* yLabel, const PageCurve* curves,
                  size_t count, const char* caption) {
  SvgPlot plot(title, axisOf(curves, count, &PageCurve::xs, 0, xLabel),
               axisOf(curves, count, &PageCurve::ys, 0.05, yLabel));
  std::string legend = "<ul class=\"legend\">";
  for (size_t c = 0; c < count; ++c) {
    const PageCurve& curve = curves[c];
    plot.line({curve.xs, curve.xs + curve.count}, {curve.ys, curve.ys + curve.count}, curve.style, curve.name);
    legend +=
        "<li class=\"" + std::string(curve.style) + "\"><span class=\"swatch\"></span>" + escaped(curve.name) + "</li>";
  }
  return handOut(figure(id, legend + "</ul>\n", plot.svg(), caption));
}

char* page_formula(const char* latex) { return handOut(formula(latex)); }

char* page_write(const char* path, const char* title, const char* body) {
  try {
    checkPagePath(path, "");
    writePage(path, htmlPage(title, body));
    return nullptr;
  } catch (const Complaint& complaint) {
    return handOut(complaint.what());
  }
}
