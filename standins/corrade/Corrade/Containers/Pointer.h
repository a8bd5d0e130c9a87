#ifndef Corrade_Containers_Pointer_h
#define Corrade_Containers_Pointer_h

/** @file
 * @brief Class @ref Corrade::Containers::Pointer
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
    /** @brief Null pointer */
    /*implicit*/ Pointer(std::nullptr_t = nullptr) noexcept {}

    /** @brief Take over an object allocated with @cpp new @ce */
    explicit Pointer(T* pointer) noexcept: _pointer{pointer} {}

    /** @brief New object constructed from @p args */
    template<class... Args> explicit Pointer(InPlaceInitT, Args&&... args):
        _pointer{new T{std::forward<Args>(args)...}} {}

    /** @brief Take over a pointer to a derived type */
    template<class U, std::enable_if_t<std::is_convertible_v<U*, T*>, int> = 0>
    /*implicit*/ Pointer(Pointer<U>&& other) noexcept:
        _pointer{other.release()} {
        static_assert(std::has_virtual_destructor_v<T>,
            "the base has to have a virtual destructor");
    }

    /** @brief Whether the pointer is non-null */
    explicit operator bool() const { return bool(_pointer); }

    /** @brief The object, or null */
    T* get() { return _pointer.get(); }
    const T* get() const { return _pointer.get(); } /**< @overload */

    /** @brief Access the object. Expects that there is one. */
    T* operator->() {
        CORRADE_INTERNAL_DEBUG_ASSERT(_pointer);
        return _pointer.get();
    }
    const T* operator->() const {
        CORRADE_INTERNAL_DEBUG_ASSERT(_pointer);
        return _pointer.get();
    } /**< @overload */

    T& operator*() { return *operator->(); } /**< @overload */
    const T& operator*() const { return *operator->(); } /**< @overload */

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

}}

#endif
