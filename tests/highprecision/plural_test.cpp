// SPDX-License-Identifier: Apache-2.0
// The complex expression machine through the exports, held against mpmath at several GMP precisions.
#include <gmp.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "highprecision/hp_host.h"
#include "orvane/complex_expression.h"
#include "support/csv.h"

namespace {

/// Sets the GMP default precision for its life, as a host may.
class Precision {
 public:
  explicit Precision(mp_bitcnt_t bits) { mpf_set_default_prec(bits); }
  ~Precision() { mpf_set_default_prec(64); }
};

class Float {
 public:
  explicit Float(const std::string& text = "0") {
    mpf_init2(value, 4000);
    EXPECT_EQ(mpf_set_str(value, text.c_str(), 10), 0) << text;
  }
  Float(const Float&) = delete;
  Float& operator=(const Float&) = delete;
  ~Float() { mpf_clear(value); }
  mpf_t value;
};

std::string textOf(const HPPlural* data) {
  std::string text(static_cast<std::size_t>(math_PluralGetStrValue(data, nullptr, 0)), '?');
  std::vector<char> buffer(text.size() + 1, '\0');
  math_PluralGetStrValue(data, buffer.data(), static_cast<int32_t>(buffer.size()));
  return std::string(buffer.data());
}

// The parts of a text form; "0" for one that is missing.
std::pair<std::string, std::string> partsOf(const std::string& text) {
  if (text.back() != 'i') return {text, "0"};
  for (const std::string sign : {" + ", " - "})
    if (const std::size_t at = text.find(sign); at != std::string::npos)
      return {text.substr(0, at), (sign == " - " ? "-" : "") + text.substr(at + 3, text.size() - at - 4)};
  return {"0", text.substr(0, text.size() - 1)};
}

// Bits that agree; 0 only agrees with 0.
double agreement(const std::string& got, const std::string& expected) {
  Float x(got), y(expected);
  if (mpf_sgn(y.value) == 0) return mpf_sgn(x.value) == 0 ? 1e9 : 0;
  mpf_sub(x.value, x.value, y.value);
  if (mpf_sgn(x.value) == 0) return 1e9;
  mpf_div(x.value, x.value, y.value);
  long exponent = 0;
  mpf_get_d_2exp(&exponent, x.value);
  return static_cast<double>(-exponent);
}

/// A command with one expression and two leaves.
struct Program {
  PluralCmd* cmd = math_PluralNewCmd();
  PluralExpress* a = math_PluralNewExpress(cmd);
  PluralExpress* b = math_PluralNewExpress(cmd);
  PluralExpress* node = math_PluralNewExpress(cmd);

  explicit Program(int code) {
    math_PluralAddExpressParam(node, a);
    math_PluralAddExpressParam(node, b);
    math_PluralSetExpressFun(node, static_cast<uint8_t>(code));
    math_PluralAddSortExpress(cmd, node);
  }
  ~Program() { math_PluralFreeCmd(cmd); }

  // The text of the result, "none" for an undefined one.
  std::string run() {
    HPPlural* data = math_PluralRun(cmd, false);
    if (data == nullptr) return "none";
    const std::string text = textOf(data);
    EXPECT_TRUE(math_PluralFreeData(data));
    return text;
  }
  std::string run(const char* re, const char* im, const char* re2 = "0", const char* im2 = "0") {
    math_PluralSetExpressValue(a, re, im);
    math_PluralSetExpressValue(b, re2, im2);
    return run();
  }
};

/// The codes of all functions: those of the table, each with its number of rows.
std::map<int, int> codes() {
  std::map<int, int> counts;
  for (const Cells& row : rowsOf("plural")) ++counts[std::stoi(row[0])];
  return counts;
}

}  // namespace

TEST(Plural, FunctionsHaveThePrecisionInForce) {
  for (const mp_bitcnt_t bits : {64, 192, 512}) {
    const Precision precision(bits);
    for (const auto& row : rowsOf("plural")) {
      Program program(std::stoi(row[0]));
      const std::string text = program.run(row[1].c_str(), row[2].c_str(), row[3].c_str(), row[4].c_str());
      const std::string name = row[0] + " of " + row[1] + "," + row[2] + " and " + row[3] + "," + row[4];
      if (row[5] == "none" || text == "none") {
        EXPECT_EQ(text, row[5]) << name;
        continue;
      }
      const auto [re, im] = partsOf(text);
      EXPECT_GE(agreement(re, row[5]), static_cast<double>(bits)) << name << " gives " << re << ", not " << row[5];
      EXPECT_GE(agreement(im, row[6]), static_cast<double>(bits)) << name << " gives " << im << ", not " << row[6];
    }
  }
  EXPECT_EQ(codes().size(), 20u);
  for (const auto& [code, count] : codes()) EXPECT_GE(count, 20) << code;
}

