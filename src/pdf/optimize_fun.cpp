// SPDX-License-Identifier: Apache-2.0
#include "pdf/optimize_fun.h"

#include <cmath>
#include <memory>

namespace PDF {

namespace {

// One sample for all clones of an objective.
struct FitData {
  std::vector<double> xs;
  std::vector<double> cdf;
};

// One term of the sum that is not finite, 0 when none was met. Where a formula overflows or has no value it does so at
// the far end, and the sum is not finite either: the other points, which a series may take long over just there, need
// not be asked. Several points, the nearer ones ever wider apart: few may lie beyond the series' circle, and a wrapper
// maps the overflow of one sign to a finite value.
double farTerm(const BasePDFFun& fun, const FitData& data) {
  const std::size_t size = data.xs.size();
  for (std::size_t offset = 0; offset < (size + 1) / 2; offset += 1 + offset / 4) {
    const double difference = fun.calcCDF(data.xs[size - 1 - offset]) - data.cdf[size - 1 - offset];
    const double term = difference * difference;
    if (!std::isfinite(term)) return term;
  }
  return 0;
}

}  // namespace

PDFOptimizeFun::PDFOptimizeFun(BasePDFFun& distribution, std::span<const double> xs, std::span<const double> cdf)
    : BaseOptimizeObject(static_cast<int32_t>(distribution.optParamSize())),
      fun(&distribution),
      valueFun([fitted = &distribution,
                data = std::make_shared<const FitData>(FitData{{xs.begin(), xs.end()}, {cdf.begin(), cdf.end()}})](
                   const double* candidate) {
        fitted->setParamsRaw(candidate);
        if (const double term = farTerm(*fitted, *data); !std::isfinite(term)) return term;
        return fitted->cdfSquaredError(data->xs, data->cdf);
      }) {}

}  // namespace PDF
