// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// The writers of numbers that texts and LaTeX share. The decimal sign is always a point.
namespace Sym {

/// Plain text: an integer (within 1e-15) in its digits, anything else with 20 significant digits.
std::string numberText(double x);

/// LaTeX with 18 significant digits, also for NaN and the infinities.
std::string latexNumberFull(double x);

/// LaTeX with 18 significant digits and a power of ten without a plus sign or leading zeros.
std::string latexNumberShort(double x);

}  // namespace Sym