TEST(Plural, TextForms) {
  Program sum(0);
  EXPECT_EQ(sum.run("1.25", "0", "0.25", "0"), "1.5e+00");
  EXPECT_EQ(sum.run("-1.25", "2", "1.25", "0.5"), "2.5e+00i");
  EXPECT_EQ(sum.run("-1.25", "2", "1.25", "-1048578"), "-1.048576e+06i");
  EXPECT_EQ(sum.run("1", "2", "0", "0.5"), "1e+00 + 2.5e+00i");
  EXPECT_EQ(sum.run("-3e3", "2", "0", "-2.00390625"), "-3e+03 - 3.90625e-03i");
  EXPECT_EQ(sum.run("1", "-2", "-1", "2"), "0");

  // The room that each form needs, and what it leaves alone.
  const auto written = [](const char* re, const char* im, int32_t size) {
    HPPlural* data = math_PluralAddData(re, im);
    std::string buffer(40, '#');
    math_PluralGetStrValue(data, buffer.data(), size);
    EXPECT_TRUE(math_PluralFreeData(data));
    return buffer.substr(0, buffer.find_last_not_of('#') + 1);
  };
  EXPECT_EQ(written("0", "0", 0), "");
  EXPECT_EQ(written("0", "0", 1), "0");
  EXPECT_EQ(written("1.5", "0", 7), "");
  EXPECT_EQ(written("1.5", "0", 8), "1.5e+00");
  EXPECT_EQ(written("0", "1.5", 8), "");
  EXPECT_EQ(written("0", "1.5", 9), "1.5e+00i");
  EXPECT_EQ(written("2", "-1", 14), "");
  EXPECT_EQ(written("2", "-1", 15), std::string("2e+00 - 1e+00i\0", 15));
  EXPECT_EQ(written("2", "-1", -1), "");
  EXPECT_EQ(written("2", "-1", INT32_MIN), "");
  EXPECT_EQ(math_PluralGetStrValue(nullptr, nullptr, 100), 0);

  // A text of thousands of digits is whole.
  const Precision precision(20000);
  const std::string root = Program(147).run("2", "0");
  EXPECT_GT(root.size(), 6000u);
  EXPECT_EQ(root.substr(0, 18), "1.4142135623730950");
}

TEST(Plural, ProgramsRunInTheHostsOrder) {
  // z -> z^2 + c, from a value that changes between runs.
  PluralCmd* cmd = math_PluralNewCmd();
  PluralExpress *z = math_PluralNewExpress(cmd), *c = math_PluralNewExpress(cmd), *square = math_PluralNewExpress(cmd),
                *next = math_PluralNewExpress(cmd);
  math_PluralSetExpressFun(square, 2);
  math_PluralAddExpressParam(square, z);
  math_PluralAddExpressParam(square, z);
  math_PluralSetExpressFun(next, 0);
  math_PluralAddExpressParam(next, square);
  math_PluralAddExpressParam(next, c);
  math_PluralAddSortExpress(cmd, square);
  math_PluralAddSortExpress(cmd, next);
  math_PluralSetExpressValue(z, "1", "1");
  math_PluralSetExpressValue(c, "0.5", "0");
  HPPlural* first = math_PluralRun(cmd, false);
  math_PluralSetExpressValue2(z, first);
  HPPlural* second = math_PluralRun(cmd, false);
  EXPECT_NE(first, second);
  EXPECT_EQ(textOf(first), "5e-01 + 2e+00i");       // (1+i)^2 + 1/2
  EXPECT_EQ(textOf(second), "-3.25e+00 + 2e+00i");  // (1/2+2i)^2 + 1/2

  // A shared value outlives its handle, an unknown handle clears it, an unknown code changes nothing.
  EXPECT_TRUE(math_PluralFreeData(first));
  EXPECT_FALSE(math_PluralFreeData(first));
  math_PluralSetExpressFun(next, 7);
  HPPlural* again = math_PluralRun(cmd, false);
  EXPECT_EQ(textOf(again), textOf(second));
  math_PluralSetExpressValue2(z, nullptr);
  EXPECT_EQ(math_PluralRun(cmd, true), nullptr);
  EXPECT_FALSE(math_PluralFreeCmd(cmd));
  EXPECT_EQ(textOf(again), "-3.25e+00 + 2e+00i");
  math_PluralFreeData(second);
  math_PluralFreeData(again);

  // In the wrong order a node reads the old value of its parameter.
  Program late(0);
  PluralExpress* twice = math_PluralNewExpress(late.cmd);
  math_PluralSetExpressFun(twice, 0);
  math_PluralAddExpressParam(twice, late.a);
  math_PluralAddExpressParam(twice, late.a);
  math_PluralAddExpressParam(late.node, twice);
  math_PluralAddSortExpress(late.cmd, twice);
  EXPECT_EQ(late.run("1", "0", "2", "0"), "2e+00");
}

