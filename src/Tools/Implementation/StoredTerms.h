#ifndef Orrelin_Tools_Implementation_StoredTerms
#define Orrelin_Tools_Implementation_StoredTerms

#include <Corrade/Containers/StringView.h>

#include "shared/Implementation/DocumentIndex.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* What the document stores of a term, until it next changes */
struct StoredTerm {
    /* The value itself, null if there is none */
    const JsonValue* value = nullptr;
    /* Whether it isn't excluded from translation */
    bool translated = true;

    /* Empty if the value is no string or there is none */
    Containers::StringView text() const;
};

/* Looks terms up by their paths in the stored document, in any order, fastest
   those of one object after each other. Meanwhile values may change, but none
   may be added or removed, and paths have to stay. */
class StoredTerms {
public:
    explicit StoredTerms(const OrrelinEditor& editor);

    StoredTerm find(Containers::StringView path);

private:
    JsonValue* record(Containers::StringView path);

    const OrrelinEditor& _editor;
    DocumentIndex _index;
    DocumentPromise _promise{_index};
    JsonValue* _root;
    /* Where the components of the last term's object are, and their path,
       which is part of the term's */
    JsonValue* _components = _root;
    Containers::StringView _componentsPath;
};

}}

#endif
