// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/text.h"
#include "pdf/factory.h"
#include "pdf/native_pdf.h"

PDFFun* pdf_initPDFFun(int32_t type) { return registeredShared<PDFFun>(PDF::makePDFFun(type)); }

PDFFun* pdf_initPDFFunByName(const char* name) { return registeredShared<PDFFun>(PDF::makePDFFunByName(name)); }

int32_t pdf_getAllPDFFun(int32_t* out, int32_t capacity) {
  const auto& codes = PDF::allPDFCodes();
  const auto count = static_cast<int32_t>(codes.size());
  if (capacity >= count) std::ranges::copy(codes, out);
  return count;
}

uint32_t pdf_getType(const PDFFun* fun) { return native(fun).pdfType; }

const char* pdf_getName(const PDFFun* fun) { return native(fun).getName().c_str(); }

const char* pdf_getLatexExpress(PDFFun* fun) {
  std::string sheet;
  native(fun).latexText = toGBK(native(fun).getLatex(sheet));
  return native(fun).latexText.c_str();
}

double pdf_getError(const PDFFun* fun) { return native(fun).fitError; }

void pdf_calcPDF(const PDFFun* fun, const double* x, double* y, int32_t n) {
  native(fun).calcPDFs(span(x, n), span(y, n));
}

void pdf_calcCDF(const PDFFun* fun, const double* x, double* y, int32_t n) {
  native(fun).calcCDFs(span(x, n), span(y, n));
}

bool pdf_setParam(PDFFun* fun, const double* values, int32_t n) {
  const auto size = static_cast<int32_t>(native(fun).paramSize());
  if (size > n) return false;
  native(fun).setParams({values, values + size});
  return true;
}

int32_t pdf_getParam(const PDFFun* fun, double* out, int32_t capacity) {
  const auto size = static_cast<int32_t>(native(fun).paramSize());
  if (size <= capacity) native(fun).getParamsRaw(out);
  return size;
}

PDFFun* pdf_clone(const PDFFun* fun) { return registeredShared<PDFFun>(PDF::clonePDFFun(native(fun))); }
