// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sym/node/node.h"

namespace Sym {

/// Nodes by their address: entered one by one, looked up often, emptied at once. Open addressing, at most half full.
class AddressTable {
 public:
  const NodePtr* find(const SymObject* address) const {
    if (slots_.empty()) return nullptr;
    for (std::size_t i = place(address);; i = (i + 1) & (slots_.size() - 1)) {
      if (slots_[i].get() == address) return address == nullptr ? nullptr : &slots_[i];
      if (!slots_[i]) return nullptr;
    }
  }
  void insert(NodePtr node) {
    if (!node) return;
    if (2 * (size_ + 1) > slots_.size()) grow();
    std::size_t i = place(node.get());
    for (; slots_[i]; i = (i + 1) & (slots_.size() - 1))
      if (slots_[i] == node) return;
    slots_[i] = std::move(node);
    ++size_;
  }
  void clear() {
    std::vector<NodePtr> released;  // a node that goes must not find the table half empty
    released.swap(slots_);
    if (released.size() < 8 * size_) slots_.resize(released.size());  // the next expression will be about as large
    size_ = 0;
  }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

 private:
  std::size_t place(const SymObject* address) const {
    const auto bits = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(address));
    return static_cast<std::size_t>((bits * 0x9e3779b97f4a7c15u) >> 20) & (slots_.size() - 1);
  }
  void grow() {
    std::vector<NodePtr> old(slots_.empty() ? 64 : 2 * slots_.size());
    old.swap(slots_);
    size_ = 0;
    for (NodePtr& node : old)
      if (node) insert(std::move(node));
  }

  std::vector<NodePtr> slots_;
  std::size_t size_ = 0;
};

}  // namespace Sym
