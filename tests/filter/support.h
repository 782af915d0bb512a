// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/orvane.h>

#include <cmath>
#include <memory>
#include <random>

#include "support/numbers.h"
#include "support/reference.h"

using Numbers = std::vector<double>;

inline int32_t count(const Numbers& x) { return static_cast<int32_t>(x.size()); }

inline Numbers drawn(std::size_t n, unsigned seed) {
  std::mt19937_64 rng(seed);
  Numbers x(n);
  for (double& value : x) value = static_cast<double>(rng() >> 11) * 0x1p-53 - 0.4;
  return x;
}

/// Holds two arrays together within an absolute tolerance; NaN and infinities must be the same.
inline void expectNear(const Numbers& got, const Numbers& expected, double tolerance, const std::string& what) {
  ASSERT_EQ(got.size(), expected.size()) << what;
  for (std::size_t i = 0; i < got.size(); ++i) {
    if (got[i] == expected[i] || (std::isnan(got[i]) && std::isnan(expected[i]))) continue;
    ASSERT_NEAR(got[i], expected[i], tolerance) << what << " at " << i;
  }
}

/// A filter of a host, released at the end.
struct Fir {
  Fir(uint8_t type, double low, double high, int32_t n) {
    fir_setType(handle, type);
    fir_setLimitFrequency(handle, low);
    fir_setLowLimitFrequency(handle, low);
    fir_setHighLimitFrequency(handle, high);
    fir_setFilterOrder(handle, n);
  }
  ~Fir() { api_FreeHandle(handle); }
  Fir(const Fir&) = delete;

  Numbers design(int32_t window, double norm, const Numbers& params = {}) {
    fir_setWindow(handle, window);
    if (!params.empty()) fir_setWindowParam2(handle, params.data(), count(params));
    fir_norm(handle, norm);
    fir_solveByWindow(handle);
    return coefficients();
  }
  Numbers coefficients() {
    Numbers h(static_cast<std::size_t>(fir_getCoefficientSize(handle)));
    EXPECT_EQ(fir_getCoefficient(handle, h.data()), count(h));
    return h;
  }
  Numbers recursive(bool numerator) {
    int32_t nb = -1, na = -1;
    fir_getIIRCoefficient(handle, nullptr, nullptr, &nb, &na);
    Numbers b(static_cast<std::size_t>(nb)), a(static_cast<std::size_t>(na));
    fir_getIIRCoefficient(handle, b.data(), a.data(), &nb, &na);
    return numerator ? b : a;
  }
  std::pair<bool, Numbers> run(const Numbers& x) {
    Numbers y(x.size(), 7.0);
    const bool sound = fir_filter(handle, x.data(), y.data(), count(x));
    return {sound, y};
  }

  FirFilter* handle = fir_Create();
};
