/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Symbolic expressions: nodes, matrices of expressions, variables, the store that holds them.
 *
 * A host builds an expression by calls: a variable, a number, a function code applied to nodes. Every node stands for a
 * coefficient times a function of its arguments, so 3 sin(x) is one node. A node is brought to a normal form as it is
 * built: numbers are folded, sums and products flattened and their like terms merged, inverse functions cancelled. That
 * never changes the value of an expression at a point of its domain (an inverse pair is cancelled as on its principal
 * branch).
 *
 * Functions have codes (orvane/sym_kinds.h). Add and Mul take any number of arguments; the others as many as the math_
 * function of the like name, in its order. A code without a meaning throws std::out_of_range with the text
 * "invalid map<K, T> key". Where a node is built, arguments beyond the count of its kind are dropped; fewer than that
 * throw std::invalid_argument, and so does the code of a variable, which is made by its name alone. Nothing is added to
 * the store then.
 *
 * Values that may surprise: BesselK evaluates as BesselJ; Sign and StepFun ignore a coefficient that sym_selfMul gives
 * them; Beta loses the sign at negative arguments; x^0 and 1^x are the number 1 whatever their coefficient.
 *
 * Ownership: nodes given to the host live in the store until sym_clearTempVar, or as long as a matrix holds them;
 * matrices until sym_freeMatrix2d. Variables stay. Never give anything of this family to api_FreeHandle. Operations
 * clone what they take: no two expressions share a part, but for sym_setSymMatrixData. The store has no lock: one
 * thread at a time may call this family.
 *
 * Rows and columns count from 0; a place outside the matrix throws std::out_of_range. Trees of any depth can be built,
 * cloned, searched for variables and released. Evaluation recurses: with a stack of 8 MiB it bears 150,000 levels;
 * merging two like terms or factors of a sum or product compares them and bears 50,000.
 *
 * Memory: 88 bytes a node and 16 an argument, so 192 bytes for the sine of a variable, both nodes together; a matrix
 * takes 16 bytes an element and 24 a row beside its nodes. Nothing bounds a matrix but that: what does not fit throws
 * std::bad_alloc. Released memory of nodes is used again for nodes and not returned to the system.
 */
#ifndef ORVANE_SYM_H
#define ORVANE_SYM_H

#include <orvane/export.h>
#include <orvane/sym_kinds.h>

/** A node of an expression. */
typedef struct SymObject SymObject;

/** A matrix of expressions; a single expression is 1 by 1. */
typedef struct SymMatrix2d SymMatrix2d;

/** A variable: a name and a current value, shared by all nodes that name it. */
typedef struct BaseSym BaseSym;

/**
 * New number.
 *
 * @return node, in the store until sym_clearTempVar
 */
ORVANE_API SymObject* sym_createDouble(double value);

/**
 * New node that names a variable; the variable itself arises with the value 0 when there is none of that name.
 *
 * @param name  name; exactly "pi" gives the number 3.141592653589793 and no variable
 * @return node, in the store until sym_clearTempVar
 */
ORVANE_API SymObject* sym_createBaseSymVar(const char* name);

/**
 * New node f(node), on a clone.
 *
 * @param node  node of the store; one that is unknown there, an element of a matrix for one, gives a null argument, and
 *              the result must not be evaluated or written
 * @param code  kind that can do with one argument, or ORVANE_KIND_CSC to ORVANE_KIND_ASECH
 * @return node, in the store until sym_clearTempVar
 */
ORVANE_API SymObject* sym_funOneParam(SymObject* node, uint8_t code);

/**
 * New node f(a, b), on clones.
 *
 * @param a, b  nodes of the store, as for sym_funOneParam
 * @param code  kind of two arguments, ORVANE_KIND_SUBTRACT or ORVANE_KIND_DIVIDE; ORVANE_KIND_GAMMA is taken as
 *              ORVANE_KIND_INCOMPLETE_GAMMA
 * @return node, in the store until sym_clearTempVar
 */
