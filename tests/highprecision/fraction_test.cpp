// SPDX-License-Identifier: Apache-2.0
// Fractions through the exports, held against Python's fractions.
#include "orvane/fraction.h"

#include <chrono>
#include <climits>
#include <thread>

#include "highprecision/hp_host.h"

namespace {

using Words = std::vector<int64_t>;

// The decimal digits as limbs, without a sign, the least significant first.
Words wordsOf(const std::string& digits) {
  Words words;
  const std::size_t sign = digits[0] == '-';
  for (std::size_t end = digits.size(); end > sign;) {
    const std::size_t begin = end > 7 + sign ? end - 7 : sign;
    words.push_back(std::stoll(digits.substr(begin, end - begin)));
    end = begin;
  }
  return words;
}

/// A handle that is released at the end.
class Fraction {
 public:
  explicit Fraction(FractionNumber* made) : handle(made) {}
  Fraction(const std::string& up, const std::string& down) : handle(create(wordsOf(up), wordsOf(down), up[0] == '-')) {}
  Fraction(const Fraction&) = delete;
  Fraction& operator=(const Fraction&) = delete;
  ~Fraction() { api_FreeHandle(handle); }

  operator const FractionNumber*() const { return handle; }

  static FractionNumber* create(const Words& up, const Words& down, bool negative) {
    return fraction_create(up.data(), static_cast<int32_t>(up.size()), down.data(), static_cast<int32_t>(down.size()),
                           negative);
  }

  // "numerator,denominator" in decimal digits, "inf", "-inf"
  std::string text() const {
    int32_t attributes[5];
    fraction_attribute(handle, attributes);
    Words up(static_cast<std::size_t>(attributes[2])), down(static_cast<std::size_t>(attributes[3]));
    fraction_data(handle, up.data(), down.data());
    EXPECT_EQ(attributes[4], down[0]);
    std::string result = attributes[1] != 0 ? "-" : "";
    return attributes[0] != 0 ? result + "inf" : result + digits(up) + "," + digits(down);
  }

 private:
  static std::string digits(const Words& words) {
    std::string result;
    for (auto word = words.rbegin(); word != words.rend(); ++word) {
      std::string limb = std::to_string(*word);
      EXPECT_TRUE(*word >= 0 && *word < 10000000);
      EXPECT_TRUE(word != words.rbegin() || *word != 0 || words.size() == 1) << "a zero limb at the top";
      result += word == words.rbegin() ? limb : std::string(7 - limb.size(), '0') + limb;
    }
    return result;
  }

