// SPDX-License-Identifier: Apache-2.0
// The exports that write through pointers against their tables of references.
#include <gtest/gtest.h>

#include "orvane/special.h"
#include "support/reference.h"

namespace {

TEST(Elementary, ArrayHelpersAgreeWithReferences) {
  checkReference("special/math_polyValue.csv", [](const ReferenceRow& row) {
    const double coefficients[] = {1, -3, 0, 2, -0.5};
    double out[2] = {};
    const double xs[] = {7, row.arguments[0]};
    math_polyValue(coefficients, xs, out, 5, 2);
    return out[1];
  });
  checkReference("special/math_calcUnsymSin.csv", [](const ReferenceRow& row) {
    double out = 0;
    math_calcUnsymSin(3, 1, 2, 0.5, row.arguments.data(), &out, 1);
    return out;
  });
}

TEST(IncompleteGamma, AgreesWithReferences) {
  checkReference("special/math_incompleteGamma.csv", [](const ReferenceRow& row) {
    double value = 0;
    EXPECT_EQ(math_incompleteGamma(row.arguments[0], row.arguments[1], 1, &value), std::isnan(row.expected));
    return value;
  });
  // The same export gives the upper function when the byte is 0.
  checkReference("special/math_igamma.csv", [](const ReferenceRow& row) {
    double value = 0;
    EXPECT_EQ(math_incompleteGamma(row.arguments[0], row.arguments[1], 0, &value), std::isnan(row.expected));
    return value;
  });
}

TEST(ErrorFunctions, AgreeWithReferencesInTheComplexPlane) {
  checkReference("special/math_erfz.csv", [](const ReferenceRow& row) {
    double parts[2] = {};
    math_erfz(row.arguments[0], row.arguments[1], &parts[0], &parts[1]);
    return parts[row.arguments[2] != 0];
  });
}

}  // namespace
