// SPDX-License-Identifier: Apache-2.0
#include <orvane/statistics.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <numbers>
#include <span>

#include "support/csv.h"
#include "support/numbers.h"
#include "support/reference.h"

namespace {

using Values = std::vector<double>;

struct Fun {
  explicit Fun(const Values& x = {}, const Values& params = {})
      : handle(stat_CreateSBD(x.data(), static_cast<int32_t>(x.size()))) {
    stat_SetParam(handle, params.data(), static_cast<int32_t>(params.size()));
  }
  ~Fun() { stat_Free(handle); }
  Fun(const Fun&) = delete;
  Fun& operator=(const Fun&) = delete;

  double cdf(int code, double x) const { return at(stat_calcFun, code, x); }
  double quantile(int code, double p) const { return at(stat_calcInvCDFFun, code, p); }

  template <class Call>
  double at(Call call, int code, double x) const {
    double y = 0;
    call(handle, static_cast<uint8_t>(code), &x, &y, 1);
    return y;
  }

  StatFun* handle;
};

int32_t size(const Values& x) { return static_cast<int32_t>(x.size()); }

Values numbersFrom(const Cells& cells, std::size_t first) {
  Values values;
  for (std::size_t i = first; i < cells.size(); ++i) values.push_back(std::strtod(cells[i].c_str(), nullptr));
  return values;
}

TEST(Families, DistributionFunctionIsTheIntegralOfTheDensity) {
  checkReference("statistics/families.csv", [](const ReferenceRow& row) {
    const Values& a = row.arguments;
    return Fun({}, {a[1], a[2], a[3]}).cdf(static_cast<int>(a[0]), a[4]);
  });
}

// Each family of the table, with the parameters there: the quantile function inverts, and has the support's ends.
TEST(Families, QuantileFunctionInverts) {
  std::map<int, Values> families;
  for (const ReferenceRow& row : readReference("statistics/families.csv"))
    families[static_cast<int>(row.arguments[0])] = {row.arguments.begin() + 1, row.arguments.begin() + 4};
  ASSERT_EQ(families.size(), 31u);
  for (const auto& [code, params] : families) {
    const Fun fun({}, params);
    const double low = fun.quantile(code, 0), high = fun.quantile(code + 1, 1);
    EXPECT_LT(low, high) << code;
    double before = low;
    for (const double p : {1e-9, 0.001, 0.02, 0.25, 0.5, 0.77, 0.99, 0.99999}) {
      const double x = fun.quantile(code, p);
      EXPECT_GE(x, before) << code << " " << p;
      EXPECT_LE(x, high) << code << " " << p;
      before = x;
      if (x == low || x == high) continue;  // beyond the doubles
      if (code == ORVANE_STAT_POISSON) {
        EXPECT_GE(fun.cdf(code, x), p);
        EXPECT_LT(fun.cdf(code, x - 1), p);
      } else {
        EXPECT_NEAR(fun.cdf(code, x), p, 1e-12 * p + 1e-15) << code;
      }
    }
    for (const double p : {-0.1, 1.1, std::nan("")}) EXPECT_TRUE(std::isnan(fun.quantile(code, p))) << code;
    EXPECT_TRUE(std::isnan(fun.cdf(code, std::nan("")))) << code;
    EXPECT_GT(fun.cdf(code, std::numeric_limits<double>::max()), 0.99) << code;
    EXPECT_EQ(fun.cdf(code, std::numeric_limits<double>::infinity()), 1) << code;
    EXPECT_FALSE(std::isnan(fun.quantile(code, 0x1p-1074))) << code;
    const Fun outside(
        {}, {code == ORVANE_STAT_Q_EXPONENTIAL ? 2.0 : -1.0, code == ORVANE_STAT_Q_EXPONENTIAL ? 1.0 : -1.0, 0});
    for (const double p : {0.0, 0.5, 1.0}) EXPECT_TRUE(std::isnan(outside.quantile(code, p))) << code;
    EXPECT_TRUE(std::isnan(outside.cdf(code, 0.5))) << code;
  }
  // Heavy tails, where powers overflow and differences vanish.
  const Fun heavy({}, {3, 0.01});
  EXPECT_NEAR(heavy.cdf(ORVANE_STAT_BURR, heavy.quantile(ORVANE_STAT_BURR, 0.9999)), 0.9999, 1e-13);
  EXPECT_NEAR(heavy.cdf(ORVANE_STAT_PARETO, heavy.quantile(ORVANE_STAT_PARETO, 0.9)), 0.9, 1e-13);
  for (const int code : {0, 9, 10, 21, 22, 57, 58, 63, 64, 71, 255}) EXPECT_TRUE(std::isnan(Fun().cdf(code, 0.5)));
}

TEST(Families, TextHasDensityDomainsAndMark) {
  const Fun fun;
  std::string text(static_cast<std::size_t>(stat_GetFunInfo(fun.handle, 2, nullptr)), '?');
  stat_GetFunInfo(fun.handle, 1, text.data());
  EXPECT_EQ(text, "x^(a-1) * (1-x)^(b-1) / Beta(a, b)\n a:(0, inf); b:(0, inf); x:[0,1]&    &");
  EXPECT_EQ(stat_GetFunInfo(fun.handle, 9, nullptr), 6);
}

TEST(StatFun, KeepsWhatItComputed) {
  const Fun fun({3, -1, 0.5}, {0, 1});
  Values odd(3), even(3), later(3);
  stat_GetData(fun.handle, ORVANE_STAT_NORMAL, odd.data());
  stat_GetData(fun.handle, ORVANE_STAT_NORMAL + 1, even.data());
  EXPECT_EQ(even, (Values{odd[1], odd[2], odd[0]}));
  const double shifted[] = {5, 1};
  stat_SetParam(fun.handle, shifted, 2);
  stat_GetData(fun.handle, ORVANE_STAT_NORMAL, later.data());
  EXPECT_EQ(later, odd);  // kept.csv: Results_stay
  EXPECT_NE(fun.cdf(ORVANE_STAT_NORMAL, 3), odd[0]);
  EXPECT_EQ(stat_testByKSForData(fun.handle, ORVANE_STAT_NORMAL, shifted, 2), 0);
}

TEST(Tests, AgreeWithReferences) {
  std::map<std::string, Values> samples;
  for (const std::string& line : readLines("statistics/samples.csv"))
    samples[cellsOf(line)[0]] = numbersFrom(cellsOf(line), 1);
  const auto ownNormal = [](const Values& x) {
    return Values{data_calcDataMean(x.data(), size(x)), data_calcDataStd(x.data(), size(x))};
  };
  const auto shapiro = [](const Values& x, bool wantsW) {
    double w, p;
    EXPECT_TRUE(data_normTestByShapiroWilk(x.data(), size(x), &w, &p, nullptr, nullptr, false));
    return wantsW ? w : p;
  };
  const std::map<std::string, std::function<double(const Values&, const Values&)>> calls = {
      {"mean", [](auto& x, auto&) { return data_calcDataMean(x.data(), size(x)); }},
      {"std", [](auto& x, auto&) { return data_calcDataStd(x.data(), size(x)); }},
      {"median", [](auto& x, auto&) { return data_calcDataMedian(x.data(), size(x)); }},
      {"skewness", [](auto& x, auto&) { return data_calcDataSkewness(x.data(), size(x)); }},
      {"kurtosis", [](auto& x, auto&) { return data_calcDataKurtosis(x.data(), size(x)); }},
      {"jarqueBera", [](auto& x, auto&) { return data_normTestByJarqueBera(x.data(), size(x)); }},
      {"shapiroW", [&](auto& x, auto&) { return shapiro(x, true); }},
      {"shapiroP", [&](auto& x, auto&) { return shapiro(x, false); }},
      {"ks", [](auto& x, auto&) { return data_normTestByKolmogorovSmirnov(x.data(), size(x)); }},
      {"ad", [&](auto& x, auto&) { return stat_testByADForFun(Fun(x, ownNormal(x)).handle, ORVANE_STAT_NORMAL); }},
      {"adNormal", [](auto& x, auto&) { return data_normTestByAndersonDarling(x.data(), size(x)); }},
      {"ks2", [](auto& x, auto& y) { return data_twoTestByKolmogorovSmirnov(x.data(), size(x), y.data(), size(y)); }},
  };
  for (const std::string& line : readLines("statistics/tests.csv")) {
    const Cells cells = cellsOf(line);
    const double error = std::strtod(cells[4].c_str(), nullptr);
    EXPECT_NEAR(calls.at(cells[0])(samples.at(cells[1]), samples[cells[2]]), std::strtod(cells[3].c_str(), nullptr),
                error)
        << line;
  }
}

TEST(Tests, TooShortSamplesAreRejected) {
  const Values x = {1, 2, 3};
  for (const int32_t n : {-1, 0, 1, 2}) {
    EXPECT_EQ(data_normTestByKolmogorovSmirnov(x.data(), n), 0) << n;
    EXPECT_EQ(data_normTestByAndersonDarling(x.data(), n), 0) << n;
    EXPECT_EQ(data_twoTestByKolmogorovSmirnov(x.data(), n, x.data(), 3), 0) << n;
    double w = -1, p = -1;
    EXPECT_FALSE(data_normTestByShapiroWilk(x.data(), n, &w, &p, nullptr, nullptr, false));
    EXPECT_EQ(w, -1);
  }
  EXPECT_EQ(data_calcDataStd(x.data(), 1), 0);
  EXPECT_EQ(data_calcDataMedian(x.data(), 0), 0);
  EXPECT_EQ(data_normTestByJarqueBera(Values(9, 2.5).data(), 9), 0);
  EXPECT_EQ(data_normTestByAndersonDarling(Values(9, 2.5).data(), 9), 0);
  EXPECT_EQ(data_normTestByJarqueBera(Values{1, 5, 2, 8, 3}.data(), 5), 1);  // kept.csv: JarqueBera_sixth
  EXPECT_EQ(data_calcDataMedian(Values{4, 1, 3, 2}.data(), 4), 3);           // kept.csv: Median_upper
}

// Beyond 20,000 values an expansion takes over: both sides of the step, on a sample whose distance is known.
TEST(Tests, LargeSamplesGoOnSmoothly) {
  const auto tail = [](int32_t n) {
    Values x(static_cast<std::size_t>(n));
    for (int32_t i = 0; i < n; ++i) x[static_cast<std::size_t>(i)] = std::min(1.0, (i + 0.5) / n + 0.8 / std::sqrt(n));
    return stat_testByKSForFun(Fun(x, {0, 1}).handle, ORVANE_STAT_UNIFORM);
  };
  EXPECT_NEAR(tail(20000), tail(20001), 2e-7);
  EXPECT_NEAR(tail(20000), 0.5440, 0.01);  // the limit law at 0.8
}

TEST(Descriptive, QuantilePlotSegmentsOrderAngles) {
  const Values x = {2, 1, 2, 5, 2 + 1e-9, 7, 9};
  Values a(7), b(7), p(7);
  ASSERT_EQ(data_normQQData(x.data(), 7, a.data(), b.data(), p.data()), 5);
  EXPECT_EQ(a[1], 2);
  EXPECT_DOUBLE_EQ(b[1], 2.5 / 7);
  const double mean = 24.0 / 5, sd = std::sqrt((3.8 * 3.8 + 2.8 * 2.8 + 0.2 * 0.2 + 2.2 * 2.2 + 4.2 * 4.2) / 4);
  EXPECT_NEAR(p[3], std::erfc((mean - 7) / (sd * std::numbers::sqrt2)) / 2, 1e-15);

  Values many(1000), order(1000), ranks(1000), law(1000);  // enough of them for another way of sorting
  for (std::size_t i = 0; i < many.size(); ++i)
    many[i] = std::sin(static_cast<double>(i * i)) * std::pow(10, i % 7) / 3;
  many[17] = -kInf;
  ASSERT_EQ(data_normQQData(many.data(), 1000, order.data(), ranks.data(), law.data()), 1000);
  std::sort(many.begin(), many.end());
  EXPECT_EQ(order, many);
  many[3] = many[500] = std::nan("");
  data_normQQData(many.data(), 1000, order.data(), ranks.data(), law.data());
  EXPECT_EQ(order[500], many[502]);
  EXPECT_TRUE(std::isnan(order[998]) && std::isnan(order[999]));

  Values centres(4), counts(4);
  data_segmentCount(x.data(), 7, 4, centres.data(), counts.data());
  EXPECT_EQ(centres, (Values{2, 4, 6, 8}));
  EXPECT_EQ(counts, (Values{4, 0, 1, 2}));
  data_segmentCount(Values(3, 6.0).data(), 3, 2, centres.data(), counts.data());
  EXPECT_EQ(counts[0] + counts[1], 3);

  Values sorted = {3, std::nan(""), 1, 2};
  std::vector<uint32_t> index(4);
  data_sort(sorted.data(), 4, index.data(), false);
  EXPECT_EQ(index, (std::vector<uint32_t>{0, 3, 2, 1}));
  EXPECT_EQ(sorted[2], 1);

  constexpr double kTurn = 2 * std::numbers::pi;
  EXPECT_NEAR(data_calcMeanAngle(Values{0.1, kTurn - 0.3, kTurn + 0.1}.data(), 3), kTurn - 0.1 / 3, 1e-14);
  EXPECT_NEAR(data_calcMeanAngle(Values{-3 * kTurn + 1, 2}.data(), 2), 1.5, 1e-14);
  EXPECT_TRUE(std::isnan(data_calcMeanAngle(nullptr, 0)));
}

}  // namespace
