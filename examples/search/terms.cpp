// SPDX-License-Identifier: Apache-2.0
#include "terms.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// A name that LaTeX would set as a product of letters, or not at all, stands as text.
std::string latexName(const std::string& symbol) {
  if (symbol.size() == 1 || symbol.find('\\') != std::string::npos || symbol.find('_') == 1) return symbol;
  std::string safe;
  for (const char c : symbol) {
    if (std::string("#$%&_{}").find(c) != std::string::npos) safe += '\\';
    if (c != '\\' && c != '^' && c != '~') safe += c;
  }
  return "\\text{" + safe + "}";
}

Term named(const std::vector<Quantity>& inputs, std::vector<int> exponents, bool logarithms) {
  Term term;
  for (std::size_t k = 0; k < inputs.size(); ++k) {
    if (exponents[k] == 0) continue;
    const std::string latex = latexName(inputs[k].symbol), &plain = inputs[k].symbol;
    const std::string power = exponents[k] > 1 ? std::to_string(exponents[k]) : "";
    if (!term.plain.empty()) term.plain += "*", term.latex += "\\,";
    term.plain += logarithms ? "ln(" + plain + ")" : plain;
    if (!power.empty()) term.plain += "^" + power;
    const std::string raised = power.empty() ? "" : "^{" + power + "}";
    term.latex += logarithms ? "\\ln" + raised + " " + latex : latex + raised;
  }
  term.exponents = std::move(exponents);
  return term;
}

}  // namespace

std::vector<Term> termsOf(const std::vector<Quantity>& inputs, int degree, bool logarithms) {
  std::vector<std::vector<int>> all{{}};
  for (std::size_t k = 0; k < inputs.size(); ++k) {
    std::vector<std::vector<int>> longer;
    for (const auto& begun : all)
      for (int e = 0; e <= degree - std::accumulate(begun.begin(), begun.end(), 0); ++e) {
        longer.push_back(begun);
        longer.back().push_back(e);
      }
    all = std::move(longer);
  }
  const auto degreeOf = [](const std::vector<int>& e) { return std::accumulate(e.begin(), e.end(), 0); };
  std::stable_sort(all.begin(), all.end(), [&](const auto& a, const auto& b) { return degreeOf(a) < degreeOf(b); });
  std::vector<Term> terms;
  for (std::size_t i = 1; i < all.size(); ++i) terms.push_back(named(inputs, all[i], logarithms));  // 0 is the constant
  return terms;
}

Columns valuesOf(const std::vector<Term>& terms, const Columns& inputs, bool logarithms) {
  Columns values(terms.size(), Vector(inputs.front().size(), 1.0));
  for (std::size_t t = 0; t < terms.size(); ++t)
    for (std::size_t k = 0; k < inputs.size(); ++k)
      for (std::size_t i = 0; i < inputs[k].size(); ++i)
        values[t][i] *= std::pow(logarithms ? std::log(inputs[k][i]) : inputs[k][i], terms[t].exponents[k]);
  return values;
}
