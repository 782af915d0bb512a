// SPDX-License-Identifier: Apache-2.0
// Workloads whose cost is watched by the instructions that they take (scripts/growth): growth WORKLOAD SIZE runs one,
// growth alone lists them with their two sizes. Nothing here is random, so that a count comes again to the last few.
#include <orvane/array.h>
#include <orvane/bessel.h>
#include <orvane/elementary.h>
#include <orvane/filter.h>
#include <orvane/fraction.h>
#include <orvane/frame.h>
#include <orvane/highprecision.h>
#include <orvane/hypergeometric.h>
#include <orvane/integral.h>
#include <orvane/line_equation.h>
#include <orvane/line_programme.h>
#include <orvane/matrix.h>
#include <orvane/paths.h>
#include <orvane/pdf.h>
#include <orvane/pdf_manager.h>
#include <orvane/smooth.h>
#include <orvane/sym.h>
#include <orvane/sym_diff.h>
#include <orvane/sym_text.h>
#include <orvane/transform.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::size_t places(int n) { return static_cast<std::size_t>(n); }

/// n numbers in (-1, 1) without a pattern.
std::vector<double> scattered(int n) {
  uint64_t state = 88172645463325252u;
  std::vector<double> values(places(n));
  for (double& value : values) {
    state ^= state << 13, state ^= state >> 7, state ^= state << 17;
    value = static_cast<double>(state >> 11) * 0x1p-52 - 1;
  }
  return values;
}

SymObject* variable(int i) { return sym_createBaseSymVar(("x" + std::to_string(i)).c_str()); }

void bySingleCalls(int n, uint8_t code) {
  SymObject* whole = variable(0);
  for (int i = 1; i < n; ++i) whole = sym_funTwoParam(whole, variable(i), code);
  sym_calcExpress(whole);
  sym_clearTempVar();
}

void symSum(int n) { bySingleCalls(n, ORVANE_KIND_ADD); }
void symProduct(int n) { bySingleCalls(n, ORVANE_KIND_MUL); }

/// The matrix 1 by 1 of a sum of sin(i x y) x^i.
SymMatrix2d* waves(int n) {
  std::vector<SymObject*> terms;
  for (int i = 1; i <= n; ++i) {
    SymObject* const factors[] = {sym_createDouble(i), variable(0), variable(1)};
    SymObject* const wave = sym_funOneParam(sym_funMulParam(factors, 3, ORVANE_KIND_MUL), ORVANE_KIND_SIN);
    SymObject* const power = sym_funTwoParam(variable(0), sym_createDouble(i), ORVANE_KIND_POW);
    terms.push_back(sym_funTwoParam(wave, power, ORVANE_KIND_MUL));
  }
  SymMatrix2d* matrix = sym_createSymMatrix(1, 1);
  sym_setSymMatrixData(matrix, 0, 0, sym_funMulParam(terms.data(), n, ORVANE_KIND_ADD));
  sym_clearTempVar();
  return matrix;
}

void symDerivative(int n) {
  SymMatrix2d* f = waves(n);
  char message[256];
  sym_freeMatrix2d(sym_diff(f, 2, "x0", message));
  sym_freeMatrix2d(f);
}

void symText(int n) {
  SymMatrix2d* f = waves(n);
  sym_getSymStr(f, 0, 0, nullptr, 0);
  sym_getLatexStr(f, 0, 0, nullptr, 0);
  sym_freeMatrix2d(f);
}

void symValues(int n) {
  SymMatrix2d* f = waves(10);
  for (int i = 0; i < n; ++i) {
    sym_setSymValue("x0", 0.001 * i);
    sym_calcExpressValue(f, 0, 0);
  }
  sym_freeMatrix2d(f);
}

void symInverse(int n) {
  SymMatrix2d* matrix = sym_createSymMatrix(static_cast<uint32_t>(n), static_cast<uint32_t>(n));
  for (int i = 0; i < n * n; ++i) sym_setSymMatrixData(matrix, i / n, i % n, variable(i));
  sym_freeMatrix2d(sym_oneFun(matrix, ORVANE_SYM_INVERSE));
  sym_freeMatrix2d(matrix);
  sym_clearTempVar();
}

HPNumber* longNumber(int n) {
  std::vector<int64_t> limbs;
  for (const double x : scattered(n)) limbs.push_back(1 + static_cast<int64_t>(std::abs(x) * 9999998));
  return hp_CreateByValue2(limbs.data(), n, -n, false);
}

void hpOperation(int n, uint8_t code) {
  HPNumber *const a = longNumber(n), *const b = longNumber(n + 1);
  for (int i = 0; i < 20; ++i) api_FreeHandle(hp_Fun2(a, b, code, n));
  api_FreeHandle(a);
  api_FreeHandle(b);
}

void hpProduct(int n) { hpOperation(n, 2); }
void hpQuotient(int n) { hpOperation(n, 3); }

void hpExp(int n) {
  HPNumber* const x = longNumber(n);
  api_FreeHandle(hp_Fun1(x, 59, n));
  api_FreeHandle(x);
}

