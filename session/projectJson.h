#ifndef Orrelin_session_projectJson_h
#define Orrelin_session_projectJson_h

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

struct ProjectLook;

/* Reads a project document. Returns the fault with its place, or nothing. */
Containers::String parseProject(JsonDocument& document,
    Containers::StringView content, unsigned int maxDepth);

/* "line 3, column 5", where a member begins in a document that was read: given
   are its position among the members of the root object, or of a member of that
   and its own in it, and so on. Reads up to there. */
Containers::String memberPlace(Containers::StringView content,
    Containers::ArrayView<const std::size_t> positions);

/* Writes a project document with given look. Sets lost to the count of numbers
   that became null because they aren't finite. Returns why the result couldn't
   be read again, or nothing. */
Containers::String writeProject(const JsonValue& document,
    const ProjectLook& look, Containers::Array<char>& out, std::size_t& lost,
    unsigned int maxDepth);

/* The same for any value of a document */
Containers::String writeValue(const JsonValue& value, const ProjectLook& look,
    Containers::Array<char>& out, std::size_t& lost, unsigned int maxDepth);

/* Appends a piece to a text that is written */
void append(Containers::Array<char>& out, Containers::StringView text);

}

#endif
