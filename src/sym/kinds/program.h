// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "special/table.h"
#include "sym/node/node.h"

namespace Sym {

/// An expression as a flat list of steps over a stack of numbers, for many evaluations: the values of fnValue to the
/// bit. It reads the variables where they stand and must not outlive them; later edits of the expression do not reach
/// it.
class Program {
 public:
  explicit Program(const SymObject& root);

  double value() const;

 private:
  enum class Op : uint8_t { number, variable, sum, product, one, two, three, four };

  struct Step {
    Op op;
    bool bare = false;   // the function's value is not multiplied by coef
    uint32_t count = 0;  // of terms or factors
    double coef;
    union {
      const double* variable;
      double (*f1)(double);
      double (*f2)(double, double);
      double (*f3)(double, double, double);
      double (*f4)(double, double, double, double);
    };
  };

  void append(const SymObject* node);  // null is NaN, as nothing is known of it

  std::vector<Step> steps_;
  std::vector<VarPtr> variables_;
  mutable std::vector<double> stack_;
};

}  // namespace Sym
