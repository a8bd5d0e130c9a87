#include "DocumentIndex.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string_view>
#include <Corrade/Utility/Assert.h>

#include "PointerTokens.h"

namespace OrrelinEngine {

namespace {

/* Below this a search is as fast as an index */
constexpr std::uint32_t LargeObject = 48;
/* After that many searches of an object, building its index anew is cheaper */
constexpr std::uint32_t MaxSearches = 16;
/* Members of all indexed objects that are never too many */
constexpr std::size_t MinSweep = 65536;
constexpr std::uint32_t Free = ~std::uint32_t{};

std::uint32_t hashOf(const char* data, std::size_t size) {
    const std::size_t hash =
        std::hash<std::string_view>{}(std::string_view{data, size});
    return std::uint32_t(hash ^ (hash >> 32));
}

const JsonValue::Member& memberAt(
    const JsonValue& object, std::uint32_t position) {
    return *(object.MemberBegin() + std::ptrdiff_t(position));
}

bool isNamed(const JsonValue& object, std::uint32_t position,
    Containers::StringView name) {
    const JsonValue& n = memberAt(object, position).name;
    return n.GetStringLength() == name.size() &&
        (name.isEmpty() ||
            std::memcmp(n.GetString(), name.data(), name.size()) == 0);
}

std::uint32_t search(const JsonValue& object, Containers::StringView name) {
    const std::uint32_t count = object.MemberCount();
    std::uint32_t i = 0;
    while(i != count && !isNamed(object, i, name))
        ++i;
    return i;
}

}

void ObjectIndex::growTable(std::size_t memberCount) {
    std::size_t size = 128;
    while(size < memberCount * 2)
        size *= 2;
    if(size <= _slots.size())
        return;

    std::vector<Slot> old = std::move(_slots);
    _slots.assign(size, Slot{0, Free});
    _used = 0;
    for(const Slot& slot: old)
        if(slot.position != Free)
            insert(slot.hash, slot.position);
}

void ObjectIndex::insert(std::uint32_t hash, std::uint32_t position) {
    const std::size_t mask = _slots.size() - 1;
    std::size_t i = hash & mask;
    while(_slots[i].position != Free)
        i = (i + 1) & mask;
    _slots[i] = {hash, position};
    ++_used;
}

void ObjectIndex::extend(const JsonValue& object) {
    const std::uint32_t count = object.MemberCount();
    growTable(_used + count - _count);
    for(; _count != count; ++_count) {
        const JsonValue& name = memberAt(object, _count).name;
        insert(hashOf(name.GetString(), name.GetStringLength()), _count);
    }
    rememberLast(object);
}

void ObjectIndex::rememberLast(const JsonValue& object) {
    if(!_count)
        return;
    const JsonValue& name = memberAt(object, _count - 1).name;
    _lastName = name.GetString();
    _lastHash = hashOf(name.GetString(), name.GetStringLength());
}

bool ObjectIndex::lastStands(const JsonValue& object) const {
    if(!_count || object.MemberCount() < _count)
        return false;
    const JsonValue& name = memberAt(object, _count - 1).name;
    return name.GetString() == _lastName &&
        hashOf(name.GetString(), name.GetStringLength()) == _lastHash;
}

void ObjectIndex::checkComplete(const JsonValue& object) {
    /* Whatever was removed and added directly, the member at the end of those
       that are known is another one then */
    if(_complete && !lastStands(object)) {
        _complete = false;
        _vainSearches = 0;
    }
}

void ObjectIndex::rebuild(const JsonValue& object) {
    _slots.clear();
    _used = 0;
    _count = 0;
    _surprises = 0;
    extend(object);
}

std::uint32_t ObjectIndex::findHinted(const JsonValue& object,
    Containers::StringView name, std::uint32_t hash) const {
    const std::uint32_t count = object.MemberCount();
    /* If members were erased directly, what followed them moved up */
    const std::uint32_t moved =
        count < _count ? std::min(_count - count, MaxSearches) : 0;

    std::uint32_t found = count;
    const std::size_t mask = _slots.size() - 1;
    for(std::size_t i = hash & mask; _slots[i].position != Free;
        i = (i + 1) & mask) {
        if(_slots[i].hash != hash)
            continue;
        const std::uint32_t hint = _slots[i].position;
        for(std::uint32_t by = 0; by <= moved && by <= hint; ++by)
            /* Of members with the same name the first one is meant */
            if(hint - by < found && isNamed(object, hint - by, name)) {
                found = hint - by;
                break;
            }
    }
    return found;
}

std::uint32_t ObjectIndex::find(
    const JsonValue& object, Containers::StringView name, std::uint64_t epoch) {
    const std::uint32_t count = object.MemberCount();
    if(_slots.empty() || _surprises > MaxSearches)
        rebuild(object);
    if(!epoch || epoch != _epoch) {
        _epoch = epoch;
        _vainSearches = 0;
        _complete = false;
    }
    if(count != _count)
        checkComplete(object);
    if(count > _count)
        extend(object);

    const std::uint32_t hash = hashOf(name.data(), name.size());
    const std::uint32_t hinted = findHinted(object, name, hash);
    if(hinted != count)
        return hinted;
    checkComplete(object);
    if(_complete)
        return count;

    const std::uint32_t searched = search(object, name);
    if(searched != count) {
        ++_surprises;
        growTable(_used + 1);
        insert(hash, searched);
    } else if(++_vainSearches > MaxSearches) {
        rebuild(object);
        _complete = true;
    }
    return searched;
}

void ObjectIndex::appended(const JsonValue& object) {
    /* If it wasn't in step with the object, the next look-up extends it */
    if(_count + 1 == object.MemberCount())
        extend(object);
}

std::size_t ObjectIndex::slotOf(
    std::uint32_t hash, std::uint32_t position) const {
    const std::size_t mask = _slots.size() - 1;
    std::size_t i = hash & mask;
    while(_slots[i].position != Free && _slots[i].position != position)
        i = (i + 1) & mask;
    return i;
}

void ObjectIndex::freeSlot(std::size_t slot) {
    /* What was put after it for want of a free slot moves up, so that no
       probing sequence is cut */
    const std::size_t mask = _slots.size() - 1;
    for(;;) {
        std::size_t i = slot;
        do {
            i = (i + 1) & mask;
        } while(_slots[i].position != Free &&
            ((i - _slots[i].hash) & mask) < ((i - slot) & mask));
        _slots[slot] = _slots[i];
        if(_slots[i].position == Free)
            break;
        slot = i;
    }
    --_used;
}

void ObjectIndex::erase(JsonValue& object, std::uint32_t position) {
    checkComplete(object);
    const JsonValue& name = memberAt(object, position).name;
    const std::uint32_t hash = hashOf(name.GetString(), name.GetStringLength());
    object.EraseMember(object.MemberBegin() + std::ptrdiff_t(position));
    /* If it wasn't in step with the object, its hints stay hints */
    if(_count != object.MemberCount() + 1)
        return;
    --_count;
    rememberLast(object);

    const std::size_t slot = slotOf(hash, position);
    if(_slots[slot].position != Free)
        freeSlot(slot);
    if(position == _count)
        return;
    for(Slot& i: _slots)
        i.position -= i.position > position && i.position != Free;
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
                 : search(object, name);
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
