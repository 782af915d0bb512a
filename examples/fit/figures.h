// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

#include "fit_run.h"
#include "sample.h"

/// The class of the i-th fit's marks, which has its colour.
inline std::string series(size_t i) { return "s" + std::to_string(i + 1); }

/// Histogram of the sample with the densities of the fits.
std::string densityFigure(const Sample& sample, std::span<const Fit> fits, const std::string& name);

/// Empirical distribution function with the fitted ones.
std::string distributionFigure(const Sample& sample, std::span<const Fit> fits, const std::string& name);

/// Sample against the quantiles of the fits: dots for the first, lines for the others.
std::string quantileFigure(const Sample& sample, std::span<const Fit> fits, const std::string& name);
