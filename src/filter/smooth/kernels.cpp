// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/kernels.h"

#include <array>
#include <cmath>

#include "filter/smooth/local_polynomial.h"
#include "frame/code_table.h"

namespace Filter {

namespace {

/// f(r) = (1-r)^power (sum of polynomial[k] r^k); compactly supported functions after Wendland (1995), Wu (1995) and
/// Buhmann (2000). Arguments beyond 1 are not cut off.
struct RadialRow {
  int32_t code;
  int power;
  std::array<double, 7> polynomial;
};

constexpr RadialRow kRadial[] = {
    {1, 1, {1}},
    {2, 3, {1, 3}},
    {3, 5, {1, 5, 8}},
    {4, 2, {1}},
    {5, 4, {1, 4}},
    {6, 6, {3, 18, 35}},
    {7, 8, {1, 8, 25, 32}},
    {8, 3, {1}},
    {9, 5, {1, 5}},
    {10, 7, {1, 7, 16}},
    {11, 2, {2, 1}},
    {12, 3, {1, 3, 1}},
    {13, 3, {8, 9, 3}},
    {14, 4, {4, 16, 12, 3}},
    {15, 5, {1, 5, 9, 5, 1}},
    {16, 4, {16, 29, 20, 5}},
    {17, 5, {8, 40, 48, 25, 5}},
    {18, 6, {6, 36, 82, 72, 30, 5}},
    {19, 7, {5, 35, 101, 147, 101, 35, 5}},
};

double valueOf(const RadialRow& row, double r) {
  double sum = 0.0;
  for (std::size_t k = row.polynomial.size(); k-- > 0;) sum = sum * r + row.polynomial[k];
  return std::pow(1.0 - r, row.power) * sum;
}

/// The kernel with value(j) at distance j <= half from its middle.
template <class Value>
std::vector<double> mirrored(std::size_t half, const Value& value) {
  std::vector<double> kernel(2 * half + 1);
  for (std::size_t j = 0; j <= half; ++j) kernel[half + j] = kernel[half - j] = value(static_cast<double>(j));
  return kernel;
}

}  // namespace

std::vector<double> shapedKernel(std::size_t width, double (*shape)(double)) {
  const std::size_t half = width / 2;
  std::vector<double> kernel = mirrored(half, [&](double j) { return shape(static_cast<double>(half) + 1.0 - j); });
  kernel.resize(width);  // an even width lacks the last value
  return kernel;
}

bool isRadialKind(int32_t kind) { return CodeTable<kRadial>::find(kind) != nullptr; }

std::vector<double> radialKernel(std::size_t half, double reach, int32_t kind) {
  const RadialRow* row = CodeTable<kRadial>::find(kind);
  if (row == nullptr) return {};
  return mirrored(half, [&](double j) { return valueOf(*row, j == 0.0 ? 0.0 : j / reach); });
}

std::vector<double> savitzkyGolayKernel(std::size_t half, std::size_t degree) {
  const OrthogonalPolynomials polynomials(integers(-static_cast<double>(half), 2 * half + 1), degree);
  const std::vector<double> middle = polynomials.values(0.0);
  std::vector<double> kernel(2 * half + 1, 0.0);
  for (std::size_t j = 0; j < polynomials.count(); ++j)
    for (std::size_t k = 0; k < kernel.size(); ++k) kernel[k] += middle[j] * polynomials.at(j)[k];
  return kernel;
}

}  // namespace Filter
