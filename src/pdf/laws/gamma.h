// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <numbers>

#include "frame/numbers.h"
#include "pdf/formula.h"
#include "pdf/laws/power_series.h"
#include "special/gamma/incomplete_gamma_kernel.h"
#include "special/special_function.h"

/// Distributions whose distribution function is an incomplete gamma or a hypergeometric function.
namespace PDF {

/// LG(a, t)/gamma(a) = t^a exp(-t)/gamma(a+1) (1 + t/(a+1) + t^2/((a+1)(a+2)) + ...) with all that hangs on a at hand:
/// the value of SpecialFunction::calcIncompleteGammaLower between its ends. Nowhere within rounding of an integer a,
/// where that function changes its method, and at an integer a not so far left that its partial sum ends early.
class LowerShare {
 public:
  LowerShare() = default;
  LowerShare(PowerSeries& series, double a, double farthest) : power(a), scale(1 / (a * std::tgamma(a))) {
    series.clear();
    const double n = std::round(a);
    if (!(a > 0 && a < 170) || (a != n && std::abs(a - n) < 1e-14)) return;
    double nearest = kEpsilon;
    if (a == n) nearest = n > 2 ? 1.000001 * std::pow(kEpsilon * std::tgamma(n - 1), 1 / (n - 2)) : 0;
    series.build(nearest, std::min(farthest, 30.0), [a](double k) { return 1 / (a + 1 + k); });
  }
  double operator()(double t, double sum) const { return power.ofFinite(t) * (quickExpInside(-t) * sum) * scale; }

 private:
  QuickPower power;
  double scale = 1;
};

/// LG(a, t)/gamma(a), also where gamma(a) is beyond the doubles.
inline double lowerShare(double a, double t, double gammaA) {
  if (std::isinf(gammaA) && a > 0 && t >= 0) return SpecialFunction::Kernel::regularisedGamma(a, t).p;
  return SpecialFunction::calcIncompleteGammaLower(a, t, gammaA) / gammaA;
}

/// The formulas that the two Amoroso halves share: y = (x-c)/d is positive inside. a, b shapes, c end, d scale.
template <class Self>
class AmorosoPDFFun : public SeriesPDFFun<Self> {
 public:
  void updateParam() override {
    a = this->params[0], b = this->params[1], c = this->params[2], d = this->params[3];
    gammaA = std::tgamma(a);
    factor = std::abs(b / d) / gammaA;
    exponent = a * b - 1;
    share = LowerShare(this->series, a, 30);
    shape = QuickPower(b);
  }
  double argument(double x) const { return shape((x - c) / d); }

 protected:
  double inside(double x) const {
    const double y = (x - c) / d;
    const double product = y <= 1 ? std::exp(-std::pow(y, b)) * std::pow(y, exponent) * factor
                                  : std::exp(exponent * std::log(y) - std::pow(y, b)) * factor;
    return orByLogarithm(
        product, [&] { return exponent * std::log(y) - std::pow(y, b) + std::log(std::abs(b / d)) - lnGamma(a); });
  }
  double shareBelow(double x) const { return lowerShare(a, argument(x), gammaA); }

  double a, b, c, d, gammaA, factor, exponent;
  LowerShare share;
  QuickPower shape;
};

/// Amoroso with c as its upper end (d < 0).
class PDFFunByAmorosoLower final : public AmorosoPDFFun<PDFFunByAmorosoLower> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0, -1};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{|b|}{|d|\Gamma(a)}(\dfrac{x-c}{d})^{ab-1}\exp(-(\dfrac{x-c}{d})^b))",
                                        R"(1-\dfrac{\gamma(a,(\dfrac{x-c}{d})^b)}{\Gamma(a)})",
                                        "",
                                        "",
                                        "a>0, b>0, d<0, x<c"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0, 0, s.xm, -s.wide}, {100, 100, s.high, 0}, {1, 1, s.high, -s.wide / 2});
  }

  double density(double x) const { return c > x ? inside(x) : 0; }
  double near(double x, double t, double sum) const { return choose(c > x, 1 - share(t, sum), 1); }
  double far(double x) const { return c > x ? 1 - shareBelow(x) : 1; }
};

