// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric/hypergeometric.h"

#include <gmp.h>

#include <atomic>
#include <bit>
#include <cfenv>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <thread>

#include "highprecision/binary/hp_by_gmp.h"
#include "special/hypergeometric/cut_float.h"
#include "special/hypergeometric/hypergeometric_fast.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"
#include "special/hypergeometric_families.h"
#include "support/reference.h"

namespace {

using namespace SpecialFunction;
using namespace families;

std::string print(const Arguments& x) {
  std::ostringstream text;
  text << std::hexfloat << "a";
  for (double v : x.a) text << " " << v;
  text << " b";
  for (double v : x.b) text << " " << v;
  text << " z " << x.z;
  return text.str();
}

double calc(const Arguments& x) {
  return calcHypergeometricPFQ(x.a.data(), static_cast<int32_t>(x.a.size()), x.b.data(),
                               static_cast<int32_t>(x.b.size()), x.z);
}

double calcByGMP(const Arguments& x) {
  return calcHypergeometricPFQByGMP(x.a.data(), static_cast<int32_t>(x.a.size()), x.b.data(),
                                    static_cast<int32_t>(x.b.size()), x.z);
}

std::optional<double> calcFast(const Arguments& x, bool useFma = true) {
  return calcHypergeometricPFQByDoubleDouble(x.a.data(), static_cast<int32_t>(x.a.size()), x.b.data(),
                                             static_cast<int32_t>(x.b.size()), x.z, useFma);
}

std::optional<double> calcWide(const Arguments& x) {
  return calcHypergeometricPFQByWide(x.a.data(), static_cast<int32_t>(x.a.size()), x.b.data(),
                                     static_cast<int32_t>(x.b.size()), x.z);
}

bool sameBits(double x, double y) { return std::bit_cast<uint64_t>(x) == std::bit_cast<uint64_t>(y); }

TEST(Hypergeometric, ValuesAreThoseOfTheReferences) {
  checkReference("special/hypergeometric.csv", [](const ReferenceRow& row) {
    const auto p = static_cast<std::ptrdiff_t>(row.arguments[0]), q = static_cast<std::ptrdiff_t>(row.arguments[1]);
    const auto first = row.arguments.begin() + 2;
    return calc({{first, first + p}, {first + p, first + p + q}, row.arguments.back()});
  });
}

TEST(Hypergeometric, EveryPathGivesTheDoubleOfTheGmpSeries) {
  std::map<std::string, int> decided;
  forFamilies(1, [&](const Family& family, const Arguments& x) {
    const double expected = calcByGMP(x), value = calc(x);
    const auto fast = calcFast(x);
    decided[family.name] += fast.has_value();
    if (!sameBits(value, expected) || !sameBits(fast.value_or(expected), expected))
      ADD_FAILURE() << family.name << " " << print(x) << ": " << std::hexfloat << value << ", not " << expected;
  });
  for (const Family& family : kFamilies)  // else the comparison would hold the GMP series against itself
    EXPECT_GE(decided[family.name], 0.999 * family.leastShare * family.count) << family.name;
}

TEST(Hypergeometric, ProductsWithoutFusedInstructionGiveTheSame) {
  int decided = 0;
  forFamilies(10, [&](const Family& family, const Arguments& x) {
    const auto plain = calcFast(x, false);
    decided += plain.has_value();
    if (plain && !sameBits(*plain, calcByGMP(x))) ADD_FAILURE() << family.name << " " << print(x);
  });
  EXPECT_GT(decided, 9000);
}

TEST(Hypergeometric, WideFloatsGiveTheSame) {
  int decided = 0, beyondDoubleDouble = 0;
  forFamilies(4, [&](const Family& family, const Arguments& x) {
    const auto wide = calcWide(x);
    decided += wide.has_value();
    beyondDoubleDouble += wide && !calcFast(x);
    if (wide && !sameBits(*wide, calcByGMP(x))) ADD_FAILURE() << family.name << " " << print(x);
  });
  EXPECT_GT(decided, 20000);
  EXPECT_GT(beyondDoubleDouble, 250);
}

// Sums that cancel, from a guess of their largest term that may be wrong and bits that may be too few.
TEST(Hypergeometric, FloatsOfFixedLimbsGiveTheDoubleOfMoreBits) {
  std::mt19937_64 random(11);
  const auto within = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  int decided = 0, refused = 0;
  for (int i = 0; i < 3000; ++i) {
    Arguments x{{}, {within(-80, 80)}, 0};
    const int kind = i % 3;
    for (int k = 0; k < kind; ++k) x.a.push_back(i % 5 ? within(-100, 100) : std::round(within(-20, 20)) / 2);
    x.z = kind == 0 ? within(-3000, -1) : kind == 1 ? within(-100, -1) : within(-0.7, 0.7);
    const auto p = static_cast<int32_t>(x.a.size());
    const unsigned long bits = 256 + 64 * (random() % 3);
    double rest = 0;
    const auto value =
        calcHypergeometricPFQByLimbs(x.a.data(), p, x.b.data(), 1, x.z, bits, within(1, 120), i % 2 ? &rest : nullptr);
    ++(value ? decided : refused);
    if (value && !sameBits(*value, calcHypergeometricPFQByMoreBits(x.a.data(), p, x.b.data(), 1, x.z, bits)))
      ADD_FAILURE() << print(x);
  }
  EXPECT_GT(decided, 50 * refused);
}

// Left of 0 by a transformation: the double of the series with so many bits, which may be too few at first.
TEST(Hypergeometric, TransformationsGiveTheDoubleOfMoreBits) {
  std::mt19937_64 random(12);
  const auto within = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  int decided = 0;
  for (int i = 0; i < 4000; ++i) {
    const bool gauss = i % 2 == 0;
    const auto parameter = [&] { return i % 5 ? within(-20, 100) : std::round(within(-20, 60)) / 2; };
    Arguments x{{parameter()}, {within(-15, 120)}, gauss ? within(-0.97, -0.05) : within(-150, -5)};
    if (gauss) x.a.push_back(parameter());
    double term = 1, largest = 1;
    for (int n = 0; n < 2000; ++n) {
      for (double a : x.a) term *= std::abs(a + n);
      term *= std::abs(x.z / (x.b[0] + n) / (n + 1));
      largest = std::max(largest, term);
    }
    const auto p = static_cast<int32_t>(x.a.size());
    const double exponent = std::log2(largest);
    const auto bits = static_cast<unsigned long>(std::max(exponent, 64.0)) + 64 * (1 + random() % 3);
    const auto value = calcHypergeometricPFQByTransformation(x.a.data(), p, x.b.data(), 1, x.z, bits, exponent);
    decided += value.has_value();
    if (value && !sameBits(*value, calcHypergeometricPFQByMoreBits(x.a.data(), p, x.b.data(), 1, x.z, bits)))
      ADD_FAILURE() << print(x);
  }
  EXPECT_GT(decided, 1500);
}

#ifdef ORVANE_HAS_CUT_FLOAT
template <int kPrecision>
void compareWithGMP(int count) {
  using Float = CutFloat<kPrecision>;
  constexpr mp_bitcnt_t kBits = 64 * (kPrecision - 1);
  std::mt19937_64 random(kPrecision);
  const auto limb = [&]() -> mp_limb_t {
    const auto shift = static_cast<int>(random() % 64);
    const mp_limb_t kinds[] = {0, ~0ULL, 1, ~0ULL << shift, ~0ULL >> shift, random(), random(), random()};
    return kinds[random() % 8];
  };
  const auto set = [](HP::HPByGMP& x, const __mpf_struct& view) { mpf_set(x.get(), &view); };
  HP::HPByGMP x(kBits), y(kBits), expected(kBits);
  ASSERT_EQ(x.get()->_mp_prec, kPrecision);
  const auto expectSame = [&](const char* step, const Float& found) {
    const __mpf_struct view = found.view();
    if (mpf_cmp(expected.get(), &view) != 0) ADD_FAILURE() << step << " of " << kPrecision << " limbs";
  };
  int left = 0;
  for (int i = 0; i < count; ++i) {
    Float a{{}, static_cast<int64_t>(random() % 7), random() % 2 == 0}, b = a;
    for (auto& l : a.limb) l = limb();
    if (random() % 4 == 0) std::copy_n(a.limb, kPrecision + 1, b.limb);  // a sum that cancels
    b.limb[random() % (kPrecision + 1)] ^= limb();
    b.negative = random() % 2 == 0;
    b.exponent = i % 3 ? a.exponent : static_cast<int64_t>(random() % 7);
    if (a.isZero()) a.limb[kPrecision] = 1;
    if (b.isZero()) b.limb[kPrecision] = 1;
    set(x, a.view());
    set(y, b.view());
    Float sum = a;
    mpf_add(expected.get(), x.get(), y.get());
    if (sum.add(b))
      expectSame("sum", sum);
    else
      ++left;
    const auto factor = CutFactor::joined({i % 2 ? limb() : 0, limb(), limb() | 1}, -2, random() % 2 == 0);
    const Float exact = Float::of(factor);
    set(y, exact.view());
    Float product = a, quotient = a, byInteger = a;
    mpf_mul(expected.get(), x.get(), y.get());
    product.multiply(factor);
    expectSame("product", product);
    mpf_div(expected.get(), x.get(), y.get());
    EXPECT_EQ(quotient.divide(factor), factor.count < 3);
    if (factor.count < 3) expectSame("quotient", quotient);
    const uint64_t n = limb() | 1;
    mpf_div_ui(expected.get(), x.get(), n);
    byInteger.divide(n);
    expectSame("quotient by an integer", byInteger);
    const double start = std::ldexp(static_cast<double>(static_cast<int64_t>(random())), -60 - i % 30);
    CutParameter parameter;
    ASSERT_TRUE(parameter.set(start));
    mpf_set_d(expected.get(), start);
    for (auto steps = random() % 100; steps > 0; --steps) {
      mpf_add_ui(expected.get(), expected.get(), 1);
      parameter.addOne();
    }
    expectSame("parameter", Float::of(parameter.value()));
  }
  EXPECT_LT(100 * left, count);
}

// All that the tests above hold against GMP's series rests on this.
TEST(Hypergeometric, CutFloatsAreThoseOfGmp) {
  compareWithGMP<3>(20000);
  compareWithGMP<4>(20000);
  compareWithGMP<7>(20000);
}
#endif

// Parameters and arguments that lie anywhere: the fast path must decline where its bounds do not hold.
TEST(Hypergeometric, OddArgumentsGiveTheSame) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  const auto number = [&] {
    switch (random() % 6) {
      case 0:
        return std::round(20 * unit(random) - 10);
      case 1:
        return std::round(20 * unit(random) - 10) + std::ldexp(unit(random) - 0.5, -static_cast<int>(random() % 60));
      case 2:
        return std::ldexp(unit(random) - 0.5, static_cast<int>(random() % 140) - 70);
      default:
        return 40 * unit(random) - 20;
    }
  };
  int decided = 0;
  for (int i = 0; i < 20000; ++i) {
    Arguments x{{}, {}, random() % 4 ? 4 * unit(random) - 2 : number()};
    if (std::abs(std::abs(x.z) - 1) < 0.02 || x.z > 1e4) x.z = 0.25;
    for (auto n = random() % 5; n > 0; --n) x.a.push_back(number());
    for (auto n = random() % 5; n > 0; --n) x.b.push_back(number());
    if (x.a.size() > x.b.size() + 1) x.a.resize(x.b.size() + 1);
    const double value = calc(x);
    if (std::isnan(value) || (x.a.size() == 1 && x.b.empty())) continue;  // poles; the closed form
    const auto fast = calcFast(x), wide = calcWide(x);
    decided += fast.has_value();
    if (const double expected = calcByGMP(x); !sameBits(value, expected) ||
                                              !sameBits(fast.value_or(expected), expected) ||
                                              !sameBits(wide.value_or(expected), expected))
      ADD_FAILURE() << print(x) << ": " << std::hexfloat << value << ", not " << expected;
  }
  EXPECT_GT(decided, 5000);
}

