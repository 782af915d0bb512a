// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "pdf/formula.h"
#include "pdf/plain_pdf_fun.h"
#include "special/gamma/incomplete_gamma_kernel.h"
#include "special/special_function.h"

/// Distributions of counts and of a single trial. Points are rounded to the nearest count.
namespace PDF {

/// Continuous Bernoulli with parameter c on y = a x + b in [0, 1]. At c = 1/2, the default, both functions are NaN.
class PDFFunByBernoulli final : public PlainPDFFun<PDFFunByBernoulli> {
 public:
  static constexpr Defaults kDefaults = {1, 0, 0.5};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(c^{ax+b}(1-c)^{1-ax-b}\dfrac{a}{2c-1}\ln(\dfrac{c}{1-c}))",
                                        R"(\dfrac{1-c}{2c-1}(c^{ax+b}(1-c)^{-ax-b}-1))",
                                        "",
                                        "",
                                        R"(a>0, 0<c<1, 0\leq ax+b\leq 1)"};
  static void range(const Sample&, const FitRange& r) { r.set({0, -100, 0}, {100, 500, 1}, {1, 0, 0.5}); }

  void updateParam() override {
    a = params[0], b = params[1], c = params[2];
    odds = c / (1 - c);
    densityFactor = (1 - c) * (a / (2 * c - 1) * std::log(odds));
    distributionFactor = (1 - c) / (2 * c - 1);
  }
  // c^y (1-c)^(1-y) = (1-c) odds^y, which is exact at c = 1/2.
  double density(double x) const {
    const double y = a * x + b;
    if (y < 0 || y > 1) return 0;
    return std::pow(odds, y) * densityFactor;
  }
  double distribution(double x) const {
    const double y = a * x + b;
    if (y < 0) return 0;
    if (y > 1) return 1;
    return (std::pow(odds, y) - 1) * distributionFactor;
  }

 private:
  double a, b, c, odds, densityFactor, distributionFactor;
};

/// Binomial: a trials, rounded, with probability b.
class PDFFunByBinomial final : public PlainPDFFun<PDFFunByBinomial> {
 public:
  static constexpr Defaults kDefaults = {0.8, 1000};
  static constexpr SheetTexts kSheet = {"PDF", R"(\dbinom{a}{x}b^x(1-b)^{a-x})",      "I_{1-b}(a-x,x+1)", "ab",
                                        "",    R"(a>0, 0\leq b\leq 1, 0\leq x\leq a)"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0.6, 0}, {std::abs(s.xn) + s.W, 1}, {std::abs(s.xn + 1), 0.5});
  }

  void updateParam() override {
    trials = roundToInt(params[0]);
    b = params[1];
    lnTrials = lnGamma(trials + 1.0);
  }
  double density(double x) const {
    const int32_t k = roundToInt(x);
    if (k < 0 || k > trials) return 0;
    const double rest = static_cast<double>(trials) - k;
    // KEPT: the third term is gamma(n-k+1); expected: its logarithm (kept.csv: Binomial_gamma)
    return std::exp(lnTrials - lnGamma(k + 1.0) - std::tgamma(rest + 1)) * std::pow(b, k) * std::pow(1 - b, rest);
  }
  double distribution(double x) const {
    // From n on no failures are left to count, and I is 1 as well.
    // KEPT: 1 at every count below n; expected: I(1-b; n-k, k+1) (kept.csv: Binomial_one)
    return roundToInt(x) < 0 ? 0 : 1;
  }

 private:
  int32_t trials;
  double b, lnTrials;
};

/// Poisson of mean a. The offset b is rounded and otherwise not used.
class PDFFunByPoisson final : public PlainPDFFun<PDFFunByPoisson> {
 public:
  static constexpr Defaults kDefaults = {0.5, 0};
  static constexpr SheetTexts kSheet = {
      "PMF", R"(\dfrac{a^x}{x!}\exp(-a))", R"(\dfrac{\Gamma(x+1,a)}{x!})", "a+b", "a", R"(a>0, x\geq 0)"};
  // KEPT: the location starts at 0; expected: a start near the data (kept.csv: StartAtZero_Poisson)
  static void range(const Sample& s, const FitRange& r) { r.set({0, s.low}, {100, s.xm}, {0.5, 0}); }

  void updateParam() override {
    a = params[0];
    lnMean = std::log(a);
    offset = std::round(params[1]);
    for (int32_t k = 0; k < kTable; ++k) table[k] = share(k);
  }
  // KEPT: neither function reads the offset; expected: round(x) - offset (kept.csv: Poisson_offset)
  double density(double x) const {
    const int32_t k = roundToInt(x);
    if (k < 0) return 0;
    if (k == 0) return std::exp(-a);
    return orByLogarithm(std::exp(lnMean * k - a) / std::tgamma(k + 1.0),
                         [&] { return lnMean * k - a - lnGamma(k + 1.0); });
  }
  double distribution(double x) const {
    const int32_t k = roundToInt(x);
    return k < 0 ? 0 : k < kTable ? table[k] : share(k);
  }

 private:
  static constexpr int32_t kTable = 32, kLastFactorial = 170;
  double share(int32_t k) const {
    if (k > kLastFactorial && a >= 0) return SpecialFunction::Kernel::regularisedGamma(k + 1.0, a).q;
    return SpecialFunction::calcIGamma(k + 1.0, a) / std::tgamma(k + 1.0);
  }

  std::array<double, kTable> table;
  double a, lnMean;
  [[maybe_unused]] double offset;
};

}  // namespace PDF
