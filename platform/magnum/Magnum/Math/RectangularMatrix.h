#ifndef Magnum_Math_RectangularMatrix_h
#define Magnum_Math_RectangularMatrix_h

/** @file
 * @brief Class @ref Magnum::Math::RectangularMatrix
 */

#include "Magnum/Math/Vector.h"

namespace Magnum { namespace Math {

/** @brief Column-major matrix */
template<std::size_t cols, std::size_t rows, class T> class RectangularMatrix {
public:
    /** @brief Element type */
    typedef T Type;

    enum : std::size_t {
        Cols = cols, /**< Column count */
        Rows = rows /**< Row count */
    };

    /** @brief Zero matrix */
    constexpr /*implicit*/ RectangularMatrix() noexcept {}

    /** @brief Matrix of given columns */
    template<class... U, std::enable_if_t<sizeof...(U) + 1 == cols, int> = 0>
    constexpr /*implicit*/ RectangularMatrix(
        const Vector<rows, T>& first, const U&... next) noexcept:
        _data{first, next...} {}

    /** @brief Column */
    constexpr Vector<rows, T>& operator[](std::size_t column) {
        return _data[column];
    }

    /** @overload */
    constexpr const Vector<rows, T>& operator[](std::size_t column) const {
        return _data[column];
    }

    /** @brief Raw data, column by column */
    constexpr T* data() { return _data[0].data(); }

    /** @overload */
    constexpr const T* data() const { return _data[0].data(); }

    /** @brief Equality within the precision of the type */
    bool operator==(const RectangularMatrix<cols, rows, T>& other) const {
        return std::equal(_data, _data + cols, other._data);
    }

    /** @brief Inequality */
    bool operator!=(const RectangularMatrix<cols, rows, T>& other) const {
        return !(*this == other);
    }

    /** @brief Multiply with a vector */
    Vector<rows, T> operator*(const Vector<cols, T>& vector) const {
        Vector<rows, T> out;
        for(std::size_t i = 0; i != cols; ++i)
            out += _data[i] * vector[i];
        return out;
    }

    /** @brief Multiply with a matrix */
    template<std::size_t size> RectangularMatrix<size, rows, T> operator*(
        const RectangularMatrix<size, cols, T>& other) const {
        RectangularMatrix<size, rows, T> out;
        for(std::size_t i = 0; i != size; ++i)
            out[i] = *this * other[i];
        return out;
    }

private:
    Vector<rows, T> _data[cols];
};

/** @brief Print a matrix, each column on a line */
template<std::size_t cols, std::size_t rows, class T>
Corrade::Utility::Debug& operator<<(Corrade::Utility::Debug& debug,
    const RectangularMatrix<cols, rows, T>& value) {
    debug << "Matrix(" << Corrade::Utility::Debug::nospace;
    for(std::size_t i = 0; i != cols; ++i) {
        if(i)
            debug << Corrade::Utility::Debug::nospace << ","
                  << Corrade::Utility::Debug::newline;
        debug << value[i];
    }
    return debug << Corrade::Utility::Debug::nospace << ")";
}

}}

#endif
