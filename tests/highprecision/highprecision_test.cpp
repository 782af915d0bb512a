// SPDX-License-Identifier: Apache-2.0
// High-precision numbers through the exports, held against digits of mpmath at every precision from 1 to 52 limbs.
#include <climits>
#include <thread>

#include "highprecision/hp_host.h"

namespace {

const std::vector<int> kFunctions = {41, 42, 49, 50, 51, 52, 53, 54, 55, 56, 57,
                                     58, 59, 61, 62, 63, 64, 65, 66, 67, 68, 69};

const Limbs kInfinite{true, false, 0, {}}, kMinusInfinite{true, true, 0, {}}, kZero{};

Limbs value(int64_t n) { return Number(n).limbs(); }

HPNumber* infinity(bool negative) { return hp_Fun2(Number(negative ? -1 : 1), Number(int64_t(0)), 3, 1); }

}  // namespace

TEST(HighPrecision, FunctionsAreRightToTheLastLimb) {
  std::vector<int> rows(256, 0);
  for (const auto& row : rowsOf("hp_functions")) {
    const int code = std::stoi(row[0]);
    const Limbs digits = limbsOf(row[2]);
    const Number x(row[1].c_str());
    ++rows[static_cast<std::size_t>(code)];
    for (int precision = 1; precision <= 52; ++precision)
      ASSERT_EQ(fun1(x, code, precision), roundedTo(digits, static_cast<std::size_t>(precision)))
          << "code " << code << " of " << row[1] << " with " << precision << " limbs";
  }
  for (const int code : kFunctions)
    EXPECT_TRUE(code <= 42 || code == 69 || rows[static_cast<std::size_t>(code)] >= 14) << code;
}

TEST(HighPrecision, OperationsAreRightToTheLastLimb) {
  for (const auto& row : rowsOf("hp_pairs")) {
    const Limbs digits = limbsOf(row[3]);
    const Number a(row[1].c_str()), b(row[2].c_str());
    for (int precision = 1; precision <= 52; ++precision)
      ASSERT_EQ(fun2(a, b, std::stoi(row[0]), precision), roundedTo(digits, static_cast<std::size_t>(precision)))
          << row[1] << " op " << row[0] << " " << row[2] << " with " << precision << " limbs";
  }
  for (const auto& row : rowsOf("hp_powers"))
    for (int precision = 1; precision <= 52; ++precision)
      ASSERT_EQ(Number(hp_Pow(Number(row[0].c_str()), std::stoll(row[1]), precision)).limbs(),
                roundedTo(limbsOf(row[2]), static_cast<std::size_t>(precision)))
          << row[0] << " ^ " << row[1] << " with " << precision << " limbs";
}

