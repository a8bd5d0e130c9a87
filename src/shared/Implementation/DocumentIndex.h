#ifndef Orrelin_shared_Implementation_DocumentIndex
#define Orrelin_shared_Implementation_DocumentIndex

#include <cstdint>
#include <unordered_map>
#include <Corrade/Containers/StringView.h>

#include "shared/Implementation/ObjectIndex.h"

namespace OrrelinEngine {

class PointerTokens;

/* Fills an array up with nulls to a size. Room for more is made in steps that
   grow, but for the sixteen elements that RapidJSON would begin with. */
void extendArray(
    JsonValue& array, std::uint32_t size, JsonAllocator& allocator);

/* Where a JSON Pointer leads in a document, as far as there is something.
   Valid until the document next changes. */
struct DocumentPlace {
    /* Null if there is none */
    JsonValue* value = nullptr;
    /* The innermost object or array on the way to the value, or the scalar in
       its way. Null for the root. */
    JsonValue* container = nullptr;
    /* Of the value in its container */
    std::uint32_t position = 0;
    /* Where in the pointer the first segment begins that leads nowhere, with
       its slash; the pointer's size if none does */
    std::size_t missing = 0;
};

/* Looks up, creates and erases values of a document by JSON Pointer, with the
   rules of RapidJSON's pointers and the result of a search of each object on
   the way from its first member on, but at a cost that doesn't grow with the
   objects. It keeps an index of each large object that was looked into, keyed
   by where its members are in memory. That only proposes where a member may
   stand: whatever was edited elsewhere in between, what it says is checked.

   Two things remain. A name that is absent is searched for, unless it's
   promised that nobody else edits the document. And of members with the same
   name, which JSON allows, the first one is found, or either if another was put
   in front of it elsewhere. */
class DocumentIndex {
public:
    DocumentPlace locate(JsonValue& root, Containers::StringView pointer);

    /* Null if there's no such value or the pointer isn't valid */
    JsonValue* find(JsonValue& root, Containers::StringView pointer) {
        return locate(root, pointer).value;
    }

    /* Creates what is missing of the pointer: a null value, and its parents as
       objects or, where the segment below is an index, as arrays. A scalar in
       the way is replaced, arrays are filled up with nulls to the index, "-"
       appends to one. Expects that the pointer is valid. */
    JsonValue& create(DocumentPlace place, JsonValue& root,
        Containers::StringView pointer, JsonAllocator& allocator);

    /* Erases a value that's there and not the root. What follows it moves up
       by one and stays in order. */
    void erase(const DocumentPlace& place);

    /* Between these two, which nest, nobody else edits the document */
    void beginPromise() { _promise += !_promises++; }
    void endPromise() { --_promises; }

    /* The document is another one now */
    void clear();

private:
    JsonValue& addMember(JsonValue& object, Containers::StringView name,
        JsonAllocator& allocator);
    bool child(JsonValue& parent, const PointerTokens& tokens,
        std::uint32_t& position);

    std::uint32_t position(JsonValue& object, Containers::StringView name);
    ObjectIndex* indexOf(const JsonValue& object);
    ObjectIndex& addIndex(const JsonValue& object);
    void sweep();

    std::unordered_map<const void*, ObjectIndex> _objects;
    /* The one asked last */
    const void* _lastMembers = nullptr;
    ObjectIndex* _lastIndex = nullptr;
    /* Of all that is indexed, about */
    std::size_t _members = 0;
    std::size_t _sweepAt = 0;
    int _promises = 0;
    std::uint64_t _promise = 0;
};

/* Promises for as long as it exists that nobody else edits the document */
class DocumentPromise {
public:
    explicit DocumentPromise(DocumentIndex& index): _index(index) {
        _index.beginPromise();
    }
    DocumentPromise(const DocumentPromise&) = delete;
    DocumentPromise& operator=(const DocumentPromise&) = delete;
    ~DocumentPromise() { _index.endPromise(); }

private:
    DocumentIndex& _index;
};

}

#endif
