// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "frame/base_data.h"

namespace PDF {

/// A kernel density: one bump per centre, each with a width of its own. With u = (x - c_i)/w_i a density is the sum of
/// K(u) over the centres divided by `totalWidth`, which gives every bump the weight w_i. Without centres, or while
/// `widths` and `centres` differ in length, both functions are 0.
class BasePDFKernel : public BaseData {
 public:
  virtual double calcPDF(double x) const = 0;
  virtual double calcCDF(double x) const = 0;  ///< held to [0, 1]; NaN stays NaN
  /// Writes the formula sheet into `out` and returns it.
  virtual std::string& getLatex(std::string& out) const = 0;
  /// Recomputes what the class derives from `params`.
  virtual void updateParam() = 0;

  void setCentres(std::vector<double> values);  ///< takes a sample, sorted here; the widths are to be set afterwards
  void setWidth(double width);                  ///< every width becomes `width`
  /// Widths from the distances between neighbouring centres, `zoom` times as large but at the two ends.
  void setWidthByZoom(double zoom);
  void setParams(const double* values);  ///< reads as many values as `params` holds

  /// Sum of (f(x_i) - y_i)^2 for the density or the distribution function; 1e300 when the lengths differ.
  double pdfSumError(std::span<const double> x, std::span<const double> y) const;
  double cdfSumError(std::span<const double> x, std::span<const double> y) const;

  /// The sheet, kept here so that a pointer to it stays valid until the next call.
  const char* latex() { return getLatex(latexText).c_str(); }

  uint32_t kernelType;
  double totalWidth = 0.0;
  std::vector<double> widths;
  std::vector<double> centres;
  std::vector<double> params;

 protected:
  BasePDFKernel(uint32_t type, std::vector<double> defaults) : kernelType(type), params(std::move(defaults)) {}

  bool loaded() const { return !centres.empty() && widths.size() == centres.size(); }

 private:
  std::string latexText;
};

/// exp(-(u - mu)^2 / (2 sigma^2)) / (sigma sqrt(2 pi)).
class KernelByGauss final : public BasePDFKernel {
 public:
  KernelByGauss() : BasePDFKernel(1, {0.0, 1.0}) { updateParam(); }
  double calcPDF(double x) const override;
  double calcCDF(double x) const override;
  std::string& getLatex(std::string& out) const override;
  void updateParam() override;

 private:
  double mu, sigma, exponentFactor;
};

/// The three kernels with the bounded support |u| <= a and the one parameter a.
class BoundedKernel : public BasePDFKernel {
 public:
  std::string& getLatex(std::string& out) const override;
  void updateParam() override { a = params[0]; }

 protected:
  BoundedKernel(uint32_t type, const char* middle, const char* casesLineEnd)
      : BasePDFKernel(type, {1.0}), middleText(middle), lineEnd(casesLineEnd) {
    a = 1.0;
  }
  double a;

 private:
  const char* middleText;
  const char* lineEnd;
};

/// pi/(4a) cos(pi u/(2a)).
class KernelByCosine final : public BoundedKernel {
 public:
  KernelByCosine();
  double calcPDF(double x) const override;
  double calcCDF(double x) const override;
};

/// 3/(4a) (1 - (u/a)^2).
class KernelByParabola final : public BoundedKernel {
 public:
  KernelByParabola();
  double calcPDF(double x) const override;
  double calcCDF(double x) const override;
};

/// (1 - |u|/a)/a.
class KernelByTriangle final : public BoundedKernel {
 public:
  KernelByTriangle();
  double calcPDF(double x) const override;
  double calcCDF(double x) const override;
};

/// The kernel that a host selects by `code`; a code without a row gives the Gaussian one.
std::shared_ptr<BasePDFKernel> makeKernel(uint8_t code);

}  // namespace PDF
