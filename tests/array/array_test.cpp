// SPDX-License-Identifier: Apache-2.0
// The array functions against the functions of one element, bit by bit, and at the edges of their counts.
#include <gtest/gtest.h>
#include <orvane/array.h>
#include <orvane/polynomial_functions.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "support/functions.h"
#include "support/numbers.h"

namespace {

constexpr double kUntouched = 123.456;

const std::vector<double> kPlaces = {0.0,  -0.0,  0.25, -0.25, 0.5,  -0.5,  0.75,   1.0,   -1.0,  1.5,       2.0,
                                     -2.0, 3.0,   -3.5, 4.5,   7.25, 10.0,  -12.75, 20.5,  40.0,  1e-9,      1e5,
                                     1e22, -3e22, kInf, -kInf, kNaN, 1e300, 5e-324, 18.01, -18.5, 0.99999999};

bool same(double a, double b) { return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0; }

double one(uint8_t code, double x) {
  double out = kUntouched;
  apiFun_calcFun(&x, 1, &out, code);
  return out;
}

double ofOrder(uint8_t code, int32_t n, double x) {
  double out = kUntouched;
  apiFun_calcPoly(&x, 1, &n, 1, &out, code);
  return out;
}

/// The rows of the list that one dispatch serves; of one or two numbers, or of an integer order and a place.
std::vector<functions::Function> served(int count, bool ofOrder = false) {
  std::vector<functions::Function> rows;
  for (const functions::Function& f : functions::all())
    if (f.count == count && f.ofOrder == ofOrder && f.arrayCode != functions::kNone) rows.push_back(f);
  return rows;
}

bool has(const std::vector<functions::Function>& rows, int code) {
  return std::ranges::any_of(rows, [code](const functions::Function& f) { return f.arrayCode == code; });
}

TEST(CalcFun, EveryCodeHasTheBitsOfItsFunction) {
  const auto count = static_cast<int32_t>(kPlaces.size());
  const auto rows = served(1);
  for (const functions::Function& row : rows) {
    const functions::Call call = functions::callOf(row);
    const auto code = static_cast<uint8_t>(row.arrayCode);
    std::vector<double> out(kPlaces.size() + 1, kUntouched), inPlace = kPlaces;
    apiFun_calcFun(kPlaces.data(), count, out.data(), code);
    apiFun_calcFun(inPlace.data(), count, inPlace.data(), code);
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
      EXPECT_TRUE(same(out[i], call(&kPlaces[i]))) << row.name << " at " << kPlaces[i] << ": " << out[i];
      EXPECT_TRUE(same(out[i], inPlace[i])) << row.name << " in place at " << kPlaces[i];
    }
    EXPECT_EQ(out.back(), kUntouched) << row.name;
  }
  for (int code = 0; code < 256; ++code) {
    double out = kUntouched;
    const double x = 0.5;
    apiFun_calcFun(&x, 0, &out, static_cast<uint8_t>(code));
    apiFun_calcFun(&x, -1, &out, static_cast<uint8_t>(code));
    EXPECT_EQ(out, kUntouched) << code;
    EXPECT_EQ(one(static_cast<uint8_t>(code), x) != kUntouched, has(rows, code)) << code;
  }
}

TEST(CalcFun, Roundings) {
  struct Case {
    double x, toEven, rounding, roundZero, fraction;
  };
  for (const Case& c : {Case{2.5, 2, 3, 2, 0.5}, Case{-2.5, -2, -3, -2, -0.5}, Case{3.5, 4, 4, 3, 0.5},
                        Case{-3.5, -4, -4, -3, -0.5}, Case{2.7, 3, 3, 2, 2.7 - 2}, Case{-2.7, -3, -3, -2, -2.7 + 2},
                        Case{-2.25, -2, -2, -2, -0.25}, Case{0.5, 0, 1, 0, 0.5}, Case{1e17, 1e17, 1e17, 1e17, 0}}) {
    EXPECT_EQ(one(24, c.x), c.toEven) << c.x;
    EXPECT_EQ(one(137, c.x), c.rounding) << c.x;
    EXPECT_EQ(one(138, c.x), c.roundZero) << c.x;
    EXPECT_EQ(one(166, c.x), c.fraction) << c.x;
  }
  for (const uint8_t code : {uint8_t{24}, uint8_t{137}, uint8_t{138}, uint8_t{166}})
    EXPECT_TRUE(std::isnan(one(code, kNaN))) << int{code};
  EXPECT_EQ(one(137, kInf), kInf);
  EXPECT_EQ(one(137, -kInf), -kInf);
}

