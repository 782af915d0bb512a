// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/auto_search.h"
#include "expresssearch/express_search.h"
#include "expresssearch/kinds.h"
#include "frame/handle.h"
#include "orvane/expression_search.h"

template <>
struct NativeOf<ExpressSearch> {
  using type = Search::ExpressSearch_c;
};

template <>
struct NativeOf<AutoExpressSearch> {
  using type = Search::AutoExpressSearch_c;
};

template <>
struct NativeOf<SearchResult> {
  using type = Search::Result;
};

namespace {
const SearchResult* handle(const Search::Result* result) {
  return result == nullptr ? nullptr : handleOf<SearchResult>(const_cast<Search::Result*>(result));
}
}  // namespace

ExpressSearch* api_ES_Create(void) { return registered<ExpressSearch>(std::make_unique<Search::ExpressSearch_c>()); }

ExpressSearch* api_ES_Clone(const ExpressSearch* es) { return registered<ExpressSearch>(native(es).clone()); }

void api_ES_AddX(ExpressSearch* es, const double* data, int32_t n) { native(es).addX(span(data, n)); }

void api_ES_SetY(ExpressSearch* es, const double* data, int32_t n) { native(es).setY(span(data, n)); }

void api_ES_AddOriginalData(ExpressSearch* es, const double* data, int32_t n) {
  native(es).addOriginalData(span(data, n));
}

void api_ES_SetLimitCondition(ExpressSearch* es, double errorLimit, double fitLimit, int32_t limitCount) {
  native(es).limits = {errorLimit, fitLimit};
  native(es).limitCount = limitCount;
}

void api_ES_SetBirdParam(ExpressSearch* es, int32_t pop, int32_t iter, uint8_t flag) {
  native(es).bird = {pop, iter, flag};
}

void api_ES_SetSolverParam(ExpressSearch* es, int32_t iter, int32_t noImprove, double tol, double target) {
  native(es).solver = {iter, noImprove, tol, target};
}

void api_ES_Search(ExpressSearch* es, int32_t maxTerms, uint8_t kind, uint8_t yTransform) {
  native(es).search(maxTerms, kind, yTransform);
}

void api_ES_Stop(ExpressSearch* es) { native(es).askStop(); }

uint32_t api_ES_GetResultNum(const ExpressSearch* es) { return static_cast<uint32_t>(native(es).store.size()); }

uint32_t api_ES_GetSearchNum(const ExpressSearch* es) { return static_cast<uint32_t>(native(es).store.candidates()); }

const SearchResult* api_ES_GetBestResult(ExpressSearch* es, double* out) { return handle(native(es).store.best(out)); }

const SearchResult* api_ES_GetResultByIndex(ExpressSearch* es, int32_t i, double* out) {
  return handle(native(es).store.at(i, out));
}

void api_ES_GetResultInfo(const SearchResult* result, double* out) { native(result).info(out); }

int32_t api_ES_GetResultForTwoIndex(const SearchResult* result, double* coef, int32_t* idx, double* coef2,
                                    int32_t* denIdx) {
  return native(result).lists(coef, idx, coef2, denIdx);
}

void api_ES_CalExpress(const ExpressSearch* es, const SearchResult* result, double* x) {
  Search::calExpress(native(es), native(result), x);
}

AutoExpressSearch* api_AutoES_Create(void) {
  return registered<AutoExpressSearch>(std::make_unique<Search::AutoExpressSearch_c>());
}

void api_AutoES_AddX(AutoExpressSearch* search, const double* data, int32_t n) { native(search).addX(span(data, n)); }

void api_AutoES_SetY(AutoExpressSearch* search, const double* data, int32_t n) { native(search).setY(span(data, n)); }

void api_AutoES_SetLimitCondition(AutoExpressSearch* search, double errorLimit, double fitLimit, int32_t limitCount) {
  native(search).setLimits({errorLimit, fitLimit}, limitCount);
}

void api_AutoES_Search(AutoExpressSearch* search, int32_t maxTerms, int32_t stageLimit) {
  native(search).search(maxTerms, stageLimit);
}

void api_AutoES_Stop(AutoExpressSearch* search) { native(search).askStop(); }

const SearchResult* api_AutoES_GetResult(AutoExpressSearch* search, int32_t stage, double* out) {
  return handle(native(search).stageResult(stage, out));
}

double api_AutoES_GetError(const AutoExpressSearch* search) { return native(search).error(); }

uint32_t api_AutoES_GetSearchNum(const AutoExpressSearch* search) {
  return static_cast<uint32_t>(native(search).candidates());
}

void api_AutoES_CalExpress(AutoExpressSearch* search, double* out) { native(search).calExpress(out); }
