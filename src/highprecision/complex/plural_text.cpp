// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "highprecision/complex/plural_express.h"

namespace HP {
namespace {

constexpr long long kMaxTextExponent = 1000000000000000;

std::string partText(const HPByGMP& part) {
  std::string text(static_cast<std::size_t>(gmp_snprintf(nullptr, 0, "%.Fe", part.get())) + 1, '\0');
  gmp_snprintf(text.data(), text.size(), "%.Fe", part.get());
  text.pop_back();
  return text;
}

}  // namespace

void parsePart(const char* text, HPByGMP& part) {
  if (text == nullptr) return;
  // strtoll stops at the ends of its range.
  for (const char* mark = std::strpbrk(text, "eE@"); mark != nullptr; mark = std::strpbrk(mark + 1, "eE@"))
    if (std::llabs(std::max(-LLONG_MAX, std::strtoll(mark + 1, nullptr, 10))) > kMaxTextExponent) return;
  mpf_set_str(part.get(), text, 10);
}

std::string textOf(const HPPlural& z) {
  const int re = sign(*z.real), im = sign(*z.imaginary);
  if (im == 0) return re == 0 ? "0" : partText(*z.real);
  if (re == 0) return partText(*z.imaginary) + "i";
  return partText(*z.real) + (im > 0 ? " + " : " - ") + partText(absolute(*z.imaginary)) + "i";
}

int32_t writeText(const HPPlural& z, char* buffer, int32_t size) {
  const std::string text = textOf(z);
  const auto length = static_cast<int32_t>(text.size());
  const bool isZero = sign(*z.real) == 0 && sign(*z.imaginary) == 0;
  const bool both = sign(*z.real) != 0 && sign(*z.imaginary) != 0;
  if (length + (isZero ? 0 : 1) <= size) std::copy_n(text.c_str(), text.size() + (both ? 1 : 0), buffer);
  return length;
}

}  // namespace HP
