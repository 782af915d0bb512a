// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "classify/svm/svm.h"
#include "frame/handle.h"
#include "orvane/support_vector_machine.h"

template <>
struct NativeOf<::SVM> {
  using type = NetWork::SVM_c;
};

namespace {

int32_t handOutAll(const std::vector<double>& values, double* out) {
  if (out != nullptr) std::copy(values.begin(), values.end(), out);
  return static_cast<int32_t>(values.size());
}

void take(std::vector<double>& values, const double* source, int32_t n) {
  const auto given = span(source, n);
  values.assign(given.begin(), given.end());
}

}  // namespace

SVM* svm_create(void) { return registered<SVM>(std::make_unique<NetWork::SVM_c>()); }

void svm_setXDim(SVM* svm, int32_t dim) { native(svm).setDim(static_cast<std::size_t>(std::max(dim, 0))); }

void svm_setData(SVM* svm, const double* x, const double* y, int32_t n) { native(svm).setData(x, span(y, n)); }

void svm_addX(SVM* svm, const double* x) { native(svm).addX(x); }

void svm_setY(SVM* svm, const double* y, int32_t n) { take(native(svm).y, y, n); }

int32_t svm_getX(const SVM* svm, double* out) {
  handOutAll(native(svm).x, out);
  return static_cast<int32_t>(native(svm).sampleCount());
}

int32_t svm_getY(const SVM* svm, double* out) { return handOutAll(native(svm).y, out); }

void svm_setType(SVM* svm, int32_t code) { native(svm).setType(code); }

int32_t svm_getType(const SVM* svm) { return native(svm).kernelType; }

void svm_setOther(SVM* svm, const double* params, double c) {
  native(svm).setOther(std::span<const double, 3>(params, 3), c);
}

void svm_getOther(const SVM* svm, double* params, double* c) {
  std::fill_n(params, 3, 0.0);
  handOutAll(native(svm).kernelParam, params);
  *c = native(svm).C;
}

bool svm_setKernelData(SVM* svm, const double* data, int32_t n, const double* values, int32_t count) {
  if (n <= 0 || n != count) return false;
  const auto size = static_cast<std::size_t>(n);
  return native(svm).setKernelData({data, size * size}, span(values, count));
}

void svm_limit(SVM* svm, double rate, int32_t iterLimit, int32_t passLimit) {
  native(svm).rateLimit = rate;
  native(svm).iterLimit = iterLimit;
  native(svm).passLimit = passLimit;
}

bool svm_solve(SVM* svm) { return native(svm).solve(); }

void svm_stop(SVM* svm) { native(svm).requestStop(); }

double svm_predict(const SVM* svm, const double* x, bool flag) {
  const double value = native(svm).predict(x);
  return flag ? NetWork::signOf(value) : value;
}

double svm_getScore(const SVM* svm) { return native(svm).currentScore(); }

int32_t svm_getA(const SVM* svm, double* out) { return handOutAll(native(svm).a, out); }

void svm_setA(SVM* svm, const double* a, int32_t n) { take(native(svm).a, a, n); }

double svm_getB(const SVM* svm) { return native(svm).b; }

void svm_setB(SVM* svm, double b) { native(svm).b = b; }

int32_t svm_getW(const SVM* svm, double* out) { return handOutAll(native(svm).w, out); }

void svm_setW(SVM* svm, const double* w, int32_t n) { take(native(svm).w, w, n); }