void fractionSum(int n) {
  const int64_t zero = 0, one = 1;
  FractionNumber* sum = fraction_create(&zero, 1, &one, 1, false);
  for (int64_t i = 1; i <= n; ++i) {
    FractionNumber* const term = fraction_create(&one, 1, &i, 1, false);
    FractionNumber* const next = fraction_fun2(sum, term, 0, nullptr);
    api_FreeHandle(term);
    api_FreeHandle(sum);
    sum = next;
  }
  api_FreeHandle(sum);
}

void hypergeometric(int n) {
  for (int i = 0; i < n; ++i) {
    math_Hypergeometric1F1(0.5 + i % 7, 1.25 + i % 5, -3 + 0.1 * (i % 60));
    math_Hypergeometric2F1(0.5 + i % 3, 1.5, 2.25, -0.9 + 0.03 * (i % 60));
  }
}

void pdfSample(int n) {
  PDFManger* manager = pdfManger_create();
  pdfManger_setData(manager, scattered(n).data(), n);
  api_FreeHandle(manager);
}

void pdfValues(int n) {
  PDFFun* fun = pdf_initPDFFunByName("Gamma");
  std::vector<double> x = scattered(n), y(places(n));
  for (double& value : x) value += 1.5;
  pdf_calcCDF(fun, x.data(), y.data(), n);
  api_FreeHandle(fun);
}

void sorted(int n) {
  std::vector<double> values = scattered(n);
  apiFun_SortForValue(values.data(), n, 0);
}

void transform(int n) {
  const std::vector<double> re = scattered(n);
  std::vector<double> outRe(places(n)), outIm(places(n));
  data_FFT(re.data(), n, re.data(), n, outRe.data(), outIm.data());
}

void median(int n) {
  const std::vector<double> in = scattered(n);
  std::vector<double> out(places(n));
  filterByMedianFilter(in.data(), out.data(), n, 51);
}

void inverse(int n) {
  const std::vector<double> a = scattered(n * n);
  std::vector<double> out(places(n * n));
  matrixInverse(a.data(), out.data(), n);
}

void singularValues(int n) {
  const std::vector<double> a = scattered(n * n);
  std::vector<double> u(places(n * n)), s(places(n * n)), v(places(n * n));
  matrixSVD2(a.data(), n, n, u.data(), s.data(), v.data());
}

/// A dense programme that is feasible and bounded: maximise x1 + ... with rows of positive numbers.
void lineProgramme(int n) {
  std::vector<double> c(places(n), -1.0), a = scattered(n * n), b(places(n)), x(places(n));
  for (double& entry : a) entry = 1.1 + entry;
  for (int i = 0; i < n; ++i) b[places(i)] = 10 + i;
  lineProg_solve2(c.data(), a.data(), b.data(), nullptr, nullptr, n, n, 0, x.data());
}

void shortestPath(int n) {
  std::vector<double> matrix = scattered(n * n);
  for (double& weight : matrix) weight = 1.1 + weight;
  api_FreeHandle(progSP_Create2(matrix.data(), static_cast<uint32_t>(n), 0, static_cast<uint32_t>(n - 1)));
}

void quadrature(int n) {
  static double frequency;
  frequency = n;
  math_Integral1D([](double x) { return std::sin(frequency * x) * std::exp(x); }, 0, 1, n);
}

struct Workload {
  const char* name;
  int small, large;
  void (*run)(int n);
};

constexpr Workload kWorkloads[] = {
    {"sym_sum", 500, 2000, symSum},
    {"sym_product", 500, 2000, symProduct},
    {"sym_derivative", 20, 60, symDerivative},
    {"sym_text", 50, 200, symText},
    {"sym_values", 400, 1600, symValues},
    {"sym_inverse", 4, 6, symInverse},
    {"hp_product", 50, 400, hpProduct},
    {"hp_quotient", 50, 400, hpQuotient},
    {"hp_exp", 20, 100, hpExp},
    {"fraction_sum", 200, 800, fractionSum},
    {"hypergeometric", 50, 200, hypergeometric},
    {"pdf_sample", 2000, 20000, pdfSample},
    {"pdf_values", 5000, 20000, pdfValues},
    {"sort", 2000, 20000, sorted},
    {"fft", 1024, 8192, transform},
    {"median", 1000, 5000, median},
    {"inverse", 20, 60, inverse},
    {"svd", 15, 40, singularValues},
    {"line_programme", 10, 30, lineProgramme},
    {"shortest_path", 50, 200, shortestPath},
    {"quadrature", 200, 2000, quadrature},
};

}  // namespace

/// What is counted: callgrind collects inside of this function alone.
extern "C" [[gnu::noinline]] void measured(const Workload& workload, int n) { workload.run(n); }

int main(int argc, char** argv) {
  for (const Workload& workload : kWorkloads) {
    if (argc == 1) std::printf("%s %d %d\n", workload.name, workload.small, workload.large);
    if (argc == 3 && std::strcmp(argv[1], workload.name) == 0) {
      measured(workload, std::atoi(argv[2]));
      return 0;
    }
  }
  return argc == 1 ? 0 : 2;
}
