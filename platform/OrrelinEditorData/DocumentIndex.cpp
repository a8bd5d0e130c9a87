#include "DocumentIndex.h"

#include <algorithm>
#include <Corrade/Utility/Assert.h>

#include "PointerTokens.h"

namespace OrrelinEngine {

namespace {

/* Below this a search is as fast as an index */
constexpr std::uint32_t LargeObject = 48;
/* Members of all indexed objects that are never too many */
constexpr std::size_t MinSweep = 65536;

}

void DocumentIndex::beginScope(bool continues) {
    if(_scopes++)
        return;
    if(!continues || !_continues)
        ++_epoch;
    _continues = continues;
}

void DocumentIndex::sweep() {
    _members = 0;
    for(auto i = _objects.begin(); i != _objects.end();) {
        if(!i->second.usedSinceSweep) {
            i = _objects.erase(i);
            continue;
        }
        i->second.usedSinceSweep = false;
        _members += i->second.size();
        ++i;
    }
    _sweepAt = std::max(_members * 2, MinSweep);
}

ObjectIndex* DocumentIndex::indexOf(const JsonValue& object) {
    if(object.MemberCount() < LargeObject)
        return nullptr;
    const void* const members = &*object.MemberBegin();
    const auto found = _objects.find(members);
    if(found != _objects.end()) {
        found->second.usedSinceSweep = true;
        return &found->second;
    }
    if(_members + object.MemberCount() > _sweepAt)
        sweep();
    _members += object.MemberCount();
    return &_objects[members];
}

std::uint32_t DocumentIndex::position(
    JsonValue& object, Containers::StringView name) {
    ObjectIndex* const index = indexOf(object);
    return index ? index->find(object, name, _scopes ? _epoch : 0)
                 : searchMember(object, name);
}

JsonValue* DocumentIndex::findMember(
    JsonValue& object, Containers::StringView name) {
    const std::uint32_t p = position(object, name);
    return p == object.MemberCount() ? nullptr
                                     : &(object.MemberBegin() + p)->value;
}

JsonValue& DocumentIndex::addMember(
    JsonValue& object, Containers::StringView name, JsonAllocator& allocator) {
    ObjectIndex* const index = indexOf(object);
    const void* const before = index ? &*object.MemberBegin() : nullptr;

    object.AddMember(JsonValue{name.data() ? name.data() : "",
                         rapidjson::SizeType(name.size()), allocator},
        JsonValue{}, allocator);

    if(index) {
        const void* const after = &*object.MemberBegin();
        if(after != before) {
            auto node = _objects.extract(before);
            _objects.erase(after);
            node.key() = after;
            _objects.insert(std::move(node));
        }
        index->appended(object);
    }
    return (object.MemberEnd() - 1)->value;
}

void DocumentIndex::eraseMember(JsonValue& object, std::uint32_t position) {
    if(ObjectIndex* const index = indexOf(object))
        index->erase(object, position);
    else
        object.EraseMember(object.MemberBegin() + std::ptrdiff_t(position));
}

JsonValue* DocumentIndex::child(
    JsonValue& parent, const PointerTokens& tokens) {
    if(parent.IsObject())
        return findMember(parent, tokens.name());
    if(!parent.IsArray())
        return nullptr;
    const std::uint32_t index = tokens.index();
    return index < parent.Size() ? &parent[index] : nullptr;
}

JsonValue* DocumentIndex::find(
    JsonValue& root, Containers::StringView pointer) {
    JsonValue* value = &root;
    PointerTokens tokens{pointer};
    while(value && tokens.next())
        value = child(*value, tokens);
    return value && tokens.reachedEnd() ? value : nullptr;
}

JsonValue& DocumentIndex::create(
    JsonValue& root, Containers::StringView pointer, JsonAllocator& allocator) {
    CORRADE_ASSERT(PointerTokens::isValid(pointer),
        "ProjectFile::create():" << pointer << "is no JSON Pointer", root);

    JsonValue* value = &root;
    PointerTokens tokens{pointer};
    while(tokens.next()) {
        if(JsonValue* const existing = child(*value, tokens)) {
            value = existing;
            continue;
        }
        const std::uint32_t index = tokens.index();
        if(value->IsArray() && tokens.name() == "-") {
            value->PushBack(JsonValue{}, allocator);
            value = &(*value)[value->Size() - 1];
            continue;
        }
        if(index == PointerTokens::NoIndex && !value->IsObject())
            value->SetObject();
        else if(!value->IsArray() && !value->IsObject())
            value->SetArray();

        if(value->IsObject())
            value = &addMember(*value, tokens.name(), allocator);
        else {
            /* For one more it grows by itself, and by more than one */
            if(index > value->Size())
                value->Reserve(index + 1, allocator);
            while(index >= value->Size())
                value->PushBack(JsonValue{}, allocator);
            value = &(*value)[index];
        }
    }
    return *value;
}

bool DocumentIndex::erase(JsonValue& root, Containers::StringView pointer) {
    JsonValue* parent = &root;
    PointerTokens tokens{pointer};
    while(parent && tokens.next() && tokens.hasNext())
        parent = child(*parent, tokens);
    if(!parent || pointer.isEmpty() || !tokens.reachedEnd())
        return false;

    if(parent->IsObject()) {
        const std::uint32_t p = position(*parent, tokens.name());
        if(p == parent->MemberCount())
            return false;
        eraseMember(*parent, p);
        return true;
    }
    if(!parent->IsArray() || !child(*parent, tokens))
        return false;
    parent->Erase(parent->Begin() + tokens.index());
    return true;
}

}
