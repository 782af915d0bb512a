// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>

// Made at build time by web/bundle.mjs, in pieces that every compiler takes.

/// Style sheets of a page: its own and the typesetter's with its fonts inlined.
std::span<const std::string_view> pageStyles();

/// Scripts of a page: the typesetter and its own.
std::span<const std::string_view> pageScripts();
