// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

using Vector = std::vector<double>;
using Columns = std::vector<Vector>;

/// A quantity of the data: its name for people, and its symbol in formulas (LaTeX).
struct Quantity {
  std::string name, symbol;
};

/// A term that formulas are made of: a product of powers of the inputs, or of their logarithms.
struct Term {
  std::vector<int> exponents;
  std::string plain, latex;
};

/// All products up to a degree, the inputs themselves first.
std::vector<Term> termsOf(const std::vector<Quantity>& inputs, int degree, bool logarithms);

/// The values of terms at the rows of the inputs.
Columns valuesOf(const std::vector<Term>& terms, const Columns& inputs, bool logarithms);