TEST(CalcFun, OwnForms) {
  // x, D'(x), D''(x) by mpmath.
  const double dawson[][3] = {{0.3, 0.830421000987212855, -1.06351593063495153},
                              {-2.5, -0.115418610837177406, -0.130925609851016066},
                              {7.9, -0.0082122708735494668, 0.0021320733623917811},
                              {8.0, -0.00800317932085420671, 0.00205047171856053149},
                              {30.0, -0.000556484063550547906, 0.0000371610109145227719},
                              {1e5, -5.00000000075e-11, 1.0000000003e-15}};
  for (const auto& [x, first, second] : dawson) {
    EXPECT_NEAR(one(49, x) / first, 1, 5e-13) << x;   // up to 2 x^2 = 128 times the error of D
    EXPECT_NEAR(one(50, x) / second, 1, 5e-11) << x;  // and x^2 times more
  }
  const double glasser[][2] = {{0.5, 0.0404658591556431769}, {1, 0.285503388254013865}, {3, 2.13102240218957961},
                               {-2, -1.23300802419709112},   {9, 3.24968540388013566},  {0, 0}};
  for (const auto& [x, value] : glasser) EXPECT_NEAR(one(181, x), value, 1e-13) << x;
  EXPECT_EQ(one(118, -std::exp(1.0)), 1);
  EXPECT_EQ(one(118, 0), std::log(1e-32));
  EXPECT_EQ(one(118, 1e-40), std::log(1e-32));
  EXPECT_TRUE(std::isnan(one(118, kNaN)));
  for (const double x : {1e-12, 0.3, 1.0, 5.0, 17.9}) {
    EXPECT_NEAR(one(43, x) * std::tanh(x), 1, 5e-16) << x;
    EXPECT_EQ(one(43, -x), -one(43, x)) << x;
  }
  EXPECT_EQ(one(43, 18.01), 1);  // 1.0000000000000004 to double precision
  EXPECT_GT(one(43, 18), 1);
  EXPECT_EQ(one(43, -kInf), -1);
}

TEST(CalcFun2, EveryCodeHasTheBitsOfItsFunction) {
  std::vector<double> a, b;
  for (const double x : {-1.5, 0.0, 0.5, 1.0, 2.0, 3.25, kNaN})
    for (const double y : {-0.5, 0.0, 0.25, 0.75, 1.0, 2.5, 9.0}) {
      a.push_back(x);
      b.push_back(y);
    }
  const auto count = static_cast<int32_t>(a.size());
  const auto rows = served(2);
  for (const functions::Function& row : rows) {
    const functions::Call call = functions::callOf(row);
    const auto of = [&](double x, double y) { return call(std::vector{x, y}.data()); };
    const auto code = static_cast<uint8_t>(row.arrayCode);
    std::vector<double> out(a.size() + 1, kUntouched), left = out, right = out, inPlace = a;
    const double scalar = 0.5;
    apiFun_calcFun2(a.data(), count, b.data(), count, out.data(), code);
    apiFun_calcFun2(&scalar, 1, b.data(), count, left.data(), code);
    apiFun_calcFun2(a.data(), count, &scalar, 1, right.data(), code);
    apiFun_calcFun2(inPlace.data(), count, b.data(), count, inPlace.data(), code);
    for (std::size_t i = 0; i < a.size(); ++i) {
      EXPECT_TRUE(same(out[i], of(a[i], b[i]))) << row.name << " at " << a[i] << ", " << b[i];
      EXPECT_TRUE(same(left[i], of(scalar, b[i]))) << row.name << " at " << scalar << ", " << b[i];
      EXPECT_TRUE(same(right[i], of(a[i], scalar))) << row.name << " at " << a[i] << ", " << scalar;
      EXPECT_TRUE(same(out[i], inPlace[i])) << row.name << " in place";
    }
    for (const auto& filled : {out, left, right}) EXPECT_EQ(filled.back(), kUntouched) << row.name;
  }
  for (int code = 0; code < 256; ++code) {
    const double x = 0.5, y = 0.25;
    double out = kUntouched;
    apiFun_calcFun2(&x, 1, &y, 1, &out, static_cast<uint8_t>(code));
    EXPECT_EQ(out != kUntouched, has(rows, code)) << code;
  }
}

