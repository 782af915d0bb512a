// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "orvane/statistics.h"
#include "statistics/descriptive.h"
#include "statistics/normality.h"
#include "statistics/stat_fun.h"

using namespace Statistics;

template <>
struct NativeOf<::StatFun> {
  using type = Statistics::StatFun;
};

using Handle = ::StatFun;

Handle* stat_CreateSBD(const double* x, int32_t n) {
  return registered<Handle>(std::make_unique<Statistics::StatFun>(span(x, n)));
}

void stat_Free(Handle* fun) { MemoryManagement_c::instance().free(fun); }

void stat_SetParam(Handle* fun, const double* values, int32_t n) { native(fun).setParam(span(values, n)); }

int32_t stat_GetFunInfo(const Handle*, uint8_t code, char* out) {
  const std::string text = describe(code);
  if (out != nullptr) std::copy(text.begin(), text.end(), out);
  return static_cast<int32_t>(text.size());
}

void stat_GetData(Handle* fun, uint8_t code, double* out) { std::ranges::copy(native(fun).getData(code), out); }

void stat_calcFun(const Handle* fun, uint8_t code, const double* x, double* y, int32_t n) {
  std::ranges::transform(span(x, n), y, [&](double at) { return native(fun).calcFun(code, at); });
}

void stat_calcInvCDFFun(const Handle* fun, uint8_t code, const double* p, double* x, int32_t n) {
  std::ranges::transform(span(p, n), x, [&](double q) { return native(fun).calcInvCDFFun(code, q); });
}

double stat_testByKSForFun(Handle* fun, uint8_t code) { return native(fun).testByKS(code); }

double stat_testByADForFun(Handle* fun, uint8_t code) { return native(fun).testByAD(code); }

double stat_testByKSForData(const Handle* fun, uint8_t code, const double* x, int32_t n) {
  return native(fun).testByKS(code, span(x, n));
}

double stat_testByADForData(const Handle* fun, uint8_t code, const double* x, int32_t n) {
  return native(fun).testByAD(code, span(x, n));
}

double data_calcDataMean(const double* x, int32_t n) { return calcMean(span(x, n)); }

double data_calcDataStd(const double* x, int32_t n) { return calcDeviation(span(x, n)); }

double data_calcDataMedian(const double* x, int32_t n) { return calcMedian(span(x, n)); }

double data_calcDataSkewness(const double* x, int32_t n) { return calcSkewness(span(x, n)); }

double data_calcDataKurtosis(const double* x, int32_t n) { return calcKurtosis(span(x, n)); }

double data_normTestByKolmogorovSmirnov(const double* x, int32_t n) { return normTestByKolmogorovSmirnov(span(x, n)); }

double data_normTestByAndersonDarling(const double* x, int32_t n) { return normTestByAndersonDarling(span(x, n)); }

double data_normTestByJarqueBera(const double* x, int32_t n) { return normTestByJarqueBera(span(x, n)); }

bool data_normTestByShapiroWilk(const double* x, int32_t n, double* w, double* p, double* mean, double* deviation,
                                bool exactA) {
  if (n < 3) return false;
  const ShapiroWilk result = normTestByShapiroWilk(span(x, n), exactA);
  *w = result.w;
  *p = result.p;
  if (mean != nullptr) *mean = result.mean;
  if (deviation != nullptr) *deviation = result.deviation;
  return true;
}

double data_twoTestByKolmogorovSmirnov(const double* x, int32_t nx, const double* y, int32_t ny) {
  return twoTestByKolmogorovSmirnov(span(x, nx), span(y, ny));
}

int32_t data_normQQData(const double* x, int32_t n, double* a, double* b, double* p) {
  return static_cast<int32_t>(normalQQ(span(x, n), a, b, p));
}

void data_sort(double* x, int32_t n, uint32_t* index, bool ascending) { sortWithIndex(span(x, n), index, ascending); }

void data_segmentCount(const double* x, int32_t n, int32_t segments, double* centres, double* counts) {
  countSegments(span(x, n), span(centres, segments), span(counts, segments));
}

double data_calcMeanAngle(const double* angles, int32_t n) { return calcMeanAngle(span(angles, n)); }
