// SPDX-License-Identifier: Apache-2.0
#include "filter/support.h"

namespace {

/// y[i] = sum of h[k] x[i - (K-1)/2 + k], zeros outside.
Numbers centred(const Numbers& h, const Numbers& x) {
  Numbers y(x.size(), 0.0);
  for (std::size_t i = 0; i < x.size(); ++i)
    for (std::size_t k = 0; k < h.size(); ++k) {
      const std::size_t at = i + k - (h.size() - 1) / 2;  // wraps to a huge index in front of the array
      if (at < x.size()) y[i] += h[k] * x[at];
    }
  return y;
}

TEST(LineSolver, FindsTheFilterOfItsRecords) {
  const std::vector<std::vector<Numbers>> filters{{{0.1, 0.3, 0.5, 0.3, 0.1}, {0.2, 0.4, 0.4, 0.2}, {2.0}},
                                                  {{0.1, 0.3, 0.5, -0.3, -0.1}, {0.2, 0.4, -0.4, -0.2}, {2.0}},
                                                  {{0.9, -0.3, 0.2, 0.7, 0.1}, {0.2, 0.4, -0.1, 0.6}, {1.5, 2.5}}};
  for (const uint8_t method : {0, 1, 2, 200})
    for (const Numbers& h : filters[std::min<std::size_t>(method, 2)]) {
      Fir fir(0, 100, 0, count(h));
      EXPECT_EQ(fir_solveByLineFIRSolver(fir.handle, method), 1e300);
      for (unsigned seed = 1; seed < 3; ++seed) {
        const Numbers x = drawn(40, seed), y = centred(h, x);
        fir_addSample(fir.handle, x.data(), y.data(), count(x));
      }
      EXPECT_LT(fir_solveByLineFIRSolver(fir.handle, method), 1e-24);
      expectNear(fir.coefficients(), h, 1e-13, "coefficients");
      const Numbers x = drawn(9, 8);
      expectNear(fir.run(x).second, centred(h, x), 1e-13, "centred run");
      EXPECT_FALSE(fir.run({1, kInf, 2}).first);
      fir_lineSolverClear(fir.handle);
      EXPECT_EQ(fir_solveByLineFIRSolver(fir.handle, method), 1e300);
    }
}

TEST(LineSolver, ErrorIsTheSumOverAllPoints) {
  Fir fir(0, 100, 0, 3);
  const Numbers x = drawn(30, 1), y = drawn(30, 2);
  fir_addSample(fir.handle, x.data(), y.data(), 30);
  const double error = fir_solveByLineFIRSolver(fir.handle, 2);
  const Numbers fitted = centred(fir.coefficients(), x);
  double sum = 0;
  for (std::size_t i = 0; i < x.size(); ++i) sum += (fitted[i] - y[i]) * (fitted[i] - y[i]);
  EXPECT_NEAR(error, sum, 1e-12);
  fir_setFilterOrder(fir.handle, 30);  // one full window for 30 unknowns
  EXPECT_EQ(fir_solveByLineFIRSolver(fir.handle, 2), 1e300);
  EXPECT_EQ(fir_getCoefficientSize(fir.handle), 30);  // not those of the design before
  fir_setFilterOrder(fir.handle, 0);
  EXPECT_EQ(fir_solveByLineFIRSolver(fir.handle, 2), 1e300);
}

struct Objective {
  Objective() = default;
  ~Objective() { api_FreeHandle(handle); }
  Objective(const Objective&) = delete;
  FilterObjective* handle = filter_Create();
};

TEST(Objective, ErrorOfGivenSamples) {
  Objective o;
  EXPECT_FALSE(filter_setFIROpt(o.handle, 0));
  EXPECT_FALSE(filter_setIIROpt(o.handle, 0, 3));
  EXPECT_TRUE(filter_setIIROpt(o.handle, 2, 1));
  const Numbers p{0.5, 0.25, -0.3}, angle{0.0, 1.0, 3.0}, target{1.0, 0.5, 0.0};
  EXPECT_EQ(filter_optFun(o.handle, p.data()), 0);
  filter_setSampleData(o.handle, angle.data(), target.data(), 3);
  filter_setImagWeight(o.handle, -2.0);
  double expected = 0;
  for (std::size_t k = 0; k < 3; ++k) {  // kept: OptFun_product
    const double c = std::cos(angle[k]), s = std::sin(angle[k]);
    const double bc = 0.5 + 0.25 * c, bs = 0.25 * s, ac = 1 - 0.3 * c, as = -0.3 * s;
    expected += std::pow(target[k] - (as * bs + ac * bc), 2) + 4 * std::pow(bs * ac + as * bc, 2);
  }
  EXPECT_NEAR(filter_optFun(o.handle, p.data()), expected, 1e-14);
  const Numbers b{0.5, 0.25}, a{1.0, -0.3};
  EXPECT_NEAR(filter_calcErrorByIIR(o.handle, b.data(), a.data(), 2, 2), expected, 1e-14);
  EXPECT_EQ(filter_calcErrorByIIR(o.handle, nullptr, nullptr, 0, 0), 1.25);
}

TEST(Objective, GridFromWhatIsAsked) {
  const auto error = [](uint8_t type, int32_t m, double gain) {
    Objective o;
    fir_setType(o.handle, type);
    fir_setLimitFrequency(o.handle, 128);  // pi/4
    fir_setHighLimitFrequency(o.handle, 384);
    fir_setLowLimitFrequency(o.handle, 128);
    filter_setFIROpt(o.handle, 1);
    filter_setSampleSize(o.handle, m);
    return filter_optFun(o.handle, &gain);
  };
  // A gain of 0 counts the angles of target 1, one of 1 those of target 0. m = 8 plain angles lie at k pi/8.
  for (const auto& [type, ones, zeros] :
       {std::tuple{0, 3 + 8, 6 + 8}, {1, 6 + 8, 3 + 8}, {2, 5 + 16, 4 + 16}, {3, 4 + 16, 5 + 16}}) {
    EXPECT_EQ(error(static_cast<uint8_t>(type), 8, 0.0), ones) << type;
    EXPECT_EQ(error(static_cast<uint8_t>(type), 8, 1.0), zeros) << type;
  }
  EXPECT_EQ(error(4, 8, 1.0), 9);
  for (const int32_t none : {0, -5}) EXPECT_EQ(error(0, none, 1.0), 0);
}

}  // namespace
