#ifndef Corrade_Containers_EnumSet_h
#define Corrade_Containers_EnumSet_h

/** @file
 * @brief Class @ref Corrade::Containers::EnumSet, macro @ref
 *      CORRADE_ENUMSET_OPERATORS(), @ref CORRADE_ENUMSET_FRIEND_OPERATORS()
 */

#include "Corrade/Tags.h"
#include "Corrade/Containers/Containers.h"

namespace Corrade { namespace Containers {

/**
@brief Set of the bits of an enum

@p T is a scoped enum whose values are bits, @p fullValue all bits that
@ref operator~() may set. Operators with an enum value on the left come from
@ref CORRADE_ENUMSET_OPERATORS() or @ref CORRADE_ENUMSET_FRIEND_OPERATORS().
*/
template<class T, std::underlying_type_t<T> fullValue> class EnumSet {
public:
    /** @brief The enum */
    typedef T Type;

    /** @brief Its underlying type */
    typedef std::underlying_type_t<T> UnderlyingType;

    enum : UnderlyingType {
        FullValue = fullValue /**< All bits */
    };

    /** @brief Empty set */
    constexpr /*implicit*/ EnumSet() noexcept: _value{} {}

    /** @brief Set of one value */
    constexpr /*implicit*/ EnumSet(T value) noexcept:
        _value{UnderlyingType(value)} {}

    /** @brief Set of given bits */
    constexpr explicit EnumSet(UnderlyingType value) noexcept: _value{value} {}

    /** @brief Uninitialized set */
    explicit EnumSet(NoInitT) {}

    /** @brief Equality */
    constexpr bool operator==(EnumSet other) const {
        return _value == other._value;
    }

    /** @brief Inequality */
    constexpr bool operator!=(EnumSet other) const {
        return _value != other._value;
    }

    /** @brief Whether @p other is contained in this set */
    constexpr bool operator>=(EnumSet other) const {
        return (_value & other._value) == other._value;
    }

    /** @brief Whether this set is contained in @p other */
    constexpr bool operator<=(EnumSet other) const { return other >= *this; }

    /** @brief Union */
    constexpr EnumSet operator|(EnumSet other) const {
        return EnumSet(UnderlyingType(_value | other._value));
    }

    /** @brief Union and assign */
    EnumSet& operator|=(EnumSet other) { return *this = *this | other; }

    /** @brief Intersection */
    constexpr EnumSet operator&(EnumSet other) const {
        return EnumSet(UnderlyingType(_value & other._value));
    }

    /** @brief Intersect and assign */
    EnumSet& operator&=(EnumSet other) { return *this = *this & other; }

    /** @brief Values that are in exactly one of the sets */
    constexpr EnumSet operator^(EnumSet other) const {
        return EnumSet(UnderlyingType(_value ^ other._value));
    }

    /** @brief Exclusive-or and assign */
    EnumSet& operator^=(EnumSet other) { return *this = *this ^ other; }

    /** @brief Complement */
    constexpr EnumSet operator~() const {
        return EnumSet(UnderlyingType(fullValue & ~_value));
    }

    /** @brief Whether any bit is set */
    constexpr explicit operator bool() const { return _value != 0; }

    /** @brief The bits */
    constexpr explicit operator UnderlyingType() const { return _value; }

private:
    UnderlyingType _value;
};

/** @brief Free operators of a set, for namespace scope */
#define CORRADE_ENUMSET_OPERATORS(set)                                         \
    constexpr bool operator==(set::Type a, set b) {                            \
        return set(a) == b;                                                    \
    }                                                                          \
    constexpr bool operator!=(set::Type a, set b) {                            \
        return set(a) != b;                                                    \
    }                                                                          \
    constexpr bool operator>=(set::Type a, set b) {                            \
        return set(a) >= b;                                                    \
    }                                                                          \
    constexpr bool operator<=(set::Type a, set b) {                            \
        return set(a) <= b;                                                    \
    }                                                                          \
    constexpr set operator|(set::Type a, set b) {                              \
        return set(a) | b;                                                     \
    }                                                                          \
    constexpr set operator&(set::Type a, set b) {                              \
        return set(a) & b;                                                     \
    }                                                                          \
    constexpr set operator^(set::Type a, set b) {                              \
        return set(a) ^ b;                                                     \
    }                                                                          \
    constexpr set operator~(set::Type a) {                                     \
        return ~set(a);                                                        \
    }

/** @brief Free operators of a set, for the class that the set is in */
#define CORRADE_ENUMSET_FRIEND_OPERATORS(set)                                  \
    friend constexpr bool operator==(typename set::Type a, set b) {            \
        return set(a) == b;                                                    \
    }                                                                          \
    friend constexpr bool operator!=(typename set::Type a, set b) {            \
        return set(a) != b;                                                    \
    }                                                                          \
    friend constexpr bool operator>=(typename set::Type a, set b) {            \
        return set(a) >= b;                                                    \
    }                                                                          \
    friend constexpr bool operator<=(typename set::Type a, set b) {            \
        return set(a) <= b;                                                    \
    }                                                                          \
    friend constexpr set operator|(typename set::Type a, set b) {              \
        return set(a) | b;                                                     \
    }                                                                          \
    friend constexpr set operator&(typename set::Type a, set b) {              \
        return set(a) & b;                                                     \
    }                                                                          \
    friend constexpr set operator^(typename set::Type a, set b) {              \
        return set(a) ^ b;                                                     \
    }                                                                          \
    friend constexpr set operator~(typename set::Type a) {                     \
        return ~set(a);                                                        \
    }

}}

#endif