// Long factors are halved, then take the way through GMP; each length near a change must agree with an identity:
// (a + b)(a - b) = a^2 - b^2, and q b + r = a for the cut quotient.
TEST(HighPrecision, LongProductsAndQuotients) {
  constexpr int32_t kAll = 20000;
  uint64_t state = 12345;
  const auto drawn = [&state](std::size_t count) {
    Limbs x;
    for (std::size_t i = 0; i < count; ++i) {
      state = state * 6364136223846793005u + 1442695040888963407u;
      x.limbs.push_back(state % 5 == 0 ? 9999999 : static_cast<int64_t>((state >> 33) % 10000000));
    }
    x.limbs.front() = x.limbs.back() = 1 + static_cast<int64_t>(state % 9);
    return x;
  };
  for (const std::size_t length : {1, 2, 3, 4, 9, 60, 159, 160, 161, 323, 900, 3999, 4005}) {
    const Number a(drawn(length)), b(drawn(length > 3 ? length - 3 : 1));
    const Number above(hp_Fun2(a, b, 0, kAll)), below(hp_Fun2(a, b, 1, kAll)), product(hp_Fun2(above, below, 2, kAll));
    const Number squareA(hp_Fun2(a, a, 2, kAll)), squareB(hp_Fun2(b, b, 2, kAll));
    EXPECT_EQ(product.limbs(), fun2(squareA, squareB, 1, kAll)) << length;
    EXPECT_EQ(fun2(product, below, 3, 4100), above.limbs()) << length;
    EXPECT_EQ(fun1(squareA, 49, 4100), a.limbs()) << length;
    // A quotient and a root that end on half a limb round up; one unit less of what is divided, and they do not.
    Limbs half = drawn(length + 1);
    half.limbs[0] = 5000000;
    const Number tie(half), multiple(hp_Fun2(tie, b, 2, kAll)), square(hp_Fun2(tie, tie, 2, kAll)), one(1);
    const Number less(hp_Fun2(multiple, one, 1, kAll)), lessSquare(hp_Fun2(square, one, 1, kAll));
    const auto kept = static_cast<int32_t>(length);
    const Limbs up = roundedTo(half, length);
    half.limbs[0] = 4999999;
    const Limbs down = roundedTo(half, length);
    EXPECT_EQ(fun2(multiple, b, 3, kept), up) << length;
    EXPECT_EQ(fun2(less, b, 3, kept), down) << length;
    EXPECT_EQ(fun1(square, 49, kept), up) << length;
    EXPECT_EQ(fun1(lessSquare, 49, kept), down) << length;
    // The root of 1 - e is nearly 1 - e/2, which is cut to 1 - e.
    const Limbs nines{false, false, -static_cast<int64_t>(length), std::vector<int64_t>(length, 9999999)};
    EXPECT_EQ(fun1(Number(nines), 49, kept), nines) << length;
  }
}

// Quotients that end on half a limb right behind the precision, with no limb more to hide a wrong last one: the
// estimate of that limb is just below it as often as just above it. Leading limbs that are large leave no limb more.
TEST(HighPrecision, TiesOfQuotientsAndRoots) {
  uint64_t state = 99;
  const auto drawn = [&state](std::size_t count) {
    Limbs x;
    for (std::size_t i = 0; i < count; ++i) {
      state = state * 6364136223846793005u + 1442695040888963407u;
      x.limbs.push_back(static_cast<int64_t>((state >> 33) % 5000000));
    }
    x.limbs.front() += 1;
    x.limbs.back() += 4999999;
    return x;
  };
  for (int round = 0; round < 400; ++round) {
    const auto kept = static_cast<std::size_t>(1 + round % 9);
    Limbs half = drawn(kept + 1);
    half.limbs[0] = 5000000;
    const Number tie(half), divisor(drawn(static_cast<std::size_t>(2 + round % 11))), one(1);
    const Number multiple(hp_Fun2(tie, divisor, 2, 3000)), square(hp_Fun2(tie, tie, 2, 3000));
    const Number less(hp_Fun2(multiple, one, 1, 3000)), lessSquare(hp_Fun2(square, one, 1, 3000));
    const auto precision = static_cast<int32_t>(kept);
    ASSERT_EQ(fun2(multiple, divisor, 3, precision), roundedTo(half, kept)) << round;
    ASSERT_EQ(fun1(square, 49, precision), roundedTo(half, kept)) << round;
    half.limbs[0] = 4999999;
    ASSERT_EQ(fun2(less, divisor, 3, precision), roundedTo(half, kept)) << round;
    ASSERT_EQ(fun1(lessSquare, 49, precision), roundedTo(half, kept)) << round;
  }
}

