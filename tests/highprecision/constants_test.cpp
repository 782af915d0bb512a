// SPDX-License-Identifier: Apache-2.0
// The stored digits of the constants and the series that take over beyond them come from different sources. Products
// of limbs against those of GMP's integers.
#include "highprecision/decimal/constants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "highprecision/binary/float_ops.h"
#include "highprecision/decimal/limbs.h"

using HighPrecision::Constant;

TEST(Constants, SeriesGiveTheStoredDigits) {
  const char* begins[] = {"0.6931471805599453", "1.0986122886681096", "1.6094379124341003",
                          "3.1415926535897932", "0.4636476090008061", "0.6435011087932843",
                          "0.9827937232473290", "1.3258176636680324", "2.7182818284590452"};
  for (int i = 0; i < HighPrecision::kConstants; ++i) {
    const auto which = static_cast<Constant>(i);
    const HighPrecision::HPNumber_c& stored = HighPrecision::storedConstant(which);
    ASSERT_EQ(stored.limbs.size(), 52u);
    EXPECT_EQ(stored.exponent, -51);
    // 357 decimals of a sum to 3,000 bits.
    HP::HPByGMP scaled(3000);
    mpf_set_z(scaled.get(), HP::powerOfTen(357).get());
    mpf_mul(scaled.get(), scaled.get(), HighPrecision::constantOf(which, 3000).get());
    const HP::Integer digits = HP::fixedOf(scaled, 0);
    EXPECT_EQ(mpz_cmp(digits.get(), HP::integerOfLimbs(stored.limbs).get()), 0) << begins[i];
    char text[400];
    gmp_snprintf(text, sizeof text, "%0358Zd", digits.get());
    EXPECT_EQ(std::string(text, 1) + "." + std::string(text + 1, 16), begins[i]);
  }
}

TEST(Limbs, ProductsOfEveryShape) {
  std::mt19937 random(3);
  const std::size_t lengths[] = {1,   2,   3,   23,  24,  25,  31,  33,  79,   80,   81,
                                 159, 160, 161, 200, 320, 333, 512, 513, 1000, 2049, 4500};
  for (const std::size_t n : lengths)
    for (const std::size_t m : lengths) {
      std::vector<int64_t> a(n), b(m, 9999999);  // the largest carries there are on one side
      for (int64_t& limb : a) limb = static_cast<int64_t>(random() % 10000000);
      a.back() = 1;
      HP::Integer expected = HP::integerOfLimbs(a);
      mpz_mul(expected.get(), expected.get(), HP::integerOfLimbs(b).get());
      std::vector<int64_t> product(n + m);
      HighPrecision::multiplyLimbs(a, b, product);
      ASSERT_TRUE(std::ranges::all_of(product, [](int64_t limb) { return limb >= 0 && limb < 10000000; }));
      EXPECT_EQ(mpz_cmp(HP::integerOfLimbs(product).get(), expected.get()), 0) << n << ", " << m;
    }
}
