// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <functional>
#include <random>
#include <vector>

/// Arguments of the hypergeometric series, for its test and its benchmark.
namespace families {

struct Arguments {
  std::vector<double> a, b;
  double z;
};

/// A family of arguments that distributions and incomplete gamma and beta functions meet.
struct Family {
  const char* name;
  int count;
  double leastShare;  // of the arguments that the fast path must decide itself
  std::function<Arguments(double a, double b, double t)> make;  // shapes a, b in 0.1..100, t in 0..1
};

inline const Family kFamilies[] = {
    {"lower gamma", 30000, 1.0,
     [](double a, double, double t) {
       return Arguments{{a}, {a + 1}, -10 * t};
     }},
    {"gamma, x to 60", 2000, 0.25,
     [](double a, double, double t) {
       return Arguments{{a}, {a + 1}, -60 * t};
     }},
    {"rising gamma", 1500, 1.0,
     [](double a, double, double t) {
       return Arguments{{1}, {a + 1}, 1000 * t};
     }},
    {"beta", 30000, 0.9,
     [](double a, double b, double t) {
       return Arguments{{a, 1 - b}, {a + 1}, t / 2};
     }},
    {"beta, second form", 25000, 1.0,
     [](double a, double b, double t) {
       return Arguments{{a + b, 1}, {a + 1}, t / 2};
     }},
    {"Student inside", 6000, 0.9,
     [](double a, double, double t) {
       return Arguments{{0.5, (a + 1) / 2}, {1.5}, -0.9 * t};
     }},
    {"Student outside", 1500, 1.0,
     [](double a, double, double t) {
       return Arguments{{0.5, (a + 1) / 2}, {1.5}, -1.01 - 50 * t * t};
     }},
    {"inverted beta inside", 4000, 0.6,
     [](double a, double b, double t) {
       return Arguments{{b, a + b}, {b + 1}, -0.9 * t};
     }},
    {"inverted beta outside", 1500, 1.0,
     [](double a, double b, double t) {
       return Arguments{{b, a + b}, {b + 1}, -1.01 - 50 * t * t};
     }},
};

/// Calls body(family, arguments) for every argument of every family; scale thins them out.
inline void forFamilies(int scale, const std::function<void(const Family&, const Arguments&)>& body) {
  std::mt19937_64 random(20240611);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  const auto shape = [&] { return 0.1 * std::pow(1000.0, unit(random)); };
  for (const Family& family : kFamilies)
    for (int i = 0; i < family.count / scale; ++i) {
      const double a = shape(), b = shape();
      body(family, family.make(a, b, unit(random)));
    }
}

}  // namespace families
