// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hunt.h"

/// The formula on one line.
std::string plainFormula(const Study& study, const std::vector<Term>& terms, const Found& found);

/// The formula in LaTeX.
std::string latexFormula(const Study& study, const std::vector<Term>& terms, const Found& found);