TEST(Plural, WhatIsMissing) {
  PluralCmd* cmd = math_PluralNewCmd();
  EXPECT_EQ(math_PluralRun(cmd, false), nullptr) << "nothing to evaluate";
  PluralExpress* bare = math_PluralNewExpress(cmd);
  math_PluralAddSortExpress(cmd, bare);
  EXPECT_THROW(math_PluralRun(cmd, true), std::bad_function_call);
  EXPECT_TRUE(math_PluralFreeCmd(cmd));
  EXPECT_FALSE(math_PluralFreeCmd(cmd));
  EXPECT_EQ(math_PluralRun(cmd, true), nullptr);
  EXPECT_EQ(math_PluralNewExpress(cmd), nullptr);
  math_PluralAddSortExpress(nullptr, nullptr);
  math_PluralAddExpressParam(nullptr, nullptr);
  math_PluralSetExpressFun(nullptr, 0);
  math_PluralSetExpressValue(nullptr, "1", "1");
  math_PluralSetExpressValue2(nullptr, nullptr);

  for (const auto& [code, count] : codes()) {
    cmd = math_PluralNewCmd();
    PluralExpress* node = math_PluralNewExpress(cmd);
    math_PluralSetExpressFun(node, static_cast<uint8_t>(code));
    math_PluralAddSortExpress(cmd, node);
    EXPECT_EQ(math_PluralRun(cmd, false), nullptr) << code;
    math_PluralAddExpressParam(node, nullptr);
    math_PluralAddExpressParam(node, node);
    EXPECT_EQ(math_PluralRun(cmd, true), nullptr) << code;
  }
}

TEST(Plural, HostileTexts) {
  const auto read = [](const char* text) {
    HPPlural* data = math_PluralAddData(text, "0");
    const std::string result = textOf(data);
    math_PluralFreeData(data);
    return result;
  };
  for (const char* text :
       {"", "-", ".", "e5", "1e", "1e+", "0x10", "inf", "nan", "--1", "1..2", "1e9999999999999999", "%n%s",
        "1e-99999999999999999999999", "1@99999999999999999999", "1E-9223372036854775808", "\xff\xfe"})
    EXPECT_EQ(read(text), "0") << text;
  EXPECT_EQ(read(nullptr), "0");
  EXPECT_EQ(read("1e1000000000000000"), "1e+1000000000000000");
  EXPECT_EQ(read(" -1.5e-3"), "-1.5e-03");
  EXPECT_EQ(read(("1" + std::string(100000, '0')).c_str()), "1e+100000");
  EXPECT_EQ(read(("0." + std::string(100000, '0') + "1").c_str()), "1e-100001");
  Program sum(0);
  EXPECT_EQ(sum.run("1", "1"), "1e+00 + 1e+00i");
  EXPECT_EQ(sum.run("x", "2"), "1e+00 + 2e+00i") << "a text that is no number leaves its part";
}

// Random programs over all codes, fed with their own results: sizes grow and fall without bounds, poles are met. Each
// result must be undefined or print as a number.
TEST(Plural, RandomProgramsEndInNumbers) {
  uint64_t state = 99;
  const auto below = [&state](uint64_t n) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return (state >> 33) % n;
  };
  const char* texts[] = {
      "0", "1", "-1", "2", "0.5", "-1e-30", "1e30", "3.14159265358979", "1e1000000", "-1e-999999999999999", "7"};
  std::vector<uint8_t> kinds;
  for (const auto& [code, count] : codes()) kinds.push_back(static_cast<uint8_t>(code));
  int defined = 0;
  for (int round = 0; round < 150; ++round) {
    PluralCmd* cmd = math_PluralNewCmd();
    std::vector<PluralExpress*> nodes;
    for (int i = 0; i < 4; ++i) {
      nodes.push_back(math_PluralNewExpress(cmd));
      math_PluralSetExpressValue(nodes.back(), texts[below(11)], texts[below(3) == 0 ? below(11) : 0]);
    }
    for (int i = 0; i < 12; ++i) {
      PluralExpress* node = math_PluralNewExpress(cmd);
      math_PluralSetExpressFun(node, kinds[below(3) == 0 ? below(5) : below(kinds.size())]);
      math_PluralAddExpressParam(node, nodes[below(nodes.size())]);
      math_PluralAddExpressParam(node, nodes[below(nodes.size())]);
      math_PluralAddSortExpress(cmd, node);
      nodes.push_back(node);
      HPPlural* data = math_PluralRun(cmd, false);
      if (data == nullptr) continue;
      ++defined;
      const auto [re, im] = partsOf(textOf(data));
      if (re.find("e+1000") == std::string::npos && re.find("e-999") == std::string::npos) Float x(re), y(im);
      math_PluralFreeData(data);
    }
    math_PluralFreeCmd(cmd);
  }
  EXPECT_GT(defined, 500);
}
