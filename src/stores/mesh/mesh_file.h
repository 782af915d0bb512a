// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "stores/mesh/mesh2d.h"

/// The text files of a mesh: a line a node (id, x, y) or an element (id, node ids), fields between commas.
namespace Simulation {

/// Adds the nodes of up to `count` lines behind `skipLines`. A line of fewer than three fields is passed over; an id
/// that the mesh has fails.
bool loadNodes(Mesh2D& mesh, const std::string& path, int32_t skipLines, int32_t count);

/// Adds elements in the same way. A line of fewer than nodesPerElement + 1 fields fails, as does an id that is there.
bool loadElements(Mesh2D& mesh, const std::string& path, int32_t skipLines, int32_t count, int32_t nodesPerElement);

/// Writes beside the target and renames; false when there is nothing to write or it cannot be written.
bool saveNodes(const Mesh2D& mesh, const std::string& path);
bool saveElements(const Mesh2D& mesh, const std::string& path);

}  // namespace Simulation