TEST(CalcFun2, PairsByCounts) {
  const double a[] = {1, 2, 3, 4, 5}, b[] = {10, 20, 30};
  struct Case {
    int32_t countA, countB;
    std::vector<double> expected;
  };
  for (const Case& c : {Case{5, 3, {11, 22, 33}}, Case{2, 3, {11, 22}}, Case{1, 3, {11, 21, 31}},
                        Case{5, 1, {11, 12, 13, 14, 15}}, Case{1, 1, {11}}, Case{0, 3, {}}, Case{1, 0, {}},
                        Case{0, 1, {}}, Case{-2, 1, {}}, Case{3, -1, {}}, Case{0, 0, {}}}) {
    std::vector<double> out(8, kUntouched), expected = c.expected;
    expected.resize(8, kUntouched);
    apiFun_calcFun2(a, c.countA, b, c.countB, out.data(), 7);
    EXPECT_EQ(out, expected) << c.countA << " and " << c.countB;
  }
  double shared[] = {1, 2, 3};  // the repeated element is overwritten by the first value
  apiFun_calcFun2(shared, 1, shared, 3, shared, 7);
  EXPECT_EQ(std::vector<double>(shared, shared + 3), (std::vector<double>{2, 3, 4}));
}

TEST(CalcPoly, EveryCodeHasTheBitsOfItsFunction) {
  std::vector<double> xs;
  std::vector<int32_t> orders;
  for (const double x : {-1.5, 0.0, 0.3, 0.5, 1.0, 2.5, kNaN})
    for (const int32_t n : {-1, 0, 1, 2, 3, 7, 20}) {
      xs.push_back(x);
      orders.push_back(n);
    }
  const auto count = static_cast<int32_t>(xs.size());
  const auto rows = served(2, true);
  for (const functions::Function& row : rows) {
    const functions::Call call = functions::callOf(row);
    const auto code = static_cast<uint8_t>(row.arrayCode);
    std::vector<double> out(xs.size() + 1, kUntouched), inPlace = xs;
    apiFun_calcPoly(xs.data(), count, orders.data(), count, out.data(), code);
    apiFun_calcPoly(inPlace.data(), count, orders.data(), count, inPlace.data(), code);
    for (std::size_t i = 0; i < xs.size(); ++i) {
      const double expected = call(std::vector{static_cast<double>(orders[i]), xs[i]}.data());
      EXPECT_TRUE(same(out[i], expected)) << row.name << " n = " << orders[i] << " x = " << xs[i];
      EXPECT_TRUE(same(out[i], inPlace[i])) << row.name << " in place";
    }
    EXPECT_EQ(out.back(), kUntouched) << row.name;
  }
  // At order 1 every function has a value at 0.5 or at -0.5.
  for (int code = 0; code < 256; ++code)
    EXPECT_EQ(std::isnan(ofOrder(static_cast<uint8_t>(code), 1, 0.5)) &&
                  std::isnan(ofOrder(static_cast<uint8_t>(code), 1, -0.5)),
              !has(rows, code))
        << code;
}

