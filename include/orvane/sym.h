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
 * Function codes and names: 0 Number, 1 Variable, 2 Add, 3 Mul, 5 Pow, 6 Sign, 10 Sqrt, 11 Ln, 12 Exp, 13 Abs,
 * 20 Sin, 21 Cos, 22 Tan, 23 Cot, 24 Asin, 25 Acos, 26 Atan, 27 Acot, 30 Sinh, 31 Cosh, 32 Tanh, 33 Coth, 34 Asinh,
 * 35 Acosh, 36 Atanh, 37 Acoth, 50 Erf, 51 Gamma, 52 Beta, 53 LnGamma, 54 BesselI, 55 BesselJ, 56 BesselK, 57 BesselY,
 * 58 DiGamma, 62 EllipticF, 63 EllipticK, 64 EllipticE (m or phi, m), 65 StruveH, 66 StruveL, 67 AngerJ, 68 WeberE,
 * 69 BarnesG, 70 LambertW, 71 WrightOmega, 72 WrightBessel, 73 ParabolicCylinderD, 74 ParabolicCylinderU,
 * 75 ParabolicCylinderV, 76 ClausenC, 77 ClausenS, 78 Hyperfactorial, 79 WhittakerM, 80 WhittakerW, 81 JacobiZeta,
 * 82 Gamma (a, x), the upper incomplete one, 83 InverseLambertW, 84 InverseErf, 85 InverseErfc, 86 InverseErfi,
 * 91 SinIntegral, 92 CosIntegral, 93 SinhIntegral, 94 CoshIntegral, 95 PolyGamma, 96 AGM, 97 Erfi, 98 Erfc, 99 Dawson,
 * 100 PolyLogarithm2, 101 LogSign, 102 ExpSign, 103 FresnelC, 104 FresnelS, 105 ExpIntegral (x or p, x),
 * 106 LogIntegral, 107 StepFun, 108 Round, 109 RoundDown, 110 RoundUp, 111 Rounding, 112 RoundZero, 113 Zeta,
 * 114 AiryAi, 115 AiryAiDiff, 116 AiryBi, 117 AiryBiDiff, 118 AiryGi, 119 AiryGiDiff, 120 AiryHi, 121 AiryHiDiff,
 * 122 EllipticPI (n, m or n, phi, m), 123 EllipticRC, 124 EllipticRD, 125 EllipticRE, 126 EllipticRF, 127 EllipticRG,
 * 128 EllipticRJ, 129 EllipticRK, 130 EllipticRM, 131 HypergeometricU, 132 Hypergeometric0F1, 133 Hypergeometric1F1,
 * 134 Hypergeometric2F1, 135 InverseZeta, 136 InverseBeta, 137 InverseCoshIntegral, 138 InverseGamma, 139
 * InverseLnErfi, 140 InverseSinhIntegral, 141 JacobianAmp, 142 JacobianCn, 143 JacobianDn, 144 JacobianSn, 145
 * JacobiTheta1, 146 JacobiTheta2, 147 JacobiTheta3, 148 JacobiTheta4, 149 LnErfi, 150 LnBarnesG, 151
 * EllipticBulirschCel, 152 EllipticBulirschEl1, 153 EllipticBulirschEl2, 154 EllipticBulirschEl3, 155 Truncate, 156
 * Frac, 157 ConSelect, 158 GoodwinStaton, 159 HurwitzZeta, 160 DirichletEta, 161 DirichletBeta, 162 VoigtFunK, 163
 * VoigtFunL, 164 VoigtDiffLX, 165 VoigtDiffLY, 166 VoigtDiffKY, 167 VoigtDiffKX, 168 PolyLog, 169 BoseEinstein, 170
 * FermiDirac, 171 Glasser. Add and Mul take any number of arguments; the others as many as the math_ function of the
 * like name, in its order. Wherever a code of two arguments is taken, 7 subtracts and 8 divides; where one of one
 * argument is, 38 1/Sin, 39 1/Cos, 40 1/Sinh, 41 1/Cosh, 42 Asin(1/x), 43 Acos(1/x), 44 Asinh(1/x), 45 Acosh(1/x). A
 * code without a meaning throws std::out_of_range with the text "invalid map<K, T> key". Where a node is built,
 * arguments beyond the count of its kind are dropped; fewer than that throw std::invalid_argument, and so does the code
 * 1, as a variable is made by its name alone. Nothing is added to the store then.
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
 * @param code  kind that can do with one argument, or 38 to 45
 * @return node, in the store until sym_clearTempVar
 */
ORVANE_API SymObject* sym_funOneParam(SymObject* node, uint8_t code);

/**
 * New node f(a, b), on clones.
 *
 * @param a, b  nodes of the store, as for sym_funOneParam
 * @param code  kind of two arguments, 7 (a - b) or 8 (a / b); 51 is taken as 82
 * @return node, in the store until sym_clearTempVar
 */
ORVANE_API SymObject* sym_funTwoParam(SymObject* a, SymObject* b, uint8_t code);

/**
 * New node of any number of arguments, on clones.
 *
 * @param nodes  [count] nodes of the store, as for sym_funOneParam
 * @param count  number of arguments; 0 is valid for Add and Mul
 * @param code   kind; 7, 8 and 38 to 45 have no meaning here
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
 * @param code  kind of two arguments, 7 or 8
 * @return matrix, released by sym_freeMatrix2d
 */
ORVANE_API SymMatrix2d* sym_sameTwoFun(const SymMatrix2d* a, const SymMatrix2d* b, uint8_t code);

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
 * @param code    200 trace, 201 inverse (cofactors over the determinant), 202 determinant (expansion by cofactors),
 *                204 transpose, 206 sum of all elements, 208 skew-symmetric matrix K of a vector v of three elements,
 *                K w = v x w
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
