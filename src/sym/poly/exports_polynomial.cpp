// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "frame/handle.h"
#include "frame/text.h"
#include "numeric/polynomial_fit.h"
#include "orvane/sym_polynomial.h"
#include "sym/handles.h"
#include "sym/matrix/matrix.h"
#include "sym/poly/poly_approximation.h"
#include "sym/poly/poly_roots.h"
#include "sym/poly/polynomial.h"

namespace {

using Sym::kept;
using Sym::PolyForm;
using Sym::PolyTerms;

constexpr uint32_t kNone = std::numeric_limits<uint32_t>::max();

/// The one element; null for a matrix of another shape or one that is left empty.
Sym::SymObject* single(const SymMatrix2d* matrix) {
  const Sym::SymMatrix2d_t& m = native(matrix);
  return m.rows() == 1 && m.cols() == 1 ? m.at(0, 0).get() : nullptr;
}

const PolyForm* form(const SymMatrix2d* matrix) {
  Sym::SymObject* element = single(matrix);
  return element ? Sym::polynomialForm(*element) : nullptr;
}

bool hasRoots(const PolyForm& poly) {
  const auto finite = [](const auto& term) { return std::isfinite(term.second); };
  return Sym::degree(poly.terms) <= Sym::kRootDegreeLimit && std::all_of(poly.terms.begin(), poly.terms.end(), finite);
}

SymMatrix2d* inX(const PolyTerms& terms) {
  return kept(Sym::makeMatrix(Sym::polynomialNode(terms, Sym::SymManger::instance().variable("x"))));
}

}  // namespace

bool sym_isPoly(SymMatrix2d* matrix) { return form(matrix) != nullptr; }

int32_t sym_getPolyParam(SymMatrix2d* matrix, double* out, int32_t capacity) {
  const PolyForm* poly = form(matrix);
  if (!poly) return 0;
  const int64_t degree = Sym::degree(poly->terms);
  if (degree > Sym::kDegreeLimit) return static_cast<int32_t>(Sym::kDegreeLimit + 1);
  if (degree + 1 == capacity)
    for (const auto& [exponent, coefficient] : poly->terms) out[exponent] = coefficient;
  return static_cast<int32_t>(degree + 1);
}

int32_t sym_calcPolyFun(SymMatrix2d* matrix, const double* x, double* y, int32_t n) {
  const PolyForm* poly = form(matrix);
  if (!poly) return 0;
  for (int32_t i = 0; i < n; ++i) y[i] = Sym::value(poly->terms, x[i]);
  return 1;
}

uint32_t sym_calcPolyRoot(SymMatrix2d* matrix, double* re, double* im, uint32_t capacity) {
  const PolyForm* poly = form(matrix);
  if (!poly || !hasRoots(*poly)) return kNone;
  const std::vector<Sym::PolyRoot_t> roots = Sym::polyRoots(poly->terms);
  uint32_t count = 0;
  for (const Sym::PolyRoot_t& root : roots) count += static_cast<uint32_t>(root.multiplicity);
  if (count > capacity) return count;
  for (const Sym::PolyRoot_t& root : roots)
    for (int32_t k = 0; k < root.multiplicity; ++k) {
      *re++ = root.re;
      *im++ = root.im;
    }
  return count;
}

SymMatrix2d* sym_runPolyFun(SymMatrix2d* a, SymMatrix2d* b, uint8_t operation) {
  const PolyForm *left = form(a), *right = form(b);
  if (!left || !right) return nullptr;
  if (left->base && right->base && left->base->name != right->base->name) return nullptr;
  const PolyTerms result = Sym::runPolyOperation(left->terms, right->terms, operation);
  if (result.empty()) return nullptr;
  return kept(Sym::makeMatrix(Sym::polynomialNode(result, left->base ? left->base : right->base)));
}

uint32_t sym_polyFactor(SymMatrix2d* matrix, char* out, int32_t capacity) {
  if (!single(matrix)) return kNone;
  const PolyForm* poly = form(matrix);
  return static_cast<uint32_t>(handOut(poly ? Sym::factorText(*poly) : "", out, capacity));
}

SymMatrix2d* sym_createPolyByParam(const double* coefficients, const double* exponents, int32_t n) {
  const auto terms = Sym::termsOf(span(coefficients, n), span(exponents, n));
  return terms ? inX(*terms) : nullptr;
}

SymMatrix2d* sym_createPoly(const double* data) {
  if (!data || !(data[0] >= 1 && data[0] <= Sym::kDegreeLimit + 1) || data[0] != std::floor(data[0])) return nullptr;
  PolyTerms terms;
  for (int64_t i = 0; i < static_cast<int64_t>(data[0]); ++i) terms[i] = data[i + 1];
  return inX(terms);
}

SymMatrix2d* sym_polyApp(const SymMatrix2d* matrix, double a, double b, int32_t degree) {
  const Sym::SymObject* element = single(matrix);
  Sym::NodePtr result = element ? Sym::chebyshevApproximation(*element, a, b, degree) : nullptr;
  return result ? kept(Sym::makeMatrix(std::move(result))) : nullptr;
}

SymMatrix2d* sym_solveRPoly(const double* x, const double* y, int32_t n, const double* weights,
                            const int32_t* exponents, int32_t terms) {
  std::vector<int32_t> powers(static_cast<size_t>(std::max(terms, 0)));
  std::iota(powers.begin(), powers.end(), 0);
  if (exponents) powers.assign(exponents, exponents + powers.size());
  solver::RPolyFit fit(powers);
  fit.setPoints(span(x, n), span(y, n));
  fit.setWeights(span(weights, n));
  return fit.solve() ? inX(fit.terms()) : nullptr;
}
