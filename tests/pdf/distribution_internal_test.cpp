// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <numbers>
#include <set>
#include <typeinfo>

#include "pdf/factory.h"
#include "pdf/fit_range.h"
#include "pdf/laws/gamma.h"
#include "pdf/quick_math.h"
#include "sym/text/number_text.h"

namespace {

constexpr double kPi = std::numbers::pi;

// The values of two calls: equal, or both NaN.
bool same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

TEST(Loops, ArraysAndSquaredErrorRepeatThePointCalls) {
  std::vector<double> x(600), cdf(600), pdfs(600), cdfs(600);  // more than two blocks of a wrapper
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] = -0.95 + 0.003 * static_cast<double>(i);  // inside the circle of the series
    cdf[i] = (static_cast<double>(i) + 0.5) / 600;
  }
  for (const int32_t code : PDF::allPDFCodes()) {
    const auto fun = PDF::makePDFFun(code);
    fun->calcPDFs(x, pdfs);
    fun->calcCDFs(x, cdfs);
    double sum = 0;
    int different = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
      different += !same(pdfs[i], fun->calcPDF(x[i])) + !same(cdfs[i], fun->calcCDF(x[i]));
      const double d = fun->calcCDF(x[i]) - cdf[i];
      sum += d * d;
    }
    EXPECT_EQ(different, 0) << code;
    EXPECT_TRUE(same(fun->cdfSquaredError(x, cdf), sum)) << code;
    EXPECT_EQ(fun->cdfSquaredError({}, {}), 0) << code;
    EXPECT_EQ(fun->optParamSize(), fun->paramSize());
  }
}

TEST(QuickMath, IsTheStandardLibrarysUpToRounding) {
  const double inf = INFINITY, odd[] = {0.0, -0.0, 1.0, -1.0, 2.0, -2.5, 3.0, 5e-324, 1e-310, 1e300, inf, -inf, NAN};
  const auto near = [](double value, double expected, double ulps) {
    return same(value, expected) || std::abs(value - expected) <= ulps * 2.3e-16 * std::abs(expected);
  };
  for (const double x : odd) {
    EXPECT_TRUE(near(PDF::quickExp(x), std::exp(x), 2)) << x;
    EXPECT_TRUE(near(PDF::quickLog(x), std::log(x), 3)) << x;
    EXPECT_NEAR(PDF::quickErf(std::isnan(x) ? 0 : x), std::erf(std::isnan(x) ? 0 : x), 2.3e-16) << x;
    for (const double y : odd)
      if (!std::isnan(y) && !std::isnan(x)) {
        EXPECT_TRUE(near(PDF::QuickPower(y)(x), std::pow(x, y), 800)) << x << " ^ " << y;
      }
  }
  for (int i = -7500; i < 7200; ++i) {
    const double x = 0.1 * i + 0.0123, y = std::exp(x / 7);
    EXPECT_TRUE(near(PDF::quickExp(x), std::exp(x), 2) || std::exp(x) < 1e-300) << x;
    EXPECT_TRUE(near(PDF::quickLog(y), std::log(y), 3)) << y;
    EXPECT_NEAR(PDF::quickErf(x / 70), std::erf(x / 70), 9e-16) << x / 70;
    EXPECT_TRUE(near(PDF::quickErfc(std::abs(x) / 30), std::erfc(std::abs(x) / 30), 2000)) << x / 30;
    EXPECT_TRUE(near(PDF::QuickPower(2.7)(y), std::pow(y, 2.7), 800)) << y;
  }
  EXPECT_TRUE(std::isnan(PDF::quickExp(NAN)) && std::isnan(PDF::quickErfc(NAN)) && std::isnan(PDF::QuickPower(2)(NAN)));
}

// Inside its range a hoisted series stands for the routine that `far` calls.
template <class Fun>
void compareSeries(const std::vector<std::vector<double>>& parameters, double low, double high) {
  Fun fun;
  for (const auto& values : parameters) {
    fun.params = values;
    fun.updateParam();
    int inside = 0;
    for (double x = low; x < high; x += (high - low) / 300) {
      const double value = fun.distribution(x), expected = fun.far(x);
      inside += value != expected;
      // 4e-15: the absolute stop of the engine, and functions that are differences from 1/2 or 1.
      EXPECT_TRUE(same(value, expected) || std::abs(value - expected) <= 1e-12 * std::abs(expected) + 4e-15)
          << typeid(Fun).name() << " " << values[0] << " at " << x << ": " << value << ", not " << expected;
    }
    EXPECT_GT(inside, 1) << typeid(Fun).name() << " " << values[0];  // or nothing was compared
  }
}