/// Amoroso with c as its lower end (d > 0).
class PDFFunByAmorosoUpper final : public AmorosoPDFFun<PDFFunByAmorosoUpper> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0, 1};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{|b|}{|d|\Gamma(a)}(\dfrac{x-c}{d})^{ab-1}\exp(-(\dfrac{x-c}{d})^b))",
                                        R"(\dfrac{\gamma(a,(\dfrac{x-c}{d})^b)}{\Gamma(a)})",
                                        "",
                                        "",
                                        R"(a>0, b>0, d>0, x\geq c)"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0, 0, s.low, 0}, {100, 100, s.xm, s.wide}, {1, 1, s.low, s.wide / 2});
  }

  double density(double x) const { return x < c ? 0 : inside(x); }
  double near(double x, double t, double sum) const { return choose(x < c, 0, share(t, sum)); }
  double far(double x) const { return x < c ? 0 : shareBelow(x); }
};

/// Chi with a degrees of freedom from b on.
class PDFFunByChi final : public SeriesPDFFun<PDFFunByChi> {
 public:
  static constexpr int kTurn = 5;
  static constexpr Defaults kDefaults = {1, 0};
  static constexpr SheetTexts kSheet = {
      "PDF",
      R"(\dfrac{2^{1-\frac{a}{2}}}{\Gamma(\frac{a}{2})}(x-b)^{a-1}\exp(-\dfrac{(x-b)^2}{2}))",
      R"(\dfrac{\gamma(\frac{a}{2},\frac{(x-b)^2}{2})}{\Gamma(\frac{a}{2})})",
      R"(b+\sqrt{2}\dfrac{\Gamma(\frac{a+1}{2})}{\Gamma(\frac{a}{2})})",
      "",
      R"(a>0, x\geq b)"};
  static void range(const Sample& s, const FitRange& r) { r.set({0, s.low}, {100, s.xm}, {1, s.x1 - s.W / 100}); }

  void updateParam() override {
    a = params[0], b = params[1];
    gammaHalf = std::tgamma(a / 2);
    factor = std::pow(2, 1 - a / 2) / gammaHalf;
    share = LowerShare(series, a / 2, 30);
    if (a / 2 == std::round(a / 2)) series.clear();  // the upper function there
  }
  double density(double x) const {
    if (x < b) return 0;
    const double u = x - b;
    return orByLogarithm(std::pow(u, a - 1) * factor * std::exp(-u * u / 2), [&] {
      return (a - 1) * std::log(u) + (1 - a / 2) * std::numbers::ln2 - lnGamma(a / 2) - u * u / 2;
    });
  }
  double argument(double x) const { return square(x - b) / 2; }
  double near(double x, double t, double sum) const {
    return choose(x < b, 0, std::min(1.0, share(t, sum)) / gammaHalf);
  }
  double far(double x) const {
    if (x < b) return 0;
    // KEPT: regularised gamma over gamma(a/2); expected: the lower gamma there (kept.csv: Chi_divided)
    return SpecialFunction::calcRLowerIncompleteGamma(a / 2, argument(x)) / gammaHalf;
  }

 private:
  double a, b, gammaHalf, factor;
  LowerShare share;
};

/// A distribution on a half line whose share is LG(shape, t)/gamma(shape): Self calls setShape, sets `from` and gives
/// `double densityAt(u)` and `double argumentAt(u)`, the t, in the distance u = x - from.
template <class Self, End kEnd>
class LowerGammaPDFFun : public SeriesPDFFun<Self> {
 public:
  double density(double x) const { return inside(x) ? self().densityAt(x - from) : 0; }
  double argument(double x) const { return self().argumentAt(x - from); }
  double near(double x, double t, double sum) const { return choose(inside(x), share(t, sum), 0); }
  double far(double x) const { return inside(x) ? lowerShare(shape, argument(x), gammaShape) : 0; }

 protected:
  void setShape(double a) {
    shape = a, gammaShape = std::tgamma(a);
    share = LowerShare(this->series, a, 30);
  }
  double from, shape, gammaShape;

 private:
  bool inside(double x) const { return kEnd == End::closed ? !(x < from) : x > from; }
  const Self& self() const { return static_cast<const Self&>(*this); }
  LowerShare share;
};

/// Chi squared with a degrees of freedom from b on.
class PDFFunByChiSquared final : public LowerGammaPDFFun<PDFFunByChiSquared, End::closed> {
 public:
  static constexpr int kTurn = 4;
  static constexpr Defaults kDefaults = {3, 0};
  static constexpr SheetTexts kSheet = {
      "PDF",
      R"(\dfrac{2^{-\frac{a}{2}}}{\Gamma(\frac{a}{2})}(x-b)^{\frac{a}{2}-1}\exp(-\dfrac{x-b}{2}))",
      R"(\dfrac{\gamma(\frac{a}{2},\frac{x-b}{2})}{\Gamma(\frac{a}{2})})",
      "a + b",
      "2a",
      R"(a>0, x\geq b)"};
  static void range(const Sample& s, const FitRange& r) { r.set({0, s.low}, {100, s.xm}, {3, s.x1 - s.W / 100}); }

