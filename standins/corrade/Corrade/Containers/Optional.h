#ifndef Corrade_Containers_Optional_h
#define Corrade_Containers_Optional_h

/** @file
 * @brief Class @ref Corrade::Containers::Optional, tag @ref
 *      Corrade::Containers::NullOpt
 */

#include <optional>

#include "Corrade/Containers/Containers.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade { namespace Containers {

/** @brief Tag of an empty optional */
struct NullOptT {
    struct Init {};
    constexpr explicit NullOptT(Init) {}
};

/** @brief Empty optional */
constexpr NullOptT NullOpt{NullOptT::Init{}};

/**
@brief Value that may be missing

That there is one is checked on access, in debug builds only.
*/
template<class T> class Optional {
public:
    /** @brief No value */
    /*implicit*/ Optional(NullOptT = NullOpt) noexcept {}

    /** @brief Copy of a value */
    /*implicit*/ Optional(const T& value): _value{value} {}

    /** @brief Moved value */
    /*implicit*/ Optional(T&& value): _value{std::move(value)} {}

    /** @brief Whether there is a value */
    explicit operator bool() const { return bool(_value); }

    /** @brief Whether both have an equal value or both have none */
    bool operator==(const Optional<T>& other) const {
        return _value == other._value;
    }
    bool operator!=(const Optional<T>& other) const {
        return !(*this == other);
    } /**< @overload */

    /** @brief Access the value. Expects that there is one. */
    T* operator->() {
        CORRADE_INTERNAL_DEBUG_ASSERT(_value);
        return &*_value;
    }
    const T* operator->() const {
        CORRADE_INTERNAL_DEBUG_ASSERT(_value);
        return &*_value;
    } /**< @overload */

    T& operator*() & { return *operator->(); } /**< @overload */
    const T& operator*() const& { return *operator->(); } /**< @overload */
    T operator*() && { return std::move(*operator->()); } /**< @overload */

private:
    std::optional<T> _value;
};

}}

#endif
