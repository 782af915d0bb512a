// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

namespace PDF {

/// One group of equal sample values and its weight.
struct SampleData_t {
  double weight;
  double value;
};

/// Sorts a sample and groups values that lie within 1e-14 above a group's first value; values that are not finite are
/// left out, since one of them would spoil every bound and sum that follows.
std::vector<SampleData_t> groupSample(std::span<const double> sample);

/// Groups n couples (value, weight) in their order by the same test. False, with `groups` untouched, if there is no
/// couple or a weight is negative or not finite. Couples whose value is not finite are left out.
bool groupPairs(std::span<const double> pairs, std::vector<SampleData_t>& groups);

/// Distinct values and the empirical distribution function there (ending in exactly 1).
struct EmpiricalSample {
  std::vector<double> xs;
  std::vector<double> cdf;
};

EmpiricalSample buildSample(std::span<const SampleData_t> groups);

/// The kernel density at the distinct values of a sample: a sum over all of them at each.
std::vector<double> sampleDensity(std::span<const double> xs);

}  // namespace PDF
