// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <utility>

namespace Sym {

/// A string that most nodes never have: one pointer while it is empty.
class CachedText {
 public:
  bool empty() const { return !text || text->empty(); }
  void clear() { text.reset(); }
  const std::string& get() const {
    static const std::string none;
    return text ? *text : none;
  }
  std::string& get() {
    if (!text) text = std::make_unique<std::string>();
    return *text;
  }
  operator const std::string&() const { return get(); }
  operator std::string&() { return get(); }

  CachedText& operator=(std::string value) {
    if (value.empty())
      text.reset();
    else
      get() = std::move(value);
    return *this;
  }
  CachedText& operator=(const CachedText& other) { return other.empty() ? (clear(), *this) : *this = other.get(); }
  template <class Piece>
  CachedText& operator+=(const Piece& piece) {
    get() += piece;
    return *this;
  }
  friend bool operator==(const CachedText& a, const std::string& b) { return a.get() == b; }

 private:
  std::unique_ptr<std::string> text;
};

}  // namespace Sym
