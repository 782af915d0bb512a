// SPDX-License-Identifier: Apache-2.0
// High-precision functions beside MPFR with as many bits, fractions beside GMP's rational numbers, and the product of
// limbs by the schoolbook rule and through GMP. Before a function is timed both sides must give the same digits.
#include <benchmark/benchmark.h>
#include <gmp.h>
#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "orvane/fraction.h"
#include "orvane/frame.h"
#include "orvane/highprecision.h"

namespace {

constexpr int64_t kBase = 10000000;

mpfr_prec_t bitsOf(int64_t limbs) {
  return static_cast<mpfr_prec_t>(std::ceil(static_cast<double>(limbs) * 7 * std::log2(10.0)));
}

// An argument between 1 and 10 with as many limbs as the precision.
std::vector<int64_t> argument(int64_t limbs) {
  std::vector<int64_t> x;
  uint64_t state = 1;
  for (int64_t i = 0; i < limbs; ++i) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    x.push_back(static_cast<int64_t>((state >> 33) % kBase));
  }
  x.back() = 2;
  return x;
}

HPNumber* number(const std::vector<int64_t>& limbs) {
  return hp_CreateByValue2(limbs.data(), static_cast<int32_t>(limbs.size()), 1 - static_cast<int32_t>(limbs.size()),
                           false);
}

std::string text(const std::vector<int64_t>& limbs) {
  std::string result;
  for (auto limb = limbs.rbegin(); limb != limbs.rend(); ++limb) {
    char part[16];
    std::snprintf(part, sizeof part, "%07d", static_cast<int>(*limb));
    result += limb == limbs.rbegin() ? std::to_string(*limb) + "." : part;
  }
  return result;
}

struct Case {
  const char* name;
  uint8_t code;
  int (*peer)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
};

const Case kCases[] = {{"sqrt", 49, mpfr_sqrt}, {"log", 50, mpfr_log},     {"sin", 51, mpfr_sin},
                       {"tan", 53, mpfr_tan},   {"atan", 57, mpfr_atan},   {"exp", 59, mpfr_exp},
                       {"sinh", 61, mpfr_sinh}, {"asinh", 65, mpfr_asinh}, {"acosh", 66, mpfr_acosh}};

// True when both give the same value but for the last limb.
bool sameDigits(const Case& c, int64_t limbs) {
  const std::vector<int64_t> x = argument(limbs);
  HPNumber *a = number(x), *value = hp_Fun1(a, c.code, static_cast<int32_t>(limbs));
  int64_t attributes[4];
  hp_Attribute(value, attributes);
  std::vector<int64_t> out(static_cast<std::size_t>(attributes[2]));
  hp_GetValue(value, out.data());
  std::string digits = attributes[1] != 0 ? "-" : "";
  digits += text(out);
  digits += "e" + std::to_string(7 * (attributes[3] + attributes[2] - 1));
  mpfr_t y, z;
  mpfr_inits2(bitsOf(limbs) + 64, y, z, static_cast<mpfr_ptr>(nullptr));
  mpfr_set_str(y, text(x).c_str(), 10, MPFR_RNDN);
  c.peer(y, y, MPFR_RNDN);
  mpfr_set_str(z, digits.c_str(), 10, MPFR_RNDN);
  mpfr_sub(z, z, y, MPFR_RNDN);
  const bool same = mpfr_zero_p(z) != 0 || mpfr_get_exp(z) < mpfr_get_exp(y) - bitsOf(limbs - 1);
  mpfr_clears(y, z, static_cast<mpfr_ptr>(nullptr));
  api_FreeHandle(a);
  api_FreeHandle(value);
  return same;
}

void ours(benchmark::State& state, const Case& c, int64_t limbs) {
  if (!sameDigits(c, limbs)) {
    state.SkipWithError("the two disagree");
    return;
  }
  HPNumber* x = number(argument(limbs));
  for (auto _ : state) api_FreeHandle(hp_Fun1(x, c.code, static_cast<int32_t>(limbs)));
  api_FreeHandle(x);
}

void peers(benchmark::State& state, const Case& c, int64_t limbs) {
  mpfr_t x, y;
  mpfr_inits2(bitsOf(limbs), x, y, static_cast<mpfr_ptr>(nullptr));
  mpfr_set_str(x, text(argument(limbs)).c_str(), 10, MPFR_RNDN);
  for (auto _ : state) {
    c.peer(y, x, MPFR_RNDN);
    benchmark::DoNotOptimize(y);
  }
  mpfr_clears(x, y, static_cast<mpfr_ptr>(nullptr));
}

void operation(benchmark::State& state, uint8_t code, int64_t limbs) {
  std::vector<int64_t> digits = argument(limbs);
  HPNumber* a = number(digits);
  digits[0] = 4711;
  digits.back() = 3;
  HPNumber* b = number(digits);
  for (auto _ : state) api_FreeHandle(hp_Fun2(a, b, code, static_cast<int32_t>(limbs)));
  api_FreeHandle(a);
  api_FreeHandle(b);
}

void peerOperation(benchmark::State& state, uint8_t code, int64_t limbs) {
  mpfr_t a, b, c;
  mpfr_inits2(bitsOf(limbs), a, b, c, static_cast<mpfr_ptr>(nullptr));
  mpfr_set_str(a, text(argument(limbs)).c_str(), 10, MPFR_RNDN);
  mpfr_sqrt_ui(b, 10, MPFR_RNDN);
  const auto call = code == 0 ? mpfr_add : code == 2 ? mpfr_mul : mpfr_div;
  for (auto _ : state) {
    call(c, a, b, MPFR_RNDN);
    benchmark::DoNotOptimize(c);
  }
  mpfr_clears(a, b, c, static_cast<mpfr_ptr>(nullptr));
}

