// SPDX-License-Identifier: Apache-2.0
#include "sample.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

Sample::Sample(std::vector<double> data) : values(std::move(data)) {
  std::sort(values.begin(), values.end());
  const auto n = static_cast<double>(values.size());
  for (size_t i = 0; i < values.size(); ++i) {
    if (i + 1 < values.size() && values[i + 1] == values[i]) continue;
    xs.push_back(values[i]);
    cdf.push_back(static_cast<double>(i + 1) / n);
  }
  mean = std::accumulate(values.begin(), values.end(), 0.0) / n;
  double squares = 0;
  for (const double v : values) squares += (v - mean) * (v - mean);
  deviation = std::sqrt(squares / (n - 1));
}

double Sample::quantile(double p) const {
  const double at = p * static_cast<double>(values.size() - 1);
  const auto below = static_cast<size_t>(at);
  const size_t above = std::min(below + 1, values.size() - 1);
  return values[below] + (at - static_cast<double>(below)) * (values[above] - values[below]);
}

std::vector<double> thinned(std::vector<double> values, size_t most) {
  const size_t n = values.size();
  if (n <= most) return values;
  std::sort(values.begin(), values.end());
  for (size_t i = 0; i < most; ++i) values[i] = values[((i + 1) * n + most - 1) / most - 1];
  values.resize(most);
  return values;
}

Histogram::Histogram(const Sample& sample) {
  // Width by Freedman and Diaconis (1981), 2 IQR n^(-1/3); Sturges' count when half of the sample is one value.
  const double span = sample.values.back() - sample.values.front();
  const auto n = static_cast<double>(sample.values.size());
  const double width = 2 * (sample.quantile(0.75) - sample.quantile(0.25)) / std::cbrt(n);
  const double wanted = width > 0 ? span / width : std::log2(n) + 1;
  const auto bins = static_cast<size_t>(std::clamp(std::ceil(wanted), 5.0, 60.0));
  for (size_t i = 0; i <= bins; ++i)
    edges.push_back(sample.values.front() + span * static_cast<double>(i) / static_cast<double>(bins));
  heights.assign(bins, 0.0);
  for (const double v : sample.values) {
    const double at = (v - edges.front()) / span * static_cast<double>(bins);
    heights[std::min(static_cast<size_t>(at), bins - 1)] += static_cast<double>(bins) / (n * span);
  }
}

double largestGap(const Sample& sample, const PDFFun* fun) {
  std::vector<double> fitted(sample.xs.size());
  pdf_calcCDF(fun, sample.xs.data(), fitted.data(), static_cast<int32_t>(fitted.size()));
  double gap = 0;
  double before = 0;
  for (size_t i = 0; i < fitted.size(); ++i) {
    gap = std::max({gap, std::abs(fitted[i] - sample.cdf[i]), std::abs(fitted[i] - before)});
    before = sample.cdf[i];
  }
  return gap;
}

bool densityAgrees(const Sample& sample, const PDFFun* fun) {
  constexpr size_t kCells = 4000;
  constexpr double kTolerance = 0.2;  // a pole or a step in a density costs the midpoint rule some per cent
  const double low = sample.values.front();
  const double width = (sample.values.back() - low) / kCells;
  std::vector<double> densities(kCells);
  for (size_t i = 0; i < kCells; ++i) densities[i] = low + (static_cast<double>(i) + 0.5) * width;
  pdf_calcPDF(fun, densities.data(), densities.data(), static_cast<int32_t>(kCells));
  const double integral = width * std::accumulate(densities.begin(), densities.end(), 0.0);
  const double ends[] = {low, sample.values.back()};
  double shares[2];
  pdf_calcCDF(fun, ends, shares, 2);
  return std::abs(integral - (shares[1] - shares[0])) < kTolerance;
}

std::vector<double> quantiles(const PDFFun* fun, const std::vector<double>& p, double low, double high) {
  const auto n = static_cast<int32_t>(p.size());
  const double span = high - low;
  std::vector<double> lows(p.size(), low - span);
  std::vector<double> highs(p.size(), high + span);
  std::vector<double> middles(p.size());
  std::vector<double> atLow(p.size());
  std::vector<double> atHigh(p.size());
  pdf_calcCDF(fun, lows.data(), atLow.data(), n);
  pdf_calcCDF(fun, highs.data(), atHigh.data(), n);
  std::vector<char> passes(p.size());
  for (size_t i = 0; i < p.size(); ++i) passes[i] = atLow[i] < p[i] && atHigh[i] >= p[i];
  for (int step = 0; step < 60; ++step) {
    for (size_t i = 0; i < p.size(); ++i) middles[i] = 0.5 * (lows[i] + highs[i]);
    pdf_calcCDF(fun, middles.data(), atLow.data(), n);
    for (size_t i = 0; i < p.size(); ++i) (atLow[i] < p[i] ? lows : highs)[i] = middles[i];
  }
  for (size_t i = 0; i < p.size(); ++i)
    if (!passes[i]) highs[i] = std::numeric_limits<double>::quiet_NaN();
  return highs;
}