  void updateParam() override {
    a = params[0], from = params[1];
    setShape(a / 2);
    factor = std::pow(2, -a / 2) / gammaShape;
  }
  double densityAt(double u) const {
    return orByLogarithm(std::pow(u, a / 2 - 1) * factor * std::exp(-u / 2), [&] {
      return (a / 2 - 1) * std::log(u) - a / 2 * std::numbers::ln2 - lnGamma(a / 2) - u / 2;
    });
  }
  double argumentAt(double u) const { return u / 2; }

 private:
  double a, factor;
};

/// Gamma with shape a and scale b from c on.
class PDFFunByGamma final : public LowerGammaPDFFun<PDFFunByGamma, End::closed> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{(x-c)^{a-1}}{b^a\Gamma(a)}\exp(-\dfrac{x-c}{b}))",
                                        R"(\dfrac{\gamma(a,\frac{x-c}{b})}{\Gamma(a)})",
                                        "ab+c",
                                        "ab^2",
                                        R"(a>0, b>0, x\geq c)"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0, 0, s.low}, {100, s.wide, s.xm}, {1, s.wide / 2, s.low});
  }

  void updateParam() override {
    setShape(params[0]);
    b = params[1], from = params[2];
    factor = std::pow(b, -shape) / gammaShape;
  }
  double densityAt(double u) const {
    return orByLogarithm(std::exp(-u / b) * std::pow(u, shape - 1) * factor,
                         [&] { return (shape - 1) * std::log(u) - u / b - shape * std::log(b) - lnGamma(shape); });
  }
  double argumentAt(double u) const { return u / b; }

 private:
  double b, factor;
};

/// Inverted gamma: 1/((x-c) b) has the gamma distribution of shape a.
class PDFFunByInvertedGamma final : public SeriesPDFFun<PDFFunByInvertedGamma> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{1}{\Gamma(a)(b(x-c))^a(x-c)}\exp(-\dfrac{1}{b(x-c)}))",
                                        R"(\dfrac{\Gamma(a,\frac{1}{b(x-c)})}{\Gamma(a)})",
                                        R"(\dfrac{1}{b(a-1)}+c,a>1)",
                                        R"(\dfrac{1}{b^2(a-1)^2(a-2)},a>2)",
                                        "a>0, b>0, x>c"};
  static void range(const Sample& s, const FitRange& r) { r.set({0, 0, s.low}, {100, 100, s.xm}, {1, 1, s.low}); }

  void updateParam() override {
    a = params[0], b = params[1], c = params[2];
    gammaA = std::tgamma(a);
    share = LowerShare(series, a, a);  // beyond a the difference from 1 would lose digits
  }
  double density(double x) const {
    if (!(x > c)) return 0;
    const double u = x - c;
    const double w = u * b;
    return orByLogarithm(std::exp(-1 / w) / (std::pow(w, a) * u * gammaA),
                         [&] { return -1 / w - a * std::log(w) - std::log(u) - lnGamma(a); });
  }
  double argument(double x) const { return 1 / ((x - c) * b); }
  double near(double x, double t, double sum) const { return choose(x > c, 1 - share(t, sum), 0); }
  double far(double x) const {
    if (!(x > c)) return 0;
    const double t = argument(x);
    if (std::isinf(gammaA) && a > 0 && t >= 0) return SpecialFunction::Kernel::regularisedGamma(a, t).q;
    return SpecialFunction::calcIGamma(a, t) / gammaA;
  }

 private:
  double a, b, c, gammaA;
  LowerShare share;
};

