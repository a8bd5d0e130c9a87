#include "editor/RapidJsonUtils.h"

#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

namespace OrrelinEngine { namespace RapidJsonUtils {

JsonValue* valueByPointer(JsonValue& root, Containers::StringView pointer) {
    /* RapidJSON also takes URI fragments, which begin with "#" */
    if(!pointer.isEmpty() && pointer[0] != '/')
        return nullptr;
    const rapidjson::GenericPointer<JsonValue> parsed{
        pointer.isEmpty() ? "" : pointer.data(), pointer.size()};
    return parsed.IsValid() ? parsed.Get(root) : nullptr;
}

}}