ORVANE_API SymObject* sym_funTwoParam(SymObject* a, SymObject* b, uint8_t code);

/**
 * New node of any number of arguments, on clones.
 *
 * @param nodes  [count] nodes of the store, as for sym_funOneParam
 * @param count  number of arguments; 0 is valid for Add and Mul
 * @param code   kind; what has a meaning beside the kinds for one or two arguments has none here
 * @return node, in the store until sym_clearTempVar
 */
ORVANE_API SymObject* sym_funMulParam(SymObject* const* nodes, int32_t count, uint8_t code);

/** Releases every node of the store but those that a matrix holds. */
ORVANE_API void sym_clearTempVar(void);

/** Value of an expression at the present values of its variables. NaN and infinities are what the functions give. */
ORVANE_API double sym_calcExpress(const SymObject* node);

/**
 * New matrix of null elements; what is still null must not be used but by the functions that set or clone elements.
 *
 * @return matrix, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_createSymMatrix(uint32_t rows, uint32_t cols);

/** Releases a matrix; an unknown address does nothing. */
ORVANE_API void sym_freeMatrix2d(SymMatrix2d* matrix);

/** New matrix of deep clones, released by sym_freeMatrix2d. */
ORVANE_API SymMatrix2d* sym_cloneMatrix2d(const SymMatrix2d* matrix);

/**
 * Shape of a matrix.
 *
 * @param matrix  matrix of expressions
 * @param out     [2] rows, columns (the length of row 0)
 */
ORVANE_API void sym_getDataDim(const SymMatrix2d* matrix, int32_t* out);

/** Address of an element, valid as long as the matrix holds it; it is not in the store of nodes. May be null. */
ORVANE_API SymObject* sym_getSymMatrixData(SymMatrix2d* matrix, int32_t row, int32_t col);

/** Puts a node of the store into a matrix, the node itself and no clone; an unknown address puts null. */
ORVANE_API void sym_setSymMatrixData(SymMatrix2d* matrix, int32_t row, int32_t col, SymObject* node);

/** Puts a deep clone of element (0, 0) of the source into a matrix. */
ORVANE_API void sym_setSymMatrixData2(SymMatrix2d* matrix, int32_t row, int32_t col, const SymMatrix2d* source);

/** Turns an element into a number, in place: who else holds the node sees the change. */
ORVANE_API void sym_setSymMatrixData3(SymMatrix2d* matrix, int32_t row, int32_t col, double value);

/**
 * A row or a column as a matrix, of clones.
 *
 * @param matrix  matrix of expressions
 * @param index   row or column
 * @param row     not 0: row, 1 by n; 0: column, n by 1
 * @return matrix, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_getRowCol(const SymMatrix2d* matrix, int32_t index, uint8_t row);

/**
 * Coefficients of all elements, not evaluated: the number of a number, the factor of any other element.
 *
 * @param matrix  matrix of expressions
 * @param out     [rows*cols] row-major, out
 */
ORVANE_API void sym_getMatrixData(const SymMatrix2d* matrix, double* out);

/**
 * Values of all elements at the present values of the variables; NaN for an element that is null.
 *
 * @param matrix  matrix of expressions
 * @param out     [rows*cols] row-major, out
 */
ORVANE_API void sym_calcValue(const SymMatrix2d* matrix, double* out);

/** Value of one element, as by sym_calcValue. */
ORVANE_API double sym_calcExpressValue(const SymMatrix2d* matrix, int32_t row, int32_t col);

/**
 * Values of all elements, as by sym_calcValue.
 *
 * @param matrix  matrix of expressions
 * @param out     [rows*cols] row-major, out
 * @return true when all elements are numbers, also for an empty matrix
 */
ORVANE_API bool sym_toMatrix2dDouble(const SymMatrix2d* matrix, double* out);

