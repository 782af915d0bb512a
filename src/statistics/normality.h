// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

/// Tests of a sample against the normal laws, and of two samples against each other; p values.
namespace Statistics {

double normTestByKolmogorovSmirnov(std::span<const double> x);
double normTestByAndersonDarling(std::span<const double> x);
double normTestByJarqueBera(std::span<const double> x);
double twoTestByKolmogorovSmirnov(std::span<const double> x, std::span<const double> y);

struct ShapiroWilk {
  double w, p;
  double mean, deviation;  ///< of the transformed statistic under normality; NaN for three values
};

/// For three values or more. With `exactScores` the weights are the normal scores themselves (Shapiro and Francia).
ShapiroWilk normTestByShapiroWilk(std::span<const double> x, bool exactScores);

}  // namespace Statistics
