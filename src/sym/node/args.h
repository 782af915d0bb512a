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

#include "sym/node/node_ptr.h"
#include "sym/node/pool.h"

namespace Sym {

/// The arguments of a node: a vector in a block of the pool that clones share until one of them is written to. Every
/// access that could write makes the block its own first: its nodes are then copies whose own arguments are shared in
/// their turn. So a clone costs one node however large the tree, and an edit costs the path to its place. A node in
/// a shared block is never changed, but for the text that it caches.
class Args {
 public:
  using value_type = NodePtr;
  using iterator = NodePtr*;

  /// Reads without making the block its own.
  class const_iterator {
   public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = NodePtr;
    using difference_type = std::ptrdiff_t;
    using pointer = const ConstNodePtr*;
    using reference = const ConstNodePtr&;

    const_iterator() = default;
    explicit const_iterator(const NodePtr* at) : at_(at) {}
    reference operator*() const { return *at_; }
    pointer operator->() const { return at_; }
    const_iterator& operator++() { return ++at_, *this; }
    const_iterator& operator--() { return --at_, *this; }
    const_iterator operator++(int) { return const_iterator(at_++); }
    const_iterator operator--(int) { return const_iterator(at_--); }
    const_iterator operator+(difference_type n) const { return const_iterator(at_ + n); }
    difference_type operator-(const const_iterator& other) const { return at_ - other.at_; }
    bool operator==(const const_iterator& other) const = default;

   private:
    const NodePtr* at_ = nullptr;
  };

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
  ~Args() { release(); }

  /// The same arguments, in the same block.
  void share(const Args& other) {
    release();
    block_ = other.block_;
    if (block_ != nullptr) ++block_->owners;
  }
  bool shared() const { return block_ != nullptr && block_->owners > 1; }

  iterator begin() { return own(), nodes(); }
  iterator end() { return own(), nodes() + size(); }
  const_iterator begin() const { return const_iterator(nodes()); }
  const_iterator end() const { return const_iterator(nodes() + size()); }
  auto rbegin() const { return std::make_reverse_iterator(end()); }
  auto rend() const { return std::make_reverse_iterator(begin()); }
  std::size_t size() const { return block_ == nullptr ? 0 : block_->size; }
  bool empty() const { return size() == 0; }
  NodePtr& operator[](std::size_t i) { return own(), nodes()[i]; }
  const ConstNodePtr& operator[](std::size_t i) const { return nodes()[i]; }
  const Args& read() const { return *this; }  ///< for reading arguments of a node that could be changed

  void reserve(std::size_t n) {
    own();
    if (n > capacity()) move(n);
  }
  void push_back(NodePtr node) {
    own();
    if (size() == capacity()) move(std::max<std::size_t>(2, std::bit_ceil(size() + 1)));
    new (nodes() + block_->size++) NodePtr(std::move(node));
  }
  void erase(iterator place) {
    std::move(place + 1, end(), place);
    std::destroy_at(nodes() + --block_->size);
  }
  void clear() { release(); }
  void shorten(std::size_t n) {  ///< drops what stands beyond the first n
    if (n >= size()) return;
    own();
    std::destroy(nodes() + n, nodes() + size());
    block_->size = static_cast<uint32_t>(n);
  }
  void swap(Args& other) noexcept { std::swap(block_, other.block_); }

 private:
  struct Block {
    uint32_t owners = 1, size = 0, capacity = 0;
  };
  static constexpr std::size_t kHead = 16;
  static_assert(sizeof(Block) <= kHead);

  NodePtr* nodes() const {
    return block_ == nullptr ? nullptr : reinterpret_cast<NodePtr*>(reinterpret_cast<char*>(block_) + kHead);
  }
  std::size_t capacity() const { return block_ == nullptr ? 0 : block_->capacity; }
  static std::size_t bytes(std::size_t capacity) { return kHead + capacity * sizeof(NodePtr); }
  static Block* newBlock(std::size_t capacity) {
    auto* block = new (poolTake(bytes(capacity))) Block;
    block->capacity = static_cast<uint32_t>(capacity);
    return block;
  }
  void own() {
    if (shared()) copy();
  }
  void copy();
  void move(std::size_t capacity) {  // of a block of one's own
    Args larger;
    larger.block_ = newBlock(capacity);
    std::uninitialized_move(nodes(), nodes() + size(), larger.nodes());
    larger.block_->size = static_cast<uint32_t>(size());
    swap(larger);
  }
  void release() {
    Block* const block = std::exchange(block_, nullptr);
    if (block == nullptr || --block->owners > 0) return;
    auto* const first = reinterpret_cast<NodePtr*>(reinterpret_cast<char*>(block) + kHead);
    std::destroy(first, first + block->size);
    poolGive(block, bytes(block->capacity));
  }

  Block* block_ = nullptr;
};

}  // namespace Sym
