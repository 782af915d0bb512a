// SPDX-License-Identifier: Apache-2.0
#include <thread>

#include "filter/fourier_errors.h"

namespace {

TEST(Fourier, EveryLengthToRounding) {
  double worst = 0;
  for (std::size_t n = 2; n <= 3000; ++n) {
    const auto [there, back] = errorsOf(n, n <= 80 ? n : 6);
    EXPECT_LE(there, 4e-16) << n;
    EXPECT_LE(back, 8e-16) << n;
    worst = std::max(worst, there);
  }
  std::cout << "largest error " << worst << " sqrt(log2 n)\n";
}

TEST(Fourier, EmptyOneAndUnequalParts) {
  EXPECT_EQ(transformed({{}, {}}).first.size(), 0u);
  EXPECT_EQ(transformed({{3.5}, {-2.0}}), Pair({3.5}, {-2.0}));
  const Numbers x = drawn(100, 3);
  Numbers shorter(x.begin(), x.begin() + 60);
  Numbers padded = shorter;
  padded.resize(100);
  EXPECT_EQ(transformed({x, shorter}), transformed({x, padded}));
  EXPECT_EQ(transformed({x, {}}), transformed({x, Numbers(100, 0.0)}));
  for (const std::size_t n : {1u, 5u, 64u, 67u, 30000u}) {  // in place, the parts exchanged too
    Pair in{drawn(n, 4), drawn(n, 5)};
    const Pair out = transformed(in);
    for (const bool flat : {true, false}) {
      Pair turned = in;
      double *re = turned.first.data(), *im = turned.second.data();
      if (flat)
        data_FFT(re, count(in.first), im, count(in.first), im, re);
      else
        data_FFT2D(re, im, 1, count(in.first), true, im, re, 1);
      EXPECT_EQ(turned, Pair(out.second, out.first)) << n;
    }
    data_FFT(in.first.data(), count(in.first), in.second.data(), count(in.second), in.first.data(), in.second.data());
    EXPECT_EQ(in, out) << n;
    in.first[n / 2] = kNaN;
    EXPECT_TRUE(std::isnan(transformed(in).first.back())) << n;
  }
}

TEST(Fourier, ThreadsShareTables) {
  std::vector<std::thread> threads;
  for (unsigned t = 0; t < 4; ++t)
    threads.emplace_back([t] {
      for (std::size_t n = 900; n < 1000; ++n) EXPECT_LE(errorsOf(n, 2).second, 8e-16) << n << " on thread " << t;
    });
  for (std::thread& thread : threads) thread.join();
}

TEST(Fourier2D, SumsThreadsAndInverse) {
  const int32_t rows = 37, cols = 20;
  const Pair in{drawn(rows * cols, 1), drawn(rows * cols, 2)};
  Pair first;
  for (const int32_t threads : {0, 1, 2, 3, 7, 100, 2147483647}) {
    Pair out{Numbers(in.first.size()), Numbers(in.first.size())}, back = out;
    data_FFT2D(in.first.data(), in.second.data(), rows, cols, true, out.first.data(), out.second.data(), threads);
    data_InvFFT2D(out.first.data(), out.second.data(), rows, cols, true, back.first.data(), back.second.data(),
                  threads);
    if (first.first.empty()) first = out;
    EXPECT_EQ(out, first) << threads;
    expectNear(back.first, in.first, 1e-15, "back");
    expectNear(back.second, in.second, 1e-15, "back");
  }
  for (const auto& [u, v] : {std::pair{0, 0}, {5, 3}, {36, 19}, {18, 10}}) {
    std::complex<double> sum = 0;
    for (int r = 0; r < rows; ++r)
      for (int c = 0; c < cols; ++c)
        sum += std::complex(in.first[static_cast<std::size_t>(r * cols + c)],
                            in.second[static_cast<std::size_t>(r * cols + c)]) *
               std::polar(1.0, -2 * kPi * (u * r / 37.0 + v * c / 20.0));
    EXPECT_NEAR(first.first[static_cast<std::size_t>(u * cols + v)], sum.real(), 1e-12);
    EXPECT_NEAR(first.second[static_cast<std::size_t>(u * cols + v)], sum.imag(), 1e-12);
  }
  Numbers re(6, 9.0), im(6, 9.0), zero(6, 0.0);
  data_FFT2D(in.first.data(), nullptr, 0, 3, true, re.data(), im.data(), 1);
  data_InvFFT2D(in.first.data(), nullptr, 2, -3, true, re.data(), im.data(), 1);
  EXPECT_EQ(re, Numbers(6, 9.0));
  Numbers re2 = re, im2 = im;
  data_FFT2D(in.first.data(), in.second.data(), 2, 3, false, re.data(), im.data(), 1);
  data_FFT2D(in.first.data(), zero.data(), 2, 3, true, re2.data(), im2.data(), 1);
  EXPECT_EQ(re, re2);
  EXPECT_EQ(im, im2);
}

TEST(Spectrum, TonesShiftAndBand) {
  const std::size_t n = 250;
  Numbers low(n), high(n), sum(n), freq(n / 2), amp(n / 2), y(n);
  for (std::size_t i = 0; i < n; ++i) {
    low[i] = 3 * std::cos(2 * kPi * 10 * static_cast<double>(i) / 250 + 0.3) + 1;
    high[i] = 0.5 * std::sin(2 * kPi * 60 * static_cast<double>(i) / 250);
    sum[i] = low[i] + high[i];
  }
  EXPECT_EQ(data_plotFFT(sum.data(), 250, 1000.0, freq.data(), amp.data()), 125);
  EXPECT_NEAR(freq[60], 240, 1e-10);
  EXPECT_NEAR(amp[10], 375, 1e-10);
  EXPECT_NEAR(amp[60], 62.5, 1e-10);
  EXPECT_NEAR(amp[11], 0, 1e-10);
  EXPECT_EQ(data_plotFFT(sum.data(), 1, 1.0, freq.data(), amp.data()), 0);
  const auto band = [&](double lowF, double highF) {
    data_FilterByFFT(sum.data(), y.data(), lowF, highF, 0.0, 1000.0, 250);
    return y;
  };
  expectNear(band(0, 100), low, 1e-13, "low pass");
  expectNear(band(-7, 100), low, 1e-13, "edge below 0");
  expectNear(band(200, kNaN), high, 1e-13, "high pass without upper edge");
  expectNear(band(kNaN, 1e300), sum, 1e-13, "all");
  for (double& value : low) value -= 1;
  expectNear(band(4, 40), low, 1e-13, "band without the mean, bin of 40 Hz kept");
  data_FilterByFFT(sum.data(), y.data(), 503.0, 900.0, -8.0, 1000.0, 250);
  EXPECT_EQ(y, Numbers(n, -8.0));
  for (const std::size_t m : {0u, 1u, 2u, 7u, 8u}) {
    const Numbers x = drawn(m, 3);
    Numbers shifted(m), back(m);
    data_Shift(x.data(), shifted.data(), count(x));
    data_InvShift(shifted.data(), back.data(), count(x));
    EXPECT_EQ(back, x);
    if (m == 7) {
      EXPECT_EQ(shifted, Numbers({x[4], x[5], x[6], x[0], x[1], x[2], x[3]}));
    }
  }
}

TEST(Spectrum, HilbertAndTrend) {
  for (const std::size_t n : {64u, 75u}) {
    Numbers x(n), envelope(n), phase(n), step(n);
    const double w = 2 * kPi * 8 / static_cast<double>(n);
    for (std::size_t i = 0; i < n; ++i) x[i] = 1.5 * std::cos(w * static_cast<double>(i) + 0.2);
    data_getHilbertInfo(x.data(), count(x), envelope.data(), ORVANE_HILBERT_ENVELOPE);
    data_getHilbertInfo(x.data(), count(x), phase.data(), ORVANE_HILBERT_PHASE);
    data_getHilbertInfo(x.data(), count(x), step.data(), ORVANE_HILBERT_PHASE_STEP);
    expectNear(envelope, Numbers(n, 1.5), 1e-14, "envelope");
    int jumps = 0;
    for (std::size_t i = 0; i < n; ++i) {
      EXPECT_NEAR(std::remainder(phase[i] - w * static_cast<double>(i) - 0.2, 2 * kPi), 0, 1e-13);
      jumps += step[i] < -1;  // kept: Hilbert_wrapped
      if (step[i] > -1) {
        EXPECT_NEAR(step[i], w, 1e-13);
      }
    }
    EXPECT_GE(jumps, 8);
    data_getHilbertInfo(x.data(), count(x), envelope.data(), 3);
    EXPECT_NEAR(envelope[0], 1.5, 1e-14);
    Numbers one{7.0};
    data_getHilbertInfo(x.data(), 1, one.data(), ORVANE_HILBERT_PHASE_STEP);
    EXPECT_EQ(one[0], 0);
  }
  Numbers x(5000), y(5000);
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double t = 0.1 * static_cast<double>(i);
    x[i] = 3 - 2 * t + 0.05 * t * t - 1e-4 * t * t * t;
  }
  data_Detrend(x.data(), y.data(), 5000, 3);
  expectNear(y, Numbers(5000, 0.0), 1e-8, "a cubic is its own trend; values reach 7000");
  data_Detrend(x.data(), y.data(), 5000, -1);
  EXPECT_EQ(y, x);
  data_Detrend(x.data(), y.data(), 3, 5);
  expectNear({y[0], y[1], y[2]}, {0, 0, 0}, 1e-14, "interpolated");
  // The line through 0, 0, 1, 0 is 1/10 + t/10 in steps.
  const Numbers bump{0, 0, 1, 0};
  data_Detrend(bump.data(), y.data(), 4, 1);
  expectNear({y[0], y[1], y[2], y[3]}, {-0.1, -0.2, 0.7, -0.4}, 1e-15, "line");
}