// 1 + 1/2 + ... + 1/n, one addition after the other.
void harmonicByAdditions(benchmark::State& state, int64_t n) {
  for (auto _ : state) {
    const int64_t one = 1, zero = 0;
    FractionNumber* sum = fraction_create(&zero, 1, &one, 1, false);
    for (int64_t i = 1; i <= n; ++i) {
      const int64_t limbs[] = {i % kBase, i / kBase};
      FractionNumber* term = fraction_create(&one, 1, limbs, 2, false);
      FractionNumber* next = fraction_fun2(sum, term, 0, nullptr);
      api_FreeHandle(sum);
      api_FreeHandle(term);
      sum = next;
    }
    api_FreeHandle(sum);
  }
}

void harmonicByGmp(benchmark::State& state, int64_t n) {
  mpq_t sum, term;
  mpq_inits(sum, term, nullptr);
  for (auto _ : state) {
    mpq_set_ui(sum, 0, 1);
    for (int64_t i = 1; i <= n; ++i) {
      mpq_set_ui(term, 1, static_cast<unsigned long>(i));
      mpq_add(sum, sum, term);
    }
    benchmark::DoNotOptimize(sum);
  }
  mpq_clears(sum, term, nullptr);
}

void inverseSum(benchmark::State& state, int64_t n) {
  std::vector<int64_t> values;
  for (int64_t i = 1; i <= n; ++i) values.push_back(i);
  for (auto _ : state) api_FreeHandle(fraction_InvSum(values.data(), static_cast<int32_t>(n)));
}

// One sum and one product of fractions with n limbs a part.
void fractionOperation(benchmark::State& state, uint8_t code, int64_t limbs) {
  std::vector<int64_t> up = argument(limbs), down = argument(limbs);
  down[0] = 9999991;
  FractionNumber* a =
      fraction_create(up.data(), static_cast<int32_t>(limbs), down.data(), static_cast<int32_t>(limbs), false);
  up[0] = 1234567, down.back() = 7;
  FractionNumber* b =
      fraction_create(up.data(), static_cast<int32_t>(limbs), down.data(), static_cast<int32_t>(limbs), true);
  for (auto _ : state) api_FreeHandle(fraction_fun2(a, b, code, nullptr));
  api_FreeHandle(a);
  api_FreeHandle(b);
}

void integerOf(mpz_ptr z, std::vector<int64_t> limbs) {
  mpz_set_ui(z, 0);
  for (auto limb = limbs.rbegin(); limb != limbs.rend(); ++limb) {
    mpz_mul_ui(z, z, static_cast<unsigned long>(kBase));
    mpz_add_ui(z, z, static_cast<unsigned long>(*limb));
  }
}

void peerFraction(benchmark::State& state, uint8_t code, int64_t limbs) {
  mpq_t a, b, c;
  mpq_inits(a, b, c, nullptr);
  std::vector<int64_t> up = argument(limbs), down = argument(limbs);
  down[0] = 9999991;
  integerOf(mpq_numref(a), up);
  integerOf(mpq_denref(a), down);
  up[0] = 1234567, down.back() = 7;
  integerOf(mpq_numref(b), up);
  integerOf(mpq_denref(b), down);
  mpq_canonicalize(a);
  mpq_canonicalize(b);
  for (auto _ : state) {
    (code == 0 ? mpq_add : mpq_mul)(c, a, b);
    benchmark::DoNotOptimize(c);
  }
  mpq_clears(a, b, c, nullptr);
}

void enter(const std::string& name, auto function) { benchmark::RegisterBenchmark(name.c_str(), function); }

}  // namespace

int main(int argc, char** argv) {
  for (const int64_t limbs : {4, 20, 50, 200})
    for (const Case& c : kCases) {
      const std::string name = std::string(c.name) + " " + std::to_string(limbs) + " limbs/";
      enter(name + "orvane", [&c, limbs](benchmark::State& state) { ours(state, c, limbs); });
      enter(name + "mpfr", [&c, limbs](benchmark::State& state) { peers(state, c, limbs); });
    }
  for (const int64_t limbs : {4, 50, 200, 1000})
    for (const uint8_t code : {0, 2, 3}) {
      const std::string name = std::string(code == 0   ? "add "
                                           : code == 2 ? "multiply "
                                                       : "divide ") +
                               std::to_string(limbs) + " limbs/";
      enter(name + "orvane", [code, limbs](benchmark::State& state) { operation(state, code, limbs); });
      enter(name + "mpfr", [code, limbs](benchmark::State& state) { peerOperation(state, code, limbs); });
    }
  for (const int64_t limbs : {4, 50, 1000})
    for (const uint8_t code : {0, 2}) {
      const std::string name =
          std::string(code == 0 ? "fraction sum " : "fraction product ") + std::to_string(limbs) + " limbs/";
      enter(name + "orvane", [code, limbs](benchmark::State& state) { fractionOperation(state, code, limbs); });
      enter(name + "mpq", [code, limbs](benchmark::State& state) { peerFraction(state, code, limbs); });
    }
  for (const int64_t n : {100, 2000}) {
    const std::string name = "1 + 1/2 + ... + 1/" + std::to_string(n);
    enter(name + " by additions/orvane", [n](benchmark::State& state) { harmonicByAdditions(state, n); });
    enter(name + " by additions/mpq", [n](benchmark::State& state) { harmonicByGmp(state, n); });
    enter(name + " by fraction_InvSum/orvane", [n](benchmark::State& state) { inverseSum(state, n); });
    enter(name + " by fraction_InvSum/mpq", [n](benchmark::State& state) { harmonicByGmp(state, n); });
  }
  enter("1 + 1/2 + ... + 1/10000 by fraction_InvSum/orvane", [](benchmark::State& state) { inverseSum(state, 10000); });
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
