// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "digits.h"
#include "models.h"
#include "options.h"
#include "runs.h"

/// A network or the stack on the rows of the test.
struct Tested {
  std::string name;
  double rate = 0;
};

/// Everything that the page tells.
struct Results {
  size_t rows = 0;
  Parts parts;
  std::vector<Curve> training, steppers;
  std::vector<Tested> tested;
  size_t chosen = 0;           ///< of `tested`: the best on the rows of the choice
  std::vector<double> shares;  ///< [test rows * kClasses] what the chosen one thinks of every class
  bool stopped = false;
};

/// The whole page.
std::string reportPage(const Results& results, const std::vector<Model>& models, const Options& options);

// Drawings, each an SVG element.
std::string drawnConfusion(const std::vector<std::vector<int>>& counts);
std::string drawnDigit(const double* picture);
std::string drawnModels(const std::vector<const Model*>& models);
