// SPDX-License-Identifier: Apache-2.0
#include <map>

#include "network/train/stepper_table.h"
#include "support/reference.h"

namespace {

using Rows = std::vector<std::vector<double>>;

struct Trace {
  int code;
  std::vector<double> numbers;
  Rows dx;
};

/// steppers.csv: gradients, variables and the steps of each rule.
struct Traces {
  Traces() {
    std::ifstream file(ORVANE_REFERENCE_DIR "/network/steppers.csv");
    for (std::string line; std::getline(file, line);) {
      if (line[0] == '#') continue;
      std::istringstream cells(line);
      std::string key, t, cell;
      std::getline(cells, key, ',');
      std::getline(cells, t, ',');
      std::vector<double> row;
      while (std::getline(cells, cell, ',')) row.push_back(std::strtod(cell.c_str(), nullptr));
      if (key == "g")
        gradients.push_back(row);
      else if (key == "w")
        variables.push_back(row);
      else if (t == "0")
        rules.push_back({std::stoi(key), row, {}});
      else
        rules.back().dx.push_back(row);
    }
  }
  Rows gradients, variables;
  std::vector<Trace> rules;
};

TEST(Steppers, FiftySteps) {
  const Traces traces;
  ASSERT_EQ(traces.rules.size(), 20u);
  double worst = 0;
  for (const Trace& trace : traces.rules) {
    ASSERT_EQ(trace.dx.size(), 50u);
    auto stepper = NetWork::makeStepper(trace.code);
    const auto& k = trace.numbers;
    if (trace.code != 8 && &trace - traces.rules.data() < 16) {  // the first 16 are the numbers of the start
      EXPECT_EQ(stepper->beta1, k[0]) << trace.code;
      EXPECT_EQ(stepper->beta2, k[1]) << trace.code;
      EXPECT_EQ(stepper->extra, k[2]) << trace.code;
    }
    EXPECT_EQ(stepper->lr, 1.0);
    EXPECT_EQ(stepper->needVar, trace.code == 15 || trace.code == 16);
    stepper->setVar(k[0], k[1], k[2], 0.5, 0.125, 30);
    for (int round = 0; round < 2; ++round) {  // a second try is as the first
      stepper->init(5);
      for (std::size_t t = 0; t < 50; ++t) {
        auto g = traces.gradients[t];
        stepper->vars = traces.variables[t].data();
        stepper->step(g);
        for (std::size_t i = 0; i < g.size(); ++i) {
          const double error = ulpError(g[i], trace.dx[t][i]);
          worst = std::max(worst, error);
          // The order of three products and quotients is free; sums are not, so that errors stay relative.
          EXPECT_LE(error, 8) << "rule " << trace.code << " step " << t + 1 << " entry " << i << ": " << g[i];
        }
        if (t == 24) {  // state goes through a stream
          DataStream stream;
          stepper->write(stream);
          auto other = NetWork::makeStepper(trace.code);
          other->read(stream);
          EXPECT_FALSE(stream.bad());
          EXPECT_EQ(stream.left(), 0u);
          stepper = std::move(other);
        }
      }
    }
  }
  std::cout << "largest error " << worst << " ulp\n";
}

TEST(Steppers, ShortStreamIsBad) {
  auto stepper = NetWork::makeStepper(5);
  stepper->init(3);
  DataStream stream;
  stepper->write(stream);
  stream.bytes.resize(stream.bytes.size() - 30);
  stepper->read(stream);
  EXPECT_TRUE(stream.bad());
}

TEST(Steppers, TypeCodes) {
  const std::map<int, int> codes{{0, 60},  {1, 60},  {2, 28},  {3, 24},  {4, 34},  {5, 26},
                                 {6, 27},  {7, 25},  {8, 23},  {9, 29},  {10, 30}, {11, 31},
                                 {12, 32}, {13, 33}, {14, 63}, {15, 66}, {16, 67}, {17, 68}};
  for (int kind = -1; kind < 300; ++kind) {
    const auto stepper = NetWork::makeStepper(kind);
    ASSERT_EQ(stepper != nullptr, codes.count(kind) == 1) << kind;
    if (stepper) {
      EXPECT_EQ(stepper->typeCode, codes.at(kind)) << kind;
    }
  }
}

}  // namespace
