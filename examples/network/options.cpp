// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "command_line.h"
#include "complaint.h"

namespace {

void set(Options& options, const std::string& option, const std::string& value) {
  const auto count = [&](int64_t most) { return static_cast<int32_t>(integerOption(option, value, 1, most)); };
  if (option == "--report" || option == "-o") options.report = value;
  if (option == "--epochs") options.epochs = count(100000);
  if (option == "--batch") options.batch = count(100000);
  if (option == "--hidden") options.hidden = count(4096);
  if (option == "--kernels") options.kernels = count(64);
  if (option == "--rate") options.rate = numberOption(option, value, 1e-6, 1);
  if (option == "--test") options.testShare = numberOption(option, value, 5, 80) / 100;
  if (option == "--seed") options.seed = static_cast<uint32_t>(integerOption(option, value, 0, UINT32_MAX));
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
  static constexpr const char* kNames[] = {"--report",  "-o",     "--epochs", "--batch", "--hidden",
                                           "--kernels", "--rate", "--test",   "--seed"};
  Options options;
  options.help = !readCommandLine(argc, argv, kNames, options.data,
                                  [&options](const auto& option, const auto& value) { set(options, option, value); });
  if (!options.help && options.data.empty()) throw Complaint("no file given (--help shows the options)");
  return options;
}