TEST(HighPrecision, CreationAndAttributes) {
  EXPECT_EQ(value(0), kZero);
  EXPECT_EQ(value(10000000), (Limbs{false, false, 1, {1}}));
  EXPECT_EQ(value(-123456789012345), (Limbs{false, true, 0, {9012345, 2345678, 1}}));
  EXPECT_EQ(value(INT64_MIN), (Limbs{false, true, 0, {4775808, 7203685, 92233}}));
  EXPECT_EQ(value(INT64_MAX), (Limbs{false, false, 0, {4775807, 7203685, 92233}}));

  const auto made = [](std::vector<int64_t> limbs, int32_t exponent, bool negative) {
    return Number(hp_CreateByValue2(limbs.data(), static_cast<int32_t>(limbs.size()), exponent, negative)).limbs();
  };
  EXPECT_EQ(made({0}, 5, true), kZero);
  EXPECT_EQ(made({}, 5, true), kZero);
  EXPECT_EQ(Number(hp_CreateByValue2(nullptr, -1, 0, false)).limbs(), kZero);
  EXPECT_EQ(made({7, 8, 9}, -2, true), (Limbs{false, true, -2, {7, 8, 9}}));
  EXPECT_EQ(made({0, 0, 8, 0}, -2, false), (Limbs{false, false, 0, {8}}));
  // Words that are no limbs keep the value of the sum.
  EXPECT_EQ(made({10000001, 0}, 0, false), (Limbs{false, false, 0, {1, 1}}));
  EXPECT_EQ(made({-1, 1}, 0, false), (Limbs{false, false, 0, {9999999}}));
  EXPECT_EQ(made({1, -1}, 0, false), (Limbs{false, true, 0, {9999999}}));
  EXPECT_EQ(made({INT64_MIN}, 0, true), (Limbs{false, false, 0, {4775808, 7203685, 92233}}));
  EXPECT_EQ(made({INT64_MAX, INT64_MAX}, 0, false), (Limbs{false, false, 0, {4775807, 1979492, 7295919, 92233}}));
}

TEST(HighPrecision, Conversion) {
  const auto digits = [](const std::string& text) {
    std::vector<int32_t> result;
    std::istringstream stream(text);
    for (int32_t digit; stream >> digit;) result.push_back(digit);
    return result;
  };
  for (const auto& row : rowsOf("hp_conversion")) {
    const std::vector<int32_t> whole = digits(row[2]), fraction = digits(row[3]);
    for (const int precision : {1, 2, 7, 20, 52}) {
      const Number x(hp_Conversion(whole.data(), static_cast<int32_t>(whole.size()), fraction.data(),
                                   static_cast<int32_t>(fraction.size()), std::stoi(row[1]), row[0] == "-1",
                                   precision));
      EXPECT_EQ(x.limbs(), roundedTo(limbsOf(row[4]), static_cast<std::size_t>(precision))) << row[1];
    }
  }
  const int32_t one[] = {1};
  EXPECT_EQ(Number(hp_Conversion(nullptr, 0, nullptr, 0, 10, true, 3)).limbs(), kZero);
  EXPECT_EQ(Number(hp_Conversion(one, 1, one, 1, 0, false, 3)).limbs(), kInfinite);
  const std::vector<int32_t> hostile(1000, INT_MIN);
  Number(hp_Conversion(hostile.data(), 1000, hostile.data(), 1000, INT_MIN, true, INT_MIN)).limbs();
}

TEST(HighPrecision, Rounding) {
  const Number x(limbsOf("1.9999999@-1"));
  EXPECT_EQ(fun1(x, 42, 1), value(2));
  // 0 and below count as 1; a precision above any digits keeps all.
  EXPECT_EQ(fun1(x, 42, 0), value(2));
  EXPECT_EQ(fun1(x, 42, INT_MIN), value(2));
  EXPECT_EQ(fun1(x, 42, INT_MAX), x.limbs());
  EXPECT_EQ(fun2(x, Number(1), 3, INT_MAX), x.limbs());
}

TEST(HighPrecision, Infinities) {
  const Number plus(infinity(false)), minus(infinity(true)), zero(int64_t(0));
  EXPECT_EQ(plus.limbs(), kInfinite);
  EXPECT_EQ(minus.limbs(), kMinusInfinite);
  EXPECT_EQ(hp_CompareZero(plus), 2);
  EXPECT_EQ(hp_CompareZero(minus), 0);
  EXPECT_EQ(hp_CompareZero(zero), 1);

  EXPECT_EQ(Number(hp_Pow(minus, 3, 3)).limbs(), kMinusInfinite);
  EXPECT_EQ(Number(hp_Pow(minus, -3, 3)).limbs(), kZero);
  EXPECT_EQ(Number(hp_Pow(zero, -1, 3)).limbs(), kInfinite);
  EXPECT_EQ(Number(hp_Pow(minus, 0, 3)).limbs(), value(1));

  EXPECT_EQ(fun1(minus, 57, 9), Number(hp_Fun1(Number(-1), 55, 9)).limbs());
}

