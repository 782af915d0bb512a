// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "pdf/base_pdf_fun.h"
#include "pdf/for_points.h"

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
/// A class whose distribution function is quicker for many points at once gives `distributions(x, y, n)` besides.
template <class Self>
class PlainPDFFun : public TablePDFFun {
 public:
  double calcPDF(double x) const final { return self().density(x); }
  double calcCDF(double x) const final { return self().distribution(x); }

  void calcPDFs(std::span<const double> x, std::span<double> y) const final {
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = self().density(x[i]);
  }

  void calcCDFs(std::span<const double> x, std::span<double> y) const final { fill(x.data(), y.data(), x.size()); }

  double cdfSquaredError(std::span<const double> x, std::span<const double> cdf) const final {
    std::array<double, kBlock> y;
    double sum = 0;
    for (std::size_t from = 0; from < x.size(); from += kBlock) {
      const std::size_t n = std::min(kBlock, x.size() - from);
      fill(x.data() + from, y.data(), n);
      for (std::size_t i = 0; i < n; ++i) {
        const double difference = y[i] - cdf[from + i];
        sum += difference * difference;
      }
    }
    return sum;
  }

 private:
  static constexpr std::size_t kBlock = 128;
  const Self& self() const { return static_cast<const Self&>(*this); }

  void fill(const double* x, double* y, std::size_t n) const {
    if constexpr (requires { self().distributions(x, y, n); })
      self().distributions(x, y, n);
    else
      forPoints([&fun = self()](double point) { return fun.distribution(point); }, x, y, n);
  }
};

}  // namespace PDF
