// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pdf/formula.h"
#include "pdf/plain_pdf_fun.h"

/// Distributions on an interval.
namespace PDF {

/// Arc sine on y = a x + a in (0, 1).
class PDFFunByArcSin final : public PlainPDFFun<PDFFunByArcSin> {
 public:
  static constexpr int kTurn = 11;
  static constexpr Defaults kDefaults = {1, 0};
  static constexpr SheetTexts kSheet = {
      "PDF",          R"(\dfrac{a}{\sqrt{(ax+a)(1-ax-a)}})", R"(\dfrac{1}{\pi}\arcsin(2(ax+a)-1)+\dfrac{1}{2})", "", "",
      "a>0, 0<ax+a<1"};
  static void range(const Sample& s, const FitRange& r) {
    const double t = s.x1 - s.D / 100;
    const double a = 0.99 / (s.xn - t + 1e-12);
    const double b = -t * a;
    r.set({0, std::min(-100.0, 2 * b)}, {std::max(100.0, 2 * a), std::max(100.0, 2 * b)}, {a, b});
  }
  static constexpr auto kQuantileStart = quantileArcSin;

  // KEPT: y = a x + a, b is unused; expected: y = a x + b (kept.csv: ArcSin_offset)
  void updateParam() override { slope = params[0], offset = params[0]; }
  double density(double x) const {
    const double y = slope * x + offset;
    if (!(y > 0 && y < 1)) return 0;
    return slope / std::sqrt(y * (1 - y));  // KEPT: without 1/pi; expected: unit mass (kept.csv: ArcSin_mass)
  }
  double distribution(double x) const {
    const double y = slope * x + offset;
    if (y < 0) return 0;
    if (y > 1) return 1;
    return std::asin(2 * y - 1) / pi + 0.5;
  }

 private:
  double slope, offset;
};

/// Arc tangent: rate a, shape b, from c on.
class PDFFunByArcTan final : public PlainPDFFun<PDFFunByArcTan> {
 public:
  static constexpr int kTurn = 12;
  static constexpr Defaults kDefaults = {1, 1, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{a}{(\arctan(ab)+\dfrac{\pi}{2})(1+a^2(b+c-x)^2)})",
                                        R"(\dfrac{\arctan(ab)-\arctan(a(b+c-x))}{\arctan(ab)+\dfrac{\pi}{2}})",
                                        "",
                                        "",
                                        R"(a>0, x\geq c)"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0, 0, s.xn - s.W}, {100, s.W, s.xm}, {1, s.W / 2, s.xn - s.W});
  }

  void updateParam() override {
    a = params[0], c = params[2];
    t = std::atan(a * params[1]);
    middle = params[1] + c;
    mass = t + pi / 2;
  }
  double density(double x) const { return x < c ? 0 : a / (mass * (1 + square(a * (middle - x)))); }
  double distribution(double x) const { return x < c ? 0 : (t - std::atan(a * (middle - x))) / mass; }

 private:
  double a, c, t, middle, mass;
};

/// One arch of the cosine: rate a around b.
class PDFFunByCosine final : public PlainPDFFun<PDFFunByCosine> {
 public:
  static constexpr int kTurn = 3;
  static constexpr Defaults kDefaults = {1, 0};
  static constexpr SheetTexts kSheet = {
      "PDF", R"(\dfrac{a}{2}\cos(a(x-b)))", R"(\dfrac{1}{2}(\sin(a(x-b))+1))",
      "b",   R"(\dfrac{\pi^2-8}{4a^2})",    R"(a>0, -\dfrac{\pi}{2}<a(x-b)<\dfrac{\pi}{2})"};
  static void range(const Sample& s, const FitRange& r) { r.set({0, s.x1 - 4 * s.W}, {100, s.xn + 4 * s.W}, {1, 0}); }
  static constexpr auto kQuantileStart = quantileCosine;

  void updateParam() override { a = params[0], b = params[1]; }
  double density(double x) const {
    const double t = (x - b) * a;
    return t > -pi / 2 && t < pi / 2 ? std::cos(t) * a / 2 : 0;
  }
  double distribution(double x) const {
    const double t = (x - b) * a;
    if (t > -pi / 2 && t < pi / 2) return (std::sin(t) + 1) / 2;
    return t >= 0 ? 1 : 0;
  }

 private:
  double a, b;
};

/// Density ln(x-c) between a+c and b+c.
class PDFFunByLogarithmic final : public PlainPDFFun<PDFFunByLogarithmic> {
 public:
  static constexpr int kTurn = 8;
  static constexpr Defaults kDefaults = {1, 100, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{\ln(x-c)}{b(\ln(b)-1)-a(\ln(a)-1)})",
                                        R"(\dfrac{(x-c)(\ln(x-c)-1)-a(\ln(a)-1)}{b(\ln(b)-1)-a(\ln(a)-1)})",
                                        "",
                                        "",
                                        R"(0<a<b, a+c\leq x\leq b+c)"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0, 0, -8 * s.W}, {s.W, 2 * s.W, 8 * s.W}, {0.001, 2 * s.W, 0});
  }

  void updateParam() override {
    if (params[0] > params[1]) std::swap(params[0], params[1]);
    const double a = params[0], b = params[1];
    c = params[2];
    low = a + c, high = b + c;
    atLow = a * (std::log(a) - 1);
    mass = b * (std::log(b) - 1) - atLow;
  }
  double density(double x) const { return x < low || x > high ? 0 : std::log(x - c) / mass; }
  double distribution(double x) const {
    if (x < low) return 0;
    if (x > high) return 1;
    const double u = x - c;
    return ((std::log(u) - 1) * u - atLow) / mass;
  }

 private:
  double c, low, high, atLow, mass;
};

