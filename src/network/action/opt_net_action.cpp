// SPDX-License-Identifier: Apache-2.0
#include "network/action/opt_net_action.h"

#include "network/action/opt_net_set.h"
#include "orvane/action.h"

namespace Action {

int32_t OptNetAction_c::check(RowSizes sizes) {
  if (optimizer == nullptr || network == nullptr || !network->usable()) return ORVANE_ACTION_NOT_TRAINABLE;
  optimizer->setNetwork(network);
  const NetWork::RowSet x(1, std::vector<double>(sizes.in)), y(1, std::vector<double>(sizes.out));
  const int32_t code = optimizer->check({&x, &y, &x, &y});
  return code == ORVANE_TRAINING_READY ? ORVANE_ACTION_OK : code;
}

void OptNetAction_c::requestStop() {
  stop.exchange(1);
  if (optimizer != nullptr) optimizer->requestStop();
}

void OptNetAction_c::clearStop() {
  stop.exchange(0);
  if (optimizer != nullptr) optimizer->clearStop();
}

bool OptNetAction_c::optimize(const NetWork::DataSets& data) {
  if (optimizer == nullptr) return false;
  if (set != nullptr) set->current = optimizer;
  optimizer->solveOn(data);
  return true;
}

void OptNetAction_c::setPreDot(uint8_t byte) {
  if (optimizer != nullptr) optimizer->noPreprocess = byte;
}

void OptNetSetAction_c::addMember(OptNetAction_c* member) {
  if (member == nullptr || member->holds(this)) return;
  members.push_back(member);
  actions.push_back(member);
}

/// As a set of actions, but the last member of a stack is fed by the others.
int32_t OptNetSetAction_c::check(RowSizes sizes) {
  if (members.empty()) return ORVANE_ACTION_EMPTY_SET;
  const bool isStack = train == modeRow(4).train && members.size() > 1;
  std::size_t joined = 0;
  for (OptNetAction_c* member : members) {
    const bool fed = isStack && member == members.back();
    if (const int32_t code = member->check({fed ? joined : sizes.in, sizes.out}); code != ORVANE_ACTION_OK) return code;
    joined += member->outputSize();
  }
  prepare();
  return ORVANE_ACTION_OK;
}

void OptNetSetAction_c::requestStop() {
  OptNetAction_c::requestStop();
  for (OptNetAction_c* member : members) member->requestStop();
}

void OptNetSetAction_c::clearStop() {
  OptNetAction_c::clearStop();
  for (OptNetAction_c* member : members) member->clearStop();
}

bool OptNetSetAction_c::optimize(const NetWork::DataSets& data) { return !members.empty() && train(*this, data); }

void OptNetSetAction_c::bindSet(OptNetSet_c* driver) {
  OptNetAction_c::bindSet(driver);
  for (OptNetAction_c* member : members) member->bindSet(driver);
}

void OptNetSetAction_c::setPreDot(uint8_t byte) {
  for (OptNetAction_c* member : members) member->setPreDot(byte);
}

}  // namespace Action
