#ifndef Orrelin_shared_StringFunctors_h
#define Orrelin_shared_StringFunctors_h

/** @file
 * @brief Struct @ref OrrelinEngine::StrHash, @ref OrrelinEngine::StrEq, @ref OrrelinEngine::StrLess
 */

#include <cstring>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/MurmurHash2.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/**
@brief Hash of a string for the unordered standard containers

The 64-bit @relativeref{Corrade,Utility::MurmurHash2} with seed 0 over the bytes of the
view; its flags and a terminating zero don't count. Linear in the length.

The seed is known, so a project can choose keys that all have the same hash. In
a table of such keys, a look-up compares them one by one: gathering tens of
thousands of terms takes seconds then.
*/
struct StrHash {
    /** @brief Hash of @p s */
    std::size_t operator()(Containers::StringView s) const {
        const Utility::MurmurHash2::Digest digest =
            Utility::MurmurHash2{}(s.data(), s.size());
        std::size_t hash;
        static_assert(sizeof(hash) == sizeof(digest), "");
        std::memcpy(&hash, digest.byteArray(), sizeof(hash));
        return hash;
    }
};

/**
@brief Equality of strings for the unordered standard containers

Views are equal if their sizes and bytes are, whatever their flags.
*/
struct StrEq {
    /** @brief Whether @p a and @p b are equal */
    bool operator()(Containers::StringView a, Containers::StringView b) const {
        return a == b;
    }
};

/**
@brief Byte-wise order of strings for the ordered standard containers

Bytes compare as unsigned numbers, so all of ASCII comes before any other
character of UTF-8. A string comes after its own prefixes. Ordered containers
can be searched with a view, without a copy of it.
*/
struct StrLess {
    /** @brief Lets standard containers compare with any string type */
    typedef void is_transparent;

    /** @brief Whether @p a stands before @p b */
    bool operator()(Containers::StringView a, Containers::StringView b) const {
        const std::size_t common = a.size() < b.size() ? a.size() : b.size();
        const int order = common ? std::memcmp(a.data(), b.data(), common) : 0;
        return order ? order < 0 : a.size() < b.size();
    }
};

}

#endif
