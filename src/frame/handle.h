// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>

#include "frame/base_data.h"
#include "frame/memory_management.h"

/// The class behind an opaque handle type of the public headers. Each subsystem specialises it beside its exports:
/// `template <> struct NativeOf<Data2D> { using type = Data2D_c; };`
template <class Handle>
struct NativeOf;

template <class Handle>
using NativeType = typename NativeOf<std::remove_const_t<Handle>>::type;

/// What the address of a handle is one of: the root of the registered objects, or the class itself for those that a
/// store of their own keeps.
template <class Native>
using Rooted = std::conditional_t<std::is_base_of_v<BaseData, Native>, BaseData, Native>;

/// The object behind a handle; null stays null. A handle is the object's own address, so this is a cast and no look-up.
template <class Handle>
auto* pointerOf(Handle* handle) {
  using Native = NativeType<Handle>;
  if constexpr (std::is_const_v<Handle>)
    return static_cast<const Native*>(reinterpret_cast<const Rooted<Native>*>(handle));
  else
    return static_cast<Native*>(reinterpret_cast<Rooted<Native>*>(handle));
}

template <class Handle>
auto& native(Handle* handle) {
  return *pointerOf(handle);
}

/// The handle of an object: the way back from `native`. Nobody else casts.
template <class Handle>
Handle* handleOf(NativeType<Handle>* object) {
  return reinterpret_cast<Handle*>(static_cast<Rooted<NativeType<Handle>>*>(object));
}

/// Gives a new object to the registry of owned objects and hands out its handle.
template <class Handle>
Handle* registered(std::unique_ptr<NativeType<Handle>> object) {
  if (object == nullptr) return nullptr;
  MemoryManagement_c::instance().addRaw(object.get());
  return handleOf<Handle>(object.release());
}

/// Enters a shared object in the registry and hands out its handle; null stays null.
template <class Handle>
Handle* registeredShared(std::shared_ptr<NativeType<Handle>> object) {
  if (object == nullptr) return nullptr;
  Handle* handle = handleOf<Handle>(object.get());
  MemoryManagement_c::instance().addShared(handle, std::move(object));
  return handle;
}

/// A host's array and its 32-bit count as a span; a negative count is empty.
template <class T>
std::span<T> span(T* values, int32_t count) {
  return {values, count > 0 && values != nullptr ? static_cast<std::size_t>(count) : 0};
}
