#ifndef Corrade_Containers_GrowableArray_h
#define Corrade_Containers_GrowableArray_h

/** @file
 * @brief Function @ref Corrade::Containers::arrayAppend() and others that
 *      change the size of an @ref Corrade::Containers::Array
 *
 * An array that was passed to these has spare capacity after its elements,
 * recognized by its deleter; it stays a usual array for everything else. Any
 * other array gets reallocated first. Growing is amortized.
 */

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <memory>

#include "Corrade/Containers/Array.h"

namespace Corrade { namespace Containers {

namespace Implementation {

/* The capacity is stored in front of the elements */
template<class T> struct GrowableStorage {
    static_assert(alignof(T) <= alignof(std::max_align_t),
        "overaligned types are not supported");
    enum : std::size_t { Offset = std::max(alignof(T), sizeof(std::size_t)) };

    static void* memory(T* data) {
        return data ? reinterpret_cast<char*>(data) - Offset : nullptr;
    }

    /* Contents are kept if there are any */
    static T* reallocate(T* data, std::size_t capacity) {
        void* const out =
            std::realloc(memory(data), Offset + capacity * sizeof(T));
        if(!out)
            throw std::bad_alloc{};
        new(out) std::size_t{capacity};
        return reinterpret_cast<T*>(static_cast<char*>(out) + Offset);
    }

    static std::size_t capacity(const T* data) {
        return *reinterpret_cast<const std::size_t*>(
            reinterpret_cast<const char*>(data) - Offset);
    }

    static void deleter(T* data, std::size_t size) {
        for(T *i = data, *end = data + size; i != end; ++i)
            i->~T();
        std::free(memory(data));
    }
};

/* Changes just the size, elements have to be constructed or destructed by the
   caller */
template<class T> void arraySetSize(Array<T>& array, std::size_t size) {
    array = Array<T>{array.release(), size, GrowableStorage<T>::deleter};
}

}

/** @brief Whether an array has been already made growable */
template<class T> bool arrayIsGrowable(const Array<T>& array) {
    return array.deleter() == Implementation::GrowableStorage<T>::deleter;
}

/** @brief How many elements fit without a reallocation */
template<class T> std::size_t arrayCapacity(const Array<T>& array) {
    return arrayIsGrowable(array)
        ? Implementation::GrowableStorage<T>::capacity(array.data())
        : array.size();
}

namespace Implementation {

template<class T> void arrayReallocate(Array<T>& array, std::size_t capacity) {
    const std::size_t size = array.size();
    if(std::is_trivially_copyable_v<T> && arrayIsGrowable(array)) {
        /* If it throws, the array still owns the previous memory */
        T* const data = GrowableStorage<T>::reallocate(array.data(), capacity);
        array.release();
        array = Array<T>{data, size, GrowableStorage<T>::deleter};
        return;
    }

    Array<T> out{GrowableStorage<T>::reallocate(nullptr, capacity), 0,
        GrowableStorage<T>::deleter};
    std::uninitialized_copy(std::make_move_iterator(array.begin()),
        std::make_move_iterator(array.end()), out.data());
    arraySetSize(out, size);
    array = std::move(out);
}

/* Where to construct next `count` elements */
template<class T> T* arraySpare(Array<T>& array, std::size_t count) {
    const std::size_t size = array.size();
    if(!arrayIsGrowable(array) || arrayCapacity(array) - size < count)
        arrayReallocate(
            array, std::max({size + count, size + size / 2, 64 / sizeof(T)}));
    return array.end();
}

/* Makes elements constructed there a part of the array */
template<class T>
ArrayView<T> arrayTakeSpare(Array<T>& array, std::size_t count) {
    arraySetSize(array, array.size() + count);
    return array.exceptPrefix(array.size() - count);
}

}

/**
 * @brief Make space for @p capacity elements
 *
 * Does nothing if there's enough already. Returns the actual capacity.
 */
template<class T>
std::size_t arrayReserve(Array<T>& array, std::size_t capacity) {
    if(arrayCapacity(array) < capacity)
        Implementation::arrayReallocate(array, capacity);
    return arrayCapacity(array);
}

/**
 * @brief Append an element constructed from @p args, which can't be ones of the
 *      array
 */
template<class T, class... Args>
T& arrayAppend(Array<T>& array, InPlaceInitT, Args&&... args) {
    new(Implementation::arraySpare(array, 1)) T{std::forward<Args>(args)...};
    return Implementation::arrayTakeSpare(array, 1)[0];
}

/** @brief Append copies of elements, which can be ones of the array */
template<class T> ArrayView<T> arrayAppend(
    Array<T>& array, std::common_type_t<ArrayView<const T>> values) {
    const bool own =
        std::less_equal<const T*>{}(array.begin(), values.data()) &&
        std::less<const T*>{}(values.data(), array.end());
    const std::size_t offset = own ? values.data() - array.data() : 0;

    T* const out = Implementation::arraySpare(array, values.size());
    std::uninitialized_copy_n(
        own ? array.data() + offset : values.data(), values.size(), out);
    return Implementation::arrayTakeSpare(array, values.size());
}

/** @overload */
template<class T> ArrayView<T> arrayAppend(
    Array<T>& array, std::initializer_list<std::common_type_t<T>> values) {
    return arrayAppend(array, arrayView(values));
}

/** @brief Append a copy of an element, which can be one of the array */
template<class T>
T& arrayAppend(Array<T>& array, const std::common_type_t<T>& value) {
    return arrayAppend(array, arrayView(&value, 1))[0];
}

/** @brief Append an element, which can't be one of the array */
template<class T>
T& arrayAppend(Array<T>& array, std::common_type_t<T>&& value) {
    new(Implementation::arraySpare(array, 1)) T(std::move(value));
    return Implementation::arrayTakeSpare(array, 1)[0];
}

/** @brief Append @p count value-initialized elements */
template<class T>
ArrayView<T> arrayAppend(Array<T>& array, ValueInitT, std::size_t count) {
    std::uninitialized_value_construct_n(
        Implementation::arraySpare(array, count), count);
    return Implementation::arrayTakeSpare(array, count);
}

/** @brief Append @p count uninitialized elements */
template<class T>
ArrayView<T> arrayAppend(Array<T>& array, NoInitT, std::size_t count) {
    Implementation::arraySpare(array, count);
    return Implementation::arrayTakeSpare(array, count);
}

/**
 * @brief Remove the last @p count elements
 *
 * Expects that there are that many.
 */
template<class T>
void arrayRemoveSuffix(Array<T>& array, std::size_t count = 1) {
    CORRADE_INTERNAL_DEBUG_ASSERT(count <= array.size());
    if(!count)
        return;

    /* The deleter has to be the one that can handle spare capacity */
    if(!arrayIsGrowable(array))
        Implementation::arrayReallocate(array, array.size());
    for(T& i: array.exceptPrefix(array.size() - count))
        i.~T();
    Implementation::arraySetSize(array, array.size() - count);
}

/** @brief Resize, new elements are value-initialized */
template<class T> void arrayResize(Array<T>& array, std::size_t size) {
    if(size < array.size())
        arrayRemoveSuffix(array, array.size() - size);
    else
        arrayAppend(array, ValueInit, size - array.size());
}

}}

#endif
