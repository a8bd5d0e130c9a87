#ifndef Magnum_Math_TypeTraits_h
#define Magnum_Math_TypeTraits_h

/** @file
 * @brief Class @ref Magnum::Math::TypeTraits
 */

#include <algorithm>
#include <cmath>

#include "Magnum/Types.h"
#include "Magnum/Math/Math.h"

namespace Magnum { namespace Math {

/** @brief Precision of a floating-point type */
template<class T> struct TypeTraits {
    /**
     * @brief Difference that still counts as equal, relative to values larger
     *      than one
     */
    constexpr static T epsilon() {
        return sizeof(T) == sizeof(Float) ? T(1.0e-5) : T(1.0e-14);
    }

    /** @brief Whether two values are equal within @ref epsilon() */
    static bool equals(T a, T b) {
        return a == b ||
            std::abs(a - b) <
            epsilon() * std::max({T(1), std::abs(a), std::abs(b)});
    }
};

}}

#endif
