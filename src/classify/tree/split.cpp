// SPDX-License-Identifier: Apache-2.0
#include "classify/tree/split.h"

#include <array>
#include <cmath>

#include "classify/tree/impurity.h"

namespace NetWork {
namespace {

/// Keeps the best of the candidates that it is offered.
template <class Score>
class Best {
 public:
  Best(const Samples& samples, const Score& rule) : samples(samples), rule(rule) {}

  void offer(Split candidate, const typename Score::Side& left) {
    candidate.score = rule.score(left);
    if constexpr (!Score::kExact) {
      if (best && candidate.score > best->score + rule.slack()) return;
      candidate.score = rule.exactScore([&](uint32_t sample) { return candidate.goesLeft(samples, sample); });
    }
    if (std::isnan(candidate.score) || (best && !(candidate.score < best->score))) return;
    best = candidate;
  }

  std::optional<Split> best;

 private:
  const Samples& samples;
  const Score& rule;
};

// One pass gathers the side of each value; the test "equal" sends that side right and all others left.
template <class Score>
void offerClasses(const SplitSearch& search, const Score& rule, Best<Score>& best) {
  if (search.classFeatures == nullptr) return;
  for (std::size_t place = 0; place < search.classFeatures->size(); ++place) {
    const ClassFeature& feature = (*search.classFeatures)[place];
    const std::vector<uint8_t>& column = search.samples.classes[static_cast<std::size_t>(feature.index)];
    std::array<typename Score::Side, 256> equal{};
    for (const uint32_t sample : search.members) rule.add(equal[column[sample]], sample);
    const std::size_t tried = feature.values.size() == 2 ? 1 : feature.values.size();
    for (std::size_t v = 0; v < tried; ++v)
      best.offer({.kind = SplitKind::byClass, .place = place, .index = feature.index, .classValue = feature.values[v]},
                 equal[feature.values[v]]);  // a score does not tell its sides apart
  }
}

template <class Score>
void offerReals(const SplitSearch& search, const Score& rule, Best<Score>& best) {
  if (search.realFeatures == nullptr) return;
  for (std::size_t place = 0; place < search.realFeatures->size(); ++place) {
    const int32_t index = (*search.realFeatures)[place];
    const auto feature = static_cast<std::size_t>(index);
    const std::vector<double>& column = search.samples.reals[feature];
    const auto order = std::span(search.ascending[feature]).subspan(search.begin, search.members.size());
    typename Score::Side left;
    std::size_t taken = 0;  // samples in `left`
    for (std::size_t i = 0, j = 1; j < order.size(); ++j) {
      const double low = column[order[i]], high = column[order[j]];
      if (std::isnan(high)) break;
      if (low + search.minValueGap > high) continue;
      const double threshold = (low + high) * 0.5;
      for (; taken < order.size() && column[order[taken]] < threshold; ++taken) rule.add(left, order[taken]);
      best.offer({.kind = SplitKind::byReal, .place = place, .index = index, .threshold = threshold}, left);
      i = j;
    }
  }
}

template <class Score>
std::optional<Split> bestBy(const SplitSearch& search) {
  const Score rule(search.samples, search.members);
  Best<Score> best(search.samples, rule);
  offerClasses(search, rule, best);
  offerReals(search, rule, best);
  return best.best;
}

}  // namespace

std::optional<Split> bestSplit(const SplitSearch& search, bool isClass) {
  return isClass ? bestBy<GiniScore>(search) : bestBy<DeviationScore>(search);
}

}  // namespace NetWork
