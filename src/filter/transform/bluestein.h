// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

#include "filter/transform/fourier.h"

namespace Filter {

/// A length with a large prime factor as a convolution (Bluestein 1970): with c[k] = exp(-pi i k^2/n),
/// X[k] = c[k] sum over m of (x[m] c[m]) conj(c[k-m]), by transforms of a smooth length of 2n - 1 or more.
class Bluestein final : public FourierPlan {
 public:
  explicit Bluestein(std::size_t n);

  void run(ConstSplit in, Split out) const override;
  std::size_t tableSize() const override { return 2 * (n + size); }

 private:
  std::size_t n, size;
  std::shared_ptr<const FourierPlan> inner;
  std::vector<double> chirpRe, chirpIm;    ///< c
  std::vector<double> kernelRe, kernelIm;  ///< transform of conj(c), scaled by 1/size
};

}  // namespace Filter