TEST(Hypergeometric, LongSeriesEndAtTheCap) {
  const Arguments atOne{{1.0, 1.0}, {2.0}, 1.0}, alternating{{0.5, 1.5}, {1.5}, -1.0};
  // H_n, n = 10^6 terms with the first: ln n + gamma + 1/(2n).
  EXPECT_NEAR(calc(atOne), std::log(1e6) + 0.57721566490153286 + 0.5e-6, 2e-12);
  EXPECT_TRUE(sameBits(calc(atOne), calcByGMP(atOne)));
  EXPECT_TRUE(sameBits(calc(alternating), calcByGMP(alternating)));
}

TEST(Hypergeometric, PolesClosedFormAndEnds) {
  EXPECT_TRUE(std::isnan(calc({{1.0}, {-2.0}, 0.5})));
  EXPECT_TRUE(std::isnan(calc({{1.0}, {0.0}, 0.5})));
  EXPECT_TRUE(std::isnan(calc({{1.0, 2.0}, {3.0, -2.0 + 0x1p-51}, 0.5})));
  EXPECT_TRUE(std::isfinite(calc({{1.0}, {-2.5}, 0.5})));
  EXPECT_EQ(calc({{2.0}, {}, 0.5}), 4.0);
  EXPECT_EQ(calc({{-2.0}, {}, 3.0}), 4.0);          // (1 - z)^2 by the series, ended by a zero term
  EXPECT_EQ(calc({{2.0, 0.0}, {3.5}, 0.25}), 1.0);  // b = 1 in the incomplete beta function
  EXPECT_EQ(calc({{2.0, 3.0}, {3.5}, 0.0}), 1.0);
  EXPECT_EQ(calc({{-1.0}, {1.0}, 0.5}), 0.5);
  EXPECT_NEAR(calc({{-0.5, 0.5}, {1.0}, 0.5}), 0.859846600102238, 1e-15);
  EXPECT_NEAR(calc({{1.3, 1.0}, {2.3}, 0.995}), 6.4009067299903, 1e-13);
  // 1/(1-z)^2 at z = 10: the first term (n + 1) 10^n beyond the double range, n = 306, takes the sum along.
  EXPECT_EQ(calc({{2.0}, {}, 10.0}), std::numeric_limits<double>::infinity());
}

