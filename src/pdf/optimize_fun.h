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
///
/// Where a formula overflows or has no value it does so at the far end, and the sum is not finite either: its value is
/// then that of the first such term from the far end on. Several points are asked, the nearer ones ever wider apart:
/// few may lie beyond a series' circle, and a wrapper maps the overflow of one sign to a finite value.
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

  double squared(std::size_t i, double share) const;
  double quickSum() const;
  double slowSum();
  void fillShares(std::size_t from, std::size_t to);

  std::shared_ptr<const FitData> data;
  std::vector<double> shares;  // of a distribution that may take long: no point is asked twice
};

}  // namespace PDF
