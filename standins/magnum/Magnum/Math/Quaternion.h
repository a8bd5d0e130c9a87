#ifndef Magnum_Math_Quaternion_h
#define Magnum_Math_Quaternion_h

/** @file
 * @brief Class @ref Magnum::Math::Quaternion
 */

#include <Corrade/Utility/DebugAssert.h>

#include "Magnum/Math/Matrix.h"

namespace Magnum { namespace Math {

/** @brief Quaternion */
template<class T> class Quaternion {
public:
    /**
     * @brief Rotation of a matrix
     *
     * Expects a rotation without reflection, thus a determinant of one; checked
     * in debug builds only.
     */
    static Quaternion<T> fromMatrix(const Matrix3x3<T>& matrix);

    /** @brief Quaternion of a vector and a scalar part */
    constexpr /*implicit*/ Quaternion(
        const Vector3<T>& vector, T scalar) noexcept:
        _vector(vector),
        _scalar{scalar} {}

    /** @brief Vector part */
    constexpr const Vector3<T> vector() const { return _vector; }

    /** @brief Scalar part */
    constexpr T scalar() const { return _scalar; }

    /** @brief Rotation matrix of a quaternion of length one */
    Matrix3x3<T> toMatrix() const;

private:
    Vector3<T> _vector;
    T _scalar;
};

template<class T>
Quaternion<T> Quaternion<T>::fromMatrix(const Matrix3x3<T>& m) {
    CORRADE_INTERNAL_DEBUG_ASSERT(std::abs(m.determinant() - T(1)) <
        (sizeof(T) == sizeof(float) ? T(3.0e-5) : T(3.0e-14)));

    /* The antisymmetric part holds the vector, scaled by the scalar. Dividing
       by that is precise unless it's close to zero. */
    const T trace = m[0][0] + m[1][1] + m[2][2];
    if(trace > T(0)) {
        const T scalar = std::sqrt(trace + T(1)) / T(2);
        return {Vector3<T>{
                    m[1][2] - m[2][1], m[2][0] - m[0][2], m[0][1] - m[1][0]} /
                (T(4) * scalar),
            scalar};
    }

    /* Otherwise start from the largest component of the vector */
    std::size_t i = m[1][1] > m[0][0] ? 1 : 0;
    if(m[2][2] > m[i][i])
        i = 2;
    const std::size_t j = (i + 1) % 3;
    const std::size_t k = (i + 2) % 3;

    Vector3<T> vector;
    vector[i] = std::sqrt(m[i][i] - m[j][j] - m[k][k] + T(1)) / T(2);
    const T scale = T(4) * vector[i];
    vector[j] = (m[i][j] + m[j][i]) / scale;
    vector[k] = (m[i][k] + m[k][i]) / scale;
    return {vector, (m[j][k] - m[k][j]) / scale};
}

template<class T> Matrix3x3<T> Quaternion<T>::toMatrix() const {
    /* Each column is a rotated axis */
    Matrix3x3<T> out;
    for(std::size_t i = 0; i != 3; ++i) {
        Vector3<T> axis;
        axis[i] = T(1);
        const Vector3<T> twice = cross<T>(_vector, axis) * T(2);
        const Vector3<T> second = cross<T>(_vector, twice);
        for(std::size_t j = 0; j != 3; ++j)
            out[i][j] = axis[j] + twice[j] * _scalar + second[j];
    }
    return out;
}

}}

#endif
