#ifndef Magnum_Math_Algorithms_GramSchmidt_h
#define Magnum_Math_Algorithms_GramSchmidt_h

/** @file
 * @brief Function @ref
 *      Magnum::Math::Algorithms::gramSchmidtOrthonormalizeInPlace()
 */

#include "Magnum/Math/Matrix.h"

namespace Magnum { namespace Math { namespace Algorithms {

/**
 * @brief Make the columns orthogonal and of length one, starting from the first
 */
template<std::size_t size, class T>
void gramSchmidtOrthonormalizeInPlace(Matrix<size, T>& matrix) {
    for(std::size_t i = 0; i != size; ++i) {
        for(std::size_t j = 0; j != i; ++j)
            matrix[i] -= matrix[j] * dot(matrix[i], matrix[j]);
        matrix[i] /= matrix[i].length();
    }
}

}}}

#endif
