// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pdf/base_pdf_fun.h"
#include "pdf/for_points.h"
#include "pdf/quick_math.h"
#include "pdf/table.h"

namespace PDF {

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
    return squaredErrorByBlocks<128>(x, cdf,
                                     [this](const double* from, double* to, std::size_t n) { fill(from, to, n); });
  }

 private:
  const Self& self() const { return static_cast<const Self&>(*this); }

  void fill(const double* x, double* y, std::size_t n) const {
    if constexpr (requires { self().distributions(x, y, n); })
      self().distributions(x, y, n);
    else
      forPoints([&fun = self()](double point) { return fun.distribution(point); }, x, y, n);
  }
};

/// Whether the end of a half line belongs to it. A NaN counts as inside a closed one, so that it flows through.
enum class End { open, closed };

/// A distribution on the half line right of `from`, which Self sets; it gives `double densityAt(u)` and
/// `double shareAt(u)` in the distance u = x - from. Left of it both are 0.
template <class Self, End kEnd>
class OneSidedPDFFun : public PlainPDFFun<Self> {
 public:
  double density(double x) const { return inside(x) ? self().densityAt(x - from) : 0; }
  double distribution(double x) const { return choose(inside(x), self().shareAt(x - from), 0); }

 protected:
  double from;

 private:
  bool inside(double x) const { return kEnd == End::closed ? !(x < from) : x > from; }
  const Self& self() const { return static_cast<const Self&>(*this); }
};

}  // namespace PDF
