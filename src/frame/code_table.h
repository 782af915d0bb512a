// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <span>
#include <stdexcept>
#include <vector>

/// Tables of rows that a host names by small codes: layer kinds, distributions, windows, solvers. A row is plain data
/// with a member `code`; the rows stand in ascending order of code, each code once.

/// Whether rows stand in ascending order of code, each code once and not negative.
template <class Row>
constexpr bool ascendingCodes(std::span<const Row> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].code < 0 || (i > 0 && rows[i].code <= rows[i - 1].code)) return false;
  return true;
}

/// Whether every row has a name and no two share one; for tables whose names are looked up.
template <class Rows>
constexpr bool distinctNames(const Rows& rows) {
  for (auto row = std::begin(rows); row != std::end(rows); ++row) {
    if (row->name.empty()) return false;
    for (auto other = std::begin(rows); other != row; ++other)
      if (other->name == row->name) return false;
  }
  return true;
}

/// The table over one constexpr array of rows at namespace scope: a wrong order does not compile, a look-up by code is
/// one step. `using Windows = CodeTable<kWindows>;`
template <const auto& kRows>
class CodeTable {
 public:
  using Row = std::remove_cvref_t<decltype(kRows[0])>;

  /// Null for a code without a row.
  static constexpr const Row* find(int64_t code) {
    if (code < 0 || code >= static_cast<int64_t>(places.size())) return nullptr;
    const uint16_t place = places[static_cast<std::size_t>(code)];
    return place == kNone ? nullptr : &kRows[place];
  }

  static constexpr std::span<const Row> rows() { return kRows; }

 private:
  static constexpr uint16_t kNone = 65535;
  static constexpr std::size_t kCount = std::size(kRows);
  static_assert(kCount > 0 && kCount < kNone);
  static_assert(ascendingCodes(std::span<const Row>(kRows)), "rows out of order");

  static constexpr auto places = [] {
    std::array<uint16_t, static_cast<std::size_t>(kRows[kCount - 1].code) + 1> all;
    all.fill(kNone);
    for (std::size_t i = 0; i < kCount; ++i) all[static_cast<std::size_t>(kRows[i].code)] = static_cast<uint16_t>(i);
    return all;
  }();
};

/// One table over the spans of rows that stand beside their functions in several files. Made once, on first use; the
/// spans may interleave. Two rows of one code are a mistake of the library and throw std::logic_error.
template <class Row>
class JoinedCodeTable {
 public:
  JoinedCodeTable(std::initializer_list<std::span<const Row>> spans) {
    for (const std::span<const Row> rows : spans)
      for (const Row& row : rows) {
        const auto code = static_cast<std::size_t>(row.code);
        if (code >= places.size()) places.resize(code + 1, nullptr);
        if (places[code] != nullptr) throw std::logic_error("two rows of one code");
        places[code] = &row;
      }
    for (const Row* row : places)
      if (row != nullptr) inOrder.push_back(row);
  }

  /// Null for a code without a row.
  const Row* find(int64_t code) const {
    return code >= 0 && code < static_cast<int64_t>(places.size()) ? places[static_cast<std::size_t>(code)] : nullptr;
  }

  std::span<const Row* const> rows() const { return inOrder; }  ///< in ascending order of code

 private:
  std::vector<const Row*> places;
  std::vector<const Row*> inOrder;
};
