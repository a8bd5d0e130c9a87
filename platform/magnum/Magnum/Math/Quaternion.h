#ifndef Magnum_Math_Quaternion_h
#define Magnum_Math_Quaternion_h

/** @file
 * @brief Class @ref Magnum::Math::Quaternion
 */

#include "Magnum/Math/Angle.h"
#include "Magnum/Math/Matrix.h"

namespace Magnum { namespace Math {

/** @brief Quaternion */
template<class T> class Quaternion {
public:
    /** @brief Component type */
    typedef T Type;

    /** @brief Rotation around an axis of length one. Expects that it is. */
    static Quaternion<T> rotation(
        Rad<T> angle, const Vector3<T>& normalizedAxis) {
        CORRADE_DEBUG_ASSERT(normalizedAxis.isNormalized(),
            "Math::Quaternion::rotation(): axis"
                << normalizedAxis << "doesn't have a length of one",
            {});
        return {normalizedAxis * std::sin(T(angle) / T(2)),
            std::cos(T(angle) / T(2))};
    }

    /**
     * @brief Rotation of a matrix
     *
     * Expects that it's one with no reflection, which is decided by its
     * determinant being one.
     */
    static Quaternion<T> fromMatrix(const Matrix3x3<T>& matrix);

    /** @brief Identity rotation */
    constexpr /*implicit*/ Quaternion() noexcept: _vector{}, _scalar{T(1)} {}

    /** @brief Quaternion of a vector and a scalar part */
    constexpr /*implicit*/ Quaternion(
        const Vector3<T>& vector, T scalar) noexcept:
        _vector(vector),
        _scalar{scalar} {}

    /** @brief Equality within the precision of the type */
    bool operator==(const Quaternion<T>& other) const {
        return _vector == other._vector &&
            TypeTraits<T>::equals(_scalar, other._scalar);
    }

    /** @brief Inequality */
    bool operator!=(const Quaternion<T>& other) const {
        return !(*this == other);
    }

    /** @brief Vector part */
    constexpr Vector3<T>& vector() { return _vector; }

    /** @overload */
    constexpr const Vector3<T> vector() const { return _vector; }

    /** @brief Scalar part */
    constexpr T& scalar() { return _scalar; }
    constexpr T scalar() const { return _scalar; } /**< @overload */

    /** @brief Rotation matrix of a quaternion of length one */
    Matrix3x3<T> toMatrix() const;

private:
    Vector3<T> _vector;
    T _scalar;
};

/** @brief Print a quaternion */
template<class T> Corrade::Utility::Debug& operator<<(
    Corrade::Utility::Debug& debug, const Quaternion<T>& value) {
    using Corrade::Utility::Debug;
    const Vector3<T> vector = value.vector();
    return debug << "Quaternion({" << Debug::nospace << vector.x()
                 << Debug::nospace << "," << vector.y() << Debug::nospace << ","
                 << vector.z() << Debug::nospace << "}," << value.scalar()
                 << Debug::nospace << ")";
}

template<class T>
Quaternion<T> Quaternion<T>::fromMatrix(const Matrix3x3<T>& m) {
    CORRADE_DEBUG_ASSERT(
        std::abs(m.determinant() - T(1)) < T(3) * TypeTraits<T>::epsilon(),
        "Math::Quaternion::fromMatrix(): not a matrix of a rotation:"
            << Corrade::Utility::Debug::newline << m,
        {});

    /* What the antisymmetric part has is the vector scaled by the scalar. It's
       precise unless the scalar is close to zero. */
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

    Quaternion<T> out;
    out._vector[i] = std::sqrt(m[i][i] - m[j][j] - m[k][k] + T(1)) / T(2);
    const T scale = T(4) * out._vector[i];
    out._vector[j] = (m[i][j] + m[j][i]) / scale;
    out._vector[k] = (m[i][k] + m[k][i]) / scale;
    out._scalar = (m[j][k] - m[k][j]) / scale;
    return out;
}

template<class T> Matrix3x3<T> Quaternion<T>::toMatrix() const {
    /* Each column is a rotated axis */
    Matrix3x3<T> out;
    for(std::size_t i = 0; i != 3; ++i) {
        Vector3<T> axis;
        axis[i] = T(1);
        const Vector3<T> twice = cross(_vector, axis) * T(2);
        out[i] = axis + twice * _scalar + cross(_vector, twice);
    }
    return out;
}

}}

#endif
