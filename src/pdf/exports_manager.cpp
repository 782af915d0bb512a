// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <memory>
#include <vector>

#include "frame/handle.h"
#include "orvane/pdf_manager.h"
#include "pdf/kernel.h"
#include "pdf/manager.h"
#include "pdf/native_pdf.h"

template <>
struct NativeOf<PDFManger> {
  using type = PDF::PDFManger;
};

template <>
struct NativeOf<PDFKernel> {
  using type = PDF::BasePDFKernel;
};

namespace {

std::vector<PDF::BasePDFFun*> natives(PDFFun* const* funs, int32_t count) {
  std::vector<PDF::BasePDFFun*> result;
  for (PDFFun* fun : span(funs, count))
    if (fun != nullptr) result.push_back(&native(fun));
  return result;
}

PDFFun* handleOf(PDF::BasePDFFun* fun) { return reinterpret_cast<PDFFun*>(static_cast<BaseData*>(fun)); }

}  // namespace

PDFManger* pdfManger_create(void) { return registeredShared<PDFManger>(std::make_shared<PDF::PDFManger>()); }

void pdfManger_setData(PDFManger* manager, const double* x, int32_t n) { native(manager).setData(span(x, n)); }

bool pdfManger_setXYData(PDFManger* manager, const double* pairs, int32_t n) {
  const std::size_t count = span(pairs, n).size();
  return native(manager).setXYData({pairs, 2 * count});
}

int32_t pdfManger_getDataSize(const PDFManger* manager) { return native(manager).dataSize(); }

void pdfManger_getCDFData(const PDFManger* manager, double* out) { native(manager).getCDFData(out); }

void pdfManger_getPDFData(const PDFManger* manager, double* out) { native(manager).getPDFData(out); }

void pdfManger_getSrcData(const PDFManger* manager, double* out) { native(manager).getSrcData(out); }

uint8_t pdfManger_optimizer(PDFManger* manager, PDFFun* const* funs, int32_t funCount, const uint8_t* solverCodes,
                            int32_t solverCount, int32_t popSize, int32_t maxIter, int32_t threads, double precision) {
  return native(manager).optimizer(natives(funs, funCount), span(funs, funCount).size(),
                                   {span(solverCodes, solverCount), popSize, maxIter, threads, precision});
}

uint8_t pdfManger_isRun(const PDFManger* manager) { return native(manager).isRun() ? 1 : 0; }

int64_t pdfManger_getProcess(const PDFManger* manager) { return native(manager).process(); }

void pdfManger_stop(PDFManger* manager) { native(manager).stopFit(); }

void pdfManger_getSortPDF(const PDFManger* manager, PDFFun** outFuns, double* outErrors) {
  for (const auto& [fun, error] : native(manager).getSortPDF()) {
    *outFuns++ = handleOf(fun);
    *outErrors++ = error;
  }
}

PDFKernel* pdfManger_createKDEFun(uint8_t type) { return registeredShared<PDFKernel>(PDF::makeKernel(type)); }

void pdfManger_KDECalcPDF(const PDFKernel* kernel, const double* x, double* y, int32_t n) {
  std::ranges::transform(span(x, n), y, [&](double v) { return native(kernel).calcPDF(v); });
}

void pdfManger_KDECalcCDF(const PDFKernel* kernel, const double* x, double* y, int32_t n) {
  std::ranges::transform(span(x, n), y, [&](double v) { return native(kernel).calcCDF(v); });
}

double pdfManger_KDECalcPDFSumError(const PDFKernel* kernel, const double* x, const double* y, int32_t n) {
  return native(kernel).pdfSumError(span(x, n), span(y, n));
}

double pdfManger_KDECalcCDFSumError(const PDFKernel* kernel, const double* x, const double* y, int32_t n) {
  return native(kernel).cdfSumError(span(x, n), span(y, n));
}

void pdfManger_KDESetWidth(PDFKernel* kernel, double w) { native(kernel).setWidth(w); }

void pdfManger_KDESetWidthByR(PDFKernel* kernel, double r) { native(kernel).setWidthByZoom(r); }

void pdfManger_KDESetParam(PDFKernel* kernel, const double* p) { native(kernel).setParams(p); }

int32_t pdfManger_KDEGetParamSize(const PDFKernel* kernel) {
  return static_cast<int32_t>(native(kernel).params.size());
}

const char* pdfManger_KDEGetFunExpress(PDFKernel* kernel) { return native(kernel).latex(); }
