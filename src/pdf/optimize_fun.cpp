// SPDX-License-Identifier: Apache-2.0
#include "pdf/optimize_fun.h"

#include <algorithm>
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
// not be asked. Several points, since a wrapper maps the overflow of one sign to a finite value.
double farTerm(const BasePDFFun& fun, const FitData& data) {
  constexpr std::size_t kAsked = 16;
  const std::size_t step = std::max<std::size_t>(1, data.xs.size() / (2 * kAsked));
  for (std::size_t asked = 0, i = data.xs.size(); asked < kAsked && i > 0; ++asked, i -= std::min(i, step)) {
    const double difference = fun.calcCDF(data.xs[i - 1]) - data.cdf[i - 1];
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
