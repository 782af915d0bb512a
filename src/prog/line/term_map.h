// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace LineProg {

/// An ordered map from a key to a coefficient, held flat: terms that come by ascending key are appended, others are
/// collected and merged at the next look. Coefficients on one key add up in the order they came.
template <class Key>
class TermMap {
 public:
  using Term = std::pair<Key, double>;

  void add(const Key& key, double coefficient) {
    if (late.empty() && !terms.empty() && terms.back().first == key)
      terms.back().second += coefficient;
    else if (late.empty() && (terms.empty() || terms.back().first < key))
      terms.push_back({key, coefficient});
    else
      late.push_back({key, coefficient});
  }

  /// Erases terms of magnitude below the tolerance.
  void simplify(double tolerance) {
    merge();
    std::erase_if(terms, [tolerance](const Term& term) { return std::abs(term.second) < tolerance; });
  }

  void scale(double factor) {
    merge();
    for (Term& term : terms) term.second *= factor;
  }

  const std::vector<Term>& sorted() {
    merge();
    return terms;
  }

 private:
  void merge() {
    if (late.empty()) return;
    terms.insert(terms.end(), late.begin(), late.end());
    late.clear();
    std::stable_sort(terms.begin(), terms.end(), [](const Term& a, const Term& b) { return a.first < b.first; });
    std::size_t kept = 0;
    for (std::size_t i = 1; i < terms.size(); ++i) {
      if (terms[i].first == terms[kept].first)
        terms[kept].second += terms[i].second;
      else
        terms[++kept] = terms[i];
    }
    terms.resize(kept + 1);
  }

  std::vector<Term> terms, late;
};

}  // namespace LineProg
