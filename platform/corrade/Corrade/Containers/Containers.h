#ifndef Corrade_Containers_Containers_h
#define Corrade_Containers_Containers_h

/** @file
 * @brief Forward declarations for the @ref Corrade::Containers namespace
 */

#include <cstddef>
#include <type_traits>

namespace Corrade { namespace Containers {

template<class T, class = void (*)(T*, std::size_t)> class Array;
template<class> class ArrayView;
template<class T,
    std::underlying_type_t<T> fullValue = std::underlying_type_t<T>(~0)>
class EnumSet;
template<class> class Optional;
template<class, class> class Pair;
template<class> class Pointer;
template<std::size_t, class> class StaticArray;
template<class T> using Array3 = StaticArray<3, T>;

enum class StringViewFlag : std::size_t;
typedef EnumSet<StringViewFlag,
    (std::size_t{3} << (sizeof(std::size_t) * 8 - 2))>
    StringViewFlags;

template<class> class BasicStringView;
typedef BasicStringView<const char> StringView;
typedef BasicStringView<char> MutableStringView;

class String;
class StringIterable;
class StringIterableIterator;

}}

#endif
