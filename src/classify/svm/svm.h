// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <memory>
#include <span>
#include <vector>

#include "classify/svm/smo_solver.h"
#include "frame/base_data.h"

namespace NetWork {

struct KernelKind;

/// The class of a label or of a value of f: 1 above 0, -1 otherwise.
double signOf(double value);

/// Support vector machine for two classes (Cortes, Vapnik 1995): f(x) = sum of a_i y_i K(x_i, x) + b.
class SVM_c final : public BaseData {
 public:
  SVM_c();
  ~SVM_c() override;

  void setDim(std::size_t size);
  void addX(const double* sample) { x.insert(x.end(), sample, sample + dim); }
  void setData(const double* samples, std::span<const double> labels);
  bool setKernelData(std::span<const double> table, std::span<const double> labels);
  void setType(int32_t code);
  void setOther(std::span<const double, 3> params, double c);

  bool solve();
  void requestStop();
  double predict(const double* point) const;
  double currentScore() const;

  std::size_t sampleCount() const { return dim == 0 ? 0 : x.size() / dim; }

  int32_t kernelType = 0;
  double C = 1000000.0;
  double b = 0;
  double rateLimit = 0.99;
  int32_t iterLimit = 0;
  int32_t passLimit = 1000000000;
  std::vector<double> kernelParam;
  std::size_t dim = 0;
  std::vector<double> x;  ///< samples, one behind the other
  std::vector<double> y;
  std::vector<double> a;
  std::vector<double> w;  ///< of the linear kernel

 private:
  const KernelKind& kind() const;
  std::size_t trainingCount() const;

  std::vector<double> kernelTable;  // [n*n], of a host that has its own kernel
  double score = 0;
  std::unique_ptr<Solver::SolverBySMO_c> owned;
  std::atomic<Solver::SolverBySMO_c*> solver{nullptr};  // `owned`, for other threads
};

}  // namespace NetWork
