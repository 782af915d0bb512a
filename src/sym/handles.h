// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "frame/handle.h"
#include "orvane/sym.h"
#include "sym/store/store.h"

// Handles of this family are the addresses of what its own store holds.
template <>
struct NativeOf<SymObject> {
  using type = Sym::SymObject;
};
template <>
struct NativeOf<SymMatrix2d> {
  using type = Sym::SymMatrix2d_t;
};
template <>
struct NativeOf<BaseSym> {
  using type = Sym::BaseSym_s;
};

namespace Sym {

/// Enters a new object in the store and hands out its handle; null stays null for a matrix.
inline ::SymObject* kept(NodePtr node) { return handleOf<::SymObject>(SymManger::instance().keep(std::move(node))); }
inline ::SymMatrix2d* kept(MatrixPtr matrix) {
  return handleOf<::SymMatrix2d>(SymManger::instance().keep(std::move(matrix)));
}

}  // namespace Sym
