// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "frame/base_data.h"
#include "statistics/families.h"

namespace Statistics {

/// A sample beside a family of distributions. An odd code stands for the values in the order given, the even code above
/// it for the values in ascending order.
class StatFun final : public BaseData {
 public:
  explicit StatFun(std::span<const double> values) : sample(values.begin(), values.end()) {}

  /// Parameter i + 1 takes values[i]; those beyond the nine are not read by any family.
  void setParam(std::span<const double> values);

  /// The distribution function at the values of the sample.
  const std::vector<double>& getData(uint8_t code);

  double calcFun(uint8_t code, double x) const { return cdfOf(findFamily(code), x, params); }
  double calcInvCDFFun(uint8_t code, double q) const { return quantileOf(findFamily(code), q, params); }

  double testByKS(uint8_t code);
  double testByAD(uint8_t code);
  double testByKS(uint8_t code, std::span<const double> x) const;
  double testByAD(uint8_t code, std::span<const double> x) const;

  std::size_t size() const { return sample.size(); }

 private:
  std::vector<double> transformedAscending(uint8_t code, std::span<const double> x) const;

  std::vector<double> sample;
  Params params{};
  std::map<uint8_t, std::vector<double>> results;
};

/// The text of a family: density, domains, and the mark that ends it.
std::string describe(uint8_t code);

}  // namespace Statistics
