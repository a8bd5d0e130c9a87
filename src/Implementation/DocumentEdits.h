#ifndef Orrelin_Implementation_DocumentEdits
#define Orrelin_Implementation_DocumentEdits

#include <Corrade/Containers/String.h>

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

    /* The place is that of the change's path */
    void perform(const Change& change, DocumentPlace place);

private:
    bool findAgain(JsonValue& from, Containers::StringView path,
        const JsonValue& expected, Containers::String& address);
    void remove(Containers::StringView path, const DocumentPlace& place);
    JsonValue& createNull(
        Containers::StringView path, const DocumentPlace& place);
    void set(Containers::StringView path, const DocumentPlace& place,
        const JsonValue& value);
    void create(Containers::StringView path, const DocumentPlace& place,
        const JsonValue& value);
    void insert(JsonValue& array, std::uint32_t index, const JsonValue& value);

    ProjectFile* _project = nullptr;
    DocumentIndex _index;
};

}

#endif
