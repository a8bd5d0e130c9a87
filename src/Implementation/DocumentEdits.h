#ifndef Orrelin_Implementation_DocumentEdits
#define Orrelin_Implementation_DocumentEdits

#include <Corrade/Containers/String.h>

#include "Implementation/ElementNames.h"
#include "shared/Implementation/DocumentIndex.h"

namespace OrrelinEngine {

/* Performs changes on the document of a project. The rules are those of
   RapidJSON's pointers, except that a creation in an array inserts. The source
   file explains how elements are found again after they were renumbered. */
class DocumentEdits {
public:
    /* Works on the document of this project from now on; forgets all that it
       knows of another */
    void attach(ProjectFile& project);

    DocumentIndex& index() { return _index; }

    /* Where the path leads; valid until the document next changes */
    DocumentPlace locate(Containers::StringView path);

    /* Whether the place is that of an element of an array, there or yet to be
       created */
    static bool isElement(
        const DocumentPlace& place, Containers::StringView path);

    /* The path to record for a value that's about to be created at the place.
       "-", "-5" or "007" become the index that the element gets, since the path
       as written wouldn't lead to it afterwards. */
    static Containers::String addressablePath(
        Containers::StringView path, const DocumentPlace& place);

    /* Performs a change of the history, or the reverse of one. Looks up its
       path, also by the names of elements. */
    void apply(const Change& change);

    /* Performs a change at a place that was just located for its path */
    void perform(const Change& change, const DocumentPlace& place);

private:
    /* The path as it's recorded, and the JSON Pointer to where it leads. Both
       have the same number of segments; they differ only where a segment of
       the recorded one is the name of an element. */
    struct Path {
        Containers::StringView recorded, address;
    };

    void perform(
        const Change& change, const Path& path, const DocumentPlace& place);
    Containers::String addressOf(Containers::StringView path);
    void erase(const Path& path, const DocumentPlace& place);
    void remove(const Path& path, const DocumentPlace& place);
    JsonValue& createNull(const Path& path, const DocumentPlace& place);
    void set(
        const Path& path, const DocumentPlace& place, const JsonValue& value);
    void create(
        const Path& path, const DocumentPlace& place, const JsonValue& value);
    void insert(const Path& path, JsonValue& array, const JsonValue& value);

    ProjectFile* _project = nullptr;
    DocumentIndex _index;
    ElementNames _names;
};

}

#endif
