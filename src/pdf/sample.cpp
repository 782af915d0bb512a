// SPDX-License-Identifier: Apache-2.0
#include "pdf/sample.h"

#include <algorithm>
#include <cmath>

#include "pdf/kernel.h"

namespace PDF {

namespace {

constexpr double kSameValue = 1e-14;
constexpr double kMinTotal = 1e-16;
constexpr double kDensityZoom = 16.0;

void addToGroups(std::vector<SampleData_t>& groups, double value, double weight) {
  if (!groups.empty() && groups.back().value + kSameValue > value)
    groups.back().weight += weight;
  else
    groups.push_back({weight, value});
}

}  // namespace

std::vector<SampleData_t> groupSample(std::span<const double> sample) {
  std::vector<double> sorted;
  sorted.reserve(sample.size());
  std::ranges::copy_if(sample, std::back_inserter(sorted), [](double v) { return std::isfinite(v); });
  std::sort(sorted.begin(), sorted.end());
  std::vector<SampleData_t> groups;
  for (double v : sorted) addToGroups(groups, v, 1.0);
  return groups;
}

bool groupPairs(std::span<const double> pairs, std::vector<SampleData_t>& groups) {
  const std::size_t n = pairs.size() / 2;
  if (n < 1) return false;
  for (std::size_t i = 0; i < n; ++i)
    if (!(pairs[2 * i + 1] >= 0.0 && std::isfinite(pairs[2 * i + 1]))) return false;
  groups.clear();
  for (std::size_t i = 0; i < n; ++i)
    if (std::isfinite(pairs[2 * i])) addToGroups(groups, pairs[2 * i], std::abs(pairs[2 * i + 1]));
  return true;
}

EmpiricalSample buildSample(std::span<const SampleData_t> groups) {
  EmpiricalSample result;
  if (groups.empty()) return result;
  double total = 0.0;
  for (const SampleData_t& group : groups) total += group.weight;
  if (std::abs(total) < kMinTotal) total = kMinTotal;
  result.xs.reserve(groups.size());
  result.cdf.reserve(groups.size());
  double running = 0.0;
  for (const SampleData_t& group : groups) {
    running += group.weight;
    result.xs.push_back(group.value);
    result.cdf.push_back(running / total);
  }
  result.cdf.back() = 1.0;
  return result;
}

std::vector<double> sampleDensity(std::span<const double> xs) {
  std::vector<double> density(xs.size(), 0.0);
  if (xs.size() < 2) return density;
  KernelByGauss kernel;
  kernel.setCentres({xs.begin(), xs.end()});
  kernel.updateParam();
  kernel.setWidthByZoom(kDensityZoom);
  std::ranges::transform(xs, density.begin(), [&](double x) { return kernel.calcPDF(x); });
  return density;
}

}  // namespace PDF
