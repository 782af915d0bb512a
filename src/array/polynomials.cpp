// SPDX-License-Identifier: Apache-2.0
// apiFun_calcPoly: functions of an integer order and a place.
#include <algorithm>
#include <cmath>
#include <limits>

#include "array/dispatch.h"
#include "special/special_function.h"

using namespace SpecialFunction;

namespace ArrayFun {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr int32_t kLongest = 10000000;

// P'_n(x) by P'_k = P'_(k-2) + (2k-1) P_(k-1) beside the recurrence of P; in closed form for orders without end.
double diffLegendre(int32_t n, double x) {
  if (n < 0 || std::isnan(x)) return kNaN;
  if (n == 0) return 0;
  const bool minus = x < 0 && n % 2 == 0;
  if (std::abs(x) == 1) return (minus ? -0.5 : 0.5) * n * (n + 1.0);
  if (std::isinf(x)) return n == 1 ? 1 : minus ? -kInf : kInf;
  if (n > kLongest) {
    if (std::abs(x) > 1) return minus ? -kInf : kInf;
    return n * (x * calcPolyLegendre(n, x) - calcPolyLegendre(n - 1, x)) / ((x - 1) * (x + 1));
  }
  double before = 1, value = x, slopeBefore = 0, slope = 1;  // P_0, P_1 and their derivatives
  for (double k = 2; k <= n; k += 1) {
    const double nextSlope = slopeBefore + (2 * k - 1) * value;
    slopeBefore = slope;
    slope = nextSlope;
    const double next = ((2 * k - 1) * x * value - (k - 1) * before) / k;
    before = value;
    value = next;
    if (!std::isfinite(value)) return minus ? -kInf : kInf;
  }
  return slope;
}

double shiftedLegendre(int32_t n, double x) { return calcPolyLegendre(n, 2 * x - 1); }

struct Row {
  uint8_t code;
  double (*run)(int32_t n, double x);
};

/// A routine that takes its order as a double.
template <double (*kFunction)(double, double)>
double ofOrder(int32_t n, double x) {
  return kFunction(n, x);
}

constexpr Row kRows[] = {
    {161, calcPolyLegendre},          {162, diffLegendre},
    {163, shiftedLegendre},           {171, calcPolyByBernoulli},
    {172, ofOrder<calcBoseEinstein>}, {173, ofOrder<calcClausen>},
    {174, ofOrder<calcClausenC>},     {175, ofOrder<calcClausenS>},
    {176, ofOrder<calcExpIntegralP>}, {177, ofOrder<calcFermiDirac>},
    {178, calcPolyHermite},           {179, calcPolyLaguerre},
    {180, ofOrder<calcPolyLog>},
};
constexpr Table kTable(kRows);

}  // namespace

void calcPoly(const double* xs, int32_t countX, const int32_t* orders, int32_t countN, double* destination,
              uint8_t code) {
  const int32_t count = std::max({countX, countN, 0});
  const int32_t paired = countX == 1 ? countN : countN == 1 ? countX : std::min(countX, countN);
  const Row* found = kTable.find(code);
  int32_t done = 0;
  if (found != nullptr && paired > 0) {
    double (*const function)(int32_t, double) = found->run;
    const int32_t stepX = countX == 1 ? 0 : 1, stepN = countN == 1 ? 0 : 1;
    const double first = *xs;  // a destination that is xs itself must not change the element that is repeated
    for (; done < paired; ++done) destination[done] = function(orders[done * stepN], stepX == 0 ? first : xs[done]);
  }
  for (; done < count; ++done) destination[done] = kNaN;
}

}  // namespace ArrayFun
