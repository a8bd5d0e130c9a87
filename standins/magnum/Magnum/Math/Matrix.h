#ifndef Magnum_Math_Matrix_h
#define Magnum_Math_Matrix_h

/** @file
 * @brief Class @ref Magnum::Math::Matrix, alias @ref Magnum::Math::Matrix3x3,
 *      @ref Magnum::Math::Matrix4x4
 */

#include "Magnum/Math/Vector3.h"

namespace Magnum { namespace Math {

/** @brief Square matrix, column by column */
template<std::size_t size, class T> class Matrix {
public:
    /** @brief Identity matrix */
    /*implicit*/ Matrix() noexcept {
        for(std::size_t i = 0; i != size; ++i)
            _data[i][i] = T(1);
    }

    /** @brief Column */
    Vector<size, T>& operator[](std::size_t column) { return _data[column]; }
    const Vector<size, T>& operator[](std::size_t column) const {
        return _data[column];
    } /**< @overload */

    /** @brief Multiply with a matrix */
    Matrix<size, T> operator*(const Matrix<size, T>& other) const {
        Matrix<size, T> out;
        for(std::size_t i = 0; i != size; ++i)
            for(std::size_t j = 0; j != size; ++j) {
                out[i][j] = T(0);
                for(std::size_t k = 0; k != size; ++k)
                    out[i][j] += _data[k][j] * other[i][k];
            }
        return out;
    }

    /** @brief Determinant */
    T determinant() const {
        static_assert(size == 3, "implemented only for 3x3 matrices");
        return dot<3, T>(cross<T>(_data[0], _data[1]), _data[2]);
    }

private:
    Vector<size, T> _data[size];
};

}}

#endif
