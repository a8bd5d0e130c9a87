#ifndef Corrade_Containers_Optional_h
#define Corrade_Containers_Optional_h

/** @file
 * @brief Class @ref Corrade::Containers::Optional, tag @ref
 *      Corrade::Containers::NullOpt, function @ref
 *      Corrade::Containers::optional()
 */

#include <optional>

#include "Corrade/Tags.h"
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

/** @brief Value that may be missing */
template<class T> class Optional {
public:
    /** @brief Type of the value */
    typedef T Type;

    /** @brief No value */
    /*implicit*/ Optional(NullOptT = NullOpt) noexcept {}

    /** @brief Copy of a value */
    /*implicit*/ Optional(const T& value): _value{value} {}

    /** @brief Moved value */
    /*implicit*/ Optional(T&& value): _value{std::move(value)} {}

    /** @brief Value constructed from @p args */
    template<class... Args> /*implicit*/ Optional(InPlaceInitT, Args&&... args):
        _value{std::in_place, std::forward<Args>(args)...} {}

    /** @brief Remove the value */
    Optional<T>& operator=(NullOptT) noexcept {
        _value.reset();
        return *this;
    }

    /** @brief Whether there is a value */
    explicit operator bool() const { return bool(_value); }

    /** @brief Whether both have an equal value or both have none */
    bool operator==(const Optional<T>& other) const {
        return _value == other._value;
    }

    /** @overload */
    bool operator==(const T& other) const { return _value == other; }
    bool operator==(NullOptT) const { return !_value; } /**< @overload */

    /** @brief Inequality */
    bool operator!=(const Optional<T>& other) const {
        return !(*this == other);
    }

    /** @overload */
    bool operator!=(const T& other) const { return !(*this == other); }
    bool operator!=(NullOptT) const { return bool(_value); } /**< @overload */

    /** @brief Access the value. Expects that there is one. */
    T* operator->() {
        CORRADE_DEBUG_ASSERT(
            _value, "Containers::Optional: there is no value", nullptr);
        return &*_value;
    }

    /** @overload */
    const T* operator->() const {
        CORRADE_DEBUG_ASSERT(
            _value, "Containers::Optional: there is no value", nullptr);
        return &*_value;
    }

    /** @overload */
    T& operator*() & { return *operator->(); }
    const T& operator*() const& { return *operator->(); } /**< @overload */
    T operator*() && { return std::move(*operator->()); } /**< @overload */

    /** @brief Construct a new value in place of the previous */
    template<class... Args> T& emplace(Args&&... args) {
        return _value.emplace(std::forward<Args>(args)...);
    }

private:
    std::optional<T> _value;
};

/** @brief Make an optional of a value */
template<class T> Optional<std::decay_t<T>> optional(T&& value) {
    return Optional<std::decay_t<T>>{std::forward<T>(value)};
}

/** @brief Make an optional with the value constructed from @p args */
template<class T, class... Args> Optional<T> optional(Args&&... args) {
    return Optional<T>{InPlaceInit, std::forward<Args>(args)...};
}

}}

#endif
