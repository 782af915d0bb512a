// SPDX-License-Identifier: Apache-2.0
#include "network/action/action_table.h"

#include "frame/code_table.h"

namespace Action {
namespace {

struct ActionRow {
  int32_t code;
  std::unique_ptr<BaseData> (*make)(uint16_t mode);
};

template <class T>
std::unique_ptr<BaseData> make([[maybe_unused]] uint16_t mode) {
  if constexpr (std::is_constructible_v<T, uint16_t>)
    return std::make_unique<T>(mode);
  else
    return std::make_unique<T>();
}

constexpr ActionRow kActions[] = {
    {0, make<NetAction_c>},         {1, make<NetSetAction_c>},      {2, make<NetSetAction_c>},
    {3, make<NetSetAction_c>},      {4, make<NetSetAction_c>},      {300, make<OptNetAction_c>},
    {301, make<OptNetSetAction_c>}, {302, make<OptNetSetAction_c>}, {303, make<OptNetSetAction_c>},
    {304, make<OptNetSetAction_c>}, {600, make<OptNetSet_c>},
};

using Actions = CodeTable<kActions>;

}  // namespace

std::unique_ptr<BaseData> makeAction(int32_t code) {
  const ActionRow* row = Actions::find(code);
  return row == nullptr ? nullptr : row->make(static_cast<uint16_t>(code));
}

}  // namespace Action