/// Nakagami with shape a and spread b from c on.
class PDFFunByNakagami final : public LowerGammaPDFFun<PDFFunByNakagami, End::open> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{2a^a}{b^a\Gamma(a)}(x-c)^{2a-1}\exp(-\dfrac{a}{b}(x-c)^2))",
                                        R"(\dfrac{\gamma(a,\frac{a}{b}(x-c)^2)}{\Gamma(a)})",
                                        R"(\dfrac{\Gamma(a+\frac{1}{2})}{\Gamma(a)}\sqrt{\dfrac{b}{a}}+c)",
                                        "",
                                        R"(a\geq 0.5, b>0, x>c)"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0.5, 0, s.low}, {100, s.wide, s.xm}, {1, s.wide / 2, s.low});
  }

  void updateParam() override {
    setShape(params[0]);
    rate = shape / params[1], from = params[2];
    factor = 2 * std::pow(rate, shape) / gammaShape;
  }
  double densityAt(double u) const {
    return orByLogarithm(std::pow(u, 2 * shape - 1) * factor * std::exp(-rate * u * u), [&] {
      return (2 * shape - 1) * std::log(u) + std::numbers::ln2 + shape * std::log(rate) - lnGamma(shape) - rate * u * u;
    });
  }
  double argumentAt(double u) const { return rate * square(u); }

 private:
  double rate, factor;
};

/// Symmetric generalised normal with scale a and power b around c.
class PDFFunBySymGenNormal final : public SeriesPDFFun<PDFFunBySymGenNormal> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0};
  static constexpr SheetTexts kSheet = {
      "PDF",
      R"(\dfrac{b}{2a\Gamma(\frac{1}{b})}\exp(-|\dfrac{x-c}{a}|^b))",
      R"(\dfrac{1}{2}+\mathbf{Sign}(x-c)\dfrac{\gamma(\frac{1}{b},|\frac{x-c}{a}|^b)}{2\Gamma(\frac{1}{b})})",
      "c",
      R"(\dfrac{a^2\Gamma(\frac{3}{b})}{\Gamma(\frac{1}{b})})",
      "a>0, b>0"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0, 0, s.low}, {s.wide, 100, s.high}, {s.wide / 2, 1, s.xm});
  }

  void updateParam() override {
    a = params[0], b = params[1], c = params[2];
    gammaInverse = std::tgamma(1 / b);
    factor = b / (2 * a * gammaInverse);
    share = LowerShare(series, 1 / b, 30);
    shape = QuickPower(b);
  }
  double density(double x) const { return std::exp(-std::pow(std::abs((x - c) / a), b)) * factor; }
  double argument(double x) const { return shape(std::abs(x - c) / a); }
  double near(double x, double t, double sum) const {
    return choose(std::abs(x - c) <= kDeadBand, 0.5, share(t, sum) * 0.5 + 0.5);
  }
  double far(double x) const {
    const double distance = std::abs(x - c);
    if (distance <= kDeadBand) return 0.5;
    // KEPT: above 0.5 on both sides of c; expected: the sign of x-c (kept.csv: SymGenNormal_sign)
    return lowerShare(1 / b, argument(x), gammaInverse) * 0.5 + 0.5;
  }

 private:
  double a, b, c, gammaInverse, factor;
  LowerShare share;
  QuickPower shape;
};

/// F(alpha, h; alpha+1; -t) = (1+t)^-h F(1, h; alpha+1; w), w = t/(1+t) (Pfaff): positive terms, a half in ratio at
/// most. It has the value of the series in -t inside its circle, as long as that neither overflows nor is cut by the
/// engine's cap of terms.
class InsideSeries {
 public:
  static void build(PowerSeries& series, double alpha, double h) {
    series.clear();
    if (!(alpha > 0 && h > 0 && h < 1000)) return;
    // The terms alpha n^(h-2) t^n/gamma(h) are below the engine's 1e-17 before its cap; (1-t)^-h is in range.
    constexpr double kTerms = 9e5, kEnd = 39.2;
    const double atCap = (kEnd + std::log(alpha) + (h - 2) * std::log(kTerms) - lnGamma(h)) / kTerms;
    const double farthest = std::min(-std::expm1(-650 / h), std::exp(-std::max(atCap, 1e-5)));
    series.build(0, farthest / (1 + farthest), [=](double k) { return (h + k) / (alpha + 1 + k); });
  }
  /// t/(1+t), and below (1+t)^-h, with what the rounding of 1+t takes away.
  static double argument(double t) { return t / (1 + t) * (1 - lost(t)); }

  InsideSeries() = default;
  explicit InsideSeries(double h) : h(h), power(-h) {}
  double factor(double t) const { return power.ofNormal(1 + t) * (1 - h * lost(t)); }

 private:
  static double lost(double t) {
    const double rounded = 1 + t;
    return (t - (rounded - 1)) / rounded;
  }

  double h = 1;
  QuickPower power;
};