// One or two arguments, code, arguments, precision, result: infinities, poles, ends of domains and of the exponents.
TEST(HighPrecision, TableOfEdges) {
  for (const auto& row : rowsOf("hp_edges")) {
    const Number a(row[2].c_str()), b(row[3].c_str());
    const int code = std::stoi(row[1]), precision = std::stoi(row[4]);
    EXPECT_EQ(row[0] == "1" ? fun1(a, code, precision) : fun2(a, b, code, precision), limbsOf(row[5]))
        << row[1] << " of " << row[2] << " and " << row[3];
  }
}

TEST(HighPrecision, UnknownCodesGiveZero) {
  const Number two(2);
  for (int code = 0; code < 256; ++code) {
    const bool known = std::find(kFunctions.begin(), kFunctions.end(), code) != kFunctions.end();
    EXPECT_TRUE(known || fun1(two, code, 5) == kZero) << code;
    EXPECT_TRUE(code <= 3 || code == 60 || fun2(two, two, code, 5) == kZero) << code;
  }
}

TEST(HighPrecision, BeyondTheExponents) {
  const Number huge("3@2000000000"), tiny("3@-2000000000");
  for (const int code : kFunctions)
    for (const Number* x : {&huge, &tiny}) {
      const Limbs result = fun1(*x, code, 6);
      EXPECT_LE(result.limbs.size(), 6u);
    }
  EXPECT_EQ(fun2(tiny, huge, 1, 3), fun1(huge, 41, 3));
  const Number power(hp_Pow(huge, 1 << 24, 3));
  EXPECT_GT(power.limbs().exponent, int64_t(1) << 54);
  EXPECT_EQ(fun2(power, power, 2, 3).infinite, false);
  EXPECT_EQ(Number(hp_Pow(power, 1000, 3)).limbs(), kInfinite);
  EXPECT_EQ(Number(hp_Pow(power, -1000, 3)).limbs(), kZero);
  EXPECT_EQ(Number(hp_Pow(tiny, INT64_MAX, 3)).limbs(), kZero);
  EXPECT_EQ(Number(hp_Pow(tiny, INT64_MIN, 3)).limbs(), kInfinite);
}

TEST(HighPrecision, Comparison) {
  const Number plus(infinity(false)), minus(infinity(true));
  // In ascending order.
  const std::vector<const char*> order = {
      "-1@100", "-2@0",   "-1.5000000@-1", "-1@-100", "0",    "1@-100", "9999999.9999999@-2",
      "1@0",    "1.1@-1", "2@0",           "1.1@0",   "1@100"};
  for (std::size_t i = 0; i < order.size(); ++i)
    for (std::size_t j = 0; j < order.size(); ++j) {
      const Number a(order[i]), b(order[j]);
      EXPECT_EQ(hp_Compare(a, b), i < j ? 0 : i == j ? 1 : 2) << order[i] << " " << order[j];
      EXPECT_EQ(hp_IsEqu(a, b), i == j);
      EXPECT_EQ(hp_Compare(a, plus), 0);
      EXPECT_EQ(hp_Compare(a, minus), 2);
    }
  EXPECT_EQ(hp_Compare(plus, plus), 1);
  EXPECT_EQ(hp_Compare(minus, plus), 0);
}

TEST(HighPrecision, PrecisionsBeyondTheStoredConstants) {
  // pi by three roads, 500 limbs: acos(-1), 4 atan 1 and the sum of Machin's arcs.
  const Number pi(hp_Fun1(Number(-1), 56, 500)), one(1);
  const Number fifth(hp_Fun2(one, Number(5), 3, 510)), small(hp_Fun2(one, Number(239), 3, 510));
  const Number a(hp_Fun1(fifth, 57, 510)), b(hp_Fun1(small, 57, 510));
  const Number machin(hp_Fun2(Number(hp_Fun2(Number(16), a, 2, 510)), Number(hp_Fun2(Number(4), b, 2, 510)), 1, 500));
  EXPECT_EQ(pi.limbs(), machin.limbs());
  EXPECT_EQ(pi.limbs(), fun2(Number(hp_Fun1(one, 57, 510)), Number(4), 2, 500));
  // ln 30 = ln 2 + ln 3 + ln 5
  const Number sum(hp_Fun2(Number(hp_Fun1(Number(2), 50, 510)), Number(hp_Fun1(Number(15), 50, 510)), 0, 500));
  EXPECT_EQ(sum.limbs(), fun1(Number(30), 50, 500));
  EXPECT_EQ(fun1(Number(hp_Fun1(one, 59, 510)), 50, 500), value(1));
}