TEST(CalcPoly, DerivativeOfLegendre) {
  struct Case {
    int32_t n;
    double x, slope, shifted;
  };
  // mpmath.
  for (const Case& c : {Case{1, 0.3, 1, -0.4}, Case{5, 0.3, -0.168562499999999872, -0.270639999999999971},
                        Case{12, -0.7, -1.10561415005589482, 14149888.8424234714},
                        Case{40, 0.99, -92.095867595596428, 0.144580859909194445},
                        Case{7, 1.5, 1172.2333984375, 2199.125}, Case{3, -1, 6, -63}, Case{4, -1, -10, 321}}) {
    EXPECT_NEAR(ofOrder(162, c.n, c.x) / c.slope, 1, 1e-13) << c.n << " at " << c.x;
    EXPECT_NEAR(ofOrder(163, c.n, c.x) / c.shifted, 1, 1e-13) << c.n << " at " << c.x;
  }
  EXPECT_EQ(ofOrder(162, 0, 0.7), 0);
  EXPECT_TRUE(std::isnan(ofOrder(162, -1, 0.7)));
  EXPECT_EQ(ofOrder(162, 2000000, 1.5), kInf);
  EXPECT_EQ(ofOrder(162, 2000000, -1.5), -kInf);
  EXPECT_EQ(ofOrder(162, 3, -kInf), kInf);
  EXPECT_EQ(ofOrder(162, std::numeric_limits<int32_t>::max(), 3), kInf);
}

TEST(CalcPoly, PairsByCounts) {
  const double xs[] = {0.1, 0.2, 0.3, 0.4};
  const int32_t orders[] = {1, 1, 2};
  struct Case {
    int32_t countX, countN;
    std::size_t values, written;
  };
  for (const Case& c : {Case{4, 3, 3, 4}, Case{1, 3, 3, 3}, Case{4, 1, 4, 4}, Case{2, 3, 2, 3}, Case{1, 0, 0, 1},
                        Case{0, 3, 0, 3}, Case{0, 0, 0, 0}, Case{-1, -5, 0, 0}}) {
    std::vector<double> out(6, kUntouched);
    apiFun_calcPoly(xs, c.countX, orders, c.countN, out.data(), 161);
    for (std::size_t i = 0; i < out.size(); ++i) {
      const double x = xs[c.countX == 1 ? 0 : std::min<std::size_t>(i, 3)];
      const int32_t n = orders[c.countN == 1 ? 0 : std::min<std::size_t>(i, 2)];
      const double expected = i < c.values ? math_polyLegendre(n, x) : i < c.written ? kNaN : kUntouched;
      EXPECT_TRUE(same(out[i], expected)) << c.countX << " and " << c.countN << ", element " << i;
    }
  }
  double shared[] = {0.5, 0, 0};  // the repeated place is overwritten by the first value
  const int32_t mixed[] = {2, 1, 3};
  apiFun_calcPoly(shared, 1, mixed, 3, shared, 161);
  EXPECT_EQ(std::vector<double>(shared, shared + 3), (std::vector<double>{-0.125, 0.5, -0.4375}));
  double out[5] = {kUntouched, kUntouched, kUntouched, kUntouched, kUntouched};
  apiFun_calcPoly(xs, 4, orders, 3, out, 170);  // another code: all of the larger count
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(std::isnan(out[i]));
  EXPECT_EQ(out[4], kUntouched);
}

