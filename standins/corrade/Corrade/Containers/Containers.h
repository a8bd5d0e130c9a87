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
template<class> class EnumSet;
template<class> class Optional;
template<class, class> class Pair;
template<class> class Pointer;
template<std::size_t, class> class StaticArray;
template<class T> using Array3 = StaticArray<3, T>;

enum class StringViewFlag : std::size_t;
typedef EnumSet<StringViewFlag> StringViewFlags;

class String;
class StringIterable;
class StringView;

}}

#endif
