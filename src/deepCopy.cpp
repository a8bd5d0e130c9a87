#include "deepCopy.h"

#include <rapidjson/document.h>

namespace OrrelinEngine {

namespace {

/* Passes everything on to the document, with all texts to be copied */
struct CopyingHandler {
    typedef char Ch;

    bool Null() { return out.Null(); }
    bool Bool(bool b) { return out.Bool(b); }
    bool Int(int i) { return out.Int(i); }
    bool Uint(unsigned i) { return out.Uint(i); }
    bool Int64(std::int64_t i) { return out.Int64(i); }
    bool Uint64(std::uint64_t i) { return out.Uint64(i); }
    bool Double(double d) { return out.Double(d); }
    bool RawNumber(const char* s, rapidjson::SizeType size, bool) {
        return out.RawNumber(s, size, true);
    }
    bool String(const char* s, rapidjson::SizeType size, bool) {
        return out.String(s, size, true);
    }
    bool StartObject() { return out.StartObject(); }
    bool Key(const char* s, rapidjson::SizeType size, bool) {
        return out.Key(s, size, true);
    }
    bool EndObject(rapidjson::SizeType size) { return out.EndObject(size); }
    bool StartArray() { return out.StartArray(); }
    bool EndArray(rapidjson::SizeType size) { return out.EndArray(size); }

    JsonDocument& out;
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
    JsonDocument document{&allocator};
    auto copy = [&value](JsonDocument& out) {
        CopyingHandler handler{out};
        return value.Accept(handler);
    };
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
