// SPDX-License-Identifier: Apache-2.0
// Expressions beside GiNaC: construction, evaluation, derivatives, LaTeX, matrices. The tasks are written once over the
// operations of each library; bench/sym_peers.py times SymEngine and SymPy on the same. Evaluation at many points, as
// the calculus routines do it, beside muParser; and what a live term takes of memory.
#include <benchmark/benchmark.h>
#include <orvane/sym.h>
#include <orvane/sym_calculus.h>
#include <orvane/sym_diff.h>
#include <orvane/sym_text.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "sym/handles.h"
#include "sym/kinds/program.h"
#ifdef __GLIBC__
#include <malloc.h>
#include <unistd.h>
#endif
#ifdef ORVANE_BENCH_MUPARSER
#include <muParser.h>
#endif
#ifdef ORVANE_BENCH_GINAC
#include <ginac/ginac.h>

#include <sstream>
#endif

namespace {

constexpr int kTerms = 1000, kVariables = 50, kBlocks = 16, kSize = 6, kDerivatives = 8, kWaves = 125, kOrder = 12,
              kMostCalls = 10000, kPoints = 10000, kManyBlocks = 10, kCells = 22;

struct Orvane {
  using Expression = SymObject*;
  static constexpr bool kInverts = true;

  /// An expression of its own, beyond the store of nodes.
  class Held {
   public:
    explicit Held(Expression node) : matrix(sym_createSymMatrix(1, 1)) {
      sym_setSymMatrixData(matrix, 0, 0, node);
      sym_getAllBaseSym2(matrix, nullptr, 0);
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { sym_freeMatrix2d(matrix); }

    double at(double x, double y) {
      const int32_t places[] = {0, 1};
      const double point[] = {x, y};
      sym_setBaseSymValue(matrix, places, point, 2);
      return sym_calcExpressValue(matrix, 0, 0);
    }
    double at(double x) {
      sym_setSymValue("x0", x);
      return sym_calcExpressValue(matrix, 0, 0);
    }
    void differentiate() {
      char message[256];
      SymMatrix2d* slope = sym_diff(matrix, 1, "x0", message);
      sym_freeMatrix2d(matrix);
      matrix = slope;
    }
    std::size_t latex() {
      text.resize(1 << 20);
      return static_cast<std::size_t>(sym_getLatexStr(matrix, 0, 0, text.data(), 1 << 20));
    }
    void taylor() { sym_freeMatrix2d(sym_taylor(matrix, "x0", 0, kOrder)); }

   private:
    SymMatrix2d* matrix;
    std::string text;
  };

  /// A square matrix of symbols, as a mechanism gives it.
  class Symbols {
   public:
    Symbols() : matrix(sym_createSymMatrix(kSize, kSize)) {
      for (int32_t i = 0; i < kSize * kSize; ++i)
        sym_setSymMatrixData(matrix, i / kSize, i % kSize, sym_createBaseSymVar(("a" + std::to_string(i)).c_str()));
    }
    Symbols(const Symbols&) = delete;
    Symbols& operator=(const Symbols&) = delete;
    ~Symbols() { sym_freeMatrix2d(matrix); }
    void determinant() { sym_freeMatrix2d(sym_oneFun(matrix, ORVANE_SYM_DETERMINANT)); }
    void inverse() { sym_freeMatrix2d(sym_oneFun(matrix, ORVANE_SYM_INVERSE)); }

   private:
    SymMatrix2d* matrix;
  };

