// SPDX-License-Identifier: Apache-2.0
#include "sym/text/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace Sym {
namespace {

/// The digits that a stream writes at this precision in its default format.
std::string streamText(double x, int precision) {
  char buffer[64];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::general, precision).ptr;
  return {buffer, end};
}

}  // namespace

std::string numberText(double x) {
  const double rounded = std::round(x);
  if (std::abs(x - rounded) < 1e-15 && rounded >= -0x1p63 && rounded < 0x1p63)
    return std::to_string(static_cast<int64_t>(rounded));
  return streamText(x, 20);
}

std::string latexNumberFull(double x) {
  if (std::isnan(x)) return "\\mathbf{NaN}";
  if (std::isinf(x)) return x > 0 ? "\\infty" : "-\\infty";
  std::string text = streamText(x, 18);
  const std::size_t e = text.find('e');
  if (e == std::string::npos) return text;
  // KEPT: the mantissa keeps its e, the exponent its sign and zeros; expected: neither (kept.csv: NumberFull_e)
  return text.substr(0, e + 1) + "\\times 10^{" + text.substr(e + 1) + "}";
}

std::string latexNumberShort(double x) {
  std::string text = streamText(x, 18);
  const std::size_t e = text.rfind('e');
  if (e == std::string::npos) return text;
  return text.substr(0, e) + "\\times 10^{" + std::to_string(std::stoi(text.substr(e + 1))) + "}";
}

}  // namespace Sym
