// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace Statistics {

/// a, b, c and six more; a family reads the first one to three.
using Params = std::array<double, 9>;

/// A family of distributions: its density as text, the domains of its parameters, and its distribution function with
/// the inverse. The functions see valid parameters only, the quantile function a probability in (0, 1).
struct Family {
  uint8_t code;  ///< odd; the even code above it is the same family
  std::string_view density;
  std::string_view domains;
  std::string_view positive;  ///< letters of the parameters that must be positive
  double (*cdf)(double x, const Params& p);
  double (*quantile)(double q, const Params& p);
  double (*lowest)(const Params& p);  ///< the ends of the support
  double (*highest)(const Params& p);
};

const Family* findFamily(uint8_t code);  ///< null for a code without a family

/// P(X <= x); NaN for parameters outside their domains, or without a family.
double cdfOf(const Family* family, double x, const Params& p);

/// The least x with P(X <= x) >= q; NaN for q outside [0, 1], for parameters outside their domains, or without a
/// family.
double quantileOf(const Family* family, double q, const Params& p);

double normalCDF(double z);
double normalQuantile(double q);

}  // namespace Statistics