TEST(Series, IsTheRoutineThatItStandsFor) {
  compareSeries<PDF::PDFFunByGamma>({{0.3, 1, 0}, {1, 1, 0}, {2.5, 1, 0}, {3, 1, 0}, {17.25, 1, 0}, {30, 1, 0}}, 1e-3,
                                    50);
  compareSeries<PDF::PDFFunByChiSquared>({{1, 0}, {2, 0}, {7, 0}, {12.5, 0}}, 1e-3, 80);
  compareSeries<PDF::PDFFunByChi>({{1, 0}, {3, 0}, {4.5, 0}}, 1e-3, 9);
  compareSeries<PDF::PDFFunByNakagami>({{0.6, 2, 0}, {3, 2, 0}, {8.5, 2, 0}}, 1e-3, 9);
  compareSeries<PDF::PDFFunByInvertedGamma>({{0.6, 2, 0}, {3, 2, 0}, {8.5, 2, 0}}, 1e-2, 20);
  compareSeries<PDF::PDFFunBySymGenNormal>({{1, 0.7, 0}, {2, 1, 0}, {1, 3.5, 0}}, -6, 6);
  compareSeries<PDF::PDFFunByAmorosoLower>({{1.5, 2, 0, -2}, {3, 0.5, 0, -1}}, -20, 1);
  compareSeries<PDF::PDFFunByAmorosoUpper>({{1.5, 2, 0, 2}, {3, 0.5, 0, 1}}, -1, 20);
  compareSeries<PDF::PDFFunByStudentsT>({{0.4}, {1}, {3}, {8.25}, {20}}, -1.0, 0.998);
  compareSeries<PDF::PDFFunByInvertedBeta>({{0.5, 0.5, 0}, {1, 1, 0}, {4, 2.5, 0}, {2, 7.5, 0}}, 1e-3, 0.998);
}

TEST(Parameters, AVectorOfAnotherLengthIsIgnored) {
  for (const int32_t code : {43, 100030043}) {
    const auto fun = PDF::makePDFFun(code);
    std::vector<double> before(fun->paramSize()), after(fun->paramSize());
    fun->getParamsRaw(before.data());
    fun->setParams(std::vector<double>(fun->paramSize() + 1, 7.0));
    fun->setOptParam(std::vector<double>(fun->paramSize() - 1, 7.0));
    fun->getParamsRaw(after.data());
    EXPECT_EQ(before, after);
  }
}

TEST(Clone, TakesTheFitWithIt) {
  const auto fun = PDF::makePDFFun(43);
  fun->useQuantileStart = false;
  fun->bestParams = {5, 6};
  const auto copy = PDF::clonePDFFun(*fun);
  EXPECT_FALSE(copy->useQuantileStart);
  EXPECT_EQ(copy->bestParams, fun->bestParams);
}

struct Start {
  std::vector<double> lower, upper, start;
};

Start startOf(PDF::BasePDFFun& fun, const std::vector<double>& x, const std::vector<double>& cdf) {
  const std::size_t n = fun.optParamSize();
  Start s{std::vector<double>(n, -100.0), std::vector<double>(n, 100.0), std::vector<double>(n, 0.0)};
  fun.initRange(x, cdf, s.lower, s.upper, s.start);
  return s;
}

Start startOf(int32_t code, const std::vector<double>& x, bool quantiles = true) {
  std::vector<double> cdf;
  for (std::size_t i = 0; i < x.size(); ++i) cdf.push_back(static_cast<double>(i + 1) / static_cast<double>(x.size()));
  const auto fun = PDF::makePDFFun(code);
  if (!quantiles) fun->useQuantileStart = false;
  return startOf(*fun, x, cdf);
}

const std::map<std::string, std::vector<double>> kSamples = {{"positive", {0.5, 1, 2, 4, 7}},
                                                             {"negative", {-9, -5, -3, -2.5}},
                                                             {"shifted", {1000, 1001, 1003}},
                                                             {"tiny", {1e-9, 2e-9, 3e-9}},
                                                             {"one", {3}},
                                                             {"two", {-1.5, 2}},
                                                             {"constant", {4, 4, 4}},
                                                             {"none", {}}};

// Locations that start at 0 (or end at the default bound) whatever the data; the fit clamps them.
const std::set<int32_t> kMayStartOutside = {12, 16, 20, 22, 45, 46, 49, 57};

