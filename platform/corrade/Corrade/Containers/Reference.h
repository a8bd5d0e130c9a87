#ifndef Corrade_Containers_Reference_h
#define Corrade_Containers_Reference_h

/** @file
 * @brief Class @ref Corrade::Containers::Reference
 */

#include "Corrade/Containers/Containers.h"

namespace Corrade { namespace Containers {

/** @brief Reference that can be stored in containers */
template<class T> class Reference {
public:
    /** @brief Type of the object */
    typedef T Type;

    /** @brief Refer to an object */
    constexpr /*implicit*/ Reference(T& reference) noexcept:
        _reference{&reference} {}

    Reference(T&&) = delete;

    /** @brief Refer to an object of a derived type */
    template<class U,
        std::enable_if_t<!std::is_same_v<T, U> && std::is_convertible_v<U*, T*>,
            int> = 0>
    constexpr /*implicit*/ Reference(Reference<U> other) noexcept:
        _reference{&other.get()} {}

    /** @brief The object */
    constexpr /*implicit*/ operator T&() const { return *_reference; }
    constexpr T& get() const { return *_reference; } /**< @overload */
    constexpr T* operator->() const { return _reference; } /**< @overload */
    constexpr T& operator*() const { return *_reference; } /**< @overload */

private:
    T* _reference;
};

}}

#endif
