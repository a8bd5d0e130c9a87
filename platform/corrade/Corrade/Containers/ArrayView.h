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

/* What elements such a view has; substitution fails for other types */
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
    constexpr /*implicit*/ ArrayView() noexcept: _data{}, _size{} {}

    /** @overload */
    template<class U,
        std::enable_if_t<std::is_same_v<U, std::nullptr_t>, int> = 0>
    constexpr /*implicit*/ ArrayView(U) noexcept: ArrayView{} {}

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

    /** @brief Whether the view is non-null */
    constexpr explicit operator bool() const { return _data; }

    /** @brief Data */
    constexpr T* data() const { return _data; }

    /** @brief Element count */
    constexpr std::size_t size() const { return _size; }

    /** @brief Whether there are no elements */
    constexpr bool isEmpty() const { return !_size; }

    /** @brief Pointer to the first element */
    constexpr T* begin() const { return _data; }
    constexpr T* cbegin() const { return _data; } /**< @overload */

    /** @brief Pointer to after the last element */
    constexpr T* end() const { return _data + _size; }
    constexpr T* cend() const { return _data + _size; } /**< @overload */

    /** @brief First element. Expects that there is one. */
    constexpr T& front() const { return (*this)[0]; }

    /** @brief Last element. Expects that there is one. */
    constexpr T& back() const { return (*this)[_size - 1]; }

    /** @brief Element access. Expects that @p i is in range. */
    constexpr T& operator[](std::size_t i) const {
        CORRADE_DEBUG_ASSERT(i < _size,
            "Containers::ArrayView::operator[](): index"
                << i << "out of range for" << _size << "elements",
            _data[0]);
        return _data[i];
    }

    /**
     * @brief Elements from @p begin to before @p end
     *
     * Expects that both are in range.
     */
    constexpr ArrayView<T> slice(std::size_t begin, std::size_t end) const {
        CORRADE_DEBUG_ASSERT(begin <= end && end <= _size,
            "Containers::ArrayView::slice(): slice from"
                << begin << "to" << end << "out of range for" << _size
                << "elements",
            {});
        return {_data + begin, end - begin};
    }

    /** @overload */
    constexpr ArrayView<T> slice(T* begin, T* end) const {
        return slice(std::size_t(begin - _data), std::size_t(end - _data));
    }

    /** @brief @p size elements from @p begin on */
    constexpr ArrayView<T> sliceSize(
        std::size_t begin, std::size_t size) const {
        return slice(begin, begin + size);
    }

    /** @brief First @p size elements */
    constexpr ArrayView<T> prefix(std::size_t size) const {
        return slice(0, size);
    }

    /** @brief All but the first @p size elements */
    constexpr ArrayView<T> exceptPrefix(std::size_t size) const {
        return slice(size, _size);
    }

    /** @brief All but the last @p size elements */
    constexpr ArrayView<T> exceptSuffix(std::size_t size) const {
        return slice(0, _size - size);
    }

private:
    T* _data;
    std::size_t _size;
};

namespace Implementation {

/* View on bytes of anything, either const or mutable. The size is in bytes. */
template<class T> class ErasedArrayView {
    template<class U> using IfPointsTo =
        std::enable_if_t<std::is_convertible_v<U*, T*> && !std::is_void_v<U>,
            int>;

public:
    typedef T Type;

    constexpr ErasedArrayView() noexcept: _data{}, _size{} {}
    template<class U,
        std::enable_if_t<std::is_same_v<U, std::nullptr_t>, int> = 0>
    constexpr ErasedArrayView(U) noexcept: ErasedArrayView{} {}
    constexpr ErasedArrayView(T* data, std::size_t size) noexcept:
        _data{data}, _size{size} {}
    template<class U, IfPointsTo<U> = 0>
    constexpr ErasedArrayView(U* data, std::size_t size) noexcept:
        _data{data}, _size{size * sizeof(U)} {}
    template<class U, std::size_t size, IfPointsTo<U> = 0>
    constexpr ErasedArrayView(U (&data)[size]) noexcept:
        _data{data}, _size{size * sizeof(U)} {}
    template<class U, class V = ViewedType<U>, IfPointsTo<V> = 0>
    constexpr ErasedArrayView(U&& other) noexcept:
        _data{other.data()}, _size{other.size() * sizeof(V)} {}

    constexpr explicit operator bool() const { return _data; }
    constexpr T* data() const { return _data; }
    constexpr std::size_t size() const { return _size; }
    constexpr bool isEmpty() const { return !_size; }

private:
    T* _data;
    std::size_t _size;
};

}

/** @brief View on memory of any type, with the size in bytes */
template<> class ArrayView<void>: public Implementation::ErasedArrayView<void> {
public:
    using Implementation::ErasedArrayView<void>::ErasedArrayView;
};

/** @brief Constant view on memory of any type, with the size in bytes */
template<> class ArrayView<const void>
    : public Implementation::ErasedArrayView<const void> {
public:
    using Implementation::ErasedArrayView<const void>::ErasedArrayView;

    constexpr ArrayView() noexcept = default;

    /** @brief Make a mutable view constant */
    constexpr /*implicit*/ ArrayView(ArrayView<void> view) noexcept:
        ErasedArrayView{view.data(), view.size()} {}
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

/** @brief Element count of a C array */
template<std::size_t size_, class T>
constexpr std::size_t arraySize(T (&)[size_]) {
    return size_;
}

}}

#endif
