// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

namespace Filter {

/// A complex array in two parts.
struct Split {
  double *re, *im;
};
struct ConstSplit {
  const double *re, *im;
  ConstSplit(const double* real, const double* imaginary) : re(real), im(imaginary) {}
  ConstSplit(Split s) : re(s.re), im(s.im) {}
};

/// A way to transform one length: X[k] = sum of x[m] exp(-2 pi i k m/n), tables made. Constant after construction: any
/// number of threads may run it.
class FourierPlan {
 public:
  virtual ~FourierPlan() = default;

  /// out may be in.
  virtual void run(ConstSplit in, Split out) const = 0;
  virtual std::size_t tableSize() const = 0;  ///< doubles that the tables hold
};

/// The plan of a length n >= 1, from a store of recent ones that all threads share.
std::shared_ptr<const FourierPlan> fourierPlan(std::size_t n);

/// The transform, or its inverse with the factor 1/n.
void fourier(const FourierPlan& plan, std::size_t n, ConstSplit in, Split out, bool inverse);

}  // namespace Filter
