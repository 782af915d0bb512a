// SPDX-License-Identifier: Apache-2.0
// Construction, evaluation and matrices of expressions, beside GiNaC. bench/sym_peers.py times SymEngine on the same
// tasks.
#include <benchmark/benchmark.h>
#include <orvane/sym.h>
#include <orvane/sym_calculus.h>

#include <string>
#include <vector>
#ifdef ORVANE_BENCH_GINAC
#include <ginac/ginac.h>
#endif

namespace {

enum Code : uint8_t { Add = 2, Mul = 3, Pow = 5, Subtract = 7, Divide = 8, Exp = 12, Sin = 20, Cos = 21 };

constexpr int kTerms = 1000, kVariables = 50, kBlocks = 16, kSize = 6;

// The tasks, written once over the operations of each library.
//   term i of the sum: (i mod 7 + 1) x_(i mod 50)^(1 + i mod 3) x_(7i + 3 mod 50)
//   factor i of the product: x_(i mod 50)^(1 + i mod 3), or sin(x_(3i mod 50)) for odd i
//   tree of 16 blocks k: sin(k x + 1) exp(-y^2/k) + cos(x y)/(k + x^2), about 20 nodes a block as built
template <class Library>
typename Library::Expression sumTerm(Library& l, int i) {
  return l.product(
      {l.number(i % 7 + 1), l.power(l.variable(i % kVariables), 1 + i % 3), l.variable((7 * i + 3) % kVariables)});
}

template <class Library>
typename Library::Expression productFactor(Library& l, int i) {
  return i % 2 ? l.sine(l.variable(3 * i % kVariables)) : l.power(l.variable(i % kVariables), 1 + i % 3);
}

template <class Library>
typename Library::Expression tree(Library& l) {
  std::vector<typename Library::Expression> terms;
  const auto x = l.variable(0), y = l.variable(1);
  for (int k = 1; k <= kBlocks; ++k) {
    const auto wave = l.sine(l.sum({l.product({l.number(k), x}), l.number(1)}));
    const auto bell = l.exponential(l.product({l.number(-1.0 / k), l.power(y, 2)}));
    const auto below = l.sum({l.number(k), l.power(x, 2)});
    terms.push_back(l.product({wave, bell}));
    terms.push_back(l.product({l.cosine(l.product({x, y})), l.power(below, -1)}));
  }
  return l.sum(terms);
}

struct Orvane {
  using Expression = SymObject*;
  std::vector<Expression> variables;

  Orvane() {
    for (int i = 0; i < kVariables; ++i) variables.push_back(sym_createBaseSymVar(("x" + std::to_string(i)).c_str()));
  }
  ~Orvane() { sym_clearTempVar(); }
  Expression variable(int i) { return variables[static_cast<std::size_t>(i)]; }
  Expression number(double x) { return sym_createDouble(x); }
  Expression sum(const std::vector<Expression>& a) {
    return sym_funMulParam(a.data(), static_cast<int32_t>(a.size()), Add);
  }
  Expression product(const std::vector<Expression>& a) {
    return sym_funMulParam(a.data(), static_cast<int32_t>(a.size()), Mul);
  }
  Expression power(Expression a, int n) { return sym_funTwoParam(a, number(n), Pow); }
  Expression sine(Expression a) { return sym_funOneParam(a, Sin); }
  Expression cosine(Expression a) { return sym_funOneParam(a, Cos); }
  Expression exponential(Expression a) { return sym_funOneParam(a, Exp); }
};

#ifdef ORVANE_BENCH_GINAC
struct Ginac {
  using Expression = GiNaC::ex;
  std::vector<GiNaC::symbol> variables;

