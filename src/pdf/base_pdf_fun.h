// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "frame/base_data.h"

namespace PDF {

/// A one-dimensional distribution: density, distribution function, parameters, description and the start of a fit.
///
/// Parameters are never refused: outside their range the values are NaN or infinite and flow to the caller. The value
/// operations read the cached constants only, so they may run on several threads while nobody sets parameters.
class BasePDFFun : public BaseData {
 public:
  uint32_t pdfType = 0;            ///< code of the table, or 10000 k + base of a wrapper
  double fitError = 0;             ///< error of the last fit
  std::string name;                ///< name of the table row
  std::string latexText;           ///< the last sheet, in GBK, kept for the host's pointer
  std::vector<double> bestParams;  ///< parameters of the last fit
  bool useQuantileStart = true;    ///< lets initRange start from a regression on quantiles
  std::vector<double> params;      ///< a, b, c, d; the class fixes the length

  virtual double calcPDF(double x) const = 0;
  virtual double calcCDF(double x) const = 0;
  /// Writes the sheet in UTF-8 into `out` and returns it.
  virtual std::string& getLatex(std::string& out) const = 0;
  /// Recomputes the cached constants from `params`.
  virtual void updateParam() = 0;
  /// Number of parameters that a fit moves.
  virtual std::size_t optParamSize() const { return params.size(); }
  /// Bounds and start of a fit to the ascending points `x` with empirical distribution function `cdf`. The three
  /// vectors come in with at least optParamSize() entries; what a distribution does not bound stays as it is.
  virtual void initRange(std::span<const double> /*x*/, std::span<const double> /*cdf*/,
                         std::vector<double>& /*minVar*/, std::vector<double>& /*maxVar*/,
                         std::vector<double>& /*start*/) const {}
  /// Takes a fitted vector.
  virtual void setOptParam(const std::vector<double>& values) { setParams(values); }
  virtual const std::string& getName() const { return name; }
  /// Number of parameters at the boundary.
  virtual std::size_t paramSize() const { return params.size(); }
  /// Takes all parameters; a vector of another length is ignored.
  virtual void setParams(const std::vector<double>& values) {
    if (values.size() == paramSize()) setParamsRaw(values.data());
  }
  /// Takes paramSize() values without a test.
  virtual void setParamsRaw(const double* values) {
    std::copy_n(values, params.size(), params.begin());
    updateParam();
  }
  /// Writes paramSize() values.
  virtual void getParamsRaw(double* values) const { std::copy(params.begin(), params.end(), values); }

  /// y[i] = calcPDF(x[i]); both of one length, y may be x itself.
  virtual void calcPDFs(std::span<const double> x, std::span<double> y) const = 0;
  /// y[i] = calcCDF(x[i]); both of one length, y may be x itself.
  virtual void calcCDFs(std::span<const double> x, std::span<double> y) const = 0;
  /// Whether calcCDF may take milliseconds at some points, as a series summed at the rim of its circle.
  virtual bool mayTakeLong() const { return false; }
  /// Sum of (calcCDF(x[i]) - cdf[i])^2 from first to last: the measure of a fit.
  virtual double cdfSquaredError(std::span<const double> x, std::span<const double> cdf) const = 0;
};

}  // namespace PDF
