#ifndef Corrade_Containers_Pointer_h
#define Corrade_Containers_Pointer_h

/** @file
 * @brief Class @ref Corrade::Containers::Pointer, function @ref
 *      Corrade::Containers::pointer()
 */

#include <memory>

#include "Corrade/Tags.h"
#include "Corrade/Containers/Containers.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade { namespace Containers {

/**
@brief Owning pointer

Compared to @ref std::unique_ptr it passes constness on to what it points to,
and checks that it's not null on access in debug builds.
*/
template<class T> class Pointer {
public:
    /** @brief Type of the object */
    typedef T Type;

    /** @brief Null pointer */
    /*implicit*/ Pointer() noexcept {}

    /** @overload */
    template<class U,
        std::enable_if_t<std::is_same_v<U, std::nullptr_t>, int> = 0>
    /*implicit*/ Pointer(U) noexcept {}

    /** @brief Take over an object allocated with @cpp new @ce */
    explicit Pointer(T* pointer) noexcept: _pointer{pointer} {}

    /** @brief New object constructed from @p args */
    template<class... Args> explicit Pointer(InPlaceInitT, Args&&... args):
        _pointer{new T{std::forward<Args>(args)...}} {}

    /** @brief Take over a pointer to a derived type */
    template<class U, std::enable_if_t<std::is_convertible_v<U*, T*>, int> = 0>
    /*implicit*/ Pointer(Pointer<U>&& other) noexcept:
        _pointer{other.release()} {
        static_assert(std::is_trivially_destructible_v<U> ||
                std::has_virtual_destructor_v<T>,
            "the base has to have a virtual destructor");
    }

    /** @brief Whether the pointer is non-null */
    explicit operator bool() const { return bool(_pointer); }

    /** @brief The object, or null */
    T* get() { return _pointer.get(); }
    const T* get() const { return _pointer.get(); } /**< @overload */

    /** @brief Access the object. Expects that there is one. */
    T* operator->() {
        CORRADE_DEBUG_ASSERT(
            _pointer, "Containers::Pointer: there is no object", nullptr);
        return _pointer.get();
    }

    /** @overload */
    const T* operator->() const {
        CORRADE_DEBUG_ASSERT(
            _pointer, "Containers::Pointer: there is no object", nullptr);
        return _pointer.get();
    }

    /** @overload */
    T& operator*() { return *operator->(); }
    const T& operator*() const { return *operator->(); } /**< @overload */

    /** @brief Delete the object and take over another */
    void reset(T* pointer = nullptr) { _pointer.reset(pointer); }

    /** @brief Delete the object and construct a new one */
    template<class... Args> T& emplace(Args&&... args) {
        _pointer.reset(new T{std::forward<Args>(args)...});
        return *_pointer;
    }

    /** @brief Give up ownership */
    T* release() { return _pointer.release(); }

private:
    std::unique_ptr<T> _pointer;
};

/** @brief Compare with a null pointer */
template<class T> bool operator==(const Pointer<T>& a, std::nullptr_t) {
    return !a;
}

/** @overload */
template<class T> bool operator==(std::nullptr_t, const Pointer<T>& b) {
    return !b;
}

/** @overload */
template<class T> bool operator!=(const Pointer<T>& a, std::nullptr_t) {
    return bool(a);
}

/** @overload */
template<class T> bool operator!=(std::nullptr_t, const Pointer<T>& b) {
    return bool(b);
}

/** @brief Take over an object allocated with @cpp new @ce */
template<class T> Pointer<T> pointer(T* pointer) {
    return Pointer<T>{pointer};
}

/** @brief Allocate an object constructed from @p args */
template<class T, class... Args> Pointer<T> pointer(Args&&... args) {
    return Pointer<T>{InPlaceInit, std::forward<Args>(args)...};
}

}}

#endif
