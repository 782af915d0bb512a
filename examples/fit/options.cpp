// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include <orvane/pdf.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <optional>
#include <string_view>
#include <thread>

#include "complaint.h"

namespace {

constexpr int32_t kLastPlainCode = 57;

// By code. Kinds 7 and 8 of the library run alike, so the second one goes by its number only.
constexpr const char* kSolverNames[] = {"auto", "lg", "lg2", "gto", "run", "sc0", "sc1", "swo", "8", "iswo", "ins"};

std::vector<std::string> splitAtCommas(std::string_view text) {
  std::vector<std::string> parts;
  while (true) {
    const size_t comma = text.find(',');
    parts.emplace_back(text.substr(0, comma));
    if (comma == std::string_view::npos) return parts;
    text.remove_prefix(comma + 1);
  }
}

std::string lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return result;
}

int32_t integerOf(const std::string& option, std::string_view text, int32_t least, int32_t most) {
  int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < least || value > most)
    throw Complaint(option + ": \"" + std::string(text) + "\" is no integer from " + std::to_string(least) + " to " +
                    std::to_string(most));
  return value;
}

double positiveNumber(const std::string& option, std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) || value <= 0)
    throw Complaint(option + ": \"" + std::string(text) + "\" is no positive number");
  return value;
}

char delimiterOf(const std::string& text) {
  const std::string name = lower(text);
  if (name == "auto") return 0;
  if (name == "comma" || name == ",") return ',';
  if (name == "semicolon" || name == ";") return ';';
  if (name == "tab" || name == "\t" || name == "\\t") return '\t';
  throw Complaint("--delimiter: \"" + text + "\" is none of auto, comma, semicolon, tab");
}

// A mark inside numbers by its name or as it stands.
char markOf(const std::string& option, const std::string& text) {
  const std::string name = lower(text);
  if (name == "none") return 0;
  if (name == "comma") return ',';
  if (name == "point" || name == "dot") return '.';
  if (name == "space") return ' ';
  if (name == "apostrophe") return '\'';
  if (text.size() == 1 && std::string_view(",. '_").find(text[0]) != std::string_view::npos) return text[0];
  throw Complaint(option + ": \"" + text + "\" is none of point, comma, space, apostrophe, none");
}

Header headerOf(const std::string& text) {
  const std::string name = lower(text);
  if (name == "auto") return Header::automatic;
  if (name == "yes") return Header::present;
  if (name == "no") return Header::absent;
  throw Complaint("--header: \"" + text + "\" is none of auto, yes, no");
}

std::vector<uint8_t> solversOf(const std::string& text) {
  std::vector<uint8_t> codes;
  for (const std::string& part : splitAtCommas(text)) {
    const std::string name = lower(part);
    uint8_t code = 0;
    const auto known = std::find(std::begin(kSolverNames), std::end(kSolverNames), name);
    if (known != std::end(kSolverNames)) {
      code = static_cast<uint8_t>(known - std::begin(kSolverNames));
    } else {
      const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), code);
      if (error != std::errc() || end != name.data() + name.size() || code >= std::size(kSolverNames))
        throw Complaint("--solvers: unknown solver \"" + part + "\" (known are 0 to 10 and the names in --help)");
    }
    if (std::find(codes.begin(), codes.end(), code) == codes.end()) codes.push_back(code);
  }
  return codes;
}

std::vector<FunHandle> funsOf(const std::string& text, bool discrete) {
  std::vector<FunHandle> funs;
  if (lower(text) == "all" || lower(text) == "plain") {
    std::vector<int32_t> codes(static_cast<size_t>(pdf_getAllPDFFun(nullptr, 0)));
    pdf_getAllPDFFun(codes.data(), static_cast<int32_t>(codes.size()));
    if (lower(text) == "plain") std::erase_if(codes, [](int32_t code) { return code > kLastPlainCode; });
    for (const int32_t code : codes) {
      FunHandle fun(pdf_initPDFFun(code));
      if (discrete || !countsOnly(pdf_getName(fun.get()))) funs.push_back(std::move(fun));
    }
    return funs;
  }
  for (const std::string& name : splitAtCommas(text)) {
    FunHandle fun(pdf_initPDFFunByName(name.c_str()));
    if (!fun) throw Complaint("--fit: unknown distribution \"" + name + "\"");
    const auto same = [&](const FunHandle& other) {
      return std::string_view(pdf_getName(other.get())) == pdf_getName(fun.get());
    };
    if (std::none_of(funs.begin(), funs.end(), same)) funs.push_back(std::move(fun));
  }
  return funs;
}

}  // namespace

bool countsOnly(std::string_view name) { return name.ends_with("Binomial") || name.ends_with("Poisson"); }

const char* solverName(uint8_t code) { return kSolverNames[code]; }

