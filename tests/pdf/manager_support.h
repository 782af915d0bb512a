// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/frame.h>
#include <orvane/pdf.h>
#include <orvane/pdf_manager.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <numeric>
#include <utility>
#include <vector>

struct Release {
  void operator()(void* handle) const { api_FreeHandle(handle); }
};
template <class Handle>
using Owned = std::unique_ptr<Handle, Release>;

using Values = std::vector<double>;

/// A manager as a host would wrap it.
struct Manager {
  Owned<PDFManger> handle{pdfManger_create()};

  void sample(const Values& x) { pdfManger_setData(handle.get(), x.data(), static_cast<int32_t>(x.size())); }
  bool pairs(const Values& xw) {
    return pdfManger_setXYData(handle.get(), xw.data(), static_cast<int32_t>(xw.size() / 2));
  }
  std::size_t size() const { return static_cast<std::size_t>(pdfManger_getDataSize(handle.get())); }
  Values read(void (*getter)(const PDFManger*, double*)) const {
    Values out(size(), -77.0);
    getter(handle.get(), out.data());
    return out;
  }
  Values xs() const { return read(pdfManger_getSrcData); }
  Values cdf() const { return read(pdfManger_getCDFData); }
  Values density() const { return read(pdfManger_getPDFData); }

  uint8_t fit(const std::vector<PDFFun*>& funs, const std::vector<uint8_t>& codes, int32_t popSize, int32_t maxIter,
              int32_t threads, double precision) {
    return pdfManger_optimizer(handle.get(), funs.data(), static_cast<int32_t>(funs.size()), codes.data(),
                               static_cast<int32_t>(codes.size()), popSize, maxIter, threads, precision);
  }
  std::vector<std::pair<PDFFun*, double>> ranking(std::size_t count) const {
    std::vector<PDFFun*> funs(count);
    Values errors(count);
    pdfManger_getSortPDF(handle.get(), funs.data(), errors.data());
    std::vector<std::pair<PDFFun*, double>> result;
    for (std::size_t i = 0; i < count; ++i) result.emplace_back(funs[i], errors[i]);
    return result;
  }
};

/// Distributions by code, owned, with the bare pointers beside them.
struct Distributions {
  explicit Distributions(const std::vector<int32_t>& codes) {
    for (int32_t code : codes) {
      owned.emplace_back(pdf_initPDFFun(code));
      bare.push_back(owned.back().get());
    }
  }
  std::vector<Owned<PDFFun>> owned;
  std::vector<PDFFun*> bare;
};

inline Values parametersOf(const PDFFun* fun) {
  Values out(static_cast<std::size_t>(pdf_getParam(fun, nullptr, 0)));
  pdf_getParam(fun, out.data(), static_cast<int32_t>(out.size()));
  return out;
}

/// Sum of squares between a distribution as it stands and the manager's empirical function.
inline double distance(const Manager& manager, const PDFFun* fun) {
  const Values x = manager.xs(), f = manager.cdf();
  Values y(x.size());
  pdf_calcCDF(fun, x.data(), y.data(), static_cast<int32_t>(y.size()));
  double sum = 0;
  for (std::size_t i = 0; i < y.size(); ++i) sum += (y[i] - f[i]) * (y[i] - f[i]);
  return sum;
}

/// Couples (x, weight) whose empirical distribution function is `distribution` at n points between `low` and `high`
/// (low must have a share of its own; the last one counts as 1).
template <class Function>
Values exactPairs(Function distribution, double low, double high, int n) {
  Values result;
  double before = 0;
  for (int i = 0; i < n; ++i) {
    const double x = low + (high - low) * i / (n - 1), f = i + 1 == n ? 1.0 : distribution(x);
    result.insert(result.end(), {x, f - before});
    before = f;
  }
  return result;
}
