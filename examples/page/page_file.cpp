// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "complaint.h"
#include "page.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void complain(const std::string& path, int error) {
  throw Complaint(path + ": the report cannot be written: " + std::strerror(error));
}

/// A file beside the page that is gone again unless it is kept.
class Draft {
 public:
  explicit Draft(const std::string& report) : report(report) {
    // Through a symbolic link the file behind it is replaced, not the link.
    std::error_code error;
    target = fs::is_symlink(report, error) ? fs::weakly_canonical(report, error) : fs::path(report);
    draft = target;
    draft += ".part" + std::to_string(getpid());
    file.open(draft, std::ios::binary | std::ios::trunc);
    if (!file) complain(report, errno);
  }
  ~Draft() {
    file.close();
    std::error_code error;
    fs::remove(draft, error);
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  void keep(const std::string& text) {
    file << text;
    file.close();
    if (!file) complain(report, errno);
    std::error_code error;
    fs::rename(draft, target, error);
    if (error) complain(report, error.value());
  }

 private:
  std::string report;
  fs::path target, draft;
  std::ofstream file;
};

}  // namespace

void checkPagePath(const std::string& path, const std::string& dataPath) {
  std::error_code error;
  if (fs::is_directory(path, error)) complain(path, EISDIR);
  if (fs::exists(path, error) && !fs::is_regular_file(path, error))
    throw Complaint(path + ": the report cannot be written: not a plain file");
  if (!dataPath.empty() && fs::equivalent(path, dataPath, error))
    throw Complaint(path + ": the report would replace the data");
  if (fs::exists(path, error) && access(path.c_str(), W_OK) != 0) complain(path, errno);
  const Draft probe(path);
}

void writePage(const std::string& path, const std::string& text) { Draft(path).keep(text); }