  explicit Orvane(int count = kVariables) {
    for (int i = 0; i < count; ++i) variables.push_back(sym_createBaseSymVar(("x" + std::to_string(i)).c_str()));
  }
  ~Orvane() { sym_clearTempVar(); }
  Expression variable(int i) { return variables[static_cast<std::size_t>(i)]; }
  Expression number(double x) { return sym_createDouble(x); }
  Expression sum(const std::vector<Expression>& a) { return several(a, ORVANE_KIND_ADD); }
  Expression product(const std::vector<Expression>& a) { return several(a, ORVANE_KIND_MUL); }
  Expression plus(Expression a, Expression b) { return sym_funTwoParam(a, b, ORVANE_KIND_ADD); }
  Expression times(Expression a, Expression b) { return sym_funTwoParam(a, b, ORVANE_KIND_MUL); }
  static std::size_t size(Expression a) { return static_cast<std::size_t>(sym_calcExpress(a)); }  // looks at all of it
  Expression power(Expression a, int n) { return sym_funTwoParam(a, number(n), ORVANE_KIND_POW); }
  Expression sine(Expression a) { return sym_funOneParam(a, ORVANE_KIND_SIN); }
  Expression cosine(Expression a) { return sym_funOneParam(a, ORVANE_KIND_COS); }
  Expression exponential(Expression a) { return sym_funOneParam(a, ORVANE_KIND_EXP); }

  std::vector<Expression> variables;

 private:
  static Expression several(const std::vector<Expression>& a, uint8_t code) {
    return sym_funMulParam(a.data(), static_cast<int32_t>(a.size()), code);
  }
};

#ifdef ORVANE_BENCH_GINAC
struct Ginac {
  using Expression = GiNaC::ex;
  static constexpr bool kInverts = false;  // not done after 100 s

  explicit Ginac(int = kVariables) {}

  static GiNaC::symbol& symbol(int i) {
    static std::vector<GiNaC::symbol> all = [] {
      std::vector<GiNaC::symbol> made;
      for (int k = 0; k < kMostCalls; ++k) made.emplace_back("x" + std::to_string(k));
      return made;
    }();
    return all[static_cast<std::size_t>(i)];
  }

  class Held {
   public:
    explicit Held(Expression e) : f(std::move(e)) {}
    double at(double x, double y = 0) {
      const GiNaC::exmap values{{symbol(0), x}, {symbol(1), y}};
      return GiNaC::ex_to<GiNaC::numeric>(GiNaC::evalf(f.subs(values))).to_double();
    }
    void differentiate() { f = f.diff(symbol(0)); }
    std::size_t latex() {
      std::ostringstream out;
      out << GiNaC::latex << f;
      return out.str().size();
    }
    void taylor() { benchmark::DoNotOptimize(f.series(symbol(0) == 0, kOrder + 1)); }

   private:
    Expression f;
  };

  class Symbols {
   public:
    Symbols() : matrix(kSize, kSize) {
      for (unsigned i = 0; i < kSize * kSize; ++i)
        matrix(i / kSize, i % kSize) = GiNaC::symbol("a" + std::to_string(i));
    }
    void determinant() { benchmark::DoNotOptimize(matrix.determinant(GiNaC::determinant_algo::laplace)); }
    void inverse() { benchmark::DoNotOptimize(matrix.inverse()); }

   private:
    GiNaC::matrix matrix;
  };

