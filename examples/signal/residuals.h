// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "record.h"

struct TestResult {
  std::string name;
  double p;
};

/// Tests of the residuals for normality.
std::vector<TestResult> normalityTests(const Series& residual);

std::string residualSection(const Record& record);