  Ginac() {
    for (int i = 0; i < kVariables; ++i) variables.emplace_back("x" + std::to_string(i));
  }
  Expression variable(int i) { return variables[static_cast<std::size_t>(i)]; }
  Expression number(double x) {
    return x == static_cast<int>(x) ? GiNaC::numeric(static_cast<int>(x)) : GiNaC::numeric(x);
  }
  Expression sum(const std::vector<Expression>& a) { return GiNaC::dynallocate<GiNaC::add>(a); }
  Expression product(const std::vector<Expression>& a) { return GiNaC::dynallocate<GiNaC::mul>(a); }
  Expression power(const Expression& a, int n) { return GiNaC::pow(a, n); }
  Expression sine(const Expression& a) { return GiNaC::sin(a); }
  Expression cosine(const Expression& a) { return GiNaC::cos(a); }
  Expression exponential(const Expression& a) { return GiNaC::exp(a); }
};
#endif

// Terms are built beforehand (Prepared) or within the measured time.
template <class Library, bool prepared>
void sum(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      Library l;
      std::vector<typename Library::Expression> terms;
      if (!prepared) state.ResumeTiming();
      for (int i = 0; i < kTerms; ++i) terms.push_back(sumTerm(l, i));
      if (prepared) state.ResumeTiming();
      benchmark::DoNotOptimize(l.sum(terms));
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

template <class Library, bool prepared>
void product(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      Library l;
      std::vector<typename Library::Expression> factors;
      if (!prepared) state.ResumeTiming();
      for (int i = 0; i < kTerms; ++i) factors.push_back(productFactor(l, i));
      if (prepared) state.ResumeTiming();
      benchmark::DoNotOptimize(l.product(factors));
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

void evaluateOrvane(benchmark::State& state) {
  Orvane l;
  SymMatrix2d* matrix = sym_createSymMatrix(1, 1);
  sym_setSymMatrixData(matrix, 0, 0, tree(l));
  sym_getAllBaseSym2(matrix, nullptr, 0);
  const int32_t places[] = {0, 1};
  double point[] = {0.3, 0.7}, value = 0;
  for (auto _ : state) {
    point[0] += 1e-9;
    sym_setBaseSymValue(matrix, places, point, 2);
    benchmark::DoNotOptimize(value = sym_calcExpressValue(matrix, 0, 0));
  }
  sym_freeMatrix2d(matrix);
}

// Elements a_ij with a few zeros and numbers, as a mechanism gives them.
void matrixOrvane(benchmark::State& state, uint8_t code) {
  SymMatrix2d* matrix = sym_createSymMatrix(kSize, kSize);
  for (int32_t i = 0; i < kSize; ++i)
    for (int32_t j = 0; j < kSize; ++j)
      sym_setSymMatrixData(matrix, i, j, sym_createBaseSymVar(("a" + std::to_string(i) + std::to_string(j)).c_str()));
  for (auto _ : state) sym_freeMatrix2d(sym_oneFun(matrix, code));
  sym_freeMatrix2d(matrix);
  sym_clearTempVar();
}

#ifdef ORVANE_BENCH_GINAC
void evaluateGinac(benchmark::State& state) {
  Ginac l;
  const GiNaC::ex expression = tree(l);
  double x = 0.3;
  for (auto _ : state) {
    x += 1e-9;
    GiNaC::exmap values;
    values[l.variables[0]] = x;
    values[l.variables[1]] = 0.7;
    benchmark::DoNotOptimize(GiNaC::evalf(expression.subs(values)));
  }
}

GiNaC::matrix symbolMatrix() {
  GiNaC::matrix m(kSize, kSize);
  for (unsigned i = 0; i < kSize; ++i)
    for (unsigned j = 0; j < kSize; ++j) m(i, j) = GiNaC::symbol("a" + std::to_string(i) + std::to_string(j));
  return m;
}
#endif

// exp(sin(x)) about 0, to order 12.
constexpr int kOrder = 12;

void taylorOrvane(benchmark::State& state) {
  Orvane l;
  SymMatrix2d* matrix = sym_createSymMatrix(1, 1);
  sym_setSymMatrixData(matrix, 0, 0, l.exponential(l.sine(l.variable(0))));
  for (auto _ : state) sym_freeMatrix2d(sym_taylor(matrix, "x0", 0, kOrder));
  sym_freeMatrix2d(matrix);
}

#ifdef ORVANE_BENCH_GINAC
void taylorGinac(benchmark::State& state) {
  Ginac l;
  const GiNaC::ex expression = l.exponential(l.sine(l.variable(0)));
  for (auto _ : state) benchmark::DoNotOptimize(expression.series(l.variables[0] == 0, kOrder + 1));
}
#endif

void add(const char* name, void (*run)(benchmark::State&)) { benchmark::RegisterBenchmark(name, run); }

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  add("sum/orvane", sum<Orvane, true>);
  add("build and sum/orvane", sum<Orvane, false>);
  add("product/orvane", product<Orvane, true>);
  add("build and product/orvane", product<Orvane, false>);
  add("evaluate/orvane", evaluateOrvane);
  add("determinant/orvane", [](benchmark::State& state) { matrixOrvane(state, 202); });
  add("inverse/orvane", [](benchmark::State& state) { matrixOrvane(state, 201); });
  add("taylor/orvane", taylorOrvane);
#ifdef ORVANE_BENCH_GINAC
  add("taylor/GiNaC", taylorGinac);
  add("sum/GiNaC", sum<Ginac, true>);
  add("build and sum/GiNaC", sum<Ginac, false>);
  add("product/GiNaC", product<Ginac, true>);
  add("build and product/GiNaC", product<Ginac, false>);
  add("evaluate/GiNaC", evaluateGinac);
  add("determinant/GiNaC", [](benchmark::State& state) {
    const GiNaC::matrix m = symbolMatrix();
    for (auto _ : state) benchmark::DoNotOptimize(m.determinant());
  });
  add("determinant unexpanded/GiNaC", [](benchmark::State& state) {
    const GiNaC::matrix m = symbolMatrix();
    for (auto _ : state) benchmark::DoNotOptimize(m.determinant(GiNaC::determinant_algo::laplace));
  });
  add("inverse/GiNaC", [](benchmark::State& state) {
    const GiNaC::matrix m = symbolMatrix();
    for (auto _ : state) benchmark::DoNotOptimize(m.inverse());
  });
#endif
  benchmark::RunSpecifiedBenchmarks();
}
