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

As everybody knows the seed, keys can be chosen to have one hash. Tables of terms
that come from such a project cost as much per key as they have keys, thus
seconds for tens of thousands.
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

Equal are views of the same size and bytes, whatever their flags.
*/
struct StrEq {
    /** @brief Whether @p a and @p b are equal */
    bool operator()(Containers::StringView a, Containers::StringView b) const {
        return a == b;
    }
};

/**
@brief Byte-wise order of strings for the ordered standard containers

Bytes compare as unsigned numbers, so all of ASCII stands before any other
character of UTF-8; a prefix stands before what it begins. Being transparent,
it lets ordered containers be searched with a view, without a copy of it.
*/
struct StrLess {
    /** @brief Tells the standard containers that any string type compares */
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
