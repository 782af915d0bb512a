// SPDX-License-Identifier: Apache-2.0
#include "pdf/optimize_fun.h"

#include <cmath>

namespace PDF {

namespace {

std::size_t nextOffset(std::size_t offset) { return offset + 1 + offset / 4; }

}  // namespace

PDFOptimizeFun::PDFOptimizeFun(BasePDFFun& distribution, std::span<const double> xs, std::span<const double> cdf)
    : BaseOptimizeObject(static_cast<int32_t>(distribution.optParamSize())),
      fun(&distribution),
      data(std::make_shared<const FitData>(FitData{{xs.begin(), xs.end()}, {cdf.begin(), cdf.end()}})),
      shares(distribution.mayTakeLong() ? xs.size() : 0) {}

double PDFOptimizeFun::calcValue(const std::vector<double>& x) {
  fun->setParamsRaw(x.data());
  return lastValue = shares.empty() ? quickSum() : slowSum();
}

double PDFOptimizeFun::squared(std::size_t i, double share) const {
  const double difference = share - data->cdf[i];
  return difference * difference;
}

// The terms of the far end are asked for one by one only where the sum tells that there may be one without a finite
// value, but for the last one, which tells of most overflows.
double PDFOptimizeFun::quickSum() const {
  const std::size_t size = data->xs.size();
  if (size > 0)
    if (const double last = squared(size - 1, fun->calcCDF(data->xs[size - 1])); !std::isfinite(last)) return last;
  const double sum = fun->cdfSquaredError(data->xs, data->cdf);
  if (std::isfinite(sum)) return sum;
  for (std::size_t offset = 1; offset < (size + 1) / 2; offset = nextOffset(offset)) {
    const std::size_t i = size - 1 - offset;
    if (const double term = squared(i, fun->calcCDF(data->xs[i])); !std::isfinite(term)) return term;
  }
  return sum;
}

// The far end first, as a series may take long over the other points just where it overflows there.
double PDFOptimizeFun::slowSum() {
  const std::size_t size = data->xs.size();
  std::size_t known = size;  // the shares of the asked points and of all from here on are there
  for (std::size_t offset = 0; offset < (size + 1) / 2; offset = nextOffset(offset)) {
    const std::size_t i = size - 1 - offset;
    shares[i] = fun->calcCDF(data->xs[i]);
    if (const double term = squared(i, shares[i]); !std::isfinite(term)) return term;
  }
  for (std::size_t offset = 0; offset < (size + 1) / 2; offset = nextOffset(offset)) {
    const std::size_t i = size - 1 - offset;
    fillShares(i + 1, known);
    known = i;
  }
  fillShares(0, known);
  double sum = 0;
  for (std::size_t i = 0; i < size; ++i) sum += squared(i, shares[i]);
  return sum;
}

void PDFOptimizeFun::fillShares(std::size_t from, std::size_t to) {
  fun->calcCDFs(std::span(data->xs).subspan(from, to - from), std::span(shares).subspan(from, to - from));
}

}  // namespace PDF
