// SPDX-License-Identifier: Apache-2.0
#include "sym/poly/squarefree.h"

#include <algorithm>
#include <cmath>

namespace Sym {

namespace {

constexpr uint64_t kPrime = 2305843009213693951ull;  // 2^61 - 1

__extension__ typedef unsigned __int128 Product;

uint64_t mulMod(uint64_t a, uint64_t b) { return static_cast<uint64_t>(static_cast<Product>(a) * b % kPrime); }

uint64_t inverseMod(uint64_t a) {
  uint64_t result = 1;
  for (uint64_t e = kPrime - 2; e > 0; e /= 2, a = mulMod(a, a))
    if (e % 2) result = mulMod(result, a);
  return result;
}

std::vector<uint64_t> residues(const IntegerPoly& p) {
  std::vector<uint64_t> result;
  for (const mpz_class& c : p) result.push_back(mpz_fdiv_ui(c.get_mpz_t(), kPrime));
  while (!result.empty() && result.back() == 0) result.pop_back();
  return result;
}

/// Degree of the greatest common divisor modulo the prime.
size_t commonDegree(std::vector<uint64_t> a, std::vector<uint64_t> b) {
  while (!b.empty()) {
    const uint64_t inverse = inverseMod(b.back());
    while (a.size() >= b.size()) {
      const uint64_t factor = mulMod(a.back(), inverse);
      for (size_t i = 0; i < b.size(); ++i) {
        uint64_t& c = a[a.size() - b.size() + i];
        const uint64_t part = mulMod(factor, b[i]);
        c = c >= part ? c - part : c + kPrime - part;
      }
      a.pop_back();
      while (!a.empty() && a.back() == 0) a.pop_back();
    }
    std::swap(a, b);
  }
  return a.size() - 1;
}

void trim(IntegerPoly& p) {
  while (!p.empty() && p.back() == 0) p.pop_back();
}

IntegerPoly derivative(const IntegerPoly& p) {
  IntegerPoly result;
  for (size_t i = 1; i < p.size(); ++i) result.push_back(p[i] * static_cast<unsigned long>(i));
  return result;
}

void makePrimitive(IntegerPoly& p) {
  mpz_class content = 0;
  for (const mpz_class& c : p) content = gcd(content, c);
  if (content == 0) return;
  if (p.back() < 0) content = -content;
  for (mpz_class& c : p) mpz_divexact(c.get_mpz_t(), c.get_mpz_t(), content.get_mpz_t());
}

/// Remainder of a power of b's leading coefficient times a.
IntegerPoly pseudoRemainder(IntegerPoly a, const IntegerPoly& b) {
  while (a.size() >= b.size()) {
    const mpz_class top = a.back();
    a.pop_back();
    for (mpz_class& c : a) c *= b.back();
    const size_t shift = a.size() + 1 - b.size();
    for (size_t i = 0; i + 1 < b.size(); ++i) a[i + shift] -= top * b[i];
    trim(a);
  }
  return a;
}

IntegerPoly commonDivisor(IntegerPoly a, IntegerPoly b) {
  while (!b.empty()) {
    IntegerPoly remainder = pseudoRemainder(std::move(a), b);
    makePrimitive(remainder);
    a = std::move(b);
    b = std::move(remainder);
  }
  makePrimitive(a);
  return a;
}

/// a / b for a primitive divisor b of a.
IntegerPoly exactQuotient(IntegerPoly a, const IntegerPoly& b) {
  if (a.size() < b.size()) return {};
  IntegerPoly result(a.size() - b.size() + 1);
  for (size_t k = result.size(); k-- > 0;) {
    mpz_divexact(result[k].get_mpz_t(), a[k + b.size() - 1].get_mpz_t(), b.back().get_mpz_t());
    for (size_t i = 0; i < b.size(); ++i) a[k + i] -= result[k] * b[i];
  }
  return result;
}

IntegerPoly difference(IntegerPoly a, const IntegerPoly& b) {
  if (a.size() < b.size()) a.resize(b.size());
  for (size_t i = 0; i < b.size(); ++i) a[i] -= b[i];
  trim(a);
  return a;
}

}  // namespace

IntegerPoly integerPoly(std::span<const double> ascending) {
  int lowest = 0;
  bool first = true;
  for (const double c : ascending) {
    if (c == 0) continue;
    int exponent;
    std::frexp(c, &exponent);
    lowest = first ? exponent : std::min(lowest, exponent);
    first = false;
  }
  IntegerPoly result;
  for (const double c : ascending) {
    int exponent;
    const double mantissa = std::frexp(c, &exponent);
    mpz_class integer(std::ldexp(mantissa, 53));
    if (c != 0) integer <<= static_cast<mp_bitcnt_t>(exponent - lowest);
    result.push_back(integer);
  }
  trim(result);
  if (!result.empty()) makePrimitive(result);
  return result;
}

std::vector<std::pair<IntegerPoly, int32_t>> squareFreeFactors(const IntegerPoly& p) {
  if (p.size() < 2) return {};
  const IntegerPoly slope = derivative(p);
  const std::vector<uint64_t> pMod = residues(p), slopeMod = residues(slope);
  if (pMod.size() == p.size() && !slopeMod.empty() && commonDegree(pMod, slopeMod) == 0) return {{p, 1}};
  if (p.size() > kExactDegreeLimit + 1) return {{p, 1}};

  std::vector<std::pair<IntegerPoly, int32_t>> result;
  const IntegerPoly repeated = commonDivisor(p, slope);
  IntegerPoly b = exactQuotient(p, repeated);
  IntegerPoly c = exactQuotient(slope, repeated);
  for (int32_t multiplicity = 1; b.size() > 1; ++multiplicity) {
    const IntegerPoly d = difference(c, derivative(b));
    const IntegerPoly factor = commonDivisor(b, d);
    if (factor.size() > 1) result.emplace_back(factor, multiplicity);
    b = exactQuotient(b, factor);
    c = exactQuotient(d, factor);
  }
  return result;
}

}  // namespace Sym
