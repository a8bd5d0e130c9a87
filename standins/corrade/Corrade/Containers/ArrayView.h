#ifndef Corrade_Containers_ArrayView_h
#define Corrade_Containers_ArrayView_h

/** @file
 * @brief Class @ref Corrade::Containers::ArrayView, function @ref
 *      Corrade::Containers::arrayView()
 */

#include <initializer_list>

#include "Corrade/Containers/Containers.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade { namespace Containers {

namespace Implementation {
/* Whether data() and size() of a type can become a view. Specialized by
   the containers for themselves. */
template<class> struct IsViewable: std::false_type {};
template<class T> struct IsViewable<ArrayView<T>>: std::true_type {};

/* Type of the elements of such a view; substitution fails for other types */
template<class Container,
    class = std::enable_if_t<IsViewable<std::decay_t<Container>>::value>>
using ViewedType =
    std::remove_pointer_t<decltype(std::declval<Container&>().data())>;
}

/**
@brief View on a contiguous range of elements

Doesn't own what it points to. The element access is checked in debug builds
only.
*/
template<class T> class ArrayView {
public:
    /** @brief Element type */
    typedef T Type;

    /** @brief Null view */
    constexpr /*implicit*/ ArrayView(std::nullptr_t = nullptr) noexcept:
        _data{}, _size{} {}

    /** @brief View on @p size elements from @p data on */
    constexpr /*implicit*/ ArrayView(T* data, std::size_t size) noexcept:
        _data{data}, _size{size} {}

    /** @brief View on a C array */
    template<class U, std::size_t size,
        std::enable_if_t<
            std::is_convertible_v<U*, T*> && sizeof(U) == sizeof(T), int> = 0>
    constexpr /*implicit*/ ArrayView(U (&data)[size]) noexcept:
        _data{data}, _size{size} {}

    /** @brief View on a container or on another view */
    template<class U, class V = Implementation::ViewedType<U>,
        std::enable_if_t<!std::is_same_v<std::decay_t<U>, ArrayView> &&
                std::is_convertible_v<V*, T*> && sizeof(V) == sizeof(T),
            int> = 0>
    constexpr /*implicit*/ ArrayView(U&& other) noexcept:
        _data{other.data()}, _size{other.size()} {}

    /** @brief Data */
    constexpr T* data() const { return _data; }

    /** @brief Element count */
    constexpr std::size_t size() const { return _size; }

    /** @brief Whether there are no elements */
    constexpr bool isEmpty() const { return !_size; }

    /** @brief Pointer to the first element */
    constexpr T* begin() const { return _data; }

    /** @brief Pointer to after the last element */
    constexpr T* end() const { return _data + _size; }

    /** @brief Element access. Expects that @p i is in range. */
    constexpr T& operator[](std::size_t i) const {
        CORRADE_INTERNAL_DEBUG_ASSERT(i < _size);
        return _data[i];
    }

    /** @brief Elements from @p begin to before @p end, both in range */
    constexpr ArrayView<T> slice(std::size_t begin, std::size_t end) const {
        CORRADE_INTERNAL_DEBUG_ASSERT(begin <= end && end <= _size);
        return {_data + begin, end - begin};
    }

    /** @brief First @p size elements */
    constexpr ArrayView<T> prefix(std::size_t size) const {
        return slice(0, size);
    }

    /** @brief All but the first @p size elements */
    constexpr ArrayView<T> exceptPrefix(std::size_t size) const {
        return slice(size, _size);
    }

private:
    T* _data;
    std::size_t _size;
};

/** @brief Constant view on memory of any type, with the size in bytes */
template<> class ArrayView<const void> {
public:
    /** @brief View on a container or on another view */
    template<class U, class V = Implementation::ViewedType<U>>
    constexpr /*implicit*/ ArrayView(U&& other) noexcept:
        _data{other.data()}, _size{other.size() * sizeof(V)} {}

    /** @brief Data */
    constexpr const void* data() const { return _data; }

    /** @brief Size in bytes */
    constexpr std::size_t size() const { return _size; }

private:
    const void* _data;
    std::size_t _size;
};

/** @brief Make a view of a pointer and a size */
template<class T> constexpr ArrayView<T> arrayView(T* data, std::size_t size) {
    return {data, size};
}

/** @brief Make a view of a C array */
template<std::size_t size, class T>
constexpr ArrayView<T> arrayView(T (&data)[size]) {
    return {data, size};
}

/**
 * @brief Make a view of an initializer list
 *
 * The elements are gone once the full expression that has the list ends.
 */
template<class T>
constexpr ArrayView<const T> arrayView(std::initializer_list<T> list) {
    return {list.begin(), list.size()};
}

/** @brief Make a view of a container or of another view */
template<class T, class U = Implementation::ViewedType<T>>
constexpr ArrayView<U> arrayView(T&& other) {
    return {other.data(), other.size()};
}

}}

#endif
