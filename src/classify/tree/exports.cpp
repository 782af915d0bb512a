// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "classify/tree/cart_tree.h"
#include "frame/handle.h"
#include "orvane/decision_tree.h"
#include "orvane/frame.h"

template <>
struct NativeOf<::CartTree> {
  using type = NetWork::CartTree;
};
template <>
struct NativeOf<::CartNode> {
  using type = NetWork::CartNode;
};
template <>
struct NativeOf<::Data2D> {
  using type = Data2D_c;
};

namespace {

std::weak_ptr<NetWork::CartNode> linkTo(CartNode* node) {
  return node != nullptr ? native(node).weak_from_this() : std::weak_ptr<NetWork::CartNode>();
}

CartNode* handleAt(const std::weak_ptr<NetWork::CartNode>& link) {
  const auto node = link.lock();
  return node != nullptr ? handleOf<CartNode>(node.get()) : nullptr;
}

}  // namespace

CartTree* cart_Create(void) { return registered<CartTree>(std::make_unique<NetWork::CartTree>()); }

bool cart_isClass(const CartTree* tree) { return native(tree).isClass; }

void cart_SetRealNum(CartTree* tree, int32_t n) { native(tree).realNum = n; }

int32_t cart_GetRealNum(const CartTree* tree) { return native(tree).realNum; }

void cart_SetClassNum(CartTree* tree, int32_t n) { native(tree).classNum = n; }

int32_t cart_GetClassNum(const CartTree* tree) { return native(tree).classNum; }

void cart_SetData(CartTree* tree, const Data2D* rows, const Data2D* labels, const uint8_t* flagBytes, bool isClass) {
  native(tree).setData(native(rows), native(labels), flagBytes, isClass);
}

void cart_SetFlag(CartTree* tree, const uint8_t* flags, int32_t n) {
  const auto bytes = span(flags, n);
  native(tree).flags.assign(bytes.begin(), bytes.end());
}

int32_t cart_GetFlag(const CartTree* tree, uint8_t* out) {
  const std::vector<bool>& flags = native(tree).flags;
  if (out != nullptr) std::copy(flags.begin(), flags.end(), out);
  return static_cast<int32_t>(flags.size());
}

void cart_SetLimitCondition(CartTree* tree, int32_t minCount, double minValueGap, double minSplitScore,
                            uint8_t maxDepth) {
  native(tree).minCount = minCount;
  native(tree).minValueGap = minValueGap;
  native(tree).minSplitScore = minSplitScore;
  native(tree).maxDepth = maxDepth;
}

bool cart_Train(CartTree* tree) { return native(tree).train(); }

void cart_Stop(CartTree* tree) { native(tree).stop = true; }

double cart_Predict(const CartTree* tree, const double* x) { return native(tree).predict(x); }

CartNode* cart_GetRoot(const CartTree* tree) { return handleAt(native(tree).root); }

void cart_SetRoot(CartTree* tree, CartNode* root) { native(tree).root = linkTo(root); }

CartNode* cart_CreateBaseCARTNode(uint8_t leafFlag) {
  auto node = std::make_shared<NetWork::CartNode>();
  if (leafFlag == 0) node->splitKind = NetWork::SplitKind::byClass;
  return registeredShared<CartNode>(std::move(node));
}

uint8_t cart_BaseNode_GetCompareClass(const CartNode* node) { return native(node).compareClass; }

void cart_BaseNode_SetCompareClass(CartNode* node, uint8_t value) { native(node).compareClass = value; }

int32_t cart_BaseNode_GetCompareIndex(const CartNode* node) { return native(node).compareIndex; }

void cart_BaseNode_SetCompareIndex(CartNode* node, int32_t index) { native(node).compareIndex = index; }

double cart_BaseNode_GetCompareReal(const CartNode* node) { return native(node).compareReal; }

void cart_BaseNode_SetCompareReal(CartNode* node, double value) { native(node).compareReal = value; }

uint8_t cart_BaseNode_GetFlag(const CartNode* node) { return static_cast<uint8_t>(native(node).splitKind); }

void cart_BaseNode_SetFlag(CartNode* node, uint8_t splitKind) {
  native(node).splitKind = static_cast<NetWork::SplitKind>(splitKind);
}

CartNode* cart_BaseNode_GetLeftNode(const CartNode* node) { return handleAt(native(node).left); }

void cart_BaseNode_setLeftNode(CartNode* node, CartNode* child) { native(node).left = linkTo(child); }

CartNode* cart_BaseNode_GetRightNode(const CartNode* node) { return handleAt(native(node).right); }

void cart_BaseNode_SetRightNode(CartNode* node, CartNode* child) { native(node).right = linkTo(child); }