TEST(Filter2D, KernelWithClampedEdges) {
  const Numbers in = drawn(6 * 7, 1), weights = drawn(3 * 4, 2);
  for (const uint8_t normalise : {0, 1}) {
    double total = 0;
    for (const double w : weights) total += w;
    Numbers expected(in.size());
    for (int r = 0; r < 6; ++r)
      for (int c = 0; c < 7; ++c)
        for (int k = 0; k < 3; ++k)
          for (int l = 0; l < 4; ++l)
            expected[static_cast<std::size_t>(r * 7 + c)] +=
                weights[static_cast<std::size_t>(k * 4 + l)] / (normalise ? total : 1) *
                in[static_cast<std::size_t>(std::clamp(r - 1 + k, 0, 5) * 7 + std::clamp(c - 2 + l, 0, 6))];
    const Filter2DKernel kernel{weights.data(), 3, 4, normalise};
    for (const int32_t threads : {1, 3, 9}) {
      Numbers out = in;  // in place
      data_Filter2D(out.data(), out.data(), &kernel, 6, 7, threads);
      expectNear(out, expected, 1e-14, "kernel");
    }
  }
  Numbers out(2, 5.0);
  const Filter2DKernel none{nullptr, 3, 3, 0}, empty{weights.data(), 0, 3, 0}, tall{weights.data(), 12, 1, 0};
  for (const Filter2DKernel* kernel : {static_cast<const Filter2DKernel*>(nullptr), &none, &empty})
    data_Filter2D(in.data(), out.data(), kernel, 1, 2, 1);
  data_Filter2D(in.data(), out.data(), &tall, 0, 2, 1);
  EXPECT_EQ(out, Numbers(2, 5.0));
  data_Filter2D(in.data(), out.data(), &tall, 1, 2, 1);  // taller than the matrix: every row of it reads the only one
  double total = 0;
  for (const double w : weights) total += w;
  expectNear(out, {total * in[0], total * in[1]}, 1e-14, "tall kernel");
}

}  // namespace
