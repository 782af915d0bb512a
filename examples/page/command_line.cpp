// SPDX-License-Identifier: Apache-2.0
#include "command_line.h"

#include <signal.h>

#include <algorithm>
#include <charconv>

#include "complaint.h"
#include "svg_plot.h"

namespace {

template <class Number>
Number withinLimits(const std::string& option, const std::string& text, Number least, Number most, const char* what) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= least && value <= most))
    throw Complaint(option + ": \"" + text + "\" is no " + what + " from " +
                    shortNumber(static_cast<double>(least), 10) + " to " + shortNumber(static_cast<double>(most), 10));
  return value;
}

}  // namespace

std::atomic<bool> interrupted = false;

double numberOption(const std::string& option, const std::string& text, double least, double most) {
  return withinLimits(option, text, least, most, "number");
}

int64_t integerOption(const std::string& option, const std::string& text, int64_t least, int64_t most) {
  return withinLimits(option, text, least, most, "integer");
}

int runHost(const char* program, const std::function<int()>& run) {
  try {
    return run();
  } catch (const Complaint& complaint) {
    std::fprintf(stderr, "%s: %s\n", program, complaint.what());
    return kBadInput;
  }
}

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
