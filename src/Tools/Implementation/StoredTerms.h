#ifndef Orrelin_Tools_Implementation_StoredTerms
#define Orrelin_Tools_Implementation_StoredTerms

#include <Corrade/Containers/StringView.h>

#include "shared/Implementation/DocumentIndex.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* The values that the document stores for a term, valid until it changes */
struct StoredTerm {
    /* The value itself, null if there is none */
    const JsonValue* value = nullptr;
    /* False if the document excludes the value from translation */
    bool translated = true;

    /* A null view if there's no value or it isn't a string */
    Containers::StringView text() const;
};

/* Looks terms up in the stored document by their paths, in any order. Remembers
   the components of the last object, as generated keys sort the terms of one
   object together: the next look-up then begins there and not at the root.

   While it exists, values may change, but none may be added or removed, since
   it keeps pointers into the document. The paths have to stay, since it keeps
   a view of the last one. */
class StoredTerms {
public:
    explicit StoredTerms(const OrrelinEditor& editor);

    StoredTerm find(Containers::StringView path);

private:
    JsonValue* child(JsonValue& parent, Containers::StringView segment);
    JsonValue* record(Containers::StringView path);

    const OrrelinEditor& _editor;
    DocumentIndex _index;
    DocumentPromise _promise{_index};
    JsonValue* _root;
    /* The components of the last term's object, and their path as a view of the
       term's. At first the root, which has the empty path. */
    JsonValue* _components = _root;
    Containers::StringView _componentsPath;
};

}}

#endif
