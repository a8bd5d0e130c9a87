#ifndef Orrelin_shared_RecordPath_h
#define Orrelin_shared_RecordPath_h

/** @file
 * @brief Namespace @ref OrrelinEngine::RecordPath
 */

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/**
@brief Names in record paths

A record path is a JSON Pointer (RFC 6901): "/" separates its segments, and in
a member name, "~" is written "~0" and "/" is written "~1". Segments are always
escaped so, both those that @ref RecordAccess::keys() yields and those given to
@ref RecordAccess::operator[](). Pass a name from elsewhere, such as that of
a script parameter or a language code, through @ref segment() before it goes
into a path.
*/
namespace RecordPath {

/** @brief Whether the segment of @p name differs from the name itself */
inline bool needsEscape(Containers::StringView name) {
    for(const char c: name)
        if(c == '~' || c == '/')
            return true;
    return false;
}

/** @brief The segment of a record path that names @p name */
inline Containers::String segment(Containers::StringView name) {
    if(!needsEscape(name))
        return Containers::String{name};

    std::size_t size = name.size();
    for(const char c: name)
        size += c == '~' || c == '/';
    Containers::String out{Corrade::NoInit, size};
    char* o = out.data();
    for(const char c: name) {
        const bool escape = c == '~' || c == '/';
        *o++ = escape ? '~' : c;
        if(escape)
            *o++ = c == '~' ? '0' : '1';
    }
    return out;
}

/**
@brief The name that a segment of a record path stands for

Leaves a "~" as it is that isn't followed by "0" or "1".
*/
inline Containers::String name(Containers::StringView segment) {
    Containers::String out{segment};
    if(!segment.contains('~'))
        return out;

    std::size_t size = 0;
    for(std::size_t i = 0; i != segment.size(); ++i) {
        const char next = i + 1 == segment.size() ? '\0' : segment[i + 1];
        const bool escape = segment[i] == '~' && (next == '0' || next == '1');
        out[size++] = !escape ? segment[i] : next == '0' ? '~' : '/';
        i += escape;
    }
    return Containers::String{out.prefix(size)};
}

}

}

#endif
