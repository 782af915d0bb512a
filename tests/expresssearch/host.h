// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/expression_search.h>
#include <orvane/frame.h>

#include <random>
#include <sstream>

#include "support/csv.h"
#include "support/reference.h"

using Vector = std::vector<double>;

inline Cells split(const std::string& line, char mark) {
  Cells cells;
  std::istringstream stream(line);
  for (std::string cell; std::getline(stream, cell, mark);) cells.push_back(cell);
  return cells;
}

/// values[i] = f(i).
template <class F>
Vector tabulated(std::size_t n, F f) {
  Vector out(n);
  for (std::size_t i = 0; i < n; ++i) out[i] = f(i);
  return out;
}

/// n values spread over [lo, hi].
inline Vector draws(std::mt19937& rng, std::size_t n, double lo, double hi) {
  return tabulated(n, [&](std::size_t) { return lo + (hi - lo) * static_cast<double>(rng()) / 4294967296.0; });
}

inline std::vector<Vector> drawnTerms(int count, std::size_t rows, uint32_t seed = 11) {
  std::mt19937 rng(seed);
  std::vector<Vector> terms;
  for (int i = 0; i < count; ++i) terms.push_back(draws(rng, rows, 0.5, 2.0));
  return terms;
}

inline double squaredError(const Vector& a, const Vector& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
  return sum;
}

/// A result as a host sees it, its lists without the end marks, the indices ascending.
struct Found {
  const SearchResult* handle = nullptr;
  Vector info, coef, coef2;
  std::vector<int32_t> idx, denIdx;
  double error() const { return info[5]; }
};

inline Found read(const SearchResult* result) {
  Found found{result, Vector(7), {}, {}, {}, {}};
  api_ES_GetResultInfo(result, found.info.data());
  const auto n = static_cast<std::size_t>(found.info[2]);
  for (Vector* list : {&found.coef, &found.coef2}) list->assign(n + 2, NAN);
  for (auto* indices : {&found.idx, &found.denIdx}) indices->assign(n, -1);
  api_ES_GetResultForTwoIndex(result, found.coef.data(), found.idx.data(), found.coef2.data(), found.denIdx.data());
  for (Vector* list : {&found.coef, &found.coef2}) {
    const auto end = std::find(list->begin(), list->end(), 1e300);
    EXPECT_NE(end, list->end()) << "no end mark";
    list->erase(end, list->end());
  }
  for (auto* indices : {&found.idx, &found.denIdx}) {
    std::erase(*indices, -1);
    std::sort(indices->begin(), indices->end());
  }
  return found;
}

/// A host's search.
struct Search {
  ExpressSearch* es;
  std::size_t rows = 0;

  explicit Search(ExpressSearch* handle = api_ES_Create()) : es(handle) {}
  explicit Search(const std::vector<Vector>& columns) : Search() { addColumns(columns); }
  Search(const std::vector<Vector>& terms, const Vector& y) : Search() {
    for (const Vector& term : terms) api_ES_AddX(es, term.data(), static_cast<int32_t>(term.size()));
    api_ES_SetY(es, y.data(), static_cast<int32_t>(y.size()));
    rows = terms.empty() ? y.size() : terms.front().size();
  }
  ~Search() { api_FreeHandle(es); }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  void addColumns(const std::vector<Vector>& columns) {
    for (const Vector& c : columns) api_ES_AddOriginalData(es, c.data(), static_cast<int32_t>(c.size()));
    rows = columns.front().size();
  }
  Search& limits(double error, double fit = -1.0, int32_t count = 0) {
    api_ES_SetLimitCondition(es, error, fit, count);
    return *this;
  }
  Search& run(int32_t maxTerms, int kind = ES_KIND_RATIONAL, int transform = ES_TRANSFORM_NONE) {
    api_ES_Search(es, maxTerms, static_cast<uint8_t>(kind), static_cast<uint8_t>(transform));
    return *this;
  }
  uint32_t accepted() const { return api_ES_GetResultNum(es); }
  uint32_t judged() const { return api_ES_GetSearchNum(es); }
  bool any() const {
    double out[7] = {};
    const bool found = api_ES_GetBestResult(es, out) != nullptr;
    EXPECT_EQ(found, out[0] != 255.0);
    return found;
  }
  Found best() const { return read(api_ES_GetBestResult(es, nullptr)); }
  /// The accepted results by error.
  std::vector<Found> ranking() const {
    std::vector<Found> all;
    for (uint32_t i = 0; i < accepted(); ++i) all.push_back(read(api_ES_GetResultByIndex(es, int32_t(i), nullptr)));
    std::sort(all.begin(), all.end(), [](const Found& a, const Found& b) { return a.error() < b.error(); });
    return all;
  }
  Vector values(const SearchResult* result) const {
    Vector out(rows);
    api_ES_CalExpress(es, result, out.data());
    return out;
  }
};
