#ifndef Orrelin_Implementation_DocumentEdits
#define Orrelin_Implementation_DocumentEdits

#include <Corrade/Containers/String.h>

#include "Implementation/ElementNames.h"
#include "shared/Implementation/DocumentIndex.h"

namespace OrrelinEngine {

/* Performs changes on the document of a project */
class DocumentEdits {
public:
    void attach(ProjectFile& project);

    DocumentIndex& index() { return _index; }

    DocumentPlace locate(Containers::StringView path);

    /* Whether an element of an array is there or would be created there */
    static bool isElement(
        const DocumentPlace& place, Containers::StringView path);

    /* The path under which a value that's about to be created at the place can
       be found again. An index as written may be no JSON Pointer to where it
       goes. */
    static Containers::String addressablePath(
        Containers::StringView path, const DocumentPlace& place);

    /* Performs a change as it's recorded */
    void apply(const Change& change);

    /* Performs a change at the place to which its path leads */
    void perform(const Change& change, const DocumentPlace& place);

private:
    /* A path as it's recorded and, segment by segment, the JSON Pointer to
       where it leads */
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
