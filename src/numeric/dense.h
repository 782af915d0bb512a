// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "numeric/svd.h"

/// Decompositions of square matrices and products, on row-major arrays. Non-finite input gives NaN throughout: none of
/// the iterations below would notice it by itself.
namespace Dense {

double determinant(std::span<const double> a, std::ptrdiff_t n);  ///< by LU with partial pivoting; 1 for n = 0
std::vector<double> inverse(std::span<const double> a, std::ptrdiff_t n);

/// Writes the inverse and gives the determinant, from one decomposition.
double invert(std::span<const double> a, std::ptrdiff_t n, std::span<double> out);

/// A = U T U', T quasi upper triangular, U orthogonal.
struct Schur {
  std::vector<double> u, t;
};
Schur schur(std::span<const double> a, std::ptrdiff_t n);

/// A v = lambda v. Eigenvector i is column i of the n x n arrays, in the order of the decomposition.
struct Eig {
  std::vector<double> valuesRe, valuesIm, vectorsRe, vectorsIm;
};
Eig eig(std::span<const double> a, std::ptrdiff_t n);

/// Pairs (re, im) one after another.
std::vector<double> interleaved(std::span<const double> re, std::span<const double> im);

/// Writes values and eigenvectors of a real spectrum, one by one, in the order of the decomposition. False at the first
/// value with an imaginary part above 1e-12 in size: it and those behind it are not written.
bool realEig(std::span<const double> a, std::ptrdiff_t n, std::span<double> values, std::span<double> vectors);

/// C = A B, A r x m, B m x c.
std::vector<double> dot(std::span<const double> a, std::span<const double> b, std::ptrdiff_t r, std::ptrdiff_t m,
                        std::ptrdiff_t c);

/// Position of the first maximum, from 1. NaN is passed over: a row of nothing else gives 1, an empty one 0.
std::ptrdiff_t firstMaximum(std::span<const double> row);

}  // namespace Dense