/// Inverted beta (beta prime) with shapes a and b from c on. Beyond u = 1 the series of the distribution function
/// leaves its circle of convergence, and the values are what the series engine gives.
class PDFFunByInvertedBeta final : public SeriesPDFFun<PDFFunByInvertedBeta> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{\Gamma(a+b)}{\Gamma(a)\Gamma(b)}(x-c)^{b-1}(x-c+1)^{-(a+b)})",
                                        R"(\dfrac{\Gamma(a+b)}{b\Gamma(a)\Gamma(b)}(x-c)^b{}_2F_1(b,a+b;b+1;c-x))",
                                        "",
                                        "",
                                        "a>0, b>0, x>c"};
  static void range(const Sample& s, const FitRange& r) { r.set({1, 1, s.low}, {100, 100, s.xm}, {1, 1, s.low}); }

  void updateParam() override {
    a = params[0], b = params[1], c = params[2];
    factor = std::exp(lnGamma(a + b) - lnGamma(a) - lnGamma(b));
    InsideSeries::build(series, b, a + b);
    rising = QuickPower(b), inside = InsideSeries(a + b);
  }
  bool mayTakeLong() const override { return true; }
  double density(double x) const {
    if (!(x > c)) return 0;
    const double u = x - c;
    return std::pow(u, b - 1) * std::pow(u + 1, -(a + b)) * factor;
  }
  double argument(double x) const { return x > c ? InsideSeries::argument(x - c) : -1; }
  double near(double x, double, double sum) const { return rising(x - c) * inside.factor(x - c) * sum * factor / b; }
  double far(double x) const {
    if (!(x > c)) return 0;
    const double u = x - c;
    const double upper[] = {b, a + b};
    const double lower = b + 1;
    return SpecialFunction::calcHypergeometricPFQ(upper, 2, &lower, 1, -u) * std::pow(u, b) * factor / b;
  }

 private:
  double a, b, c, factor;
  QuickPower rising;
  InsideSeries inside;
};

/// Student's t with a degrees of freedom. Beyond x^2 = a the series of the distribution function leaves its circle of
/// convergence, and the values are what the series engine gives.
class PDFFunByStudentsT final : public SeriesPDFFun<PDFFunByStudentsT> {
 public:
  static constexpr Defaults kDefaults = {3};
  static constexpr SheetTexts kSheet = {
      "PDF",
      R"(\dfrac{\Gamma(\frac{a+1}{2})}{\sqrt{a\pi}\Gamma(\frac{a}{2})}(\dfrac{x^2}{a}+1)^{-\frac{a+1}{2}})",
      R"(\dfrac{1}{2}+x\dfrac{\Gamma(\frac{a+1}{2})}{\sqrt{a\pi}\Gamma(\frac{a}{2})}{}_2F_1(\dfrac{1}{2},\dfrac{a+1}{2};\dfrac{3}{2};-\dfrac{x^2}{a}))",
      "0",
      R"(\dfrac{a}{a-2},a>2)",
      "a>0"};
  static void range(const Sample& s, const FitRange& r) { r.set({0}, {s.wide}, {s.wide / 2}); }

  void updateParam() override {
    a = params[0];
    half = (a + 1) / 2;
    if (half < 170) {
      factor = std::tgamma(half) / (std::tgamma(a / 2) * std::sqrt(a * pi));
    } else {  // gamma(z + 1/2)/gamma(z) over sqrt(2 pi z), z = a/2
      const double r = 2 / a;
      const double ratio = r * (-1.0 / 8 + r * (1.0 / 128 + r * (5.0 / 1024 - r * (21.0 / 32768 + r * 399 / 262144))));
      factor = (1 + ratio) / std::sqrt(2 * pi);
    }
    InsideSeries::build(series, 0.5, half);
    inside = InsideSeries(half);
  }
  bool mayTakeLong() const override { return true; }
  double density(double x) const {
    return (half < 170 ? std::pow(x * x / a + 1, -half) : std::exp(-half * std::log1p(x * x / a))) * factor;
  }
  double argument(double x) const { return InsideSeries::argument(x * x / a); }
  double near(double x, double, double sum) const { return x * factor * (inside.factor(x * x / a) * sum) + 0.5; }
  double far(double x) const {
    const double upper[] = {0.5, half};
    const double lower = 1.5;
    return x * factor * SpecialFunction::calcHypergeometricPFQ(upper, 2, &lower, 1, -x * x / a) + 0.5;
  }

 private:
  double a, half, factor;
  InsideSeries inside;
};

}  // namespace PDF
