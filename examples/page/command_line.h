// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <span>
#include <string>
#include <utility>

/// Exit codes of the hosts.
inline constexpr int kBadInput = 2;
inline constexpr int kInterrupted = 130;  // 128 + SIGINT, as shells tell it

/// The exit code of `run`; a Complaint goes to standard error, as one line after the program's name.
int runHost(const char* program, const std::function<int()>& run);

/// A host's main: `read()` gives the options, of which `help` asks for the usage; else `run(options)` gives the exit
/// code.
template <class Read, class Run>
int runHost(const char* program, const std::string& usage, Read read, Run run) {
  return runHost(program, [&] {
    auto options = read();
    if (!options.help) return run(std::move(options));
    std::fputs(usage.c_str(), stdout);
    return 0;
  });
}

/// Hands out each option with its value, and puts what is no option into `file`, once. False when help is asked for;
/// throws Complaint for an option that `names` does not hold, one without a value, and a second file.
bool readCommandLine(int argc, char** argv, std::span<const char* const> names, std::string& file,
                     const std::function<void(const std::string& option, const std::string& value)>& take);

/// The whole of an option's value as a number or an integer of [least, most]; else throws Complaint.
double numberOption(const std::string& option, const std::string& text, double least, double most);
int64_t integerOption(const std::string& option, const std::string& text, int64_t least, int64_t most);

/// Whether Ctrl-C or a request to end has come since catchInterrupt.
extern std::atomic<bool> interrupted;

/// Ctrl-C asks for an early end; a second one ends the program at once.
void catchInterrupt();
