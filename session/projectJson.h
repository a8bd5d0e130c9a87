#ifndef Orrelin_session_projectJson_h
#define Orrelin_session_projectJson_h

#include <Corrade/Containers/String.h>
#include <rapidjson/stringbuffer.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

struct ProjectLook;

/* Reads a project document. On failure returns what is wrong and where. */
Containers::String parseProject(JsonDocument& document,
    Containers::StringView content, unsigned int maxDepth);

/* Writes a project document with given look, and to lost how many numbers had
   to become null as they aren't finite. If it couldn't be read again, returns
   what is wrong. */
Containers::String writeProject(const JsonValue& document,
    const ProjectLook& look, rapidjson::StringBuffer& out, std::size_t& lost,
    unsigned int maxDepth);

/* The same for any value of it */
Containers::String writeValue(const JsonValue& value, const ProjectLook& look,
    rapidjson::StringBuffer& out, std::size_t& lost, unsigned int maxDepth);

}

#endif
