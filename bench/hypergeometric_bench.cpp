// SPDX-License-Identifier: Apache-2.0
// The hypergeometric series on the arguments of a distribution fit: the public routine beside the GMP series that it
// stands for. Each family draws 512 arguments, shapes log-uniform in 0.1..100, with a fixed seed. The counter "same" is
// the share of bit-identical values, "terms" the mean length of the series.
#include <benchmark/benchmark.h>

#include <array>
#include <bit>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "special/hypergeometric/hypergeometric.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"

namespace {

using namespace SpecialFunction;

struct Arguments {
  int32_t p, q;
  std::array<double, 2> a;
  std::array<double, 1> b;
  double z;
};

using Make = Arguments (*)(double a, double b, double t);

std::vector<Arguments> draw(Make make) {
  std::mt19937_64 random(20240611);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  std::vector<Arguments> result(512);
  for (Arguments& x : result) {
    const double a = 0.1 * std::pow(1000.0, unit(random)), b = 0.1 * std::pow(1000.0, unit(random));
    x = make(a, b, unit(random));
  }
  return result;
}

double terms(const Arguments& x) {
  double n = 0, term = 1;
  do {
    for (int32_t i = 0; i < x.p; ++i) term *= x.a[static_cast<std::size_t>(i)] + n;
    for (int32_t j = 0; j < x.q; ++j) term /= x.b[static_cast<std::size_t>(j)] + n;
    term *= x.z / ++n;
  } while (std::abs(term) > 1e-17 && std::isfinite(term));
  return n;
}

using Call = double (*)(const double*, int32_t, const double*, int32_t, double);

void run(benchmark::State& state, Make make, Call call) {
  const std::vector<Arguments> all = draw(make);
  std::size_t i = 0;
  for (auto _ : state) {
    const Arguments& x = all[i];
    benchmark::DoNotOptimize(call(x.a.data(), x.p, x.b.data(), x.q, x.z));
    i = (i + 1) % all.size();
  }
  double same = 0, length = 0;
  for (const Arguments& x : all) {
    const double value = call(x.a.data(), x.p, x.b.data(), x.q, x.z);
    const double expected = calcHypergeometricPFQByGMP(x.a.data(), x.p, x.b.data(), x.q, x.z);
    same += std::bit_cast<uint64_t>(value) == std::bit_cast<uint64_t>(expected);
    length += terms(x);
  }
  state.counters["same"] = same / static_cast<double>(all.size());
  state.counters["terms"] = length / static_cast<double>(all.size());
}

struct Family {
  const char* name;
  Make make;
};

constexpr Family kFamilies[] = {
    {"1F1(a;a+1;-x),x<10",
     [](double a, double, double t) {
       return Arguments{1, 1, {a}, {a + 1}, -10 * t};
     }},
    {"1F1(a;a+1;-x),a<1,x<60",
     [](double a, double, double t) {
       return Arguments{1, 1, {a / 100}, {a / 100 + 1}, -60 * t};
     }},
    {"1F1(1;a+1;x),x<1000",
     [](double a, double, double t) {
       return Arguments{1, 1, {1}, {a + 1}, 1000 * t};
     }},
    {"2F1(a,1-b;a+1;x),x<0.5",
     [](double a, double b, double t) {
       return Arguments{2, 1, {a, 1 - b}, {a + 1}, t / 2};
     }},
    {"2F1(a+b,1;a+1;x),x<0.5",
     [](double a, double b, double t) {
       return Arguments{2, 1, {a + b, 1}, {a + 1}, t / 2};
     }},
    {"2F1(0.5,(a+1)/2;1.5;z),-0.9<z",
     [](double a, double, double t) {
       return Arguments{2, 1, {0.5, (a + 1) / 2}, {1.5}, -0.9 * t};
     }},
    {"2F1(0.5,(a+1)/2;1.5;z),-10<z<-1",
     [](double a, double, double t) {
       return Arguments{2, 1, {0.5, (a + 1) / 2}, {1.5}, -1.01 - 9 * t};
     }},
    {"2F1(b,a+b;b+1;-u),u<0.9,a,b<10",
     [](double a, double b, double t) {
       return Arguments{2, 1, {b / 10, a / 10 + b / 10}, {b / 10 + 1}, -0.9 * t};
     }},
    {"2F1(b,a+b;b+1;-u),u<0.9",
     [](double a, double b, double t) {
       return Arguments{2, 1, {b, a + b}, {b + 1}, -0.9 * t};
     }},
    {"2F1(b,a+b;b+1;-u),1<u<10",
     [](double a, double b, double t) {
       return Arguments{2, 1, {b, a + b}, {b + 1}, -1.01 - 9 * t};
     }},
};

const bool kRegistered = [] {
  for (const Family& family : kFamilies) {
    const std::string name = family.name;
    benchmark::RegisterBenchmark((name + "/gmp").c_str(),
                                 [&family](benchmark::State& s) { run(s, family.make, calcHypergeometricPFQByGMP); });
    benchmark::RegisterBenchmark((name + "/calc").c_str(),
                                 [&family](benchmark::State& s) { run(s, family.make, calcHypergeometricPFQ); });
  }
  return true;
}();

}  // namespace
