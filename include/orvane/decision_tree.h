/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Classification and regression trees (Breiman, Friedman, Olshen, Stone 1984) over real and class features, for labels
 * of two classes or real labels.
 *
 * Class values are truncated to 8 bits. A node links its children and does not own them: a tree owns the nodes that it
 * has grown until it grows again or is released, and what cart_CreateBaseCARTNode made is released by api_FreeHandle. A
 * link to a node that was released is as good as none. A ring of links, which only a host can make, leads nowhere:
 * cart_Predict then gives 0.
 *
 * cart_Train blocks its thread; cart_Stop may be called from another one meanwhile.
 */
#ifndef ORVANE_DECISION_TREE_H
#define ORVANE_DECISION_TREE_H

#include <orvane/export.h>
#include <orvane/frame.h>

/** A tree with its samples. */
typedef struct CartTree CartTree;

/** A node of a tree. */
typedef struct CartNode CartNode;

/** Kinds of node. */
enum {
  ORVANE_CART_LEAF = 0,
  ORVANE_CART_CLASS_SPLIT = 1, /**< class value equal to the node's: right, otherwise left */
  ORVANE_CART_REAL_SPLIT = 2   /**< real value below the node's: left, otherwise right */
};

/** A new tree: two classes, depth 6, 4 samples, gap 0.5, score 0.16. @return handle, released by api_FreeHandle */
ORVANE_API CartTree* cart_Create(void);

/** Whether labels are classes. @param tree tree @return true for two classes, false for real labels */
ORVANE_API bool cart_isClass(const CartTree* tree);

/** Sets the number of real features; cart_SetData counts it anew. @param tree tree @param n their number */
ORVANE_API void cart_SetRealNum(CartTree* tree, int32_t n);

/** The number of real features. @param tree tree @return their number */
ORVANE_API int32_t cart_GetRealNum(const CartTree* tree);

/** Sets the number of class features; cart_SetData counts it anew. @param tree tree @param n their number */
ORVANE_API void cart_SetClassNum(CartTree* tree, int32_t n);

/** The number of class features. @param tree tree @return their number */
ORVANE_API int32_t cart_GetClassNum(const CartTree* tree);

/**
 * Replaces the samples.
 *
 * @param tree       tree
 * @param rows       [samples, columns] features; read here, not kept
 * @param labels     [samples, 1] or [1, samples] labels; a class label is true above 0.5. Surplus rows or labels are
 *                   ignored
 * @param flagBytes  [columns] not 0 for a class feature; null for none
 * @param isClass    whether labels are classes
 */
ORVANE_API void cart_SetData(CartTree* tree, const Data2D* rows, const Data2D* labels, const uint8_t* flagBytes,
                             bool isClass);

/** Sets which columns are class features, as cart_Predict reads them. @param tree tree @param flags [n] not 0 for a
 * class feature @param n number of columns */
ORVANE_API void cart_SetFlag(CartTree* tree, const uint8_t* flags, int32_t n);

/** Which columns are class features. @param tree tree @param out [columns] out, 1 for a class feature; null to count
 * only @return number of columns */
ORVANE_API int32_t cart_GetFlag(const CartTree* tree, uint8_t* out);

/**
 * Sets what makes a leaf.
 *
 * @param tree           tree
 * @param minCount       fewer samples make a leaf
 * @param minValueGap    two neighbouring values of a real feature that are closer give no threshold
 * @param minSplitScore  a best split whose score is below makes a leaf: the score itself, not a gain, so that a very
 *                       good split is not made. 0 lets every split be made
 * @param maxDepth       depth; 0 makes the root a leaf
 */
ORVANE_API void cart_SetLimitCondition(CartTree* tree, int32_t minCount, double minValueGap, double minSplitScore,
                                       uint8_t maxDepth);

/**
 * Grows the tree, breadth first. The split of the lowest score is made, of equal ones the first: class features in
 * order (one test "equal" a value; one only where two values are left), then real features (thresholds halfway between
 * values that are minValueGap apart or more). The score of two classes is the Gini impurity of the two sides, weighted
 * by their shares; of real labels the sum of the squared deviations of the two sides from their means. Below a split
 * its class value, or its real feature, is not asked for again.
 *
 * NaN in a real feature gives no threshold and goes right; a split whose score is NaN is not made.
 *
 * @param tree  tree
 * @return false without samples. After cart_Stop true: the nodes that waited are leaves
 */
ORVANE_API bool cart_Train(CartTree* tree);

/** Stops a running cart_Train before the next node. @param tree tree */
ORVANE_API void cart_Stop(CartTree* tree);

/** The tree's answer for a row: 1 or -1 for classes (-1 on a tie), the mean label of the leaf for real labels. A node
 * with one child hands on to it. @param tree tree @param x [columns] row, in the order of the flags @return value; 0
 * without a root */
ORVANE_API double cart_Predict(const CartTree* tree, const double* x);

/** The root. @param tree tree @return node; null for none */
ORVANE_API CartNode* cart_GetRoot(const CartTree* tree);

/** Sets the root. @param tree tree @param root node of the host or of a tree; null for none */
ORVANE_API void cart_SetRoot(CartTree* tree, CartNode* root);

/** A new node without children. @param leafFlag not 0 for a leaf, otherwise a class split on feature 0, class 0 @return
 * handle, released by api_FreeHandle */
ORVANE_API CartNode* cart_CreateBaseCARTNode(uint8_t leafFlag);

/** The class of a class split. @param node node @return class */
ORVANE_API uint8_t cart_BaseNode_GetCompareClass(const CartNode* node);

/** Sets the class of a class split. @param node node @param value class */
ORVANE_API void cart_BaseNode_SetCompareClass(CartNode* node, uint8_t value);

/** The feature of a split, from 0 among those of its kind. @param node node @return index */
ORVANE_API int32_t cart_BaseNode_GetCompareIndex(const CartNode* node);

/** Sets the feature of a split. @param node node @param index index; one that a row has not goes left for a class,
 * right for a real split */
ORVANE_API void cart_BaseNode_SetCompareIndex(CartNode* node, int32_t index);

/** The threshold of a real split. @param node node @return threshold */
ORVANE_API double cart_BaseNode_GetCompareReal(const CartNode* node);

/** Sets the threshold of a real split. @param node node @param value threshold */
ORVANE_API void cart_BaseNode_SetCompareReal(CartNode* node, double value);

/** The kind of a node. @param node node @return 0 leaf, 1 class split, 2 real split */
ORVANE_API uint8_t cart_BaseNode_GetFlag(const CartNode* node);

/** Sets the kind of a node. @param node node @param splitKind 0 leaf, 2 real split, otherwise class split */
ORVANE_API void cart_BaseNode_SetFlag(CartNode* node, uint8_t splitKind);

/** The left child. @param node node @return child; null for none */
ORVANE_API CartNode* cart_BaseNode_GetLeftNode(const CartNode* node);

/** Links the left child. @param node node @param child node; null for none */
ORVANE_API void cart_BaseNode_setLeftNode(CartNode* node, CartNode* child);

/** The right child. @param node node @return child; null for none */
ORVANE_API CartNode* cart_BaseNode_GetRightNode(const CartNode* node);

/** Links the right child. @param node node @param child node; null for none */
ORVANE_API void cart_BaseNode_SetRightNode(CartNode* node, CartNode* child);

#endif
