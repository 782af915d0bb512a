// SPDX-License-Identifier: Apache-2.0
#include "network/layers/kind_table.h"

#include "frame/code_table.h"

namespace NetWork {

const LayerKind* findKind(int32_t code) {
  static const JoinedCodeTable<LayerKind> kTable{elementKinds(), withVarKinds(), pairKinds(),   vectorKinds(),
                                                 productKinds(), moveKinds(),    windowKinds(), geometryKinds()};
  return kTable.find(code);
}

}  // namespace NetWork