TEST(StartRange, IsFiniteAndAroundTheStart) {
  for (const auto& [name, x] : kSamples)
    for (const int32_t code : PDF::allPDFCodes())
      for (const bool quantiles : {true, false}) {
        const Start s = startOf(code, x, quantiles);
        for (std::size_t i = 0; i < s.start.size(); ++i) {
          EXPECT_TRUE(std::isfinite(s.lower[i]) && std::isfinite(s.upper[i]) && std::isfinite(s.start[i]))
              << name << " " << code << " " << i;
          if (kMayStartOutside.contains(code % 10000)) continue;
          EXPECT_LE(s.lower[i], s.start[i]) << name << " " << code << " " << i;
          EXPECT_GE(s.upper[i], s.start[i]) << name << " " << code << " " << i;
        }
      }
}

using Values = std::vector<double>;

// By hand for x = 1, 2, 4: D = 3, W = 24, xm = 2.
TEST(StartRange, RowsByHand) {
  const Values x = {1, 2, 4};
  const auto expect = [&x](int32_t code, const Values& lower, const Values& upper, const Values& start) {
    const Start s = startOf(code, x, false);
    EXPECT_EQ(s.lower, lower) << code;
    EXPECT_EQ(s.upper, upper) << code;
    EXPECT_EQ(s.start, start) << code;
  };
  expect(1, {0, 0, 2, -51}, {100, 100, 28, 0}, {1, 1, 28, -25.5});
  expect(4, {0, 0, -20}, {100, 24, 2}, {1, 12, -20});
  expect(7, {0.6, 0}, {28, 1}, {5, 0.5});
  expect(17, {-200, 0, 2}, {0, 27, 55}, {-1, 1, 55});
  expect(18, {0, 0, -47}, {200, 27, 29}, {1, 13.5, -47});
  const double L = 2 * std::log(51.0);
  expect(24, {-23, 0, -10000}, {2, L, L}, {-23, L / 10, 0});
  expect(30, {-23, 0, 0}, {2, 147, 147}, {-23, 73.5, 73.5});
  expect(34, {-23, 0}, {28, 291}, {2, 145.5});
  expect(36, {0, 0, -192}, {24, 48, 192}, {0.001, 48, 0});
  expect(42, {0.5, 0, -23}, {100, 51, 2}, {1, 25.5, -23});
  expect(45, {0, -23}, {100, 51}, {1, 0});
  expect(49, {-23, 0}, {100, 51}, {-23, 25.5});
  expect(54, {-23, 2, -48, 0}, {2, 28, 48, 51}, {-23, 28, 0, 25.5});
  expect(43, {-23, 0}, {28, 51}, {2, 25.5});
  expect(100010043, {-23, 0, 0}, {28, 51, 36}, {2, 25.5, 1});
  expect(100000043, {-23, 0, 0}, {28, 51, 100}, {2, 25.5, 1});
  expect(100030027, {-23, 0, 0, 0}, {2, 1, 36, 36}, {-23, 0.5, 1, 2});
  expect(100040027, {-23}, {2}, {-23});
  for (int32_t code : {16, 20, 22, 57}) EXPECT_EQ(startOf(code, {500, 501}).start[2], 0) << code;  // StartAtZero_*
  EXPECT_EQ(startOf(46, {500, 501}).start[1], 0);  // StartAtZero_Poisson
}

TEST(StartRange, WrappersDoNotUseQuantiles) {
  // A quantile start of the normal distribution would raise the lower bound of b to 0.1.
  EXPECT_EQ(startOf(100010043, {1, 2, 4}).lower[1], 0);
  EXPECT_EQ(startOf(43, {1, 2, 4}).lower[1], 0.1);
}

