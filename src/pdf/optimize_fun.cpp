// SPDX-License-Identifier: Apache-2.0
#include "pdf/optimize_fun.h"

#include <memory>

namespace PDF {

namespace {

// One sample for all clones of an objective.
struct FitData {
  std::vector<double> xs;
  std::vector<double> cdf;
};

}  // namespace

PDFOptimizeFun::PDFOptimizeFun(BasePDFFun& distribution, std::span<const double> xs, std::span<const double> cdf)
    : BaseOptimizeObject(static_cast<int32_t>(distribution.optParamSize())),
      fun(&distribution),
      valueFun([fitted = &distribution,
                data = std::make_shared<const FitData>(FitData{{xs.begin(), xs.end()}, {cdf.begin(), cdf.end()}})](
                   const double* candidate) {
        fitted->setParamsRaw(candidate);
        return fitted->cdfSquaredError(data->xs, data->cdf);
      }) {}

}  // namespace PDF
