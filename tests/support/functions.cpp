// SPDX-License-Identifier: Apache-2.0
#include "support/functions.h"

#include <dlfcn.h>

#include <cctype>
#include <cmath>
#include <cstdint>
#include <map>
#include <stdexcept>

#include "orvane/orvane.h"
#include "support/csv.h"

namespace functions {
namespace {

/// Functions without an export of their own, by the standard library and by other exports.
const std::map<std::string, Call>& formulas() {
  using V = const double*;
  static const std::map<std::string, Call> table = {
      {"calcAsin", [](V v) { return std::asin(v[0]); }},
      {"calcAcos", [](V v) { return std::acos(v[0]); }},
      {"calcAtan", [](V v) { return std::atan(v[0]); }},
      {"calcAtan2", [](V v) { return std::atan2(v[0], v[1]); }},
      {"calcSinh", [](V v) { return std::sinh(v[0]); }},
      {"calcCosh", [](V v) { return std::cosh(v[0]); }},
      {"calcTanh", [](V v) { return std::tanh(v[0]); }},
      {"calcAcothByAtanh", [](V v) { return std::atanh(1 / v[0]); }},
      {"calcExp", [](V v) { return std::exp(v[0]); }},
      {"calcLn", [](V v) { return std::log(v[0]); }},
      {"calcSqrt", [](V v) { return std::sqrt(v[0]); }},
      {"calcShortPow", [](V v) { return std::pow(v[0], v[1]); }},
      {"calcSum", [](V v) { return v[0] + v[1]; }},
      {"calcDifference", [](V v) { return v[0] - v[1]; }},
      {"calcProduct", [](V v) { return v[0] * v[1]; }},
      {"calcQuotient", [](V v) { return v[0] / v[1]; }},
      {"calcHypot", [](V v) { return std::hypot(v[0], v[1]); }},
      {"calcMax", [](V v) { return std::fmax(v[0], v[1]); }},
      {"calcMin", [](V v) { return std::fmin(v[0], v[1]); }},
      {"calcAbs", [](V v) { return std::fabs(v[0]); }},
      {"calcFloor", [](V v) { return std::floor(v[0]); }},
      {"calcCeil", [](V v) { return std::ceil(v[0]); }},
      {"calcTrunc", [](V v) { return std::trunc(v[0]); }},
      {"calcFrac", [](V v) { return v[0] - std::trunc(v[0]); }},
      {"calcRound", [](V v) { return std::round(v[0]); }},
      {"calcTgamma", [](V v) { return std::tgamma(v[0]); }},
      {"calcBetaByLogs",
       [](V v) { return std::exp(std::lgamma(v[0]) + std::lgamma(v[1]) - std::lgamma(v[0] + v[1])); }},
      {"calcComplementaryEllipticK", [](V v) { return math_ellipticK(1 - v[0]); }},
      {"calcShiftedPolyLegendre", [](V v) { return math_polyLegendre(static_cast<int32_t>(v[0]), 2 * v[1] - 1); }},
      {"calcBesselJ for K", [](V v) { return math_BesselJ(v[0], v[1]); }},
  };
  return table;
}

}  // namespace

const std::vector<Function>& all() {
  static const std::vector<Function> rows = [] {
    const auto code = [](const std::string& cell) { return cell.empty() ? kNone : std::stoi(cell); };
    std::vector<Cells> table = readCsv("special/functions.csv");
    table.erase(table.begin());  // the names of the columns
    std::vector<Function> read;
    for (const Cells& c : table) {
      const bool ofOrder = c.at(2) == "n";
      read.push_back(
          {c[0], c[1], ofOrder ? 2 : std::stoi(c[2]), ofOrder, code(c.at(3)), code(c.at(4)), c.at(5), c.at(6)});
    }
    return read;
  }();
  return rows;
}

const Function& row(const std::string& name) {
  for (const Function& function : all())
    if (function.name == name) return function;
  throw std::runtime_error("no function " + name);
}

Call fromSymbol(void* symbol, int count, bool ofOrder) {
  if (ofOrder) {
    const auto f = reinterpret_cast<double (*)(int32_t, double)>(symbol);
    return [f](const double* v) { return f(static_cast<int32_t>(v[0]), v[1]); };
  }
  switch (count) {
    case 1:
      return [f = reinterpret_cast<double (*)(double)>(symbol)](const double* v) { return f(v[0]); };
    case 2:
      return [f = reinterpret_cast<double (*)(double, double)>(symbol)](const double* v) { return f(v[0], v[1]); };
    case 3:
      return [f = reinterpret_cast<double (*)(double, double, double)>(symbol)](const double* v) {
        return f(v[0], v[1], v[2]);
      };
    default:
      return [f = reinterpret_cast<double (*)(double, double, double, double)>(symbol)](const double* v) {
        return f(v[0], v[1], v[2], v[3]);
      };
  }
}

Call byArray(const Function& function) {
  const auto code = static_cast<uint8_t>(function.arrayCode);
  if (function.ofOrder)
    return [code](const double* v) {
      double out = 0;
      const auto order = static_cast<int32_t>(v[0]);
      apiFun_calcPoly(v + 1, 1, &order, 1, &out, code);
      return out;
    };
  return [code, count = function.count](const double* v) {
    double out = 0;
    if (count == 1)
      apiFun_calcFun(v, 1, &out, code);
    else
      apiFun_calcFun2(v, 1, v + 1, 1, &out, code);
    return out;
  };
}

Call callOf(const Function& function) {
  if (void* symbol = dlsym(RTLD_DEFAULT, function.name.c_str()))
    return fromSymbol(symbol, function.count, function.ofOrder);
  // ofOrder<calcPolyLog> is math_polyLog at integer orders.
  if (const std::string word = "ofOrder<calc"; function.name.starts_with(word)) {
    std::string name = function.name.substr(word.size(), function.name.size() - word.size() - 1);
    if (!name.starts_with("Clausen")) name[0] = static_cast<char>(std::tolower(name[0]));
    return find("math_" + name);
  }
  if (const auto found = formulas().find(function.name); found != formulas().end()) return found->second;
  if (function.isExport() || function.arrayCode == kNone)
    throw std::runtime_error("nothing stands for " + function.name);
  return byArray(function);
}

Call find(const std::string& name) { return callOf(row(name)); }

}  // namespace functions
