// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/data_stream.h"
#include "frame/text.h"
#include "orvane/sym_store.h"
#include "sym/handles.h"
#include "sym/store/store_block.h"

using Sym::SymManger;

void sym_setSymValue(const char* name, double value) {
  const auto& symbols = SymManger::instance().symbols;
  if (const auto entry = symbols.find(name); entry != symbols.end()) entry->second->value = value;
}

double sym_getBaseSymValue(const BaseSym* variable) { return native(variable).value; }

int32_t sym_getBaseSymName(const BaseSym* variable, char* out, int32_t capacity) {
  return handOut(native(variable).name, out, capacity);
}

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
