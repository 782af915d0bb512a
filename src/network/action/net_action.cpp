// SPDX-License-Identifier: Apache-2.0
#include "network/action/net_action.h"

#include <algorithm>

#include "frame/numbers.h"
#include "network/action/mode_table.h"
#include "orvane/action.h"

namespace Action {

int32_t NetAction_c::check(RowSizes) {
  if (network == nullptr) return ORVANE_ACTION_NO_NETWORK;
  return network->usable() ? ORVANE_ACTION_OK : ORVANE_ACTION_NETWORK_NOT_READY;
}

void NetAction_c::predict(std::span<const double> in, std::span<double> out) {
  const bool fits = in.size() == inputSize() && out.size() == outputSize();
  if (network == nullptr || !fits || !network->predict(in.data(), out.data())) std::ranges::fill(out, kNaN);
}

std::size_t NetAction_c::inputSize() const { return network == nullptr ? 0 : network->inputSize(); }

std::size_t NetAction_c::outputSize() const { return network == nullptr ? 0 : network->outputSize(); }

NetSetAction_c::NetSetAction_c(uint16_t code) : NetAction_c(code), combine(modeRow(code).combine) { typeCode = 3; }

void NetSetAction_c::add(NetAction_c* action) {
  if (action != nullptr && !action->holds(this)) actions.push_back(action);
}

void NetSetAction_c::prepare() {
  std::size_t longest = 0, sum = 0;
  for (const NetAction_c* action : actions) {
    longest = std::max(longest, action->outputSize());
    sum += action->outputSize();
  }
  row.reserve(longest);
  joined.reserve(sum);
}

// A set that is not trained: each member fits rows of its own, the last one of a stack those of the others.
int32_t NetSetAction_c::check(RowSizes) {
  if (actions.empty()) return ORVANE_ACTION_EMPTY_SET;
  for (NetAction_c* action : actions)
    if (const int32_t code = action->check(action->sizes()); code != ORVANE_ACTION_OK) return code;
  prepare();
  return ORVANE_ACTION_OK;
}

void NetSetAction_c::predict(std::span<const double> in, std::span<double> out) {
  if (actions.empty()) return std::fill(out.begin(), out.end(), kNaN);
  if (actions.size() == 1) return actions[0]->predict(in, out);
  combine(*this, in, out);
}

std::size_t NetSetAction_c::inputSize() const { return actions.empty() ? 0 : actions[0]->inputSize(); }

std::size_t NetSetAction_c::outputSize() const { return actions.empty() ? 0 : actions[0]->outputSize(); }

bool NetSetAction_c::holds(const NetAction_c* other) const {
  return other == this || std::ranges::any_of(actions, [other](const NetAction_c* a) { return a->holds(other); });
}

std::span<const double> NetSetAction_c::runMember(NetAction_c& member, std::span<const double> in) {
  row.resize(member.outputSize());
  member.predict(in, row);
  return row;
}

std::span<const double> NetSetAction_c::joinedRow(std::span<const double> in) {
  joined.clear();
  for (auto member = actions.begin(); member + 1 < actions.end(); ++member) {
    const auto values = runMember(**member, in);
    joined.insert(joined.end(), values.begin(), values.end());
  }
  return joined;
}

}  // namespace Action
