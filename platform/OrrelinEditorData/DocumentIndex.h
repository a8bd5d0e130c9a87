#ifndef Orrelin_OrrelinEditorData_DocumentIndex_h
#define Orrelin_OrrelinEditorData_DocumentIndex_h

#include <cstdint>
#include <unordered_map>

#include "ObjectIndex.h"

namespace OrrelinEngine {

class PointerTokens;

/* Look-ups in the project document whose cost doesn't grow with the number
   of members of the objects on the way. Holds an index for each large object
   that was looked into, keyed by where its members are in memory. */
class DocumentIndex {
public:
    JsonValue* find(JsonValue& root, Containers::StringView pointer);

    JsonValue& create(JsonValue& root, Containers::StringView pointer,
        JsonAllocator& allocator);

    bool erase(JsonValue& root, Containers::StringView pointer);

    /* Between these two the document is edited only here. A scope that
       continues believes what earlier such scopes made sure of if no other was
       in between. */
    void beginScope(bool continues);
    void endScope() { --_scopes; }

    /* What was made sure of doesn't hold anymore */
    void distrust() { ++_epoch; }

private:
    JsonValue* findMember(JsonValue& object, Containers::StringView name);
    JsonValue& addMember(JsonValue& object, Containers::StringView name,
        JsonAllocator& allocator);
    void eraseMember(JsonValue& object, std::uint32_t position);
    JsonValue* child(JsonValue& parent, const PointerTokens& tokens);

    std::uint32_t position(JsonValue& object, Containers::StringView name);
    ObjectIndex* indexOf(const JsonValue& object);
    void sweep();

    std::unordered_map<const void*, ObjectIndex> _objects;
    /* Of all that is indexed, about */
    std::size_t _members = 0;
    std::size_t _sweepAt = 0;
    int _scopes = 0;
    bool _continues = false;
    std::uint64_t _epoch = 1;
};

}

#endif
