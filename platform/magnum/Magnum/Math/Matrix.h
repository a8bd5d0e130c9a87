#ifndef Magnum_Math_Matrix_h
#define Magnum_Math_Matrix_h

/** @file
 * @brief Class @ref Magnum::Math::Matrix, alias @ref Magnum::Math::Matrix3x3,
 *      @ref Magnum::Math::Matrix4x4
 */

#include "Magnum/Math/RectangularMatrix.h"
#include "Magnum/Math/Vector3.h"

namespace Magnum { namespace Math {

/** @brief Square matrix */
template<std::size_t size, class T> class Matrix
    : public RectangularMatrix<size, size, T> {
public:
    /** @brief Identity matrix, possibly scaled */
    /*implicit*/ Matrix(T value = T(1)) noexcept {
        for(std::size_t i = 0; i != size; ++i)
            (*this)[i][i] = value;
    }

    /** @brief Matrix of given columns */
    template<class... U, std::enable_if_t<sizeof...(U) + 1 == size, int> = 0>
    constexpr /*implicit*/ Matrix(
        const Vector<size, T>& first, const U&... next) noexcept:
        RectangularMatrix<size, size, T>{first, next...} {}

    /** @brief Copy of a generic matrix */
    constexpr /*implicit*/ Matrix(
        const RectangularMatrix<size, size, T>& other) noexcept:
        RectangularMatrix<size, size, T>(other) {}

    /** @brief Multiply with a vector */
    Vector<size, T> operator*(const Vector<size, T>& other) const {
        return RectangularMatrix<size, size, T>::operator*(other);
    }

    /** @brief Multiply with a matrix */
    Matrix<size, T> operator*(const Matrix<size, T>& other) const {
        return RectangularMatrix<size, size, T>::operator*(other);
    }

    /** @brief Determinant */
    T determinant() const {
        static_assert(size == 3, "implemented only for 3x3 matrices");
        return dot(cross<T>((*this)[0], (*this)[1]), (*this)[2]);
    }
};

}}

#endif
