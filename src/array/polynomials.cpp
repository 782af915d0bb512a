// SPDX-License-Identifier: Apache-2.0
// apiFun_calcPoly: functions of an integer order and a place.
#include <algorithm>

#include "array/dispatch.h"
#include "array/rows.h"
#include "frame/numbers.h"

namespace ArrayFun {
namespace {

struct Row {
  int code;
  double (*run)(int32_t n, double x);

  template <double (*f)(int32_t, double)>
  static double loop(int32_t n, double x) {
    return f(n, x);
  }
};

constexpr auto kRows = rowsByCode<Row, Shape::ofOrder>();
using Functions = CodeTable<kRows>;

}  // namespace

void calcPoly(const double* xs, int32_t countX, const int32_t* orders, int32_t countN, double* destination,
              uint8_t code) {
  const int32_t count = std::max({countX, countN, 0});
  const int32_t paired = countX == 1 ? countN : countN == 1 ? countX : std::min(countX, countN);
  const Row* found = Functions::find(code);
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
