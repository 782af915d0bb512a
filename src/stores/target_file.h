// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <string>

/// A file that is written beside its target and takes the target's name only when it is whole: a full disk, a
/// crash or a power cut never leaves half a file under the name.
class TargetFile {
 public:
  explicit TargetFile(const std::string& path);
  ~TargetFile();  ///< removes what was not committed
  TargetFile(const TargetFile&) = delete;
  TargetFile& operator=(const TargetFile&) = delete;

  std::ostream& stream() { return file; }
  bool commit();  ///< false when something could not be written; the target is then as it was

 private:
  std::string target, beside;  // beside is empty where the target itself is written
  std::ofstream file;
};
