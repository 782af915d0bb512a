// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Filter {

/// Derivative at every point of the polynomial through it and its nearest neighbours, five points in all or as many as
/// there are: exact for polynomials of degree 4. A single point has 0. dy must not be x or y.
void derivative(std::span<const double> x, const double* y, double* dy);

/// The same for abscissae 0, dh, 2 dh, ...
void derivativeEven(std::span<const double> y, double dh, double* dy);

/// out[i] = x[i+1] - x[i]; returns how many.
int32_t firstDifferences(std::span<const double> x, double* out);

/// Derivative at every point of the least-squares polynomial of a degree through the `width` points around it.
void derivativeByPieces(std::span<const double> x, const double* y, std::size_t degree, std::size_t width, double* dy);

}  // namespace Filter
