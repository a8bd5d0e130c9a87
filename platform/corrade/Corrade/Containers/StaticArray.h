#ifndef Corrade_Containers_StaticArray_h
#define Corrade_Containers_StaticArray_h

/** @file
 * @brief Class @ref Corrade::Containers::StaticArray
 */

#include <utility>

#include "Corrade/Tags.h"
#include "Corrade/Containers/ArrayView.h"

namespace Corrade { namespace Containers {

/** @brief Array with a size known at compile time */
template<std::size_t size_, class T> class StaticArray {
public:
    /** @brief Element type */
    typedef T Type;

    enum : std::size_t {
        Size = size_ /**< Element count */
    };

    /** @brief Value-initialized elements */
    /*implicit*/ StaticArray(): _data{} {}

    /** @brief Given elements. Expects one argument for each. */
    template<class... Args>
    /*implicit*/ StaticArray(InPlaceInitT, Args&&... args):
        _data{T(std::forward<Args>(args))...} {
        static_assert(sizeof...(Args) == size_, "wrong number of elements");
    }

    /** @brief Data */
    T* data() { return _data; }
    const T* data() const { return _data; } /**< @overload */

    /** @brief Element count */
    constexpr std::size_t size() const { return size_; }

    /** @brief Pointer to the first element */
    T* begin() { return _data; }
    const T* begin() const { return _data; } /**< @overload */

    /** @brief Pointer to after the last element */
    T* end() { return _data + size_; }
    const T* end() const { return _data + size_; } /**< @overload */

    /** @brief Element access. Expects that @p i is in range. */
    T& operator[](std::size_t i) { return ArrayView<T>{*this}[i]; }

    /** @overload */
    const T& operator[](std::size_t i) const {
        return ArrayView<const T>{*this}[i];
    }

private:
    T _data[size_];
};

namespace Implementation {
template<std::size_t size, class T> struct IsViewable<StaticArray<size, T>>
    : std::true_type {};
}

}}

#endif
