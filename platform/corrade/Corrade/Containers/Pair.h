#ifndef Corrade_Containers_Pair_h
#define Corrade_Containers_Pair_h

/** @file
 * @brief Class @ref Corrade::Containers::Pair, function @ref
 *      Corrade::Containers::pair()
 */

#include <utility>

#include "Corrade/Containers/Containers.h"

namespace Corrade { namespace Containers {

/** @brief Pair of values */
template<class F, class S> class Pair {
public:
    /** @brief Value-initialized pair */
    constexpr /*implicit*/ Pair(): _first(), _second() {}

    /** @brief Pair of given values */
    constexpr /*implicit*/ Pair(const F& first, const S& second):
        _first(first), _second(second) {}

    /** @overload */
    constexpr /*implicit*/ Pair(const F& first, S&& second):
        _first(first), _second(std::move(second)) {}

    /** @overload */
    constexpr /*implicit*/ Pair(F&& first, const S& second):
        _first(std::move(first)), _second(second) {}

    /** @overload */
    constexpr /*implicit*/ Pair(F&& first, S&& second):
        _first(std::move(first)), _second(std::move(second)) {}

    /** @brief Equality */
    constexpr bool operator==(const Pair<F, S>& other) const {
        return _first == other._first && _second == other._second;
    }

    /** @brief Inequality */
    constexpr bool operator!=(const Pair<F, S>& other) const {
        return !(*this == other);
    }

    /** @brief First value */
    constexpr F& first() & { return _first; }
    constexpr F first() && { return std::move(_first); } /**< @overload */
    constexpr const F& first() const& { return _first; } /**< @overload */

    /** @brief Second value */
    constexpr S& second() & { return _second; }
    constexpr S second() && { return std::move(_second); } /**< @overload */
    constexpr const S& second() const& { return _second; } /**< @overload */

private:
    F _first;
    S _second;
};

/** @brief Make a pair */
template<class F, class S>
constexpr Pair<std::decay_t<F>, std::decay_t<S>> pair(F&& first, S&& second) {
    return {std::forward<F>(first), std::forward<S>(second)};
}

}}

#endif
