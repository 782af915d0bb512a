// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "frame/host_table.h"
#include "highprecision/complex/plural.h"

namespace HP {

/// One node of a program.
class PluralExpress {
 public:
  std::function<PluralValue(std::vector<PluralExpress*>&)> callable;
  PluralValue value;
  std::vector<PluralExpress*> parameters;

  /// Binds the function with this code; an unknown code leaves the node as it is.
  void setFun(uint8_t code);
  /// Reads both parts; a text that is no number leaves its part as it was.
  void setValue(const char* realText, const char* imaginaryText);
};

/// One program: the nodes in the order of their evaluation, and all nodes that it owns.
class PluralCmd {
 public:
  std::vector<PluralExpress*> sorted;
  std::vector<std::shared_ptr<PluralExpress>> owned;

  PluralExpress* newExpress();
  /// Evaluates the sorted nodes in order and gives the value of the last. A node without a function throws
  /// std::bad_function_call.
  PluralValue run();
};

// What the host holds.
HostTable<PluralCmd>& commandTable();
HostTable<HPPlural>& dataTable();

/// Reads a decimal number into one part. Nothing changes when GMP's parser refuses the text, or when the exponent is
/// beyond +-10^15, which GMP does not bear.
void parsePart(const char* text, HPByGMP& part);

/// The number as text, all digits of the parts: `0`, a real or an imaginary part alone, or both.
std::string textOf(const HPPlural& z);

/// Copies the text when it and one byte more fit into `size`; a text of both parts gets a terminator. A 0 needs one
/// byte. Gives the length of the text.
int32_t writeText(const HPPlural& z, char* buffer, int32_t size);

}  // namespace HP
