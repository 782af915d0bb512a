// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/decision_tree.h>

#include <string>

#include "samples.h"

/// A tree of the samples, drawn: the test of each node, and in each leaf its answer and how many samples reach it.
/// Class `k` is the one that the tree knows from the others.
std::string treeDiagram(const CartTree* tree, const Samples& samples, std::size_t k);
