// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>

// Made at build time by web/bundle.mjs, in pieces that every compiler takes.

/// Style sheets of the report: the page's own and the typesetter's with its fonts inlined.
std::span<const std::string_view> reportStyles();

/// Scripts of the report: the typesetter and the page's own.
std::span<const std::string_view> reportScripts();