/// Minimax (Kumaraswamy) of t = (x-b) a with shapes c and d.
class PDFFunByMinimax final : public PlainPDFFun<PDFFunByMinimax> {
 public:
  static constexpr Defaults kDefaults = {1, 0, 1, 1};
  static constexpr SheetTexts kSheet = {
      "PDF", "acd(a(x-b))^{c-1}(1-(a(x-b))^c)^{d-1}", "1-(1-(a(x-b))^c)^d", "", "", "a>0, c>0, d>0, 0<a(x-b)<1"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({0, s.low, 0, 0}, {100, s.xm, 50, 50}, {1, s.low, 1, 1});
  }

  void updateParam() override {
    a = params[0], b = params[1], c = params[2], d = params[3];
    factor = c * a * d;
    inner = QuickPower(c), outer = QuickPower(d);
  }
  double density(double x) const {
    const double t = (x - b) * a;
    if (x <= b || t >= 1) return 0;
    const double p = std::pow(t, c);
    return factor * p / t * std::pow(1 - p, d - 1);
  }
  double distribution(double x) const {
    const double t = (x - b) * a;
    return choose(x <= b, 0, choose(t >= 1, 1, 1 - outer(1 - inner(t))));
  }

 private:
  double a, b, c, d, factor;
  QuickPower inner, outer;
};

/// Parabola over b-a to b+a.
class PDFFunByParabolic final : public PlainPDFFun<PDFFunByParabolic> {
 public:
  static constexpr Defaults kDefaults = {1, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{3}{4a}(1-(\dfrac{x-b}{a})^2))",
                                        R"(\dfrac{2a+b-x}{4a}(\dfrac{x-b+a}{a})^2)",
                                        "b",
                                        R"(\dfrac{a^2}{5})",
                                        R"(a>0, b-a\leq x\leq b+a)"};
  static void range(const Sample& s, const FitRange& r) {  // The upper bound of a stays as it came in.
    r.set({0, s.low}, {r.upper[0], s.wide}, {std::min(r.upper[0], 1.0), 0});
  }

  void updateParam() override { a = params[0], b = params[1], low = b - a, high = b + a; }
  double density(double x) const {
    if (x < low || x > high) return 0;
    return (1 - square((x - b) / a)) * 3 / (4 * a);
  }
  double distribution(double x) const {
    if (x < low) return 0;
    if (x > high) return 1;
    return (2 * a + b - x) * square((x - b + a) / a) / (4 * a);
  }

 private:
  double a, b, low, high;
};

/// Power function on width a with exponent b from c on.
class PDFFunByPower final : public PlainPDFFun<PDFFunByPower> {
 public:
  static constexpr Defaults kDefaults = {1, 1, 0};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{b}{x-c}(\dfrac{x-c}{a})^b)",
                                        R"((\dfrac{x-c}{a})^b)",
                                        R"(\dfrac{ab}{1+b}+c)",
                                        R"(\dfrac{a^2b}{(2+b)(1+b)^2})",
                                        "a>0, b>0, c<x<a+c"};
  static void range(const Sample& s, const FitRange& r) { r.set({0, 0, s.low}, {2 * s.W, 100, s.xm}, {s.W, 1, s.xm}); }

  void updateParam() override {
    a = params[0], b = params[1], c = params[2], high = a + c;
    power = QuickPower(b);
  }
  double density(double x) const {
    if (!(x > c && x < high)) return 0;
    const double u = x - c;
    return std::pow(u / a, b) * b / u;
  }
  double distribution(double x) const { return choose(x < c, 0, choose(x >= high, 1, power((x - c) / a))); }

 private:
  double a, b, c, high;
  QuickPower power;
};

/// Raised cosine over a-b to a+b.
class PDFFunByRaisedCosine final : public PlainPDFFun<PDFFunByRaisedCosine> {
 public:
  static constexpr Defaults kDefaults = {0, 3.141592653589793};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{1}{2b}(1+\cos(\dfrac{x-a}{b}\pi)))",
                                        R"(\dfrac{1}{2}(\dfrac{1}{\pi}\sin(\dfrac{x-a}{b}\pi)+\dfrac{x-a}{b}+1))",
                                        "a",
                                        R"(b^2(\dfrac{1}{3}-\dfrac{2}{\pi^2}))",
                                        R"(b>0, a-b\leq x\leq a+b)"};
  static void range(const Sample& s, const FitRange& r) { r.set({s.low, 0}, {s.high, s.wide}, {s.xm, s.wide}); }

  void updateParam() override { a = params[0], b = params[1], low = a - b, high = a + b; }
  double density(double x) const {
    if (x < low || x > high) return 0;
    return (1 + std::cos((x - a) * pi / b)) / (2 * b);
  }
  double distribution(double x) const {
    if (x < low) return 0;
    if (x > high) return 1;
    const double y = (x - a) / b;
    return (std::sin(y * pi) / pi + y + 1) / 2;
  }

 private:
  double a, b, low, high;
};