  Expression variable(int i) { return symbol(i); }
  Expression number(double x) {
    return x == static_cast<int>(x) ? GiNaC::numeric(static_cast<int>(x)) : GiNaC::numeric(x);
  }
  Expression sum(const std::vector<Expression>& a) { return GiNaC::dynallocate<GiNaC::add>(a); }
  Expression product(const std::vector<Expression>& a) { return GiNaC::dynallocate<GiNaC::mul>(a); }
  Expression plus(const Expression& a, const Expression& b) { return a + b; }
  Expression times(const Expression& a, const Expression& b) { return a * b; }
  static std::size_t size(const Expression& a) { return a.nops(); }
  Expression power(const Expression& a, int n) { return GiNaC::pow(a, n); }
  Expression sine(const Expression& a) { return GiNaC::sin(a); }
  Expression cosine(const Expression& a) { return GiNaC::cos(a); }
  Expression exponential(const Expression& a) { return GiNaC::exp(a); }
};
#endif

/// Term i of the sum: (i mod 7 + 1) x_(i mod 50)^(1 + i mod 3) x_(7i + 3 mod 50); factor i of the product:
/// x_(i mod 50)^(1 + i mod 3), or sin(x_(3i mod 50)) for odd i.
template <class L>
typename L::Expression part(L& l, bool ofProduct, int i) {
  const auto power = l.power(l.variable(i % kVariables), 1 + i % 3);
  if (ofProduct) return i % 2 ? l.sine(l.variable(3 * i % kVariables)) : power;
  return l.product({l.number(i % 7 + 1), power, l.variable((7 * i + 3) % kVariables)});
}

/// 16 blocks k: sin(k x + 1) exp(-y^2/k) + cos(x y)/(k + x^2), about 20 nodes a block as built.
template <class L>
typename L::Expression tree(L& l) {
  std::vector<typename L::Expression> terms;
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

/// sin(x) exp(x^2)/(1 + x^2)
template <class L>
typename L::Expression wave(L& l) {
  const auto x = l.variable(0), square = l.power(x, 2);
  return l.product({l.sine(x), l.exponential(square), l.power(l.sum({l.number(1), square}), -1)});
}

/// 125 products sin(x_i + k) exp(k x_j)/x_i^2, about 1,000 nodes.
template <class L>
typename L::Expression manyWaves(L& l) {
  std::vector<typename L::Expression> terms;
  for (int k = 1; k <= kWaves; ++k) {
    const auto x = l.variable(k % 10);
    terms.push_back(l.product(
        {l.sine(l.sum({x, l.number(k)})), l.exponential(l.product({l.number(k), l.variable(k % 7)})), l.power(x, -2)}));
  }
  return l.sum(terms);
}

template <class L>
void combine(benchmark::State& state, bool ofProduct, bool prepared) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      L l;
      std::vector<typename L::Expression> parts;
      if (!prepared) state.ResumeTiming();
      for (int i = 0; i < kTerms; ++i) parts.push_back(part(l, ofProduct, i));
      if (prepared) state.ResumeTiming();
      benchmark::DoNotOptimize(ofProduct ? l.product(parts) : l.sum(parts));
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

/// A sum or product of n symbols by n - 1 calls, then a look at the whole.
template <class L>
void grow(benchmark::State& state, bool ofProduct, int n) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      L l(n);
      std::vector<typename L::Expression> parts;
      for (int i = 0; i < n; ++i) parts.push_back(l.variable(i));
      state.ResumeTiming();
      typename L::Expression whole = parts[0];
      for (int i = 1; i < n; ++i)
        whole = ofProduct ? l.times(whole, parts[static_cast<std::size_t>(i)])
                          : l.plus(whole, parts[static_cast<std::size_t>(i)]);
      benchmark::DoNotOptimize(L::size(whole));
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

template <class L>
void evaluate(benchmark::State& state) {
  L l;
  typename L::Held f(tree(l));
  double x = 0.3;
  for (auto _ : state) benchmark::DoNotOptimize(f.at(x += 1e-9, 0.7));
}

template <class L>
void differentiate(benchmark::State& state) {
  double value = 0;
  for (auto _ : state) {
    state.PauseTiming();
    {
      L l;
      typename L::Held f(wave(l));  // anew each time, as a library may keep the derivatives that it has seen
      state.ResumeTiming();
      for (int k = 0; k < kDerivatives; ++k) f.differentiate();
      state.PauseTiming();
      value = f.at(0.75);
    }
    state.ResumeTiming();
  }
  state.counters["value"] = value;
}

template <class L>
void writeLatex(benchmark::State& state) {
  L l;
  typename L::Held f(manyWaves(l));
  for (auto _ : state) state.counters["bytes"] = static_cast<double>(f.latex());
}

template <class L>
void expand(benchmark::State& state) {
  L l;
  typename L::Held f(l.exponential(l.sine(l.variable(0))));
  for (auto _ : state) f.taylor();
}

template <class L>
void ofMatrix(benchmark::State& state, void (L::Symbols::*operation)()) {
  [[maybe_unused]] L l;
  typename L::Symbols symbols;
  for (auto _ : state) (symbols.*operation)();
}

/// An expression of about 200 nodes for many points, in both spellings: what muParser reads, and the same tree.
struct Formula {
  const char* name;
  SymObject* (*tree)(Orvane&);
  std::string (*text)();
};

/// 10 blocks k of tree(), 3 functions each.
SymObject* blocks(Orvane& l) {
  std::vector<SymObject*> terms;
  SymObject *const x = l.variable(0), *const y = l.variable(1);
  for (int k = 1; k <= kManyBlocks; ++k) {
    SymObject* const wave = l.sine(l.sum({l.product({l.number(k), x}), l.number(1)}));
    SymObject* const bell = l.exponential(l.product({l.number(-1.0 / (1 << k)), l.power(y, 2)}));
    terms.push_back(l.product({wave, bell}));
    terms.push_back(l.product({l.cosine(l.product({l.number(k), x, y})), l.sum({l.number(k), l.power(x, 2)})}));
  }
  return l.sum(terms);
}

std::string blocksText() {
  std::string text;
  for (int k = 1; k <= kManyBlocks; ++k) {
    const std::string n = std::to_string(k);
    text += (k > 1 ? "+sin(" : "sin(") + n + "*x+1)*exp(-1/" + std::to_string(1 << k) + "*y^2)+cos(" + n + "*x*y)*(" +
            n + "+x^2)";
  }
  return text;
}

/// 22 cells k: (k x + 1)(k y + x), no function.
SymObject* cells(Orvane& l) {
  std::vector<SymObject*> terms;
  SymObject *const x = l.variable(0), *const y = l.variable(1);
  for (int k = 2; k <= kCells + 1; ++k)
    terms.push_back(
        l.product({l.sum({l.product({l.number(k), x}), l.number(1)}), l.sum({l.product({l.number(k), y}), x})}));
  return l.sum(terms);
}

std::string cellsText() {
  std::string text;
  for (int k = 2; k <= kCells + 1; ++k) {
    const std::string n = std::to_string(k);
    text += (k > 2 ? "+(" : "(") + n + "*x+1)*(" + n + "*y+x)";
  }
  return text;
}

const Formula kFormulas[] = {{"30 functions", blocks, blocksText}, {"sums and products", cells, cellsText}};

std::vector<double> pointsFrom(double start) {
  std::vector<double> points;
  for (int i = 0; i < kPoints; ++i) points.push_back(start + 1e-4 * i);
  return points;
}

/// Values at all points, one after the other, through the flat program of the calculus routines.
void manyByProgram(benchmark::State& state, const Formula& formula) {
  Orvane l;
  const auto &x = native(l.variable(0)), &y = native(l.variable(1));
  const Sym::Program program(native(formula.tree(l)));
  const std::vector<double> xs = pointsFrom(0.3), ys = pointsFrom(0.7);
  std::vector<double> values(kPoints);
  for (auto _ : state)
    for (std::size_t i = 0; i < kPoints; ++i) {
      x.var->value = xs[i], y.var->value = ys[i];
      values[i] = program.value();
    }
  state.counters["value"] = values.back();
}

/// The same as a host does it today, by two calls a point.
void manyByCalls(benchmark::State& state, const Formula& formula) {
  Orvane l;
  Orvane::Held f(formula.tree(l));
  const std::vector<double> xs = pointsFrom(0.3), ys = pointsFrom(0.7);
  std::vector<double> values(kPoints);
  for (auto _ : state)
    for (std::size_t i = 0; i < kPoints; ++i) values[i] = f.at(xs[i], ys[i]);
  state.counters["value"] = values.back();
}

#ifdef ORVANE_BENCH_MUPARSER
void manyByMuParser(benchmark::State& state, const Formula& formula, bool bulk) {
  std::vector<double> xs = pointsFrom(0.3), ys = pointsFrom(0.7), values(kPoints);
  double x = 0, y = 0;
  mu::Parser parser;
  parser.DefineVar("x", bulk ? xs.data() : &x);
  parser.DefineVar("y", bulk ? ys.data() : &y);
  parser.SetExpr(formula.text());
  for (auto _ : state) {
    if (bulk) {
      parser.Eval(values.data(), kPoints);
      continue;
    }
    for (std::size_t i = 0; i < kPoints; ++i) {
      x = xs[i], y = ys[i];
      values[i] = parser.Eval();
    }
  }
  state.counters["value"] = values.back();
}
#endif

#ifdef __GLIBC__
struct Memory {
  double used, resident;
};

Memory memoryNow() {
  const struct mallinfo2 heap = mallinfo2();
  long pages = 0, shared = 0;  // the latter are the library's own, read when they are first used
  if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(file, "%*d %ld %ld", &pages, &shared) != 2) pages = shared = 0;
    std::fclose(file);
  }
  return {static_cast<double>(heap.uordblks + heap.hblkhd),
          static_cast<double>((pages - shared) * sysconf(_SC_PAGESIZE))};
}

/// Bytes that each of n live terms takes, the partial results of a sum or product by single calls: as built, and once
/// the whole was looked at. The symbols are there before.
void liveTerms(benchmark::State& state, bool ofProduct, int n) {
  for (auto _ : state) {
    Orvane l(n);
    const Memory before = memoryNow();
    SymObject* whole = l.variable(0);
    for (int i = 1; i < n; ++i) whole = ofProduct ? l.times(whole, l.variable(i)) : l.plus(whole, l.variable(i));
    const Memory built = memoryNow();
    Orvane::size(whole);
    const Memory seen = memoryNow();
    state.counters["heap built"] = (built.used - before.used) / n;
    state.counters["heap seen"] = (seen.used - before.used) / n;
    state.counters["resident built"] = (built.resident - before.resident) / n;
    state.counters["resident seen"] = (seen.resident - before.resident) / n;
  }
}

void addMemory() {
  for (const bool ofProduct : {false, true})
    for (const int n : {1000, 10000, 100000})
      benchmark::RegisterBenchmark(
          ("bytes a live term, " + std::string(ofProduct ? "product" : "sum") + " of " + std::to_string(n)).c_str(),
          liveTerms, ofProduct, n)
          ->Iterations(1);
}
#else
void addMemory() {}
#endif

void addManyPoints() {
  for (const Formula& formula : kFormulas) {
    const auto add = [&](const char* way, auto run) {
      benchmark::RegisterBenchmark((std::string("10000 points, ") + formula.name + "/" + way).c_str(),
                                   [run, &formula](benchmark::State& state) { run(state, formula); });
    };
    add("orvane program", manyByProgram);
    add("orvane calls", manyByCalls);
#ifdef ORVANE_BENCH_MUPARSER
    add("muParser", [](benchmark::State& state, const Formula& f) { manyByMuParser(state, f, false); });
    add("muParser bulk", [](benchmark::State& state, const Formula& f) { manyByMuParser(state, f, true); });
#endif
  }
}

template <class L>
void add(const std::string& library) {
  const auto name = [&](const char* task) { return task + ("/" + library); };
  using benchmark::RegisterBenchmark;
  using Symbols = typename L::Symbols;
  RegisterBenchmark(name("sum").c_str(), combine<L>, false, true);
  RegisterBenchmark(name("build and sum").c_str(), combine<L>, false, false);
  RegisterBenchmark(name("product").c_str(), combine<L>, true, true);
  RegisterBenchmark(name("build and product").c_str(), combine<L>, true, false);
  for (const int n : {1000, kMostCalls}) {
    RegisterBenchmark(name(("sum of " + std::to_string(n) + " by single calls").c_str()).c_str(), grow<L>, false, n);
    RegisterBenchmark(name(("product of " + std::to_string(n) + " by single calls").c_str()).c_str(), grow<L>, true, n);
  }
  RegisterBenchmark(name("evaluate").c_str(), evaluate<L>);
  RegisterBenchmark(name("eight derivatives").c_str(), differentiate<L>);
  RegisterBenchmark(name("latex").c_str(), writeLatex<L>);
  RegisterBenchmark(name("taylor").c_str(), expand<L>);
  RegisterBenchmark(name("determinant").c_str(), ofMatrix<L>, &Symbols::determinant);
  if (L::kInverts) RegisterBenchmark(name("inverse").c_str(), ofMatrix<L>, &Symbols::inverse);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  add<Orvane>("orvane");
  addManyPoints();
  addMemory();
#ifdef ORVANE_BENCH_GINAC
  add<Ginac>("GiNaC");
#endif
  benchmark::RunSpecifiedBenchmarks();
}
