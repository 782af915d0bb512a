// SPDX-License-Identifier: Apache-2.0
#include "pdf/kernel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "support/reference.h"

namespace {

using PDF::makeKernel;

// Centres and widths as the rows of the table give them.
std::shared_ptr<PDF::BasePDFKernel> kernelOf(const ReferenceRow& row) {
  const auto& v = row.arguments;
  const auto kernel = makeKernel(static_cast<uint8_t>(v[0]));
  const auto n = static_cast<std::ptrdiff_t>(v[4]);
  kernel->setCentres({v.begin() + 5, v.begin() + 5 + n});
  kernel->widths.assign(v.begin() + 5 + n, v.begin() + 5 + 2 * n);
  kernel->totalWidth = 0;
  for (double width : kernel->widths) kernel->totalWidth += width;
  kernel->setParams(&v[2]);
  return kernel;
}

TEST(Kernel, ValuesAgreeWithQuadratureAndClosedForms) {
  checkReference("pdf/kernel.csv", [](const ReferenceRow& row) {
    const auto kernel = kernelOf(row);
    return row.arguments[1] == 0 ? kernel->calcPDF(row.arguments.back()) : kernel->calcCDF(row.arguments.back());
  });
}

// By hand: one centre 0 of width 1 and one of width 3. Density (1 - 1/2) + (1 - 1/6); in the middle branch at x = 1.5
// the value (1 - 1.5) 1.5 + 1/2 = -0.25 for the first and (3 - 1.5) 1.5 + 3/2 = 3.75 for the second.
TEST(Kernel, TriangleKeepsItsFormulas) {
  const auto triangle = makeKernel(5);
  triangle->setCentres({0.0, 0.0});
  triangle->widths = {1.0, 3.0};
  triangle->totalWidth = 4.0;
  EXPECT_NEAR(triangle->calcPDF(0.5), 0.5 + 5.0 / 6.0, 1e-15);      // KernelTriangle_pdf
  EXPECT_NEAR(triangle->calcCDF(1.5), (3.75 - 0.25) / 4.0, 1e-15);  // KernelTriangle_cdf
}

TEST(Kernel, DensityIsTheDerivativeOfTheDistributionFunction) {
  const double params[] = {1.75, 0.5};
  for (uint8_t code : {1, 2, 4}) {
    const auto kernel = makeKernel(code);
    kernel->setCentres({3.0, -1.0, 0.25});
    kernel->setWidthByZoom(2.0);
    kernel->setParams(params);
    for (double x = -20; x < 20; x += 0.37) {
      const double h = 1e-5, slope = (kernel->calcCDF(x + h) - kernel->calcCDF(x - h)) / (2 * h);
      EXPECT_NEAR(kernel->calcPDF(x), slope, 1e-6) << int(code) << " at " << x;
    }
    EXPECT_EQ(kernel->calcCDF(-1e4), 0.0);
    EXPECT_NEAR(kernel->calcCDF(1e4), 1.0, 1e-15);
    EXPECT_TRUE(std::isnan(kernel->calcPDF(NAN)) || code != 1);
  }
}

TEST(Kernel, ZoomWidthsFollowTheNeighboursButNotAtTheEnds) {
  const auto kernel = makeKernel(2);
  kernel->setCentres({9.0, 1.0, 1.0 + 1e-13, 1.0, 1.001, 4.0});  // groups 1 (three times), 1.001, 4, 9
  kernel->setWidthByZoom(16.0);
  const std::vector<double> expected = {0.01, 0.01, 0.01, 2.999 * 16, 5.0 * 16, 5.0};  // KernelWidth_ends
  ASSERT_EQ(kernel->widths.size(), expected.size());
  double sum = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_NEAR(kernel->widths[i], expected[i], 1e-13) << i;
    sum += expected[i];
  }
  EXPECT_NEAR(kernel->totalWidth, sum, 1e-12);

  kernel->setCentres({7.0});
  kernel->setWidthByZoom(16.0);
  EXPECT_EQ(kernel->widths, std::vector<double>{1.0});
  kernel->setCentres({7.0, 7.0});
  kernel->setWidthByZoom(16.0);
  EXPECT_EQ(kernel->totalWidth, 2.0);

  kernel->setCentres({1.0, 2.0, 3.0});
  EXPECT_EQ(kernel->calcPDF(2.0), 0.0) << "widths and centres differ in length";
  EXPECT_EQ(kernel->calcCDF(2.0), 0.0);
  kernel->setWidth(0.5);
  EXPECT_EQ(kernel->widths, std::vector<double>(3, 0.5));
  EXPECT_EQ(kernel->totalWidth, 1.5);
  EXPECT_NEAR(kernel->calcCDF(2.0), 0.5, 1e-15);
}

TEST(Kernel, SumErrors) {
  const auto kernel = makeKernel(4);  // one parabola: density 3/4 and 9/16 at 0 and 0.5, distribution 1/2 at 0
  kernel->setCentres({0.0});
  kernel->setWidthByZoom(1.0);
  const double x[] = {0.0, 0.5}, density[] = {0.25, 0.5625}, distribution[] = {0.75, 27.0 / 32.0};
  EXPECT_NEAR(kernel->pdfSumError(x, density), 0.25, 1e-15);
  EXPECT_NEAR(kernel->cdfSumError(x, distribution), 0.0625, 1e-15);
  EXPECT_EQ(kernel->pdfSumError(x, std::span(density, 1)), 1e300);
  EXPECT_EQ(kernel->cdfSumError(std::span(x, 1), distribution), 1e300);
}

TEST(Kernel, CodesSelectClasses) {
  const std::map<int, uint32_t> types = {{0, 1}, {1, 1}, {2, 2}, {3, 1}, {4, 4}, {5, 5}, {6, 1}, {100, 4}, {255, 1}};
  for (const auto& [code, type] : types) EXPECT_EQ(makeKernel(static_cast<uint8_t>(code))->kernelType, type) << code;
}

}  // namespace
