#ifndef Magnum_Math_Vector_h
#define Magnum_Math_Vector_h

/** @file
 * @brief Class @ref Magnum::Math::Vector, function @ref Magnum::Math::dot()
 */

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugAssert.h>

#include "Magnum/Math/TypeTraits.h"

namespace Magnum { namespace Math {

/** @brief Vector of @p size components */
template<std::size_t size, class T> class Vector {
public:
    /** @brief Component type */
    typedef T Type;

    enum : std::size_t {
        Size = size /**< Component count */
    };

    /** @brief Zero vector */
    constexpr /*implicit*/ Vector() noexcept: _data{} {}

    /** @brief Vector of given components */
    template<class... U, std::enable_if_t<sizeof...(U) + 1 == size, int> = 0>
    constexpr /*implicit*/ Vector(T first, U... next) noexcept:
        _data{first, T(next)...} {}

    /** @brief Component access */
    constexpr T& operator[](std::size_t i) { return _data[i]; }

    /** @overload */
    constexpr T operator[](std::size_t i) const { return _data[i]; }

    /** @brief Raw data */
    constexpr T* data() { return _data; }
    constexpr const T* data() const { return _data; } /**< @overload */

    /** @brief Equality within the precision of the type */
    bool operator==(const Vector<size, T>& other) const {
        return std::equal(
            _data, _data + size, other._data, TypeTraits<T>::equals);
    }

    /** @brief Inequality */
    bool operator!=(const Vector<size, T>& other) const {
        return !(*this == other);
    }

    /** @brief Negation */
    Vector<size, T> operator-() const { return *this * T(-1); }

    /** @brief Add a vector */
    Vector<size, T>& operator+=(const Vector<size, T>& other) {
        for(std::size_t i = 0; i != size; ++i)
            _data[i] += other._data[i];
        return *this;
    }

    /** @overload */
    Vector<size, T> operator+(const Vector<size, T>& other) const {
        return Vector<size, T>(*this) += other;
    }

    /** @brief Subtract a vector */
    Vector<size, T>& operator-=(const Vector<size, T>& other) {
        for(std::size_t i = 0; i != size; ++i)
            _data[i] -= other._data[i];
        return *this;
    }

    /** @overload */
    Vector<size, T> operator-(const Vector<size, T>& other) const {
        return Vector<size, T>(*this) -= other;
    }

    /** @brief Multiply with a number */
    Vector<size, T>& operator*=(T number) {
        for(T& i: _data)
            i *= number;
        return *this;
    }

    /** @overload */
    Vector<size, T> operator*(T number) const {
        return Vector<size, T>(*this) *= number;
    }

    /** @brief Divide with a number */
    Vector<size, T>& operator/=(T number) {
        for(T& i: _data)
            i /= number;
        return *this;
    }

    /** @overload */
    Vector<size, T> operator/(T number) const {
        return Vector<size, T>(*this) /= number;
    }

    /** @brief Dot product with itself */
    T dot() const;

    /** @brief Length */
    T length() const { return std::sqrt(dot()); }

    /**
     * @brief The same direction with length of one
     *
     * Not a number if the length is zero.
     */
    Vector<size, T> normalized() const { return *this / length(); }

    /** @brief Whether the length is one within the precision of the type */
    bool isNormalized() const {
        return std::abs(dot() - T(1)) < T(2) * TypeTraits<T>::epsilon();
    }

    /** @brief Projection onto a vector of length one. Expects that it is. */
    Vector<size, T> projectedOntoNormalized(const Vector<size, T>& line) const;

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

/** @brief Multiply a number with a vector */
template<std::size_t size, class T> Vector<size, T> operator*(
    std::common_type_t<T> number, const Vector<size, T>& vector) {
    return vector * number;
}

/** @brief Print a vector */
template<std::size_t size, class T> Corrade::Utility::Debug& operator<<(
    Corrade::Utility::Debug& debug, const Vector<size, T>& value) {
    debug << "Vector(" << Corrade::Utility::Debug::nospace;
    for(std::size_t i = 0; i != size; ++i) {
        if(i)
            debug << Corrade::Utility::Debug::nospace << ",";
        debug << value[i];
    }
    return debug << Corrade::Utility::Debug::nospace << ")";
}

template<std::size_t size, class T> T Vector<size, T>::dot() const {
    return Math::dot(*this, *this);
}

template<std::size_t size, class T>
Vector<size, T> Vector<size, T>::projectedOntoNormalized(
    const Vector<size, T>& line) const {
    CORRADE_DEBUG_ASSERT(line.isNormalized(),
        "Math::Vector::projectedOntoNormalized(): line"
            << line << "doesn't have a length of one",
        {});
    return line * Math::dot(*this, line);
}

/* Operations of a subclass that return the subclass */
#define MAGNUM_VECTOR_SUBCLASS_IMPLEMENTATION(size, Type)                      \
    Type<T> operator-() const {                                                \
        return Vector<size, T>::operator-();                                   \
    }                                                                          \
    Type<T>& operator+=(const Vector<size, T>& other) {                        \
        Vector<size, T>::operator+=(other);                                    \
        return *this;                                                          \
    }                                                                          \
    Type<T> operator+(const Vector<size, T>& other) const {                    \
        return Vector<size, T>::operator+(other);                              \
    }                                                                          \
    Type<T>& operator-=(const Vector<size, T>& other) {                        \
        Vector<size, T>::operator-=(other);                                    \
        return *this;                                                          \
    }                                                                          \
    Type<T> operator-(const Vector<size, T>& other) const {                    \
        return Vector<size, T>::operator-(other);                              \
    }                                                                          \
    Type<T>& operator*=(T number) {                                            \
        Vector<size, T>::operator*=(number);                                   \
        return *this;                                                          \
    }                                                                          \
    Type<T> operator*(T number) const {                                        \
        return Vector<size, T>::operator*(number);                             \
    }                                                                          \
    Type<T>& operator/=(T number) {                                            \
        Vector<size, T>::operator/=(number);                                   \
        return *this;                                                          \
    }                                                                          \
    Type<T> operator/(T number) const {                                        \
        return Vector<size, T>::operator/(number);                             \
    }                                                                          \
    Type<T> normalized() const {                                               \
        return Vector<size, T>::normalized();                                  \
    }

}}

#endif
