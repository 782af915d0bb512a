// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "sym/store/store.h"

namespace Sym {

/// Builds the block of the whole store in a new current stream. Temporary nodes and the variables that nothing uses any
/// more are gone afterwards, and every variable and matrix has a fresh id.
void writeStore(SymManger& store);

/// Adds what the block holds to the store, in a new current stream. A short or damaged block adds nothing.
void readStore(SymManger& store, std::span<const uint8_t> block);

}  // namespace Sym
