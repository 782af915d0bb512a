// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include <charconv>

#include "complaint.h"

namespace {

/// The whole of `text` as a number of [least, most].
template <class Number>
void read(const std::string& option, const std::string& text, Number least, Number most, Number& value,
          const std::string& wanted) {
  Number got{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), got);
  if (error != std::errc() || end != text.data() + text.size() || !(got >= least && got <= most))
    throw Complaint(option + ": \"" + text + "\" is no " + wanted);
  value = got;
}

void readCount(const std::string& option, const std::string& text, int32_t least, int32_t most, int32_t& value) {
  read(option, text, least, most, value, "whole number from " + std::to_string(least) + " to " + std::to_string(most));
}

/// False for an option that is not known.
bool readOption(Options& options, const std::string& option, const std::string& text) {
  if (option == "--report" || option == "-o")
    options.report = text;
  else if (option == "--epochs")
    readCount(option, text, 1, 100000, options.epochs);
  else if (option == "--batch")
    readCount(option, text, 1, 100000, options.batch);
  else if (option == "--hidden")
    readCount(option, text, 1, 4096, options.hidden);
  else if (option == "--kernels")
    readCount(option, text, 1, 64, options.kernels);
  else if (option == "--rate")
    read(option, text, 1e-6, 1.0, options.rate, "number from 0.000001 to 1");
  else if (option == "--test") {
    double percent = 0;
    read(option, text, 5.0, 80.0, percent, "number from 5 to 80");
    options.testShare = percent / 100;
  } else if (option == "--seed")
    read(option, text, uint32_t{0}, UINT32_MAX, options.seed, "whole number from 0 to 4294967295");
  else
    return false;
  return true;
}

}  // namespace

const char* usage() {
  return "usage: orvane-network [OPTION...] FILE\n"
         "\n"
         "Learns handwritten digits by a stack of networks and writes one HTML page. FILE is a CSV file with a "
         "header:\n"
         "64 columns of the 8 by 8 pixels, whole numbers from 0 to 16, then the digit.\n"
         "\n"
         "      --epochs N      rounds through the training rows (default: 30)\n"
         "      --batch N       rows of a step (default: 32)\n"
         "      --hidden N      entries of the hidden layer (default: 48)\n"
         "      --kernels N     convolutions of 3 by 3 cells (default: 6)\n"
         "      --rate R        learning rate at the start; it falls to a twentieth (default: 0.01)\n"
         "      --test PERCENT  rows that are kept for the test (default: 20)\n"
         "      --seed N        of the split and of the first weights (default: 1)\n"
         "  -o, --report FILE   the page (default: out/network.html)\n"
         "  -h, --help          this text\n"
         "\n"
         "Ctrl-C ends the training early: the best weights so far are tested and reported.\n"
         "Exit code: 0 done, 2 input that cannot be used, 130 ended by Ctrl-C.\n";
}

Options readOptions(int argc, char** argv) {
  Options options;
  for (int k = 1; k < argc; ++k) {
    const std::string option = argv[k];
    if (option == "-h" || option == "--help") {
      options.help = true;
      return options;
    }
    if (option.size() < 2 || option[0] != '-') {
      if (!options.data.empty()) throw Complaint("more than one file: \"" + options.data + "\" and \"" + option + "\"");
      options.data = option;
      continue;
    }
    const std::string value = k + 1 < argc ? argv[k + 1] : "1";
    if (!readOption(options, option, value))
      throw Complaint("unknown option " + option + " (--help shows the options)");
    if (++k == argc) throw Complaint(option + " needs a value");
  }
  if (options.data.empty()) throw Complaint("no file given (--help shows the options)");
  return options;
}
