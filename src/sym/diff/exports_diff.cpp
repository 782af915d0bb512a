// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "orvane/sym_diff.h"
#include "sym/diff/matrix_diff.h"
#include "sym/handles.h"

using Sym::kept;

namespace {

// A refusal leaves its bytes with the host, without a terminator.
SymMatrix2d* handedOut(Sym::MatrixPtr result, const std::string& refusal, char* message) {
  if (result == nullptr && message != nullptr) std::copy(refusal.begin(), refusal.end(), message);
  return kept(std::move(result));
}

}  // namespace

SymMatrix2d* sym_diff(const SymMatrix2d* matrix, uint32_t order, const char* name, char* message) {
  std::string refusal;
  Sym::MatrixPtr result = Sym::diff(native(matrix), order, name, refusal);
  return handedOut(std::move(result), refusal, message);
}

SymMatrix2d* sym_diffVector(const SymMatrix2d* a, const SymMatrix2d* b, char* message) {
  std::string refusal;
  Sym::MatrixPtr result = Sym::diffVector(native(a), native(b), refusal);
  return handedOut(std::move(result), refusal, message);
}
