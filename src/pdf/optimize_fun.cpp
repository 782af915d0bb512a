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

// The last term of the sum, first. Where a formula overflows or has no value it does so at the far end, and the sum is
// not finite either: the other points, which a series may take long over just there, need not be asked.
double lastTerm(const BasePDFFun& fun, const FitData& data) {
  if (data.xs.empty()) return 0.0;
  const double difference = fun.calcCDF(data.xs.back()) - data.cdf.back();
  return difference * difference;
}

}  // namespace

PDFOptimizeFun::PDFOptimizeFun(BasePDFFun& distribution, std::span<const double> xs, std::span<const double> cdf)
    : BaseOptimizeObject(static_cast<int32_t>(distribution.optParamSize())),
      fun(&distribution),
      valueFun([fitted = &distribution,
                data = std::make_shared<const FitData>(FitData{{xs.begin(), xs.end()}, {cdf.begin(), cdf.end()}})](
                   const double* candidate) {
        fitted->setParamsRaw(candidate);
        if (const double term = lastTerm(*fitted, *data); !std::isfinite(term)) return term;
        return fitted->cdfSquaredError(data->xs, data->cdf);
      }) {}

}  // namespace PDF
