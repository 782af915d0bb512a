// SPDX-License-Identifier: Apache-2.0
#include "formula.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "svg_plot.h"

namespace {

/// "\\alpha" as people write it without LaTeX.
std::string plainSymbol(const std::string& symbol) { return symbol.starts_with('\\') ? symbol.substr(1) : symbol; }

/// Writes the parts of a formula in one of two forms.
class Writer {
 public:
  Writer(bool latex, const Study& study, const std::vector<Term>& terms) : latex(latex), study(study), terms(terms) {}

  std::string formula(const Found& found) const {
    const std::string y = latex ? termsOf({study.output}, 1, false)[0].latex : plainSymbol(study.output.symbol);
    return y + " = " + (found.kind == ES_KIND_PEAKS ? peaks(found) : ratio(found));
  }

 private:
  std::string number(double value) const {
    std::string text = shortNumber(value, 5);
    const std::size_t e = text.find('e');
    if (!latex || e == std::string::npos) return text;
    return text.substr(0, e) + "\\cdot 10^{" + std::to_string(std::stoi(text.substr(e + 1))) + "}";
  }

  /// Adds factor*what to a sum; `what` empty is the constant.
  void add(std::string& sum, double factor, const std::string& what) const {
    if (!sum.empty())
      sum += factor < 0 ? " - " : " + ";
    else if (factor < 0)
      sum += "-";
    const std::string size = number(std::abs(factor));
    sum += what.empty() ? size : size == "1" ? what : size + (latex ? "\\," : "*") + what;
  }

  std::string power(const std::string& what, double exponent) const {
    const std::string e = number(exponent);
    if (latex) return what + "^{" + e + "}";
    return what + "^" + (exponent < 0 ? "(" + e + ")" : e);
  }

  std::string sum(const Found& found, bool over) const {
    const bool powers = found.kind == ES_KIND_POWERS || (found.kind == ES_KIND_POWERS_BELOW && !over);
    const Vector& coef = over ? found.top : found.bottom;
    const auto& index = over ? found.topTerms : found.bottomTerms;
    const double unit = found.kind == ES_KIND_RATIONAL ? 1 : found.d0 / (over ? study.outputUnit : 1);
    const double constant = over ? found.c0 / unit : 1;
    double largest = 0;
    for (const double y : study.y) largest = std::max(largest, std::abs(y));
    std::string text;
    if (index.empty() || !over || std::abs(constant) > 1e-9 * largest) add(text, constant, "");
    std::vector<std::size_t> order(index.size());  // the walk meets the terms in any order
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return index[a] < index[b]; });
    for (const std::size_t k : order) {
      const auto place = static_cast<std::size_t>(index[k]);
      const std::string& name = latex ? terms[place].latex : terms[place].plain;
      if (powers)
        add(text, coef[2 * k] / unit / std::pow(study.units[place], coef[2 * k + 1]), power(name, coef[2 * k + 1]));
      else
        add(text, coef[k] / unit, name);
    }
    return text;
  }

  std::string ratio(const Found& found) const {
    if (found.bottomTerms.empty()) return sum(found, true);
    if (latex) return "\\frac{" + sum(found, true) + "}{" + sum(found, false) + "}";
    return "(" + sum(found, true) + ")/(" + sum(found, false) + ")";
  }

  /// (x - u)^2, over what divides the difference.
  std::string distance(double centre, const std::string& by) const {
    const std::string &x = study.inputs.front().symbol, side = centre < 0 ? " + " : " - ";
    const std::string difference = "(" + x + side + number(std::abs(centre)) + ")";
    return difference + "^2" + (by.empty() ? "" : "/" + by);
  }

  std::string peaks(const Found& found) const {
    std::string text;
    for (std::size_t k = 0; k + 2 < found.top.size(); k += 3) {
      const double s = found.top[k + 2];
      const std::string inner = distance(found.top[k + 1], number(2 * s * s));
      add(text, found.top[k], latex ? "e^{-" + inner + "}" : "exp(-" + inner + ")");
    }
    for (std::size_t k = 0; k + 2 < found.bottom.size(); k += 3) {
      const double w = found.bottom[k + 2];
      const std::string under = distance(found.bottom[k + 1], "") + " + " + number(w * w);
      if (latex) {
        text += found.bottom[k] < 0 ? " - " : text.empty() ? "" : " + ";
        text += "\\frac{" + number(std::abs(found.bottom[k])) + "}{" + under + "}";
      } else {
        add(text, found.bottom[k], "1/(" + under + ")");
      }
    }
    add(text, found.c0, "");
    return text;
  }

  bool latex;
  const Study& study;
  const std::vector<Term>& terms;
};

}  // namespace

std::string plainFormula(const Study& study, const std::vector<Term>& terms, const Found& found) {
  return Writer(false, study, terms).formula(found);
}

std::string latexFormula(const Study& study, const std::vector<Term>& terms, const Found& found) {
  return Writer(true, study, terms).formula(found);
}
