#ifndef Magnum_Math_Vector4_h
#define Magnum_Math_Vector4_h

/** @file
 * @brief Class @ref Magnum::Math::Vector4
 */

#include "Magnum/Math/Vector3.h"

namespace Magnum { namespace Math {

/** @brief Four-component vector */
template<class T> class Vector4: public Vector<4, T> {
public:
    /** @brief Zero vector */
    constexpr /*implicit*/ Vector4() noexcept = default;

    /** @brief Vector of given components */
    constexpr /*implicit*/ Vector4(T x, T y, T z, T w) noexcept:
        Vector<4, T>{x, y, z, w} {}

    /** @brief Add a fourth component */
    constexpr /*implicit*/ Vector4(const Vector3<T>& xyz, T w) noexcept:
        Vector<4, T>{xyz.x(), xyz.y(), xyz.z(), w} {}

    /** @brief Copy of a generic vector */
    constexpr /*implicit*/ Vector4(const Vector<4, T>& other) noexcept:
        Vector<4, T>(other) {}

    /** @brief Components */
    constexpr T& x() { return (*this)[0]; }
    constexpr T x() const { return (*this)[0]; } /**< @overload */
    constexpr T& y() { return (*this)[1]; } /**< @overload */
    constexpr T y() const { return (*this)[1]; } /**< @overload */
    constexpr T& z() { return (*this)[2]; } /**< @overload */
    constexpr T z() const { return (*this)[2]; } /**< @overload */
    constexpr T& w() { return (*this)[3]; } /**< @overload */
    constexpr T w() const { return (*this)[3]; } /**< @overload */

    /** @brief First three components */
    constexpr Vector3<T> xyz() const { return {x(), y(), z()}; }

    MAGNUM_VECTOR_SUBCLASS_IMPLEMENTATION(4, Vector4)
};

}}

#endif
