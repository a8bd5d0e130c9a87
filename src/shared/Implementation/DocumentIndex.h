#ifndef Orrelin_shared_Implementation_DocumentIndex
#define Orrelin_shared_Implementation_DocumentIndex

#include <cstdint>
#include <unordered_map>
#include <Corrade/Containers/StringView.h>

#include "shared/Implementation/ObjectIndex.h"

namespace OrrelinEngine {

class PointerTokens;

/* Fills an array up with nulls to a size; an array that's longer stays as it
   is. Reallocates in growing steps, so that appending is constant on average,
   but begins with exactly the size, not with RapidJSON's sixteen elements. */
void extendArray(
    JsonValue& array, std::uint32_t size, JsonAllocator& allocator);

/* Where a JSON Pointer leads in a document, or how far it gets. Valid until the
   document next changes. */
struct DocumentPlace {
    /* Null if there is none */
    JsonValue* value = nullptr;
    /* If there is a value, the object or array that it is in; null for the
       root. If not, the value at which the pointer can't go on: an object
       without the member, an array without the element, or a scalar. */
    JsonValue* container = nullptr;
    /* Of the value in its container: index of the member or the element */
    std::uint32_t position = 0;
    /* Where in the pointer the first segment that leads nowhere begins, with
       its slash; the pointer's size if all of it leads to the value. Only of
       use, like the container, if the pointer is valid. */
    std::size_t missing = 0;
};

/* Looks up, creates and erases values of a document by JSON Pointer. The rules
   are those of RapidJSON's pointers, and so is the result: each object on the
   way is searched as if from its first member on. But the cost doesn't grow
   with the objects: each large one has an index, kept under the address of its
   members. An index only proposes where a member may be, and each proposal is
   checked against the object. So anybody may edit the document in between.

   Two differences to a plain search remain. To find out that a name is absent
   still costs one, unless a promise says that nobody else edits the document.
   And of several members with the same name, which JSON allows, a direct edit
   that puts another in front can make it either that is found. */
class DocumentIndex {
public:
    /* Goes as far as the pointer leads */
    DocumentPlace locate(JsonValue& root, Containers::StringView pointer);

    /* Null if there's no such value or the pointer isn't valid */
    JsonValue* find(JsonValue& root, Containers::StringView pointer) {
        return locate(root, pointer).value;
    }

    /* Returns the value at the pointer, whose place was just located. If it's
       absent, creates it as null, with its parents: arrays if the segment below
       is an index, otherwise objects. A scalar in the way is replaced, and so
       is an array if the segment isn't an index. Arrays are filled up to the
       index with nulls, "-" appends. Prints and aborts if the value is absent
       and the pointer isn't valid. */
    JsonValue& create(DocumentPlace place, JsonValue& root,
        Containers::StringView pointer, JsonAllocator& allocator);

    /* Erases a value that's there and not the root. Those behind it move up by
       one and stay in order. */
    void erase(const DocumentPlace& place);

    /* The caller promises that between these two nobody else edits the
       document. They nest; each outermost pair is a promise with a number of
       its own. */
    void beginPromise() { _promise += !_promises++; }
    void endPromise() { --_promises; }

    /* Forgets all, as another document follows */
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

    /* By the address of the object's members */
    std::unordered_map<const void*, ObjectIndex> _objects;
    /* The one asked last, most often the next one as well. Only valid while it
       is in _objects. */
    const void* _lastMembers = nullptr;
    ObjectIndex* _lastIndex = nullptr;
    /* Of all indexed objects, about, and the number at which to sweep */
    std::size_t _members = 0;
    std::size_t _sweepAt = 0;
    /* How many are open, and the number of the outermost; 0 is none */
    int _promises = 0;
    std::uint64_t _promise = 0;
};

/* While it exists, nobody else edits the document */
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