/// Triangle over the sorted parameters a <= b <= c.
class PDFFunByTriangular final : public PlainPDFFun<PDFFunByTriangular> {
 public:
  static constexpr Defaults kDefaults = {-100, 100, 0};
  static constexpr SheetTexts kSheet = {
      "PDF",
      R"(\begin{cases}\dfrac{2(x-a)}{(b-a)(c-a)}&,a\leq x<c\\\dfrac{2(b-x)}{(b-a)(b-c)}&,c\leq x<b\end{cases})",
      R"(\begin{cases}\dfrac{(x-a)^2}{(b-a)(c-a)}&,a\leq x<c\\1-\dfrac{(b-x)^2}{(b-a)(b-c)}&,c\leq x<b\end{cases})",
      R"(\dfrac{a+b+c}{3})",
      "",
      R"(a<c<b, a\leq x\leq b)"};
  static void range(const Sample& s, const FitRange& r) {
    r.set({s.low, s.xm, s.low}, {s.xm, s.high, s.high}, {s.low, s.high, s.xm});
  }

  void updateParam() override {
    std::sort(params.begin(), params.end());
    // KEPT: mode c is the largest value, cdf above 1; expected: it inside (kept.csv: Triangular_sorted)
    a = params[0], b = params[1], c = params[2];
    rise = 2 / ((c - a) * (b - a));
    fall = 2 / ((b - c) * (b - a));
  }
  double density(double x) const {
    if (x < a) return 0;
    if (x < c) return (x - a) * rise;
    return b > x ? (b - x) * fall : 0;
  }
  double distribution(double x) const {
    if (x < a) return 0;
    if (x < c) return square(x - a) * rise / 2;
    return b > x ? 1 - square(b - x) * fall / 2 : 1;
  }

 private:
  double a, b, c, rise, fall;
};

/// Uniform between its two parameters, by name.
class PDFFunByUniform final : public PlainPDFFun<PDFFunByUniform> {
 public:
  static constexpr Defaults kDefaults = {-100, 100};
  // KEPT: range, mean and variance stand one line too low; expected: beside their labels (kept.csv: Uniform_sheet)
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{1}{b-a})",
                                        R"(\dfrac{x-a}{b-a})",
                                        R"(a\leq x\leq b)",
                                        R"(\dfrac{a+b}{2})",
                                        R"(\dfrac{1}{12}(b-a)^2)"};
  static void range(const Sample& s, const FitRange& r) { r.set({s.low, s.xm}, {s.xm, s.high}, {s.low, s.high}); }
  static constexpr auto kQuantileStart = quantileUniform;

  void updateParam() override {
    // KEPT: low is the larger end; expected: the smaller (kept.csv: Uniform_exchanged)
    if (params[1] > params[0]) std::swap(params[0], params[1]);
    low = params[0], high = params[1], span = high - low;
  }
  double density(double x) const { return low > x || x > high ? 0 : 1 / span; }
  double distribution(double x) const {
    if (low > x) return 0;
    if (x > high) return 1;
    return (x - low) / span;
  }

 private:
  double low, high, span;
};

/// U-shaped parabola between a and b.
class PDFFunByUQuadratic final : public PlainPDFFun<PDFFunByUQuadratic> {
 public:
  static constexpr Defaults kDefaults = {-100, 100};
  static constexpr SheetTexts kSheet = {"PDF",
                                        R"(\dfrac{12}{(b-a)^3}(x-\dfrac{a+b}{2})^2)",
                                        R"(\dfrac{4}{(b-a)^3}((x-\dfrac{a+b}{2})^3-(\dfrac{a-b}{2})^3))",
                                        R"(\dfrac{a+b}{2})",
                                        R"(\dfrac{3}{20}(b-a)^3)",
                                        R"(a<b, a\leq x\leq b)"};
  static void range(const Sample& s, const FitRange& r) { r.set({s.low, s.xm}, {s.xm, s.high}, {s.low, s.xm}); }

  void updateParam() override {
    if (params[0] > params[1]) std::swap(params[0], params[1]);
    a = params[0], b = params[1];
    middle = (a + b) / 2;
    width3 = cube(b - a);
    end3 = cube((a - b) / 2);
  }
  double density(double x) const { return x < a || x > b ? 0 : square(x - middle) * 12 / width3; }
  double distribution(double x) const {
    if (x < a) return 0;
    if (x > b) return 1;
    return (cube(x - middle) - end3) * 4 / width3;
  }

 private:
  double a, b, middle, width3, end3;
};

}  // namespace PDF
