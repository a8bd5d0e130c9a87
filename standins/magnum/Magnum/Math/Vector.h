#ifndef Magnum_Math_Vector_h
#define Magnum_Math_Vector_h

/** @file
 * @brief Class @ref Magnum::Math::Vector, function @ref Magnum::Math::dot()
 */

#include <cmath>

#include "Magnum/Magnum.h"

namespace Magnum { namespace Math {

/** @brief Vector of @p size components */
template<std::size_t size, class T> class Vector {
public:
    /** @brief Zero vector */
    constexpr /*implicit*/ Vector() noexcept: _data{} {}

    /** @brief Component access */
    constexpr T& operator[](std::size_t i) { return _data[i]; }
    constexpr T operator[](std::size_t i) const { return _data[i]; }

    /** @brief Subtract a vector */
    Vector<size, T>& operator-=(const Vector<size, T>& other) {
        for(std::size_t i = 0; i != size; ++i)
            _data[i] -= other._data[i];
        return *this;
    }

    /** @brief Multiply with a number */
    Vector<size, T>& operator*=(T number) {
        for(T& i: _data)
            i *= number;
        return *this;
    }
    Vector<size, T> operator*(T number) const {
        return Vector<size, T>(*this) *= number;
    } /**< @overload */

    /** @brief Divide by a number */
    Vector<size, T>& operator/=(T number) {
        for(T& i: _data)
            i /= number;
        return *this;
    }
    Vector<size, T> operator/(T number) const {
        return Vector<size, T>(*this) /= number;
    } /**< @overload */

    /** @brief Negation */
    Vector<size, T> operator-() const { return *this * T(-1); }

    /** @brief Length */
    T length() const { return std::sqrt(dot(*this, *this)); }

    /**
     * @brief The same direction with length of one
     *
     * Not a number if the length is zero.
     */
    Vector<size, T> normalized() const { return *this / length(); }

private:
    T _data[size];
};

/** @brief Dot product */
template<std::size_t size, class T>
T dot(const Vector<size, T>& a, const Vector<size, T>& b) {
    T out{};
    for(std::size_t i = 0; i != size; ++i)
        out += a[i] * b[i];
    return out;
}

}}

#endif
