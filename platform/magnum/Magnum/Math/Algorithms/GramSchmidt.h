#ifndef Magnum_Math_Algorithms_GramSchmidt_h
#define Magnum_Math_Algorithms_GramSchmidt_h

/** @file
 * @brief Function @ref
 *      Magnum::Math::Algorithms::gramSchmidtOrthonormalizeInPlace()
 */

#include "Magnum/Math/RectangularMatrix.h"

namespace Magnum { namespace Math { namespace Algorithms {

/**
 * @brief Make the columns orthogonal and of length one, starting from the first
 */
template<std::size_t cols, std::size_t rows, class T>
void gramSchmidtOrthonormalizeInPlace(
    RectangularMatrix<cols, rows, T>& matrix) {
    static_assert(
        cols <= rows, "there can't be more orthogonal columns than rows");
    for(std::size_t i = 0; i != cols; ++i) {
        for(std::size_t j = 0; j != i; ++j)
            matrix[i] -= matrix[i].projectedOntoNormalized(matrix[j]);
        matrix[i] = matrix[i].normalized();
    }
}

}}}

#endif
