// SPDX-License-Identifier: Apache-2.0
#include "stores/target_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

/// Waits until the bytes are on the disk, so that the name never stands for bytes that a power cut loses. A file system
/// that cannot tell counts as done.
bool onDisk(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool done = fsync(descriptor) == 0 || errno == EINVAL;
  close(descriptor);
  return done;
}

}  // namespace

TargetFile::TargetFile(const std::string& path) {
  std::error_code error;
  const fs::path real = fs::weakly_canonical(path, error);  // the file behind a link is replaced, not the link
  target = error ? path : real.string();
  // A device or a pipe keeps its name: it is written as it stands.
  const fs::file_type kind = fs::status(target, error).type();
  if (kind == fs::file_type::regular || kind == fs::file_type::not_found)
    beside = target + "." + std::to_string(getpid()) + ".part";
  file.open(beside.empty() ? target : beside, std::ios::binary | std::ios::trunc);
}

TargetFile::~TargetFile() {
  if (beside.empty()) return;
  file.close();
  std::error_code ignored;
  fs::remove(beside, ignored);
}

bool TargetFile::commit() {
  file.close();
  if (file.fail()) return false;
  if (beside.empty()) return true;
  if (!onDisk(beside)) return false;
  std::error_code error;
  if (const fs::file_status old = fs::status(target, error); fs::exists(old))
    fs::permissions(beside, old.permissions(), error);
  fs::rename(beside, target, error);
  if (error) return false;
  beside.clear();
  return true;
}
