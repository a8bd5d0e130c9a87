#ifndef Magnum_Math_Vector3_h
#define Magnum_Math_Vector3_h

/** @file
 * @brief Class @ref Magnum::Math::Vector3, function @ref Magnum::Math::cross()
 */

#include "Magnum/Math/Vector.h"

namespace Magnum { namespace Math {

/** @brief Three-component vector */
template<class T> class Vector3: public Vector<3, T> {
public:
    /** @brief Zero vector */
    constexpr /*implicit*/ Vector3() noexcept = default;

    /** @brief Vector of given components */
    constexpr /*implicit*/ Vector3(T x, T y, T z) noexcept {
        (*this)[0] = x;
        (*this)[1] = y;
        (*this)[2] = z;
    }

    /** @brief Copy of a generic vector */
    constexpr /*implicit*/ Vector3(const Vector<3, T>& other) noexcept:
        Vector<3, T>(other) {}

    /** @brief Components */
    constexpr T x() const { return (*this)[0]; }
    constexpr T y() const { return (*this)[1]; } /**< @overload */
    constexpr T z() const { return (*this)[2]; } /**< @overload */
};

/** @brief Cross product */
template<class T> Vector3<T> cross(const Vector3<T>& a, const Vector3<T>& b) {
    return {a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(),
        a.x() * b.y() - a.y() * b.x()};
}

}}

#endif