const char* usage() {
  return "usage: orvane-fit [options] FILE\n"
         "\n"
         "Fits probability distributions to one column of a CSV file, prints them by their error and writes a report.\n"
         "\n"
         "  -c, --column NAME|N     column by its name or its number from 1 (default: 1)\n"
         "  -d, --delimiter D       auto, comma, semicolon or tab (default: auto)\n"
         "      --decimal MARK      point or comma (default: point)\n"
         "      --thousands MARK    between groups of three digits: none, comma, point, space or apostrophe (default:\n"
         "                          none)\n"
         "      --header H          auto, yes or no (default: auto, a first cell that is no number is a header)\n"
         "  -f, --fit LIST          all (342), plain (57) or names with commas between them (default: plain)\n"
         "      --no-discrete       leave Binomial, Poisson and what is made of them out of all and plain\n"
         "  -s, --solvers LIST      numbers 0 to 10 or names with commas between them: auto, lg, lg2, gto, run, sc0,\n"
         "                          sc1, swo, iswo, ins (default: run)\n"
         "  -p, --population N      candidates of a solver (default: 40)\n"
         "  -i, --iterations N      iterations of a solver (default: 150)\n"
         "      --points N              of more values, fit N evenly spaced ones of the sorted sample (default: "
         "20000)\n"
         "      --repeats N         further searches of each distribution; the report names those whose last one "
         "still\n"
         "                          found a better fit (default: 1)\n"
         "  -t, --threads N         distributions fitted at the same time (default: the number of processors)\n"
         "      --precision E       a solver ends when it improves by less than this (default: 1e-12)\n"
         "      --seconds S         ends the fit early after S seconds, as Ctrl-C does (default: no limit)\n"
         "  -b, --best N            fits that are plotted and written out, 1 to 8 (default: 5)\n"
         "  -o, --report FILE       the report (default: orvane-fit.html)\n"
         "  -h, --help              this text\n"
         "\n"
         "Ctrl-C ends the fit early: what has been fitted is printed and reported.\n"
         "Exit code: 0 done, 2 input that cannot be used, 130 ended by Ctrl-C.\n";
}

Options readOptions(int argc, char** argv) {
  Options options;
  options.threads = static_cast<int32_t>(std::clamp(std::thread::hardware_concurrency(), 1U, 256U));
  std::string fit = "plain";
  std::string solvers = "run";
  bool discrete = true;
  bool onlyOperands = false;
  for (int i = 1; i < argc; ++i) {
    std::string option = argv[i];
    if (onlyOperands || option.size() < 2 || option[0] != '-') {
      if (!options.dataPath.empty())
        throw Complaint("more than one file: \"" + options.dataPath + "\" and \"" + option + "\"");
      options.dataPath = option;
      continue;
    }
    if (option == "--") {
      onlyOperands = true;
      continue;
    }
    if (option == "-h" || option == "--help") {
      options.help = true;
      return options;
    }
    std::optional<std::string> attached;
    if (const size_t equal = option.find('='); option.starts_with("--") && equal != std::string::npos) {
      attached = option.substr(equal + 1);
      option.resize(equal);
    }
    const auto is = [&](const char* brief, const char* full) { return option == brief || option == full; };
    const auto value = [&]() -> std::string {
      if (attached) return *attached;
      if (i + 1 >= argc) throw Complaint(option + " needs a value");
      return argv[++i];
    };
    if (is("-c", "--column"))
      options.column = value();
    else if (is("-d", "--delimiter"))
      options.delimiter = delimiterOf(value());
    else if (option == "--decimal")
      options.numbers.decimal = markOf(option, value());
    else if (option == "--thousands")
      options.numbers.thousands = markOf(option, value());
    else if (option == "--header")
      options.header = headerOf(value());
    else if (is("-f", "--fit"))
      fit = value();
    else if (is("-s", "--solvers"))
      solvers = value();
    else if (is("-p", "--population"))
      options.population = integerOf(option, value(), 3, 100000);
    else if (is("-i", "--iterations"))
      options.iterations = integerOf(option, value(), 1, 100000000);
    else if (option == "--points")
      options.points = integerOf(option, value(), 100, 1000000000);
    else if (option == "--repeats")
      options.repeats = integerOf(option, value(), 0, 1000);
    else if (option == "--no-discrete")
      discrete = false;
    else if (is("-t", "--threads"))
      options.threads = integerOf(option, value(), 1, 1024);
    else if (option == "--seconds")
      options.seconds = positiveNumber(option, value());
    else if (option == "--precision")
      options.precision = positiveNumber(option, value());
    else if (is("-b", "--best"))
      options.best = integerOf(option, value(), 1, 8);
    else if (is("-o", "--report"))
      options.reportPath = value();
    else
      throw Complaint("unknown option " + option + " (--help shows the options)");
  }
  if (options.dataPath.empty()) throw Complaint("no file given (--help shows the options)");
  if (options.numbers.decimal != '.' && options.numbers.decimal != ',')
    throw Complaint("--decimal: only point and comma mark the fraction");
  if (options.numbers.decimal == options.numbers.thousands)
    throw Complaint("--decimal and --thousands name the same mark");
  if (options.reportPath.empty()) throw Complaint("--report needs a file name");
  options.funs = funsOf(fit, discrete);
  options.solvers = solversOf(solvers);
  return options;
}
