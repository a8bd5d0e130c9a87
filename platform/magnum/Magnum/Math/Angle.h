#ifndef Magnum_Math_Angle_h
#define Magnum_Math_Angle_h

/** @file
 * @brief Class @ref Magnum::Math::Deg, @ref Magnum::Math::Rad, literals @ref
 *      Magnum::Math::Literals
 */

#include "Magnum/Types.h"
#include "Magnum/Math/Math.h"

namespace Magnum { namespace Math {

/** @brief Angle in degrees */
template<class T> class Deg {
public:
    /** @brief Zero angle */
    constexpr /*implicit*/ Deg() noexcept: _value{} {}

    /** @brief Angle of given value */
    constexpr explicit Deg(T value) noexcept: _value{value} {}

    /** @brief Convert from radians */
    constexpr /*implicit*/ Deg(Rad<T> value) noexcept;

    /** @brief The value */
    constexpr explicit operator T() const { return _value; }

    /** @brief Negation */
    constexpr Deg<T> operator-() const { return Deg<T>{-_value}; }

private:
    T _value;
};

/** @brief Angle in radians */
template<class T> class Rad {
public:
    /** @brief Zero angle */
    constexpr /*implicit*/ Rad() noexcept: _value{} {}

    /** @brief Angle of given value */
    constexpr explicit Rad(T value) noexcept: _value{value} {}

    /** @brief Convert from degrees */
    constexpr /*implicit*/ Rad(Deg<T> value) noexcept:
        _value{T(value) * T(3.141592653589793238) / T(180)} {}

    /** @brief The value */
    constexpr explicit operator T() const { return _value; }

    /** @brief Negation */
    constexpr Rad<T> operator-() const { return Rad<T>{-_value}; }

private:
    T _value;
};

template<class T> constexpr Deg<T>::Deg(Rad<T> value) noexcept:
    _value{T(value) * T(180) / T(3.141592653589793238)} {}

namespace Literals { inline namespace AngleLiterals {

/** @brief Angle in degrees */
constexpr Deg<Float> operator"" _degf(long double value) {
    return Deg<Float>{Float(value)};
}

}}

}}

#endif
