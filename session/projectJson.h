#ifndef Orrelin_session_projectJson_h
#define Orrelin_session_projectJson_h

#include <Corrade/Containers/String.h>
#include <rapidjson/stringbuffer.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

struct ProjectLook;

/* Reads a project document. Returns the fault with its place, or nothing. */
Containers::String parseProject(JsonDocument& document,
    Containers::StringView content, unsigned int maxDepth);

/* Writes a project document with given look. Sets lost to the count of numbers
   that became null because they aren't finite. Returns why the result couldn't
   be read again, or nothing. */
Containers::String writeProject(const JsonValue& document,
    const ProjectLook& look, rapidjson::StringBuffer& out, std::size_t& lost,
    unsigned int maxDepth);

/* The same for any value of a document */
Containers::String writeValue(const JsonValue& value, const ProjectLook& look,
    rapidjson::StringBuffer& out, std::size_t& lost, unsigned int maxDepth);

}

#endif
