// SPDX-License-Identifier: Apache-2.0
// apiFun_calcFun2: functions of two arguments.
#include <algorithm>

#include "array/dispatch.h"
#include "array/rows.h"

namespace ArrayFun {
namespace {

/// Arguments of one call: a step of 0 repeats the first element, which is read before anything is written.
struct Pairing {
  const double *a, *b;
  int32_t stepA, stepB, count;
};

struct Row {
  int code;
  void (*run)(const Pairing& p, double* destination);

  template <double (*f)(double, double)>
  static void loop(const Pairing& p, double* destination) {
    if (p.stepA == 0) {
      const double a = *p.a;
      for (int32_t i = 0; i < p.count; ++i) destination[i] = f(a, p.b[i]);
    } else if (p.stepB == 0) {
      const double b = *p.b;
      for (int32_t i = 0; i < p.count; ++i) destination[i] = f(p.a[i], b);
    } else {
      for (int32_t i = 0; i < p.count; ++i) destination[i] = f(p.a[i], p.b[i]);
    }
  }
};

constexpr auto kRows = rowsByCode<Row, Shape::two>();
using Functions = CodeTable<kRows>;

}  // namespace

void calcFun2(const double* a, int32_t countA, const double* b, int32_t countB, double* destination, uint8_t code) {
  const Row* found = Functions::find(code);
  if (found == nullptr) return;
  const Pairing pairing{a, b, countA == 1 ? 0 : 1, countB == 1 ? 0 : 1,
                        countA == 1   ? countB
                        : countB == 1 ? countA
                                      : std::min(countA, countB)};
  if (pairing.count > 0) found->run(pairing, destination);
}

}  // namespace ArrayFun
