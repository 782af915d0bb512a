// SPDX-License-Identifier: Apache-2.0
#include "classify/svm/svm.h"

#include <algorithm>

#include "classify/svm/kernels.h"

namespace NetWork {

double signOf(double value) { return value > 0 ? 1.0 : -1.0; }

SVM_c::SVM_c() { typeCode = 39; }
SVM_c::~SVM_c() = default;

const KernelKind& SVM_c::kind() const { return kernelOf(kernelType); }

std::size_t SVM_c::trainingCount() const { return kernelTable.empty() ? std::min(sampleCount(), y.size()) : y.size(); }

void SVM_c::setDim(std::size_t size) {
  if (size == dim) return;
  dim = size;
  x.clear();
}

void SVM_c::setData(const double* samples, std::span<const double> labels) {
  x.assign(samples, samples + labels.size() * dim);
  y.assign(labels.begin(), labels.end());
  kernelTable.clear();
}

bool SVM_c::setKernelData(std::span<const double> table, std::span<const double> labels) {
  if (labels.empty() || table.size() != labels.size() * labels.size()) return false;
  kernelTable.assign(table.begin(), table.end());
  y.assign(labels.begin(), labels.end());
  return true;
}

void SVM_c::setType(int32_t code) {
  kernelType = code;
  fillParams(kind(), kernelParam);
}

void SVM_c::setOther(std::span<const double, 3> params, double c) {
  kernelParam.assign(params.begin(), params.end());
  C = c > 0 ? c : 0;
}

bool SVM_c::solve() {
  score = 0;
  const std::size_t count = trainingCount();
  if (count == 0) return false;
  if (owned == nullptr) {
    owned = std::make_unique<Solver::SolverBySMO_c>();
    solver = owned.get();
  }
  owned->stop = false;
  owned->score = 0;

  const KernelKind& formula = kind();
  std::vector<double> columns(kernelTable.empty() ? count * dim : 0);
  for (std::size_t i = 0; i < count && !columns.empty(); ++i)
    for (std::size_t k = 0; k < dim; ++k) columns[k * count + i] = x[i * dim + k];
  KernelRows rows(count, [&](std::size_t i, std::span<double> row) {
    if (kernelTable.empty())
      rowOf(formula, kernelParam.data(), &x[i * dim], columns.data(), dim, row);
    else
      std::copy_n(kernelTable.begin() + static_cast<std::ptrdiff_t>(i * count), count, row.begin());
  });
  for (std::size_t i = 0; i < count; ++i)
    rows.setOwn(i, kernelTable.empty() ? valueOf(formula, kernelParam.data(), &x[i * dim], &x[i * dim], dim)
                                       : kernelTable[i * count + i]);
  std::vector<double> signs(count);
  std::transform(y.begin(), y.begin() + static_cast<std::ptrdiff_t>(count), signs.begin(), signOf);

  if (a.size() != count) a.assign(count, 0);
  const bool solved = owned->solve(rows, signs, C, {rateLimit, iterLimit, passLimit}, a);
  b = owned->offset();
  score = owned->score;
  w.assign(isLinear(formula) && kernelTable.empty() ? dim : 0, 0.0);
  if (!w.empty())
    for (std::size_t i = 0; i < count; ++i)
      for (std::size_t k = 0; k < dim; ++k) w[k] += a[i] * signs[i] * x[i * dim + k];
  return solved;
}

void SVM_c::requestStop() {
  if (Solver::SolverBySMO_c* running = solver) running->stop = true;
}

double SVM_c::currentScore() const {
  const Solver::SolverBySMO_c* running = solver;
  return running != nullptr ? running->score.get() : score;
}

double SVM_c::predict(const double* point) const {
  const KernelKind& formula = kind();
  if (isLinear(formula) && kernelTable.empty() && w.size() == dim) return productOf(w.data(), point, dim) + b;
  const std::size_t count = std::min(trainingCount(), a.size());
  double sum = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (a[i] == 0) continue;
    const double value = kernelTable.empty() ? valueOf(formula, kernelParam.data(), &x[i * dim], point, dim) : point[i];
    sum += a[i] * signOf(y[i]) * value;
  }
  return sum + b;
}

}  // namespace NetWork
