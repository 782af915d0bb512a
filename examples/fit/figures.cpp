// SPDX-License-Identifier: Apache-2.0
#include "figures.h"

#include <algorithm>
#include <cmath>

#include "svg_plot.h"

namespace {

constexpr size_t kCurvePoints = 600;
constexpr size_t kMostDots = 400;
constexpr size_t kMostSteps = 2000;

Axis dataAxis(const Sample& sample, const std::string& label) {
  const double margin = 0.06 * (sample.values.back() - sample.values.front());
  return {sample.values.front() - margin, sample.values.back() + margin, label};
}

std::vector<double> evenly(double low, double high, size_t count) {
  std::vector<double> points(count);
  for (size_t i = 0; i < count; ++i)
    points[i] = low + (high - low) * static_cast<double>(i) / static_cast<double>(count - 1);
  return points;
}

/// Places in a list of n, at most `most` of them, evenly spaced from its first to its last.
std::vector<size_t> places(size_t n, size_t most) {
  std::vector<size_t> result(std::min(n, most));
  for (size_t i = 0; i < result.size(); ++i) result[i] = n <= most ? i : i * (n - 1) / (most - 1);
  return result;
}

}  // namespace

std::string densityFigure(const Sample& sample, std::span<const Fit> fits, const std::string& name) {
  const Histogram histogram(sample);
  const Axis x = dataAxis(sample, name);
  const std::vector<double> points = evenly(x.low, x.high, kCurvePoints);

  // The curves may stand above the bars, but one with a pole must not flatten the others.
  double top = *std::max_element(histogram.heights.begin(), histogram.heights.end());
  const double limit = 1.6 * top;
  std::vector<std::vector<double>> curves;
  for (const Fit& fit : fits) {
    std::vector<double>& curve = curves.emplace_back(points.size());
    pdf_calcPDF(fit.fun, points.data(), curve.data(), static_cast<int32_t>(curve.size()));
    for (const double v : curve)
      if (std::isfinite(v)) top = std::max(top, std::min(v, limit));
  }
  SvgPlot plot("Histogram of " + name + " with the best densities", x, {0, 1.06 * top, "density"});
  plot.bars(histogram.edges, histogram.heights);
  for (size_t i = curves.size(); i-- > 0;) plot.line(points, curves[i], series(i), fits[i].name);
  return plot.svg();
}

std::string distributionFigure(const Sample& sample, std::span<const Fit> fits, const std::string& name) {
  const Axis x = dataAxis(sample, name);
  const std::vector<double> points = evenly(x.low, x.high, kCurvePoints);
  SvgPlot plot("Empirical and fitted distribution functions of " + name, x, {0, 1.02, "share at or below"});
  std::vector<double> xs, cdf;
  for (const size_t at : places(sample.xs.size(), kMostSteps)) {
    xs.push_back(sample.xs[at]);
    cdf.push_back(sample.cdf[at]);
  }
  plot.steps(xs, cdf, "data");
  for (size_t i = fits.size(); i-- > 0;) {
    std::vector<double> curve(points.size());
    pdf_calcCDF(fits[i].fun, points.data(), curve.data(), static_cast<int32_t>(curve.size()));
    plot.line(points, curve, series(i), fits[i].name);
  }
  return plot.svg();
}

std::string quantileFigure(const Sample& sample, std::span<const Fit> fits, const std::string& name) {
  // Plotting positions (i - 1/2)/n; a large sample is thinned out evenly.
  const size_t n = sample.values.size();
  std::vector<double> shares, values;
  for (const size_t at : places(n, kMostDots)) {
    shares.push_back((static_cast<double>(at) + 0.5) / static_cast<double>(n));
    values.push_back(sample.values[at]);
  }
  const Axis y = dataAxis(sample, name + " (sample)");
  const Axis x = {y.low, y.high, "quantile of the fitted distribution"};
  SvgPlot plot("Quantile plot of " + name, x, y);
  plot.line({y.low, y.high}, {y.low, y.high}, "ideal");
  for (size_t i = fits.size(); i-- > 0;) {
    const std::vector<double> fitted = quantiles(fits[i].fun, shares, sample.values.front(), sample.values.back());
    if (i == 0)
      plot.dots(fitted, values, series(i), fits[i].name);
    else
      plot.line(fitted, values, series(i), fits[i].name);
  }
  return plot.svg();
}