// Codes, counts, overlaps and bits at random: nothing outside the stated elements is written.
TEST(Arrays, AnyCallKeepsToItsElements) {
  std::mt19937_64 bits(4711);
  constexpr int32_t kMost = 6, kGuard = 3;
  for (int round = 0; round < 20000; ++round) {
    std::vector<double> a(kMost), b(kMost), out(kMost + 2 * kGuard, kUntouched);
    std::vector<int32_t> orders(kMost);
    for (int i = 0; i < kMost; ++i) {
      a[i] = static_cast<double>(bits() % 400) / 16 - 5;
      b[i] = static_cast<double>(bits() % 400) / 16 - 5;
      orders[i] = static_cast<int32_t>(bits() % 30) - 4;
    }
    const auto code = static_cast<uint8_t>(bits());
    const auto countA = static_cast<int32_t>(bits() % (kMost + 3)) - 2,
               countB = static_cast<int32_t>(bits() % (kMost + 3)) - 2;
    double* const target = out.data() + kGuard;
    int32_t written = 0;
    switch (round % 4) {
      case 0:
        apiFun_calcFun(a.data(), countA, target, code);
        written = countA;
        break;
      case 1:
        apiFun_calcFun2(a.data(), countA, b.data(), countB, target, code);
        written = countA == 1 ? countB : countB == 1 ? countA : std::min(countA, countB);
        break;
      case 2:
        apiFun_calcPoly(a.data(), countA, orders.data(), countB, target, code);
        written = std::max(countA, countB);
        break;
      default:
        apiFun_randFun(target, countA, static_cast<uint8_t>(round), bits(), code);
        written = countA;
    }
    for (int32_t i = 0; i < kMost + 2 * kGuard; ++i)
      if (i < kGuard || i >= kGuard + std::max(written, 0)) {
        ASSERT_EQ(out[static_cast<std::size_t>(i)], kUntouched) << round << ", code " << int{code};
      }
  }
}

TEST(Arrays, CopyMovesOverlappingElements) {
  double values[] = {1, 2, 3, 4, 5};
  apiFun_Copy(values, 4, values + 1);
  EXPECT_EQ(std::vector<double>(values, values + 5), (std::vector<double>{1, 1, 2, 3, 4}));
  apiFun_Copy(values + 1, 4, values);
  EXPECT_EQ(std::vector<double>(values, values + 5), (std::vector<double>{1, 2, 3, 4, 4}));
  apiFun_Copy(values + 2, 0, values);
  apiFun_Copy(values + 2, -3, values);
  EXPECT_EQ(values[0], 1);
}

TEST(Sort, ValuesAndPositions) {
  std::mt19937_64 bits(99);
  for (const int32_t count : {0, 1, 2, 17, 1000})
    for (const uint8_t descending : {0, 1, 255}) {
      std::vector<double> values(static_cast<std::size_t>(count));
      for (double& v : values) v = static_cast<double>(bits() % 200) / 8 - 10;  // with equal ones
      if (count > 10) values[3] = kInf, values[7] = -kInf, values[5] = kNaN, values[9] = kNaN;
      const std::vector<double> original = values;
      std::vector<uint32_t> places(static_cast<std::size_t>(count) + 1, 7777);
      apiFun_SortForIndex(values.data(), count, descending, places.data());
      EXPECT_TRUE(std::equal(values.begin(), values.end(), original.begin(), same));
      EXPECT_EQ(places.back(), 7777u);
      apiFun_SortForValue(values.data(), count, descending);
      std::set<uint32_t> seen;
      for (std::size_t i = 0; i < values.size(); ++i) {
        ASSERT_LT(places[i], original.size());
        seen.insert(places[i]);
        EXPECT_TRUE(same(original[places[i]], values[i])) << i;  // equal values are the same number
        if (i > 0 && !std::isnan(values[i])) {
          EXPECT_TRUE(descending ? values[i - 1] >= values[i] : values[i - 1] <= values[i]) << i;
        }
      }
      EXPECT_EQ(seen.size(), original.size());
      if (count > 10) {
        EXPECT_TRUE(std::isnan(values[values.size() - 1]) && std::isnan(values[values.size() - 2]));
      }
    }
}

}  // namespace
