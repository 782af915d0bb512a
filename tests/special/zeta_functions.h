// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "orvane/hypergeometric.h"
#include "orvane/integral_functions.h"
#include "orvane/polynomial_functions.h"
#include "orvane/zeta.h"
#include "support/reference.h"

/// A function of one to four doubles, or of a 32-bit order and a double, by its name.
struct NamedFunction {
  const char* name;
  int count;
  double (*call)(const double*);
};

#define UNARY(f)                                   \
  {                                                \
#f, 1, [](const double* v) { return f(v[0]); } \
  }
#define BINARY(f)                                        \
  {                                                      \
#f, 2, [](const double* v) { return f(v[0], v[1]); } \
  }
#define TERNARY(f)                                             \
  {                                                            \
#f, 3, [](const double* v) { return f(v[0], v[1], v[2]); } \
  }
#define QUATERNARY(f)                                                \
  {                                                                  \
#f, 4, [](const double* v) { return f(v[0], v[1], v[2], v[3]); } \
  }

inline constexpr NamedFunction kHypergeometricFamily[] = {
    BINARY(math_Hypergeometric0F1), TERNARY(math_Hypergeometric1F1), QUATERNARY(math_Hypergeometric2F1),
    TERNARY(math_hypergeometricU),  TERNARY(math_whittakerM),        TERNARY(math_whittakerW),
    TERNARY(math_wrightBessel),     TERNARY(math_mittagLeffler)};

inline constexpr NamedFunction kZetaFamily[] = {
    UNARY(math_zeta),          UNARY(math_invZeta),   BINARY(math_hurwitzZeta),  UNARY(math_dirichletEta),
    UNARY(math_dirichletBeta), BINARY(math_polyLog),  BINARY(math_boseEinstein), BINARY(math_fermiDirac),
    BINARY(math_Clausen),      BINARY(math_ClausenS), BINARY(math_ClausenC),     UNARY(math_polyLogarithm2),
    UNARY(math_lnBarnesG),     UNARY(math_barnesG),   UNARY(math_hyperfactorial)};

inline constexpr NamedFunction kIntegralFamily[] = {
    UNARY(math_expIntegral),     BINARY(math_expIntegralP), UNARY(math_sineIntegral), UNARY(math_cosineIntegral),
    UNARY(math_sinhIntegral),    UNARY(math_coshIntegral),  UNARY(math_logIntegral),  UNARY(math_invSinhIntegral),
    UNARY(math_invCoshIntegral), UNARY(math_fresnelC),      UNARY(math_fresnelS),     UNARY(math_goodwinStaton)};

struct NamedPolynomial {
  const char* name;
  double (*call)(int32_t, double);
};

inline constexpr NamedPolynomial kPolynomialFamily[] = {{"math_polyByBernoulli", math_polyByBernoulli},
                                                        {"math_polyLegendre", math_polyLegendre},
                                                        {"math_polyLaguerre", math_polyLaguerre},
                                                        {"math_polyHermite", math_polyHermite}};

/// Each function of the family against its table.
template <std::size_t N>
void checkFamily(const NamedFunction (&family)[N]) {
  for (const NamedFunction& f : family)
    checkReference(std::string("special/") + f.name + ".csv", [&](const ReferenceRow& row) {
      EXPECT_EQ(row.arguments.size(), static_cast<std::size_t>(f.count)) << f.name;
      return f.call(row.arguments.data());
    });
}
