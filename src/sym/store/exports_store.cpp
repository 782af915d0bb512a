// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/data_stream.h"
#include "orvane/sym_store.h"
#include "sym/store/store_block.h"

using Sym::SymManger;

uint32_t sym_write(void) {
  Sym::writeStore(SymManger::instance());
  return static_cast<uint32_t>(SymManger::instance().stream->bytes.size());
}

void sym_getDataStr(uint8_t* out) {
  if (const auto& stream = SymManger::instance().stream) std::copy(stream->bytes.begin(), stream->bytes.end(), out);
}

void sym_read(const uint8_t* bytes, uint32_t length) {
  Sym::readStore(SymManger::instance(), {bytes, bytes ? length : 0});
}
