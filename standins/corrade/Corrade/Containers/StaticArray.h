#ifndef Corrade_Containers_StaticArray_h
#define Corrade_Containers_StaticArray_h

/** @file
 * @brief Class @ref Corrade::Containers::StaticArray
 */

#include <utility>

#include "Corrade/Tags.h"
#include "Corrade/Utility/DebugAssert.h"

namespace Corrade { namespace Containers {

/** @brief Array with a size known at compile time */
template<std::size_t size, class T> class StaticArray {
public:
    /** @brief Given elements. Expects one argument for each. */
    template<class... Args>
    /*implicit*/ StaticArray(InPlaceInitT, Args&&... args):
        _data{T(std::forward<Args>(args))...} {
        static_assert(sizeof...(Args) == size, "wrong number of elements");
    }

    /** @brief Element access. Expects that @p i is in range. */
    const T& operator[](std::size_t i) const {
        CORRADE_INTERNAL_DEBUG_ASSERT(i < size);
        return _data[i];
    }

private:
    T _data[size];
};

}}

#endif
