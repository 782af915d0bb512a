// SPDX-License-Identifier: Apache-2.0
#include <complex>
#include <map>

#include "filter/support.h"

namespace {

int32_t integer(double x) { return static_cast<int32_t>(x); }

/// A window of n points as a host sees it: a design with it over one without, at an edge so low that the ideal response
/// is nowhere near a zero.
Numbers windowOf(int32_t code, int32_t n, const Numbers& params) {
  Fir fir(ORVANE_FILTER_LOW_PASS, 1e-9, 0, n);
  const Numbers plain = fir.design(-1, kInf);
  Numbers w = fir.design(code, kInf, params);
  for (std::size_t i = 0; i < w.size(); ++i) w[i] /= plain[i];
  return w;
}

TEST(Windows, EveryRowAgainstItsFormula) {
  std::map<std::vector<double>, Numbers> made;
  std::map<int32_t, int> seen;
  for (const ReferenceRow& row : readReference("filter/windows.csv")) {
    const Numbers params(row.arguments.begin() + 3, row.arguments.end());
    std::vector<double> key{row.arguments[0], row.arguments[1]};
    key.insert(key.end(), params.begin(), params.end());
    if (!made.contains(key)) made[key] = windowOf(integer(key[0]), integer(key[1]), params);
    const double got = made[key][static_cast<std::size_t>(row.arguments[2])];
    EXPECT_EQ(std::isnan(got), std::isnan(row.expected)) << row.text;
    if (!std::isnan(row.expected)) {
      EXPECT_NEAR(got, row.expected, row.ulps * 0x1p-52) << row.text;
    }
    ++seen[integer(key[0])];
  }
  EXPECT_EQ(seen.size(), 25u);
}

TEST(Windows, OddValuesThatStay) {
  for (const double w : windowOf(ORVANE_WINDOW_BARTLETT_HANN, 5, {0.0}))  // kept: BartlettHann_integer
    EXPECT_TRUE(std::abs(w) < 1e-15 || std::abs(w - 0.38) < 1e-15 || std::abs(w - 0.76) < 1e-15) << w;
  EXPECT_TRUE(std::isnan(windowOf(ORVANE_WINDOW_LANCZOS, 33, {})[16]));  // kept: Lanczos_centre
  const Numbers confined = windowOf(ORVANE_WINDOW_CONFINED_GAUSSIAN, 8, {});
  EXPECT_GT(confined[3], 1.5 * confined[4]);  // kept: ConfinedGaussian_middle
  const Numbers parzen = windowOf(ORVANE_WINDOW_PARZEN, 8, {});
  EXPECT_NEAR(parzen[2], 2 * std::pow(0.625, 3), 1e-15);  // kept: Parzen_quarter; the cubic inside gives 0.4726...
  Fir odd(ORVANE_FILTER_LOW_PASS, 100, 0, 33);
  odd.design(ORVANE_WINDOW_LANCZOS, kInf);
  EXPECT_FALSE(fir_judgeCoefficient(odd.handle));
}

TEST(Windows, ParametersAndEdges) {
  Fir fir(ORVANE_FILTER_LOW_PASS, 100, 0, 9);
  EXPECT_EQ(fir_getWindowParam(fir.handle, 1), 0);
  const std::map<int32_t, Numbers> defaults{{1, {0.16}},  {4, {0.06}},  {6, {0.16, 0.36}}, {8, {0.12}},
                                            {10, {0.56}}, {12, {1.6}},  {13, {5.6}},       {17, {0.25}},
                                            {18, {2}},    {22, {0.36}}, {23, {1, 0.2}}};
  for (const auto& [code, values] : defaults) {
    fir_setWindow(fir.handle, code);
    for (std::size_t k = 0; k < values.size(); ++k)
      EXPECT_EQ(fir_getWindowParam(fir.handle, static_cast<int32_t>(k) + 1), values[k]) << code;
    fir_setWindowParam(fir.handle, 0.4);
    EXPECT_EQ(fir_getWindowParam(fir.handle, 1), 0.4);
    EXPECT_EQ(fir_getWindowParam(fir.handle, 9), 0);
  }
  EXPECT_EQ(windowOf(ORVANE_WINDOW_HAMMING, 9, {0.5}), windowOf(ORVANE_WINDOW_HANNING, 9, {}));
  EXPECT_EQ(windowOf(ORVANE_WINDOW_TUKEY, 9, {0.1}), Numbers(9, 1.0));
  for (const int32_t none : {25, -1, 255}) EXPECT_EQ(windowOf(none, 9, {3.0}), Numbers(9, 1.0));
  for (int32_t code = 0; code < 25; ++code)  // what breaks these would be memory, not values
    for (const int32_t n : {1, 2, 3})
      for (const double p : {kNaN, kInf, -kInf, -3.0, 0.0, 1e300, 2.5})
        EXPECT_EQ(windowOf(code, n, {p, p, p}).size(), static_cast<std::size_t>(n));
}

TEST(FirDesign, AgainstSciPy) {
  for (const ReferenceRow& row : readReference("filter/designs.csv")) {
    const Numbers& a = row.arguments;
    Fir fir(static_cast<uint8_t>(a[0]), a[5], a[6], integer(a[1]));
    const Numbers h = fir.design(integer(a[2]), a[4] != 0 ? 1.0 : 1e101, a[3] < 0 ? Numbers() : Numbers{a[3]});
    EXPECT_NEAR(h[static_cast<std::size_t>(a[7])], row.expected, row.ulps) << row.text;
  }
}

TEST(FirDesign, SumAndOddities) {
  const auto sum = [](const Numbers& h) {
    double s = 0;
    for (const double value : h) s += value;
    return s;
  };
  Fir low(ORVANE_FILTER_LOW_PASS, 100, 0, 21);
  EXPECT_NEAR(sum(low.design(ORVANE_WINDOW_HAMMING, 2.5)), 2.5, 1e-14);
  Fir high(ORVANE_FILTER_HIGH_PASS, 100, 0, 4);  // kept: Norm_sum; such a high-pass has a sum of its own
  const double plain = sum(high.design(-1, 1e101));
  EXPECT_NEAR(sum(high.design(-1, 1.0)), plain > 0 ? 1.0 : -1.0, 1e-13);
  Fir band(ORVANE_FILTER_BAND_PASS, 200, 100, 21);  // kept: Norm_negative; exchanged edges give the negative filter
  EXPECT_LT(sum(band.design(-1, 1e101)), -1e-3);
  EXPECT_NEAR(sum(band.design(-1, 3.0)), -3.0, 1e-13);

  Fir empty(ORVANE_FILTER_LOW_PASS, 100, 0, 0);
  fir_createIIR(empty.handle);
  fir_solveByWindow(empty.handle);  // nothing to design: the recursive filter stays live
  const double one[] = {1.0, 2.0}, two[] = {2.0};
  fir_setIIRCoefficient(empty.handle, one, two, 2, 1);
  EXPECT_EQ(empty.run({1, 0, 0}).second, Numbers({0.5, 1, 0}));
  for (const uint8_t none : {4, 77, 255}) {
    fir_setType(low.handle, none);
    EXPECT_NEAR(sum(low.design(-1, 9.0)), 2.5, 1e-14);
  }
  Fir many(ORVANE_FILTER_LOW_PASS, 100, 0, 2000);  // kept: SetCoefficient_sampling
  const Numbers values(2000, 1.0);
  EXPECT_FALSE(fir_setCoefficient(many.handle, values.data()));
  fir_setSamplingFrequency(many.handle, 2000);
  EXPECT_TRUE(fir_setCoefficient(many.handle, values.data()));
  EXPECT_EQ(many.coefficients(), values);
  EXPECT_FALSE(fir_setCoefficient(empty.handle, values.data()));
}

TEST(FirFilter, ConvolutionAndBlowUp) {
  for (const std::size_t taps : {1u, 2u, 7u, 40u})
    for (const std::size_t n : {1u, 5u, 33u, 700u}) {
      Fir fir(ORVANE_FILTER_LOW_PASS, 100, 0, static_cast<int32_t>(taps));
      const Numbers h = drawn(taps, 3), x = drawn(n, 4);
      fir_setCoefficient(fir.handle, h.data());
      Numbers expected(n, 0.0);
      for (std::size_t i = 0; i < n; ++i)
        for (std::size_t k = 0; k < std::min(i + 1, taps); ++k) expected[i] += h[k] * x[i - k];
      expectNear(fir.run(x).second, expected, 1e-14, "causal");
    }
  Fir fir(ORVANE_FILTER_LOW_PASS, 100, 0, 2);
  EXPECT_EQ(fir.run({}), std::make_pair(true, Numbers()));
  const double h[] = {1.0, 1.0};
  fir_setCoefficient(fir.handle, h);
  EXPECT_EQ(fir.run({1, 2, kNaN, 4}), std::make_pair(false, Numbers({1, 3, 0, 0})));
  EXPECT_EQ(fir.run({1, 1e101, 4}), std::make_pair(false, Numbers({1, 0, 0})));
  for (const double bad : {kNaN, kInf}) {  // a coefficient is met at its own place
    const double later[] = {1.0, bad};
    fir_setCoefficient(fir.handle, later);
    EXPECT_EQ(fir.run({5, 0, 3}), std::make_pair(false, Numbers({5, 0, 0})));
    EXPECT_EQ(fir.run({5}), std::make_pair(true, Numbers({5})));
  }
  fir_setMethod(fir.handle, 1);  // centred, but nothing solved
  EXPECT_EQ(fir.run({1, 2}), std::make_pair(false, Numbers(2, 0.0)));
}

TEST(IIRDesign, CoefficientsOfTheExactDesign) {
  std::map<std::vector<double>, Numbers> made;
  for (const ReferenceRow& row : readReference("filter/iir.csv")) {
    const Numbers& a = row.arguments;
    const std::vector<double> key(a.begin(), a.begin() + 4);
    if (!made.contains(key)) {
      const bool band = a[1] > 1;
      Fir fir(static_cast<uint8_t>(a[1]), band ? 100 : 150, 200, integer(a[2]));
      EXPECT_TRUE(fir_solveByIIR(fir.handle, 1.0, static_cast<uint8_t>(a[0])));
      EXPECT_TRUE(fir_judgeCoefficient(fir.handle));
      made[key] = fir.recursive(a[3] == 0);
    }
    const double got = made[key].at(static_cast<std::size_t>(a[4]));
    EXPECT_LE(row.expected == 0 ? std::abs(got) / 1e-300 : ulpError(got, row.expected), row.ulps) << row.text;
  }
}

TEST(IIRDesign, ResponseUpToTheOrdersThatDoublesCarry) {
  std::vector<double> last;
  Numbers b, d;
  for (const ReferenceRow& row : readReference("filter/response.csv")) {
    const Numbers& a = row.arguments;
    if (const std::vector<double> key(a.begin(), a.begin() + 3); key != last) {
      Fir fir(static_cast<uint8_t>(a[1]), a[1] > 1 ? 100 : 150, 200, integer(a[2]));
      ASSERT_TRUE(fir_solveByIIR(fir.handle, 2.0, static_cast<uint8_t>(a[0])));
      b = fir.recursive(true);
      d = fir.recursive(false);
      last = key;
    }
    const auto at = [&](const Numbers& c) {
      const std::complex<long double> z = std::polar(1.0L, -std::acos(-1.0L) * static_cast<long double>(a[3]));
      std::complex<long double> value = 0;
      for (std::size_t i = c.size(); i-- > 0;) value = value * z + static_cast<long double>(c[i]);
      return value;
    };
    EXPECT_NEAR(std::abs(at(b) / at(d)), 2 * row.expected, 2 * row.ulps) << row.text;
  }
}

TEST(IIRDesign, RefusalsAndCodes) {
  const auto designed = [](uint8_t type, double low, double high, int32_t order, double sampling = 1024) {
    Fir fir(type, low, high, order);
    fir_setSamplingFrequency(fir.handle, sampling);
    const bool made = fir_solveByIIR(fir.handle, 1.0, 0), filled = fir_judgeCoefficient(fir.handle);
    EXPECT_EQ(fir.run({1, 2}).first, filled);
    EXPECT_EQ(filled, !fir.recursive(true).empty());
    return std::pair(made, filled);
  };
  const std::pair sound(true, true), formulas(false, true), none(false, false);
  EXPECT_EQ(designed(0, 100, 0, 4), sound);
  for (const double edge : {0.0, -1.0, 512.0, 600.0, 1e300}) EXPECT_EQ(designed(0, edge, 0, 4), formulas) << edge;
  for (const double edge : {kNaN, kInf}) EXPECT_EQ(designed(0, edge, 0, 4), none) << edge;
  EXPECT_EQ(designed(1, 100, 0, 4, -5), formulas);
  for (const double sampling : {0.0, kNaN, kInf}) EXPECT_EQ(designed(1, 100, 0, 4, sampling), none) << sampling;
  EXPECT_EQ(designed(0, 100, 0, 201), none);
  EXPECT_EQ(designed(2, 200, 100, 4), formulas);
  EXPECT_EQ(designed(3, 100, 512, 4), formulas);
  EXPECT_EQ(designed(2, 258, 800, 4), formulas);
  for (const uint8_t type : {4, 9, 255}) EXPECT_EQ(designed(type, 100, 200, 4), none);
  for (uint8_t kind = 0; kind < 4; ++kind) {
    Fir plain(kind, 100, 200, 0), all(0, 512, 0, 3);
    EXPECT_TRUE(fir_solveByIIR(plain.handle, 2.5, kind));
    EXPECT_EQ(plain.recursive(true), Numbers{2.5});
    EXPECT_FALSE(fir_solveByIIR(all.handle, 1.0, 0));  // an edge of fs/2 passes all
    EXPECT_EQ(all.recursive(true), Numbers({1, 3, 3, 1}));
    EXPECT_EQ(all.recursive(false), Numbers({1, 3, 3, 1}));
  }
  Fir known(0, 100, 0, 3), unknown(0, 100, 0, 3);
  fir_solveByIIR(known.handle, 1.0, ORVANE_IIR_BUTTERWORTH);
  fir_solveByIIR(unknown.handle, 1.0, 77);
  EXPECT_EQ(known.recursive(false), unknown.recursive(false));
}

TEST(IIRFilter, RecursionAndBlowUp) {
  for (const std::size_t order : {0u, 1u, 3u, 8u, 16u, 23u})
    for (const std::size_t n : {1u, 20u, 512u, 1500u}) {
      Numbers a = drawn(order + 1, 5), b = drawn(order + 2, 6);
      a[0] = 1.5;
      for (std::size_t k = 1; k < a.size(); ++k) a[k] *= 1.2 / static_cast<double>(order);
      Fir fir(0, 100, 0, 1);
      const double none[] = {1.0};
      fir_setIIRCoefficient(fir.handle, none, none, 1, 1);  // no recursive filter yet
      EXPECT_TRUE(fir.recursive(true).empty());
      fir_createIIR(fir.handle);
      fir_setIIRCoefficient(fir.handle, b.data(), a.data(), count(b), count(a));
      const Numbers x = drawn(n, 7);
      std::vector<long double> expected(n, 0.0L);
      for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t k = 0; k < std::min(i + 1, b.size()); ++k)
          expected[i] += b[k] * static_cast<long double>(x[i - k]);
        for (std::size_t k = 1; k < std::min(i + 1, a.size()); ++k) expected[i] -= a[k] * expected[i - k];
        expected[i] /= a[0];
      }
      const auto [sound, y] = fir.run(x);
      EXPECT_TRUE(sound);
      expectNear(y, Numbers(expected.begin(), expected.end()), 1e-13, "recursive");
    }
  Fir unstable(0, 100, 0, 1);
  fir_createIIR(unstable.handle);
  const double b[] = {1.0}, a[] = {1.0, -10.0};
  fir_setIIRCoefficient(unstable.handle, b, a, 1, 2);
  const auto [sound, y] = unstable.run(Numbers(200, 1.0));
  EXPECT_FALSE(sound);
  EXPECT_NEAR(y[99] / 1.1111111111e99, 1, 1e-9);
  EXPECT_EQ(y[100], 0);
  const double later[] = {1.0, 0.5, kNaN};  // of either side, met at its own place
  for (const auto& [nb, na] : {std::pair(3, 1), {1, 3}}) {
    fir_setIIRCoefficient(unstable.handle, nb == 3 ? later : b, na == 3 ? later : b, nb, na);
    EXPECT_EQ(unstable.run({0, 8, 0}), std::make_pair(false, Numbers({0, 8, 0}))) << nb;
  }
  fir_setIIRCoefficient(unstable.handle, b, a, 1, 0);
  EXPECT_FALSE(unstable.run({1.0}).first);
}

}  // namespace
