// SPDX-License-Identifier: Apache-2.0
#include "filter/design/filter_opt_by_fir.h"

#include <algorithm>

#include "filter/apply/convolution.h"
#include "numeric/line_equation.h"

namespace Filter {

namespace {

/// How the unknowns make up the coefficients: coefficient k is sign times unknown index.
struct Part {
  std::size_t index;
  double sign;
};

/// An odd size has its centre c as unknown 0 and c-j, c+j as unknown j; an even one c-j, c+1+j.
std::vector<Part> partsOf(std::size_t size, uint8_t method) {
  std::vector<Part> parts(size);
  const std::size_t centre = (size - 1) / 2, right = size / 2;
  for (std::size_t k = 0; k < size; ++k) {
    if (method > 1)
      parts[k] = {k, 1.0};
    else if (k <= centre)
      parts[k] = {centre - k, 1.0};
    else
      parts[k] = {k - right, method == 0 ? 1.0 : -1.0};
  }
  return parts;
}

}  // namespace

void FilterByOptmizer::addSample(std::span<const double> x, std::span<const double> y) {
  inputs.emplace_back(x.begin(), x.end());
  outputs.emplace_back(y.begin(), y.end());
  outputs.back().resize(x.size());
}

void FilterByOptmizer::clear() {
  inputs.clear();
  outputs.clear();
}

double FilterOptByFIR::solve(std::size_t size, uint8_t method) {
  const std::vector<Part> parts = partsOf(size, method);
  const std::size_t centre = (size - 1) / 2;
  unknowns = method > 1 ? size : (size + 1) / 2;
  designMatrix.clear();
  rightSide.clear();
  for (std::size_t r = 0; r < inputs.size(); ++r)
    for (std::size_t first = 0; first + size <= inputs[r].size(); ++first) {
      designMatrix.resize(designMatrix.size() + unknowns, 0.0);
      double* const row = designMatrix.data() + designMatrix.size() - unknowns;
      for (std::size_t k = 0; k < size; ++k) row[parts[k].index] += parts[k].sign * inputs[r][first + k];
      rightSide.push_back(outputs[r][first + centre]);
    }
  if (rightSide.size() < unknowns) return kNoFit;
  std::vector<double> solution;
  LineEqu::solveLineEqu(designMatrix, static_cast<int>(rightSide.size()), static_cast<int>(unknowns), rightSide,
                        static_cast<int>(rightSide.size()), 1, solution);
  result.resize(size);
  for (std::size_t k = 0; k < size; ++k) result[k] = parts[k].sign * solution[parts[k].index];
  return error();
}

double FilterOptByFIR::error() const {
  double sum = 0.0;
  for (std::size_t r = 0; r < inputs.size(); ++r) {
    const std::size_t n = inputs[r].size();
    std::vector<double> padded(n + result.size() - 1, 0.0), fitted(n);
    std::ranges::copy(inputs[r], padded.begin() + static_cast<std::ptrdiff_t>((result.size() - 1) / 2));
    correlate(padded.data(), result, fitted.data(), n);
    for (std::size_t i = 0; i < n; ++i) sum += (fitted[i] - outputs[r][i]) * (fitted[i] - outputs[r][i]);
  }
  return sum;
}

}  // namespace Filter
