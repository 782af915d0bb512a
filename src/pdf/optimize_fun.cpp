// SPDX-License-Identifier: Apache-2.0
#include "pdf/optimize_fun.h"

#include <cmath>

namespace PDF {

PDFOptimizeFun::PDFOptimizeFun(BasePDFFun& distribution, std::span<const double> xs, std::span<const double> cdf)
    : BaseOptimizeObject(static_cast<int32_t>(distribution.optParamSize())),
      fun(&distribution),
      data(std::make_shared<const FitData>(FitData{{xs.begin(), xs.end()}, {cdf.begin(), cdf.end()}})) {}

double PDFOptimizeFun::calcValue(const std::vector<double>& x) {
  fun->setParamsRaw(x.data());
  const double term = farTerm();
  const double value = std::isfinite(term) ? fun->cdfSquaredError(data->xs, data->cdf) : term;
  lastValue = value;
  return value;
}

// One term of the sum that is not finite, 0 when none was met. Where a formula overflows or has no value it does so at
// the far end, and the sum is not finite either: the other points, which a series may take long over just there, need
// not be asked. Several points, the nearer ones ever wider apart: few may lie beyond the series' circle, and a wrapper
// maps the overflow of one sign to a finite value.
double PDFOptimizeFun::farTerm() const {
  const std::size_t size = data->xs.size();
  for (std::size_t offset = 0; offset < (size + 1) / 2; offset += 1 + offset / 4) {
    const double difference = fun->calcCDF(data->xs[size - 1 - offset]) - data->cdf[size - 1 - offset];
    const double term = difference * difference;
    if (!std::isfinite(term)) return term;
  }
  return 0;
}

}  // namespace PDF
