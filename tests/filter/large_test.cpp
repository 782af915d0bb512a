// SPDX-License-Identifier: Apache-2.0
#include "filter/fourier_errors.h"

namespace {

TEST(FirDesign, HalfLengthInSinglePrecision) {  // kept: Window_half; (n-1)/2 = 8388608.5 becomes 8388608
  Fir fir(ORVANE_FILTER_LOW_PASS, 256, 0, (1 << 24) + 2);
  const Numbers h = fir.design(-1, kInf);
  EXPECT_EQ(h[1 << 23], 0.5);
  EXPECT_EQ(h[(1 << 23) - 1], h[(1 << 23) + 1]);
}

TEST(Fourier, LargeLengths) {
  for (const std::size_t n : {4096, 15625, 16384, 18432, 65536, 59049, 262144, 1048576, 999983, 1000003, 999958}) {
    const auto [there, back] = errorsOf(n, 4);
    EXPECT_LE(there, 4e-16) << n;
    EXPECT_LE(back, 8e-16) << n;
  }
}

}  // namespace