TEST(HighPrecision, ThreadsShareNumbers) {
  const Number x(7);
  const Limbs expected = fun1(x, 50, 60);
  std::vector<Limbs> results(4);
  std::vector<std::thread> threads;
  for (Limbs& result : results) threads.emplace_back([&] { result = fun1(x, 50, 60); });
  for (std::thread& thread : threads) thread.join();
  for (const Limbs& result : results) EXPECT_EQ(result, expected);
}

// Random chains over all operations, fed with their own results: whatever sizes, poles and infinities come up, a result
// keeps the form of a number, has no more limbs than asked for, and equals itself rounded once more.
TEST(HighPrecision, RandomChainsKeepTheForm) {
  uint64_t state = 4;
  const auto below = [&state](uint64_t n) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return (state >> 33) % n;
  };
  const std::vector<int> operations = {0, 1, 2, 3, 60};
  std::vector<HPNumber*> pool;
  for (int64_t i = -20; i < 20; ++i) pool.push_back(hp_CreateByValue(i * i * i));
  int infinite = 0, zero = 0;
  for (int round = 0; round < 6000; ++round) {
    const auto precision = static_cast<int32_t>(below(12) + 1);
    const HPNumber *a = pool[below(pool.size())], *b = pool[below(pool.size())];
    HPNumber* result = nullptr;
    switch (below(4)) {
      case 0:
        result = hp_Fun1(a, static_cast<uint8_t>(kFunctions[below(kFunctions.size())]), precision);
        break;
      case 1: {  // words that are no limbs, at any exponent
        int64_t words[4];
        for (int64_t& word : words) word = static_cast<int64_t>(below(3) == 0 ? state : below(20000000));
        result = hp_CreateByValue2(words, static_cast<int32_t>(below(5)), static_cast<int32_t>(below(2001)) - 1000,
                                   below(2) != 0);
        break;
      }
      case 2:
        result = hp_Fun2(a, b, static_cast<uint8_t>(operations[below(5)]), precision);
        break;
      default:
        result = hp_Pow(a, static_cast<int64_t>(below(41)) - 20, precision);
    }
    Number& number = *new Number(result);
    const Limbs x = number.limbs();
    infinite += x.infinite;
    zero += x == kZero;
    ASSERT_TRUE(x.limbs.empty() ? x.exponent == 0 : x.limbs.front() != 0 && x.limbs.back() != 0) << x;
    for (const int64_t limb : x.limbs) ASSERT_TRUE(limb >= 0 && limb < 10000000) << x;
    ASSERT_TRUE(x.limbs.size() <= 12) << x;
    ASSERT_TRUE(!x.infinite || x.limbs.empty());
    ASSERT_TRUE(x.infinite || !x.limbs.empty() || !x.negative) << "a zero has no sign";
    ASSERT_EQ(fun1(number, 42, 12).limbs, x.limbs);
    // What ends in 0 or infinity ends its chain.
    const std::size_t place = below(pool.size());
    api_FreeHandle(pool[place]);
    pool[place] =
        x.limbs.empty() ? hp_CreateByValue(static_cast<int64_t>(below(2000)) - 1000) : hp_Fun1(number, 41, 12);
    delete &number;
  }
  for (HPNumber* number : pool) api_FreeHandle(number);
  EXPECT_TRUE(infinite > 300 && infinite < 3000) << infinite;
  EXPECT_TRUE(zero > 300 && zero < 3000) << zero;
}
