// SPDX-License-Identifier: Apache-2.0
#include "statistics/stat_fun.h"

#include <algorithm>

#include "statistics/goodness.h"
#include "statistics/order.h"

namespace Statistics {
namespace {

bool isEven(uint8_t code) { return code % 2 == 0; }
uint8_t evenCode(uint8_t code) { return static_cast<uint8_t>(code + code % 2); }

}  // namespace

void StatFun::setParam(std::span<const double> values) {
  std::copy_n(values.begin(), std::min(values.size(), params.size()), params.begin());
}

// KEPT: parameters set later leave what was computed; expected: computed anew (kept.csv: Results_stay)
const std::vector<double>& StatFun::getData(uint8_t code) {
  const auto [place, isNew] = results.try_emplace(code);
  if (!isNew) return place->second;
  if (isEven(code)) {
    place->second = transformedAscending(code, sample);
  } else {
    place->second.resize(sample.size());
    std::transform(sample.begin(), sample.end(), place->second.begin(), [&](double x) { return calcFun(code, x); });
  }
  return place->second;
}

std::vector<double> StatFun::transformedAscending(uint8_t code, std::span<const double> x) const {
  std::vector<double> values = sorted(x);
  for (double& value : values) value = calcFun(code, value);
  return values;
}

double StatFun::testByKS(uint8_t code) { return kolmogorovSmirnov(getData(evenCode(code))); }

double StatFun::testByAD(uint8_t code) { return andersonDarling(getData(evenCode(code))); }

double StatFun::testByKS(uint8_t code, std::span<const double> x) const {
  return kolmogorovSmirnov(transformedAscending(code, x));
}

double StatFun::testByAD(uint8_t code, std::span<const double> x) const {
  return andersonDarling(transformedAscending(code, x));
}

std::string describe(uint8_t code) {
  std::string text;
  if (const Family* family = findFamily(code))
    text = std::string(family->density) + "\n" + std::string(family->domains);
  return text + "&    &";
}

}  // namespace Statistics
