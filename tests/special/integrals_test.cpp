// SPDX-License-Identifier: Apache-2.0
// The functions of orvane/integral_functions.h and orvane/polynomial_functions.h: their identities and their edges.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "orvane/array.h"
#include "orvane/integral_functions.h"
#include "orvane/polynomial_functions.h"
#include "support/reference.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kPi = 3.141592653589793;

TEST(IntegralFamily, Edges) {
  EXPECT_EQ(math_expIntegral(kInf), kInf);
  EXPECT_EQ(math_expIntegral(-kInf), 0);
  // ExpIntegralP_zero
  EXPECT_EQ(math_expIntegralP(0.5, 0), -2);
  EXPECT_EQ(math_expIntegralP(-1, 1e-17), -0.5);
  EXPECT_EQ(math_expIntegralP(3, 0), 0.5);
  EXPECT_EQ(math_expIntegralP(1, 2), math_expIntegral(2));
  EXPECT_EQ(math_sineIntegral(kInf), kPi / 2);
  EXPECT_EQ(math_sineIntegral(-3e16), -kPi / 2);
  EXPECT_EQ(math_cosineIntegral(kInf), 0);
  EXPECT_EQ(math_sinhIntegral(740), kInf);
  EXPECT_EQ(math_sinhIntegral(-740), -kInf);
  EXPECT_EQ(math_coshIntegral(740), kInf);
  EXPECT_EQ(math_logIntegral(kInf), kInf);
  EXPECT_EQ(math_invSinhIntegral(5.2e306), kInf);
  EXPECT_EQ(math_invSinhIntegral(-0.9e-5), -0.9e-5);
  EXPECT_EQ(math_invCoshIntegral(5.2e306), kInf);
  EXPECT_EQ(math_fresnelC(2.1e9), 0.5);
  EXPECT_EQ(math_fresnelS(-1.1e16), -0.5);
}

double glasser(double x) {
  apiFun_calcFun(&x, 1, &x, 181);
  return x;
}

// The integral of sin(t sin t). Beyond x = 1000 an expansion takes over; both roads must meet there.
TEST(IntegralFamily, Glasser) {
  checkReference("special/calcGlasser.csv", [](const ReferenceRow& row) { return glasser(row.arguments[0]); });
  EXPECT_EQ(glasser(-2), -glasser(2));
  EXPECT_NEAR(glasser(999.9999) - glasser(1000.0001), -0.0002 * std::sin(1000 * std::sin(1000.0)), 1e-7);
  EXPECT_NEAR(glasser(1e300) / (2 * std::sqrt(1e300 / kPi)), 1, 1e-15);
}

TEST(PolynomialFamily, BernoulliNumbers) {
  std::vector<double> b(264, 7);
  math_bernoulli(0, b.data());
  EXPECT_EQ(b[0], 7);
  math_bernoulli(13, b.data());
  EXPECT_EQ(b[0], 1);
  EXPECT_EQ(b[1], -0.5);
  EXPECT_EQ(b[2], 1.0 / 6);
  EXPECT_EQ(b[11], 0);
  EXPECT_EQ(b[12], -691.0 / 2730);
  EXPECT_EQ(b[13], 7);
  // Bernoulli_padding
  constexpr double kLargest = std::numeric_limits<double>::max();
  math_bernoulli(263, b.data());
  EXPECT_TRUE(std::isfinite(b[258]));
  EXPECT_EQ(b[259], 0);
  EXPECT_EQ(b[260], kLargest);
  EXPECT_EQ(b[261], 0);
  EXPECT_EQ(b[262], kLargest);
  EXPECT_EQ(b[263], 7);
  math_bernoulli(262, b.data());
  EXPECT_EQ(b[260], 0);
  EXPECT_EQ(b[261], kLargest);
}

TEST(PolynomialFamily, OrdersAtTheEdge) {
  EXPECT_EQ(math_polyLegendre(0, 0.3), 0);  // PolyLegendre_zero
  EXPECT_EQ(math_polyByBernoulli(259, 0.3), 0);
  EXPECT_EQ(math_polyHermite(2000, 0), kInf);
  EXPECT_EQ(math_polyHermite(2001, 0), 0);
  EXPECT_EQ(math_polyLegendre(2000000001, -1), -1);
  // From order 10000001 on by the limit of large order: it joins the recurrence, sqrt(2/(n pi sin t)) in size.
  for (const double x : {0.2, -0.97, 0.9999999999})
    EXPECT_NEAR(math_polyLegendre(10000001, x),
                (20000001.0 * x * math_polyLegendre(10000000, x) - 1e7 * math_polyLegendre(9999999, x)) / 10000001,
                2e-9)
        << x;
}

}  // namespace
