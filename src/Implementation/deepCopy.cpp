/* Copies scalars and arrays directly, objects by passing them through
   a document that builds them. Both recurse; a value too deep for that is
   copied again from its root with a stack on the heap. All three take memory of
   the pool for exactly as many elements, members and bytes as there are. */

#include "Implementation/deepCopy.h"

#include <cstddef>
#include <utility>
#include <vector>
#include <rapidjson/document.h>

namespace OrrelinEngine {

namespace {

/* How deep the copying recurses. That is fastest, but a document that was built
   by pushes can be deeper than the call stack has room for. */
constexpr unsigned int RecursionDepth = 100;

bool isContainer(const JsonValue& value) {
    return value.IsObject() || value.IsArray();
}

bool isNumberArray(const JsonValue& value) {
    if(!value.IsArray())
        return false;
    for(const JsonValue& i: value.GetArray())
        if(!i.IsNumber())
            return false;
    return true;
}

/* Builds a value from the events of another. A document knows the number of
   members when an object ends and makes room for just these; members added one
   by one would leave spare room and outgrown arrays in the pool. All texts are
   copied, whatever the source says. Containers deeper than depthLeft are
   refused. */
struct CopyingDocument: JsonDocument {
    explicit CopyingDocument(JsonAllocator& allocator, unsigned int depth):
        JsonDocument{&allocator}, depthLeft{depth} {}

    bool String(const char* s, rapidjson::SizeType size, bool) {
        return JsonDocument::String(s, size, true);
    }
    bool Key(const char* s, rapidjson::SizeType size, bool) {
        return JsonDocument::Key(s, size, true);
    }
    bool StartObject() { return depthLeft-- && JsonDocument::StartObject(); }
    bool StartArray() { return depthLeft-- && JsonDocument::StartArray(); }
    bool EndObject(rapidjson::SizeType size) {
        ++depthLeft;
        return JsonDocument::EndObject(size);
    }
    bool EndArray(rapidjson::SizeType size) {
        ++depthLeft;
        return JsonDocument::EndArray(size);
    }

    unsigned int depthLeft;
};

/* A container and how many of its values were taken */
struct Place {
    const JsonValue* container;
    std::ptrdiff_t taken;
};

Place start(const JsonValue& container, JsonDocument& out) {
    container.IsObject() ? out.StartObject() : out.StartArray();
    return {&container, 0};
}

void end(const JsonValue& container, JsonDocument& out) {
    container.IsObject() ? out.EndObject(container.MemberCount())
                         : out.EndArray(container.Size());
}

/* The next value, after passing on its name if it's a member. Null if all were
   taken. */
const JsonValue* takeNext(Place& place, CopyingDocument& out) {
    const JsonValue& in = *place.container;
    if(in.IsArray()) {
        const JsonValue* const next = in.Begin() + place.taken++;
        return next == in.End() ? nullptr : next;
    }
    const auto next = in.MemberBegin() + place.taken++;
    if(next == in.MemberEnd())
        return nullptr;
    next->name.Accept(out);
    return &next->value;
}

/* Moved out, without the document's stack */
JsonValue valueOf(CopyingDocument& document) {
    return JsonValue{std::move(static_cast<JsonValue&>(document))};
}

/* Like RapidJSON's Accept(), without recursion */
JsonValue copyInSteps(const JsonValue& value, JsonAllocator& allocator) {
    CopyingDocument document{allocator, 0};
    /* Containers go to the base class, which has no limit to the depth; names
       and scalars to the document, which copies texts */
    auto add = [&](JsonDocument& out) {
        std::vector<Place> places{start(value, out)};
        while(!places.empty()) {
            const JsonValue* const next = takeNext(places.back(), document);
            if(!next) {
                end(*places.back().container, out);
                places.pop_back();
            } else if(isContainer(*next))
                places.push_back(start(*next, out));
            else
                next->Accept(document);
        }
        return true;
    };
    document.Populate(add);
    return valueOf(document);
}

JsonValue copyOf(
    const JsonValue& value, JsonAllocator& allocator, unsigned int depth) {
    if(value.IsString())
        return JsonValue{value.GetString(), value.GetStringLength(), allocator};
    if(value.IsArray() && depth) {
        JsonValue out{rapidjson::kArrayType};
        out.Reserve(value.Size(), allocator);
        for(const JsonValue& i: value.GetArray())
            out.PushBack(copyOf(i, allocator, depth - 1), allocator);
        return out;
    }
    if(!isContainer(value))
        return JsonValue{value, allocator};

    CopyingDocument document{allocator, depth};
    auto add = [&](JsonDocument&) { return value.Accept(document); };
    document.Populate(add);
    /* Refused as too deep, so nothing was put in. Texts copied until then stay
       in the pool unused. */
    if(document.IsNull())
        return copyInSteps(value, allocator);
    return valueOf(document);
}

}

JsonValue deepCopy(const JsonValue& value, JsonAllocator& allocator) {
    return copyOf(value, allocator, RecursionDepth);
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
