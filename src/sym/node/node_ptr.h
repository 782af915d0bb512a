// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <utility>

namespace Sym {

class SymObject;

/// A node seen through arguments that may be shared: it can be read, not changed and not kept.
class ConstNodePtr {
 public:
  ConstNodePtr(const ConstNodePtr&) = delete;
  ConstNodePtr& operator=(const ConstNodePtr&) = delete;

  const SymObject& operator*() const { return *node_; }
  const SymObject* operator->() const { return node_; }
  const SymObject* get() const { return node_; }
  explicit operator bool() const { return node_ != nullptr; }
  bool operator==(const ConstNodePtr& other) const { return node_ == other.node_; }
  bool operator==(std::nullptr_t) const { return node_ == nullptr; }

 protected:
  ConstNodePtr() = default;
  explicit ConstNodePtr(SymObject* node) : node_(node) {}
  ~ConstNodePtr() = default;

  SymObject* node_ = nullptr;
};

/// Shared owner of a node. The count stands in the node and is a plain number, as the engine serves one thread.
class NodePtr : public ConstNodePtr {
 public:
  NodePtr() = default;
  NodePtr(std::nullptr_t) {}
  explicit NodePtr(SymObject* node) : ConstNodePtr(node) { take(); }
  NodePtr(const NodePtr& other) : ConstNodePtr(other.node_) { take(); }
  NodePtr(NodePtr&& other) noexcept : ConstNodePtr(std::exchange(other.node_, nullptr)) {}
  NodePtr& operator=(NodePtr other) noexcept {
    swap(other);
    return *this;
  }
  ~NodePtr() { give(); }

  SymObject& operator*() const { return *node_; }
  SymObject* operator->() const { return node_; }
  SymObject* get() const { return node_; }
  bool alone() const;  ///< whether this is the node's only owner
  void swap(NodePtr& other) noexcept { std::swap(node_, other.node_); }

 private:
  void take() const;
  void give();
};

}  // namespace Sym
