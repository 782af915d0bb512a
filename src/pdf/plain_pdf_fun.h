// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pdf/base_pdf_fun.h"

namespace PDF {

struct PlainRow;

/// A distribution that is described by a row of the table: sheet and start of a fit come from there.
class TablePDFFun : public BasePDFFun {
 public:
  std::string& getLatex(std::string& out) const override;
  void initRange(std::span<const double> x, std::span<const double> cdf, std::vector<double>& minVar,
                 std::vector<double>& maxVar, std::vector<double>& start) const override;

  const PlainRow* row = nullptr;
};

/// Makes the virtual operations of a plain distribution out of its two formulas, `double density(double) const` and
/// `double distribution(double) const`, which stand inlined in the loops: no virtual call and no allocation a point.
template <class Self>
class PlainPDFFun : public TablePDFFun {
 public:
  double calcPDF(double x) const final { return self().density(x); }
  double calcCDF(double x) const final { return self().distribution(x); }

  void calcPDFs(std::span<const double> x, std::span<double> y) const final {
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = self().density(x[i]);
  }

  void calcCDFs(std::span<const double> x, std::span<double> y) const final {
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = self().distribution(x[i]);
  }

  double cdfSquaredError(std::span<const double> x, std::span<const double> cdf) const final {
    double sum = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
      const double difference = self().distribution(x[i]) - cdf[i];
      sum += difference * difference;
    }
    return sum;
  }

 private:
  const Self& self() const { return static_cast<const Self&>(*this); }
};

}  // namespace PDF
