// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/products.h"

#include "expresssearch/kernels.h"
#include "frame/numbers.h"

namespace Search {

Products::Products(const std::vector<std::vector<double>>& terms, std::span<const uint32_t> order,
                   std::span<const double> y)
    : rows(y.size()), positions(order.size()), ones(rows, 1.0) {
  columns.push_back(ones.data());
  for (const uint32_t index : order) columns.push_back(terms[index].data());
  for (const uint32_t index : order) {
    std::vector<double> product(rows);
    for (std::size_t i = 0; i < rows; ++i) product[i] = terms[index][i] * y[i];
    timesY.push_back(std::move(product));
  }
  for (const auto& product : timesY) columns.push_back(product.data());
  columns.push_back(y.data());
  const std::size_t cells = columns.size() * (columns.size() + 1) / 2;
  if (cells <= kMostBytes / sizeof(double)) table.assign(cells, kNaN);
}

double Products::summed(std::size_t i, std::size_t j) const { return dot({columns[i], rows}, {columns[j], rows}); }

}  // namespace Search