  FractionNumber* handle;
};

Fraction ofWords(const Words& up, const Words& down, bool negative = false) {
  return Fraction(Fraction::create(up, down, negative));
}

struct Result {
  std::string text;
  int status;
  bool operator==(const Result&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Result& x) { return out << x.text << " status " << x.status; }

Result fun2(const Fraction& a, const Fraction& b, int code) {
  uint8_t status = 77;
  const Fraction result(fraction_fun2(a, b, static_cast<uint8_t>(code), &status));
  return {result.text(), status};
}

std::string fun(const Fraction& a, int32_t precision, int64_t n, int code) {
  return Fraction(fraction_fun(a, precision, n, static_cast<uint8_t>(code))).text();
}

// The fraction to `precision` limbs as a number; the sign is left out.
Limbs floatOf(const Fraction& a, int32_t precision) {
  std::vector<int64_t> out(static_cast<std::size_t>(precision) + 1, -1);
  int32_t count = -1;
  Limbs x;
  x.exponent = fraction_ToFloat(a, out.data(), &count, precision);
  EXPECT_LE(count, precision);
  EXPECT_EQ(out[static_cast<std::size_t>(count)], -1) << "written beyond the count";
  x.limbs.assign(out.rend() - count, out.rend());
  return x;
}

}  // namespace

TEST(Fraction, OperationsAgreeWithPython) {
  for (const auto& row : rowsOf("fraction_operations")) {
    const Fraction a(row[1], row[2]), b(row[3], row[4]);
    const Result expected = row[5] == "-" ? Result{"inf", 0} : Result{row[5] + "," + row[6], 1};
    EXPECT_EQ(fun2(a, b, std::stoi(row[0])), expected) << row[0];
    EXPECT_EQ(fraction_compare(a, b), std::stoi(row[7]));
    EXPECT_EQ(fraction_compare(b, a), 2 - std::stoi(row[7]));
  }
}

TEST(Fraction, ExactPowers) {
  for (const auto& row : rowsOf("fraction_powers")) {
    const Fraction a(row[0], row[1]), b(row[2], row[3]);
    EXPECT_EQ(fun2(a, b, 4), (Result{row[4] + "," + row[5], 1}))
        << row[0] << "/" << row[1] << "^" << row[2] << "/" << row[3];
    if (row[3] != "1") continue;
    for (const int code : {60, 61, 69, 255}) EXPECT_EQ(fun(a, 9, std::stoll(row[2]), code), row[4] + "," + row[5]);
  }
  // A power is what repeated products give.
  const Fraction base("-123456789", "10000001");
  Fraction* product = new Fraction("1", "1");
  for (int i = 0; i < 9; ++i) {
    Fraction* next = new Fraction(fraction_fun2(*product, base, 2, nullptr));
    delete product;
    product = next;
  }
  EXPECT_EQ(fun(base, 1, 9, 60), product->text());
  delete product;
}

TEST(Fraction, InverseSums) {
  for (const auto& row : rowsOf("fraction_sums")) {
    std::vector<int64_t> values(static_cast<std::size_t>(std::stoi(row[2])));
    for (std::size_t i = 0; i < values.size(); ++i)
      values[i] = std::stoll(row[0]) + static_cast<int64_t>(i) * std::stoll(row[1]);
    const auto start = std::chrono::steady_clock::now();
    const Fraction sum(fraction_InvSum(values.data(), static_cast<int32_t>(values.size())));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_EQ(sum.text(), row[3] + "," + row[4]) << row[0] << " " << row[1] << " " << row[2];
  }
  const int64_t zero[] = {1, 0, 2};
  EXPECT_EQ(Fraction(fraction_InvSum(zero, 3)).text(), "inf");
  EXPECT_EQ(Fraction(fraction_InvSum(zero, 0)).text(), "0,1");
  EXPECT_EQ(Fraction(fraction_InvSum(nullptr, -1)).text(), "0,1");
}

TEST(Fraction, Creation) {
  // Low limbs that are zero in both go, nothing else is reduced, one limb stays in each.
  EXPECT_EQ(ofWords({0, 0, 6}, {0, 4}).text(), "60000000,4");
  EXPECT_EQ(ofWords({0, 6}, {0, 4}, true).text(), "-6,4");
  EXPECT_EQ(ofWords({0, 0}, {0, 4}, true).text(), "0,40000000");
  EXPECT_EQ(ofWords({5, 0, 0}, {7, 0}).text(), "5,7");
  EXPECT_EQ(ofWords(Words{}, {7}).text(), "0,7");
  EXPECT_EQ(ofWords({7}, Words{}).text(), "inf");
  EXPECT_EQ(ofWords({7}, {0, 0}, true).text(), "-inf");
  // Words that are no limbs keep the value.
  EXPECT_EQ(ofWords({-1, 1}, {10000000}).text(), "9999999,10000000");
  EXPECT_EQ(ofWords({3}, {-4}).text(), "-3,4");
  EXPECT_EQ(ofWords({INT64_MIN}, {1}).text(), "-9223372036854775808,1");
  EXPECT_EQ(Fraction(fraction_create(nullptr, INT_MIN, nullptr, -1, false)).text(), "inf");
}

TEST(Fraction, Infinities) {
  const Fraction one("1", "1"), zero("0", "1"), plus(ofWords({1}, {0})), minus(ofWords({1}, {0}, true));
  EXPECT_EQ(fun2(one, zero, 3), (Result{"inf", 0}));
  EXPECT_EQ(fun2(zero, zero, 3), (Result{"inf", 0}));
  EXPECT_EQ(fun2(plus, minus, 0), (Result{"0,1", 1}));
  EXPECT_EQ(fun2(plus, minus, 1), (Result{"inf", 1}));
  EXPECT_EQ(fun2(minus, one, 0), (Result{"-inf", 1}));
  EXPECT_EQ(fun2(minus, plus, 3), (Result{"1,1", 1}));
  EXPECT_EQ(fun2(one, minus, 3), (Result{"0,1", 1}));
  EXPECT_EQ(fun2(minus, one, 3), (Result{"-inf", 1}));
  EXPECT_EQ(fun2(one, one, 5), (Result{"0,1", 0}));
  EXPECT_EQ(fun(minus, 5, 0, 41), "inf");
  EXPECT_EQ(fun(minus, 5, 3, 60), "-inf");
  EXPECT_EQ(fun(minus, 5, -3, 60), "0,1");
  EXPECT_EQ(fun(zero, 5, -3, 60), "inf");
  EXPECT_EQ(fun(zero, 5, 0, 41), "0,1");
  EXPECT_EQ(fraction_compare(plus, plus), 1);
  EXPECT_EQ(fraction_compare(one, plus), 0);
  EXPECT_EQ(fraction_compare(minus, one), 0);
  EXPECT_EQ(floatOf(plus, 3), Limbs{});
  EXPECT_EQ(floatOf(zero, 3), Limbs{});
}

TEST(Fraction, LeavingTheRationals) {
  const Fraction two("2", "1"), half("1", "2"), third("1", "3"), minusEight("-8", "1");
  EXPECT_EQ(fun(Fraction("9", "4"), 5, 0, 49), "3,2");
  EXPECT_EQ(fun(Fraction("18", "8"), 5, 0, 49), "3,2");
  EXPECT_EQ(fun(minusEight, 5, 0, 49), "inf");
  // sqrt 2 and sin(1/3) are those of the numbers.
  for (const auto& [x, code, digits] : {std::tuple(&two, 49, "2"), std::tuple(&third, 51, "third")}) {
    const Fraction value(fraction_fun(*x, 6, 0, static_cast<uint8_t>(code)));
    const Number argument(std::string(digits) == "2" ? hp_CreateByValue(2) : hp_Fun2(Number(1), Number(3), 3, 30));
    EXPECT_EQ(floatOf(value, 6), fun1(argument, code, 6)) << code;
  }
  const Result root = fun2(two, half, 4);
  EXPECT_EQ(root.status, 0);
  const std::size_t comma = root.text.find(',');
  EXPECT_EQ(floatOf(Fraction(root.text.substr(0, comma), root.text.substr(comma + 1)), 52), fun1(Number(2), 49, 52));
  EXPECT_EQ(fun2(minusEight, third, 4), (Result{"inf", 0}));
  EXPECT_EQ(fun(two, 5, 0, 43), "0,1");
  // Powers that no memory holds.
  EXPECT_EQ(fun2(two, Fraction("1000000000000", "1"), 4), (Result{"inf", 0}));
  EXPECT_EQ(fun(two, 5, INT64_MIN, 60), "inf");
  EXPECT_EQ(fun(Fraction("-1", "1"), 5, INT64_MIN, 60), "1,1");
  EXPECT_EQ(fun2(two, Fraction("10000000000000000000000000", "3"), 4).status, 0);
}

TEST(Fraction, ToFloat) {
  EXPECT_EQ(floatOf(Fraction("1", "3"), 2), (Limbs{false, false, -2, {3333333, 3333333}}));
  EXPECT_EQ(floatOf(Fraction("-2", "3"), 2), (Limbs{false, false, -2, {6666667, 6666666}}));
  EXPECT_EQ(floatOf(Fraction("10000000", "1"), 2), (Limbs{false, false, 1, {1}}));
  EXPECT_EQ(floatOf(Fraction("12345678901234", "1"), 1), (Limbs{false, false, 1, {1234568}}));
  // Like the quotients of numbers at every precision.
  const Fraction long1("98765432109876543210987654321", "12345678901234567890123");
  const Number up("9.8765432.1098765.4321098.7654321@0"), down("12.3456789.0123456.7890123@0");
  for (int32_t precision = 1; precision < 60; ++precision)
    EXPECT_EQ(floatOf(long1, precision), fun2(up, down, 3, precision));
}

// The first of them makes the form that was not given; the others wait for it.
TEST(Fraction, ThreadsShareFractions) {
  for (int round = 0; round < 50; ++round) {
    const Fraction made("123456789012345678901234567890", "987654321098765432109876543216");
    const Fraction sum(fraction_fun2(made, made, 0, nullptr));
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    for (std::string& result : results)
      threads.emplace_back([&] { result = sum.text() + Fraction(fraction_fun2(made, sum, 1, nullptr)).text(); });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& result : results)
      ASSERT_EQ(result,
                "20576131502057613150205761315,82304526758230452675823045268"
                "-20576131502057613150205761315,164609053516460905351646090536");
  }
}
