// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/walk.h"

namespace Search {
namespace {

/// The positions as a stack of slots: the numerator's first, then the denominator's.
class Positions {
 public:
  Positions(const Split& lists, std::size_t positions)
      : split(lists), count(positions), at(lists.numerator + lists.denominator) {
    refill(0);
  }

  std::span<const uint32_t> all() const { return at; }

  /// Moves the last slot that can move, and sets those behind it to the lowest positions that they may take.
  bool advance() {
    for (std::size_t slot = at.size(); slot-- > 0;) {
      if (at[slot] >= highest(slot)) continue;
      ++at[slot];
      refill(slot + 1);
      return true;
    }
    return false;
  }

 private:
  bool beginsList(std::size_t slot) const { return slot == 0 || slot == split.numerator; }

  /// The last position that leaves room for the slots behind in the same list.
  std::size_t highest(std::size_t slot) const {
    const std::size_t end = slot < split.numerator ? split.numerator : at.size();
    return count - (end - slot);
  }

  void refill(std::size_t from) {
    for (std::size_t slot = from; slot < at.size(); ++slot) at[slot] = beginsList(slot) ? 0 : at[slot - 1] + 1;
  }

  Split split;
  std::size_t count;
  std::vector<uint32_t> at;
};

}  // namespace

void walk(const Split& split, std::size_t count, FunctionRef<bool()> stopped,
          FunctionRef<void(std::span<const uint32_t>)> visit) {
  if (split.numerator > count || split.denominator > count) return;
  Positions positions(split, count);
  do {
    if (stopped()) return;
    visit(positions.all());
  } while (positions.advance());
}

}  // namespace Search