/**
 * New matrix of numbers.
 *
 * @param values  [rows*cols] row-major
 * @param rows    number of rows
 * @param cols    number of columns
 * @return matrix, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_fromMatrix2dDouble(const double* values, int32_t rows, int32_t cols);

/** Identifier of a matrix, 0 until the store was written out or read in. */
ORVANE_API int32_t sym_getMatrixID(const SymMatrix2d* matrix);

/** The matrix of that identifier, the one of the lowest address when there are several; null when there is none. */
ORVANE_API SymMatrix2d* sym_getMatrixByID(int32_t id);

/** True when all elements are numbers, also for an empty matrix. */
ORVANE_API bool sym_isConstant(const SymMatrix2d* matrix);

/** Multiplies the coefficient of every element, in place. Sign and StepFun keep their value. */
ORVANE_API void sym_selfMul(SymMatrix2d* matrix, double factor);

/**
 * Matrix product; sums over the columns of a.
 *
 * @param a  [rows][n]
 * @param b  [n][cols]; rows beyond n are not read, fewer throw std::out_of_range
 * @return [rows][cols] matrix, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_dot(const SymMatrix2d* a, const SymMatrix2d* b);

/**
 * Cross product of two vectors of three elements, lying or standing. Further elements, counted row by row, are not
 * read; fewer throw std::out_of_range.
 *
 * @return vector that lies or stands as a does, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_cross(const SymMatrix2d* a, const SymMatrix2d* b);

/**
 * f(a, b) element by element, as sym_funTwoParam; a 1-by-1 side is paired with every element of the other.
 *
 * @param a     matrix
 * @param b     matrix
 * @param code  as for sym_funTwoParam
 * @return matrix, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_sameTwoFun(const SymMatrix2d* a, const SymMatrix2d* b, uint8_t code);

/** Operations of sym_oneFun. */
enum {
  ORVANE_SYM_TRACE = 200,
  ORVANE_SYM_INVERSE = 201,     /**< cofactors over the determinant */
  ORVANE_SYM_DETERMINANT = 202, /**< expansion by cofactors */
  ORVANE_SYM_TRANSPOSE = 204,
  ORVANE_SYM_SUM = 206, /**< of all elements */
  ORVANE_SYM_SKEW = 208 /**< matrix K of a vector v of three elements, K w = v x w */
};

/**
 * Matrix operation.
 *
 * The determinant and the inverse are those of the leading square of as many columns as there are rows; fewer columns
 * throw std::out_of_range. They are formulas that grow fast: n by n symbols make 2^n minors, the larger of them
 * written out as often as they occur. Beyond 8 by 8 evaluate first and use matrixDet and matrixInverse. A determinant
 * that is the number 0 makes an inverse of infinities and NaN. The skew matrix takes the first three elements, row by
 * row; fewer throw std::out_of_range.
 *
 * @param matrix  matrix of expressions
 * @param code    ORVANE_SYM_TRACE to ORVANE_SYM_SKEW
 * @return matrix, released by sym_freeMatrix2d; null for another code
 */
ORVANE_API SymMatrix2d* sym_oneFun(const SymMatrix2d* matrix, uint8_t code);

/**
 * Rotation matrix about an axis by an angle in radians; columns are the images of the axes, so that about axis 3 it is
 * (cos, -sin, 0; sin, cos, 0; 0, 0, 1).
 *
 * @param name  name of the angle's variable, as for sym_createBaseSymVar
 * @param axis  1, 2 or 3
 * @return 3-by-3 matrix, released by sym_freeMatrix2d; null for another axis
 */
ORVANE_API SymMatrix2d* sym_createSO3ByAxis(const char* name, uint8_t axis);

/** Sets the value of a variable; an unknown name does nothing. */
ORVANE_API void sym_setSymValue(const char* name, double value);

/** Value of a variable. */
ORVANE_API double sym_getBaseSymValue(const BaseSym* variable);

