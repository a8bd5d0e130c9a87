#ifndef Corrade_Containers_Pair_h
#define Corrade_Containers_Pair_h

/** @file
 * @brief Class @ref Corrade::Containers::Pair
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
    constexpr /*implicit*/ Pair(F first, S second):
        _first(std::move(first)), _second(std::move(second)) {}

    /** @brief First value */
    constexpr const F& first() const { return _first; }

    /** @brief Second value */
    constexpr const S& second() const { return _second; }

private:
    F _first;
    S _second;
};

}}

#endif
