// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

namespace Filter {

struct Complex {
  double re, im;
};

/// exp(-2 pi i k/n) to the last bit or nearly so: products of two short tables in long double, k brought into one
/// eighth of the circle first, so that symmetric roots are exactly symmetric.
class RootsOfUnity {
 public:
  explicit RootsOfUnity(std::size_t n);

  /// For k < n.
  Complex operator()(std::size_t k) const;

 private:
  struct Wide {
    long double re, im;
  };

  std::size_t n;
  std::size_t shift = 3;           ///< the fine table has 2^shift entries, about sqrt(n)
  std::vector<Wide> fine, coarse;  ///< exp(2 pi i j/(8n)) for j in steps of 1 and of 2^shift
};

}  // namespace Filter
