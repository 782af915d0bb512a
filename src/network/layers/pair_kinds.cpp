// SPDX-License-Identifier: Apache-2.0
#include "network/layers/formula.h"
#include "network/layers/pair_formulas.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

struct Larger {
  static double value(double x, double x2) { return x < x2 ? x2 : x; }
  static double byX(double x, double x2, double) { return x < x2 ? 0 : 1; }
  static double byA(double x, double x2, double) { return x < x2 ? 1 : 0; }
};

struct Smaller {
  static double value(double x, double x2) { return x2 < x ? x2 : x; }
  static double byX(double x, double x2, double) { return x2 < x ? 0 : 1; }
  static double byA(double x, double x2, double) { return x2 < x ? 1 : 0; }
};

constexpr LayerKind kPairKinds[] = {
    pair<Add>(ORVANE_LAYER_X1_ADD_X2, "x1_add_x2"),      pair<Subtract>(ORVANE_LAYER_X1_SUB_X2, "x1_sub_x2"),
    pair<Multiply>(ORVANE_LAYER_X1_MUL_X2, "x1_mul_x2"), pair<Divide>(ORVANE_LAYER_X1_DIV_X2, "x1_div_x2"),
    pair<Power>(ORVANE_LAYER_X1_POW_X2, "x1_pow_x2"),    pair<Larger>(ORVANE_LAYER_MAX_X1_X2, "Max_x1_x2"),
    pair<Smaller>(ORVANE_LAYER_MIN_X1_X2, "Min_x1_x2"),
};

}  // namespace

std::span<const LayerKind> pairKinds() { return kPairKinds; }

}  // namespace NetWork
