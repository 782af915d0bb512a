// SPDX-License-Identifier: Apache-2.0
#include "command_line.h"

#include <signal.h>

#include <algorithm>

#include "complaint.h"

std::atomic<bool> interrupted = false;

void catchInterrupt() {
  struct sigaction action {};
  action.sa_handler = [](int) { interrupted = true; };
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

bool readCommandLine(int argc, char** argv, std::span<const char* const> names, std::string& file,
                     const std::function<void(const std::string&, const std::string&)>& take) {
  for (int k = 1; k < argc; ++k) {
    const std::string option = argv[k];
    if (option == "-h" || option == "--help") return false;
    if (option.empty() || option[0] != '-') {
      if (!file.empty()) throw Complaint("more than one file given");
      file = option;
      continue;
    }
    if (std::find(names.begin(), names.end(), option) == names.end()) throw Complaint("unknown option " + option);
    if (++k == argc) throw Complaint(option + " needs a value");
    take(option, argv[k]);
  }
  return true;
}
