// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cctype>
#include <cstdlib>
#include <map>
#include <stdexcept>

#include "support/functions.h"
#include "sym/formula.h"

namespace host {

/// Reads a plain text back into an expression, by calls:
/// sum = ["-"] product {["+"|"-"] product}; product = power {("*"|"/") power}; power = atom ["^" atom].
/// No sign between two terms is a plus: before one with "-" second it is left out (Add_secondMinus).
class TextReader {
 public:
  explicit TextReader(const std::string& text) : at(text.c_str()) {}

  Formula whole() {
    const Formula f = sum();
    if (*at != '\0') throw std::runtime_error(std::string("not read: ") + at);
    return f;
  }

 private:
  bool take(char c) { return *at == c && ++at != nullptr; }
  void demand(char c) {
    if (!take(c)) throw std::runtime_error(std::string(1, c) + " missing before " + at);
  }

  Formula sum() {
    Formula value = take('-') ? num(-1) * product() : product();
    while (*at == '+' || *at == '-' || *at == '(') {
      const bool minus = take('-');
      take('+');
      value = minus ? value - product() : value + product();
    }
    return value;
  }

  Formula product() {
    Formula value = power();
    while (*at == '*' || *at == '/') {
      const bool times = *at++ == '*';
      value = times ? value * power() : value / power();
    }
    return value;
  }

  Formula power() {
    const Formula base = atom();
    return take('^') ? base ^ atom() : base;
  }

  Formula atom() {
    if (take('(')) {
      const Formula value = sum();
      demand(')');
      return value;
    }
    if (std::isdigit(static_cast<unsigned char>(*at))) {
      char* end = nullptr;
      const double value = std::strtod(at, &end);
      at = end;
      return value;
    }
    std::string word;
    while (std::isalnum(static_cast<unsigned char>(*at))) word += *at++;
    if (word.empty()) throw std::runtime_error(std::string("no atom: ") + at);
    const int code = codeOf(word);
    if (code == functions::kNone) return word.c_str();
    demand('(');
    std::vector<Formula> args{sum()};
    while (take(',')) args.push_back(sum());
    demand(')');
    return call(static_cast<uint8_t>(code), args);
  }

  static int codeOf(const std::string& word) {
    for (const functions::Function& f : functions::all())
      if (f.text.starts_with(word + "(")) return f.kindCode;
    return functions::kNone;  // a variable
  }

  const char* at;
};

}  // namespace host
