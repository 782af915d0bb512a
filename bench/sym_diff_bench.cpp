// SPDX-License-Identifier: Apache-2.0
// Derivatives and LaTeX of expressions, beside GiNaC. bench/sym_peers.py times SymEngine on the same tasks.

#include <benchmark/benchmark.h>
#include <orvane/sym.h>
#include <orvane/sym_diff.h>
#include <orvane/sym_text.h>

#include <string>
#include <vector>
#ifdef ORVANE_BENCH_GINAC
#include <ginac/ginac.h>

#include <sstream>
#endif

namespace {

constexpr int kOrders = 8;

SymObject* one(SymObject* a, uint8_t code) { return sym_funOneParam(a, code); }
SymObject* two(SymObject* a, SymObject* b, uint8_t code) { return sym_funTwoParam(a, b, code); }

SymMatrix2d* alone(SymObject* node) {
  SymMatrix2d* matrix = sym_createSymMatrix(1, 1);
  sym_setSymMatrixData(matrix, 0, 0, node);
  sym_clearTempVar();
  return matrix;
}

// sin(x) exp(x^2)/(1 + x^2)
SymMatrix2d* wave() {
  SymObject* x = sym_createBaseSymVar("x");
  SymObject* square = two(x, sym_createDouble(2), 5);
  SymObject* product = two(one(x, 20), one(square, 12), 3);
  return alone(two(product, two(sym_createDouble(1), square, 2), 8));
}

// A sum of 125 products sin(x_i + k) exp(k x_j)/x_i^2: about 1,000 nodes.
constexpr int kTerms = 125;

SymMatrix2d* bigSum() {
  std::vector<SymObject*> terms;
  for (int k = 1; k <= kTerms; ++k) {
    const std::string first = "x" + std::to_string(k % 10), second = "x" + std::to_string(k % 7);
    SymObject* a = sym_createBaseSymVar(first.c_str());
    SymObject* sine = one(two(a, sym_createDouble(k), 2), 20);
    SymObject* exponential = one(two(sym_createDouble(k), sym_createBaseSymVar(second.c_str()), 3), 12);
    terms.push_back(two(two(sine, exponential, 3), two(a, sym_createDouble(-2), 5), 3));
  }
  return alone(sym_funMulParam(terms.data(), kTerms, 2));
}

void derivatives(benchmark::State& state) {
  SymMatrix2d* f = wave();
  char message[256];
  double value = 0;
  for (auto _ : state) {
    SymMatrix2d* at = sym_cloneMatrix2d(f);
    for (int k = 0; k < kOrders; ++k) {
      SymMatrix2d* next = sym_diff(at, 1, "x", message);
      sym_freeMatrix2d(at);
      at = next;
    }
    state.PauseTiming();
    sym_setSymValue("x", 0.75);
    value = sym_calcExpressValue(at, 0, 0);
    state.counters["text_bytes"] = sym_getSymStr(at, 0, 0, nullptr, 0);
    sym_freeMatrix2d(at);
    state.ResumeTiming();
  }
  state.counters["value"] = value;
  sym_freeMatrix2d(f);
}
BENCHMARK(derivatives)->Name("eight_derivatives/orvane");

void latex(benchmark::State& state) {
  SymMatrix2d* f = bigSum();
  std::string out(1 << 20, '\0');
  for (auto _ : state) state.counters["bytes"] = sym_getLatexStr(f, 0, 0, out.data(), 1 << 20);
  sym_freeMatrix2d(f);
}
BENCHMARK(latex)->Name("latex_1000/orvane");

#ifdef ORVANE_BENCH_GINAC
void derivativesGinac(benchmark::State& state) {
  const GiNaC::symbol x("x");
  double value = 0;
  for (auto _ : state) {
    // Built anew, as GiNaC keeps the derivatives that it has seen.
    GiNaC::ex at = sin(x) * exp(x * x) / (1 + x * x);
    for (int k = 0; k < kOrders; ++k) at = at.diff(x);
    state.PauseTiming();
    value = GiNaC::ex_to<GiNaC::numeric>(at.subs(x == 0.75).evalf()).to_double();
    state.ResumeTiming();
  }
  state.counters["value"] = value;
}
BENCHMARK(derivativesGinac)->Name("eight_derivatives/ginac");

void latexGinac(benchmark::State& state) {
  std::vector<GiNaC::symbol> x;
  for (int i = 0; i < 10; ++i) x.emplace_back("x" + std::to_string(i));
  GiNaC::ex sum = 0;
  for (int k = 1; k <= kTerms; ++k) sum += sin(x[k % 10] + k) * exp(k * x[k % 7]) * pow(x[k % 10], -2);
  for (auto _ : state) {
    std::ostringstream out;
    out << GiNaC::latex << sum;
    state.counters["bytes"] = static_cast<double>(out.str().size());
  }
}
BENCHMARK(latexGinac)->Name("latex_1000/ginac");
#endif

}  // namespace

BENCHMARK_MAIN();
