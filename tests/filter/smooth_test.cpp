// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <functional>
#include <numeric>

#include "filter/support.h"

namespace {

using Smoother = std::function<void(const double*, double*, int32_t, int32_t)>;

Numbers smoothed(const Smoother& f, const Numbers& x, int32_t width) {
  Numbers y(x.size(), 7.0), inPlace = x;
  f(x.data(), y.data(), count(x), width);
  f(inPlace.data(), inPlace.data(), count(x), width);
  expectNear(inPlace, y, 0.0, "in place");
  return y;
}

/// The window of a point under the border rule.
Numbers windowAt(const Numbers& x, int64_t i, int64_t width) {
  Numbers w;
  for (int64_t k = i - width / 2; k < i - width / 2 + width; ++k)
    w.push_back(x[static_cast<std::size_t>(std::clamp<int64_t>(k, 0, static_cast<int64_t>(x.size()) - 1))]);
  return w;
}

Numbers byWindow(const Numbers& x, int32_t width, const std::function<double(Numbers)>& statistic) {
  if (width < 1 || width >= count(x)) return x;
  Numbers y;
  for (int64_t i = 0; i < count(x); ++i) y.push_back(statistic(windowAt(x, i, width)));
  return y;
}

double total(const Numbers& w) { return std::accumulate(w.begin(), w.end(), 0.0); }
double mean(const Numbers& w) { return total(w) / static_cast<double>(w.size()); }
double median(Numbers w) {
  std::ranges::sort(w, [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
  return w.size() % 2 == 1 ? w[w.size() / 2] : (w[w.size() / 2 - 1] + w[w.size() / 2]) / 2;
}
/// NaN is passed over.
double greatest(const Numbers& w) {
  double best = kNaN;
  for (const double v : w) best = std::fmax(best, v);
  return best;
}
double least(Numbers w) {
  for (double& v : w) v = -v;
  return -greatest(w);
}

std::function<double(Numbers)> weighted(const std::function<double(int64_t)>& f, bool normalise) {
  return [=](const Numbers& w) {
    double sum = 0, weights = 0;
    for (std::size_t k = 0; k < w.size(); ++k) {
      const double weight = f(static_cast<int64_t>(k));
      sum += weight * w[k];
      weights += weight;
    }
    return normalise ? sum / weights : sum;
  };
}

TEST(Windowed, EveryStatisticAgainstItsDefinition) {
  Numbers odd = drawn(70, 1);
  odd[9] = kNaN;
  odd[30] = kInf;
  odd[50] = -kInf;
  std::fill_n(odd.begin() + 60, 5, kNaN);
  for (const std::size_t n : {0u, 1u, 2u, 5u, 40u, 133u, 70u}) {
    Numbers x = n == 70 ? odd : drawn(n, 2);
    for (std::size_t i = 0; n == 40 && i < n; i += 3) x[i] = 0.25;  // ties
    for (const int32_t width : {-1, 0, 1, 2, 3, 4, 7, 16, 39, 40, 41, 69, 2147483647}) {
      const int64_t h = width / 2;
      const auto what = "n " + std::to_string(n) + ", width " + std::to_string(width);
      const double shift = n == 0 ? 0 : std::min(0.0, least(x));  // kept: MeanSquared_least
      expectNear(smoothed(filterByMaxFilter, x, width), byWindow(x, width, greatest), 0, "max " + what);
      expectNear(smoothed(filterByMinFilter, x, width), byWindow(x, width, least), 0, "min " + what);
      expectNear(smoothed(filterByMedianFilter, x, width), byWindow(x, width, median), 1e-15, "median " + what);
      expectNear(smoothed(filterByMeanFilter, x, width), byWindow(x, width, mean), 1e-14, "mean " + what);
      if (n != 70)
        expectNear(smoothed(filterByMeanSquaredFilter, x, width),
                   byWindow(x, width,
                            [&](const Numbers& w) {
                              double sum = 0;
                              for (const double v : w) sum += (v - shift) * (v - shift);
                              return std::sqrt(sum / static_cast<double>(w.size()));
                            }),
                   1e-14, "mean square " + what);
      const auto away = [h](int64_t k) { return static_cast<double>(h + 1 - std::abs(k - h)); };
      expectNear(smoothed(filterBySqrtFilter, x, width),
                 byWindow(x, width, weighted([&](int64_t k) { return std::sqrt(away(k)); }, true)), 1e-14,
                 "sqrt " + what);
      expectNear(smoothed(filterBySquaredFilter, x, width),
                 byWindow(x, width, weighted([&](int64_t k) { return away(k) * away(k); }, true)), 1e-14,
                 "squared " + what);
    }
  }
  // Parts at length, with ties, values that differ in their last bits only, and two far levels with others between.
  const Numbers plain = drawn(20000, 3);
  for (const auto& shape : std::vector<std::function<double(double, std::size_t)>>{
           [](double v, std::size_t) { return std::floor(64 * v); },
           [](double v, std::size_t) { return 1 + v * 1e-13; },
           [](double v, std::size_t i) { return i < 9000 ? v : (i % 2 == 0 ? 10 : -10) + v; }})
    for (const int32_t width : {16, 17, 500, 501, 4001, 19999}) {
      Numbers x = plain;
      for (std::size_t i = 0; i < x.size(); ++i) x[i] = shape(x[i], i);
      const Numbers y = smoothed(filterByMedianFilter, x, width);
      for (int64_t i = 0; i < 20000; i += 397)
        EXPECT_EQ(y[static_cast<std::size_t>(i)], median(windowAt(x, i, width))) << i << " " << width;
    }
}

TEST(Windowed, ShrinkingEdges) {  // kept: Window_edges
  for (const std::size_t n : {0u, 1u, 6u, 50u})
    for (const int32_t width : {-3, 1, 2, 3, 6, 48, 49, 50, 99}) {
      const Numbers x = drawn(n, 4);
      for (const auto& [f, statistic] :
           {std::pair(&data_smoothByWindowMean, std::function<double(Numbers)>(mean)),
            std::pair(&data_smoothByWindowMedian, std::function<double(Numbers)>(median))}) {
        Numbers expected = x, y(n, 7.0);
        if (width >= 2 && width + 1 < count(x)) {
          expected = byWindow(x, width, statistic);
          for (int32_t i = 0; i < width / 2; ++i) {
            expected[static_cast<std::size_t>(i)] = statistic(Numbers(x.begin(), x.begin() + i + 1));
            expected[n - 1 - static_cast<std::size_t>(i)] = statistic(Numbers(x.end() - i - 1, x.end()));
          }
        }
        f(x.data(), count(x), width, y.data());
        expectNear(y, expected, 1e-14, "n " + std::to_string(n) + ", width " + std::to_string(width));
      }
    }
}

TEST(Kernels, ConvolutionRadialAndWeights) {
  const Numbers x = drawn(60, 5), kernel = drawn(8, 6);
  for (const int32_t width : {0, 1, 2, 7, 8})
    expectNear(smoothed([&](auto in, auto out, auto n, auto w) { filterByConvFilter(in, out, n, kernel.data(), w); }, x,
                        width),
               byWindow(x, width, weighted([&](int64_t k) { return kernel[static_cast<std::size_t>(k)]; }, false)),
               1e-14, "kernel");
  EXPECT_EQ(smoothed([](auto in, auto out, auto n, auto w) { filterByConvFilter(in, out, n, nullptr, w); }, x, 5), x);
  for (const ReferenceRow& row : readReference("filter/radial.csv")) {
    const auto kind = static_cast<uint8_t>(row.arguments[0]);
    const auto half = static_cast<int32_t>(row.arguments[1]);
    Numbers spike(20, 0.0), y(20, 7.0);
    spike[10] = 1;  // a spike shows the kernel
    filterByRadialFun(spike.data(), y.data(), 20, half, row.arguments[2], kind);
    const auto j = static_cast<std::size_t>(row.arguments[3]);
    EXPECT_NEAR(y[10 + j], row.expected, row.ulps) << row.text;
    EXPECT_NEAR(y[10 - j], row.expected, row.ulps) << row.text;
  }
  for (const int32_t half : {-1, 30, 2147483647})
    EXPECT_EQ(smoothed([](auto in, auto out, auto n, auto w) { filterByRadialFun(in, out, n, w, 1.0, 5); }, x, half),
              x);
  for (const uint8_t kind : {0, 20, 255})
    EXPECT_EQ(smoothed(
                  [&](auto in, auto out, auto n, auto w) {
                    if (in != out) std::copy_n(in, n, out);
                    filterByRadialFun(in, out, n, w, 1.0, kind);
                  },
                  x, 3),
              x);
}

TEST(Kernels, MeansByWeights) {
  const Numbers weights = drawn(12, 7);
  for (const std::size_t n : {0u, 1u, 4u, 11u, 12u, 40u})
    for (const int32_t width : {-1, 0, 1, 2, 5, 12}) {
      const Numbers x = drawn(n, 8);
      Numbers inside = x, reflected = x;
      const auto size = static_cast<int64_t>(n);
      for (int64_t i = 0; width > 0 && i < size; ++i) {
        double sum = 0, all = 0, mirrored = 0, whole = 0;
        for (int64_t k = 0; k < width; ++k) {
          const double w = weights[static_cast<std::size_t>(k)];
          int64_t at = i - (width - 1) / 2 + k;
          whole += w;
          if (at >= 0 && at < size) {
            sum += w * x[static_cast<std::size_t>(at)];
            all += w;
          }
          while (at < 0 || at >= size) at = at < 0 ? -1 - at : 2 * size - 1 - at;
          mirrored += w * x[static_cast<std::size_t>(at)];
        }
        inside[static_cast<std::size_t>(i)] = sum / all;
        reflected[static_cast<std::size_t>(i)] = mirrored / whole;
      }
      const auto call = [&](auto f) {
        return [&weights, f](auto in, auto out, auto m, auto w) { f(in, out, m, weights.data(), w); };
      };
      expectNear(smoothed(call(data_Smooth1D), x, width), inside, 2e-13, "inside");
      expectNear(smoothed(call(data_Smooth1D2), x, width), reflected, 2e-13, "reflected");
    }
}

TEST(LocalPolynomials, SavitzkyGolayAndPieces) {
  Numbers x(60);
  for (std::size_t i = 0; i < 60; ++i) x[i] = static_cast<double>((i * 7919) % 101) / 8;
  const auto golay = [](double dt, int32_t degree) {
    return [=](auto in, auto out, auto n, auto width) { filterBySavitzkyGolay(in, out, n, dt, degree, width); };
  };
  for (const ReferenceRow& row : readReference("filter/savgol.csv")) {
    const auto width = static_cast<int32_t>(row.arguments[0]), degree = static_cast<int32_t>(row.arguments[1]);
    const Numbers y = smoothed(golay(0.3, degree), x, width);
    EXPECT_NEAR(y[static_cast<std::size_t>(row.arguments[2])], row.expected, row.ulps) << row.text;
    EXPECT_EQ(smoothed(golay(1e9, degree), x, width - 1 + width % 2), y);
  }
  expectNear(smoothed(golay(1, 99), x, 41), x, 1e-12, "as many coefficients as points");
  expectNear(smoothed(golay(0, 3), x, 5), byWindow(x, 5, mean), 1e-13, "no spacing");
  EXPECT_TRUE(std::isnan(smoothed(golay(kNaN, 3), x, 5)[30]));
  for (const int32_t width : {0, 60, 61, 2147483647}) EXPECT_EQ(smoothed(golay(1, 2), x, width), x);

  const auto local = [](int32_t degree, int32_t step) {
    return [=](auto in, auto out, auto n, auto width) { filterByNLSM(in, out, n, width, degree, step); };
  };
  expectNear(smoothed(local(3, 1), x, 11), smoothed(golay(1, 3), x, 11), 1e-12, "step 1");
  Numbers cubic(60);
  for (std::size_t i = 0; i < 60; ++i) cubic[i] = std::pow(static_cast<double>(i) / 20 - 1, 3);
  const Numbers followed = smoothed(local(3, 7), cubic, 12);
  for (std::size_t i = 7; i < 53; ++i) EXPECT_NEAR(followed[i], cubic[i], 1e-13) << i;  // inner windows know no border
  const Numbers held = smoothed(local(0, 4), x, 5);
  for (std::size_t i = 0; i < 60; ++i)
    EXPECT_NEAR(held[i], mean(windowAt(x, static_cast<int64_t>(i - i % 4), 5)), 1e-13);
  for (const auto& [degree, step] : {std::pair(-5, -5), {1000000, 1}, {2, 2147483647}})
    EXPECT_EQ(smoothed(local(degree, step), x, 5).size(), 60u);
  EXPECT_EQ(smoothed(local(2, 3), x, 60), x);
}

TEST(PointFilters, LimitsAndKalman) {
  const Numbers x{1, 1.5, 9, 1.2, kNaN, 2, -3};
  const auto run = [&](auto f) { return smoothed([&](auto in, auto out, auto n, auto) { f(in, out, n); }, x, 0); };
  expectNear(run([](auto in, auto out, auto n) { filterByHardLimitFilter(in, out, n, 0.5, 1.0); }),
             {1, 1.5, 9, 1, kNaN, 2, -3}, 0, "hard limit");
  expectNear(run([](auto in, auto out, auto n) { filterByLimitAmpFilter(in, out, n, 2.0); }),
             {1, 1.5, 1.5, 1.2, kNaN, 2, 2}, 0, "limited steps");
  expectNear(run([](auto in, auto out, auto n) { filterByEKF(in, out, n, 1, 0, 1, 1, 0); }),
             {1, 1.5, 9, 1.2, kNaN, kNaN, kNaN}, 1e-14, "without noise the measurement");
  // x = z/2, P = 1, K = 1/2: 3/4 of the first z; then x = 3/4 + 3/4, so that the second z changes nothing.
  Numbers y(2);
  filterByEKF(x.data(), y.data(), 2, 1, 0.5, 1, 1, 1);
  expectNear(y, {0.75, 1.5}, 1e-15, "Kalman by hand");
  filterByEKF(x.data(), y.data(), 0, 1, 0.5, 1, 1, 1);
  filterByLimitAmpFilter(x.data(), y.data(), -1, 1);
}

/// (I + lambda D'D) y - x, which is 0 for the solution.
double whittakerResidual(const Numbers& x, const Numbers& y, double lambda) {
  Numbers r(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) r[i] = y[i] - x[i];
  for (std::size_t i = 0; i + 2 < x.size(); ++i) {
    const double d = lambda * (y[i] - 2 * y[i + 1] + y[i + 2]);
    r[i] += d;
    r[i + 1] -= 2 * d;
    r[i + 2] += d;
  }
  return std::abs(*std::ranges::max_element(r, {}, [](double v) { return std::abs(v); }));
}

TEST(Whittaker, SolvesItsSystem) {
  for (const std::size_t n : {4u, 5u, 6u, 7u, 100u, 30000u})
    for (const double lambda : {0.0, 0.3, 10.0, 1e5}) {
      const Numbers x = drawn(n, 9);
      const Numbers y =
          smoothed([&](auto in, auto out, auto m, auto) { data_SmoothWhittaker1D(in, m, lambda, out); }, x, 0);
      EXPECT_LT(whittakerResidual(x, y, lambda), 2e-15 * (1 + 16 * lambda)) << n << ", lambda " << lambda;
    }
  Numbers y(5);
  for (const auto& [n, lambda] : {std::pair(3, 5.0), {5, -1.0}, {0, 1.0}, {-4, 1.0}}) {
    const Numbers x = drawn(5, 1);
    y = x;
    data_SmoothWhittaker1D(x.data(), n, lambda, y.data());
    EXPECT_EQ(y, x);
  }
  const Numbers table = drawn(6 * 5, 2);
  std::vector<const double*> rows;
  for (std::size_t r = 0; r < 6; ++r) rows.push_back(table.data() + 5 * r);
  Numbers down(30), both(30), expected(30), column(6), smooth(6);
  api_DataSmooth(rows.data(), down.data(), 3.0, -1.0, 6, 5);
  api_DataSmooth(rows.data(), both.data(), 3.0, 2.0, 6, 5);
  for (std::size_t c = 0; c < 5; ++c) {
    for (std::size_t r = 0; r < 6; ++r) column[r] = table[5 * r + c];
    data_SmoothWhittaker1D(column.data(), 6, 3.0, smooth.data());
    for (std::size_t r = 0; r < 6; ++r) EXPECT_EQ(down[5 * r + c], smooth[r]);
  }
  for (std::size_t r = 0; r < 6; ++r) data_SmoothWhittaker1D(down.data() + 5 * r, 5, 2.0, expected.data() + 5 * r);
  expectNear(both, expected, 1e-14, "columns and rows");
  api_DataSmooth(rows.data(), both.data(), 1, 1, 6, 0);
  api_DataSmooth(rows.data(), both.data(), 1, 1, -6, 5);
  expectNear(both, expected, 1e-14, "empty");
}

Numbers line(const Numbers& data, int32_t m, double tol) {
  SmoothLine* handle = api_SmoothLine_Create(data.data(), count(data), m, tol);
  Numbers y(data.size(), 7.0);
  EXPECT_EQ(api_SmoothLine_GetRes(handle, nullptr), count(data));
  EXPECT_EQ(api_SmoothLine_GetRes(handle, y.data()), count(data));
  api_FreeHandle(handle);
  return y;
}

double roughness(const Numbers& x) {
  double sum = 0;
  for (std::size_t i = 0; i + 2 < x.size(); ++i) sum += std::pow(x[i] - 2 * x[i + 1] + x[i + 2], 2);
  return sum;
}

TEST(SmoothingLine, WithinItsToleranceAndSmooth) {
  Numbers noisy = drawn(3000, 11), curve(3000), cubic(500);
  for (std::size_t i = 0; i < noisy.size(); ++i) {
    curve[i] = 20 * std::sin(static_cast<double>(i) / 150) + (i > 2000 ? 30.0 : 0.0);
    noisy[i] += curve[i] - 0.1;
  }
  for (const int32_t m : {0, 1, 3, 6})
    for (const double tol : {0.7, 2.0}) {
      const Numbers y = line(noisy, m, tol);
      double farthest = 0;
      for (std::size_t i = 0; i < y.size(); ++i) farthest = std::max(farthest, std::abs(y[i] - noisy[i]));
      EXPECT_LE(farthest, tol * (1 + 1e-14)) << m;
      EXPECT_GT(farthest, 0.5 * tol) << m;
      if (m > 1) {
        EXPECT_LT(roughness(y) - 1800, 0.05 * roughness(noisy)) << m;  // 1800 is the step's own
      }
    }
  for (std::size_t i = 0; i < 500; ++i) cubic[i] = std::pow(static_cast<double>(i) / 100 - 2, 3);
  expectNear(line(cubic, 3, 1e-9), cubic, 1e-12, "one piece of its own kind");
  for (const double tol : {0.0, -1.0, kNaN}) expectNear(line(noisy, 2, tol), noisy, 1e-13, "interpolated");
  noisy[100] = kInf;
  noisy[700] = kNaN;
  const Numbers broken = line(noisy, 2, 1.0);
  EXPECT_TRUE(std::isfinite(broken[50]) && std::isfinite(broken[400]) && std::isfinite(broken[2999]));
  for (const int32_t m : {-1, 5, 2147483647})
    for (const std::size_t n : {0u, 1u, 2u}) expectNear(line(Numbers(n, 1.5), m, 0.1), Numbers(n, 1.5), 1e-15, "few");
}

TEST(Derivatives, PolynomialsNoiseAndEdges) {
  const std::size_t n = 40;
  Numbers x(n), uneven(n), y(n), yUneven(n), slope(n), slopeUneven(n), dy(n, 7.0);
  const auto f = [](double t) { return 1 - t + 2 * t * t * t - 0.5 * t * t * t * t; };
  const auto df = [](double t) { return -1 + 6 * t * t - 2 * t * t * t; };
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = 0.1 * static_cast<double>(i);
    uneven[i] = x[i] + 0.04 * std::sin(5.0 * static_cast<double>(i));
    y[i] = f(x[i]);
    yUneven[i] = f(uneven[i]);
    slope[i] = df(x[i]);
    slopeUneven[i] = df(uneven[i]);
  }
  data_calcDataDiffBySameDh(y.data(), 40, 0.1, dy.data());
  expectNear(dy, slope, 1e-12, "even");
  data_calcDataDiffByUnSameDh(uneven.data(), yUneven.data(), 40, dy.data());
  expectNear(dy, slopeUneven, 1e-11, "uneven");
  data_calcDataDiffByPiecePoly(uneven.data(), yUneven.data(), 40, 4, 9, dy.data());
  expectNear(dy, slopeUneven, 1e-11, "pieces");

  // A line through the cubes of x over 2m + 1 points h apart rises by 3x^2 + h^2 (3m^2 + 3m - 1)/5.
  for (std::size_t i = 0; i < n; ++i) y[i] = x[i] * x[i] * x[i];
  data_calcDataDiffByPiecePoly(x.data(), y.data(), 40, 1, 9, dy.data());
  EXPECT_NEAR(dy[20], 3 * x[20] * x[20] + 0.01 * 59 / 5, 1e-12);

  for (int32_t m = 0; m <= 4; ++m) {
    Numbers few(static_cast<std::size_t>(m), 7.0);
    data_calcDataDiffByUnSameDh(uneven.data(), uneven.data(), m, few.data());
    expectNear(few, Numbers(few.size(), m == 1 ? 0.0 : 1.0), 1e-14, "few points of a line");
    data_calcDataDiffBySameDh(uneven.data(), m, 0.0, few.data());
    for (const auto& [degree, width] : {std::pair(-1, -1), {3, 1000000}, {1, 1}})
      data_calcDataDiffByPiecePoly(uneven.data(), uneven.data(), m, degree, width, few.data());
    EXPECT_EQ(calFirstOrderDiff(x.data(), m, few.data()), std::max(m - 1, 0));
    if (m > 1) {
      EXPECT_EQ(few[0], x[1] - x[0]);
    }
  }
}

TEST(Derivatives, LineBetweenTwoPoints) {
  const auto at = [](double x0, double x1, const Numbers& x) {
    Numbers y(x.size());
    if (x0 <= x1)
      data_calcSmoothLineIn2Point(x0, 1.0, 0.5, x1, 3.0, -1.0, x.data(), y.data(), count(x));
    else
      data_calcSmoothLineIn2Point(x0, 3.0, -1.0, x1, 1.0, 0.5, x.data(), y.data(), count(x));
    return y;
  };
  // t = 1/2: (y0 + y1)/2 + width (s0 - s1)/8 = 2 + 2 * 1.5/8.
  expectNear(at(2, 4, {0, 2, 3, 4, 5}), {0, 1, 2.375, 3, 2}, 1e-15, "cubic and lines");
  EXPECT_EQ(at(4, 2, {0, 2, 3, 4, 5}), at(2, 4, {0, 2, 3, 4, 5}));
  expectNear(at(2, 2, {1, 2, 3}), {0.5, 1, 2}, 1e-15, "one abscissa");
  const double h = 1e-6;
  const Numbers near = at(2, 4, {2, 2 + h, 4 - h, 4});
  EXPECT_NEAR((near[1] - near[0]) / h, 0.5, 1e-5);
  EXPECT_NEAR((near[3] - near[2]) / h, -1.0, 1e-5);
}

}  // namespace