// Samples made of exact quantiles: the line gives back the parameters.
TEST(StartRange, QuantileLinesFindTheTruth) {
  const auto invPhi = [](double F) {  // by bisection of erfc
    double low = -40, high = 40;
    for (int i = 0; i < 200; ++i) {
      const double mid = (low + high) / 2;
      (0.5 * std::erfc(-mid / std::numbers::sqrt2) < F ? low : high) = mid;
    }
    return (low + high) / 2;
  };
  struct Family {
    int32_t code;
    Values truth;
    std::function<double(double)> quantile;
  };
  const Family families[] = {
      {3, {0.25, 0.5}, [](double F) { return ((std::sin(kPi * (F - 0.5)) + 1) / 2 - 0.5) / 0.25; }},
      {12, {0.25, 3}, [](double F) { return std::asin(2 * F - 1) / 0.25 + 3; }},
      {13, {0.5, 3}, [](double F) { return 3 - std::log1p(-F) / 0.5; }},
      {26, {3, 2}, [](double F) { return 3 + 2 * std::log(-std::log1p(-F)); }},
      {27, {3}, [](double F) { return 3 + std::log(2 / (1 - F) - 1); }},
      {28, {0.5, 2}, [&](double F) { return 2 + std::sqrt(kPi / 2) * invPhi((1 + F) / 2) / 0.5; }},
      {31, {3, 2}, [](double F) { return 3 + 2 / std::sqrt(-std::log(F)); }},
      {35, {3, 2}, [&](double F) { return 3 + 2 / std::pow(invPhi(1 - F / 2), 2); }},
      {43, {3, 2}, [&](double F) { return 3 + 2 * invPhi(F); }},
      {50, {0.5, 2}, [](double F) { return 2 + std::log(std::tan(F * kPi / 2)) / 0.5; }},
      {55, {2, 8}, [](double F) { return 2 + 6 * F; }}};
  for (const Family& family : families) {
    Values x, cdf;
    for (int i = 0; i < 200; ++i) {
      cdf.push_back((i + 0.5) / 200);
      x.push_back(family.quantile(cdf.back()));
    }
    const Start s = startOf(*PDF::makePDFFun(family.code), x, cdf);
    for (std::size_t i = 0; i < family.truth.size(); ++i)
      EXPECT_NEAR(s.start[i], family.truth[i], 1e-8) << family.code << " " << i;
  }
}

TEST(StartRange, QuantileBoundsFollowTheSize) {
  const PDF::QuantileStart start{.value = {20, -50}, .positive = 0};
  Values lower(2), upper(2), first(2);
  start.apply({lower, upper, first});
  EXPECT_EQ(lower, (Values{0.6 * 20, 1.4 * -50}));
  EXPECT_EQ(upper, (Values{1.4 * 20, 0.6 * -50}));
  const PDF::QuantileStart small{.value = {3, 0.01}, .positive = 1, .floor = 0.1, .leastUpper = 10};
  small.apply({lower, upper, first});
  EXPECT_EQ(lower, (Values{-16, 0.1}));
  EXPECT_EQ(upper, (Values{16, 16}));
  EXPECT_EQ(first, (Values{3, 0.1}));
}

TEST(StartRange, ExponentialLineThatReachesOne) {  // Exponential_line
  EXPECT_EQ(startOf(13, {5, 6, 9}).start, (Values{1, 5}));
}

TEST(NumberText, IntegersHaveNoPoint) {
  using Sym::numberText;
  EXPECT_EQ(numberText(2), "2");
  EXPECT_EQ(numberText(-3), "-3");
  EXPECT_EQ(numberText(-0.0), "0");
  EXPECT_EQ(numberText(4e-16), "0");
  EXPECT_EQ(numberText(1e18), "1000000000000000000");
  EXPECT_EQ(numberText(-0x1p63), "-9223372036854775808");
  EXPECT_EQ(numberText(0.1), "0.10000000000000000555");
  EXPECT_EQ(numberText(1e-14), "9.9999999999999999882e-15");
  EXPECT_EQ(numberText(1e30), "1.0000000000000000199e+30");
  EXPECT_EQ(numberText(INFINITY), "inf");
  EXPECT_EQ(numberText(std::abs(static_cast<double>(NAN))), "nan");
}

TEST(NumberText, LatexForms) {
  using Sym::latexNumberFull, Sym::latexNumberShort;
  EXPECT_EQ(latexNumberFull(NAN), "\\mathbf{NaN}");
  EXPECT_EQ(latexNumberFull(INFINITY), "\\infty");
  EXPECT_EQ(latexNumberFull(-INFINITY), "-\\infty");
  EXPECT_EQ(latexNumberFull(0.5), "0.5");
  EXPECT_EQ(latexNumberFull(0.1), "0.100000000000000006");
  EXPECT_EQ(latexNumberFull(1.5e20), "1.5e\\times 10^{+20}");  // NumberFull_e
  EXPECT_EQ(latexNumberFull(-0x1p-20), "-9.5367431640625e\\times 10^{-07}");
  EXPECT_EQ(latexNumberShort(1.5e20), "1.5\\times 10^{20}");
  EXPECT_EQ(latexNumberShort(0x1p-20), "9.5367431640625\\times 10^{-7}");
  EXPECT_TRUE(latexNumberShort(1e-5).ends_with("\\times 10^{-5}"));
  EXPECT_EQ(latexNumberShort(INFINITY), "inf");
  EXPECT_EQ(latexNumberShort(12345), "12345");
}

}  // namespace
