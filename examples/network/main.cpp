// SPDX-License-Identifier: Apache-2.0
// A host of the library: learns handwritten digits by a stack of networks and writes a page about it.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "command_line.h"
#include "complaint.h"
#include "digits.h"
#include "options.h"
#include "page.h"
#include "report.h"
#include "runs.h"

namespace {

/// A terminal sees the progress; a file or a pipe is spared the control characters.
void drawProgress(const Progress& progress) {
  static const bool terminal = isatty(STDERR_FILENO) != 0;
  static int calls = 0;
  if (!terminal || calls++ % 40 != 0) return;
  constexpr int kCells = 30;
  std::string bar(static_cast<size_t>(progress.epoch / progress.epochs * kCells), '#');
  bar.resize(kCells, '.');
  std::fprintf(stderr, "\r[%s] %-11s epoch %3.0f of %.0f, best %5.1f %%\x1b[K", bar.c_str(), progress.name.c_str(),
               progress.epoch, progress.epochs, 100 * progress.best);
  std::fflush(stderr);
}

/// The networks alone and the stack on the test rows, and what the best of them thinks of each.
void test(Results& results, const Stack& stack) {
  double most = -1;
  std::vector<double> outputs;
  const size_t count = results.training.size();
  for (size_t i = 0; i < std::max<size_t>(count, 1); ++i) {
    // The last network alone takes the outputs of the others: the stack does it.
    NetAction* action = i + 1 == stack.models.size() ? stack.all.get() : stack.each[i].get();
    const double chosenBy = rateOf(outputsOf(action, results.parts.choose), results.parts.choose);
    const std::vector<double> answers = outputsOf(action, results.parts.test);
    results.tested.push_back({stack.models[i].name, rateOf(answers, results.parts.test)});
    if (chosenBy < most || (chosenBy == most && i + 1 < count)) continue;
    most = chosenBy;
    results.chosen = i;
    outputs = answers;
  }
  const Model shares = shareModel();
  results.shares.resize(outputs.size());
  for (size_t i = 0; i < outputs.size(); i += kClasses) api_RunWork(shares.net.get(), &outputs[i], &results.shares[i]);
}

int learn(const Options& options) {
  const Digits all = readDigits(options.data);
  checkPagePath(options.report, options.data);
  Results results;
  results.rows = static_cast<size_t>(all.count());
  results.parts = split(all, options.testShare, options.seed);
  std::printf("pictures    %d to learn, %d to choose, %d to test\n", results.parts.train.count(),
              results.parts.choose.count(), results.parts.test.count());
  std::fflush(stdout);

  catchInterrupt();
  const Watcher watcher{drawProgress, [] { return interrupted != 0; }};
  std::mt19937 rng(options.seed);
  Stack stack(options, rng);
  results.training = stack.train(results.parts, options, watcher);
  if (!interrupted) results.steppers = compareSteppers(results.parts, options, watcher);
  results.stopped = interrupted != 0;
  if (isatty(STDERR_FILENO) != 0) std::fprintf(stderr, "\r\x1b[K");
  test(results, stack);

  for (const Tested& tested : results.tested)
    std::printf("%-11s %.1f %% of the test\n", tested.name.c_str(), 100 * tested.rate);
  for (const Curve& curve : results.steppers)
    std::printf("  %-9s %.1f %% of the choice\n", curve.name.c_str(), 100 * curve.best);
  writePage(options.report, reportPage(results, stack.models, options));
  std::fprintf(stderr, "Report: %s\n", options.report.c_str());
  return results.stopped ? kInterrupted : 0;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-network", usage(), [=] { return readOptions(argc, argv); }, learn);
}
