// SPDX-License-Identifier: Apache-2.0
#include "prog/quad/quad_express.h"

namespace QuadProg {

void QuadExpress::scale(double factor) {
  constTerm *= factor;
  linearTerms.scale(factor);
  quadTerms.scale(factor);
}

double QuadExpress::evaluate(std::span<const double> x) {
  double value = constTerm;
  for (const auto& [i, coefficient] : linearTerms.sorted()) value += coefficient * x[i];
  for (const auto& [pair, coefficient] : quadTerms.sorted()) value += coefficient * x[pair.first] * x[pair.second];
  return value;
}

void QuadExpress::simplify(double tolerance) {
  linearTerms.simplify(tolerance);
  quadTerms.simplify(tolerance);
}

}  // namespace QuadProg
