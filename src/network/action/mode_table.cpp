// SPDX-License-Identifier: Apache-2.0
#include "network/action/mode_table.h"

#include <algorithm>

#include "frame/code_table.h"
#include "frame/numbers.h"
#include "network/action/opt_net_action.h"

namespace Action {
namespace {

using NetWork::DataSets;
using NetWork::RowSet;

void sum(NetSetAction_c& set, std::span<const double> in, std::span<double> out) {
  std::ranges::fill(out, 0.0);
  for (NetAction_c* member : set.actions) {
    const auto row = set.runMember(*member, in);
    for (std::size_t i = 0; i < std::min(out.size(), row.size()); ++i) out[i] += row[i];
  }
}

void mean(NetSetAction_c& set, std::span<const double> in, std::span<double> out) {
  sum(set, in, out);
  for (double& y : out) y /= static_cast<double>(set.actions.size());
}

void vote(NetSetAction_c& set, std::span<const double> in, std::span<double> out) {
  // KEPT: a vote on one output is 1.0 without a look at the members; expected: their vote (kept.csv: Action_vote)
  if (out.size() == 1) return std::fill(out.begin(), out.end(), 1.0);
  std::ranges::fill(out, 0.0);
  for (NetAction_c* member : set.actions) {
    const auto row = set.runMember(*member, in);
    const auto place = static_cast<std::size_t>(std::ranges::max_element(row) - row.begin());
    if (place < std::min(out.size(), row.size())) out[place] += 1.0;
  }
}

void stack(NetSetAction_c& set, std::span<const double> in, std::span<double> out) {
  const auto row = set.runMember(*set.actions.back(), set.joinedRow(in));
  std::ranges::fill(out, kNaN);
  std::copy_n(row.begin(), std::min(out.size(), row.size()), out.begin());
}

/// What an action leaves of the targets.
RowSet residuals(NetAction_c& action, const RowSet& x, RowSet y) {
  std::vector<double> row(action.outputSize());
  for (std::size_t i = 0; i < x.size(); ++i) {
    action.predict(x[i], row);
    for (std::size_t k = 0; k < std::min(row.size(), y[i].size()); ++k) y[i][k] -= row[k];
  }
  return y;
}

/// The members one after another, each on what the one before has left.
bool boost(OptNetSetAction_c& set, const DataSets& data) {
  RowSet trainY, testY;
  DataSets present = data;
  for (OptNetAction_c* member : set.members) {
    if (set.isStopped()) break;
    if (!member->optimize(present)) return false;
    if (member == set.members.back()) break;
    const bool ownTest = data.testX != data.trainX;
    trainY = residuals(*member, *data.trainX, *present.trainY);
    if (ownTest) testY = residuals(*member, *data.testX, *present.testY);
    present.trainY = &trainY;
    present.testY = ownTest ? &testY : &trainY;
  }
  return true;
}

/// Each member on the same rows; `count` of them.
bool each(OptNetSetAction_c& set, const DataSets& data, std::size_t count) {
  for (std::size_t i = 0; i < count && !set.isStopped(); ++i)
    if (!set.members[i]->optimize(data)) return false;
  return true;
}

bool eachAlone(OptNetSetAction_c& set, const DataSets& data) { return each(set, data, set.members.size()); }

RowSet joinedRows(OptNetSetAction_c& set, const RowSet& x) {
  RowSet all;
  all.reserve(x.size());
  for (const auto& row : x) {
    const auto joined = set.joinedRow(row);
    all.emplace_back(joined.begin(), joined.end());
  }
  return all;
}

/// All but the last on the rows, then the last on what they make of the rows.
bool stacked(OptNetSetAction_c& set, const DataSets& data) {
  const std::size_t last = set.members.size() - 1;
  if (last == 0) return set.members[0]->optimize(data);
  if (!each(set, data, last)) return false;
  if (set.isStopped()) return true;
  const bool ownTest = data.testX != data.trainX;
  const RowSet trainX = joinedRows(set, *data.trainX);
  const RowSet testX = ownTest ? joinedRows(set, *data.testX) : RowSet{};
  return set.members[last]->optimize({&trainX, data.trainY, ownTest ? &testX : &trainX, data.testY});
}

constexpr ModeRow kModes[] = {
    {1, sum, boost},
    {2, mean, eachAlone},
    {3, vote, eachAlone},
    {4, stack, stacked},
};

using Modes = CodeTable<kModes>;
constexpr int kTrained = 300;  // modes of sets that train are these plus the code of the row

}  // namespace

const ModeRow& modeRow(uint16_t mode) {
  const ModeRow* row = Modes::find(mode > kTrained ? mode - kTrained : mode);
  return row == nullptr ? kModes[0] : *row;
}

}  // namespace Action
