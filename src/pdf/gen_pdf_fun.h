// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <memory>

#include "pdf/base_pdf_fun.h"
#include "pdf/for_points.h"
#include "pdf/formula.h"

namespace PDF {

struct GenRow;

/// A generalisation of an inner distribution. `params` holds the wrapper's own parameters only; from outside they
/// stand behind the inner ones in one list.
class BaseGenPDFFun : public BasePDFFun {
 public:
  explicit BaseGenPDFFun(std::shared_ptr<BasePDFFun> inner);

  std::string& getLatex(std::string& out) const override;
  bool mayTakeLong() const override { return baseFun->mayTakeLong(); }
  std::size_t optParamSize() const override { return baseFun->optParamSize() + params.size(); }
  std::size_t paramSize() const override { return baseFun->paramSize() + params.size(); }
  void setParamsRaw(const double* values) override;
  void getParamsRaw(double* values) const override;
  /// Writes the wrapper's own template.
  virtual std::string& genLatex(std::string& out) const = 0;

  std::shared_ptr<BasePDFFun> baseFun;
};

/// A wrapper that is described by a row of the table.
class TableGenPDFFun : public BaseGenPDFFun {
 public:
  TableGenPDFFun(const GenRow& genRow, std::shared_ptr<BasePDFFun> inner);

  std::string& genLatex(std::string& out) const override;
  void initRange(std::span<const double> x, std::span<const double> cdf, std::vector<double>& minVar,
                 std::vector<double>& maxVar, std::vector<double>& start) const override;

 private:
  const GenRow& row;
};

/// Makes the virtual operations of a wrapper out of its two formulas, `double density(double Psi, double psi) const`
/// and `double distribution(double Psi) const`, where Psi and psi are the inner distribution function and density.
/// The array forms ask the inner distribution for blocks on the stack: no virtual call and no allocation a point.
template <class Self>
class GenPDFFun : public TableGenPDFFun {
 public:
  using TableGenPDFFun::TableGenPDFFun;

  void updateParam() override {}

  double calcPDF(double x) const final {
    return self().density(baseFun->calcCDF(x), Self::kUsesDensity ? baseFun->calcPDF(x) : 0);
  }
  double calcCDF(double x) const final { return self().distribution(baseFun->calcCDF(x)); }

  void calcPDFs(std::span<const double> x, std::span<double> y) const final {
    std::array<double, kBlock> Psi, psi;
    for (std::size_t from = 0; from < x.size(); from += kBlock) {
      const auto part = x.subspan(from, std::min(kBlock, x.size() - from));
      baseFun->calcCDFs(part, std::span(Psi).first(part.size()));
      if (Self::kUsesDensity) baseFun->calcPDFs(part, std::span(psi).first(part.size()));
      for (std::size_t i = 0; i < part.size(); ++i)
        y[from + i] = self().density(Psi[i], Self::kUsesDensity ? psi[i] : 0);
    }
  }

  void calcCDFs(std::span<const double> x, std::span<double> y) const final {
    baseFun->calcCDFs(x, y);
    forPoints([&fun = self()](double Psi) { return fun.distribution(Psi); }, y.data(), y.data(), x.size());
  }

  double cdfSquaredError(std::span<const double> x, std::span<const double> cdf) const final {
    return squaredErrorByBlocks<kBlock>(x, cdf, [this](const double* from, double* to, std::size_t n) {
      calcCDFs({from, n}, {to, n});
    });
  }

 private:
  static constexpr std::size_t kBlock = 256;
  const Self& self() const { return static_cast<const Self&>(*this); }
};

/// ln(Psi^a + 1)/ln 2.
class PDFFunByGenLog final : public GenPDFFun<PDFFunByGenLog> {
 public:
  static constexpr bool kUsesDensity = true;
  using GenPDFFun::GenPDFFun;
  void updateParam() override { a = params[0], factor = a / std::log(2.0), power = QuickPower(a); }
  double density(double Psi, double psi) const {
    if (Psi < 0.001) return factor * psi * std::pow(Psi, a - 1) / (std::pow(Psi, a) + 1);
    const double p = std::pow(Psi, a);
    return factor * psi * p / ((p + 1) * Psi);
  }
  double distribution(double Psi) const { return quickLog(power(Psi) + 1) / 0.693147180559945; }

 private:
  double a, factor;
  QuickPower power;
};

/// (e^(a Psi) - 1)/(e^a - 1).
class PDFFunByGenExp final : public GenPDFFun<PDFFunByGenExp> {
 public:
  static constexpr bool kUsesDensity = true;
  using GenPDFFun::GenPDFFun;
  void updateParam() override { a = params[0], span = std::exp(a) - 1; }
  double density(double Psi, double psi) const { return a / span * psi * std::exp(a * Psi); }
  double distribution(double Psi) const { return (quickExp(a * Psi) - 1) / span; }

 private:
  double a, span;
};

/// sin(Psi pi/2).
class PDFFunByGenHalfCos final : public GenPDFFun<PDFFunByGenHalfCos> {
 public:
  static constexpr bool kUsesDensity = true;
  using GenPDFFun::GenPDFFun;
  double density(double Psi, double psi) const { return pi / 2 * std::cos(Psi * pi / 2) * psi; }
  double distribution(double Psi) const { return std::sin(Psi * pi / 2); }
};

/// a Psi^b + (1-a) Psi^c.
class PDFFunByGenPower final : public GenPDFFun<PDFFunByGenPower> {
 public:
  static constexpr bool kUsesDensity = true;
  using GenPDFFun::GenPDFFun;
  void updateParam() override {
    a = params[0], b = params[1], c = params[2];
    first = QuickPower(b), second = QuickPower(c);
  }
  double density(double Psi, double psi) const {
    return psi * (a * b * std::pow(Psi, b - 1) + (1 - a) * c * std::pow(Psi, c - 1));
  }
  double distribution(double Psi) const { return a * first(Psi) + (1 - a) * second(Psi); }

 private:
  double a, b, c;
  QuickPower first, second;
};

/// (1 + sin(pi (Psi - 1/2)))/2.
class PDFFunByGenSymCos final : public GenPDFFun<PDFFunByGenSymCos> {
 public:
  static constexpr bool kUsesDensity = false;
  using GenPDFFun::GenPDFFun;
  double density(double Psi, double /*psi*/) const {
    // KEPT: the last factor is Psi; expected: psi, as the sheet has it (kept.csv: GenSymCos_factor)
    return pi / 2 * std::cos(pi * (Psi - 0.5)) * Psi;
  }
  double distribution(double Psi) const { return (1 + std::sin(pi * (Psi - 0.5))) / 2; }
};

}  // namespace PDF