/**
 * Name of a variable.
 *
 * @param variable  variable
 * @param out       [capacity] bytes, out, without a terminator; nothing is written when it is too small
 * @param capacity  room in out
 * @return length in bytes
 */
ORVANE_API int32_t sym_getBaseSymName(const BaseSym* variable, char* out, int32_t capacity);

/**
 * The distinct variables of one element, ordered by address.
 *
 * @param matrix    matrix of expressions
 * @param row       row of the element, from 0
 * @param col       column of the element, from 0
 * @param out       [capacity] variables, out; nothing is written when there are more
 * @param capacity  room in out
 * @return number of variables
 */
ORVANE_API int32_t sym_getAllBaseSym(const SymMatrix2d* matrix, int32_t row, int32_t col, BaseSym** out,
                                     int32_t capacity);

/**
 * The matrix's list of variables, each name followed by a comma. The first call makes the list, of all elements,
 * ordered by name; later changes of the elements do not change it.
 *
 * @param matrix    matrix of expressions
 * @param out       [capacity] bytes, out, without a terminator; nothing is written when it is too small
 * @param capacity  room in out
 * @return length in bytes
 */
ORVANE_API int32_t sym_getAllBaseSym2(SymMatrix2d* matrix, char* out, int32_t capacity);

/**
 * Reorders the matrix's list of variables: position i takes the old entry at order[i].
 *
 * @param matrix  matrix of expressions
 * @param order   [count] indices; one outside the list leaves its position
 * @param count   number of entries
 * @return 1
 */
ORVANE_API int32_t sym_setAllBaseSym(SymMatrix2d* matrix, const int32_t* order, int32_t count);

/**
 * Sets values of variables of the matrix's list: variable indices[i] takes values[i].
 *
 * @param matrix   matrix of expressions
 * @param indices  [count] places in the list; one outside throws std::out_of_range
 * @param values   [count] values
 * @param count    number of entries
 */
ORVANE_API void sym_setBaseSymValue(SymMatrix2d* matrix, const int32_t* indices, const double* values, int32_t count);

/**
 * Keeps or brings back the values of the matrix's list of variables.
 *
 * @param matrix    matrix of expressions
 * @param snapshot  not 0: keep the present values; 0: bring back the kept ones, or do nothing when none were kept
 */
ORVANE_API void sym_updateSymValue(SymMatrix2d* matrix, int32_t snapshot);

/**
 * New matrix with variables replaced, one after the other, and brought to normal form again.
 *
 * @param matrix        matrix of expressions
 * @param names         [count] names of variables
 * @param replacements  [count] names or numbers; "inf" is 1e300, "-inf" is -1e300, a text that is no number is 0
 * @param flags         [count] not 0: the replacement is the name of a variable, made when there is none; 0: a number
 * @param count         number of entries
 * @return matrix, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_replaceSym(const SymMatrix2d* matrix, const char* const* names,
                                       const char* const* replacements, const uint8_t* flags, int32_t count);

/** True for a number, a variable and a sum of numbers and variables with factors. */
ORVANE_API bool sym_isLineExpress(const SymMatrix2d* matrix, int32_t row, int32_t col);

/**
 * True for x y or x^2 of variables, and for a sum of such terms (at least one), variables and numbers.
 */
ORVANE_API bool sym_isQuadExpress(const SymMatrix2d* matrix, int32_t row, int32_t col);

/**
 * Variables and coefficients of a linear element, in the order of its terms. The constant is the value of the element
 * with all variables 0.
 *
 * @param matrix        matrix of expressions
 * @param row           row of the element, from 0
 * @param col           column of the element, from 0
 * @param variables     [count] out, one for each variable term
 * @param coefficients  [count] out
 * @return count; 0 for an element that is not linear, and nothing is written
 */
ORVANE_API int32_t sym_getLineExpress(const SymMatrix2d* matrix, int32_t row, int32_t col, BaseSym** variables,
                                      double* coefficients);

#endif
