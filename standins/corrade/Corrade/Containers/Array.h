#ifndef Corrade_Containers_Array_h
#define Corrade_Containers_Array_h

/** @file
 * @brief Class @ref Corrade::Containers::Array
 */

#include <new>
#include <utility>

#include "Corrade/Tags.h"
#include "Corrade/Containers/ArrayView.h"

namespace Corrade { namespace Containers {

/**
@brief Array of a size given at run time

Owns its elements, can be only moved. A deleter can be given for memory that
didn't come from @cpp new[] @ce; a null one means @cpp delete[] @ce. Growing is
in `Corrade/Containers/GrowableArray.h`. The element access is checked in debug
builds only.
*/
template<class T, class D> class Array {
public:
    /** @brief Element type */
    typedef T Type;

    /** @brief Deleter type */
    typedef D Deleter;

    /** @brief Empty array, no allocation */
    /*implicit*/ Array() noexcept: _data{}, _size{}, _deleter{} {}

    /** @brief Value-initialized elements */
    explicit Array(ValueInitT, std::size_t size):
        Array{size ? new T[size]() : nullptr, size} {}

    /**
     * @brief Uninitialized elements
     *
     * Elements of a type with a constructor have to be constructed with a
     * placement @cpp new @ce before the array is destroyed.
     */
    explicit Array(NoInitT, std::size_t size): Array{} {
        if(!size)
            return;
        _data = static_cast<T*>(::operator new[](size * sizeof(T)));
        _size = size;
        if(!std::is_trivially_default_constructible_v<T> ||
            !std::is_trivially_destructible_v<T>)
            _deleter = destroyUninitialized;
    }

    /** @brief Elements copied from a view */
    /*implicit*/ Array(InPlaceInitT, ArrayView<const T> list):
        Array{NoInit, list.size()} {
        T* out = _data;
        for(const T& i: list)
            new(out++) T(i);
    }

    /** @overload */
    /*implicit*/ Array(InPlaceInitT, std::initializer_list<T> list):
        Array{InPlaceInit, arrayView(list)} {}

    /** @brief Take over existing memory */
    explicit Array(T* data, std::size_t size, D customDeleter = {}) noexcept:
        _data{data}, _size{size}, _deleter(customDeleter) {}

    Array(const Array<T, D>&) = delete;

    /** @brief Move constructor, @p other becomes empty */
    Array(Array<T, D>&& other) noexcept:
        _data{other._data}, _size{other._size}, _deleter(other._deleter) {
        other.forget();
    }

    ~Array() {
        if constexpr(std::is_same_v<D, void (*)(T*, std::size_t)>) {
            if(!_deleter) {
                delete[] _data;
                return;
            }
        }
        _deleter(_data, _size);
    }

    Array<T, D>& operator=(const Array<T, D>&) = delete;

    /** @brief Move assignment, swaps the contents */
    Array<T, D>& operator=(Array<T, D>&& other) noexcept {
        std::swap(_data, other._data);
        std::swap(_size, other._size);
        std::swap(_deleter, other._deleter);
        return *this;
    }

    /** @brief Whether the array is non-null */
    explicit operator bool() const { return _data; }

    /** @brief Data */
    T* data() { return _data; }
    const T* data() const { return _data; } /**< @overload */

    /** @brief Deleter */
    D deleter() const { return _deleter; }

    /** @brief Element count */
    std::size_t size() const { return _size; }

    /** @brief Whether there are no elements */
    bool isEmpty() const { return !_size; }

    /** @brief Pointer to the first element */
    T* begin() { return _data; }
    const T* begin() const { return _data; } /**< @overload */

    /** @brief Pointer to after the last element */
    T* end() { return _data + _size; }
    const T* end() const { return _data + _size; } /**< @overload */

    /** @brief Element access. Expects that @p i is in range. */
    T& operator[](std::size_t i) { return view()[i]; }
    const T& operator[](std::size_t i) const {
        return view()[i];
    } /**< @overload */

    /** @copydoc ArrayView::slice() */
    ArrayView<T> slice(std::size_t begin, std::size_t end) {
        return view().slice(begin, end);
    }
    ArrayView<const T> slice(std::size_t begin, std::size_t end) const {
        return view().slice(begin, end);
    } /**< @overload */

    /** @copydoc ArrayView::prefix() */
    ArrayView<const T> prefix(std::size_t size) const {
        return view().prefix(size);
    }

    /** @copydoc ArrayView::exceptPrefix() */
    ArrayView<T> exceptPrefix(std::size_t size) {
        return view().exceptPrefix(size);
    }

    /**
     * @brief Give up ownership
     *
     * The array is empty afterwards. The caller frees the memory with the
     * @ref deleter() that the array had before.
     */
    T* release() {
        T* const data = _data;
        forget();
        return data;
    }

private:
    static void destroyUninitialized(T* data, std::size_t size) {
        for(T *i = data, *end = data + size; i != end; ++i)
            i->~T();
        ::operator delete[](data);
    }

    ArrayView<T> view() { return {_data, _size}; }
    ArrayView<const T> view() const { return {_data, _size}; }

    void forget() {
        _data = nullptr;
        _size = 0;
        _deleter = D{};
    }

    T* _data;
    std::size_t _size;
    D _deleter;
};

namespace Implementation {
template<class T, class D> struct IsViewable<Array<T, D>>: std::true_type {};
}

}}

#endif
