// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "sym/node/pool.h"

namespace Sym {

class SymObject;
using NodePtr = std::shared_ptr<SymObject>;

/// The arguments of a node: a vector of two words, in blocks of the pool. It moves and does not copy, as a subtree
/// has one parent.
class Args {
 public:
  using value_type = NodePtr;
  using iterator = NodePtr*;
  using const_iterator = const NodePtr*;

  Args() = default;
  Args(Args&& other) noexcept { swap(other); }
  Args(std::vector<NodePtr>&& nodes) { *this = std::move(nodes); }
  Args(std::initializer_list<NodePtr> nodes) {
    reserve(nodes.size());
    for (const NodePtr& node : nodes) push_back(node);
  }
  Args& operator=(Args&& other) noexcept {
    Args taken(std::move(other));
    swap(taken);
    return *this;
  }
  Args& operator=(std::vector<NodePtr>&& nodes) {
    Args taken;
    taken.reserve(nodes.size());
    for (NodePtr& node : nodes) taken.push_back(std::move(node));
    swap(taken);
    return *this;
  }
  Args& operator=(std::initializer_list<NodePtr> nodes) { return *this = Args(nodes); }
  ~Args() {
    clear();
    release();
  }

  iterator begin() { return nodes_; }
  iterator end() { return nodes_ + size_; }
  const_iterator begin() const { return nodes_; }
  const_iterator end() const { return nodes_ + size_; }
  auto rbegin() { return std::make_reverse_iterator(end()); }
  auto rend() { return std::make_reverse_iterator(begin()); }
  auto rbegin() const { return std::make_reverse_iterator(end()); }
  auto rend() const { return std::make_reverse_iterator(begin()); }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  NodePtr& operator[](std::size_t i) { return nodes_[i]; }
  const NodePtr& operator[](std::size_t i) const { return nodes_[i]; }
  NodePtr& front() { return nodes_[0]; }
  const NodePtr& front() const { return nodes_[0]; }
  NodePtr& back() { return nodes_[size_ - 1]; }
  const NodePtr& back() const { return nodes_[size_ - 1]; }

  void reserve(std::size_t n) {
    if (n <= capacity()) return;
    const auto doublings = static_cast<uint8_t>(std::bit_width(n - 1));
    auto* larger = static_cast<NodePtr*>(poolTake((std::size_t{1} << doublings) * sizeof(NodePtr)));
    std::uninitialized_move(begin(), end(), larger);
    std::destroy(begin(), end());
    release();
    nodes_ = larger;
    doublings_ = doublings;
  }
  void push_back(NodePtr node) {
    if (size_ == capacity()) reserve(static_cast<std::size_t>(size_) + 1);
    new (nodes_ + size_++) NodePtr(std::move(node));
  }
  void erase(iterator place) {
    std::move(place + 1, end(), place);
    std::destroy_at(nodes_ + --size_);
  }
  void clear() { shorten(0); }
  void shorten(std::size_t n) {  ///< drops what stands beyond the first n
    if (n >= size_) return;
    std::destroy(begin() + n, end());
    size_ = static_cast<uint32_t>(n);
  }
  void swap(Args& other) noexcept {
    std::swap(nodes_, other.nodes_);
    std::swap(size_, other.size_);
    std::swap(doublings_, other.doublings_);
  }

 private:
  std::size_t capacity() const { return nodes_ == nullptr ? 0 : std::size_t{1} << doublings_; }
  void release() {
    if (nodes_ != nullptr) poolGive(nodes_, capacity() * sizeof(NodePtr));
  }

  NodePtr* nodes_ = nullptr;
  uint32_t size_ = 0;
  uint8_t doublings_ = 0;  // the block has room for 2^doublings_, when there is one
};

}  // namespace Sym