TEST(Hypergeometric, NotFiniteArgumentsGiveNaN) {
  const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
  for (const double odd : {nan, inf, -inf}) {
    EXPECT_TRUE(std::isnan(calc({{odd}, {2.0}, -1.0})));
    EXPECT_TRUE(std::isnan(calc({{1.0}, {odd}, -1.0})));
    EXPECT_TRUE(std::isnan(calc({{1.0}, {2.0}, odd})));
  }
}

TEST(Hypergeometric, AnotherRoundingModeDoesNotReachTheResult) {
  const Arguments x{{0.7}, {1.7}, -3.3};
  const double expected = calc(x);
  ASSERT_EQ(std::fesetround(FE_UPWARD), 0);
  const double upward = calc(x);
  const bool declined = !calcFast(x).has_value();
  std::fesetround(FE_TONEAREST);
  EXPECT_TRUE(sameBits(upward, expected));
  EXPECT_TRUE(declined);  // its error-free transformations hold for rounding to nearest only
}

// Many threads at once, half of their arguments through the GMP series, which sets the process-wide precision.
TEST(Hypergeometric, ThreadsGiveTheSameBitsAndPutThePrecisionBack) {
  std::vector<Arguments> arguments;
  std::vector<double> expected;
  for (int i = 0; i < 40; ++i) {
    arguments.push_back({{0.5 + i}, {1.5 + i}, -3.0 - 0.1 * i});
    arguments.push_back({{0.5}, {1.5}, -80.0 - i});  // cancels beyond every bound
    ASSERT_FALSE(calcFast(arguments.back()));
  }
  for (const Arguments& x : arguments) expected.push_back(calcByGMP(x));
  mpf_set_default_prec(320);
  const mp_bitcnt_t before = mpf_get_default_prec();
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < 8; ++t)
    threads.emplace_back([&, t] {
      for (std::size_t round = 0; round < 4 * arguments.size(); ++round) {
        const std::size_t i = (round + 10 * t) % arguments.size();
        if (!sameBits(calc(arguments[i]), expected[i])) ++wrong;
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(mpf_get_default_prec(), before);
}

// Overlapping in every order, the last one out puts back what the first one found.
TEST(Hypergeometric, PrecisionGuardsMayOverlap) {
  mpf_set_default_prec(320);
  const mp_bitcnt_t before = mpf_get_default_prec();
  auto first = std::make_unique<HP::DefaultPrecision>(128);
  EXPECT_LT(mpf_get_default_prec(), before);
  auto second = std::make_unique<HP::DefaultPrecision>(128);
  first.reset();
  EXPECT_LT(mpf_get_default_prec(), before);
  second.reset();
  EXPECT_EQ(mpf_get_default_prec(), before);
}

}  // namespace
