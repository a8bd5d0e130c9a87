#include "deepCopy.h"

#include <rapidjson/document.h>

namespace OrrelinEngine {

namespace {

/* Copies all texts that it's given */
struct CopyingDocument: JsonDocument {
    using JsonDocument::JsonDocument;

    bool String(const char* s, rapidjson::SizeType size, bool) {
        return JsonDocument::String(s, size, true);
    }
    bool Key(const char* s, rapidjson::SizeType size, bool) {
        return JsonDocument::Key(s, size, true);
    }
};

bool isNumberArray(const JsonValue& value) {
    if(!value.IsArray())
        return false;
    for(const JsonValue& i: value.GetArray())
        if(!i.IsNumber())
            return false;
    return true;
}

}

JsonValue deepCopy(const JsonValue& value, JsonAllocator& allocator) {
    if(value.IsString())
        return JsonValue{value.GetString(), value.GetStringLength(), allocator};
    if(value.IsArray()) {
        JsonValue out{rapidjson::kArrayType};
        out.Reserve(value.Size(), allocator);
        for(const JsonValue& i: value.GetArray())
            out.PushBack(deepCopy(i, allocator), allocator);
        return out;
    }
    if(!value.IsObject())
        return JsonValue{value, allocator};

    /* Makes room for as many members as there are, which RapidJSON's objects
       can't be asked to */
    CopyingDocument document{&allocator};
    auto copy = [&](JsonDocument&) { return value.Accept(document); };
    document.Populate(copy);
    return JsonValue{std::move(static_cast<JsonValue&>(document))};
}

void deepAssign(
    JsonValue& target, const JsonValue& value, JsonAllocator& allocator) {
    if(&target == &value)
        return;
    if(!isNumberArray(value) || !isNumberArray(target) ||
        target.Size() != value.Size()) {
        target = deepCopy(value, allocator);
        return;
    }
    for(rapidjson::SizeType i = 0; i != value.Size(); ++i)
        target[i].CopyFrom(value[i], allocator);
}

}
