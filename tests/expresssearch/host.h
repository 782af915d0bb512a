// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/expression_search.h"
#include "orvane/frame.h"

using Vector = std::vector<double>;
using Cells = std::vector<std::string>;

inline Cells split(const std::string& line, char mark) {
  Cells cells;
  std::istringstream stream(line);
  for (std::string cell; std::getline(stream, cell, mark);) cells.push_back(cell);
  return cells;
}

/// The lines of a table that are no comments.
inline std::vector<std::string> referenceLines(const std::string& name) {
  std::ifstream file(ORVANE_REFERENCE_DIR "/expresssearch/" + name);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  EXPECT_FALSE(lines.empty()) << "no reference table " << name;
  return lines;
}

inline int32_t length(const Vector& v) { return static_cast<int32_t>(v.size()); }

/// n values spread over [lo, hi].
inline Vector draws(std::mt19937& rng, int n, double lo, double hi) {
  Vector out(static_cast<std::size_t>(n));
  for (double& v : out) v = lo + (hi - lo) * static_cast<double>(rng()) / 4294967296.0;
  return out;
}

/// values[i] = f(i).
template <class F>
Vector tabulated(std::size_t n, F f) {
  Vector out(n);
  for (std::size_t i = 0; i < n; ++i) out[i] = f(i);
  return out;
}

/// A result as a host sees it, its lists without the end marks.
struct Found {
  const SearchResult* handle = nullptr;
  Vector info, coef, coef2;
  std::vector<int32_t> idx, denIdx;
  double error() const { return info[5]; }
  double fit() const { return info[6]; }
};

inline Found read(const SearchResult* result) {
  Found found;
  found.handle = result;
  found.info.assign(7, 0.0);
  api_ES_GetResultInfo(result, found.info.data());
  const auto n = static_cast<std::size_t>(found.info[2]);
  Vector* lists[] = {&found.coef, &found.coef2};
  for (Vector* list : lists) list->assign(n + 2, NAN);
  found.idx.assign(n, -1);
  found.denIdx.assign(n, -1);
  api_ES_GetResultForTwoIndex(result, found.coef.data(), found.idx.data(), found.coef2.data(), found.denIdx.data());
  for (Vector* list : lists) {
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
  Search(const std::vector<Vector>& terms, const Vector& y) : Search() {
    for (const Vector& term : terms) api_ES_AddX(es, term.data(), length(term));
    api_ES_SetY(es, y.data(), length(y));
    rows = terms.empty() ? y.size() : terms.front().size();
  }
  explicit Search(const std::vector<Vector>& columns) : Search() {
    for (const Vector& column : columns) api_ES_AddOriginalData(es, column.data(), length(column));
    rows = columns.front().size();
  }
  ~Search() { api_FreeHandle(es); }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  Search& limits(double error, double fit = -1.0, int32_t count = 0) {
    api_ES_SetLimitCondition(es, error, fit, count);
    return *this;
  }
  Search& run(int32_t maxTerms, uint8_t kind = ES_KIND_RATIONAL, uint8_t transform = ES_TRANSFORM_NONE) {
    api_ES_Search(es, maxTerms, kind, transform);
    return *this;
  }
  uint32_t judged() const { return api_ES_GetSearchNum(es); }
  uint32_t accepted() const { return api_ES_GetResultNum(es); }
  bool any() const {
    double out[7] = {0};
    const SearchResult* result = api_ES_GetBestResult(es, out);
    EXPECT_EQ(result == nullptr, out[0] == 255.0);
    return result != nullptr;
  }
  Found best() const { return read(api_ES_GetBestResult(es, nullptr)); }
  /// The accepted results by error.
  std::vector<Found> ranking() const {
    std::vector<Found> all;
    for (uint32_t i = 0; i < accepted(); ++i)
      all.push_back(read(api_ES_GetResultByIndex(es, static_cast<int32_t>(i), nullptr)));
    std::sort(all.begin(), all.end(), [](const Found& a, const Found& b) { return a.error() < b.error(); });
    return all;
  }
  Vector values(const SearchResult* result) const {
    Vector out(rows);
    api_ES_CalExpress(es, result, out.data());
    return out;
  }
};

inline double squaredError(const Vector& a, const Vector& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
  return sum;
}

/// All products of powers of the inputs with exponents from `least` on, whose sizes sum to at most `degree`.
inline std::vector<Vector> monomials(const std::vector<Vector>& inputs, int degree, int least) {
  struct Partial {
    Vector value;
    int left;
    bool constant;
  };
  std::vector<Partial> all{{Vector(inputs.front().size(), 1.0), degree, true}};
  for (const Vector& input : inputs) {
    std::vector<Partial> next;
    for (const Partial& base : all)
      for (int e = std::max(least, -base.left); e <= base.left; ++e) {
        Partial grown{base.value, base.left - std::abs(e), base.constant && e == 0};
        for (std::size_t i = 0; i < input.size(); ++i) grown.value[i] *= std::pow(input[i], e);
        next.push_back(grown);
      }
    all = next;
  }
  std::vector<Vector> out;
  for (const Partial& one : all)
    if (!one.constant) out.push_back(one.value);
  return out;
}
