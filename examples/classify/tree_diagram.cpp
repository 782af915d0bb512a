// SPDX-License-Identifier: Apache-2.0
#include "tree_diagram.h"

#include <algorithm>
#include <map>

#include "page.h"
#include "svg_plot.h"

namespace {

constexpr double kLeafWidth = 128, kLevel = 92, kBoxHeight = 46;

class Diagram {
 public:
  Diagram(const CartTree* tree, const Samples& samples, std::size_t k) : tree(tree), samples(samples), klass(k) {
    for (const Row& row : samples.rows) {
      const CartNode* node = cart_GetRoot(tree);
      while (node != nullptr) {
        reached[node].add(cart_Predict(tree, row.data()));
        node = next(node, row);
      }
    }
    if (cart_GetRoot(tree) != nullptr) place(cart_GetRoot(tree), 0);
  }

  std::string svg() const {
    return "<svg class=\"tree\" width=\"" + shortNumber(std::max(leaves, 1) * kLeafWidth) + "\" height=\"" +
           shortNumber((deepest + 1) * kLevel) + "\" role=\"img\" aria-label=\"Tree\">\n" + lines + boxes + "</svg>\n";
  }

 private:
  /// The rows that reach a node, and what the tree answers to them.
  struct Seen {
    int count = 0;
    double answer = 0;
    bool several = false;  // answers

    void add(double another) {
      several = several || (count > 0 && another != answer);
      answer = another;
      ++count;
    }
  };

  // As cart_Predict walks, for columns that are all real.
  static const CartNode* next(const CartNode* node, const Row& row) {
    if (cart_BaseNode_GetFlag(node) == ORVANE_CART_LEAF) return nullptr;
    const CartNode *left = cart_BaseNode_GetLeftNode(node), *right = cart_BaseNode_GetRightNode(node);
    if (left == nullptr || right == nullptr) return left == nullptr ? right : left;
    const auto feature = static_cast<std::size_t>(cart_BaseNode_GetCompareIndex(node));
    return cart_BaseNode_GetCompareReal(node) > row[feature] ? left : right;
  }

  /// Draws a node and what is below it; the middle of the node is given back.
  double place(const CartNode* node, int depth) {
    deepest = std::max(deepest, depth);
    const double top = depth * kLevel + 8;
    std::vector<std::pair<const CartNode*, double>> below;
    if (reached[node].several)  // what is below gives one answer otherwise, whatever it asks
      for (const CartNode* child : {cart_BaseNode_GetLeftNode(node), cart_BaseNode_GetRightNode(node)})
        if (child != nullptr) below.emplace_back(child, place(child, depth + 1));
    double middle = 0;
    if (below.empty()) {
      middle = (leaves++ + 0.5) * kLeafWidth;
    } else {
      for (const auto& [child, where] : below) middle += where / static_cast<double>(below.size());
      for (const auto& [child, where] : below) link(middle, top + kBoxHeight, where, top + kLevel);
    }
    box(node, middle, top, below.empty());
    return middle;
  }

  void link(double x1, double y1, double x2, double y2) {
    lines += "<path class=\"axis\" d=\"M" + shortNumber(x1) + " " + shortNumber(y1) + "C" + shortNumber(x1) + " " +
             shortNumber(y1 + 22) + " " + shortNumber(x2) + " " + shortNumber(y2 - 22) + " " + shortNumber(x2) + " " +
             shortNumber(y2) + "\"/>\n";
  }

  void text(double x, double y, const std::string& style, const std::string& words) {
    boxes += "<text class=\"" + style + "\" text-anchor=\"middle\" x=\"" + shortNumber(x) + "\" y=\"" + shortNumber(y) +
             "\">" + escaped(words) + "</text>\n";
  }

  void box(const CartNode* node, double middle, double top, bool leaf) {
    const Seen& seen = reached[node];
    const bool classes = cart_isClass(tree), own = seen.answer > (classes ? 0 : 0.5);
    const std::size_t colour = own ? klass : samples.classes.size() == 2 ? 1 - klass : samples.classes.size();
    const std::string style = !leaf                             ? "test"
                              : colour < samples.classes.size() ? "s" + std::to_string(colour + 1)
                                                                : "other";
    boxes += "<rect class=\"node " + style + "\" rx=\"6\" x=\"" + shortNumber(middle - kLeafWidth / 2 + 4) + "\" y=\"" +
             shortNumber(top) + "\" width=\"" + shortNumber(kLeafWidth - 8) + "\" height=\"" + shortNumber(kBoxHeight) +
             "\"/>\n";
    if (leaf) {
      text(middle, top + 19, "name",
           classes ? samples.classes[own ? klass : 1 - klass]
                   : shortNumber(100 * seen.answer, 3) + " % " + samples.classes[klass]);
      text(middle, top + 36, "small", std::to_string(seen.count) + " samples");
      return;
    }
    text(middle, top + 19, "small", samples.features[static_cast<std::size_t>(cart_BaseNode_GetCompareIndex(node))]);
    text(middle, top + 37, "name", "< " + shortNumber(cart_BaseNode_GetCompareReal(node), 5) + " ?");
    text(middle - 30, top + kBoxHeight + 15, "small", "yes");
    text(middle + 30, top + kBoxHeight + 15, "small", "no");
  }

  const CartTree* tree;
  const Samples& samples;
  std::size_t klass;
  std::map<const CartNode*, Seen> reached;
  std::string lines, boxes;
  int leaves = 0, deepest = 0;
};

}  // namespace

std::string treeDiagram(const CartTree* tree, const Samples& samples, std::size_t k) {
  return Diagram(tree, samples, k).svg();
}
