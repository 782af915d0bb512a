// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

/// The scalar functions of the library by name: tests/reference/special/functions.csv and what calls its rows as a host
/// would.
namespace functions {

inline constexpr int kNone = -1;

/// A function on as many numbers as it takes; an integer order comes first.
using Call = std::function<double(const double*)>;

struct Function {
  std::string family, name;
  int count;                ///< of its numbers, with the order
  bool ofOrder;             ///< its first number is an integer order
  int arrayCode;            ///< of the array functions, or kNone
  int kindCode;             ///< of expressions, or kNone
  std::string text, latex;  ///< of the kind, on a, b, c and d
  bool isExport() const { return name.starts_with("math_"); }
};

const std::vector<Function>& all();
const Function& row(const std::string& name);

/// The pointer behind an export as a call.
Call fromSymbol(void* symbol, int count, bool ofOrder);

/// The same function through its array code.
Call byArray(const Function& function);

/// What stands for the row: its export, a formula, or the array functions for what only they have.
Call callOf(const Function& function);
Call find(const std::string& name);

}  // namespace functions
