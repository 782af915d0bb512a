// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

/// A file of these tests in the folder for temporary files.
inline std::string pathOf(const std::string& name) { return testing::TempDir() + "orvane_store_" + name; }

inline std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void write(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}
