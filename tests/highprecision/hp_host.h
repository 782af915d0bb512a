// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/frame.h"
#include "orvane/highprecision.h"
#include "support/csv.h"

/// A number as the host sees it: flags, exponent and limbs, the least significant first.
struct Limbs {
  bool infinite = false;
  bool negative = false;
  int64_t exponent = 0;
  std::vector<int64_t> limbs;
  bool operator==(const Limbs&) const = default;
};

/// `-1.5000000@-1`: limbs, the most significant first, and the exponent of the lowest; `0` and `inf`.
inline std::ostream& operator<<(std::ostream& out, const Limbs& x) {
  if (x.negative) out << '-';
  if (x.infinite) return out << "inf";
  if (x.limbs.empty()) return out << '0';
  for (auto i = x.limbs.rbegin(); i != x.limbs.rend(); ++i) out << (i == x.limbs.rbegin() ? "" : ".") << *i;
  return out << '@' << x.exponent;
}

inline Limbs limbsOf(std::string text) {
  Limbs x;
  if (text == "0") return x;
  x.negative = text[0] == '-';
  if (x.negative) text.erase(0, 1);
  x.infinite = text == "inf";
  if (x.infinite) return x;
  const std::size_t at = text.find('@');
  x.exponent = std::stoll(text.substr(at + 1));
  std::istringstream stream(text.substr(0, at));
  for (std::string limb; std::getline(stream, limb, '.');) x.limbs.insert(x.limbs.begin(), std::stoll(limb));
  return x;
}

/// The rounding rule, on digits that go on behind the precision.
inline Limbs roundedTo(Limbs x, std::size_t precision) {
  if (x.limbs.size() > precision) {
    const std::size_t dropped = x.limbs.size() - precision;
    const bool up = x.limbs[dropped - 1] >= 5000000;
    x.limbs.erase(x.limbs.begin(), x.limbs.begin() + static_cast<std::ptrdiff_t>(dropped));
    x.exponent += static_cast<int64_t>(dropped);
    x.limbs.push_back(0);
    x.limbs[0] += up;
    for (std::size_t i = 0; i + 1 < x.limbs.size(); ++i)
      if (x.limbs[i] == 10000000) {
        x.limbs[i] = 0;
        ++x.limbs[i + 1];
      }
  }
  while (!x.limbs.empty() && x.limbs.back() == 0) x.limbs.pop_back();
  while (!x.limbs.empty() && x.limbs.front() == 0) {
    x.limbs.erase(x.limbs.begin());
    ++x.exponent;
  }
  return x;
}

/// A handle that is released at the end.
class Number {
 public:
  explicit Number(HPNumber* made) : handle(made) {}
  explicit Number(int64_t value) : handle(hp_CreateByValue(value)) {}
  explicit Number(const Limbs& x) : handle(made(x)) {}
  static HPNumber* made(const Limbs& x) {
    if (x.infinite) return hp_Fun2(Number(x.negative ? -1 : 1), Number(int64_t(0)), 3, 1);
    return hp_CreateByValue2(x.limbs.data(), static_cast<int32_t>(x.limbs.size()), static_cast<int32_t>(x.exponent),
                             x.negative);
  }
  explicit Number(const char* text) : Number(limbsOf(text)) {}
  Number(const Number&) = delete;
  Number& operator=(const Number&) = delete;
  ~Number() { api_FreeHandle(handle); }

  operator const HPNumber*() const { return handle; }

  Limbs limbs() const {
    int64_t attributes[4];
    hp_Attribute(handle, attributes);
    Limbs x{attributes[0] != 0, attributes[1] != 0, attributes[3], {}};
    x.limbs.resize(static_cast<std::size_t>(attributes[2]));
    hp_GetValue(handle, x.limbs.data());
    return x;
  }

 private:
  HPNumber* handle;
};

inline Limbs fun1(const Number& x, int code, int32_t precision) {
  return Number(hp_Fun1(x, static_cast<uint8_t>(code), precision)).limbs();
}

inline Limbs fun2(const Number& a, const Number& b, int code, int32_t precision) {
  return Number(hp_Fun2(a, b, static_cast<uint8_t>(code), precision)).limbs();
}

/// The rows of tests/reference/highprecision/<name>.csv as cells.
inline std::vector<Cells> rowsOf(const std::string& name) { return readCsv("highprecision/" + name + ".csv"); }
