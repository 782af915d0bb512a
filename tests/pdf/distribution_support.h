// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

#include "orvane/frame.h"
#include "orvane/pdf.h"

/// A handle of a distribution that is released at the end of its scope.
struct Distribution {
  explicit Distribution(PDFFun* handle) : handle(handle, api_FreeHandle) {}
  explicit Distribution(int32_t code, const std::vector<double>& params = {}) : Distribution(pdf_initPDFFun(code)) {
    if (!params.empty()) pdf_setParam(handle.get(), params.data(), static_cast<int32_t>(params.size()));
  }

  operator PDFFun*() const { return handle.get(); }
  double pdf(double x) const {
    pdf_calcPDF(*this, &x, &x, 1);
    return x;
  }
  double cdf(double x) const {
    pdf_calcCDF(*this, &x, &x, 1);
    return x;
  }
  std::vector<double> params() const {
    std::vector<double> values(static_cast<std::size_t>(pdf_getParam(*this, nullptr, 0)));
    pdf_getParam(*this, values.data(), static_cast<int32_t>(values.size()));
    return values;
  }

  std::shared_ptr<PDFFun> handle;
};

inline std::vector<int32_t> allCodes() {
  std::vector<int32_t> codes(static_cast<std::size_t>(pdf_getAllPDFFun(nullptr, 0)));
  pdf_getAllPDFFun(codes.data(), static_cast<int32_t>(codes.size()));
  return codes;
}
