// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <random>

/// Uniform on [0,1) from two 32-bit words: (w0 + w1*2^32)/2^64.
struct UniformDistribution {
  template <class Generator>
  double operator()(Generator& generator) const {
    const double low = static_cast<double>(generator());
    const double high = static_cast<double>(generator());
    const double value = (low + high * 0x1p32) * 0x1p-64;
    return value < 1.0 ? value : std::nextafter(1.0, 0.0);  // words near the top round up to 1
  }
};

/// Standard normal by the polar method (Marsaglia and Bray 1964): two values a round, the second one is kept.
class NormalDistribution {
 public:
  template <class Generator>
  double operator()(Generator& generator) {
    if (cached) {
      cached = false;
      return second;
    }
    double x, y, square;
    do {
      x = 2.0 * uniform(generator) - 1.0;
      y = 2.0 * uniform(generator) - 1.0;
      square = x * x + y * y;
    } while (square > 1.0 || square == 0.0);
    const double factor = std::sqrt(-2.0 * std::log(square) / square);
    second = x * factor;
    cached = true;
    return y * factor;
  }

 private:
  UniformDistribution uniform;
  double second = 0.0;
  bool cached = false;
};

/// A seed from the system's random device.
inline uint32_t deviceSeed() { return std::random_device{}(); }
