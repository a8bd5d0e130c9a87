#ifndef Corrade_Containers_EnumSet_h
#define Corrade_Containers_EnumSet_h

/** @file
 * @brief Class @ref Corrade::Containers::EnumSet, macro @ref
 *      CORRADE_ENUMSET_OPERATORS(), @ref CORRADE_ENUMSET_FRIEND_OPERATORS()
 */

#include "Corrade/Containers/Containers.h"

namespace Corrade { namespace Containers {

/**
@brief Set of the bits of an enum

@p T is a scoped enum whose values are bits. The union of two enum values comes
from @ref CORRADE_ENUMSET_OPERATORS() or
@ref CORRADE_ENUMSET_FRIEND_OPERATORS().
*/
template<class T> class EnumSet {
public:
    /** @brief The enum */
    typedef T Type;

    /** @brief Its underlying type */
    typedef std::underlying_type_t<T> UnderlyingType;

    /** @brief Empty set */
    constexpr /*implicit*/ EnumSet() noexcept: _value{} {}

    /** @brief Set of one value */
    constexpr /*implicit*/ EnumSet(T value) noexcept:
        _value{UnderlyingType(value)} {}

    /** @brief Set of given bits */
    constexpr explicit EnumSet(UnderlyingType value) noexcept: _value{value} {}

    /** @brief Equality */
    constexpr bool operator==(EnumSet other) const {
        return _value == other._value;
    }

    /** @brief Whether @p other is contained in this set */
    constexpr bool operator>=(EnumSet other) const {
        return (_value & other._value) == other._value;
    }

    /** @brief Union */
    constexpr EnumSet operator|(EnumSet other) const {
        return EnumSet(UnderlyingType(_value | other._value));
    }

    /** @brief Intersection */
    constexpr EnumSet operator&(EnumSet other) const {
        return EnumSet(UnderlyingType(_value & other._value));
    }

    /** @brief Whether any bit is set */
    constexpr explicit operator bool() const { return _value != 0; }

    /** @brief The bits */
    constexpr explicit operator UnderlyingType() const { return _value; }

private:
    UnderlyingType _value;
};

/** @brief Union of two enum values, for namespace scope */
#define CORRADE_ENUMSET_OPERATORS(set)                                         \
    constexpr set operator|(set::Type a, set b) {                              \
        return set(a) | b;                                                     \
    }

/** @brief Union of two enum values, for the class that the set is in */
#define CORRADE_ENUMSET_FRIEND_OPERATORS(set)                                  \
    friend CORRADE_ENUMSET_OPERATORS(set)

}}

#endif
