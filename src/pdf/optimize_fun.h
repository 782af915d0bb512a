// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "pdf/base_pdf_fun.h"
#include "solver/base_optimize_object.h"

namespace PDF {

/// The objective of a fit: sum over the sample of (F(x_i; candidate) - cdf_i)^2. A call writes the candidate into the
/// distribution and allocates nothing.
class PDFOptimizeFun final : public Solver::BaseOptimizeObject {
 public:
  /// Keeps its own copies of the sample; the distribution is borrowed.
  PDFOptimizeFun(BasePDFFun& distribution, std::span<const double> xs, std::span<const double> cdf);

  double calcValue(const std::vector<double>& x) override;
  std::unique_ptr<Solver::BaseOptimizeObject> clone() const override { return std::make_unique<PDFOptimizeFun>(*this); }

  BasePDFFun* fun;

 private:
  // One sample for all clones of an objective.
  struct FitData {
    std::vector<double> xs;
    std::vector<double> cdf;
  };

  double farTerm() const;

  std::shared_ptr<const FitData> data;
};

}  // namespace PDF
