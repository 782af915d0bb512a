// SPDX-License-Identifier: Apache-2.0
// apiFun_calcFun: functions of one argument.
#include "array/dispatch.h"
#include "array/rows.h"

namespace ArrayFun {
namespace {

struct Row {
  int code;
  void (*run)(const double* source, int32_t count, double* destination);

  template <double (*f)(double)>
  static void loop(const double* source, int32_t count, double* destination) {
    for (int32_t i = 0; i < count; ++i) destination[i] = f(source[i]);
  }
};

constexpr auto kRows = rowsByCode<Row, Shape::one>();
using Functions = CodeTable<kRows>;

}  // namespace

void calcFun(const double* source, int32_t count, double* destination, uint8_t code) {
  if (const Row* found = Functions::find(code)) found->run(source, count, destination);
}

}  // namespace ArrayFun
