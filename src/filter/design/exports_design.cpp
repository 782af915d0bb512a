// SPDX-License-Identifier: Apache-2.0
#include "filter/design/filter_by_fir.h"
#include "filter/design/filter_opt_fun.h"
#include "frame/handle.h"
#include "orvane/filter.h"

/// The handle of either kind, for what both store.
struct AnyFilter;

template <>
struct NativeOf<AnyFilter> {
  using type = Filter::BaseFilter;
};
template <>
struct NativeOf<FirFilter> {
  using type = Filter::FilterByFIR;
};
template <>
struct NativeOf<FilterObjective> {
  using type = Filter::FilterOptFun;
};

namespace {
Filter::BaseFilter& anyFilter(void* filter) { return native(static_cast<AnyFilter*>(filter)); }
}  // namespace

FirFilter* fir_Create(void) { return registered<FirFilter>(std::make_unique<Filter::FilterByFIR>()); }

void fir_setType(void* filter, uint8_t type) { anyFilter(filter).setType(type); }

void fir_setSamplingFrequency(void* filter, double frequency) { anyFilter(filter).setSamplingFrequency(frequency); }

void fir_setLimitFrequency(void* filter, double frequency) { anyFilter(filter).setLimitFrequency(frequency); }

void fir_setLowLimitFrequency(void* filter, double frequency) { anyFilter(filter).setLowLimitFrequency(frequency); }

void fir_setHighLimitFrequency(void* filter, double frequency) { anyFilter(filter).setHighLimitFrequency(frequency); }

void fir_setFilterOrder(FirFilter* filter, int32_t n) { native(filter).setFilterOrder(n); }

int32_t fir_getCoefficientSize(const FirFilter* filter) { return native(filter).getCoefficient(nullptr); }

int32_t fir_getCoefficient(const FirFilter* filter, double* out) { return native(filter).getCoefficient(out); }

bool fir_setCoefficient(FirFilter* filter, const double* in) { return native(filter).setCoefficient(in); }

void fir_setWindow(FirFilter* filter, int32_t code) { native(filter).setWindow(code); }

void fir_setWindowParam(FirFilter* filter, double value) { native(filter).setWindowParam(value); }

void fir_setWindowParam2(FirFilter* filter, const double* values, int32_t n) {
  native(filter).setWindowParams(span(values, n));
}

double fir_getWindowParam(const FirFilter* filter, int32_t number) { return native(filter).getWindowParam(number); }

void fir_norm(FirFilter* filter, double value) { native(filter).setNorm(value); }

void fir_setMethod(FirFilter* filter, uint8_t method) { native(filter).setMethod(method != 0); }

void fir_solveByWindow(FirFilter* filter) { native(filter).solveByWindow(); }

bool fir_judgeCoefficient(const FirFilter* filter) { return native(filter).judgeCoefficient(); }

bool fir_filter(FirFilter* filter, const double* x, double* y, int32_t n) { return native(filter).filter(x, y, 0, n); }

void fir_createIIR(FirFilter* filter) { native(filter).createIIR(); }

bool fir_solveByIIR(FirFilter* filter, double gain, uint8_t kind) { return native(filter).solveByIIR(kind, gain); }

void fir_getIIRCoefficient(const FirFilter* filter, double* b, double* a, int32_t* nb, int32_t* na) {
  native(filter).getIIRCoefficient(b, a, nb, na);
}

void fir_setIIRCoefficient(FirFilter* filter, const double* b, const double* a, int32_t nb, int32_t na) {
  native(filter).setIIRCoefficient(span(b, nb), span(a, na));
}

void fir_addSample(FirFilter* filter, const double* x, const double* y, int32_t n) {
  native(filter).getOptimizer().addSample(span(x, n), span(y, n));
}

void fir_lineSolverClear(FirFilter* filter) { native(filter).clearSamples(); }

double fir_solveByLineFIRSolver(FirFilter* filter, uint8_t method) {
  return native(filter).solveByLineFIRSolver(method);
}

FilterObjective* filter_Create(void) { return registered<FilterObjective>(std::make_unique<Filter::FilterOptFun>()); }

bool filter_setFIROpt(FilterObjective* objective, int32_t nb) { return native(objective).setFIROpt(nb); }

bool filter_setIIROpt(FilterObjective* objective, int32_t nb, int32_t na) {
  return native(objective).setIIROpt(nb, na);
}

void filter_setParam(FilterObjective* objective, const double* p) { native(objective).setParam(p); }

void filter_setImagWeight(FilterObjective* objective, double value) { native(objective).setImagWeight(value); }

void filter_setSampleData(FilterObjective* objective, const double* angle, const double* target, int32_t n) {
  native(objective).setSampleData(span(angle, n), span(target, n));
}

void filter_setSampleSize(FilterObjective* objective, int32_t m) { native(objective).setSampleSize(m); }

double filter_optFun(FilterObjective* objective, const double* p) { return native(objective).optFun(p); }

double filter_calcErrorByIIR(const FilterObjective* objective, const double* b, const double* a, int32_t nb,
                             int32_t na) {
  return native(objective).calcError(span(b, nb), span(a, na));
}
