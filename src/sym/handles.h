// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "orvane/sym.h"
#include "sym/store/store.h"

/// Handles of this family are the addresses of what the store holds; these casts are the only ones.
namespace Sym {

inline Sym::SymObject* native(::SymObject* node) { return reinterpret_cast<Sym::SymObject*>(node); }
inline const Sym::SymObject* native(const ::SymObject* node) { return reinterpret_cast<const Sym::SymObject*>(node); }
inline SymMatrix2d_t& native(::SymMatrix2d* matrix) { return *reinterpret_cast<SymMatrix2d_t*>(matrix); }
inline const SymMatrix2d_t& native(const ::SymMatrix2d* matrix) {
  return *reinterpret_cast<const SymMatrix2d_t*>(matrix);
}
inline const BaseSym_s& native(const ::BaseSym* variable) { return *reinterpret_cast<const BaseSym_s*>(variable); }

inline ::SymObject* handle(Sym::SymObject* node) { return reinterpret_cast<::SymObject*>(node); }
inline ::SymMatrix2d* handle(SymMatrix2d_t* matrix) { return reinterpret_cast<::SymMatrix2d*>(matrix); }
inline ::BaseSym* handle(BaseSym_s* variable) { return reinterpret_cast<::BaseSym*>(variable); }

/// Enters a new object in the store and hands out its handle; null stays null for a matrix.
inline ::SymObject* kept(NodePtr node) { return handle(SymManger::instance().keep(std::move(node))); }
inline ::SymMatrix2d* kept(MatrixPtr matrix) { return handle(SymManger::instance().keep(std::move(matrix))); }

}  // namespace Sym
