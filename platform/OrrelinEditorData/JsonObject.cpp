#include "editor/JsonObject.h"

#include <limits>
#include <Corrade/Utility/Assert.h>
#include <rapidjson/document.h>

#include "editor/RecordAccess.h"

namespace OrrelinEngine {

JsonObject::~JsonObject() = default;

Containers::StringView JsonObject::asString() const {
    const JsonValue& value = readValue();
    if(!value.IsString())
        return {};
    return {value.GetString(), value.GetStringLength(),
        Containers::StringViewFlag::NullTerminated};
}

bool JsonObject::asBool() const {
    return readValue().IsTrue();
}

void JsonObject::setString(Containers::StringView string) {
    /* RapidJSON adds one for the terminator, which must not overflow */
    CORRADE_ASSERT(
        string.size() < std::numeric_limits<rapidjson::SizeType>::max(),
        "JsonObject::setString(): Can't store a text of" << string.size()
                                                         << "bytes.", );
    /* Copied first: the view may point into the document, where creating the
       place can move it */
    JsonValue value{string.data() ? string.data() : "",
        rapidjson::SizeType(string.size()), allocator()};
    writeValue() = value;
}

std::size_t JsonObject::size() const {
    const JsonValue& value = readValue();
    if(value.IsArray())
        return value.Size();
    return value.IsObject() ? value.MemberCount() : 0;
}

}
