#ifndef Magnum_Math_Matrix4_h
#define Magnum_Math_Matrix4_h

/** @file
 * @brief Class @ref Magnum::Math::Matrix4
 */

#include "Magnum/Math/Angle.h"
#include "Magnum/Math/Matrix.h"
#include "Magnum/Math/Vector4.h"

namespace Magnum { namespace Math {

/** @brief 3D transformation matrix */
template<class T> class Matrix4: public Matrix4x4<T> {
public:
    /** @brief Translation */
    static Matrix4<T> translation(const Vector3<T>& vector) {
        return from(Matrix3x3<T>{}, vector);
    }

    /** @brief Scaling */
    static Matrix4<T> scaling(const Vector3<T>& vector) {
        Matrix3x3<T> out;
        for(std::size_t i = 0; i != 3; ++i)
            out[i][i] = vector[i];
        return from(out, {});
    }

    /** @brief Rotation around an axis of length one. Expects that it is. */
    static Matrix4<T> rotation(Rad<T> angle, const Vector3<T>& normalizedAxis);

    /** @brief Rotation around a coordinate axis */
    static Matrix4<T> rotationX(Rad<T> angle) {
        return rotation(angle, Vector3<T>::xAxis());
    }

    /** @overload */
    static Matrix4<T> rotationY(Rad<T> angle) {
        return rotation(angle, Vector3<T>::yAxis());
    }

    /** @overload */
    static Matrix4<T> rotationZ(Rad<T> angle) {
        return rotation(angle, Vector3<T>::zAxis());
    }

    /** @brief Compose from rotation with scaling and from translation */
    constexpr static Matrix4<T> from(
        const Matrix3x3<T>& rotationScaling, const Vector3<T>& translation) {
        return {{rotationScaling[0][0], rotationScaling[0][1],
                    rotationScaling[0][2], T(0)},
            {rotationScaling[1][0], rotationScaling[1][1],
                rotationScaling[1][2], T(0)},
            {rotationScaling[2][0], rotationScaling[2][1],
                rotationScaling[2][2], T(0)},
            {translation, T(1)}};
    }

    /** @brief Identity matrix */
    /*implicit*/ Matrix4() noexcept = default;

    /** @brief Matrix of given columns */
    constexpr /*implicit*/ Matrix4(const Vector4<T>& first,
        const Vector4<T>& second, const Vector4<T>& third,
        const Vector4<T>& fourth) noexcept:
        Matrix4x4<T>{first, second, third, fourth} {}

    /** @brief Copy of a generic matrix */
    constexpr /*implicit*/ Matrix4(
        const RectangularMatrix<4, 4, T>& other) noexcept:
        Matrix4x4<T>(other) {}

    /** @brief Upper left 3x3 part */
    constexpr Matrix3x3<T> rotationScaling() const {
        return {column(0), column(1), column(2)};
    }

    /** @brief Translation */
    constexpr Vector3<T> translation() const { return column(3); }

    /** @brief Combine transformations */
    Matrix4<T> operator*(const Matrix4<T>& other) const {
        return Matrix4x4<T>::operator*(other);
    }

private:
    constexpr Vector3<T> column(std::size_t i) const {
        return Vector4<T>((*this)[i]).xyz();
    }
};

template<class T> Matrix4<T> Matrix4<T>::rotation(
    const Rad<T> angle, const Vector3<T>& normalizedAxis) {
    CORRADE_DEBUG_ASSERT(normalizedAxis.isNormalized(),
        "Math::Matrix4::rotation(): axis" << normalizedAxis
                                          << "doesn't have a length of one",
        {});

    const T sine = std::sin(T(angle));
    const T cosine = std::cos(T(angle));
    Matrix3x3<T> out;
    for(std::size_t i = 0; i != 3; ++i) {
        Vector3<T> axis;
        axis[i] = T(1);
        out[i] = axis * cosine + cross(normalizedAxis, axis) * sine +
            normalizedAxis * (normalizedAxis[i] * (T(1) - cosine));
    }
    return from(out, {});
}

}}

#endif
