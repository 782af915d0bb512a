// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Statistics {

double calcMean(std::span<const double> x);
double calcDeviation(std::span<const double> x);  ///< divisor n - 1; 0 below two values
double calcMedian(std::span<const double> x);
double calcSkewness(std::span<const double> x);
double calcKurtosis(std::span<const double> x);  ///< not the excess over 3

/// Sums of the powers of the distances from the mean.
struct CentralSums {
  explicit CentralSums(std::span<const double> x);
  double mean, second = 0, third = 0, fourth = 0;
};

/// The mean of angles in radians where the circle is cut so that they lie closest together, in [0, 2 pi).
double calcMeanAngle(std::span<const double> angles);

void sortWithIndex(std::span<double> x, uint32_t* index, bool ascendingOrder);

/// Counts the values in segments of equal width and gives the centres of these.
void countSegments(std::span<const double> x, std::span<double> centres, std::span<double> counts);

/// Distinct values with their empirical and normal probabilities. @return how many
std::size_t normalQQ(std::span<const double> x, double* values, double* ranks, double* normal);

}  // namespace Statistics
